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

kelSchedule parsed(char const* text) {
    kelSchedule s;
    EXPECT_TRUE(s.fromString(text)) << text;
    return s;
}

std::string text(kelSchedule const& s) {
    return s.toString().c_str();
}

// The repetitive rule taken literally: from the start, one add() per period while short of t.
bool walkMatches(kelTime const& start, int value, int unit, kelTime const& t) {
    kelTime::TIME_DATA const s = start.getAll(), x = t.getAll();
    bool const sameClock = s.minute == x.minute && s.hour == x.hour;
    if (t < start || (unit == 1 && s.minute != x.minute) || (unit >= 2 && !sameClock)) {
        return false;
    }
    kelTimeUnit::Enum const units[] = {kelTimeUnit::Minutes, kelTimeUnit::Hours, kelTimeUnit::Days,
                                       kelTimeUnit::Weeks, kelTimeUnit::Months};
    kelTime copy(start);
    copy.setSecond(x.second);
    for (long steps = 0; copy < t && steps < 2000000; ++steps) {
        copy.add(value, kelTimeUnit(units[unit]));
    }
    return copy == t;
}

class kelScheduleUtc : public testing::Test {
protected:
    void SetUp() override {
        if (!kelTest::useZone("UTC")) {
            GTEST_SKIP() << "run with TZ=UTC";
        }
    }
};

struct Zone {
    char const* name;
    char const* tag;   // the test name's suffix, which the Windows per-zone runs filter on
    UInt64 changes[4]; // the instants of the zone's daylight-saving changes in 2023 and 2024
};

