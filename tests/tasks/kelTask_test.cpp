#include <kelcore/tasks/kelListTask.h>
#include <kelcore/tasks/kelTaskTree.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <thread>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<int> idsOf(kelListInt const& list) {
    std::vector<int> ids;
    for (UInt32 i = 0; i < list.size(); ++i) {
        ids.push_back(list[i]);
    }
    return ids;
}

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
    for (int round = 1; round <= 2000; ++round) {
        int const id = int(rng() % 40) - 2; // free, taken and out-of-range ids
        if (round % 500 == 0) {
            task.removeSubTasks();
            taken.clear();
        } else if (rng() % 3 != 0) {
            int lowest = 0;
            while (taken.count(lowest) != 0) {
                ++lowest;
            }
            ASSERT_EQ(lowest, task.createSubTask());
            taken.insert(lowest);
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
    parent.setDescription("parent");
    deepChain(parent, 2);
    kelTask copy(parent);
    EXPECT_EQ(0, copy.getNumSubTasks());
    EXPECT_STREQ("parent", copy.getDescription().c_str());
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
    list.reverse();
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
    EXPECT_STREQ("root", first.getDescription().c_str());
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
    kelTask task, sharer;
    sharer = task;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&task, &sharer, t] {
            kelTask& mine = t % 2 == 0 ? task : sharer;
            for (int i = 0; i < 500; ++i) {
                int const id = mine.createSubTask();
                mine.lock();
                kelTask* const sub = mine.getSubTask(id);
                if (sub != nullptr) {
                    sub->setProgress(i);
                }
                mine.unlock();
                EXPECT_NE(nullptr, sub);
                mine.setProgress(mine.getNumSubTasks());
                mine.removeSubTask(id);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(0, task.getNumSubTasks());
}
