#include <kelcore/time/kelTime.h>

#include <kelcore/platform/kelCalendar.h>
#include <kelcore/strings/kelStringConverter.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace KELKIT {

namespace {

// The shape fromString() accepts: each 0 is a digit.
char const TIME_MASK[] = "0000/00/00 00:00:00";

bool readLocal(kelTime const& time, std::tm& local) {
    return platform::toLocalCalendar(time.getRawTime(), local);
}

// The calendar fields that the getters, getAll(), isLeapYear() and toString() give.
struct LocalFields {
    UInt16 year;
    UInt8 month;
    UInt8 day;
    UInt8 hour;
    UInt8 minute;
    UInt8 second;
    UInt8 weekDay;
    UInt16 yearDay;
};

// The last conversions of this thread, so that the getters that follow one another on the same
// instant convert once. An entry is used only for the same raw time under the same zone stamp.
// Each thread has its own entries: nothing is shared, nothing is locked.
struct CalendarEntry {
    bool used;
    UInt64 raw;
    platform::ZoneStamp zone;
    LocalFields fields;
};

constexpr unsigned CALENDAR_ENTRIES = 4;
thread_local CalendarEntry calendarCache[CALENDAR_ENTRIES];

CalendarEntry& calendarEntryOf(UInt64 raw) {
    return calendarCache[static_cast<unsigned>((raw * 0x9E3779B97F4A7C15ull) >> 32) %
                         CALENDAR_ENTRIES];
}

bool sameZone(platform::ZoneStamp const& a, platform::ZoneStamp const& b) {
    return a.words[0] == b.words[0] && a.words[1] == b.words[1] && a.words[2] == b.words[2] &&
           a.words[3] == b.words[3];
}

// The fields of the time's calendar, from the cache or from one conversion. A conversion is
// kept only when the zone stamp is the same after it as before, so that it was made under the
// zone the stamp names.
bool readFields(kelTime const& time, LocalFields& fields) {
    UInt64 const raw = time.getRawTime();
    platform::ZoneStamp const zone = platform::currentZoneStamp();
    CalendarEntry& entry = calendarEntryOf(raw);
    if (entry.used && entry.raw == raw && sameZone(entry.zone, zone)) {
        fields = entry.fields;
        return true;
    }
    std::tm local;
    if (!platform::toLocalCalendar(raw, local)) {
        return false;
    }
    fields.year = static_cast<UInt16>(local.tm_year + 1900);
    fields.month = static_cast<UInt8>(local.tm_mon + 1);
    fields.day = static_cast<UInt8>(local.tm_mday);
    fields.hour = static_cast<UInt8>(local.tm_hour);
    fields.minute = static_cast<UInt8>(local.tm_min);
    fields.second = static_cast<UInt8>(local.tm_sec);
    fields.weekDay = static_cast<UInt8>(local.tm_wday + 1);
    fields.yearDay = static_cast<UInt16>(local.tm_yday + 1);
    if (sameZone(zone, platform::currentZoneStamp())) {
        entry.used = true;
        entry.raw = raw;
        entry.zone = zone;
        entry.fields = fields;
    }
    return true;
}

// Converts the edited fields back and stores the result; a refused conversion changes nothing.
void writeLocal(kelTime& time, std::tm& local) {
    local.tm_isdst = -1;
    UInt64 raw = 0;
    if (platform::fromLocalCalendar(local, raw)) {
        time.setRawTime(raw);
    }
}

// The decimal number in text[pos, pos + length); the caller has checked the digits.
int numberAt(char const* text, std::size_t pos, std::size_t length) {
    char digits[8] = {};
    std::memcpy(digits, text + pos, length);
    return std::atoi(digits);
}

} // namespace

kelTime const kelTime::minTime(0ull);
kelTime const kelTime::maxTime(0x7FFFFFFFull);

kelTime::kelTime() : mRawTime(platform::currentTime()) {}

kelTime::kelTime(UInt64 const& rawTime) : mRawTime(rawTime) {}

kelTime::kelTime(kelTime const& other) : kelISerializable(other), mRawTime(other.getRawTime()) {}

kelTime::~kelTime() {}

