// kelTime's text and wire forms, in UTC so that the calendar has a closed form. fromString takes
// exactly "dddd/dd/dd dd:dd:dd" and reads out-of-range fields by carrying them over, as plain
// arithmetic on days and seconds does; outside 1970 .. 3000/12/31 23:59:59 it changes nothing,
// as it does for every text it refuses. Each 8 bytes read as the raw seconds through every
// serializer, and a time of the calendar's range prints and parses back to itself.

#include "kelFuzz.h"

#include <kelcore/time/kelTime.h>

#include <cstdlib>
#include <cstring>

using namespace KELKIT;

namespace {

std::int64_t const LAST_SECOND = 32535215999; // 3000/12/31 23:59:59 UTC

// Days from 1970/01/01 to the given date of the proleptic Gregorian calendar (month 1 to 12).
std::int64_t daysFromCivil(std::int64_t y, std::int64_t m, std::int64_t d) {
    y -= m <= 2;
    std::int64_t const era = (y >= 0 ? y : y - 399) / 400;
    std::int64_t const yoe = y - era * 400;
    std::int64_t const doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    std::int64_t const doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int field(std::string const& text, std::size_t at, std::size_t length) {
    return std::atoi(text.substr(at, length).c_str());
}

void checkText(std::string const& text) {
    static char const MASK[] = "0000/00/00 00:00:00";
    bool shape = text.size() == 19;
    for (std::size_t i = 0; shape && i < 19; ++i) {
        shape = MASK[i] == '0' ? isDigit(text[i]) : text[i] == MASK[i];
    }
    UInt64 const before = 123456789;
    kelTime time(before);
    KEL_FUZZ_CHECK(time.fromString(text.c_str()) == shape);
    if (!shape) {
        KEL_FUZZ_CHECK(time.getRawTime() == before);
        return;
    }
    std::int64_t const months = std::int64_t(field(text, 0, 4)) * 12 + field(text, 5, 2) - 1;
    std::int64_t const year = months >= 0 ? months / 12 : (months - 11) / 12;
    std::int64_t const raw =
        (daysFromCivil(year, months - year * 12 + 1, 1) + field(text, 8, 2) - 1) * 86400 +
        field(text, 11, 2) * 3600 + field(text, 14, 2) * 60 + field(text, 17, 2);
    bool const inSpan = raw >= 0 && raw <= LAST_SECOND;
    KEL_FUZZ_CHECK(time.getRawTime() == (inSpan ? UInt64(raw) : before));
}

void checkRaw(UInt64 raw) {
    kelTime const time(raw);
    bool const inSpan = raw <= UInt64(LAST_SECOND);
    KEL_FUZZ_CHECK(time.isValid() == inSpan);
    kelString const text = time.toString();
    if (!inSpan) {
        return;
    }
    KEL_FUZZ_CHECK(text.size() == 19);
    kelTime back(0ull);
    KEL_FUZZ_CHECK(back.fromString(text.c_str()));
    KEL_FUZZ_CHECK(back.getRawTime() == raw);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return kelFuzz::useUtc();
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    checkText(text.c_str());

    // A run of raw times: eight bytes each, short at the end of the input.
    kelFuzz::readRuns(
        data, size, kelTime(7ull), [](kelFuzz::Ahead ahead) { return ahead.size >= 8; },
        [](kelTime const& a, kelTime const& b) { return a.getRawTime() == b.getRawTime(); },
        [](kelTime const& value, kelTime const&, kelFuzz::Kind, kelFuzz::Ahead ahead, bool whole,
           UInt32 consumed) {
            if (whole) {
                KEL_FUZZ_CHECK(consumed == 8);
                KEL_FUZZ_CHECK(value.getRawTime() == kelFuzz::littleEndian(ahead.bytes, 8));
            }
        });
    if (size >= 8) {
        checkRaw(kelFuzz::littleEndian(data, 8));
        checkRaw(kelFuzz::littleEndian(data, 8) % (UInt64(LAST_SECOND) + 2));
    }
    return 0;
}
