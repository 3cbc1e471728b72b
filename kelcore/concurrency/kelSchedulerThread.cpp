#include <kelcore/concurrency/kelSchedulerThread.h>

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/concurrency/kelListHeartBeatPtr.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/internal/kelEntered.h>
#include <kelcore/internal/kelPublisherLifetime.h>

#include <cstring>
#include <mutex>
#include <vector>

namespace KELKIT {

using internal::Entered;

namespace {

constexpr UInt32 kPollMilliseconds = 50;

// Heartbeats left in a list when its thread object goes. They are still reachable from here,
// so that leak checkers don't count them, and nothing frees them before the process ends.
void park(kelListHeartBeatPtr& beats) {
    static std::mutex* const guard = new std::mutex;
    static std::vector<kelHeartBeat*>* const parked = new std::vector<kelHeartBeat*>;
    std::lock_guard<std::mutex> const lock(*guard);
    for (UInt32 i = 0; i < beats.size(); ++i) {
        parked->push_back(beats.get(i));
    }
    beats.clear();
}

} // namespace

struct kelSchedulerThread::Beats {
    kelCriticalSection lock;
    kelListHeartBeatPtr list; // in order of creation
    // No lock: this runs with the last copy, after the thread has been stopped.
    ~Beats() { park(list); }
};

kelSchedulerThread::kelSchedulerThread() : mBeats(std::make_shared<Beats>()) {}

kelSchedulerThread::kelSchedulerThread(kelSchedulerThread const& other)
    : kelIRunnable(other), kelThread(other), mBeats(other.mBeats) {}

kelSchedulerThread& kelSchedulerThread::operator=(kelSchedulerThread const& other) {
    kelThread::operator=(other);
    mBeats = other.mBeats;
    return *this;
}

kelSchedulerThread::~kelSchedulerThread() {
    // run() uses the list, which goes with this object.
    stopThread();
}

kelHeartBeat* kelSchedulerThread::createHeartBeat(char const* name, UInt32 interval) {
    Entered const entered(mBeats->lock);
    auto* beat = new kelHeartBeat(name, interval);
    mBeats->list.add(beat);
    return beat;
}

void kelSchedulerThread::deleteHeartBeat(char const* name) {
    if (name == nullptr) {
        return;
    }
    Entered const entered(mBeats->lock);
    kelListHeartBeatPtr& list = mBeats->list;
    bool found = false;
    UInt32 last = 0;
    for (UInt32 i = 0; i < list.size(); ++i) {
        if (std::strcmp(name, list.get(i)->getName()) == 0) {
            found = true;
            last = i;
        }
    }
    if (found) {
        kelHeartBeat* const beat = list.get(last);
        list.erase(kelListHeartBeatPtr::INDEX(last));
        delete beat;
    }
}

void kelSchedulerThread::run() {
    std::shared_ptr<Beats> const beats = mBeats;
    while (!isStopRequested()) {
        {
            Entered const entered(beats->lock);
            // By index and with the size read afresh: notifiers may create and delete
            // heartbeats during the pass.
            for (UInt32 i = 0; i < beats->list.size(); ++i) {
                kelHeartBeat* const beat = beats->list.get(i);
                if (beat->isBeatTime() && !internal::isPublisherGone()) {
                    kelEventPublisher::getInstance().publishEvent(beat);
                }
            }
        }
        sleep(kPollMilliseconds);
    }
}

} // namespace KELKIT
