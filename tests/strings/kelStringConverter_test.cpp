#include <kelcore/strings/kelStringConverter.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cinttypes>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <tuple>

using namespace KELKIT;
using SC = kelStringConverter;

TEST(kelStringConverter, ReadingFollowsStreamExtraction) {
    EXPECT_EQ(12u, SC::toUInt32("12abc"));
    EXPECT_EQ(0u, SC::toUInt32("0x1F"));
    EXPECT_EQ(7, SC::toSInt32("+7"));
    EXPECT_EQ(65535u, SC::toUInt16("-1")); // a minus wraps for unsigned types
    EXPECT_EQ(std::numeric_limits<UInt64>::max(), SC::toUInt64("-1"));
    EXPECT_EQ(44u, SC::toUInt8("300")); // 16 bits read, then truncated
    EXPECT_EQ(-56, SC::toSInt8("200"));
    EXPECT_EQ(-12, SC::toLong("-12.9"));
    // No number, or one beyond the width read, gives 0.
    EXPECT_EQ(0u, SC::toUInt8("70000"));
    EXPECT_EQ(0u, SC::toUInt32("4294967296"));
    EXPECT_EQ(0, SC::toSInt32("-2147483649"));
    EXPECT_EQ(0u, SC::toUInt16(static_cast<char const*>(nullptr)));
    EXPECT_EQ(0.0, SC::toFloat64("1e999"));
}

TEST(kelStringConverter, FormatIsBoundedByItsBuffer) {
    EXPECT_STREQ("7 -3 ab 18446744073709551615 0.50",
                 SC::format("%d %lld %s %" PRIu64 " %.2f", 7, -3LL, "ab",
                            std::numeric_limits<std::uint64_t>::max(), 0.5)
                     .c_str());
    std::string const longText(20000, 'x');
    kelString const cut = SC::format("<%s>", longText.c_str());
    EXPECT_EQ(10239u, cut.size());
    EXPECT_EQ('x', cut[10238]);
    EXPECT_EQ(10239u, SC::format("%s", std::string(10239, 'y').c_str()).size());
    EXPECT_TRUE(SC::format(nullptr).empty());
}

TEST(kelStringConverter, FormatMatchTestsCharacterClassesOnly) {
    EXPECT_TRUE(SC::formatMatch("00:00", "99:99"));
    EXPECT_FALSE(SC::formatMatch("00:00", "23-59"));
    EXPECT_FALSE(SC::formatMatch("00:00", "2:59"));
    EXPECT_TRUE(SC::formatMatch("Aa-0", "zZ-5"));
    EXPECT_FALSE(SC::formatMatch("A", "1"));
    EXPECT_FALSE(SC::formatMatch("0", "a"));
    EXPECT_TRUE(SC::formatMatch(nullptr, ""));
    EXPECT_FALSE(SC::formatMatch("0", nullptr));
}

TEST(kelStringConverter, CsvFieldsQuoteOnlySeparatorsAndQuotes) {
    EXPECT_STREQ("plain text, with comma\n", SC::toCSV("plain text, with comma\n").c_str());
    EXPECT_STREQ("\"a;b\"", SC::toCSV("a;b").c_str());
    EXPECT_STREQ("\"say \"\"hi\"\"\"", SC::toCSV(kelString("say \"hi\"")).c_str());
    EXPECT_STREQ("12;5", SC::toCSV("12;5").c_str()); // begins with a number: left alone
    EXPECT_STREQ("-3.5", SC::toCSV("-3.5").c_str());
}

TEST(kelStringConverter, HexOfEveryWidthIsTwosComplement) {
    EXPECT_STREQ("ff", SC::toHex(char(-1)).c_str());
    EXPECT_STREQ("fffe", SC::toHex(static_cast<short>(-2)).c_str());
    EXPECT_STREQ("0000beef", SC::toHex(0xBEEFu).c_str());
    EXPECT_STREQ("8000000000000000", SC::toHex(std::numeric_limits<long long>::min()).c_str());
    EXPECT_EQ(2 * sizeof(long), SC::toHex(-1L).size()); // native long: its full width

    std::mt19937 rng(9);
    std::vector<UInt8> bytes(300);
    std::string want;
    for (UInt8& b : bytes) {
        b = static_cast<UInt8>(rng());
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02x", b);
        want += pair;
    }
    EXPECT_EQ(want, SC::toHex(bytes.data(), static_cast<UInt32>(bytes.size())).c_str());
    EXPECT_TRUE(SC::toHex(static_cast<char const*>(nullptr)).empty());
    EXPECT_STREQ("4142", SC::toHex(kelString("AB")).c_str());
}

TEST(kelStringConverter, PrintableSetAndPrintableString) {
    // Printable: 0x20 to 0xFD except the gaps of the code page.
    std::string const gaps = "\x7F\x81\x8D\x8F\x90\x9D\xA0";
    for (int b = 0; b < 256; ++b) {
        bool const want = b >= 0x20 && b <= 0xFD && gaps.find(char(b)) == std::string::npos;
        EXPECT_EQ(want, SC::isPrintableCharacter(static_cast<char>(b))) << b;
    }
    UInt8 const data[5] = {'o', 0x00, 'k', 0xFF, 0x80};
    EXPECT_STREQ("o.k.\x80", SC::toPrintableString(data, 5, '.').c_str());
    EXPECT_TRUE(SC::toPrintableString(nullptr, 5, '.').empty());
}

