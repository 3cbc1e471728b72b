#include <kelcore/concurrency/kelScheduler.h>

#include <kelcore/events/kelEventPublisher.h>

namespace KELKIT {

kelScheduler::kelScheduler() {
    // Statics go in the reverse order of their creation: building the publisher first makes
    // it outlive the thread that publishes to it.
    kelEventPublisher::getInstance();
    mThread.startThread();
}

kelScheduler::kelScheduler(kelScheduler const& other) : mThread(other.mThread) {}

kelScheduler& kelScheduler::operator=(kelScheduler const& other) {
    mThread = other.mThread;
    return *this;
}

kelScheduler::~kelScheduler() {
    mThread.stopThread();
}

kelHeartBeat* kelScheduler::createHeartBeat(char const* name, UInt32 interval) {
    return mThread.createHeartBeat(name, interval);
}

void kelScheduler::deleteHeartBeat(kelHeartBeat* heartBeat) {
    if (heartBeat == nullptr) {
        return;
    }
    // A copy: the heartbeat deleted may be this very one.
    kelString const name(heartBeat->getName());
    mThread.deleteHeartBeat(name.c_str());
}

void kelScheduler::deleteHeartBeat(char const* name) {
    mThread.deleteHeartBeat(name);
}

kelScheduler& kelScheduler::getInstance() {
    static kelScheduler instance;
    return instance;
}

} // namespace KELKIT
