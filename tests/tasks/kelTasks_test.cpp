#include <kelcore/tasks/kelListTask.h>
#include <kelcore/tasks/kelStateMachine.h>
#include <kelcore/tasks/kelTaskTree.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>
#include <thread>
#include <type_traits>
#include <vector>

using namespace KELKIT;

namespace {

template <class List> // a list that isn't empty
auto idsOf(List const& list) {
    return std::vector<std::decay_t<decltype(list[0])>>(&list[0], &list[0] + list.size());
}

// Records each call as from, to and the state seen during it; `hook` may refuse or meddle.
class Watched : public kelStateMachine {
public:
    void onTransition(UInt32 from, UInt32 to, bool& allow) override {
        moves.insert(moves.end(), {from, to, getState()});
        if (hook) {
            hook(allow);
        }
    }
    std::vector<UInt32> moves;
    std::function<void(bool&)> hook;
};

kelTask* deepChain(kelTask& root, int depth) {
    kelTask* last = &root;
    while (depth-- > 0) {
        last = last->getSubTask(last->createSubTask());
    }
    return last;
}

} // namespace

// Random creations and removals against a set of taken ids: the lowest free id comes first.
TEST(kelTask, SlotIdsAreReusedLowestFirst) {
    std::mt19937 rng(7);
    kelTask task;
    std::set<int> taken;
    for (int round = 0; round < 2000; ++round) {
        int const id = int(rng() % 40) - 2; // free, taken, out of range, or all
        if (rng() % 3 != 0) {
            int lowest = 0;
            while (taken.count(lowest) != 0) {
                ++lowest;
            }
            ASSERT_EQ(lowest, task.createSubTask());
            taken.insert(lowest);
        } else if (id == -2) {
            task.removeSubTasks(); // ids start again at 0
            taken.clear();
        } else {
            ASSERT_EQ(taken.count(id) != 0, task.getSubTask(id) != nullptr) << id;
            task.removeSubTask(id);
            taken.erase(id);
        }
        ASSERT_EQ(int(taken.size()), task.getNumSubTasks());
    }
    kelTask a, b;
    b.setDescription("other");
    EXPECT_FALSE(a == b || a < b || b < a); // progress alone orders
    b.setDescription(nullptr);
    b.createSubTask(); // subtasks play no part
    EXPECT_TRUE(a == b);
}

// Copies, assignments, lists and deep chains: ASan checks that everything is freed once.
TEST(kelTask, SharedSlotsAreReleasedOnce) {
    kelTask parent;
    deepChain(parent, 2);
    kelTask copy(parent);
    EXPECT_EQ(0, copy.getNumSubTasks());
    {
        kelTask shared;
        shared.createSubTask(); // its own subtask goes when it takes the parent's
        shared = parent;
        shared = shared;
        EXPECT_EQ(parent.getSubTask(0), shared.getSubTask(0));
        EXPECT_EQ(1, shared.createSubTask());
    }
    EXPECT_EQ(2, parent.getNumSubTasks()); // still there after the sharer went
    {
        kelTask holder;
        holder = parent;
        parent = kelTask(); // the subtasks now live in holder alone
        holder.getSubTask(0)->getSubTask(0)->setProgress(1.0);
    }
    kelTask chain; // deleting deep chains must not take one stack frame per level
    deepChain(chain, 100000);
    chain.removeSubTask(0);
    EXPECT_EQ(0, chain.getNumSubTasks());
    deepChain(chain, 100000)->setProgress(2.0);

    kelListTask list; // holds copies, which carry no subtasks
    list.add(copy);
    list.add(chain);
    list.sort();
    EXPECT_EQ(0, list[0].getNumSubTasks() + list[1].getNumSubTasks());
}

TEST(kelTaskTree, IdsParentsAndTheSharedSnapshot) {
    kelTaskTree tree;
    EXPECT_EQ(0, tree.createTask(kelTaskTree::NO_PARENT_INDEX, kelTaskState::Play, "root"));
    EXPECT_EQ(1, tree.createTask(0));
    EXPECT_EQ(2, tree.createTask(1, kelTaskState::Pause, "leaf"));
    EXPECT_EQ(3, tree.createTask(0));
    EXPECT_EQ(4, tree.createTask(99));
    EXPECT_EQ((std::vector<int>{0}), idsOf(tree.getTopLevelTasks()));
    EXPECT_EQ((std::vector<int>{1, 3}), idsOf(tree.getSubTasks(0)));
    EXPECT_EQ((std::vector<int>{4}), idsOf(tree.getSubTasks(99)));
    EXPECT_EQ(-1, tree.getTaskParent(7));

    kelTask& first = tree.getTask(0);
    EXPECT_EQ(&first, &tree.getTask(2)); // one snapshot, now of task 2
    tree.getTask(50);                    // out of range: the snapshot stays
    EXPECT_EQ(kelTaskState::Pause, first.getState());
    first.setDescription("changed"); // the snapshot, not the entry
    EXPECT_STREQ("leaf", tree.getTask(2).getDescription().c_str());

    kelTaskTree copy(tree);
    EXPECT_EQ(5, copy.createTask(0)); // copies share the table
    EXPECT_EQ((std::vector<int>{1, 3, 5}), idsOf(tree.getSubTasks(0)));
    tree.getTask(5).createSubTask(); // shared with the entry, which keeps it until it grows
    tree = kelTaskTree();
    EXPECT_EQ(0, tree.createTask(-1));
    copy = tree;
    EXPECT_EQ(1, copy.createTask(-1));
}

