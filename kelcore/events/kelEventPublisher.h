#ifndef KELCORE_EVENTS_KELEVENTPUBLISHER_H
#define KELCORE_EVENTS_KELEVENTPUBLISHER_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/events/kelListEventNotifierPtr.h>

namespace KELKIT {

// The process-wide event bus. publishEvent calls every registered notifier in order of
// registration, on the publishing thread, before it returns; there is no queue. The lock is
// held for the whole pass, so passes never interleave, and it is re-entrant, so a notifier may
// publish, register or unregister from inside a pass. The list is walked by index: a notifier
// registered during a pass is reached in it, and one that unregisters itself makes the next
// one miss the event.
//
// Notifiers are the caller's; each unregisters itself before it goes. A caller that holds a
// lock of its own while publishing takes it before the publisher's.
class KELCORE_API kelEventPublisher {
public:
    // Copies take the list as it stands and share the lock.
    kelEventPublisher(kelEventPublisher const& other);
    kelEventPublisher& operator=(kelEventPublisher const& other);
    virtual ~kelEventPublisher();

    // An exception from a notifier leaves through the caller, with the lock released.
    virtual void publishEvent(kelEvent* event);
    // A notifier already registered is not added twice.
    virtual void registerNotifier(kelEventNotifier* notifier);
    virtual void unregisterNotifier(kelEventNotifier* notifier);
    // Replaces notifiers with a copy of the current list.
    virtual void getNotifiers(kelListEventNotifierPtr& notifiers);

    // Built on the first call, destroyed at process exit.
    static kelEventPublisher& getInstance();

private:
    kelEventPublisher();

    kelListEventNotifierPtr mNotifiers;
    kelCriticalSection mLock;
    bool mSingleton; // only getInstance builds with the default constructor
};

} // namespace KELKIT

#endif
