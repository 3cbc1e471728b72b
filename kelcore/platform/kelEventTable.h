#ifndef KELCORE_PLATFORM_KELEVENTTABLE_H
#define KELCORE_PLATFORM_KELEVENTTABLE_H

// Internal: a table of manual-reset events with a wait for any of them that reports the lowest
// signalled index. Entries are added at the end and never removed.

#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {
namespace platform {

// Defined by each platform around its native events.
struct EventTable;

// Room for capacity entries; null when the platform refused.
std::shared_ptr<EventTable> createEventTable(UInt32 capacity);

// Appends an entry, not signalled. False when the table is full or the platform refused.
bool addEventEntry(EventTable& table);
// Indexes at or beyond the number of entries are ignored (false for the query).
void setEventEntry(EventTable& table, UInt32 index);
void resetEventEntry(EventTable& table, UInt32 index);
bool isEventEntrySet(EventTable& table, UInt32 index);

// Waits without limit until one of the first count entries is signalled, and gives the lowest
// signalled index; the state isn't changed. False when the wait itself failed (also for a
// count of 0 or beyond the entries).
bool waitForEventEntry(EventTable& table, UInt32 count, UInt32& index);

} // namespace platform
} // namespace KELKIT

#endif
