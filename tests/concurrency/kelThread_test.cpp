#include <kelcore/concurrency/kelThread.h>
#include <kelcore/concurrency/kelThreadIndirect.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

using namespace KELKIT;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// Polls its flag like a well-behaved body and counts its passes.
class Polite : public kelThread {
public:
    ~Polite() override { stopThread(); }
    void run() override {
        while (!isStopRequested()) {
            ++passes;
            sleep(2);
        }
    }
    std::atomic<int> passes{0};
};

// Ignores the flag until the test lets it go.
class Stubborn : public kelThread {
public:
    ~Stubborn() override { stopThread(); }
    void run() override {
        ++started;
        while (!release) {
            sleep(5);
        }
        if (isStopRequested()) {
            ++sawStop;
        }
        ++finished;
    }
    std::atomic<int> started{0}, finished{0}, sawStop{0};
    std::atomic<bool> release{false};
};

long long msSince(Clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

} // namespace

TEST(kelThread, PriorityTableAndDefaults) {
    kelThread::Priority none;
    EXPECT_EQ(0, none.getValue());
    EXPECT_STREQ("", none.toString());
    kelThread::Priority p;
    p = "BelowNormal";
    EXPECT_EQ(4, p.getValue());
    EXPECT_EQ(5, p.getNumValues());

    Polite thread;
    EXPECT_TRUE(thread.isStopRequested());
    EXPECT_FALSE(thread.isThreadStarted());
    EXPECT_EQ(kelThread::Priority::Normal, thread.getPriority().getValue());
    for (int value : {0, 1, 2, 3, 4, 5, 9}) {
        thread.setPriority(kelThread::Priority(value)); // unnamed values are stored, not applied
        EXPECT_EQ(value, thread.getPriority().getValue());
    }
}

TEST(kelThread, StartStopRestartAndStates) {
    kelWatchdog watchdog("start, stop and restart", 60s);
    Polite thread;
    auto const idle = Clock::now();
    thread.stopThread(); // never started: no 100 ms pause
    EXPECT_LT(msSince(idle), 90);

    thread.setPriority(kelThread::Priority::Lowest);
    ASSERT_TRUE(thread.startThread());
    EXPECT_FALSE(thread.startThread()); // the first keeps running
    EXPECT_TRUE(thread.isThreadStarted());
    EXPECT_TRUE(thread.isRunning());
    EXPECT_FALSE(thread.isStopRequested());
    thread.setPriority(kelThread::Priority::AboveNormal); // applied at once, best effort
    while (thread.passes < 3) {
        kelThread::sleep(1);
    }
    auto const stopping = Clock::now();
    thread.stopThread();
    EXPECT_GE(msSince(stopping), 95); // the stop always grants 100 ms
    EXPECT_FALSE(thread.isThreadStarted());
    EXPECT_FALSE(thread.isRunning());
    EXPECT_TRUE(thread.isStopRequested());

    int const before = thread.passes;
    ASSERT_TRUE(thread.startThread()); // the flag comes back with the new thread
    while (thread.passes == before) {
        kelThread::sleep(1);
    }
    thread.stopThread();
    EXPECT_FALSE(thread.isThreadStarted());
}

TEST(kelThread, StopRightAfterStartIsNeverLost) {
    kelWatchdog watchdog("stops right after starts", 120s);
    Polite thread;
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(thread.startThread());
        thread.stopThread(); // the new thread may not have run at all yet
        ASSERT_FALSE(thread.isThreadStarted());
    }
}

TEST(kelThread, BodyThatEndedByItself) {
    kelWatchdog watchdog("a body that ends", 60s);
    std::unique_ptr<kelThread> empty(kelThread::createThread(nullptr));
    ASSERT_TRUE(empty->startThread());
    for (auto start = Clock::now(); empty->isRunning() && msSince(start) < 10000;) {
        kelThread::sleep(1);
    }
    EXPECT_FALSE(empty->isRunning());
    EXPECT_TRUE(empty->isThreadStarted()); // until stopThread
    empty->stopThread();
    EXPECT_FALSE(empty->isThreadStarted());

    // A body that stops itself only clears its flag, and ends; it can't wait for itself.
    struct SelfStopper : kelThread {
        ~SelfStopper() override { stopThread(); }
        void run() override {
            stopThread();
            sawStop = isStopRequested();
        }
        std::atomic<bool> sawStop{false};
    } self;
    ASSERT_TRUE(self.startThread());
    for (auto start = Clock::now(); self.isRunning() && msSince(start) < 10000;) {
        kelThread::sleep(1);
    }
    EXPECT_TRUE(self.sawStop);
    EXPECT_TRUE(self.isThreadStarted());
    self.stopThread();
    EXPECT_FALSE(self.isThreadStarted());
}

TEST(kelThread, IndirectRunsTheOwnersRunnable) {
    kelWatchdog watchdog("an indirect thread", 60s);
    struct Counter : kelIRunnable {
        void run() override { ++calls; }
        std::atomic<int> calls{0};
    } counter;
    {
        kelThreadIndirect indirect(&counter);
        ASSERT_TRUE(indirect.startThread());
        indirect.stopThread();
        EXPECT_EQ(1, counter.calls);
        ASSERT_TRUE(indirect.startThread()); // the destructor stops this one
    }
    EXPECT_EQ(2, counter.calls); // and leaves the runnable alone
}

TEST(kelThread, CopiesNameOneThread) {
    kelWatchdog watchdog("a stop through a copy", 60s);
    Polite thread;
    ASSERT_TRUE(thread.startThread());
    {
        kelThreadIndirect copy(nullptr);
        static_cast<kelThread&>(copy) = thread;
        EXPECT_TRUE(copy.isThreadStarted());
        EXPECT_FALSE(copy.startThread());
        copy.stopThread(); // reaches the thread that the original started
    }
    EXPECT_FALSE(thread.isThreadStarted());
    EXPECT_TRUE(thread.startThread());
}

TEST(kelThread, TimeLimitedStopEndsAStubbornBody) {
    kelWatchdog watchdog("a time-limited stop", 60s);
    Stubborn thread;
    ASSERT_TRUE(thread.startThread());
    while (thread.started == 0) {
        kelThread::sleep(1);
    }
    auto const stopping = Clock::now();
    thread.stopThread(1000);
    long long const took = msSince(stopping);
    EXPECT_GE(took, 1050);
    EXPECT_LT(took, 3000);
    EXPECT_FALSE(thread.isThreadStarted());
    EXPECT_FALSE(thread.isRunning());

    // Free to start again; the forced thread is gone (Windows) or abandoned (POSIX).
    ASSERT_TRUE(thread.startThread());
    while (thread.started < 2) {
        kelThread::sleep(1);
    }
    thread.release = true;
#if defined(_WIN32)
    int const bodies = 1; // the forced one really ended
#else
    int const bodies = 2; // the abandoned one runs on until it is released
#endif
    for (auto start = Clock::now(); thread.finished < bodies && msSince(start) < 10000;) {
        kelThread::sleep(1);
    }
    EXPECT_EQ(bodies, thread.finished);
    // Only an abandoned body sees a stop: the object has been started again meanwhile, and
    // the new body runs on.
    EXPECT_EQ(bodies - 1, thread.sawStop);
    EXPECT_TRUE(thread.isThreadStarted());
    thread.stopThread();
    EXPECT_EQ(bodies, thread.finished);
}
