#include <kelcore/events/kelAbstractController.h>

#include <kelcore/internal/kelEntered.h>
#include <kelcore/internal/kelPointerList.h>

namespace KELKIT {

using internal::Entered;

kelAbstractController::kelAbstractController() = default;

kelAbstractController::kelAbstractController(kelAbstractController const& other)
    : kelIController(other), mLock(other.mLock) {
    Entered const entered(mLock);
    mModels = other.mModels;
}

kelAbstractController& kelAbstractController::operator=(kelAbstractController const& other) {
    if (this != &other) {
        mLock = other.mLock;
        Entered const entered(mLock);
        mModels = other.mModels;
    }
    return *this;
}

kelAbstractController::~kelAbstractController() = default;

void kelAbstractController::addModel(kelIModel* model) {
    mModels.add(model);
}

bool kelAbstractController::removeModel(kelIModel* model) {
    Entered const entered(mLock);
    return internal::eraseFirst(mModels, model);
}

bool kelAbstractController::removeModels() {
    Entered const entered(mLock);
    return internal::removeEach(mModels, [this](kelIModel* model) { return removeModel(model); });
}

kelListIModel kelAbstractController::getModels() {
    return mModels;
}

void kelAbstractController::lock() {
    mLock.enter();
}

void kelAbstractController::unlock() {
    mLock.leave();
}

} // namespace KELKIT
