#ifndef KELCORE_CONCURRENCY_KELEVENTTHREAD_H
#define KELCORE_CONCURRENCY_KELEVENTTHREAD_H

#include <kelcore/concurrency/kelBaseThread.h>

namespace KELKIT {

// A thread that sleeps until one of its numbered events fires and then calls onThreadEvent
// with that number. Events are manual-reset and kept in order of creation, which is also their
// priority: when several are set, the earliest created is handled first. A firing carries
// nothing but its number, and several firings before the thread wakes make one call.
//
// Ids 0 and 1 are the library's own (a new event was created; stop). A subclass creates its
// events with other ids and overrides onThreadEvent, which runs on the event thread without the
// object's lock. Good for one run: once stopped, a new start ends at its first wait.
//
// Copies share the events, the table of ids and the thread; they are released with the last
// copy.
class KELCORE_API kelEventThread : public kelBaseThread {
public:
    kelEventThread();
    kelEventThread(kelEventThread const& other);
    kelEventThread& operator=(kelEventThread const& other);
    ~kelEventThread() override;

    // Raises the stop event and waits without limit for the thread to end; a handler that is
    // running finishes first, and events still pending are not handled. A handler may go on
    // calling triggerEvent, createEvent or isStopRequested meanwhile. Called by a handler, it
    // only raises the stop event: the loop ends after that handler returns.
    void stopThread() override;

protected:
    void thread() override;

public:
    bool isStopRequested() override;
    // False for a full table, an id already in it, or when the system refused an event.
    virtual bool createEvent(UInt32 id);
    // An id not in the table is ignored.
    virtual void triggerEvent(UInt32 id);
    // Whether the event is set, without changing it; false for an id not in the table.
    virtual bool isEventTriggered(UInt32 id);
    virtual void onThreadEvent(UInt32 id);

private:
    static const UInt32 MAX_EVENTS;
    static const UInt32 THREAD_NEW_EVENT;
    static const UInt32 THREAD_EXIT_EVENT;

    // The position of the id's event in the table; false when there is none. Under the lock.
    bool findEventHandle(UInt32 id, UInt32& index) const;

    struct Events;
    std::shared_ptr<Events> mEvents;
};

} // namespace KELKIT

#endif
