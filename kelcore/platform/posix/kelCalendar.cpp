#include <kelcore/platform/kelCalendar.h>

#include <time.h>

namespace KELKIT {
namespace platform {

UInt64 currentTime() {
    time_t const now = ::time(nullptr);
    return now < 0 ? 0 : static_cast<UInt64>(now);
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

bool fromLocalCalendar(std::tm& local, UInt64& raw) {
    // mktime accepts any year that fits; the refusal outside the span is the library's, so that
    // every platform keeps to the same one. -1 is outside it as well.
    time_t const seconds = ::mktime(&local);
    if (seconds < 0 || static_cast<UInt64>(seconds) > CALENDAR_LAST_SECOND) {
        return false;
    }
    raw = static_cast<UInt64>(seconds);
    return true;
}

} // namespace platform
} // namespace KELKIT
