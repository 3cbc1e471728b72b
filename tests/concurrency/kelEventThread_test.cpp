#include <kelcore/concurrency/kelEventThread.h>
#include <kelcore/concurrency/kelThread.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

using namespace KELKIT;
using namespace std::chrono_literals;

namespace {

// Records the ids it handles; the handler of `gateId` blocks until the gate opens, so that
// the test can pile up triggers behind it.
class Recorder : public kelEventThread {
public:
    ~Recorder() override { stopThread(); }
    void onThreadEvent(UInt32 id) override {
        {
            std::lock_guard<std::mutex> lock(mutex);
            handled.push_back(id);
        }
        if (id == gateId) {
            inGate = true;
            while (!gateOpen) {
                kelThread::sleep(1);
            }
        }
    }
    std::vector<UInt32> seen() {
        std::lock_guard<std::mutex> lock(mutex);
        return handled;
    }
    bool waitForCount(std::size_t count) {
        for (int i = 0; i < 10000 && seen().size() < count; ++i) {
            kelThread::sleep(1);
        }
        return seen().size() >= count;
    }

    std::mutex mutex;
    std::vector<UInt32> handled;
    UInt32 gateId = 0xFFFFFFFFu;
    std::atomic<bool> inGate{false}, gateOpen{false};
};

} // namespace

TEST(kelEventThread, TableLimitsAndUnknownIds) {
    Recorder events;
    EXPECT_FALSE(events.createEvent(0) || events.createEvent(1)); // reserved
    EXPECT_TRUE(events.isEventTriggered(0)); // a new event was created: the reserved one is set
    EXPECT_FALSE(events.isStopRequested());
    int created = 0;
    for (UInt32 id = 1000; id < 1099; ++id) {
        created += events.createEvent(id) ? 1 : 0;
    }
    EXPECT_EQ(98, created); // 100 entries, two of them reserved
    EXPECT_FALSE(events.createEvent(1000));
    events.triggerEvent(42); // never created: ignored
    EXPECT_FALSE(events.isEventTriggered(42));
    events.triggerEvent(1097);
    EXPECT_TRUE(events.isEventTriggered(1097) && events.isEventTriggered(1097)); // asking keeps it
}

TEST(kelEventThread, LowestIndexFirstAcrossTheWholeTable) {
    kelWatchdog watchdog("event priorities", 120s);
    Recorder events;
    events.gateId = 7;
    ASSERT_TRUE(events.createEvent(7));
    for (UInt32 id = 100; id < 197; ++id) { // entries 3 to 99, beyond any 64-handle limit
        ASSERT_TRUE(events.createEvent(id));
    }
    ASSERT_TRUE(events.startThread());
    events.triggerEvent(7);
    while (!events.inGate) {
        kelThread::sleep(1);
    }
    // Fired in reverse creation order while the handler is busy, each twice.
    std::vector<UInt32> const fired = {196, 180, 131, 130, 103, 100};
    for (UInt32 id : fired) {
        events.triggerEvent(id);
        events.triggerEvent(id);
    }
    events.triggerEvent(7); // absorbed by the reset after the running handler
    events.gateOpen = true;
    ASSERT_TRUE(events.waitForCount(1 + fired.size()));
    kelThread::sleep(100);
    std::vector<UInt32> const expected = {7, 100, 103, 130, 131, 180, 196};
    EXPECT_EQ(expected, events.seen());
}

TEST(kelEventThread, EventCreatedWhileWaitingIsLive) {
    kelWatchdog watchdog("an event created during the wait", 60s);
    Recorder events;
    ASSERT_TRUE(events.startThread());
    kelThread::sleep(50); // the thread is in its wait on the two reserved events
    ASSERT_TRUE(events.createEvent(99));
    events.triggerEvent(99);
    ASSERT_TRUE(events.waitForCount(1));
    EXPECT_EQ(std::vector<UInt32>{99}, events.seen());
}

TEST(kelEventThread, StopCompletesWhileTheHandlerCallsBack) {
    kelWatchdog watchdog("a stop while the handler takes the lock", 60s);
    // The handler polls isStopRequested and re-triggers itself: both take the object's lock
    // while stopThread waits for the thread.
    class Busy : public kelEventThread {
    public:
        ~Busy() override { stopThread(); }
        void onThreadEvent(UInt32 id) override {
            running = true;
            while (!isStopRequested()) {
                triggerEvent(id);
                createEvent(id); // a duplicate: false, but under the lock
                kelThread::sleep(1);
            }
            ++calls;
        }
        std::atomic<bool> running{false};
        std::atomic<int> calls{0};
    } busy;
    ASSERT_TRUE(busy.createEvent(5));
    ASSERT_TRUE(busy.startThread());
    busy.triggerEvent(5);
    while (!busy.running) {
        kelThread::sleep(1);
    }
    busy.stopThread();
    EXPECT_EQ(1, busy.calls); // the pending re-trigger is never handled: exit comes first
    EXPECT_FALSE(busy.isThreadStarted());
    // Good for one run: a new start ends at its first wait.
    ASSERT_TRUE(busy.startThread());
    busy.kelBaseThread::stopThread();
    EXPECT_EQ(1, busy.calls);
}

TEST(kelEventThread, HandlerThatStopsItsOwnThread) {
    kelWatchdog watchdog("a handler that calls stopThread", 60s);
    struct Quitter : kelEventThread {
        ~Quitter() override { stopThread(); }
        void onThreadEvent(UInt32) override {
            stopThread(); // raises the stop event, can't wait for itself
            ++calls;
        }
        std::atomic<int> calls{0};
    } quitter;
    ASSERT_TRUE(quitter.createEvent(2));
    ASSERT_TRUE(quitter.startThread());
    quitter.triggerEvent(2);
    for (int i = 0; i < 10000 && quitter.calls == 0; ++i) {
        kelThread::sleep(1);
    }
    EXPECT_EQ(1, quitter.calls);
    EXPECT_TRUE(quitter.isStopRequested());
    quitter.stopThread(); // from outside: the loop has ended, the thread is released
    EXPECT_FALSE(quitter.isThreadStarted());
}