// Threads create, use and remove subtasks of one task, and of a task assigned from it.
TEST(kelTaskThreads, OneLockGuardsSharedSlots) {
    kelWatchdog const watchdog("task threads", std::chrono::seconds(120));
    kelTask tasks[2];
    tasks[1] = tasks[0];
    auto work = [&tasks](int t) {
        for (int i = 0; i < 500; ++i) {
            int const id = tasks[t % 2].createSubTask();
            tasks[t % 2].lock();
            tasks[(t + 1) % 2].getSubTask(id)->setProgress(tasks[t % 2].getNumSubTasks());
            tasks[t % 2].unlock();
            tasks[(t + 1) % 2].removeSubTask(id);
        }
    };
    std::thread threads[] = {std::thread(work, 0), std::thread(work, 1), std::thread(work, 2)};
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(0, tasks[0].getNumSubTasks());
}

TEST(kelStateMachine, MovesOnlyAlongAllowedTransitions) {
    Watched m;
    kelListUInt32 list;
    list.add(5);
    EXPECT_TRUE(m.getStates(list) && list.empty());
    EXPECT_TRUE(m.addState(1, "one") && m.addState(2) && m.addState(3, nullptr));
    EXPECT_FALSE(m.addState(1, "again"));
    EXPECT_STREQ("one", m.getStateName(1));
    EXPECT_TRUE(m.addTransition(1, 2) && m.addTransition(1, 3) && m.addTransition(3, 1));
    EXPECT_FALSE(m.addTransition(1, 4) || m.addTransition(1, 2));
    EXPECT_FALSE(m.changeState(2)); // no current state yet
    EXPECT_FALSE(m.setInitState(9));
    EXPECT_TRUE(m.setInitState(1));
    EXPECT_FALSE(m.changeState(1)); // no self-transition
    EXPECT_TRUE(m.addTransition(1, 1) && m.changeState(1));
    m.hook = [](bool& allow) { allow = false; };
    EXPECT_FALSE(m.changeState(2));
    m.hook = nullptr;
    EXPECT_TRUE(m.changeState(3));
    EXPECT_EQ((std::vector<UInt32>{1, 1, 1, 1, 2, 1, 1, 3, 1}), m.moves);

    EXPECT_TRUE(m.getTransitions(1, list));
    EXPECT_EQ((std::vector<UInt32>{2, 3, 1}), idsOf(list));
    EXPECT_FALSE(m.removeTransition(1, 7));
    EXPECT_TRUE(m.removeState(1)); // also every transition to it
    EXPECT_EQ(0u, m.getNumTransitions(3));
    EXPECT_TRUE(m.removeState(3)); // the current state
    EXPECT_EQ(0u, m.getState());
    EXPECT_FALSE(m.getTransitions(list) || m.changeState(2));
    EXPECT_TRUE(m.removeTransitionsTo(42));
}

// Copies start empty; assignment shares; everything is freed once (ASan), also when the machine
// is changed or replaced from inside onTransition.
TEST(kelStateMachine, SharedStatesAreReleasedOnce) {
    Watched source;
    source.addState(1);
    source.addState(2);
    source.addTransition(1, 2);
    source.setInitState(1);
    EXPECT_EQ(0u, Watched(source).getNumStates());
    {
        kelStateMachine sharer;
        sharer.addState(7); // released when sharer takes the source's states
        sharer = source;
        sharer = sharer;
        EXPECT_TRUE(sharer.changeState(2));
        EXPECT_EQ(2u, source.getState());
    }
    source.addTransition(2, 1);
    source.hook = [&source](bool&) { source.removeState(1); };
    EXPECT_FALSE(source.changeState(1)); // the target went during the call
    source.addState(1);
    source.addTransition(2, 1);
    source.hook = [&source](bool&) { static_cast<kelStateMachine&>(source) = kelStateMachine(); };
    EXPECT_TRUE(source.changeState(1)); // moved in the states it started from
    EXPECT_EQ(0u, source.getNumStates());
}
