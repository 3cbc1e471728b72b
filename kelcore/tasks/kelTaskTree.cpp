#include <kelcore/tasks/kelTaskTree.h>

#include <kelcore/internal/kelEntered.h>

#include <climits>
#include <vector>

namespace KELKIT {

using internal::Entered;

struct kelTaskTree::Entries {
    struct Entry {
        kelTask task;
        SInt32 parent;
    };
    std::vector<Entry> list;
};

kelTaskTree::kelTaskTree() : mEntries(std::make_shared<Entries>()) {}

kelTaskTree::kelTaskTree(kelTaskTree const&) = default;

kelTaskTree& kelTaskTree::operator=(kelTaskTree const&) = default;

kelTaskTree::~kelTaskTree() = default;

kelCriticalSection& kelTaskTree::getTaskTreeCriticalSection() {
    return mLock;
}

int kelTaskTree::createTask(int parent, kelTaskState state, char const* description) {
    Entered const entered(mLock);
    std::vector<Entries::Entry>& list = mEntries->list;
    if (list.size() >= static_cast<std::size_t>(INT_MAX)) {
        return -1;
    }
    Entries::Entry entry{kelTask(), parent};
    entry.task.setState(state);
    entry.task.setDescription(description);
    list.push_back(entry);
    return static_cast<int>(list.size() - 1);
}

int kelTaskTree::createTask(int parent) {
    return createTask(parent, kelTaskState::Stop, "");
}

kelListInt kelTaskTree::getTopLevelTasks() {
    return getSubTasks(NO_PARENT_INDEX);
}

kelListInt kelTaskTree::getSubTasks(int parent) {
    Entered const entered(mLock);
    kelListInt ids;
    std::vector<Entries::Entry> const& list = mEntries->list;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].parent == parent) {
            ids.add(static_cast<int>(i));
        }
    }
    return ids;
}

int kelTaskTree::getTaskParent(int id) {
    Entered const entered(mLock);
    std::vector<Entries::Entry> const& list = mEntries->list;
    if (id < 0 || static_cast<std::size_t>(id) >= list.size()) {
        return -1;
    }
    return list[id].parent;
}

kelTask& kelTaskTree::getTask(int id) {
    static kelTask snapshot;
    Entered const entered(mLock);
    std::vector<Entries::Entry> const& list = mEntries->list;
    if (id >= 0 && static_cast<std::size_t>(id) < list.size()) {
        snapshot = list[id].task;
    }
    return snapshot;
}

} // namespace KELKIT
