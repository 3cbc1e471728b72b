// Parsing, stepping and flags of every enumeration class against a model built from the class's
// own table (its values and their names): a text takes the first value whose name equals it,
// else the first whose name in capitals equals it, else 0; next and previous step through the
// table with wrap-around, an unnamed value going to the first entry; flags are plain bit logic.

#include "kelFuzz.h"

#include <kelcore/concurrency/kelThread.h>
#include <kelcore/frame/DailyType.h>
#include <kelcore/frame/RepetitiveType.h>
#include <kelcore/frame/ScheduleType.h>
#include <kelcore/frame/kelDriveType.h>
#include <kelcore/frame/kelEventTypes.h>
#include <kelcore/frame/kelFileAttributes.h>
#include <kelcore/frame/kelFileOperationFlag.h>
#include <kelcore/frame/kelFileOperationType.h>
#include <kelcore/frame/kelFileSizeUnit.h>
#include <kelcore/frame/kelMonth.h>
#include <kelcore/frame/kelTaskState.h>
#include <kelcore/frame/kelTimeUnit.h>
#include <kelcore/frame/kelVariantFormat.h>
#include <kelcore/frame/kelVersion.h>
#include <kelcore/frame/kelWeekDay.h>

#include <cctype>

using namespace KELKIT;

namespace {

template <class E>
void check(std::string const& text, int number) {
    E const probe;
    int const count = probe.getNumValues();
    int const* const values = probe.getValues();
    auto const indexOf = [&](int value) {
        for (int i = 0; i < count; ++i) {
            if (values[i] == value) {
                return i;
            }
        }
        return -1;
    };

    int expected = 0;
    bool found = false;
    for (int pass = 0; pass < 2 && !found; ++pass) {
        for (int i = 0; i < count && !found; ++i) {
            std::string name = E(values[i]).toString();
            if (pass == 1) {
                for (char& c : name) {
                    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
                }
            }
            if (name == text) {
                expected = values[i];
                found = true;
            }
        }
    }
    E parsed(number);
    parsed = text.c_str();
    KEL_FUZZ_CHECK(parsed.getValue() == expected);
    E nullText(number);
    nullText = static_cast<char const*>(nullptr);
    KEL_FUZZ_CHECK(nullText.getValue() == 0);

    int const at = indexOf(number);
    E next(number), previous(number);
    next.next();
    previous.previous();
    KEL_FUZZ_CHECK(next.getValue() == (at < 0 ? values[0] : values[(at + 1) % count]));
    KEL_FUZZ_CHECK(previous.getValue() ==
                   (at < 0 ? values[0] : values[at == 0 ? count - 1 : at - 1]));
    KEL_FUZZ_CHECK(std::string(E(number).toString()).empty() == (at < 0));

    E flags(number);
    int const mask = expected ^ 0x5A5A;
    KEL_FUZZ_CHECK(flags.isFlagsEnabled(mask) == ((number & mask) == mask));
    flags.setFlags(mask, (number & 1) != 0);
    KEL_FUZZ_CHECK(flags.getValue() == ((number & 1) ? (number | mask) : (number & ~mask)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    int const number = input.ConsumeBool() ? input.ConsumeIntegralInRange(-2, 40000)
                                           : input.ConsumeIntegral<int>();
    std::string const text = input.ConsumeRemainingBytesAsString().c_str();
    check<kelDriveType>(text, number);
    check<kelTaskState>(text, number);
    check<kelMonth>(text, number);
    check<kelWeekDay>(text, number);
    check<kelTimeUnit>(text, number);
    check<kelEventTypes>(text, number);
    check<kelFileAttributes>(text, number);
    check<kelFileOperationFlag>(text, number);
    check<kelFileOperationType>(text, number);
    check<kelFileSizeUnit>(text, number);
    check<kelVariantFormat>(text, number);
    check<ScheduleType>(text, number);
    check<RepetitiveType>(text, number);
    check<DailyType>(text, number);
    check<kelThread::Priority>(text, number);
    check<kelFileSerializer::FileMode>(text, number);
    check<kelFileSerializer::Operation>(text, number);
    check<kelVersion::Flags>(text, number);
    return 0;
}