UInt64 kelTime::getRawTime() const {
    return mRawTime;
}

void kelTime::setRawTime(UInt64 const& rawTime) {
    mRawTime = rawTime;
}

UInt16 kelTime::getYear() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.year : 0;
}

UInt8 kelTime::getMonth() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.month : 0;
}

UInt8 kelTime::getDay() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.day : 0;
}

UInt8 kelTime::getHour() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.hour : 0;
}

UInt8 kelTime::getMinute() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.minute : 0;
}

UInt8 kelTime::getSecond() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.second : 0;
}

UInt8 kelTime::getWeekDay() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.weekDay : 0;
}

UInt16 kelTime::getYearDay() const {
    LocalFields fields;
    return readFields(*this, fields) ? fields.yearDay : 0;
}

// One conversion for the whole record, past the cache: it has every field at once.
kelTime::TIME_DATA kelTime::getAll() const {
    TIME_DATA data = {};
    std::tm local;
    if (readLocal(*this, local)) {
        data.year = static_cast<UInt16>(local.tm_year + 1900);
        data.month = static_cast<UInt8>(local.tm_mon + 1);
        data.day = static_cast<UInt8>(local.tm_mday);
        data.weekDay = static_cast<UInt8>(local.tm_wday + 1);
        data.yearDay = static_cast<UInt16>(local.tm_yday + 1);
        data.hour = static_cast<UInt8>(local.tm_hour);
        data.minute = static_cast<UInt8>(local.tm_min);
        data.second = static_cast<UInt8>(local.tm_sec);
    }
    return data;
}

void kelTime::setYear(UInt16 year) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_year = static_cast<int>(year) - 1900;
        writeLocal(*this, local);
    }
}

void kelTime::setMonth(UInt8 month) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_mon = static_cast<int>(month) - 1;
        writeLocal(*this, local);
    }
}

void kelTime::setDay(UInt8 day) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_mday = day;
        writeLocal(*this, local);
    }
}

void kelTime::setHour(UInt8 hour) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_hour = hour;
        writeLocal(*this, local);
    }
}

void kelTime::setMinute(UInt8 minute) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_min = minute;
        writeLocal(*this, local);
    }
}

void kelTime::setSecond(UInt8 second) {
    std::tm local;
    if (readLocal(*this, local)) {
        local.tm_sec = second;
        writeLocal(*this, local);
    }
}

void kelTime::set(UInt16 year, UInt8 month, UInt8 day, UInt8 hour, UInt8 minute, UInt8 second) {
    // Every field the conversion reads is replaced, so the old value is not needed: this also
    // gives a time without a calendar a valid value again.
    std::tm local = {};
    local.tm_year = static_cast<int>(year) - 1900;
    local.tm_mon = static_cast<int>(month) - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    writeLocal(*this, local);
}

void kelTime::add(SInt64 const& count, kelTimeUnit const& unit) {
    // Unsigned arithmetic: a count that runs past either end wraps instead of overflowing.
    UInt64 const steps = static_cast<UInt64>(count);
    switch (unit.getValue()) {
    case kelTimeUnit::Years:
        setYear(static_cast<UInt16>(getYear() + (steps & 0xFFFFu)));
        break;
    case kelTimeUnit::Months: {
        // The result of stepping the 8-bit month one at a time: forward, 12 becomes 0 of the
        // next year; backward, 0 becomes 11 of the previous year. Month 0 and months above 12
        // are left to the conversion's normalisation. Computed in closed form so that a huge
        // count costs nothing.
        UInt16 year = getYear();
        UInt8 month = getMonth();
        if (count > 0) {
            UInt64 forward = steps;
            if (month >= 12) {
                // December counts up through 13, 14... and only wraps at 256.
                UInt64 const toWrap = 256u - month;
                if (forward < toWrap) {
                    month = static_cast<UInt8>(month + forward);
                    forward = 0;
                } else {
                    forward -= toWrap;
                    month = 0;
                }
            }
            if (forward > 0 || month < 12) {
                UInt64 const total = month + forward;
                year = static_cast<UInt16>(year + total / 12u);
                month = static_cast<UInt8>(total % 12u);
            }
        } else if (count < 0) {
            UInt64 const backward = 0u - steps;
            if (backward <= month) {
                month = static_cast<UInt8>(month - backward);
            } else {
                UInt64 const belowZero = backward - month;
                year = static_cast<UInt16>(year -
                                           (belowZero / 12u + (belowZero % 12u != 0 ? 1u : 0u)));
                month = static_cast<UInt8>((12u - belowZero % 12u) % 12u);
            }
        }
        setYear(year);
        setMonth(month);
        break;
    }
    case kelTimeUnit::Weeks:
        setRawTime(getRawTime() + steps * 604800u);
        break;
    case kelTimeUnit::Days:
        setRawTime(getRawTime() + steps * 86400u);
        break;
    case kelTimeUnit::Hours:
        setRawTime(getRawTime() + steps * 3600u);
        break;
    case kelTimeUnit::Minutes:
        setRawTime(getRawTime() + steps * 60u);
        break;
    case kelTimeUnit::Seconds:
        setRawTime(getRawTime() + steps);
        break;
    default:
        // Milliseconds are below the resolution of the raw time.
        break;
    }
}

