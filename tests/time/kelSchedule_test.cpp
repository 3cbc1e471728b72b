#include <kelcore/time/kelSchedule.h>

#include "support/kelLocalZone.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace KELKIT;

namespace {

kelTime at(char const* text) {
    kelTime t(0ull);
    EXPECT_TRUE(t.fromString(text)) << text;
    return t;
}

// The repetitive rule taken literally: from the start, one add() per period while short of t.
// The step limit keeps a generated case from hanging the test.
bool walkMatches(kelTime const& start, int value, RepetitiveType::Enum unit, kelTime const& t) {
    if (t.getRawTime() < start.getRawTime()) {
        return false;
    }
    kelTime::TIME_DATA const s = start.getAll();
    kelTime::TIME_DATA const x = t.getAll();
    bool const sameMinute = s.minute == x.minute;
    bool const sameClock = sameMinute && s.hour == x.hour;
    kelTimeUnit::Enum const units[] = {kelTimeUnit::Minutes, kelTimeUnit::Hours, kelTimeUnit::Days,
                                       kelTimeUnit::Weeks, kelTimeUnit::Months};
    if ((unit == RepetitiveType::Hours && !sameMinute) ||
        (unit >= RepetitiveType::Days && !sameClock)) {
        return false;
    }
    kelTime copy(start);
    copy.setSecond(x.second);
    for (long steps = 0; copy < t; ++steps) {
        if (steps > 2000000) {
            ADD_FAILURE() << "walk did not end";
            return false;
        }
        copy.add(value, kelTimeUnit(units[unit]));
    }
    return copy == t;
}

class kelScheduleMatch : public testing::Test {
protected:
    void SetUp() override {
        if (!kelTest::useZone("UTC")) {
            GTEST_SKIP() << "run with TZ=UTC";
        }
    }
};

struct Zone {
    char const* name;
    UInt64 changes[4]; // the instants of this zone's daylight-saving changes in 2023 and 2024
};

Zone const ZONES[] = {
    {"America/New_York", {1678604400, 1699164000, 1710054000, 1730613600}},
    {"Australia/Sydney", {1680364800, 1696089600, 1712419200, 1728144000}},
};

void PrintTo(Zone const& zone, std::ostream* out) {
    *out << zone.name;
}

class kelScheduleZones : public testing::TestWithParam<Zone> {
protected:
    void SetUp() override {
        if (!kelTest::useZone(GetParam().name)) {
            GTEST_SKIP() << "this runtime fixes the zone at start; run with TZ=" << GetParam().name;
        }
    }
};

} // namespace

TEST_F(kelScheduleMatch, RepetitiveWalksOnTheSecondOfTheInstant) {
    kelSchedule s;
    s.setRepetitive(at("2024/03/09 10:00:30"), 5, RepetitiveType::Minutes);
    EXPECT_TRUE(s.matches(at("2024/03/09 10:05:12")));
    EXPECT_FALSE(s.matches(at("2024/03/09 10:00:12"))); // before the start
    EXPECT_TRUE(s.matches(at("2024/03/09 10:00:30")));
    EXPECT_FALSE(s.matches(at("2024/03/09 10:07:30")));
    s.setRepetitive(at("2024/03/09 10:00:00"), 2, RepetitiveType::Hours);
    EXPECT_FALSE(s.matches(at("2024/03/09 12:01:00")));
    EXPECT_TRUE(s.matches(at("2024/03/09 12:00:00")));
    s.setRepetitive(at("2024/03/15 08:00:00"), 1, RepetitiveType::Months);
    EXPECT_TRUE(s.matches(at("2024/04/15 08:00:59")));
    s.setRepetitive(at("2024/03/15 08:00:00"), 1, RepetitiveType(17));
    EXPECT_FALSE(s.matches(at("2024/03/15 08:00:00")));

    // Months inherit the rollover: January 31st steps to March 3rd and stays on the 3rd.
    s.setRepetitive(at("2023/01/31 10:00:00"), 1, RepetitiveType::Months);
    for (char const* hit : {"2023/01/31 10:00:00", "2023/03/03 10:00:00", "2023/04/03 10:00:00",
                            "2024/01/03 10:00:00"}) {
        EXPECT_TRUE(s.matches(at(hit))) << hit;
    }
    for (char const* miss : {"2023/02/28 10:00:00", "2023/03/31 10:00:00", "2023/04/30 10:00:00"}) {
        EXPECT_FALSE(s.matches(at(miss))) << miss;
    }
}

