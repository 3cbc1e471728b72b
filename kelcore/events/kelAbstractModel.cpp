#include <kelcore/events/kelAbstractModel.h>

#include <kelcore/internal/kelEntered.h>
#include <kelcore/internal/kelPointerList.h>

namespace KELKIT {

using internal::Entered;

kelAbstractModel::kelAbstractModel() = default;

kelAbstractModel::kelAbstractModel(kelAbstractModel const& other)
    : kelIModel(other), mLock(other.mLock) {
    Entered const entered(mLock);
    mViews = other.mViews;
}

kelAbstractModel& kelAbstractModel::operator=(kelAbstractModel const& other) {
    if (this != &other) {
        mLock = other.mLock;
        Entered const entered(mLock);
        mViews = other.mViews;
    }
    return *this;
}

kelAbstractModel::~kelAbstractModel() = default;

void kelAbstractModel::addView(kelIView* view) {
    mViews.add(view);
}

bool kelAbstractModel::removeView(kelIView* view) {
    Entered const entered(mLock);
    return internal::eraseFirst(mViews, view);
}

bool kelAbstractModel::removeViews() {
    Entered const entered(mLock);
    return internal::removeEach(mViews, [this](kelIView* view) { return removeView(view); });
}

kelListIView kelAbstractModel::getViews() {
    return mViews;
}

void kelAbstractModel::notifyViews() {
    Entered const entered(mLock);
    for (UInt32 index = 0; index < mViews.size(); ++index) {
        kelIView* const view = mViews.get(index);
        if (view->isViewDeferred() != 0) {
            view->setViewDirty(true);
        } else {
            view->updateView();
        }
    }
}

void kelAbstractModel::lock() {
    mLock.enter();
}

void kelAbstractModel::unlock() {
    mLock.leave();
}

} // namespace KELKIT
