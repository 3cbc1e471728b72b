#include <kelcore/strings/kelStringConverter.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

using namespace KELKIT;
using SC = kelStringConverter;

namespace {

template <typename T>
std::vector<T> samples(std::mt19937_64& rng) {
    std::vector<T> v = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), T(0), T(1)};
    for (int i = 0; i < 200; ++i) {
        v.push_back(static_cast<T>(rng()));
    }
    return v;
}

// Each integer width: decimal text as std::to_string writes it, and back through the reader.
template <typename T, typename Read>
void checkIntegerRoundTrip(std::mt19937_64& rng, Read read) {
    for (T value : samples<T>(rng)) {
        kelString const text = SC::toString(value);
        ASSERT_EQ(std::to_string(value), text.c_str());
        ASSERT_EQ(value, read(text));
    }
}

std::string printfG(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

} // namespace

TEST(kelStringConverter, IntegersRoundTripThroughDecimalText) {
    std::mt19937_64 rng(5);
    checkIntegerRoundTrip<UInt16>(rng, [](kelString const& t) { return SC::toUInt16(t); });
    checkIntegerRoundTrip<SInt16>(rng, [](kelString const& t) { return SC::toSInt16(t); });
    checkIntegerRoundTrip<UInt32>(rng, [](kelString const& t) { return SC::toUInt32(t); });
    checkIntegerRoundTrip<SInt32>(rng, [](kelString const& t) { return SC::toSInt32(t); });
    checkIntegerRoundTrip<UInt64>(rng, [](kelString const& t) { return SC::toUInt64(t); });
    checkIntegerRoundTrip<SInt64>(rng, [](kelString const& t) { return SC::toSInt64(t); });
    checkIntegerRoundTrip<int>(rng, [](kelString const& t) { return SC::toInt(t); });
    EXPECT_STREQ("65", SC::toString(char(65)).c_str()); // the number, not the letter
    EXPECT_STREQ("-1", SC::toString(char(-1)).c_str());
    EXPECT_EQ(std::to_string(std::numeric_limits<long>::min()),
              SC::toString(std::numeric_limits<long>::min()).c_str()); // the full native width
}

TEST(kelStringConverter, FloatsUseSixSignificantDigits) {
    for (double v : {0.1, 1234567.0, 123456.0, -2.5e-7, 1.0 / 3.0, 0.0, 1e300}) {
        EXPECT_EQ(printfG(v), SC::toString(v).c_str());
        EXPECT_EQ(printfG(static_cast<float>(v)), SC::toString(static_cast<float>(v)).c_str());
    }
    EXPECT_DOUBLE_EQ(1500.0, SC::toFloat64("1.5e3xyz"));
    EXPECT_FLOAT_EQ(-0.25f, SC::toFloat32("  -.25"));
}

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

// The converter's former implementation, kept as the oracle: default string streams in the
// classic locale, 0 for text without a number or with one beyond the width read.
template <typename T>
std::string streamWrite(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value;
    return out.str();
}

template <typename T>
T streamRead(char const* text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    T value = T();
    return (in >> value) ? value : T();
}

template <typename T>
bool sameBits(T a, T b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Every reader against the stream on one text; floats compare by their bits.
void checkAllReaders(std::string const& text) {
    char const* t = text.c_str();
    ASSERT_EQ(UInt8(streamRead<unsigned short>(t)), SC::toUInt8(t)) << text;
    ASSERT_EQ(SInt8(streamRead<short>(t)), SC::toSInt8(t)) << text;
    ASSERT_EQ(streamRead<UInt16>(t), SC::toUInt16(t)) << text;
    ASSERT_EQ(streamRead<SInt16>(t), SC::toSInt16(t)) << text;
    ASSERT_EQ(streamRead<UInt32>(t), SC::toUInt32(t)) << text;
    ASSERT_EQ(streamRead<SInt32>(t), SC::toLong(t)) << text;
    ASSERT_EQ(streamRead<UInt64>(t), SC::toUInt64(t)) << text;
    ASSERT_EQ(streamRead<SInt64>(t), SC::toSInt64(t)) << text;
    ASSERT_TRUE(sameBits(streamRead<float>(t), SC::toFloat32(t))) << text;
    ASSERT_TRUE(sameBits(streamRead<double>(t), SC::toFloat64(t))) << text;
}

// Texts of every shape the readers meet: blanks, signs, digit runs of every length around
// the widths' limits, points, exponents, and characters that end or spoil a number.
std::string generatedText(std::mt19937_64& rng) {
    static char const* const pieces[] = {" ", "\t", "\n\v\f\r", "+", "-", "0",    "00", ".", "e",
                                         "E", "e-", "e+",       "x", "a", "\x85", "9",  "5", "1"};
    std::string text;
    int const count = 1 + int(rng() % 8);
    for (int i = 0; i < count; ++i) {
        if (rng() % 3 == 0) {
            text += pieces[rng() % (sizeof pieces / sizeof *pieces)];
        } else {
            text += std::to_string(rng() >> (rng() % 64)).substr(0, 1 + rng() % 22);
        }
    }
    return text;
}

} // namespace

