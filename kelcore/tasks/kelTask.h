#ifndef KELCORE_TASKS_KELTASK_H
#define KELCORE_TASKS_KELTASK_H

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/frame/kelTaskState.h>
#include <kelcore/strings/kelString.h>

#include <memory>

namespace KELKIT {

// A thread-safe progress record for a piece of work: a progress number (no unit or range), a
// play, pause or stop state, a description, and subtasks in numbered slots. It runs nothing
// and ties nothing together: setState stores any state.
//
// Subtasks belong to their task. A subtask's id is its slot: it stays for the subtask's life,
// and a freed id is the next to come back (the lowest free slot is taken first).
//
// Locking: every virtual operation holds the task's re-entrant lock for its whole run; lock()
// and unlock() hold it across several calls. A caller that holds a task's lock and works on a
// subtask takes the parent's lock first. A pointer from getSubTask is not protected after the
// call: another thread may remove that subtask. Comparisons read without the lock.
//
// Copies: the copy constructor takes progress, state and description, with a lock of its own
// and no subtasks. Assignment takes the three values and shares the source's lock and subtask
// slots: both tasks then show and change the same subtasks. Subtasks go with the last task
// that shares them, and a task's former subtasks go when it no longer shares them with any.
class KELCORE_API kelTask {
public:
    kelTask();
    kelTask(kelTask const& other);
    kelTask& operator=(kelTask const& other);
    virtual ~kelTask();

    virtual void lock();
    virtual void unlock();
    virtual void setProgress(double progress);
    virtual double getProgress();
    virtual void setState(kelTaskState state);
    virtual kelTaskState getState();
    // A null description is the empty text.
    virtual void setDescription(char const* description);
    virtual kelString getDescription();
    // A new subtask with the default values in the lowest free slot: its id, or -1 when the
    // slots can't grow.
    virtual int createSubTask();
    // The subtasks, not the slots.
    virtual int getNumSubTasks();
    // Null for a free slot or an id out of range.
    virtual kelTask* getSubTask(int id);
    // Deletes the subtask with its own subtasks and frees the slot; other ids stay. Nothing
    // for a free slot or an id out of range.
    virtual void removeSubTask(int id);
    // Deletes every subtask and frees the slots: ids start again at 0.
    virtual void removeSubTasks();

    // Progress, state and description equal; subtasks play no part.
    bool operator==(kelTask const& other) const;
    bool operator!=(kelTask const& other) const;
    // By progress alone.
    bool operator<(kelTask const& other) const;

private:
    int findTaskSlot();

    struct Slots;

    double mProgress;
    kelTaskState mState;
    kelString mDescription;
    kelCriticalSection mLock;
    std::shared_ptr<Slots> mSlots;
};

} // namespace KELKIT

#endif
