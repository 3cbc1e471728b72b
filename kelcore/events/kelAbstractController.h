#ifndef KELCORE_EVENTS_KELABSTRACTCONTROLLER_H
#define KELCORE_EVENTS_KELABSTRACTCONTROLLER_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/events/kelIController.h>

namespace KELKIT {

// Lists the models that a controller changes; it notifies nobody itself. The models are the
// caller's plain pointers. Copies take the list as it stands and share the lock.
class KELCORE_API kelAbstractController : public virtual kelIController {
public:
    kelAbstractController();
    kelAbstractController(kelAbstractController const& other);
    kelAbstractController& operator=(kelAbstractController const& other);
    ~kelAbstractController() override;

    // Appends without taking the lock: a caller adding while other threads use the controller
    // takes lock() first.
    void addModel(kelIModel* model) override;
    bool removeModel(kelIModel* model) override;
    bool removeModels() override;
    // A copy, taken without the lock.
    kelListIModel getModels() override;

    void lock();
    void unlock();

private:
    kelListIModel mModels;
    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
