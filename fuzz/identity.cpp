// kelGuid's text form and kelVersion's printed form against their rules: a guid text of 36
// characters gives 16 bytes, each from strtol of its digit pair in base 16 with the hyphen
// places skipped, any other length the null guid; a guid prints as 8-4-4-4-12 lower-case digits
// and reads back to itself. A version prints major, then each part its flags ask for, with
// trailing ".0" parts trimmed under Trim, and compares as one 64-bit cell, build highest.

#include "kelFuzz.h"

#include <kelcore/frame/kelGuid.h>
#include <kelcore/frame/kelVersion.h>

#include <cstdlib>
#include <cstring>

using namespace KELKIT;

namespace {

void checkGuid(std::string const& text) {
    kelGuid guid;
    guid.fromString(text.c_str());
    std::uint8_t expected[16] = {};
    if (text.size() == 36) {
        for (int i = 0, at = 0; i < 16; ++i) {
            char const pair[3] = {text[at], text[at + 1], '\0'};
            expected[i] = static_cast<std::uint8_t>(std::strtol(pair, nullptr, 16));
            at += (i == 3 || i == 5 || i == 7 || i == 9) ? 3 : 2;
        }
    }
    static char const DIGITS[] = "0123456789abcdef";
    std::string printed;
    for (int i = 0; i < 16; ++i) {
        printed += DIGITS[expected[i] >> 4];
        printed += DIGITS[expected[i] & 15];
        if (i == 3 || i == 5 || i == 7 || i == 9) {
            printed += '-';
        }
    }
    KEL_FUZZ_CHECK(printed == guid.toString().c_str());
    KEL_FUZZ_CHECK(guid.isNull() ==
                   (std::memcmp(expected, "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 16) == 0));
    kelGuid back;
    back.fromString(printed.c_str());
    KEL_FUZZ_CHECK(back == guid);
}

void checkVersion(FuzzedDataProvider& input) {
    UInt16 parts[4];
    for (UInt16& part : parts) {
        part = input.ConsumeIntegral<UInt16>();
    }
    int const flags = input.ConsumeIntegral<int>();
    kelVersion const version(parts[0], parts[1], parts[2], parts[3], kelVersion::Flags(flags));
    std::string expected = std::to_string(parts[0]);
    for (int i = 1; i < 4; ++i) {
        if (flags & (1 << (i - 1))) {
            expected += "." + std::to_string(parts[i]);
        }
    }
    while ((flags & 8) && expected.size() >= 2 &&
           expected.compare(expected.size() - 2, 2, ".0") == 0) {
        expected.resize(expected.size() - 2);
    }
    KEL_FUZZ_CHECK(expected == version.toString().c_str());

    UInt16 other[4];
    for (UInt16& part : other) {
        part = input.ConsumeIntegral<UInt16>();
    }
    kelVersion const second(other[0], other[1], other[2], other[3]);
    auto const cell = [](UInt16 const* p) {
        return std::uint64_t(p[0]) | std::uint64_t(p[1]) << 16 | std::uint64_t(p[2]) << 32 |
               std::uint64_t(p[3]) << 48;
    };
    std::uint64_t const a = cell(parts), b = cell(other);
    KEL_FUZZ_CHECK((version < second) == (a < b) && (version == second) == (a == b));
    KEL_FUZZ_CHECK((version >= second) == (a >= b) && (version != second) == (a != b));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    checkGuid(std::string(reinterpret_cast<char const*>(data), size).c_str());
    FuzzedDataProvider input(data, size);
    checkVersion(input);
    return 0;
}
