#include <kelcore/tasks/kelTask.h>

#include <kelcore/internal/kelEntered.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace KELKIT {

using internal::Entered;

namespace {

// Subtasks whose last owner is going, waiting to be deleted by the outermost deletion running
// on this thread. Deleting a subtask releases its own slots, which would delete their subtasks
// from inside, and so on: a deep chain would use one stack frame per level.
thread_local std::vector<kelTask*>* tPendingDeletes = nullptr;

void deleteTasks(kelTask* const* tasks, SInt32 count) {
    if (tPendingDeletes != nullptr) {
        for (SInt32 i = 0; i < count; ++i) {
            if (tasks[i] == nullptr) {
                continue;
            }
            try {
                tPendingDeletes->push_back(tasks[i]);
            } catch (...) {
                delete tasks[i]; // out of memory: at the cost of stack depth
            }
        }
        return;
    }
    std::vector<kelTask*> pending;
    tPendingDeletes = &pending;
    for (SInt32 i = 0; i < count; ++i) {
        delete tasks[i];
        while (!pending.empty()) {
            kelTask* const task = pending.back();
            pending.pop_back();
            delete task;
        }
    }
    tPendingDeletes = nullptr;
}

} // namespace

// The slot table, shared by the tasks that were assigned from one another. A slot is null
// (free) or holds an owned subtask.
struct kelTask::Slots {
    kelTask** array = nullptr;
    UInt32 size = 0;  // bytes
    SInt32 count = 0; // slots
    // Every slot below this one is taken: the search for the lowest free slot starts here.
    SInt32 firstFree = 0;

    Slots() = default;
    Slots(Slots const&) = delete;
    Slots& operator=(Slots const&) = delete;
    // Runs with the last task that shares the table: nobody else can reach it.
    ~Slots() {
        deleteTasks(array, count);
        std::free(array);
    }
};

kelTask::kelTask()
    : mProgress(0.0), mState(kelTaskState::Stop), mSlots(std::make_shared<Slots>()) {}

kelTask::kelTask(kelTask const& other)
    : mProgress(0.0), mState(kelTaskState::Stop), mSlots(std::make_shared<Slots>()) {
    kelCriticalSection source(other.mLock);
    Entered const entered(source);
    mProgress = other.mProgress;
    mState = other.mState;
    mDescription = other.mDescription;
}

kelTask& kelTask::operator=(kelTask const& other) {
    if (&other == this) {
        return *this;
    }
    // One lock at a time, so that two assignments in opposite directions can't deadlock.
    double progress = 0.0;
    kelTaskState state;
    kelString description;
    std::shared_ptr<Slots> slots;
    kelCriticalSection sourceLock(other.mLock);
    {
        Entered const entered(sourceLock);
        progress = other.mProgress;
        state = other.mState;
        description = other.mDescription;
        slots = other.mSlots;
    }
    // Released after the lock is left; the subtasks go if no other task shares them.
    std::shared_ptr<Slots> former;
    kelCriticalSection ownLock(mLock);
    {
        Entered const entered(ownLock);
        mProgress = progress;
        mState = state;
        mDescription = description;
        mLock = sourceLock;
        former.swap(mSlots);
        mSlots = std::move(slots);
    }
    return *this;
}

// The subtasks go with the last task that shares them (see Slots).
kelTask::~kelTask() = default;

void kelTask::lock() {
    mLock.enter();
}

void kelTask::unlock() {
    mLock.leave();
}

void kelTask::setProgress(double progress) {
    Entered const entered(mLock);
    mProgress = progress;
}

double kelTask::getProgress() {
    Entered const entered(mLock);
    return mProgress;
}

void kelTask::setState(kelTaskState state) {
    Entered const entered(mLock);
    mState = state;
}

kelTaskState kelTask::getState() {
    Entered const entered(mLock);
    return mState;
}

void kelTask::setDescription(char const* description) {
    Entered const entered(mLock);
    mDescription = description;
}

kelString kelTask::getDescription() {
    Entered const entered(mLock);
    return mDescription;
}

int kelTask::createSubTask() {
    Entered const entered(mLock);
    int const id = findTaskSlot();
    if (id < 0) {
        return -1;
    }
    mSlots->array[id] = new kelTask();
    return id;
}

int kelTask::getNumSubTasks() {
    Entered const entered(mLock);
    int taken = 0;
    for (SInt32 i = 0; i < mSlots->count; ++i) {
        if (mSlots->array[i] != nullptr) {
            ++taken;
        }
    }
    return taken;
}

kelTask* kelTask::getSubTask(int id) {
    Entered const entered(mLock);
    if (id < 0 || id >= mSlots->count) {
        return nullptr;
    }
    return mSlots->array[id];
}

void kelTask::removeSubTask(int id) {
    Entered const entered(mLock);
    kelTask* const task = getSubTask(id);
    // Only what the slot holds is ours to delete, whatever an override of getSubTask answers.
    if (task == nullptr || id < 0 || id >= mSlots->count || mSlots->array[id] != task) {
        return;
    }
    mSlots->array[id] = nullptr;
    if (id < mSlots->firstFree) {
        mSlots->firstFree = id;
    }
    kelTask* const owned[] = {task};
    deleteTasks(owned, 1);
}

void kelTask::removeSubTasks() {
    Entered const entered(mLock);
    if (mSlots->array == nullptr) {
        return;
    }
    for (SInt32 id = 0; id < mSlots->count; ++id) {
        removeSubTask(id);
    }
    // A subtask's deletion can't reach this table, so it is still the one to free.
    kelTask** const leftover = mSlots->array;
    SInt32 const leftoverCount = mSlots->count;
    mSlots->array = nullptr;
    mSlots->size = 0;
    mSlots->count = 0;
    mSlots->firstFree = 0;
    // An override of removeSubTask may have kept some.
    deleteTasks(leftover, leftoverCount);
    std::free(leftover);
}

bool kelTask::operator==(kelTask const& other) const {
    return mProgress == other.mProgress && mState.getValue() == other.mState.getValue() &&
           mDescription == other.mDescription;
}

bool kelTask::operator!=(kelTask const& other) const {
    return !(*this == other);
}

bool kelTask::operator<(kelTask const& other) const {
    return mProgress < other.mProgress;
}

int kelTask::findTaskSlot() {
    Entered const entered(mLock);
    Slots& slots = *mSlots;
    for (SInt32 id = slots.firstFree; id < slots.count; ++id) {
        if (slots.array[id] == nullptr) {
            slots.firstFree = id;
            return id;
        }
    }
    // Grow by exactly one slot; the size in bytes must stay within 32 bits.
    std::size_t const bytes = (static_cast<std::size_t>(slots.count) + 1) * sizeof(kelTask*);
    if (slots.count == INT_MAX || bytes > UINT32_MAX) {
        return -1;
    }
    void* const grown = std::realloc(slots.array, bytes);
    if (grown == nullptr) {
        return -1;
    }
    slots.array = static_cast<kelTask**>(grown);
    slots.array[slots.count] = nullptr;
    slots.count += 1;
    slots.size = static_cast<UInt32>(bytes);
    slots.firstFree = slots.count - 1;
    return slots.count - 1;
}

} // namespace KELKIT
