#include <kelcore/platform/kelEventTable.h>

#include <condition_variable>
#include <mutex>
#include <new>
#include <vector>

namespace KELKIT {
namespace platform {

// One mutex and condition variable over a table of flags.
struct EventTable {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<bool> flags;
    UInt32 capacity = 0;
};

std::shared_ptr<EventTable> createEventTable(UInt32 capacity) {
    auto table = std::shared_ptr<EventTable>(new (std::nothrow) EventTable);
    if (table) {
        table->capacity = capacity;
        table->flags.reserve(capacity);
    }
    return table;
}

bool addEventEntry(EventTable& table) {
    std::lock_guard<std::mutex> lock(table.mutex);
    if (table.flags.size() >= table.capacity) {
        return false;
    }
    table.flags.push_back(false);
    return true;
}

void setEventEntry(EventTable& table, UInt32 index) {
    {
        std::lock_guard<std::mutex> lock(table.mutex);
        if (index >= table.flags.size()) {
            return;
        }
        table.flags[index] = true;
    }
    table.changed.notify_all();
}

void resetEventEntry(EventTable& table, UInt32 index) {
    std::lock_guard<std::mutex> lock(table.mutex);
    if (index < table.flags.size()) {
        table.flags[index] = false;
    }
}

bool isEventEntrySet(EventTable& table, UInt32 index) {
    std::lock_guard<std::mutex> lock(table.mutex);
    return index < table.flags.size() && table.flags[index];
}

bool waitForEventEntry(EventTable& table, UInt32 count, UInt32& index) {
    std::unique_lock<std::mutex> lock(table.mutex);
    if (count == 0 || count > table.flags.size()) {
        return false;
    }
    for (;;) {
        for (UInt32 i = 0; i < count; ++i) {
            if (table.flags[i]) {
                index = i;
                return true;
            }
        }
        table.changed.wait(lock);
    }
}

} // namespace platform
} // namespace KELKIT