namespace {

// The former implementation as the oracle: classic-locale streams, 0 where extraction fails.
template <typename T>
std::string streamWrite(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return out.str();
}
template <typename T>
T streamRead(std::string const& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value = T();
    return (in >> value) ? value : T();
}
template <typename T>
std::string bitsOf(T value) {
    return std::string(reinterpret_cast<char const*>(&value), sizeof value);
}

// Every reader on one text; the 8-bit forms keep the low byte of a 16-bit read.
void checkReaders(std::string const& t) {
    char const* c = t.c_str();
    ASSERT_EQ(std::make_tuple(UInt8(streamRead<UInt16>(t)), SInt8(streamRead<SInt16>(t)),
                              streamRead<UInt16>(t), streamRead<SInt16>(t), streamRead<UInt32>(t),
                              streamRead<SInt32>(t), streamRead<UInt64>(t), streamRead<SInt64>(t),
                              bitsOf(streamRead<float>(t)), bitsOf(streamRead<double>(t))),
              std::make_tuple(SC::toUInt8(c), SC::toSInt8(c), SC::toUInt16(c), SC::toSInt16(c),
                              SC::toUInt32(c), SC::toLong(c), SC::toUInt64(c), SC::toSInt64(c),
                              bitsOf(SC::toFloat32(c)), bitsOf(SC::toFloat64(c))))
        << t;
}

} // namespace

TEST(kelStringConverter, NumbersToTextMatchTheStreamOverGeneratedValues) {
    EXPECT_EQ(streamWrite(LONG_MIN), SC::toString(LONG_MIN).c_str()); // the full native width
    for (int b = 0; b < 256; ++b) {
        ASSERT_EQ(streamWrite(int(SInt8(b))), SC::toString(char(b)).c_str());
        ASSERT_EQ(streamWrite(unsigned(b)), SC::toString(UInt8(b)).c_str());
    }
    std::mt19937_64 rng(17);
    for (int i = 0; i < 300000; ++i) {
        UInt64 const n = rng() >> (rng() % 64), raw = rng();
        auto const same = [](auto v) { return streamWrite(v) == SC::toString(v).c_str(); };
        ASSERT_TRUE(same(UInt16(n)) && same(SInt16(n)) && same(UInt32(n)) && same(int(n)) &&
                    same(long(n)) && same(n) && same(SInt64(n)))
            << n;
        // Any bit pattern: normal, subnormal, zero, infinite, NaN. to_chars with a precision
        // writes what the C formatting writes, except the sign of a NaN on Windows.
        double d;
        float f;
        std::memcpy(&d, &raw, sizeof d);
        std::memcpy(&f, &raw, sizeof f);
        for (double v : {d, double(f)}) {
            char c[64], t[64] = {};
            std::snprintf(c, sizeof c, "%.6g", v);
            std::to_chars(t, t + sizeof t - 1, v, std::chars_format::general, 6);
#if defined(_WIN32)
            if (std::isnan(v) && std::signbit(v)) {
                ASSERT_EQ(std::string("nan-nan"), std::string(c) + t);
                continue;
            }
#endif
            ASSERT_STREQ(c, t) << raw;
        }
        ASSERT_EQ(streamWrite(d), SC::toString(d).c_str()) << raw;
        ASSERT_EQ(streamWrite(f), SC::toString(f).c_str()) << raw;
    }
}

TEST(kelStringConverter, TextToNumbersMatchesTheStreamOverGeneratedTexts) {
    for (long v = -70000; v <= 70000; ++v) { // every 16-bit value and the 8-bit low bytes
        ASSERT_NO_FATAL_FAILURE(checkReaders(std::to_string(v)));
    }
    // Texts of blanks, signs, digit runs, points, exponents, characters that end a number and
    // the limits of every width and one beyond; and printed values of every magnitude.
    std::string const pieces =
        "| |\t|\n\v\f\r|+|-|0|00|.|e|E|e-|e+|x|\x85|2147483647|2147483648|4294967295|"
        "4294967296|9223372036854775807|9223372036854775808|"
        "18446744073709551615|18446744073709551616|3.4028236e38|4.9e-324|"
        "1.7976931348623159e308|1e-400|1e400|-0.0000001e-40|123456789012345678901|";
    std::mt19937_64 rng(23);
    for (int i = 0; i < 300000; ++i) {
        std::string text;
        for (int n = 1 + int(rng() % 6); n > 0; --n) {
            std::size_t const at = pieces.find('|', rng() % pieces.size()) + 1;
            text += rng() % 3 == 0 ? pieces.substr(at, pieces.find('|', at) - at)
                                   : std::to_string(rng() >> (rng() % 64)).substr(0, rng() % 22);
        }
        ASSERT_NO_FATAL_FAILURE(checkReaders(text));
        UInt64 const raw = rng();
        double d;
        std::memcpy(&d, &raw, sizeof d);
        char printed[64];
        std::snprintf(printed, sizeof printed, "%.*g", int(1 + rng() % 19), d);
        ASSERT_NO_FATAL_FAILURE(checkReaders(printed));
    }
}
