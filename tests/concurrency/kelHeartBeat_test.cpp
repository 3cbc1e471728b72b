#include <kelcore/concurrency/kelListHeartBeat.h>
#include <kelcore/concurrency/kelListHeartBeatPtr.h>
#include <kelcore/concurrency/kelScheduler.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/frame/kelEventTypes.h>

#include "support/kelChildProcess.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#if !defined(_WIN32)
#include <unistd.h>
#endif

using namespace KELKIT;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

struct Beat {
    kelHeartBeat* heartBeat;
    std::string name;
    Clock::time_point at;
};

// Records the heartbeats it receives, and ignores other events.
class BeatRecorder : public kelEventNotifier {
public:
    BeatRecorder() { kelEventPublisher::getInstance().registerNotifier(this); }
    ~BeatRecorder() override { kelEventPublisher::getInstance().unregisterNotifier(this); }
    void onEvent(kelEvent* event) override {
        if (event == nullptr || event->getType() != kelEventTypes::HeartBeat) {
            return;
        }
        auto* beat = static_cast<kelHeartBeat*>(event);
        {
            std::lock_guard<std::mutex> lock(mutex);
            beats.push_back({beat, beat->getName(), Clock::now()});
        }
        if (auto const action = onBeat.load()) {
            action(beat);
        }
    }
    std::vector<Beat> of(kelHeartBeat* which) {
        std::lock_guard<std::mutex> lock(mutex);
        std::vector<Beat> found;
        std::copy_if(beats.begin(), beats.end(), std::back_inserter(found),
                     [&](Beat const& b) { return b.heartBeat == which; });
        return found;
    }
    std::size_t count(kelHeartBeat* which) { return of(which).size(); }
    // By name for a heartbeat already deleted, whose address a new one may take.
    std::size_t count(std::string const& name) {
        std::lock_guard<std::mutex> lock(mutex);
        return std::count_if(beats.begin(), beats.end(),
                             [&](Beat const& b) { return b.name == name; });
    }

    std::mutex mutex;
    std::vector<Beat> beats;
    std::atomic<void (*)(kelHeartBeat*)> onBeat{nullptr};
};

template <class Done>
bool waitFor(Done done) {
    for (auto start = Clock::now(); !done(); std::this_thread::sleep_for(5ms)) {
        if (Clock::now() - start > 10s) {
            return false;
        }
    }
    return true;
}

} // namespace

TEST(kelHeartBeat, BeatTimeCopiesAndComparison) {
    kelHeartBeat none;
    EXPECT_EQ(4u, none.getType());
    EXPECT_TRUE(none.isBeatTime()); // interval 0: due at every poll
    EXPECT_TRUE(none.isBeatTime());

    kelHeartBeat slow("slow", 60000);
    EXPECT_TRUE(slow.isBeatTime()); // a new heartbeat is due at once
    EXPECT_FALSE(slow.isBeatTime());
    kelHeartBeat copy(slow); // same phase: not due either
    EXPECT_FALSE(copy.isBeatTime());
    kelHeartBeat assigned;
    assigned = slow;
    EXPECT_FALSE(assigned.isBeatTime());

    kelHeartBeat quick("quick", 40);
    EXPECT_TRUE(quick.isBeatTime());
    std::this_thread::sleep_for(60ms);
    EXPECT_TRUE(quick.isBeatTime());

    kelHeartBeat sameName("slow", 5);
    EXPECT_TRUE(sameName == slow && !(sameName != slow) && quick != slow); // names alone
    EXPECT_FALSE(slow < quick || quick < slow);

    kelListHeartBeat values;
    values.add(quick);
    values.add(slow);
    EXPECT_TRUE(values.contains(sameName));
    kelListHeartBeatPtr pointers;
    pointers.add(&slow);
    EXPECT_FALSE(pointers.contains(&sameName)); // pointers compare by address
}