TEST(kelStringConverter, NumbersToTextMatchTheStreamOverGeneratedValues) {
    for (int b = 0; b < 256; ++b) {
        ASSERT_EQ(streamWrite(int(SInt8(b))), SC::toString(char(b)).c_str());
        ASSERT_EQ(streamWrite(unsigned(b)), SC::toString(UInt8(b)).c_str());
    }
    std::mt19937_64 rng(17);
    for (int i = 0; i < 300000; ++i) {
        UInt64 const bits = rng() >> (rng() % 64);
        ASSERT_EQ(streamWrite(UInt16(bits)), SC::toString(UInt16(bits)).c_str());
        ASSERT_EQ(streamWrite(SInt16(bits)), SC::toString(SInt16(bits)).c_str());
        ASSERT_EQ(streamWrite(UInt32(bits)), SC::toString(UInt32(bits)).c_str());
        ASSERT_EQ(streamWrite(int(bits)), SC::toString(int(bits)).c_str());
        ASSERT_EQ(streamWrite(long(bits)), SC::toString(long(bits)).c_str());
        ASSERT_EQ(streamWrite(bits), SC::toString(bits).c_str());
        ASSERT_EQ(streamWrite(SInt64(bits)), SC::toString(SInt64(bits)).c_str());
        // Any bit pattern: normal, subnormal, zero, infinite and NaN values of both signs. The
        // C formatting and to_chars with the same precision agree, except that the Windows
        // runtime writes a negative NaN without its sign; the converter writes what the stream
        // writes on each platform.
        UInt64 const raw = rng();
        UInt32 const raw32 = UInt32(raw >> 32);
        double d;
        float f;
        std::memcpy(&d, &raw, sizeof d);
        std::memcpy(&f, &raw32, sizeof f);
        for (double v : {d, double(f)}) {
            char c[64], t[64];
            std::snprintf(c, sizeof c, "%.6g", v);
            *std::to_chars(t, t + sizeof t, v, std::chars_format::general, 6).ptr = '\0';
#if defined(_WIN32)
            if (std::isnan(v) && std::signbit(v)) {
                ASSERT_STREQ("nan", c);
                ASSERT_STREQ("-nan", t);
                continue;
            }
#endif
            ASSERT_STREQ(c, t) << raw;
        }
        ASSERT_EQ(streamWrite(d), SC::toString(d).c_str()) << raw;
        ASSERT_EQ(streamWrite(f), SC::toString(f).c_str()) << raw32;
    }
}

TEST(kelStringConverter, TextToNumbersMatchesTheStreamOverGeneratedTexts) {
    // Every 16-bit value and beyond: the low byte of the 8-bit forms and the 16-bit limits.
    for (long v = -70000; v <= 70000; ++v) {
        ASSERT_NO_FATAL_FAILURE(checkAllReaders(std::to_string(v)));
    }
    // The limits of every width, one beyond them, and digit runs of 18 to 21 digits.
    for (std::string const limit : {"127",
                                    "128",
                                    "255",
                                    "256",
                                    "32767",
                                    "32768",
                                    "65535",
                                    "65536",
                                    "2147483647",
                                    "2147483648",
                                    "4294967295",
                                    "4294967296",
                                    "9223372036854775807",
                                    "9223372036854775808",
                                    "18446744073709551615",
                                    "18446744073709551616",
                                    "999999999999999999",
                                    "1000000000000000000",
                                    "000000000000000000000012",
                                    "3.4028235e38",
                                    "3.4028236e38",
                                    "1.7976931348623157e308",
                                    "1.7976931348623159e308",
                                    "1e-38",
                                    "1e-45",
                                    "1e-46",
                                    "4.9e-324",
                                    "2.4e-324",
                                    "1e-400",
                                    "1e400",
                                    "123456789012345678901234567890e-20"}) {
        for (char const* sign : {"", "-", "+", " -", "\t+"}) {
            ASSERT_NO_FATAL_FAILURE(checkAllReaders(sign + limit));
            ASSERT_NO_FATAL_FAILURE(checkAllReaders(sign + limit + "x"));
        }
    }
    std::mt19937_64 rng(23);
    for (int i = 0; i < 300000; ++i) {
        ASSERT_NO_FATAL_FAILURE(checkAllReaders(generatedText(rng)));
        // Numbers as printed: the round trip of random doubles and floats in every magnitude.
        UInt64 const raw = rng();
        double d;
        std::memcpy(&d, &raw, sizeof d);
        char text[64];
        std::snprintf(text, sizeof text, "%.*g", int(1 + rng() % 19), d);
        ASSERT_NO_FATAL_FAILURE(checkAllReaders(text));
    }
}