TEST_F(kelScheduleMatch, ValuesBelowOneAndStuckWalksEnd) {
    kelWatchdog watchdog("walks that make no progress", std::chrono::seconds(60));
    for (int value : {0, -1, -7}) {
        for (RepetitiveType::Enum unit : {RepetitiveType::Minutes, RepetitiveType::Months}) {
            kelSchedule s;
            s.setRepetitive(at("2024/03/09 10:00:30"), value, unit);
            EXPECT_TRUE(s.matches(at("2024/03/09 10:00:45"))) << value; // the start's own minute
            EXPECT_FALSE(s.matches(at("2024/03/09 10:00:20"))) << value;
            EXPECT_FALSE(s.matches(at("2024/04/09 10:00:45"))) << value;
        }
    }
    // The calendar ends in 3000: a monthly walk that cannot step on answers false.
    kelSchedule s;
    s.setRepetitive(at("3000/11/15 10:00:00"), 1, RepetitiveType::Months);
    EXPECT_FALSE(s.matches(at("3000/12/20 10:00:00")));
    s.setRepetitive(kelTime(40000000000ull), 1, RepetitiveType::Months); // no calendar
    EXPECT_FALSE(s.matches(kelTime(40000000000ull + 86400)));
}

TEST_F(kelScheduleMatch, MinutelyFromTenYearsAgoAgreesWithTheWalk) {
    kelWatchdog watchdog("a ten-year walk", std::chrono::seconds(120));
    kelSchedule s;
    kelTime const start = at("2014/05/01 06:07:08");
    s.setRepetitive(start, 7, RepetitiveType::Minutes);
    kelTime t = at("2024/05/01 06:07:08");
    for (int i = 0; i < 8; ++i, t.add(61, kelTimeUnit::Seconds)) {
        EXPECT_EQ(walkMatches(start, 7, RepetitiveType::Minutes, t), s.matches(t)) << i;
    }
}

TEST_F(kelScheduleMatch, ClockFormsIgnoreTheDate) {
    kelSchedule s;
    s.setDaily(at("1999/01/01 08:30:00"), DailyType::WeekDays);
    EXPECT_FALSE(s.matches(at("2024/03/09 08:30:00"))); // Saturday
    EXPECT_FALSE(s.matches(at("2024/03/10 08:30:00"))); // Sunday
    EXPECT_TRUE(s.matches(at("2024/03/11 08:30:59")));  // Monday
    EXPECT_FALSE(s.matches(at("2024/03/11 08:31:00")));
    s.setDaily(at("1999/01/01 08:30:00"), DailyType::WeekEnds);
    EXPECT_TRUE(s.matches(at("2024/03/10 08:30:00")));
    EXPECT_FALSE(s.matches(at("2024/03/11 08:30:00")));

    kelListWeekDay days;
    s.setWeekly(at("2030/01/01 07:05:00"), days);
    EXPECT_FALSE(s.matches(at("2024/03/11 07:05:00")));
    days.add(kelWeekDay::Tuesday);
    days.add(kelWeekDay::Monday);
    days.add(kelWeekDay::Tuesday);
    s.setWeekly(at("2030/01/01 07:05:00"), days);
    ASSERT_EQ(2u, s.getDays().size());
    EXPECT_EQ(kelWeekDay::Tuesday, s.getDays()[0]);
    EXPECT_EQ(kelWeekDay::Monday, s.getDays()[1]);
    EXPECT_TRUE(s.matches(at("2024/03/11 07:05:00")));
    EXPECT_FALSE(s.matches(at("2024/03/13 07:05:00")));

    kelListMonth months;
    months.add(kelMonth::April);
    months.add(kelMonth::May);
    s.setMontly(at("2030/01/01 07:05:00"), 31, months);
    EXPECT_FALSE(s.matches(at("2024/04/30 07:05:00")));
    EXPECT_FALSE(s.matches(at("2024/05/01 07:05:00")));
    EXPECT_TRUE(s.matches(at("2024/05/31 07:05:00")));

    s.setUnique(at("2024/03/09 12:00:40"));
    EXPECT_TRUE(s.matches(at("2024/03/09 12:00:00")));
    EXPECT_TRUE(s.matches(at("2024/03/09 12:00:59")));
    EXPECT_FALSE(s.matches(at("2024/03/09 12:01:00")));
}

