#ifndef KELCORE_EVENTS_KELABSTRACTVIEW_H
#define KELCORE_EVENTS_KELABSTRACTVIEW_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/events/kelIView.h>

#include <atomic>

namespace KELKIT {

// Holds a view's controller and its dirty flag; isViewDeferred and updateView are the
// caller's. The flag is set by models that notify while the view puts updates off, and only
// the view clears it, once it has brought itself up to date. Flag and controller are read and
// written atomically, without the lock. Copies take both and share the lock.
class KELCORE_API kelAbstractView : public virtual kelIView {
public:
    // Not dirty, no controller.
    kelAbstractView();
    kelAbstractView(kelAbstractView const& other);
    kelAbstractView& operator=(kelAbstractView const& other);
    ~kelAbstractView() override;

    bool isViewDirty() const override;
    void setViewDirty(bool dirty) override;
    void setController(kelIController* controller) override;
    kelIController* getController() override;

    void lock();
    void unlock();

private:
    std::atomic<kelIController*> mController;
    std::atomic<bool> mDirty;
    kelCriticalSection mLock;
};

} // namespace KELKIT

#endif
