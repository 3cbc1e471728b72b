#include <kelcore/time/kelSchedule.h>

#include "support/kelLocalZone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

kelTime at(char const* text) {
    kelTime t(0ull);
    EXPECT_TRUE(t.fromString(text)) << text;
    return t;
}

std::string text(kelSchedule const& s) {
    return s.toString().c_str();
}

class kelScheduleText : public testing::Test {
protected:
    void SetUp() override {
        if (!kelTest::useZone("UTC")) {
            GTEST_SKIP() << "run with TZ=UTC";
        }
    }
};

} // namespace

TEST_F(kelScheduleText, WritesEachForm) {
    kelSchedule s;
    s.setUnique(at("2024/03/09 07:05:44"));
    EXPECT_EQ("Unique on 2024/03/09 07:05", text(s));
    s.setRepetitive(at("2024/03/09 07:05:00"), 15, RepetitiveType::Minutes);
    EXPECT_EQ("Repetitive every 15 minutes starting on 2024/03/09 07:05", text(s));
    s.setRepetitive(at("2024/03/09 07:05:00"), -5, RepetitiveType(9));
    EXPECT_EQ("Repetitive every -5 starting on 2024/03/09 07:05", text(s));
    s.setDaily(at("2024/03/09 00:00:00"), DailyType::Everyday);
    EXPECT_EQ("Daily everyday at 00:00", text(s));
    s.setDaily(at("2024/03/09 07:05:00"), DailyType::WeekEnds);
    EXPECT_EQ("Daily weekends at 07:05", text(s));
    kelListWeekDay days;
    days.add(kelWeekDay::Monday);
    days.add(kelWeekDay::Friday);
    s.setWeekly(at("2024/03/09 07:05:00"), days);
    EXPECT_EQ("Weekly on Monday,Friday at 07:05", text(s));
    kelListMonth months;
    months.add(kelMonth::January);
    months.add(kelMonth::July);
    s.setMontly(at("2024/03/09 07:05:00"), 15, months);
    EXPECT_EQ("Montly on January,July 15th at 07:05", text(s));
    s.setMontly(at("2024/03/09 07:05:00"), 1, months);
    EXPECT_EQ("Montly on January,July 1th at 07:05", text(s));
}

TEST_F(kelScheduleText, ReadsByLengthAndPosition) {
    kelSchedule s;
    ASSERT_TRUE(s.fromString("Repetitive every -5 hours starting on 2024/03/09 07:05"));
    EXPECT_EQ(-5, s.getRepetitiveValue());
    EXPECT_EQ(RepetitiveType::Hours, s.getRepetitiveType());
    EXPECT_STREQ("2024/03/09 07:05:00", s.getTime().toString().c_str());

    ASSERT_TRUE(s.fromString("Weekly on Friday,Monday at 07:05"));
    ASSERT_EQ(2u, s.getDays().size());
    EXPECT_EQ(kelWeekDay::Monday, s.getDays()[0]);
    EXPECT_EQ(kelWeekDay::Friday, s.getDays()[1]);
    EXPECT_STREQ("2000/01/01 07:05:00", s.getTime().toString().c_str());

    ASSERT_TRUE(s.fromString("Weekly on nothing at 07:05"));
    EXPECT_EQ(ScheduleType::Weekly, s.getType());
    EXPECT_TRUE(s.getDays().empty());

    ASSERT_TRUE(s.fromString("Montly on May 1th at 07:05"));
    EXPECT_EQ(1, s.getDay());
    ASSERT_TRUE(s.fromString("Montly on February,March 31th at 07:05"));
    EXPECT_EQ(31, s.getDay());
    ASSERT_EQ(2u, s.getMonths().size());
    EXPECT_EQ(kelMonth::March, s.getMonths()[1]);

    // Numbers out of range in the right shape are normalised by the time's own reading.
    ASSERT_TRUE(s.fromString("Unique on 2024/13/01 07:05"));
    EXPECT_STREQ("2025/01/01 07:05:00", s.getTime().toString().c_str());
}

