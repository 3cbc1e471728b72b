#ifndef KELCORE_EVENTS_KELABSTRACTOBSERVABLE_H
#define KELCORE_EVENTS_KELABSTRACTOBSERVABLE_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/events/kelIObservable.h>

namespace KELKIT {

// Keeps the observers of an object and notifies them. The observers are the caller's plain
// pointers: one may be added twice, and none is removed when it goes.
//
// notifyObservers holds the object's lock for the whole pass; the lock is re-entrant, so an
// observer may add and remove observers from onNotify. The list is walked by index: removing
// an entry at or before the current one makes the next one miss this pass, and one added
// during the pass is reached in it. Copies take the list as it stands and share the lock,
// which goes with the last of them.
class KELCORE_API kelAbstractObservable : public virtual kelIObservable {
public:
    kelAbstractObservable();
    kelAbstractObservable(kelAbstractObservable const& other);
    kelAbstractObservable& operator=(kelAbstractObservable const& other);
    ~kelAbstractObservable() override;

    // No test for a duplicate.
    void addObserver(kelIObserver* observer) override;
    // The first entry equal to observer; false when there is none.
    bool removeObserver(kelIObserver* observer) override;
    // Removes the first entry through removeObserver until none is left; true when every
    // removal was (so also for an empty list).
    bool removeObservers() override;
    // A copy, taken without the lock: a caller racing other threads takes lock() first.
    kelListIObserver getObservers() override;
    void notifyObservers() override;
    void lock() override;
    void unlock() override;

private:
    kelListIObserver mObservers;
    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
