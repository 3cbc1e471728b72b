#include <kelcore/platform/kelCalendar.h>

#include <time.h>

namespace KELKIT {
namespace platform {

UInt64 currentTime() {
    __time64_t const now = ::_time64(nullptr);
    return now < 0 ? 0 : static_cast<UInt64>(now);
}

namespace {

// FNV-1a: the runtime rewrites its name buffers in place, so the stamp holds their contents.
UInt64 textStamp(char const* text) {
    UInt64 hash = 14695981039346656037ull;
    for (; text != nullptr && *text != '\0'; ++text) {
        hash = (hash ^ static_cast<unsigned char>(*text)) * 1099511628211ull;
    }
    return hash;
}

} // namespace

ZoneStamp currentZoneStamp() {
    ZoneStamp stamp = {};
    stamp.words[0] =
        static_cast<UInt32>(_timezone) | static_cast<UInt64>(static_cast<UInt32>(_dstbias)) << 32;
    stamp.words[1] = static_cast<UInt64>(_daylight);
    stamp.words[2] = textStamp(_tzname[0]);
    stamp.words[3] = textStamp(_tzname[1]);
    return stamp;
}

bool toLocalCalendar(UInt64 raw, std::tm& local) {
    // The runtime reads a few hours beyond the span (its own limit is set for the zone furthest
    // west); the library keeps to one span on every platform.
    if (raw > CALENDAR_LAST_SECOND) {
        return false;
    }
    __time64_t const seconds = static_cast<__time64_t>(raw);
    std::tm result;
    if (::_localtime64_s(&result, &seconds) != 0) {
        return false;
    }
    local = result;
    return true;
}

bool fromLocalCalendar(std::tm& local, UInt64& raw) {
    __time64_t const seconds = ::_mktime64(&local);
    if (seconds < 0 || static_cast<UInt64>(seconds) > CALENDAR_LAST_SECOND) {
        return false;
    }
    raw = static_cast<UInt64>(seconds);
    return true;
}

} // namespace platform
} // namespace KELKIT
