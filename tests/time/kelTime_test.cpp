#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/time/kelTime.h>

#include "support/kelLocalZone.h"
#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

using namespace KELKIT;

namespace {

UInt64 const LAST = 32535215999ull; // 3000/12/31 23:59:59 UTC

// The calendar rules are the same in every zone; UTC makes the raw values predictable.
class kelTimeCalendar : public testing::Test {
protected:
    void SetUp() override {
        if (!kelTest::useZone("UTC")) {
            GTEST_SKIP() << "run with TZ=UTC";
        }
    }
    static kelTime at(char const* text) {
        kelTime t(0ull);
        EXPECT_TRUE(t.fromString(text)) << text;
        return t;
    }
};

} // namespace

TEST_F(kelTimeCalendar, MonthAndYearStepsRollOverAsTheSettersDo) {
    struct Case {
        char const* from;
        SInt64 count;
        kelTimeUnit::Enum unit;
        char const* to;
    } const cases[] = {
        {"2023/01/31 12:00:00", 1, kelTimeUnit::Months, "2023/03/03 12:00:00"},
        {"2024/01/31 12:00:00", 1, kelTimeUnit::Months, "2024/03/02 12:00:00"},
        {"2004/02/29 12:00:00", 12, kelTimeUnit::Months, "2005/02/01 12:00:00"},
        {"2024/02/29 12:00:00", 1, kelTimeUnit::Years, "2025/03/01 12:00:00"},
        {"2024/05/20 12:00:00", 5, kelTimeUnit::Milliseconds, "2024/05/20 12:00:00"},
        {"2024/05/20 12:00:00", 5, static_cast<kelTimeUnit::Enum>(42), "2024/05/20 12:00:00"},
        {"2024/05/20 12:00:00", -1000, kelTimeUnit::Years, "2024/05/20 12:00:00"}, // refused
    };
    for (Case const& c : cases) {
        kelTime t = at(c.from);
        t.add(c.count, kelTimeUnit(c.unit));
        EXPECT_STREQ(c.to, t.toString().c_str()) << c.from << " + " << c.count;
    }
    // Any count that keeps the month byte from wrapping lands on the month simple counting gives.
    for (int month = 1; month <= 12; ++month) {
        for (SInt64 n = -400; n <= 243; ++n) {
            kelTime t(0ull);
            t.set(2040, static_cast<UInt8>(month), 15, 12, 0, 0);
            t.add(n, kelTimeUnit(kelTimeUnit::Months));
            long long const index = 2040 * 12 + (month - 1) + n;
            ASSERT_EQ(index / 12, t.getYear()) << month << " " << n;
            ASSERT_EQ(index % 12 + 1, t.getMonth()) << month << " " << n;
            ASSERT_EQ(15, t.getDay());
        }
    }
    kelTime huge = at("2024/05/20 12:00:00");
    huge.add(INT64_MIN, kelTimeUnit(kelTimeUnit::Months)); // defined and quick, if meaningless
    huge.add(INT64_MAX, kelTimeUnit(kelTimeUnit::Seconds));
}

TEST_F(kelTimeCalendar, SettersNormaliseAndRefuseOutsideTheSpan) {
    kelTime t = at("2024/03/09 07:05:00");
    struct Step {
        void (kelTime::*setter)(UInt8);
        UInt8 value;
        char const* to;
    } const steps[] = {
        {&kelTime::setMonth, 13, "2025/01/09 07:05:00"},
        {&kelTime::setMonth, 0, "2024/12/09 07:05:00"},
        {&kelTime::setDay, 32, "2025/01/01 07:05:00"},
        {&kelTime::setDay, 0, "2024/12/31 07:05:00"},
        {&kelTime::setHour, 24, "2025/01/01 00:05:00"},
        {&kelTime::setMinute, 255, "2025/01/01 04:15:00"},
        {&kelTime::setSecond, 61, "2025/01/01 04:16:01"},
        {&kelTime::setMonth, 2, "2025/02/01 04:16:01"},
        {&kelTime::setDay, 29, "2025/03/01 04:16:01"},
    };
    for (Step const& s : steps) {
        (t.*s.setter)(s.value);
        EXPECT_STREQ(s.to, t.toString().c_str());
    }
    UInt64 const kept = t.getRawTime();
    for (UInt16 year : {1969, 3001, 65535, 0}) {
        t.setYear(year);
    }
    t.set(1969, 12, 31, 23, 59, 59);
    EXPECT_EQ(kept, t.getRawTime());
    t.set(1970, 1, 1, 0, 0, 0);
    EXPECT_EQ(0u, t.getRawTime());
    t.set(3000, 12, 31, 23, 59, 59);
    EXPECT_EQ(LAST, t.getRawTime());
    t.setSecond(60);
    EXPECT_EQ(LAST, t.getRawTime());
    for (UInt16 year = 1970; year <= 3000; ++year) { // February 29th exists in leap years only
        t.set(year, 2, 29, 12, 0, 0);
        ASSERT_EQ(t.getMonth() == 2, t.isLeapYear()) << year;
    }
}

