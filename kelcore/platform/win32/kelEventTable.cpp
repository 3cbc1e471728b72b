#include <kelcore/platform/kelEventTable.h>

#include <algorithm>
#include <new>
#include <vector>

#include <windows.h>

namespace KELKIT {
namespace platform {

// WaitForMultipleObjects takes at most 64 handles, too few for the table. Each entry is a
// manual-reset event, and one more auto-reset event is signalled after any entry is: the
// waiter scans the entries in index order and sleeps on that one event when none is set.
// Every set goes through setEventEntry, so no signal can slip past the scan.
struct EventTable {
    CRITICAL_SECTION guard; // over the handle vector only
    std::vector<HANDLE> entries;
    HANDLE anySet = nullptr;
    UInt32 capacity = 0;

    EventTable() { InitializeCriticalSection(&guard); }
    ~EventTable() {
        for (HANDLE entry : entries) {
            CloseHandle(entry);
        }
        if (anySet != nullptr) {
            CloseHandle(anySet);
        }
        DeleteCriticalSection(&guard);
    }
};

namespace {

HANDLE entryAt(EventTable& table, UInt32 index) {
    EnterCriticalSection(&table.guard);
    HANDLE const entry = index < table.entries.size() ? table.entries[index] : nullptr;
    LeaveCriticalSection(&table.guard);
    return entry;
}

} // namespace

std::shared_ptr<EventTable> createEventTable(UInt32 capacity) {
    auto table = std::shared_ptr<EventTable>(new (std::nothrow) EventTable);
    if (!table) {
        return nullptr;
    }
    table->anySet = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    if (table->anySet == nullptr) {
        return nullptr;
    }
    table->capacity = capacity;
    table->entries.reserve(capacity);
    return table;
}

bool addEventEntry(EventTable& table) {
    EnterCriticalSection(&table.guard);
    bool added = false;
    if (table.entries.size() < table.capacity) {
        HANDLE const entry = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        if (entry != nullptr) {
            table.entries.push_back(entry);
            added = true;
        }
    }
    LeaveCriticalSection(&table.guard);
    return added;
}

void setEventEntry(EventTable& table, UInt32 index) {
    HANDLE const entry = entryAt(table, index);
    if (entry != nullptr) {
        SetEvent(entry);
        SetEvent(table.anySet);
    }
}

void resetEventEntry(EventTable& table, UInt32 index) {
    HANDLE const entry = entryAt(table, index);
    if (entry != nullptr) {
        ResetEvent(entry);
    }
}

bool isEventEntrySet(EventTable& table, UInt32 index) {
    HANDLE const entry = entryAt(table, index);
    return entry != nullptr && WaitForSingleObject(entry, 0) == WAIT_OBJECT_0;
}

bool waitForEventEntry(EventTable& table, UInt32 count, UInt32& index) {
    EnterCriticalSection(&table.guard);
    bool const valid = count > 0 && count <= table.entries.size();
    std::vector<HANDLE> const entries(table.entries.begin(),
                                      table.entries.begin() + (valid ? count : 0));
    LeaveCriticalSection(&table.guard);
    if (!valid) {
        return false;
    }
    for (;;) {
        // Up to 64 at a time, lowest index first: the wait reports the lowest signalled handle
        // of each group, and the groups go in order.
        for (std::size_t first = 0; first < entries.size(); first += MAXIMUM_WAIT_OBJECTS) {
            std::size_t const size =
                std::min<std::size_t>(MAXIMUM_WAIT_OBJECTS, entries.size() - first);
            DWORD const result =
                WaitForMultipleObjects(static_cast<DWORD>(size), &entries[first], FALSE, 0);
            if (result < WAIT_OBJECT_0 + size) {
                index = static_cast<UInt32>(first + (result - WAIT_OBJECT_0));
                return true;
            }
            if (result == WAIT_FAILED) {
                return false;
            }
        }
        if (WaitForSingleObject(table.anySet, INFINITE) != WAIT_OBJECT_0) {
            return false;
        }
    }
}

} // namespace platform
} // namespace KELKIT
