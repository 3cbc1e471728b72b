#include <kelcore/events/kelCancelActionEvent.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/frame/kelEventTypes.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace KELKIT;
using namespace std::chrono_literals;

namespace {

struct CustomEvent : kelEvent {
    UInt64 getType() const override { return kelEventTypes::Custom; }
};

// Appends its tag to a shared journal and then runs an optional action.
class Tagged : public kelEventNotifier {
public:
    Tagged(std::string& journal, char tag) : mJournal(journal), mTag(tag) {}
    void onEvent(kelEvent* event) override {
        mJournal += mTag;
        last = event;
        if (action) {
            action(event);
        }
    }
    std::function<void(kelEvent*)> action;
    kelEvent* last = nullptr;

private:
    std::string& mJournal;
    char mTag;
};

// Registers notifiers for one test and always unregisters them, also when a test fails.
class kelEventPublisherTest : public testing::Test {
protected:
    kelEventPublisher& bus = kelEventPublisher::getInstance();
    std::string journal;
    Tagged a{journal, 'A'}, b{journal, 'B'}, c{journal, 'C'};

    void TearDown() override {
        for (Tagged* n : {&a, &b, &c}) {
            bus.unregisterNotifier(n);
        }
    }
};

} // namespace

TEST_F(kelEventPublisherTest, OrderDuplicatesAndSnapshots) {
    CustomEvent event;
    bus.publishEvent(&event); // nobody listens
    EXPECT_EQ("", journal);

    bus.registerNotifier(&a);
    bus.registerNotifier(&b);
    bus.registerNotifier(&a); // no second entry
    bus.registerNotifier(&c);
    kelListEventNotifierPtr snapshot;
    bus.getNotifiers(snapshot);
    bus.unregisterNotifier(&b);
    bus.unregisterNotifier(&b); // not there any more: nothing happens

    bus.publishEvent(&event);
    bus.publishEvent(nullptr); // handed on as such
    EXPECT_EQ("ACAC", journal);
    EXPECT_TRUE(a.last == nullptr && c.last == nullptr);

    // The snapshot kept its order and still reaches all three.
    journal.clear();
    for (UInt32 i = 0; i < snapshot.size(); ++i) {
        snapshot[i]->onEvent(&event);
    }
    EXPECT_EQ("ABC", journal);
}

TEST_F(kelEventPublisherTest, CancelFlagSetDuringAPass) {
    kelCancelActionEvent cancel;
    EXPECT_EQ(5u, cancel.getType());
    a.action = [](kelEvent* event) {
        if (event->getType() == kelEventTypes::CancelAction) {
            static_cast<kelCancelActionEvent*>(event)->cancelAction();
        }
    };
    bus.registerNotifier(&a);
    bus.registerNotifier(&b);
    bus.publishEvent(&cancel);
    EXPECT_EQ("AB", journal); // later notifiers still get it
    EXPECT_TRUE(cancel.isCancel());
    kelCancelActionEvent copy(cancel);
    EXPECT_TRUE(copy.isCancel());
    copy = kelCancelActionEvent(); // assignment is the only way back
    EXPECT_FALSE(copy.isCancel());
}

TEST_F(kelEventPublisherTest, ChangesDuringAPassFollowTheIndex) {
    kelWatchdog watchdog("re-entrant passes", 60s);
    CustomEvent event;
    // A unregisters itself: B slides into its place and misses this pass. C, registered by
    // A during the pass, is reached in it.
    a.action = [this](kelEvent*) {
        bus.unregisterNotifier(&a);
        bus.registerNotifier(&c);
    };
    bus.registerNotifier(&a);
    bus.registerNotifier(&b);
    bus.publishEvent(&event);
    EXPECT_EQ("AC", journal);
    journal.clear();
    // A nested publication from inside a pass runs at once, on this thread.
    b.action = [this](kelEvent* e) {
        if (e != nullptr) {
            bus.publishEvent(nullptr);
        }
    };
    bus.publishEvent(&event);
    EXPECT_EQ("BBCC", journal);
}

TEST_F(kelEventPublisherTest, ThrowingNotifierReleasesTheLock) {
    kelWatchdog watchdog("a publication after a throwing notifier", 60s);
    CustomEvent event;
    a.action = [](kelEvent*) { throw std::runtime_error("from a notifier"); };
    bus.registerNotifier(&a);
    bus.registerNotifier(&b);
    EXPECT_THROW(bus.publishEvent(&event), std::runtime_error);
    EXPECT_EQ("A", journal); // the pass ended there
    bus.unregisterNotifier(&a);
    // Another thread gets the lock: it was not left held.
    std::thread other([this, &event] { bus.publishEvent(&event); });
    other.join();
    EXPECT_EQ("AB", journal);
}

TEST_F(kelEventPublisherTest, PassesFromManyThreadsNeverInterleave) {
    kelWatchdog watchdog("publications from several threads", 120s);
    // A pass holds the lock from A to C: no other pass may begin in between.
    std::atomic<int> inside{0}, overlaps{0};
    a.action = [&](kelEvent*) { overlaps += inside++ > 0 ? 1 : 0; };
    b.action = [](kelEvent*) { std::this_thread::yield(); };
    c.action = [&](kelEvent*) { --inside; };
    bus.registerNotifier(&a);
    bus.registerNotifier(&b);
    bus.registerNotifier(&c);
    std::vector<std::thread> publishers;
    for (int t = 0; t < 4; ++t) {
        publishers.emplace_back([this] {
            CustomEvent event;
            for (int i = 0; i < 500; ++i) {
                bus.publishEvent(&event);
            }
        });
    }
    for (auto& p : publishers) {
        p.join();
    }
    EXPECT_EQ(0, overlaps);
    EXPECT_EQ(6000u, journal.size()); // the journal itself is only written under the lock
}
