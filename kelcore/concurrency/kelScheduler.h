#ifndef KELCORE_CONCURRENCY_KELSCHEDULER_H
#define KELCORE_CONCURRENCY_KELSCHEDULER_H

#include <kelcore/concurrency/kelSchedulerThread.h>

namespace KELKIT {

// The process-wide heartbeat scheduler. The first getInstance builds it and starts its thread;
// at process exit it stops the thread (after the current poll and sleep) before the event
// publisher goes, and the process ends normally even with heartbeats still listed.
//
// A copy shares the thread, and its destructor stops it: keep to the reference.
class KELCORE_API kelScheduler {
public:
    kelScheduler(kelScheduler const& other);
    kelScheduler& operator=(kelScheduler const& other);
    virtual ~kelScheduler();

    virtual kelHeartBeat* createHeartBeat(char const* name, UInt32 interval);
    // By the heartbeat's name: with two of that name, the later created one goes, which may be
    // the other one. A null heartbeat does nothing.
    virtual void deleteHeartBeat(kelHeartBeat* heartBeat);
    virtual void deleteHeartBeat(char const* name);

    static kelScheduler& getInstance();

private:
    kelScheduler();

    kelSchedulerThread mThread;
};

} // namespace KELKIT

#endif
