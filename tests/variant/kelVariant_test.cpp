#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/variant/kelVariant.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using namespace KELKIT;
using kelTest::bytesOf;
using kelTest::WireBytes;
typedef kelVariantFormat F;

namespace {

// ---- An independent model of the conversions: every number as sign and magnitude (integer
// sources) or as the exact double (float sources), compared with the range ends of each width.

struct Exact {
    bool neg;
    UInt64 mag;
    bool operator==(Exact const& o) const { return neg == o.neg && mag == o.mag; }
};

template <typename T>
Exact exactOf(T r) {
    if constexpr (std::is_signed<T>::value) {
        if (r < 0) {
            return Exact{true, 0ull - static_cast<UInt64>(static_cast<SInt64>(r))};
        }
    }
    return Exact{false, static_cast<UInt64>(r)};
}

struct Source {
    F::Enum format;
    bool isFloat;
    Exact exact; // integer sources
    double real; // float sources (a Float32 widened, which is exact)
    kelVariant variant;
};

// Range of an integer target: [low, high], and for doubles [lowReal, highBeyond).
struct Target {
    char const* name;
    Exact low, high;
    double lowReal, highBeyond;
    Exact (*read)(kelVariant const&);
};

template <typename T, T (kelVariant::*Get)() const>
Target targetOf(char const* name) {
    typedef std::numeric_limits<T> L;
    return Target{name,
                  exactOf(L::min()),
                  exactOf(L::max()),
                  double(L::min()),
                  std::ldexp(1.0, L::digits),
                  [](kelVariant const& v) { return exactOf((v.*Get)()); }};
}

std::vector<Target> const& integerTargets() {
    static std::vector<Target> const targets = {
        targetOf<UInt8, &kelVariant::getUInt8>("UInt8"),
        targetOf<SInt8, &kelVariant::getSInt8>("SInt8"),
        targetOf<UInt16, &kelVariant::getUInt16>("UInt16"),
        targetOf<SInt16, &kelVariant::getSInt16>("SInt16"),
        targetOf<UInt32, &kelVariant::getUInt32>("UInt32"),
        targetOf<SInt32, &kelVariant::getSInt32>("SInt32"),
        targetOf<UInt64, &kelVariant::getUInt64>("UInt64"),
        targetOf<SInt64, &kelVariant::getSInt64>("SInt64"),
    };
    return targets;
}

Exact expectedInteger(Source const& s, Target const& t) {
    if (!s.isFloat) {
        if (s.exact.neg && (!t.low.neg || s.exact.mag > t.low.mag)) {
            return t.low;
        }
        return (!s.exact.neg && s.exact.mag > t.high.mag) ? t.high : s.exact;
    }
    if (std::isnan(s.real)) {
        return Exact{false, 0};
    }
    if (s.real < t.lowReal) {
        return t.low;
    }
    if (s.real >= t.highBeyond) {
        return t.high;
    }
    double const whole = std::trunc(s.real);
    return Exact{whole < 0, static_cast<UInt64>(std::fabs(whole))};
}

template <typename R>
R expectedReal(Source const& s) {
    if (s.isFloat) {
        return static_cast<R>(s.real);
    }
    R const m = static_cast<R>(s.exact.mag);
    return s.exact.neg ? -m : m;
}

std::string expectedText(Source const& s) {
    char buffer[64];
    if (s.format == F::Bool) {
        return s.exact.mag != 0 ? "true" : "false";
    }
    if (s.isFloat) {
        std::snprintf(buffer, sizeof buffer, "%g", s.real);
    } else {
        std::snprintf(buffer, sizeof buffer, "%s%llu", s.exact.neg ? "-" : "", s.exact.mag);
    }
    return buffer;
}

template <typename T>
void addInteger(std::vector<Source>& out, F::Enum f, bool neg, UInt64 m) {
    UInt64 const maxMag =
        neg ? exactOf(std::numeric_limits<T>::min()).mag : UInt64(std::numeric_limits<T>::max());
    if (m <= maxMag) {
        out.push_back(Source{f, false, {neg && m != 0, m}, 0.0, kelVariant()});
        out.back().variant.set(static_cast<T>(neg ? 0ull - m : m));
    }
}

// The integer formats follow each other from UInt8 on, in this order.
template <typename... T>
void addIntegers(std::vector<Source>& out, bool neg, UInt64 m) {
    int f = F::UInt8;
    (addInteger<T>(out, F::Enum(f++), neg, m), ...);
}

// Every numeric format over the values around each width's ends, and generated ones.
std::vector<Source> numericSources() {
    std::vector<Source> sources;
    std::mt19937_64 rng(41);
    std::vector<UInt64> mags = {0, 1, 2, 18446744073709551615ull};
    double const inf = std::numeric_limits<double>::infinity();
    std::vector<double> reals = {0.0, 0.5, 0.999, 1.0, 1.5, 1e30, 1e300, inf, 4.9e-324, 3.4e38};
    for (int k : {7, 8, 15, 16, 31, 32, 63, 64}) {
        double const p = std::ldexp(1.0, k);
        reals.insert(reals.end(), {p, p - 0.5, std::nextafter(p, 0.0), std::nextafter(p, inf),
                                   double(std::nextafter(float(p), 0.0f))});
        if (k < 64) {
            mags.insert(mags.end(), {(1ull << k) - 1, 1ull << k, (1ull << k) + 1});
        }
    }
    for (int i = 0; i < 300; ++i) {
        mags.push_back(rng() >> (rng() % 64));
        reals.push_back(std::ldexp(double(rng() >> 11), int(rng() % 80) - 53));
    }
    sources.push_back(Source{F::Bool, false, {false, 0}, 0.0, kelVariant(false)});
    sources.push_back(Source{F::Bool, false, {false, 1}, 0.0, kelVariant(true)});
    for (UInt64 m : mags) {
        for (bool neg : {false, true}) {
            addIntegers<UInt8, SInt8, UInt16, SInt16, UInt32, SInt32, UInt64, SInt64>(sources, neg,
                                                                                      m);
        }
    }
    reals.push_back(std::nan(""));
    for (double x : reals) {
        for (double r : {x, -x}) {
            float const r32 = static_cast<float>(r);
            sources.push_back(Source{F::Float32, true, {false, 0}, double(r32), kelVariant(r32)});
            sources.push_back(Source{F::Float64, true, {false, 0}, r, kelVariant(r)});
        }
    }
    return sources;
}

bool sameFloat(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(kelVariantMatrix, EveryNumericSourceAndGetterAgreesWithTheModel) {
    std::vector<Source> const sources = numericSources();
    for (Source const& s : sources) {
        SCOPED_TRACE(std::string(kelVariantFormat(s.format).toString()) + " " + expectedText(s));
        ASSERT_EQ(s.format, s.variant.getFormat());
        for (Target const& t : integerTargets()) {
            Exact const want = expectedInteger(s, t);
            Exact const got = t.read(s.variant);
            EXPECT_TRUE(want == got) << t.name << ": want " << (want.neg ? "-" : "") << want.mag
                                     << ", got " << (got.neg ? "-" : "") << got.mag;
        }
        bool const truth =
            s.isFloat ? (std::isnan(s.real) || s.real > 0) : !s.exact.neg && s.exact.mag != 0;
        EXPECT_EQ(truth, s.variant.getBool());
        EXPECT_TRUE(sameFloat(expectedReal<double>(s), s.variant.getFloat64()));
        EXPECT_TRUE(sameFloat(expectedReal<float>(s), s.variant.getFloat32()));
        if (!s.isFloat || std::isfinite(s.real)) {
            EXPECT_STREQ(expectedText(s).c_str(), s.variant.getString().c_str());
        }
    }
    EXPECT_GT(sources.size(), 2000u);
}

TEST(kelVariantMatrix, TextAndTimeSourcesFollowTheirOwnRules) {
    kelVariant text("300");
    EXPECT_EQ(44, text.getUInt8()); // the converter's reading, not saturated
    EXPECT_EQ(-56, kelVariant("200").getSInt8());
    EXPECT_TRUE(text.getBool());
    EXPECT_FALSE(kelVariant("256").getBool()); // toUInt8 of 256 is 0
    EXPECT_EQ(65535, kelVariant("-1").getUInt16());

    kelTime const moment(1710000000ull);
    kelVariant time(moment);
    EXPECT_EQ(F::Time, time.getFormat());
    EXPECT_FALSE(time.getBool());
    EXPECT_EQ(0u, time.getUInt64());
    EXPECT_STREQ(moment.toString().c_str(), time.getString().c_str());
    EXPECT_TRUE(time.getTime() == moment);
    // A text that is no time gives the current one.
    EXPECT_GE(kelVariant(kelString("s")).getTime().getRawTime(), moment.getRawTime());
}

TEST(kelVariantValues, EmptyStateAndNaN) {
    kelVariant v;
    EXPECT_EQ(F::UInt8, v.getFormat());
    EXPECT_STREQ("0", v.getString().c_str());
    v.setFloat32(std::nanf(""));
    EXPECT_TRUE(v.getBool());
    EXPECT_EQ(0, v.getSInt32()); // a NaN reads as 0 in every integer type
}

TEST(kelVariantValues, SettersOverloadsAndTextRecognition) {
    EXPECT_EQ(F::Bool, kelVariant("tRuE").getFormat());
    EXPECT_FALSE(kelVariant("False").getBool());
    EXPECT_EQ(F::String, kelVariant("truex").getFormat());
    EXPECT_EQ(F::Time, kelVariant("2024/03/15 12:34:56").getFormat());
    EXPECT_EQ(F::String, kelVariant("2024/3/15 12:34:56").getFormat());
    EXPECT_EQ(F::String, kelVariant(kelString("12")).getFormat());

    kelVariant v("old");
    v.setString(static_cast<char const*>(nullptr));
    EXPECT_STREQ("old", v.getString().c_str());
    v = 7;
    v.setString(static_cast<char const*>(nullptr));
    EXPECT_EQ(F::String, v.getFormat());
    EXPECT_STREQ("", v.getString().c_str());

    SInt16 out = 0;
    kelVariant(70000).get(out);
    EXPECT_EQ(32767, out);
}

TEST(kelVariantValues, AcceptTakesOnlyTextThatSurvivesTheRoundTrip) {
    kelVariant byte(UInt8(0));
    EXPECT_TRUE(byte.accept("12"));
    for (char const* refused :
         {"300", "012", "+1", " 1", "1x", "", "-1", static_cast<char const*>(nullptr)}) {
        EXPECT_FALSE(byte.accept(refused)) << (refused ? refused : "null");
    }
    EXPECT_EQ(0, byte.getUInt8()); // accept changes nothing
    EXPECT_FALSE(kelVariant(false).accept("TRUE"));
    kelVariant real(0.0);
    EXPECT_FALSE(real.accept("1.50"));
    EXPECT_TRUE(real.fromString("1.5"));
    EXPECT_FALSE(real.fromString("x"));
    EXPECT_EQ(1.5, real.getFloat64()); // a refusal keeps the value

    kelVariant text("abc");
    EXPECT_TRUE(text.fromString("2023/01/02 03:04:05"));
    EXPECT_EQ(F::Time, text.getFormat());
    EXPECT_FALSE(text.fromString("2023/02/30 03:04:05")); // rolls over, prints differently
    kelVariant small(SInt8(0));
    EXPECT_TRUE(small.accept("-128"));
    EXPECT_FALSE(small.accept("-129"));

    // Whatever a format prints, a variant of that format takes back.
    for (Source const& s : numericSources()) {
        if (s.isFloat && !std::isfinite(s.real)) {
            continue;
        }
        kelVariant back;
        back = s.variant;
        kelString const printed = s.variant.getString();
        ASSERT_TRUE(back.fromString(printed.c_str())) << printed.c_str();
        EXPECT_EQ(s.format, back.getFormat());
        if (!s.isFloat) {
            EXPECT_TRUE(back == s.variant) << printed.c_str();
        }
    }
}

TEST(kelVariantValues, EqualityAcrossFormats) {
    EXPECT_TRUE(kelVariant(true) == kelVariant(UInt32(1)));
    EXPECT_TRUE(kelVariant(5.0) == kelVariant(UInt8(5)));
    EXPECT_TRUE(kelVariant(5.0) == kelVariant("5"));
    EXPECT_TRUE(kelVariant(-1) == kelVariant(SInt8(-1)));
    EXPECT_FALSE(kelVariant(-1) == kelVariant(UInt64(18446744073709551615ull)));
    kelVariant const nan32(std::nanf(""));
    EXPECT_TRUE(nan32 == kelVariant(nan32));
    EXPECT_TRUE(nan32 != kelVariant(std::nan("")));
    EXPECT_TRUE(kelVariant(0.0) != kelVariant(-0.0));
    EXPECT_TRUE(kelVariant(0.0f) == kelVariant(-0.0));
    EXPECT_TRUE(kelVariant(kelTime(5ull)) != kelVariant(kelTime(6ull)));
}

TEST(kelVariantValues, CopiesAreDeepAndSelfAssignmentKeepsTheValue) {
    kelVariant text("hello");
    kelVariant copy(text);
    text.setString("changed");
    EXPECT_STREQ("hello", copy.getString().c_str());
    kelVariant const* alias = &copy;
    copy = *alias;
    EXPECT_STREQ("hello", copy.getString().c_str());
    copy =
        kelVariant(-42); // a String replaced by a number frees its text (ASan would say otherwise)
    EXPECT_EQ(-42, copy.getSInt32());
}

TEST(kelVariantWire, FormatByteThenCellOrPayload) {
    kelVariant const values[] = {kelVariant(SInt8(-2)), kelVariant(1.5f), kelVariant("ab"),
                                 kelVariant(kelTime(77ull))};
    kelBinarySerializer s;
    for (kelVariant const& v : values) {
        v.serializeTo(s);
    }
    WireBytes want;
    want.u8(2).s64(-2).u8(9).f32(1.5f).u32(0).u8(11).u32(2).text("ab").u8(12).u64(77);
    EXPECT_EQ(want.bytes(), bytesOf(s.getBufferC(), s.getSize()));
    kelVariant back;
    for (kelVariant const& v : values) {
        back.deserializeFrom(s);
        EXPECT_TRUE(back == v && back.getFormat() == v.getFormat()) << v.getString().c_str();
    }

    // A String read back stays a String, even with a time text, which getTime then reads.
    WireBytes timeText;
    timeText.u8(11).u32(19).text("2024/03/15 12:34:56");
    kelBinarySerializer in(timeText.bytes().data(), UInt32(timeText.bytes().size()));
    back.deserializeFrom(in);
    EXPECT_EQ(F::String, back.getFormat());
    EXPECT_STREQ("2024/03/15 12:34:56", back.getTime().toString().c_str());
}

TEST(kelVariantWire, HostileStreamsGiveADefinedStateOrTheSerializersException) {
    std::mt19937 rng(7);
    int thrown = 0;
    for (int format = 0; format < 256; ++format) {
        for (int round = 0; round < 24; ++round) {
            WireBytes w;
            w.u8(UInt8(format));
            if (round == 0) {
                w.u32(0xFFFFFFFFu).text("short"); // a huge text length
            } else {
                for (unsigned n = rng() % 14; n > 0; --n) {
                    w.u8(UInt8(rng()));
                }
            }
            std::vector<unsigned char> const& bytes = w.bytes();
            kelBinarySerializer in(bytes.data(), UInt32(bytes.size()));
            kelVariant v("before");
            try {
                v.deserializeFrom(in);
            } catch (kelException const&) {
                ++thrown;
                EXPECT_STREQ("before", v.getString().c_str()); // a failed read loses nothing
                continue;
            }
            if (format > 12) {
                EXPECT_EQ(F::UInt8, v.getFormat());
                EXPECT_EQ(0u, v.getUInt64());
            } else {
                ASSERT_EQ(format, int(v.getFormat().getValue()));
            }
            if (format <= 10) {
                // Cut to the format's width as a setter would store it; it then travels intact.
                if (format == F::UInt8) {
                    EXPECT_EQ(bytes[1], v.getUInt8());
                } else if (format == F::Bool) {
                    EXPECT_EQ(bytes[1] != 0, v.getBool());
                }
                kelBinarySerializer out;
                v.serializeTo(out);
                kelVariant again;
                again.deserializeFrom(out);
                EXPECT_TRUE(again == v);
            }
        }
    }
    EXPECT_GT(thrown, 100);
}
