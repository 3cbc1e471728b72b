#ifndef KELCORE_CONCURRENCY_KELSCHEDULERTHREAD_H
#define KELCORE_CONCURRENCY_KELSCHEDULERTHREAD_H

#include <kelcore/concurrency/kelHeartBeat.h>
#include <kelcore/concurrency/kelThread.h>

#include <memory>

namespace KELKIT {

// The thread that polls heartbeats every 50 ms and publishes each one that is due, on itself,
// through kelEventPublisher. The list lock is held for a whole poll, publishing included, so a
// heartbeat can't go while it is delivered; it is taken before the publisher's lock, and a
// notifier handling some other event mustn't create or delete heartbeats.
//
// The thread owns the heartbeats that createHeartBeat made until deleteHeartBeat. Copies share
// the thread, the lock and the list. Heartbeats still listed when the last copy goes are not
// deleted (a caller may still hold them): they stay allocated until the process ends.
//
// Publishing reaches kelEventPublisher::getInstance(); kelScheduler makes sure the publisher
// outlives its thread. A thread of the caller's own that may still run at exit has to be
// stopped before the publisher is destroyed; from then on its polls publish nothing.
class KELCORE_API kelSchedulerThread : public kelThread {
public:
    kelSchedulerThread();
    kelSchedulerThread(kelSchedulerThread const& other);
    kelSchedulerThread& operator=(kelSchedulerThread const& other);
    ~kelSchedulerThread() override;

    // Appends a new heartbeat and returns it; names need not be unique. A null name is empty.
    virtual kelHeartBeat* createHeartBeat(char const* name, UInt32 interval);
    // Deletes the last listed heartbeat of that name; nothing when there is none.
    virtual void deleteHeartBeat(char const* name);

    void run() override;

private:
    struct Beats;
    std::shared_ptr<Beats> mBeats;
};

} // namespace KELKIT

#endif
