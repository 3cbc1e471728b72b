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

template <class Done>
void waitUntil(Done done) {
    for (auto start = Clock::now(); !done() && msSince(start) < 10000;) {
        kelThread::sleep(1);
    }
}

} // namespace

TEST(kelThread, PriorityTableAndDefaults) {
    kelThread::Priority p;
    p = "BelowNormal";
    EXPECT_EQ(4, p.getValue());
    Polite thread;
    EXPECT_TRUE(thread.isStopRequested()); // until a start
    EXPECT_EQ(kelThread::Priority::Normal, thread.getPriority().getValue());
    thread.setPriority(kelThread::Priority(9)); // an unnamed value is stored, not applied
    EXPECT_EQ(9, thread.getPriority().getValue());
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
    EXPECT_TRUE(thread.isThreadStarted() && thread.isRunning() && !thread.isStopRequested());
    thread.setPriority(kelThread::Priority::AboveNormal); // applied at once, best effort
    waitUntil([&] { return thread.passes >= 3; });
    auto const stopping = Clock::now();
    thread.stopThread();
    EXPECT_GE(msSince(stopping), 95); // the stop always grants 100 ms
    EXPECT_TRUE(!thread.isThreadStarted() && !thread.isRunning() && thread.isStopRequested());

    int const before = thread.passes;
    ASSERT_TRUE(thread.startThread()); // the flag comes back with the new thread
    waitUntil([&] { return thread.passes > before; });
    EXPECT_GT(thread.passes, before);
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
    waitUntil([&] { return !empty->isRunning(); });
    EXPECT_TRUE(!empty->isRunning() && empty->isThreadStarted()); // started until stopThread
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
    waitUntil([&] { return !self.isRunning(); });
    EXPECT_TRUE(self.sawStop && self.isThreadStarted());
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
    waitUntil([&] { return thread.started > 0; });
    auto const stopping = Clock::now();
    thread.stopThread(1000);
    long long const took = msSince(stopping);
    EXPECT_TRUE(took >= 1050 && took < 3000) << took;
    EXPECT_FALSE(thread.isThreadStarted() || thread.isRunning());

    // Free to start again; the forced thread is gone (Windows) or abandoned (POSIX).
    ASSERT_TRUE(thread.startThread());
    waitUntil([&] { return thread.started >= 2; });
    thread.release = true;
#if defined(_WIN32)
    int const bodies = 1; // the forced one really ended
#else
    int const bodies = 2; // the abandoned one runs on until it is released
#endif
    waitUntil([&] { return thread.finished >= bodies; });
    EXPECT_EQ(bodies, thread.finished);
    // Only an abandoned body sees a stop: the object has been started again meanwhile, and
    // the new body runs on.
    EXPECT_EQ(bodies - 1, thread.sawStop);
    EXPECT_TRUE(thread.isThreadStarted());
    thread.stopThread();
    EXPECT_EQ(bodies, thread.finished);
}
