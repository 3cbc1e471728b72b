#include <kelcore/time/kelSchedule.h>

#include <kelcore/frame/kelTimeUnit.h>
#include <kelcore/strings/kelStringTokenizer.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace KELKIT {

namespace {

// No calendar conversion yields this raw time, so a parse that leaves it in place was refused.
UInt64 const UNSET_TIME = ~0ull;

// Clock forms are read back on this date.
char const CLOCK_DATE[] = "2000/01/01 ";

bool sameClockTime(kelTime const& a, kelTime const& b) {
    return a.getMinute() == b.getMinute() && a.getHour() == b.getHour();
}

// Unique and Repetitive compare to the minute.
bool sameMinute(kelTime const& a, kelTime const& b) {
    kelTime first(a);
    kelTime second(b);
    first.setSecond(0);
    second.setSecond(0);
    return first == second;
}

// "%d" as scanf reads it: blanks, a sign, digits. A number that does not fit an int is refused
// rather than cut, so that a text never reads as another value than it shows.
bool readInt(char const* text, int& value) {
    char* end = nullptr;
    errno = 0;
    long long const number = std::strtoll(text, &end, 10);
    if (end == text || errno == ERANGE || number < INT_MIN || number > INT_MAX) {
        return false;
    }
    value = static_cast<int>(number);
    return true;
}

// Reads "YYYY/MM/DD hh:mm:ss". Besides a text of the wrong shape, a stamp that the calendar
// cannot convert (a year outside 1970 .. 3000) is refused: kelTime::fromString would keep its
// old value and still answer true.
bool readTime(std::string const& text, kelTime& time) {
    kelTime read(UNSET_TIME);
    if (!read.fromString(text.c_str()) || read.getRawTime() == UNSET_TIME) {
        return false;
    }
    time = read;
    return true;
}

// The clock forms' time: the text's last five characters on 2000/01/01.
bool readClock(std::string const& text, kelTime& time) {
    return readTime(CLOCK_DATE + text.substr(text.size() - 5) + ":00", time);
}

bool contains(std::string const& text, char const* word) {
    UInt32 pos = 0;
    return kelString(text.c_str()).find(word, pos);
}

std::string stampOf(kelTime const& time) {
    kelTime::TIME_DATA const all = time.getAll();
    char text[64];
    std::snprintf(text, sizeof(text), "%04d/%02d/%02d %02d:%02d", all.year, all.month, all.day,
                  all.hour, all.minute);
    return text;
}

std::string clockOf(kelTime const& time) {
    kelTime::TIME_DATA const all = time.getAll();
    char text[32];
    std::snprintf(text, sizeof(text), "%02d:%02d", all.hour, all.minute);
    return text;
}

template <typename List>
std::string namesOf(List const& list) {
    std::string names;
    for (UInt32 i = 0; i < list.size(); ++i) {
        if (i > 0) {
            names += ',';
        }
        names += list.get(i).toString();
    }
    return names;
}

char const* unitWord(int unit) {
    switch (unit) {
    case RepetitiveType::Minutes:
        return "minutes ";
    case RepetitiveType::Hours:
        return "hours ";
    case RepetitiveType::Days:
        return "days ";
    case RepetitiveType::Weeks:
        return "weeks ";
    case RepetitiveType::Months:
        return "months ";
    default:
        return "";
    }
}

char const* dailyWord(int type) {
    switch (type) {
    case DailyType::Everyday:
        return "everyday ";
    case DailyType::WeekDays:
        return "weekdays ";
    case DailyType::WeekEnds:
        return "weekends ";
    default:
        return "";
    }
}

} // namespace

kelSchedule::kelSchedule()
    : mType(ScheduleType::Unique), mRepetitiveValue(0), mRepetitiveType(RepetitiveType::Hours),
      mDailyType(DailyType::Everyday), mDay(1) {}