TEST_F(kelScheduleText, RefusalLeavesTheScheduleUnchanged) {
    kelSchedule s;
    s.setDaily(at("2024/03/09 06:30:00"), DailyType::WeekDays);
    kelSchedule const before(s);
    char const* const refused[] = {
        "",
        "nothing to see here at all",
        "Unique on 2024-03-09 07:05",  // right length, bad date
        "Unique on 2024/03/09 07:0",   // 25
        "Unique on 2024/03/09 07:055", // 27
        "Unique on 1969/03/09 07:05",  // outside the calendar
        "Repetitive every x minutes starting on 2024/03/09 07:05",
        "Repetitive every 5 fortnights starting on 2024/03/09 07:05",
        "Repetitive every 99999999999 minutes starting on 2024/03/09 07:05", // not an int
        "Repetitive every 1 days starting on 2024/03/09 7:05",               // 51
        "Daily sometimes at 07:05",
        "Daily everyday at 07-05",
        "Weekly on Sunday at 7:05",         // 24
        "Montly on May 1th at 07:0",        // 25
        "Montly on May, June 1th at 07:05", // 7 tokens
        "Montly on May xth at 07:05",
    };
    for (char const* line : refused) {
        EXPECT_FALSE(s.fromString(line)) << line;
        EXPECT_TRUE(s == before) << line;
        EXPECT_EQ(before.getTime().getRawTime(), s.getTime().getRawTime()) << line;
    }
    EXPECT_FALSE(s.fromString(nullptr));
    // An empty list writes a text too short to read back.
    s.setWeekly(at("2024/03/09 06:30:00"), kelListWeekDay());
    EXPECT_FALSE(s.fromString(s.toString().c_str()));
    s.setMontly(at("2024/03/09 06:30:00"), 5, kelListMonth());
    EXPECT_FALSE(s.fromString(s.toString().c_str()));
}

// Generated schedules of every form read back equal, up to the documented losses: seconds, the
// date of the clock forms, and the order of the lists (which read back in calendar order).
TEST_F(kelScheduleText, RoundTripsGeneratedSchedules) {
    std::mt19937 rng(3);
    for (int i = 0; i < 1500; ++i) {
        kelTime time(rng() % 4102444800u); // 1970 .. 2100
        kelSchedule s;
        kelSchedule expected;
        switch (i % 5) {
        case 0:
            s.setUnique(time);
            expected = s;
            break;
        case 1:
            s.setRepetitive(time, static_cast<int>(rng()) >> (rng() % 31),
                            RepetitiveType(static_cast<int>(rng() % 5)));
            expected = s;
            break;
        case 2:
            s.setDaily(time, DailyType(static_cast<int>(rng() % 3)));
            expected = s;
            break;
        default: {
            bool const weekly = i % 5 == 3;
            int const top = weekly ? 7 : 12;
            std::vector<int> values;
            for (int n = 1 + rng() % (2 * top); n > 0; --n) {
                values.push_back(1 + static_cast<int>(rng() % top));
            }
            std::vector<int> sorted(values);
            std::sort(sorted.begin(), sorted.end());
            sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
            kelListWeekDay days, sortedDays;
            kelListMonth months, sortedMonths;
            for (int v : values) {
                days.add(kelWeekDay(v));
                months.add(kelMonth(v));
            }
            for (int v : sorted) {
                sortedDays.add(kelWeekDay(v));
                sortedMonths.add(kelMonth(v));
            }
            int const day = static_cast<int>(rng() % 40) - 5;
            if (weekly) {
                s.setWeekly(time, days);
                expected.setWeekly(time, sortedDays);
            } else {
                s.setMontly(time, day, months);
                expected.setMontly(time, day, sortedMonths);
            }
        }
        }
        std::string const line = text(s);
        kelSchedule read;
        ASSERT_TRUE(read.fromString(line.c_str())) << line;
        ASSERT_TRUE(read == expected) << line << " read back as " << text(read);
        EXPECT_EQ(text(expected), text(read));
        EXPECT_EQ(0, read.getTime().getSecond());
        if (i % 5 >= 2) {
            EXPECT_EQ(2000, read.getTime().getYear()) << line;
        }
    }
}
