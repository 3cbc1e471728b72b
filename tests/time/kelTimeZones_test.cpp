#include <kelcore/time/kelTime.h>

#include "support/kelLocalZone.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <set>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

struct Zone {
    char const* name;
    char const* tag;          // the test name's suffix, which the Windows per-zone runs filter on
    long long standardOffset; // seconds east of UTC
    long long daylightOffset;
    // Instants around this year's changes, and their local text (from GNU date).
    UInt64 instants[4];
    char const* texts[4];
    // A clock time the spring change skips, and where it lands: read as daylight time, half an
    // hour before the change.
    char const* skipped;
    UInt64 skippedRaw;
};

Zone const ZONES[] = {
    {"America/New_York",
     "NewYork",
     -18000,
     -14400,
     {1710053999, 1710054000, 1730611800, 1730615400},
     {"2024/03/10 01:59:59", "2024/03/10 03:00:00", "2024/11/03 01:30:00", "2024/11/03 01:30:00"},
     "2024/03/10 02:30:00",
     1710054000 - 1800},
    {"Australia/Sydney",
     "Sydney",
     36000,
     39600,
     {1712419199, 1712419200, 1728143999, 1728144000},
     {"2024/04/07 02:59:59", "2024/04/07 02:00:00", "2024/10/06 01:59:59", "2024/10/06 03:00:00"},
     "2024/10/06 02:30:00",
     1728144000 - 1800},
};

void PrintTo(Zone const& zone, std::ostream* out) {
    *out << zone.name;
}

std::vector<int> fieldsOf(std::tm const& l) {
    return {l.tm_year + 1900, l.tm_mon + 1, l.tm_mday, l.tm_wday + 1,
            l.tm_yday + 1,    l.tm_hour,    l.tm_min,  l.tm_sec};
}
std::vector<int> fieldsOf(kelTime::TIME_DATA const& d) {
    return {d.year, d.month, d.day, d.weekDay, d.yearDay, d.hour, d.minute, d.second};
}
std::vector<int> getters(kelTime const& t) {
    return {t.getYear(),    t.getMonth(), t.getDay(),    t.getWeekDay(),
            t.getYearDay(), t.getHour(),  t.getMinute(), t.getSecond()};
}

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
        ASSERT_EQ(fieldsOf(expected), fieldsOf(all)) << raw;
        ASSERT_EQ(fieldsOf(all), getters(t)) << raw;
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
    kelTime skipped(0ull);
    ASSERT_TRUE(skipped.fromString(GetParam().skipped));
    EXPECT_EQ(GetParam().skippedRaw, skipped.getRawTime());
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
                         [](testing::TestParamInfo<Zone> const& info) { return info.param.tag; });

namespace {

// An instant that a subclass moves: the calendar follows getRawTime(), not the stored value.
struct MovedTime : kelTime {
    explicit MovedTime(UInt64 raw) : kelTime(raw) {}
    UInt64 getRawTime() const override { return kelTime::getRawTime() + shift; }
    UInt64 shift = 0;
};

} // namespace

// Reads of interleaved objects and instants, repeated and not, against a fresh conversion of the
// C library: nothing kept of earlier reads may show. Where the runtime lets the zone change
// (POSIX), it changes between reads of the same instants.
TEST(kelTimeKeptCalendar, ReadsMatchAFreshConversionAcrossObjectsAndZones) {
    std::string const start = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "UTC";
    std::vector<char const*> zones;
    for (char const* zone : {"UTC", "America/New_York", "Australia/Sydney", "Asia/Kolkata",
                             "Europe/London", "America/St_Johns", start.c_str()}) {
        if (kelTest::useZone(zone)) {
            zones.push_back(zone);
        }
    }
    std::mt19937_64 rng(29);
    UInt64 const last = 32535215999ull;
    std::vector<MovedTime> times(6, MovedTime(rng() % (last + 1)));
    for (int step = 0, at = 0; step < 60000; ++step) {
        ASSERT_TRUE(step % 50 != 0 || kelTest::useZone(zones[rng() % zones.size()]));
        at = rng() % 2 == 0 ? at : int(rng() % times.size()); // often the same object
        MovedTime& t = times[at];
        if (rng() % 10 == 0) {
            t.setRawTime(rng() % 4 == 0 ? last + 1 : rng() % (last + 1)); // beyond: no calendar
            t.shift = rng() % 3;
        }
        std::tm expected = {};
        bool const has = t.getRawTime() <= last && kelTest::localOracle(t.getRawTime(), expected);
        std::vector<int> const want = has ? fieldsOf(expected) : std::vector<int>(8, 0);
        ASSERT_EQ(want, getters(t)) << t.getRawTime();
    }
    ASSERT_TRUE(kelTest::useZone(start.c_str()));
}
