#ifndef KELCORE_TASKS_KELTASKTREE_H
#define KELCORE_TASKS_KELTASKTREE_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/containers/kelLists.h>
#include <kelcore/tasks/kelTask.h>

#include <memory>

namespace KELKIT {

// A flat, append-only table of tasks with parent links, addressed by ids: 0 for the first task
// created, then one more for each. Entries are never removed. Parents are stored as given and
// never checked; NO_PARENT_INDEX marks a top-level task.
//
// The tree's lock covers its table; every operation takes it, and a caller may hold it across
// several. Copies and assignments share the lock and the table; the table goes with the last
// tree that shares it.
//
// Entries are copied when the table grows, and a copy of a task has no subtasks: subtasks
// given to an entry (through getTask) don't stay with it.
class KELCORE_API kelTaskTree {
public:
    static constexpr SInt32 NO_PARENT_INDEX = -1;

    kelTaskTree();
    kelTaskTree(kelTaskTree const& other);
    kelTaskTree& operator=(kelTaskTree const& other);
    virtual ~kelTaskTree();

    virtual kelCriticalSection& getTaskTreeCriticalSection();
    // The new task's id; -1 only when the table already holds the largest number of ids.
    virtual int createTask(int parent, kelTaskState state, char const* description);
    // State Stop, empty description.
    virtual int createTask(int parent);
    // Ids in ascending order.
    virtual kelListInt getTopLevelTasks();
    // Direct children only, ids in ascending order.
    virtual kelListInt getSubTasks(int parent);
    // -1 for an id out of range.
    virtual int getTaskParent(int id);
    // A snapshot: one task object for the whole process, assigned from the entry (sharing its
    // lock and subtasks) when the id is in range, and left as it was otherwise. It holds until
    // the next getTask on any tree; changing it changes the snapshot, not the entry. Not safe
    // between threads.
    virtual kelTask& getTask(int id);

private:
    struct Entries;

    kelCriticalSection mLock;
    std::shared_ptr<Entries> mEntries;
};

} // namespace KELKIT

#endif
