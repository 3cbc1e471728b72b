#ifndef KELCORE_TIME_KELTIME_H
#define KELCORE_TIME_KELTIME_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTimeUnit.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/serialization/kelISerializable.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// An instant: seconds since 1970/01/01 00:00:00 UTC, read and written as calendar fields in the
// machine's local time (daylight saving applied).
//
// Only the raw seconds are stored. Every calendar read goes by getRawTime(), so a subclass that
// overrides it changes all of them. The library keeps the calendar of the instants read last,
// for all objects and threads, under the process's zone as the C runtime reports it: reading
// several fields of one instant converts once, and a change of the zone (TZ and tzset) is seen
// by the next read.
//
// The conversion covers raw times 0 (1970/01/01 00:00:00 UTC) to 32535215999
// (3000/12/31 23:59:59 UTC), on every platform. A raw time above that (set through setRawTime,
// deserializeFrom or add) has no calendar: isValid() and isLeapYear() are false, every getter
// gives 0, getAll() a record of zeros, toString() the empty text, and the one-field setters and
// add() in months or years leave it unchanged. set() and fromString() do not read the old value
// and replace it. Adding seconds, minutes, hours, days or weeks still moves it, in 64-bit
// unsigned arithmetic.
//
// Writing goes through the same conversion in reverse, which normalises out-of-range fields into
// their neighbours (month 13 is January of the next year, day 0 the last day of the previous
// month). A write whose result falls outside the span leaves the time as it was, silently.
// Within hours of either end, where the local date is still 1969 or already 3001, the Windows
// runtime also refuses to convert back (so isValid() is false there and such writes are
// refused); elsewhere both platforms agree.
class KELCORE_API kelTime : public virtual kelISerializable {
public:
    struct TIME_DATA {
        UInt16 year;
        UInt8 month;
        UInt8 day;
        UInt8 weekDay;
        UInt16 yearDay;
        UInt8 hour;
        UInt8 minute;
        UInt8 second;
    };

    // Raw time 0 and 0x7FFFFFFF (2038/01/19 03:14:07 UTC). Nothing in the library clamps to them.
    static kelTime const minTime;
    static kelTime const maxTime;

    // The current time.
    kelTime();
    explicit kelTime(UInt64 const& rawTime);
    kelTime(kelTime const& other);
    virtual ~kelTime();

    virtual UInt64 getRawTime() const;
    // Stores the value as it is, checked by nothing.
    virtual void setRawTime(UInt64 const& rawTime);

    // Full year (e.g. 2024).
    virtual UInt16 getYear() const;
    // 1 (January) to 12, the kelMonth value.
    virtual UInt8 getMonth() const;
    // 1 to 31.
    virtual UInt8 getDay() const;
    virtual UInt8 getHour() const;
    virtual UInt8 getMinute() const;
    virtual UInt8 getSecond() const;
    // 1 (Sunday) to 7 (Saturday), the kelWeekDay value.
    virtual UInt8 getWeekDay() const;
    // 1 (January 1st) to 366.
    virtual UInt16 getYearDay() const;
    virtual TIME_DATA getAll() const;

    // Each setter reads the calendar as it is now, replaces its field(s) and converts back, so a
    // day of the month that does not exist in the new month rolls into the next one.
    virtual void setYear(UInt16 year);
    virtual void setMonth(UInt8 month);
    virtual void setDay(UInt8 day);
    virtual void setHour(UInt8 hour);
    virtual void setMinute(UInt8 minute);
    virtual void setSecond(UInt8 second);
    virtual void set(UInt16 year, UInt8 month, UInt8 day, UInt8 hour, UInt8 minute, UInt8 second);

    // Years and months are calendar steps through the setters (see kelTime.cpp for the exact
    // rollover); weeks, days, hours, minutes and seconds are exact second counts added to the raw
    // time, so a day across a daylight-saving change moves the local hour. Milliseconds and
    // unknown units change nothing. A month count of 244 or more from December has no defined
    // result.
    virtual void add(SInt64 const& count, kelTimeUnit const& unit);

    // True when the local calendar converts back to the same raw time.
    virtual bool isValid() const;
    // Of the local year.
    virtual bool isLeapYear() const;

    // "YYYY/MM/DD hh:mm:ss" in local time, 19 characters for a four-digit year.
    virtual kelString toString() const;
    // Accepts exactly the shape "0000/00/00 00:00:00" (0 is any digit) and calls set() with the
    // six numbers; true then, even when set() changed nothing. Anything else gives false and
    // leaves the time unchanged. A null text gives false.
    virtual bool fromString(char const* text);

    virtual kelTime& operator=(kelTime const& other);
    virtual bool operator==(kelTime const& other) const;
    virtual bool operator!=(kelTime const& other) const;

    bool operator<(kelTime const& other) const;
    bool operator<=(kelTime const& other) const;
    bool operator>(kelTime const& other) const;
    bool operator>=(kelTime const& other) const;

    static kelTime now();
    // a minus b in seconds; negative when a is before b.
    static Float64 diff(kelTime const& a, kelTime const& b);

    // One UInt64: the raw time. No zone is stored, so the instant reads back unchanged anywhere.
    void serializeTo(kelISerializer& serializer) const override;
    void deserializeFrom(kelISerializer& serializer) override;

private:
    UInt64 mRawTime;
};

} // namespace KELKIT

#endif