kelSchedule::kelSchedule(kelSchedule const& other)
    : mType(other.mType), mTime(other.mTime), mRepetitiveValue(other.mRepetitiveValue),
      mRepetitiveType(other.mRepetitiveType), mDailyType(other.mDailyType), mDays(other.mDays),
      mDay(other.mDay), mMonths(other.mMonths) {}

kelSchedule& kelSchedule::operator=(kelSchedule const& other) {
    if (this != &other) {
        mType = other.mType;
        mTime = other.mTime;
        mRepetitiveValue = other.mRepetitiveValue;
        mRepetitiveType = other.mRepetitiveType;
        mDailyType = other.mDailyType;
        mDays = other.mDays;
        mDay = other.mDay;
        mMonths = other.mMonths;
    }
    return *this;
}

kelSchedule::~kelSchedule() {}

void kelSchedule::reset() {
    mType = ScheduleType::Unique;
    mTime = kelTime::now();
    mRepetitiveValue = 0;
    mRepetitiveType = RepetitiveType::Hours;
    mDailyType = DailyType::Everyday;
    mDays.clear();
    mDay = 1;
    mMonths.clear();
}

void kelSchedule::setUnique(kelTime const& time) {
    reset();
    mTime = time;
    mType = ScheduleType::Unique;
}

void kelSchedule::setRepetitive(kelTime const& start, int value, RepetitiveType const& unit) {
    reset();
    mTime = start;
    mRepetitiveValue = value;
    mRepetitiveType = unit;
    mType = ScheduleType::Repetitive;
}

void kelSchedule::setDaily(kelTime const& time, DailyType const& type) {
    reset();
    mTime = time;
    mDailyType = type;
    mType = ScheduleType::Daily;
}

void kelSchedule::setWeekly(kelTime const& time, kelListWeekDay const& days) {
    reset();
    mTime = time;
    mDays = days;
    mDays.unique();
    mType = ScheduleType::Weekly;
}

void kelSchedule::setMontly(kelTime const& time, int day, kelListMonth const& months) {
    reset();
    mTime = time;
    mDay = day;
    mMonths = months;
    mMonths.unique();
    mType = ScheduleType::Montly;
}

ScheduleType kelSchedule::getType() const {
    return mType;
}

kelTime kelSchedule::getTime() const {
    return mTime;
}

int kelSchedule::getRepetitiveValue() const {
    return mRepetitiveValue;
}

RepetitiveType kelSchedule::getRepetitiveType() const {
    return mRepetitiveType;
}

DailyType kelSchedule::getDailyType() const {
    return mDailyType;
}

kelListWeekDay kelSchedule::getDays() const {
    return mDays;
}

int kelSchedule::getDay() const {
    return mDay;
}

kelListMonth kelSchedule::getMonths() const {
    return mMonths;
}

bool kelSchedule::matches(kelTime const& time) const {
    switch (mType.getValue()) {
    case ScheduleType::Unique:
        return sameMinute(mTime, time);
    case ScheduleType::Repetitive:
        return matchesRepetitive(time);
    case ScheduleType::Daily: {
        if (!sameClockTime(time, mTime)) {
            return false;
        }
        UInt8 const weekDay = time.getWeekDay();
        switch (mDailyType.getValue()) {
        case DailyType::Everyday:
            return true;
        case DailyType::WeekDays:
            return weekDay >= kelWeekDay::Monday && weekDay <= kelWeekDay::Friday;
        case DailyType::WeekEnds:
            return weekDay == kelWeekDay::Sunday || weekDay == kelWeekDay::Saturday;
        default:
            return false;
        }
    }
    case ScheduleType::Weekly:
        return sameClockTime(time, mTime) && mDays.contains(kelWeekDay(time.getWeekDay()));
    case ScheduleType::Montly:
        return sameClockTime(time, mTime) && time.getDay() == mDay &&
               mMonths.contains(kelMonth(time.getMonth()));
    default:
        return false;
    }
}

