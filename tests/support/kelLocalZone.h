#ifndef KELCORE_TESTS_KELLOCALZONE_H
#define KELCORE_TESTS_KELLOCALZONE_H

// Choosing the process's time zone, and the C library's own local-time conversion as an oracle.
//
// On POSIX any zone of the tz database can be chosen at any moment. The Windows runtime takes its
// zone from the system when the process starts (Wine derives it from the host's TZ), and its own
// TZ parsing knows neither the database's names nor their daylight-saving rules: there the zone
// can only be the one the process was started in, with TZ naming it (see tests/CMakeLists.txt).

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace kelTest {

inline bool useZone(char const* name) {
#if defined(_WIN32)
    static std::string const startZone = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "";
    if (startZone != name) {
        return false;
    }
    _putenv("TZ="); // the runtime would misread the name; the system zone is the one named
    _tzset();
    return true;
#else
    setenv("TZ", name, 1);
    tzset();
    return true;
#endif
}

inline bool localOracle(unsigned long long raw, std::tm& out) {
#if defined(_WIN32)
    __time64_t const seconds = static_cast<__time64_t>(raw);
    return _localtime64_s(&out, &seconds) == 0;
#else
    time_t const seconds = static_cast<time_t>(raw);
    return localtime_r(&seconds, &out) != nullptr;
#endif
}

// Seconds from 1970/01/01 of a proleptic Gregorian date, read as UTC: with localOracle it gives
// the offset of the zone at an instant without asking the runtime for it.
inline long long civilSeconds(long long y, unsigned m, unsigned d, int hh, int mm, int ss) {
    y -= m <= 2;
    long long const era = (y >= 0 ? y : y - 399) / 400;
    unsigned const yoe = static_cast<unsigned>(y - era * 400);
    unsigned const doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    unsigned const doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    long long const days = era * 146097 + static_cast<long long>(doe) - 719468;
    return days * 86400 + hh * 3600 + mm * 60 + ss;
}

} // namespace kelTest

#endif
