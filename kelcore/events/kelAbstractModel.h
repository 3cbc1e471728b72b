#ifndef KELCORE_EVENTS_KELABSTRACTMODEL_H
#define KELCORE_EVENTS_KELABSTRACTMODEL_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/events/kelIModel.h>

namespace KELKIT {

// Keeps the views of a model and brings them up to date. The views are the caller's plain
// pointers: one may be added twice, and a view is removed from its models before it goes.
//
// notifyViews holds the model's lock for the whole pass, walks by index as
// kelAbstractObservable does, and marks a view that puts its update off dirty instead of
// updating it. Copies take the list as it stands and share the lock.
class KELCORE_API kelAbstractModel : public virtual kelIModel {
public:
    kelAbstractModel();
    kelAbstractModel(kelAbstractModel const& other);
    kelAbstractModel& operator=(kelAbstractModel const& other);
    ~kelAbstractModel() override;

    // Appends without taking the lock: a caller adding while other threads use the model takes
    // lock() first.
    void addView(kelIView* view) override;
    bool removeView(kelIView* view) override;
    bool removeViews() override;
    // A copy, taken without the lock.
    kelListIView getViews() override;
    // Each view in order: if isViewDeferred gives anything but 0 it is marked dirty, else
    // updateView is called. The dirty flag is never cleared here.
    void notifyViews() override;

    void lock();
    void unlock();

private:
    kelListIView mViews;
    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
