#include <kelcore/events/kelAbstractController.h>
#include <kelcore/events/kelAbstractModel.h>
#include <kelcore/events/kelAbstractObservable.h>
#include <kelcore/events/kelAbstractView.h>
#include <kelcore/events/kelIObserver.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

using namespace KELKIT;
using namespace std::chrono_literals;

namespace {

// Brings the interface in by a second road: still one kelIObservable.
struct Subject : kelAbstractObservable, virtual kelIObservable {};

// Appends its tag to a journal, checks who notified, then runs an optional action.
struct Tagged : kelIObserver {
    Tagged(std::string& journal, char tag, kelIObservable* expected)
        : journal(journal), tag(tag), expected(expected) {}
    void onNotify(kelIObservable* observable) override {
        journal += observable == expected ? tag : '?';
        if (action) {
            action();
        }
    }
    std::string& journal;
    char tag;
    kelIObservable* expected;
    std::function<void()> action;
};

struct View : kelAbstractView {
    explicit View(int deferred) : deferred(deferred) {}
    int isViewDeferred() override { return deferred; }
    void updateView() override { ++updates; }
    int deferred;
    int updates = 0;
};

// Refuses every removal: removeObservers must still return.
struct Stubborn : kelAbstractObservable {
    bool removeObserver(kelIObserver*) override { return false; }
};

} // namespace

TEST(kelObservers, DuplicatesRemovalAndChangesDuringAPass) {
    Subject subject;
    kelIObservable* const self = &subject;
    std::string journal;
    Tagged a(journal, 'A', self), b(journal, 'B', self), c(journal, 'C', self);
    subject.addObserver(&a);
    subject.addObserver(&b);
    subject.addObserver(&a);
    subject.notifyObservers();
    EXPECT_EQ("ABA", journal);
    EXPECT_TRUE(subject.removeObserver(&a)); // the first of the two
    EXPECT_FALSE(subject.removeObserver(&c));
    journal.clear();
    subject.notifyObservers();
    EXPECT_EQ("BA", journal);

    // B takes itself out (A, now at its index, misses the pass) and adds C (reached in it).
    b.action = [&] {
        subject.removeObserver(&b);
        subject.addObserver(&c);
    };
    journal.clear();
    subject.notifyObservers();
    EXPECT_EQ("BC", journal);
    EXPECT_EQ(2u, subject.getObservers().size());
    EXPECT_TRUE(subject.removeObservers());
    EXPECT_TRUE(subject.getObservers().empty());
    EXPECT_TRUE(subject.removeObservers());

    kelWatchdog watchdog("removeObservers with a refusing removal", 60s);
    Stubborn stubborn;
    stubborn.addObserver(&a);
    EXPECT_FALSE(stubborn.removeObservers());
}

TEST(kelObservers, DeferredViewsAreMarkedDirtyNotUpdated) {
    kelAbstractModel model;
    View a(0), b(1);
    EXPECT_TRUE(!b.isViewDirty() && b.getController() == nullptr);
    model.addView(&a);
    model.addView(&b);
    model.notifyViews();
    EXPECT_TRUE(a.updates == 1 && !a.isViewDirty());
    EXPECT_TRUE(b.updates == 0 && b.isViewDirty());
    b.setViewDirty(false); // the view's own business; the model never clears it
    b.deferred = 0;
    a.deferred = 7;
    model.notifyViews();
    EXPECT_TRUE(a.updates == 1 && a.isViewDirty() && b.updates == 1 && !b.isViewDirty());

    kelAbstractController controller;
    controller.addModel(&model);
    controller.addModel(&model);
    b.setController(&controller);
    View copy(b);
    EXPECT_TRUE(copy.getController() == &controller && !copy.isViewDirty());
    EXPECT_TRUE(controller.removeModel(&model) && controller.getModels().size() == 1);
    EXPECT_TRUE(model.removeViews() && model.getViews().empty());
    EXPECT_TRUE(controller.removeModels() && !controller.removeModel(&model));
}

// Copies share the source's lock: a copy can't notify while the original is locked on another
// thread. Copies and originals go in every order, and the lock with the last of them.
TEST(kelObservers, CopiesShareOneLock) {
    kelWatchdog watchdog("notifying a copy", 60s);
    auto original = std::make_unique<kelAbstractObservable>();
    auto copy = std::make_unique<kelAbstractObservable>(*original);
    kelAbstractObservable assigned;
    assigned = *copy;
    std::string journal;
    std::atomic<bool> notified{false};
    Tagged observer(journal, 'x', nullptr);
    observer.action = [&] { notified = true; };
    assigned.addObserver(&observer);

    original->lock();
    std::thread other([&] { assigned.notifyObservers(); });
    std::this_thread::sleep_for(50ms);
    EXPECT_FALSE(notified.load());
    original->unlock();
    other.join();
    EXPECT_TRUE(notified.load());

    original.reset();
    copy->lock(); // still the same, live lock
    copy->unlock();
    copy.reset();
    assigned.lock();
    assigned.unlock();

    kelAbstractModel model;
    View view(0);
    model.addView(&view);
    kelAbstractModel modelCopy(model);
    model.lock(); // shared and re-entrant: the copy's pass on this thread goes through
    modelCopy.notifyViews();
    model.unlock();
    EXPECT_EQ(1, view.updates);
}