// The answer is that of a walk: copy the start, give it the second of t, and add one period at a
// time while the copy is earlier than t; t matches when the copy lands on it. Each step of that
// walk is made on the previous result.
//
// Minutes, hours, days and weeks are exact second counts on the raw time, so the copy only ever
// takes the values first + k * period: it lands on t exactly when t - first is a multiple of the
// period, which is computed directly. Days and weeks keep counting seconds across daylight-saving
// changes, as the walk does.
//
// Months are calendar steps whose day-of-month rollover carries from one step to the next (a
// start on January 31st goes on from March 3rd); no closed form keeps that, so months are walked,
// one conversion-bound step per period (about 120 steps for ten years of a monthly schedule).
//
// Where the walk would never end, the answer is false: a value below 1 (only the start's own
// minute can match), and a month step that does not move forward (the calendar refuses its
// result near the end of its span, or the count is too large for the month arithmetic). An
// instant within one period of the 64-bit end, which has no calendar, does not match either.
bool kelSchedule::matchesRepetitive(kelTime const& time) const {
    if (time < mTime) {
        return false;
    }
    UInt64 unitSeconds = 0;
    switch (mRepetitiveType.getValue()) {
    case RepetitiveType::Minutes:
        unitSeconds = 60;
        break;
    case RepetitiveType::Hours:
        if (time.getMinute() != mTime.getMinute()) {
            return false;
        }
        unitSeconds = 3600;
        break;
    case RepetitiveType::Days:
    case RepetitiveType::Weeks:
        if (!sameClockTime(time, mTime)) {
            return false;
        }
        unitSeconds = mRepetitiveType == RepetitiveType::Days ? 86400 : 604800;
        break;
    case RepetitiveType::Months:
        if (!sameClockTime(time, mTime)) {
            return false;
        }
        break;
    default:
        return false;
    }

    kelTime walker(mTime);
    walker.setSecond(time.getSecond());
    UInt64 const target = time.getRawTime();
    UInt64 const first = walker.getRawTime();
    if (first >= target) {
        return first == target;
    }
    if (mRepetitiveValue < 1) {
        return false;
    }

    if (unitSeconds != 0) {
        UInt64 const period = static_cast<UInt64>(mRepetitiveValue) * unitSeconds;
        return (target - first) % period == 0;
    }

    kelTimeUnit const months(kelTimeUnit::Months);
    SInt64 const count = mRepetitiveValue;
    while (walker.getRawTime() < target) {
        UInt64 const before = walker.getRawTime();
        walker.add(count, months);
        if (walker.getRawTime() <= before) {
            return false;
        }
    }
    return walker.getRawTime() == target;
}

kelString kelSchedule::toString() const {
    std::string text;
    char number[32];
    switch (mType.getValue()) {
    case ScheduleType::Unique:
        text = "Unique on " + stampOf(mTime);
        break;
    case ScheduleType::Repetitive:
        std::snprintf(number, sizeof(number), "every %d ", mRepetitiveValue);
        text = std::string("Repetitive ") + number + unitWord(mRepetitiveType.getValue()) +
               "starting on " + stampOf(mTime);
        break;
    case ScheduleType::Daily:
        text = std::string("Daily ") + dailyWord(mDailyType.getValue()) + "at " + clockOf(mTime);
        break;
    case ScheduleType::Weekly:
        text = "Weekly on " + namesOf(mDays) + " at " + clockOf(mTime);
        break;
    case ScheduleType::Montly:
        std::snprintf(number, sizeof(number), " %dth ", mDay);
        text = "Montly on " + namesOf(mMonths) + number + "at " + clockOf(mTime);
        break;
    default:
        break;
    }
    return kelString(text.c_str());
}

