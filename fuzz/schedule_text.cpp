// kelSchedule::fromString. A refused text leaves the schedule as it was. An accepted one has the
// type of the first type word found, the length that type requires, the unit or day word found
// first, and the week days or months named anywhere, in calendar order; its own text then reads
// back to an equal schedule (unless a Weekly or Montly list is empty, whose text is too short).

#include "kelFuzz.h"

#include <kelcore/time/kelSchedule.h>

#include <cstdlib>

using namespace KELKIT;

namespace {

bool contains(std::string const& text, char const* word) {
    return text.find(word) != std::string::npos;
}

// The index of the first word of the list that occurs in the text, or -1.
template <std::size_t N>
int firstFound(std::string const& text, char const* const (&words)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        if (contains(text, words[i])) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

template <class List, class E>
bool namesFound(std::string const& text, List const& list, int first, int last) {
    List expected;
    for (int value = first; value <= last; ++value) {
        if (contains(text, E(value).toString())) {
            expected.add(E(value));
        }
    }
    return expected == list;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return kelFuzz::useUtc();
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text = std::string(reinterpret_cast<char const*>(data), size).c_str();
    kelSchedule schedule;
    schedule.setRepetitive(kelTime(1700000000ull), 3, RepetitiveType(RepetitiveType::Days));
    kelSchedule const old(schedule);
    if (!schedule.fromString(text.c_str())) {
        KEL_FUZZ_CHECK(schedule == old);
        KEL_FUZZ_CHECK(schedule.toString() == old.toString());
        return 0;
    }

    static char const* const TYPES[] = {"Unique", "Repetitive", "Daily", "Weekly", "Montly"};
    int const type = firstFound(text, TYPES);
    KEL_FUZZ_CHECK(type == schedule.getType().getValue());
    std::size_t const length = text.size();
    switch (type) {
    case ScheduleType::Unique:
        KEL_FUZZ_CHECK(length == 26);
        break;
    case ScheduleType::Repetitive: {
        static char const* const UNITS[] = {"minutes", "hours", "days", "weeks", "months"};
        KEL_FUZZ_CHECK(length >= 52);
        KEL_FUZZ_CHECK(firstFound(text, UNITS) == schedule.getRepetitiveType().getValue());
        KEL_FUZZ_CHECK(std::strtol(text.c_str() + 17, nullptr, 10) ==
                       schedule.getRepetitiveValue());
        break;
    }
    case ScheduleType::Daily: {
        static char const* const DAYS[] = {"everyday", "weekdays", "weekends"};
        KEL_FUZZ_CHECK(length == 23);
        KEL_FUZZ_CHECK(firstFound(text, DAYS) == schedule.getDailyType().getValue());
        break;
    }
    case ScheduleType::Weekly:
        KEL_FUZZ_CHECK(length >= 25);
        KEL_FUZZ_CHECK((namesFound<kelListWeekDay, kelWeekDay>(text, schedule.getDays(), 1, 7)));
        break;
    default:
        KEL_FUZZ_CHECK(length >= 26);
        KEL_FUZZ_CHECK((namesFound<kelListMonth, kelMonth>(text, schedule.getMonths(), 1, 12)));
        break;
    }

    kelString const written = schedule.toString();
    kelSchedule again;
    bool const emptyList = (type == ScheduleType::Weekly && schedule.getDays().size() == 0) ||
                           (type == ScheduleType::Montly && schedule.getMonths().size() == 0);
    KEL_FUZZ_CHECK(again.fromString(written.c_str()) == !emptyList);
    KEL_FUZZ_CHECK(emptyList || again == schedule);
    return 0;
}
