#ifndef KELCORE_PLATFORM_KELCALENDAR_H
#define KELCORE_PLATFORM_KELCALENDAR_H

// Internal: seconds since the epoch and the machine's local calendar.

#include <kelcore/frame/kelTypes.h>

#include <ctime>

namespace KELKIT {
namespace platform {

// The last second both directions of the conversion accept: 3000/12/31 23:59:59 UTC. The first
// is the epoch itself. The same span on every platform, whatever the runtime would allow.
constexpr UInt64 CALENDAR_LAST_SECOND = 32535215999ull;

// The current time in seconds since the epoch; 0 if the clock cannot be read.
UInt64 currentTime();

// The local calendar of raw seconds, daylight saving applied. False, and local untouched,
// above CALENDAR_LAST_SECOND or when the runtime refuses the value.
bool toLocalCalendar(UInt64 raw, std::tm& local);

// The inverse: normalises out-of-range fields in local (tm_isdst -1 lets the conversion decide
// daylight saving) and stores the seconds in raw. False, and raw untouched, when the result lies
// outside 0 .. CALENDAR_LAST_SECOND or the runtime refuses the fields.
bool fromLocalCalendar(std::tm& local, UInt64& raw);

// What the C runtime tells of the process's time zone: its names, its offset from UTC and its
// daylight-saving flag, as the last zone change or conversion left them. A calendar reading is
// reused only while the stamp it was taken under stays the same, so that a new zone (TZ and
// tzset) is noticed at the next read.
struct ZoneStamp {
    UInt64 words[4];
};

ZoneStamp currentZoneStamp();

} // namespace platform
} // namespace KELKIT

#endif