bool kelTime::isValid() const {
    std::tm local;
    if (!readLocal(*this, local)) {
        return false;
    }
    // The daylight-saving flag of the reading is kept, so that both readings of the hour that
    // repeats when the clocks go back convert back to themselves.
    UInt64 back = 0;
    return platform::fromLocalCalendar(local, back) && back == getRawTime();
}

bool kelTime::isLeapYear() const {
    LocalFields fields;
    if (!readFields(*this, fields)) {
        return false;
    }
    int const year = fields.year;
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

kelString kelTime::toString() const {
    LocalFields fields;
    if (!readFields(*this, fields)) {
        return kelString();
    }
    char text[64];
    std::snprintf(text, sizeof(text), "%04d/%02d/%02d %02d:%02d:%02d", fields.year, fields.month,
                  fields.day, fields.hour, fields.minute, fields.second);
    return kelString(text);
}

bool kelTime::fromString(char const* text) {
    if (text == nullptr || !kelStringConverter::formatMatch(TIME_MASK, text)) {
        return false;
    }
    set(static_cast<UInt16>(numberAt(text, 0, 4)), static_cast<UInt8>(numberAt(text, 5, 2)),
        static_cast<UInt8>(numberAt(text, 8, 2)), static_cast<UInt8>(numberAt(text, 11, 2)),
        static_cast<UInt8>(numberAt(text, 14, 2)), static_cast<UInt8>(numberAt(text, 17, 2)));
    return true;
}

kelTime& kelTime::operator=(kelTime const& other) {
    mRawTime = other.getRawTime();
    return *this;
}

bool kelTime::operator==(kelTime const& other) const {
    return getRawTime() == other.getRawTime();
}

bool kelTime::operator!=(kelTime const& other) const {
    return getRawTime() != other.getRawTime();
}

bool kelTime::operator<(kelTime const& other) const {
    return getRawTime() < other.getRawTime();
}

bool kelTime::operator<=(kelTime const& other) const {
    return getRawTime() <= other.getRawTime();
}

bool kelTime::operator>(kelTime const& other) const {
    return getRawTime() > other.getRawTime();
}

bool kelTime::operator>=(kelTime const& other) const {
    return getRawTime() >= other.getRawTime();
}

kelTime kelTime::now() {
    return kelTime(platform::currentTime());
}

Float64 kelTime::diff(kelTime const& a, kelTime const& b) {
    // Subtracting the larger from the smaller in unsigned arithmetic keeps every pair exact up
    // to the double's precision, with no signed overflow.
    UInt64 const first = a.getRawTime();
    UInt64 const second = b.getRawTime();
    return first >= second ? static_cast<Float64>(first - second)
                           : -static_cast<Float64>(second - first);
}

void kelTime::serializeTo(kelISerializer& serializer) const {
    serializer.serialize(getRawTime());
}

void kelTime::deserializeFrom(kelISerializer& serializer) {
    serializer.deserialize(mRawTime);
}

} // namespace KELKIT
