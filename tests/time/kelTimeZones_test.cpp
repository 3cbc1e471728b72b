#include <kelcore/time/kelTime.h>

#include "support/kelLocalZone.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <set>

using namespace KELKIT;

namespace {

struct Zone {
    char const* name;
    long long standardOffset; // seconds east of UTC
    long long daylightOffset;
    // Instants around this year's changes, and their local text (from GNU date).
    UInt64 instants[4];
    char const* texts[4];
};

Zone const ZONES[] = {
    {"America/New_York",
     -18000,
     -14400,
     {1710053999, 1710054000, 1730611800, 1730615400},
     {"2024/03/10 01:59:59", "2024/03/10 03:00:00", "2024/11/03 01:30:00", "2024/11/03 01:30:00"}},
    {"Australia/Sydney",
     36000,
     39600,
     {1712419199, 1712419200, 1728143999, 1728144000},
     {"2024/04/07 02:59:59", "2024/04/07 02:00:00", "2024/10/06 01:59:59", "2024/10/06 03:00:00"}},
};

class kelTimeZones : public testing::TestWithParam<Zone> {
protected:
    void SetUp() override {
        if (!kelTest::useZone(GetParam().name)) {
            GTEST_SKIP() << "this runtime fixes the zone at start; run with TZ=" << GetParam().name;
        }
    }
};

} // namespace

TEST_P(kelTimeZones, CalendarReadsFollowTheRuntimesLocalTime) {
    std::mt19937_64 rng(7);
    UInt64 const last = 32535215999ull;
    std::set<long long> offsets;
    for (int i = 0; i < 4000; ++i) {
        // Half over the whole span, half over 2020..2030 where the changes are dense.
        UInt64 const raw = i % 2 == 0 ? rng() % (last + 1) : 1577836800ull + rng() % 315619200ull;
        kelTime const t(raw);
        std::tm expected;
        ASSERT_TRUE(kelTest::localOracle(raw, expected)) << raw;
        kelTime::TIME_DATA const all = t.getAll();
        ASSERT_EQ(expected.tm_year + 1900, all.year) << raw;
        ASSERT_EQ(expected.tm_mon + 1, all.month) << raw;
        ASSERT_EQ(expected.tm_mday, all.day) << raw;
        ASSERT_EQ(expected.tm_wday + 1, all.weekDay) << raw;
        ASSERT_EQ(expected.tm_yday + 1, all.yearDay) << raw;
        ASSERT_EQ(expected.tm_hour, all.hour) << raw;
        ASSERT_EQ(expected.tm_min, all.minute) << raw;
        ASSERT_EQ(expected.tm_sec, all.second) << raw;
        ASSERT_EQ(all.year, t.getYear());
        ASSERT_EQ(all.month, t.getMonth());
        ASSERT_EQ(all.day, t.getDay());
        ASSERT_EQ(all.weekDay, t.getWeekDay());
        ASSERT_EQ(all.yearDay, t.getYearDay());
        ASSERT_EQ(all.hour, t.getHour());
        ASSERT_EQ(all.minute, t.getMinute());
        ASSERT_EQ(all.second, t.getSecond());
        offsets.insert(
            kelTest::civilSeconds(all.year, all.month, all.day, all.hour, all.minute, all.second) -
            static_cast<long long>(raw));

        char text[32];
        std::snprintf(text, sizeof(text), "%04u/%02u/%02u %02u:%02u:%02u", all.year, all.month,
                      all.day, all.hour, all.minute, all.second);
        ASSERT_STREQ(text, t.toString().c_str());
        // A day away from the span's ends, where the local date is inside it in every zone.
        if (raw >= 172800 && raw <= last - 172800) {
            ASSERT_TRUE(t.isValid()) << raw;
            kelTime back(0ull);
            ASSERT_TRUE(back.fromString(text));
            // Only the hour that repeats when the clocks go back reads two ways.
            UInt64 const gap =
                back.getRawTime() > raw ? back.getRawTime() - raw : raw - back.getRawTime();
            ASSERT_TRUE(gap == 0 || gap == 3600) << raw;
            ASSERT_STREQ(text, back.toString().c_str());
        }
    }
    // Daylight saving was really applied, and nothing but the zone's two offsets.
    EXPECT_EQ((std::set<long long>{GetParam().standardOffset, GetParam().daylightOffset}), offsets);
}

TEST_P(kelTimeZones, KnownInstantsAroundTheChangesAndExactDays) {
    for (int i = 0; i < 4; ++i) {
        kelTime const t(GetParam().instants[i]);
        EXPECT_STREQ(GetParam().texts[i], t.toString().c_str());
        EXPECT_TRUE(t.isValid()); // both readings of a repeated hour convert back to themselves
    }
    // Days and weeks are exact seconds: across a change the local hour moves by the shift.
    UInt64 const before = GetParam().instants[0] - 12 * 3600;
    long long const shift = GetParam().daylightOffset - GetParam().standardOffset;
    int const sign = kelTime(before).getHour() < kelTime(before + 86400).getHour() ? 1 : -1;
    for (kelTimeUnit::Enum unit : {kelTimeUnit::Days, kelTimeUnit::Weeks}) {
        kelTime t(before);
        t.add(1, unit);
        UInt64 const step = unit == kelTimeUnit::Days ? 86400 : 604800;
        EXPECT_EQ(before + step, t.getRawTime());
        EXPECT_EQ(kelTime(before).getHour() + sign * shift / 3600, t.getHour());
        t.add(-1, unit);
        EXPECT_EQ(before, t.getRawTime());
    }
    // A calendar step keeps the local hour instead.
    kelTime day(before);
    day.setDay(static_cast<UInt8>(day.getDay() + 1));
    EXPECT_EQ(kelTime(before).getHour(), day.getHour());
    EXPECT_EQ(86400 - sign * shift, static_cast<long long>(day.getRawTime() - before));
}

INSTANTIATE_TEST_SUITE_P(Zones, kelTimeZones, testing::ValuesIn(ZONES),
                         [](testing::TestParamInfo<Zone> const& info) {
                             return info.index == 0 ? std::string("NewYork")
                                                    : std::string("Sydney");
                         });