Zone const ZONES[] = {
    {"America/New_York", "NewYork", {1678604400, 1699164000, 1710054000, 1730613600}},
    {"Australia/Sydney", "Sydney", {1680364800, 1696089600, 1712419200, 1728144000}},
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

TEST_F(kelScheduleUtc, MatchesEachForm) {
    struct Case {
        char const* schedule;
        char const* instant;
        bool expected;
    } const cases[] = {
        {"Unique on 2024/03/09 12:00", "2024/03/09 12:00:59", true},
        {"Unique on 2024/03/09 12:00", "2024/03/09 12:01:00", false},
        // January 31st steps to March 3rd and stays on the 3rd.
        {"Repetitive every 1 months starting on 2023/01/31 10:00", "2024/01/03 10:00:00", true},
        {"Repetitive every 1 months starting on 2023/01/31 10:00", "2023/03/31 10:00:00", false},
        // Below 1 nothing repeats: only the start's own minute.
        {"Repetitive every 0 minutes starting on 2024/03/09 10:00", "2024/03/09 10:00:45", true},
        {"Repetitive every -7 months starting on 2024/03/09 10:00", "2024/10/09 10:00:00", false},
        // The calendar ends in 3000: a walk that cannot step on answers false.
        {"Repetitive every 1 months starting on 3000/11/15 10:00", "3000/12/20 10:00:00", false},
        {"Daily weekdays at 08:30", "2024/03/09 08:30:00", false}, // Saturday
        {"Daily weekdays at 08:30", "2024/03/11 08:30:59", true},  // Monday
        {"Daily weekends at 08:30", "2024/03/10 08:30:00", true},
        {"Daily everyday at 08:30", "1971/03/11 08:30:00", true}, // before the date: no start
        {"Weekly on nothing at 07:05", "2024/03/11 07:05:00", false},
        {"Weekly on Tuesday,Monday at 07:05", "2024/03/11 07:05:00", true},
        {"Weekly on Tuesday,Monday at 07:05", "2024/03/13 07:05:00", false},
        {"Montly on April,May 31th at 07:05", "2024/04/30 07:05:00", false}, // no last-day rule
        {"Montly on April,May 31th at 07:05", "2024/05/31 07:05:00", true},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(c.expected, parsed(c.schedule).matches(at(c.instant)))
            << c.schedule << " / " << c.instant;
    }
    kelSchedule s; // the walk runs on the second of the instant: this one is before the start
    s.setRepetitive(at("2024/03/09 10:00:30"), 5, RepetitiveType::Minutes);
    EXPECT_FALSE(s.matches(at("2024/03/09 10:00:12")));
    s.setRepetitive(at("2024/03/09 10:00:30"), 5, RepetitiveType(17));
    EXPECT_FALSE(s.matches(at("2024/03/09 10:00:30")));
    s.setRepetitive(kelTime(40000000000ull), 1, RepetitiveType::Months); // no calendar
    EXPECT_FALSE(s.matches(kelTime(40000000000ull + 86400)));

    kelWatchdog watchdog("a ten-year walk", std::chrono::seconds(120));
    kelTime const start = at("2014/05/01 06:07:08");
    s.setRepetitive(start, 7, RepetitiveType::Minutes);
    kelTime t = at("2024/05/01 06:07:08");
    for (int i = 0; i < 8; ++i, t.add(61, kelTimeUnit::Seconds)) {
        EXPECT_EQ(walkMatches(start, 7, RepetitiveType::Minutes, t), s.matches(t)) << i;
    }
}

TEST_F(kelScheduleUtc, SettersEqualityAndText) {
    kelListWeekDay days;
    for (int day : {kelWeekDay::Tuesday, kelWeekDay::Monday, kelWeekDay::Tuesday}) {
        days.add(kelWeekDay(day));
    }
    kelSchedule a, b;
    a.setWeekly(at("2030/01/01 07:05:00"), days);
    EXPECT_EQ("Weekly on Tuesday,Monday at 07:05", text(a)); // duplicates gone, order kept
    b.setDaily(at("2024/03/09 08:30:59"), DailyType::Everyday);
    EXPECT_TRUE(b == parsed("Daily everyday at 08:30")); // the date plays no part
    EXPECT_TRUE(b != parsed("Daily weekends at 08:30"));
    a.setUnique(at("2024/03/09 08:30:01"));
    b.setUnique(at("2024/03/09 08:30:59"));
    EXPECT_TRUE(a == b);
    b.setRepetitive(at("2024/03/09 08:30:01"), 0, RepetitiveType::Hours);
    EXPECT_TRUE(a != b);

    // The writer's exact texts, read and written again; seconds are never written.
    for (char const* line :
         {"Unique on 2024/03/09 07:05", "Repetitive every 15 minutes starting on 2024/03/09 07:05",
          "Repetitive every -5 hours starting on 2024/03/09 07:05", "Daily everyday at 00:00",
          "Weekly on Monday,Friday at 07:05", "Montly on January,July 15th at 07:05",
          "Montly on May 1th at 07:05"}) {
        EXPECT_EQ(line, text(parsed(line)));
    }
    a.setRepetitive(at("2024/03/09 07:05:44"), 3, RepetitiveType(9));
    EXPECT_EQ("Repetitive every 3 starting on 2024/03/09 07:05", text(a));
    // The reader normalises as the time does.
    EXPECT_EQ("Unique on 2025/01/01 07:05", text(parsed("Unique on 2024/13/01 07:05")));
}

TEST_F(kelScheduleUtc, RefusalLeavesTheScheduleUnchanged) {
    kelSchedule s;
    s.setDaily(at("2024/03/09 06:30:00"), DailyType::WeekDays);
    kelSchedule const before(s);
    kelSchedule emptyWeekly, emptyMontly; // their texts are too short to read back
    emptyWeekly.setWeekly(at("2024/03/09 06:30:00"), kelListWeekDay());
    emptyMontly.setMontly(at("2024/03/09 06:30:00"), 5, kelListMonth());
    // clang-format off
    std::string const refused[] = {"", "nothing to see here at all", text(emptyWeekly),
        text(emptyMontly), "Unique on 2024-03-09 07:05" /* right length, bad date */,
        "Unique on 2024/03/09 07:0", "Unique on 2024/03/09 07:055", "Unique on 1969/03/09 07:05",
        "Repetitive every x minutes starting on 2024/03/09 07:05",
        "Repetitive every 5 fortnights starting on 2024/03/09 07:05",
        "Repetitive every 99999999999 minutes starting on 2024/03/09 07:05" /* not an int */,
        "Repetitive every 1 days starting on 2024/03/09 7:05", "Daily sometimes at 07:05",
        "Daily everyday at 07-05", "Weekly on Sunday at 7:05", "Montly on May 1th at 07:0",
        "Montly on May, June 1th at 07:05" /* 7 tokens */, "Montly on May xth at 07:05"};
    // clang-format on
    for (std::string const& line : refused) {
        EXPECT_FALSE(s.fromString(line.c_str())) << line;
        EXPECT_EQ(before.getTime().getRawTime(), s.getTime().getRawTime()) << line;
        EXPECT_TRUE(s == before) << line;
    }
    EXPECT_FALSE(s.fromString(nullptr));
}

// Generated schedules of every form read back equal, up to the documented losses: seconds, the
// date of the clock forms, and the order of the lists (which read back in calendar order).
TEST_F(kelScheduleUtc, TextRoundTripsGeneratedSchedules) {
    std::mt19937 rng(3);
    for (int i = 0; i < 1500; ++i) {
        kelTime const time(rng() % 4102444800u); // 1970 .. 2100
        kelSchedule s, expected;
        int const form = i % 5;
        if (form == 0) {
            s.setUnique(time);
        } else if (form == 1) {
            s.setRepetitive(time, static_cast<int>(rng()) >> (rng() % 31),
                            RepetitiveType(static_cast<int>(rng() % 5)));
        } else if (form == 2) {
            s.setDaily(time, DailyType(static_cast<int>(rng() % 3)));
        } else {
            int const top = form == 3 ? 7 : 12;
            kelListWeekDay days;
            kelListMonth months;
            for (int n = 1 + rng() % (2 * top); n > 0; --n) {
                int const v = 1 + static_cast<int>(rng() % top);
                days.add(kelWeekDay(v));
                months.add(kelMonth(v));
            }
            int const day = static_cast<int>(rng() % 40) - 5;
            form == 3 ? s.setWeekly(time, days) : s.setMontly(time, day, months);
            days.sort();
            months.sort();
            form == 3 ? expected.setWeekly(time, days) : expected.setMontly(time, day, months);
        }
        if (form < 3) {
            expected = s;
        }
        kelSchedule read;
        ASSERT_TRUE(read.fromString(text(s).c_str())) << text(s);
        ASSERT_TRUE(read == expected) << text(s) << " read back as " << text(read);
        EXPECT_EQ(0, read.getTime().getSecond());
        EXPECT_EQ(form >= 2 ? 2000 : time.getYear(), read.getTime().getYear()) << text(s);
    }
}

// Generated repetitive schedules whose walks cross daylight-saving changes: the direct answer
// must be the walk's, hit or miss, also at clock times that a change skips or repeats.
TEST_P(kelScheduleZones, RepetitiveAgreesWithTheLiteralWalk) {
    kelWatchdog watchdog("walk comparison", std::chrono::seconds(300));
    std::mt19937_64 rng(11);
    int const maxValue[] = {180, 30, 10, 3, 14};
    UInt64 const unitSeconds[] = {60, 3600, 86400, 604800};
    int hits = 0, cases = 0;
    for (UInt64 change : GetParam().changes) {
        for (int i = 0; i < 600; ++i, ++cases) {
            int const unit = i % 5;
            int const value = 1 + static_cast<int>(rng() % maxValue[unit]);
            kelTime start(change - rng() % (86400 * 40));
            if (i % 7 == 0) {
                // Months earlier, on the change's day (or one that some months lack), at a
                // clock time that the change skips or repeats.
                kelTime::TIME_DATA const d = kelTime(change - 1800).getAll();
                start.set(d.year, static_cast<UInt8>(d.month - 1 - rng() % 3),
                          static_cast<UInt8>(i % 2 == 0 ? 29 + rng() % 3 : d.day),
                          static_cast<UInt8>(d.hour + rng() % 2), d.minute, 0);
            } else if (i % 3 == 0) {
                start.setRawTime(change - 3600 + rng() % 7200);
            }
            kelSchedule s;
            s.setRepetitive(start, value, RepetitiveType(unit));
            // On or near a landing point of the walk, mostly beyond the change.
            kelTime t(start);
            if (unit == RepetitiveType::Months) {
                t.add(value * static_cast<SInt64>(rng() % 8), kelTimeUnit::Months);
            } else {
                UInt64 const period = value * unitSeconds[unit];
                t.setRawTime(start.getRawTime() + period * (rng() % (86400 * 60 / period + 2)));
            }
            SInt64 const jitter[] = {0,     0,     static_cast<SInt64>(rng() % 60) - 30, 3600,
                                     -3600, 86400, static_cast<SInt64>(rng() % 7200)};
            t.add(jitter[rng() % 7], kelTimeUnit::Seconds);
            bool const expected = walkMatches(start, value, unit, t);
            ASSERT_EQ(expected, s.matches(t))
                << "start " << start.getRawTime() << " every " << value << " unit " << unit << " t "
                << t.getRawTime();
            hits += expected ? 1 : 0;
        }
    }
    EXPECT_GT(hits, cases / 10); // both answers are well represented
    EXPECT_LT(hits, cases * 9 / 10);
}

// In the hour that repeats when the clocks go back, a clock time must read the same whatever was
// converted before (the later, standard-time reading), or matches would vary from call to call.
TEST_P(kelScheduleZones, RepeatedClockTimeReadsOneWay) {
    for (UInt64 change : GetParam().changes) {
        kelTime const early(change - 1800);
        bool const repeated = early.toString() == kelTime(change + 1800).toString();
        for (char const* before : {"2024/01/15 12:00:00", "2024/07/15 12:00:00"}) {
            kelTime read = at(before);
            ASSERT_TRUE(read.fromString(early.toString().c_str()));
            EXPECT_EQ(change - 1800 + (repeated ? 3600 : 0), read.getRawTime())
                << early.toString().c_str() << " after " << before;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, kelScheduleZones, testing::ValuesIn(ZONES),
                         [](testing::TestParamInfo<Zone> const& info) { return info.param.tag; });