TEST_F(kelScheduleMatch, EqualityFollowsTheType) {
    kelSchedule a, b;
    a.setDaily(at("2024/03/09 08:30:00"), DailyType::Everyday);
    b.setDaily(at("1999/07/01 08:30:59"), DailyType::Everyday);
    EXPECT_TRUE(a == b);
    b.setDaily(at("1999/07/01 08:30:59"), DailyType::WeekEnds);
    EXPECT_TRUE(a != b);
    a.setUnique(at("2024/03/09 08:30:01"));
    b.setUnique(at("2024/03/09 08:30:59"));
    EXPECT_TRUE(a == b);
    b.setUnique(at("2024/03/10 08:30:01"));
    EXPECT_FALSE(a == b);
    b.setRepetitive(at("2024/03/09 08:30:01"), 0, RepetitiveType::Hours); // reset values
    EXPECT_FALSE(a == b) << "types differ";
    kelSchedule const copy(b);
    EXPECT_TRUE(copy == b);
    a = b;
    EXPECT_STREQ(a.toString().c_str(), b.toString().c_str());
    b.reset();
    EXPECT_EQ(ScheduleType::Unique, b.getType());
    EXPECT_EQ(RepetitiveType::Hours, b.getRepetitiveType());
    EXPECT_EQ(1, b.getDay());
}

// Generated repetitive schedules whose walks cross a daylight-saving change: the direct answer
// must be the walk's, hit or miss, including the clock's repeated and skipped hours.
TEST_P(kelScheduleZones, RepetitiveAgreesWithTheLiteralWalk) {
    kelWatchdog watchdog("walk comparison", std::chrono::seconds(300));
    std::mt19937_64 rng(11);
    int const maxValue[] = {180, 30, 10, 3, 14};
    int hits = 0;
    int cases = 0;
    for (UInt64 change : GetParam().changes) {
        for (int i = 0; i < 600; ++i) {
            auto const unit = static_cast<RepetitiveType::Enum>(i % 5);
            int const value = 1 + static_cast<int>(rng() % maxValue[unit]);
            kelTime start(change - rng() % (86400 * 40));
            if (i % 7 == 0) {
                // Months earlier, on the change's day, at a clock that the change skips or
                // repeats; or on a day that does not exist in every month.
                kelTime::TIME_DATA const d = kelTime(change - 1800).getAll();
                bool const rollover = i % 2 == 0;
                start.set(d.year, static_cast<UInt8>(d.month - 1 - rng() % 3),
                          static_cast<UInt8>(rollover ? 29 + rng() % 3 : d.day),
                          static_cast<UInt8>(d.hour + rng() % 2), d.minute, 0);
            } else if (i % 3 == 0) {
                start.setRawTime(change - 3600 + rng() % 7200); // inside the changed hour
            }
            kelSchedule s;
            s.setRepetitive(start, value, unit);
            // Instants on or near the walk's landing points, and on the start's own clock.
            kelTime t(start);
            if (unit == RepetitiveType::Months) {
                t.add(value * static_cast<SInt64>(rng() % 8), kelTimeUnit::Months);
            } else {
                UInt64 const unitSeconds[] = {60, 3600, 86400, 604800};
                UInt64 const period = value * unitSeconds[unit];
                t.setRawTime(start.getRawTime() + period * (rng() % (86400 * 60 / period + 2)));
            }
            long long const jitter[] = {0,     0,     static_cast<long long>(rng() % 60) - 30, 3600,
                                        -3600, 86400, static_cast<long long>(rng() % 7200)};
            t.add(jitter[rng() % 7], kelTimeUnit::Seconds);
            bool const expected = walkMatches(start, value, unit, t);
            ASSERT_EQ(expected, s.matches(t))
                << "start " << start.getRawTime() << " every " << value << " unit " << unit << " t "
                << t.getRawTime();
            hits += expected ? 1 : 0;
            ++cases;
        }
    }
    EXPECT_GT(hits, cases / 10); // both answers are well represented
    EXPECT_LT(hits, cases * 9 / 10);
}

INSTANTIATE_TEST_SUITE_P(Zones, kelScheduleZones, testing::ValuesIn(ZONES),
                         [](testing::TestParamInfo<Zone> const& info) {
                             return info.index == 0 ? std::string("NewYork")
                                                    : std::string("Sydney");
                         });

// Schedules convert clock times back to instants; in the hour that repeats when the clocks go
// back, the reading must not depend on what was converted before (the later, standard-time
// reading is taken).
TEST_P(kelScheduleZones, RepeatedClockTimeReadsOneWay) {
    for (UInt64 change : GetParam().changes) {
        kelTime const early(change - 1800);
        bool const repeated = early.toString() == kelTime(change + 1800).toString();
        for (char const* before : {"2024/01/15 12:00:00", "2024/07/15 12:00:00"}) {
            kelTime primer(0ull);
            primer.fromString(before);
            kelTime read(0ull);
            ASSERT_TRUE(read.fromString(early.toString().c_str()));
            EXPECT_EQ(change - 1800 + (repeated ? 3600 : 0), read.getRawTime())
                << early.toString().c_str() << " after " << before;
        }
    }
}
