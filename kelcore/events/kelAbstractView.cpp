#include <kelcore/events/kelAbstractView.h>

namespace KELKIT {

kelAbstractView::kelAbstractView() : mController(nullptr), mDirty(false) {}

kelAbstractView::kelAbstractView(kelAbstractView const& other)
    : kelIView(other), mController(other.mController.load()), mDirty(other.mDirty.load()),
      mLock(other.mLock) {}

kelAbstractView& kelAbstractView::operator=(kelAbstractView const& other) {
    mController = other.mController.load();
    mDirty = other.mDirty.load();
    mLock = other.mLock;
    return *this;
}

kelAbstractView::~kelAbstractView() = default;

bool kelAbstractView::isViewDirty() const {
    return mDirty.load();
}

void kelAbstractView::setViewDirty(bool dirty) {
    mDirty = dirty;
}

void kelAbstractView::setController(kelIController* controller) {
    mController = controller;
}

kelIController* kelAbstractView::getController() {
    return mController.load();
}

void kelAbstractView::lock() {
    mLock.enter();
}

void kelAbstractView::unlock() {
    mLock.leave();
}

} // namespace KELKIT
