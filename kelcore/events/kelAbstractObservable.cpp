#include <kelcore/events/kelAbstractObservable.h>

#include <kelcore/internal/kelEntered.h>
#include <kelcore/internal/kelPointerList.h>

namespace KELKIT {

using internal::Entered;

kelAbstractObservable::kelAbstractObservable() = default;

kelAbstractObservable::kelAbstractObservable(kelAbstractObservable const& other)
    : kelIObservable(other), mLock(other.mLock) {
    Entered const entered(mLock);
    mObservers = other.mObservers;
}

kelAbstractObservable& kelAbstractObservable::operator=(kelAbstractObservable const& other) {
    if (this != &other) {
        mLock = other.mLock;
        Entered const entered(mLock);
        mObservers = other.mObservers;
    }
    return *this;
}

kelAbstractObservable::~kelAbstractObservable() = default;

void kelAbstractObservable::addObserver(kelIObserver* observer) {
    Entered const entered(mLock);
    mObservers.add(observer);
}

bool kelAbstractObservable::removeObserver(kelIObserver* observer) {
    Entered const entered(mLock);
    return internal::eraseFirst(mObservers, observer);
}

bool kelAbstractObservable::removeObservers() {
    Entered const entered(mLock);
    return internal::removeEach(
        mObservers, [this](kelIObserver* observer) { return removeObserver(observer); });
}

kelListIObserver kelAbstractObservable::getObservers() {
    return mObservers;
}

void kelAbstractObservable::notifyObservers() {
    Entered const entered(mLock);
    // The size is read afresh at each step: observers may change the list during the pass.
    for (UInt32 index = 0; index < mObservers.size(); ++index) {
        mObservers.get(index)->onNotify(this);
    }
}

void kelAbstractObservable::lock() {
    mLock.enter();
}

void kelAbstractObservable::unlock() {
    mLock.leave();
}

} // namespace KELKIT