TEST(kelHeartBeat, SchedulerBeatsAtTheIntervalOrLater) {
    kelWatchdog watchdog("heartbeats through the scheduler", 120s);
    BeatRecorder recorder;
    kelScheduler& scheduler = kelScheduler::getInstance();
    kelHeartBeat* beat = scheduler.createHeartBeat("every 200", 200);
    ASSERT_TRUE(waitFor([&] { return recorder.count(beat) >= 6; }));
    scheduler.deleteHeartBeat(beat);
    auto const beats = recorder.of(beat);
    std::size_t const seen = beats.size();
    for (std::size_t i = 1; i < beats.size(); ++i) {
        auto const gap =
            std::chrono::duration_cast<std::chrono::milliseconds>(beats[i].at - beats[i - 1].at);
        EXPECT_GE(gap.count(), 180) << "beat " << i; // a lower limit, up to a coarse tick
        EXPECT_LT(gap.count(), 1000) << "beat " << i;
    }
    scheduler.deleteHeartBeat("no such heartbeat");
    scheduler.deleteHeartBeat(static_cast<kelHeartBeat*>(nullptr));

    // Two of one name both beat; deleting either by pointer goes by name: the later one goes.
    kelHeartBeat* first = scheduler.createHeartBeat("twin", 0);
    kelHeartBeat* second = scheduler.createHeartBeat("twin", 0);
    ASSERT_TRUE(waitFor([&] { return recorder.count(first) > 0 && recorder.count(second) > 0; }));
    scheduler.deleteHeartBeat(first);
    std::size_t const secondBeats = recorder.count(second);
    std::size_t const firstBeats = recorder.count(first);
    ASSERT_TRUE(waitFor([&] { return recorder.count(first) >= firstBeats + 3; }));
    EXPECT_EQ(secondBeats, recorder.count(second));
    EXPECT_EQ(seen, recorder.count(std::string("every 200"))); // long gone
    scheduler.deleteHeartBeat("twin");
}

TEST(kelHeartBeat, OwnThreadConsumedBeatsAndDeletionDuringDelivery) {
    kelWatchdog watchdog("a scheduler thread of the caller's own", 120s);
    BeatRecorder recorder;
    static kelSchedulerThread* owner = nullptr;
    kelSchedulerThread thread;
    owner = &thread;
    kelHeartBeat* consumed = thread.createHeartBeat("consumed", 60000);
    EXPECT_TRUE(consumed->isBeatTime()); // the caller takes the first beat
    kelHeartBeat* doomed = thread.createHeartBeat("doomed", 0);
    kelHeartBeat* after = thread.createHeartBeat("after", 0);
    // Deleting the heartbeat being delivered, from its notifier: the list lock is re-entrant.
    recorder.onBeat = [](kelHeartBeat* beat) {
        if (std::string(beat->getName()) == "doomed") {
            owner->deleteHeartBeat("doomed");
        }
    };
    ASSERT_TRUE(thread.startThread());
    ASSERT_TRUE(waitFor([&] { return recorder.count(after) >= 3; }));
    thread.stopThread();
    recorder.onBeat = nullptr;
    EXPECT_EQ(0u, recorder.count(consumed)); // the poll never found it due
    EXPECT_EQ(1u, recorder.count(doomed));
    // In the poll that deleted "doomed" the walk skipped "after": its first beat came a poll
    // later than the one of "doomed".
    auto const afterBeats = recorder.of(after);
    auto const doomedBeats = recorder.of(doomed);
    EXPECT_GE(
        std::chrono::duration_cast<std::chrono::milliseconds>(afterBeats[0].at - doomedBeats[0].at)
            .count(),
        40);
    thread.deleteHeartBeat("after");
    thread.deleteHeartBeat("consumed");
}

namespace {

// A notifier that never goes: it stays registered through exit, in static storage.
class SlowListener : public kelEventNotifier {
public:
    void onEvent(kelEvent* event) override {
        if (event != nullptr && event->getType() == kelEventTypes::HeartBeat) {
            ++beats;
            std::this_thread::sleep_for(5ms); // exit likely finds a delivery under way
        }
    }
    std::atomic<int> beats{0};
};
alignas(SlowListener) unsigned char gListenerStorage[sizeof(SlowListener)];

} // namespace

// Creates heartbeats, never deletes them and returns from main with the scheduler running.
KEL_CHILD_SCENARIO(heartbeatsLeftAtExit) {
#if !defined(_WIN32)
    if (argument != "fresh") {
        // The forked child would inherit the parent's singletons without their thread; a
        // fresh image of this program starts from nothing and ends through a normal exit.
        char const* const args[] = {"kelcore_concurrency_tests", "--kel-child",
                                    "heartbeatsLeftAtExit", "fresh", nullptr};
        execv("/proc/self/exe", const_cast<char* const*>(args));
        return 121;
    }
#else
    (void)argument;
#endif
    kelScheduler& scheduler = kelScheduler::getInstance(); // before the publisher is used
    auto* listener = new (gListenerStorage) SlowListener;
    kelEventPublisher::getInstance().registerNotifier(listener);
    scheduler.createHeartBeat("zero", 0);
    scheduler.createHeartBeat("ten", 10);
    scheduler.createHeartBeat("slow", 100000);
    for (int i = 0; i < 500 && listener->beats < 10; ++i) {
        std::this_thread::sleep_for(10ms);
    }
    return listener->beats >= 10 ? 0 : 3;
}

TEST(kelHeartBeat, ProcessExitsCleanlyWithHeartbeatsLeft) {
    kelWatchdog watchdog("a process that exits with heartbeats", 120s);
    kelChildProcess child("heartbeatsLeftAtExit", "");
    ASSERT_TRUE(child.started());
    EXPECT_EQ(0, child.wait());
}