TEST_F(kelTimeCalendar, TextFormAndItsMask) {
    kelTime t = at("2024/02/30 00:00:00");
    EXPECT_STREQ("2024/03/01 00:00:00", t.toString().c_str());
    EXPECT_STREQ("2025/01/01 00:00:00", at("2024/13/01 00:00:00").toString().c_str());
    for (char const* bad :
         {"2024-03-01 00:00:00", "2024/03/01 00:00:0", "2024/03/01 00:00:000",
          "2024/03/01T00:00:00", "2024/0a/01 00:00:00", "", (char const*)nullptr}) {
        EXPECT_FALSE(t.fromString(bad));
        EXPECT_STREQ("2024/03/01 00:00:00", t.toString().c_str());
    }
    EXPECT_TRUE(t.fromString("1969/12/31 23:59:59")); // accepted, but set() refuses it
    EXPECT_STREQ("2024/03/01 00:00:00", t.toString().c_str());
    EXPECT_STREQ("2038/01/19 03:14:07", kelTime::maxTime.toString().c_str());
    EXPECT_STREQ("1970/01/01 00:00:00", kelTime::minTime.toString().c_str());
}

TEST_F(kelTimeCalendar, RawTimesBeyondTheConversionHaveNoCalendar) {
    for (UInt64 raw : {LAST + 1, 0x7FFFFFFFFFFFFFFFull, ~0ull}) {
        kelTime t(raw);
        EXPECT_FALSE(t.isValid());
        EXPECT_FALSE(t.isLeapYear());
        EXPECT_EQ(0, t.getYear() + t.getMonth() + t.getDay() + t.getHour() + t.getAll().yearDay);
        EXPECT_TRUE(t.toString().empty());
        t.setDay(3);
        t.add(1, kelTimeUnit(kelTimeUnit::Months));
        t.add(1, kelTimeUnit(kelTimeUnit::Years));
        EXPECT_EQ(raw, t.getRawTime());
        t.add(1, kelTimeUnit(kelTimeUnit::Seconds));
        EXPECT_EQ(raw + 1, t.getRawTime()); // wraps at the top
        EXPECT_TRUE(t.fromString("2024/03/09 07:05:00"));
        EXPECT_EQ(1709967900u, t.getRawTime());
    }
    EXPECT_TRUE(kelTime(LAST).isValid());
    EXPECT_TRUE(kelTime(0ull).isValid());
}

TEST_F(kelTimeCalendar, ValueSemanticsClockAndWireForm) {
    std::time_t const before = std::time(nullptr);
    kelTime const made, now = kelTime::now();
    std::time_t const after = std::time(nullptr);
    EXPECT_GE(made.getRawTime(), static_cast<UInt64>(before));
    EXPECT_LE(now.getRawTime(), static_cast<UInt64>(after));
    kelTime a(100ull), b(250ull);
    EXPECT_DOUBLE_EQ(-150.0, kelTime::diff(a, b));
    EXPECT_DOUBLE_EQ(-1.8446744073709552e19, kelTime::diff(kelTime(0ull), kelTime(~0ull)));
    EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a != b && !(a == b) && a <= a && a >= a);

    // A subclass that moves the raw time moves every calendar read.
    struct Shifted : kelTime {
        Shifted() : kelTime(0ull) {}
        UInt64 getRawTime() const override { return 86400 * 366; }
    } const shifted;
    EXPECT_STREQ("1971/01/02 00:00:00", shifted.toString().c_str());
    EXPECT_EQ(2, kelTime(shifted).getDay());

    kelBinarySerializer s;
    kelTime(0x0102030405060708ull).serializeTo(s);
    shifted.serializeTo(s);
    EXPECT_EQ(kelTest::WireBytes().u64(0x0102030405060708ull).u64(86400 * 366).bytes(),
              kelTest::bytesOf(s.getBufferC(), s.getSize()));
    kelTime back(0ull);
    back.deserializeFrom(s);
    EXPECT_EQ(0x0102030405060708ull, back.getRawTime());
    back.deserializeFrom(s);
    EXPECT_EQ(86400u * 366, back.getRawTime());
}
