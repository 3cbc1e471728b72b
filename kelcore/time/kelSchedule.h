#ifndef KELCORE_TIME_KELSCHEDULE_H
#define KELCORE_TIME_KELSCHEDULE_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/DailyType.h>
#include <kelcore/frame/RepetitiveType.h>
#include <kelcore/frame/ScheduleType.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>
#include <kelcore/time/kelTime.h>

namespace KELKIT {

// A recurring schedule: does an instant fall on it? All comparisons are to the minute, in local
// time. A value object: it holds no timer and starts nothing.
//
// The five forms, and what of the time field counts:
//   Unique      one minute: date, hour and minute.
//   Repetitive  from a start (date, hour, minute, and its second as the earliest instant) every
//               value minutes, hours, days, weeks or months.
//   Daily       every day, weekday or weekend day at a clock time (the date is ignored).
//   Weekly      on listed week days at a clock time.
//   Montly      on a day of the month in listed months at a clock time.
// Only Repetitive has a start; none has an end.
//
// The setters check nothing; each one resets first, so no field of an earlier form survives.
class KELCORE_API kelSchedule {
public:
    // A Unique schedule for the current minute.
    kelSchedule();
    kelSchedule(kelSchedule const& other);
    kelSchedule& operator=(kelSchedule const& other);
    virtual ~kelSchedule();

    // See kelSchedule.cpp for the Repetitive rules: the answer is that of walking from the start
    // one period at a time, computed directly for the units of fixed length. A repetitive value
    // below 1 never repeats: only the start's own minute can match.
    virtual bool matches(kelTime const& time) const;

    void setUnique(kelTime const& time);
    void setRepetitive(kelTime const& start, int value, RepetitiveType const& unit);
    void setDaily(kelTime const& time, DailyType const& type);
    // The list is copied without its duplicates (first occurrences keep their places).
    void setWeekly(kelTime const& time, kelListWeekDay const& days);
    void setMontly(kelTime const& time, int day, kelListMonth const& months);
    // Unique, now, value 0, Hours, Everyday, no days, day 1, no months.
    void reset();

    ScheduleType getType() const;
    kelTime getTime() const;
    int getRepetitiveValue() const;
    RepetitiveType getRepetitiveType() const;
    DailyType getDailyType() const;
    kelListWeekDay getDays() const;
    int getDay() const;
    kelListMonth getMonths() const;

    // One line, for example "Montly on January,July 15th at 07:05" (every day number is "th").
    // Seconds are not written, nor the date of Daily, Weekly and Montly schedules.
    kelString toString() const;
    // Reads what toString() writes. False, with the schedule unchanged, for a text it refuses.
    // Week days and months read back in calendar order; the clock forms read back on 2000/01/01.
    bool fromString(char const* text);

    // The types must agree; the times compare by the type's rule (to the minute for Unique and
    // Repetitive, hour and minute only for the others); then every other field, the lists in
    // order.
    bool operator==(kelSchedule const& other) const;
    bool operator!=(kelSchedule const& other) const;

private:
    bool matchesRepetitive(kelTime const& time) const;

    ScheduleType mType;
    kelTime mTime;
    int mRepetitiveValue;
    RepetitiveType mRepetitiveType;
    DailyType mDailyType;
    kelListWeekDay mDays;
    int mDay;
    kelListMonth mMonths;
};

} // namespace KELKIT

#endif
