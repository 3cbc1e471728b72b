#include <kelcore/platform/kelCalendar.h>

#include <cstdint>
#include <time.h>

namespace KELKIT {
namespace platform {

UInt64 currentTime() {
    time_t const now = ::time(nullptr);
    return now < 0 ? 0 : static_cast<UInt64>(now);
}

// glibc keeps the names in a table of its own, one copy of each text, so equal pointers are equal
// names.
ZoneStamp currentZoneStamp() {
    ZoneStamp stamp = {};
    stamp.words[0] = reinterpret_cast<std::uintptr_t>(tzname[0]);
    stamp.words[1] = reinterpret_cast<std::uintptr_t>(tzname[1]);
    stamp.words[2] = static_cast<UInt64>(timezone);
    stamp.words[3] = static_cast<UInt64>(daylight);
    return stamp;
}

bool toLocalCalendar(UInt64 raw, std::tm& local) {
    if (raw > CALENDAR_LAST_SECOND) {
        return false;
    }
    time_t const seconds = static_cast<time_t>(raw);
    std::tm result;
    if (::localtime_r(&seconds, &result) == nullptr) {
        return false;
    }
    local = result;
    return true;
}

namespace {

bool plainClock(std::tm const& t) {
    return t.tm_hour >= 0 && t.tm_hour <= 23 && t.tm_min >= 0 && t.tm_min <= 59 && t.tm_sec >= 0 &&
           t.tm_sec <= 59;
}

bool sameClock(std::tm const& a, std::tm const& b) {
    return a.tm_hour == b.tm_hour && a.tm_min == b.tm_min && a.tm_sec == b.tm_sec;
}

bool sameFields(std::tm const& a, std::tm const& b) {
    return a.tm_year == b.tm_year && a.tm_mon == b.tm_mon && a.tm_mday == b.tm_mday &&
           a.tm_hour == b.tm_hour && a.tm_min == b.tm_min && a.tm_sec == b.tm_sec;
}

} // namespace

bool fromLocalCalendar(std::tm& local, UInt64& raw) {
    std::tm const asked = local;
    // mktime accepts any year that fits; the refusal outside the span is the library's, so that
    // every platform keeps to the same one. -1 is outside it as well.
    time_t seconds = ::mktime(&local);
    if (asked.tm_isdst < 0 && seconds != -1 && plainClock(asked) && !sameClock(asked, local)) {
        // A clock time that the start of daylight saving skips. glibc moves it forward; the
        // Windows runtime reads it as daylight time, which lands before the change (02:30
        // becomes 01:30 standard time). Both platforms give the Windows answer. The result must
        // lie shortly before glibc's, which also rules out changes of a zone's standard offset.
        std::tm daylight = asked;
        daylight.tm_isdst = 1;
        time_t const other = ::mktime(&daylight);
        if (other != -1 && other < seconds && seconds - other <= 7200) {
            seconds = other;
            local = daylight;
        }
    } else if (asked.tm_isdst < 0 && seconds != -1 && local.tm_isdst > 0) {
        // A clock time in the hour that repeats when daylight saving ends has two readings, and
        // glibc picks whichever lies nearer its previous conversion: the same fields would give
        // different instants from call to call. The standard-time reading wins whenever it
        // exists, as with the Windows runtime. Only a daylight reading that standard time
        // follows within two hours (the largest shift in use) can have a twin, so the second
        // conversion is spared everywhere else.
        time_t const later = seconds + 7200;
        std::tm after;
        if (::localtime_r(&later, &after) != nullptr && after.tm_isdst == 0) {
            std::tm standard = asked;
            standard.tm_isdst = 0;
            time_t const other = ::mktime(&standard);
            if (other != -1 && standard.tm_isdst == 0 && sameFields(standard, local)) {
                seconds = other;
                local = standard;
            }
        }
    }
    if (seconds < 0 || static_cast<UInt64>(seconds) > CALENDAR_LAST_SECOND) {
        return false;
    }
    raw = static_cast<UInt64>(seconds);
    return true;
}

} // namespace platform
} // namespace KELKIT