// The reader goes by lengths and positions and does not check the words between the fields.
// Every field is read before the one setter call, so a refusal changes nothing.
bool kelSchedule::fromString(char const* text) {
    if (text == nullptr) {
        return false;
    }
    std::string const line(text);
    std::size_t const length = line.size();
    kelTime time(UNSET_TIME);

    if (contains(line, "Unique")) {
        if (length != 26 || !readTime(line.substr(10) + ":00", time)) {
            return false;
        }
        setUnique(time);
        return true;
    }

    if (contains(line, "Repetitive")) {
        if (length < 52) {
            return false;
        }
        static char const* const UNIT_WORDS[] = {"minutes", "hours", "days", "weeks", "months"};
        static RepetitiveType::Enum const UNITS[] = {RepetitiveType::Minutes, RepetitiveType::Hours,
                                                     RepetitiveType::Days, RepetitiveType::Weeks,
                                                     RepetitiveType::Months};
        int found = -1;
        for (int i = 0; i < 5 && found < 0; ++i) {
            if (contains(line, UNIT_WORDS[i])) {
                found = i;
            }
        }
        int value = 0;
        if (found < 0 || !readInt(line.c_str() + 17, value) ||
            !readTime(line.substr(length - 16) + ":00", time)) {
            return false;
        }
        setRepetitive(time, value, RepetitiveType(UNITS[found]));
        return true;
    }

    if (contains(line, "Daily")) {
        if (length != 23) {
            return false;
        }
        static char const* const DAY_WORDS[] = {"everyday", "weekdays", "weekends"};
        static DailyType::Enum const TYPES[] = {DailyType::Everyday, DailyType::WeekDays,
                                                DailyType::WeekEnds};
        int found = -1;
        for (int i = 0; i < 3 && found < 0; ++i) {
            if (contains(line, DAY_WORDS[i])) {
                found = i;
            }
        }
        if (found < 0 || !readClock(line, time)) {
            return false;
        }
        setDaily(time, DailyType(TYPES[found]));
        return true;
    }

    if (contains(line, "Weekly")) {
        if (length < 25) {
            return false;
        }
        // Calendar order, whatever the order in the text; no name at all is an empty list.
        kelListWeekDay days;
        for (int value = kelWeekDay::Sunday; value <= kelWeekDay::Saturday; ++value) {
            kelWeekDay const day(value);
            if (contains(line, day.toString())) {
                days.add(day);
            }
        }
        if (!readClock(line, time)) {
            return false;
        }
        setWeekly(time, days);
        return true;
    }

    if (contains(line, "Montly")) {
        if (length < 26) {
            return false;
        }
        kelListMonth months;
        for (int value = kelMonth::January; value <= kelMonth::December; ++value) {
            kelMonth const month(value);
            if (contains(line, month.toString())) {
                months.add(month);
            }
        }
        kelListString const tokens = kelStringTokenizer::split(line.c_str(), " ");
        int day = 0;
        if (tokens.size() != 6 || !readInt(tokens.get(3).c_str(), day) || !readClock(line, time)) {
            return false;
        }
        setMontly(time, day, months);
        return true;
    }

    return false;
}

bool kelSchedule::operator==(kelSchedule const& other) const {
    if (mType.getValue() != other.mType.getValue()) {
        return false;
    }
    switch (mType.getValue()) {
    case ScheduleType::Unique:
    case ScheduleType::Repetitive:
        if (!sameMinute(mTime, other.mTime)) {
            return false;
        }
        break;
    case ScheduleType::Daily:
    case ScheduleType::Weekly:
    case ScheduleType::Montly:
        if (mTime.getHour() != other.mTime.getHour() ||
            mTime.getMinute() != other.mTime.getMinute()) {
            return false;
        }
        break;
    default:
        return false;
    }
    return mRepetitiveValue == other.mRepetitiveValue &&
           mRepetitiveType.getValue() == other.mRepetitiveType.getValue() &&
           mDailyType.getValue() == other.mDailyType.getValue() && mDays == other.mDays &&
           mDay == other.mDay && mMonths == other.mMonths;
}

bool kelSchedule::operator!=(kelSchedule const& other) const {
    return !(*this == other);
}

} // namespace KELKIT
