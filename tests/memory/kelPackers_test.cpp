#include <kelcore/memory/kelBitsPacker.h>
#include <kelcore/memory/kelBoolPacker.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;

namespace {

double const kNaN = std::numeric_limits<double>::quiet_NaN();
double const kInf = std::numeric_limits<double>::infinity();

bool sameDouble(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// trunc(v) modulo 2^64 by halving, one bit at a time (every step is exact), negatives as two's
// complement; what isn't finite counts as 0.
UInt64 referenceBits(double v) {
    UInt64 bits = 0;
    for (int i = 0; i < 64 && std::isfinite(v); ++i) {
        double const halved = std::floor(std::ldexp(std::trunc(std::fabs(v)), -i));
        bits |= UInt64(std::fmod(halved, 2.0) != 0.0) << i;
    }
    return v < 0.0 ? ~bits + 1 : bits;
}

struct Field {
    unsigned char offset, length;
    double scaling;
    bool isSigned;
};

// The documented store, written into the bytes bit by bit.
void referenceStore(Bytes& bytes, Field const& f, double value) {
    bool const negative = 0.0 > value;
    if (f.isSigned && negative) {
        value = -value;
    }
    UInt64 integer = 0;
    if (f.scaling != 1.0) {
        unsigned const magnitudeBits = f.isSigned ? f.length - 1 : f.length;
        double const max = std::ldexp(1.0, int(magnitudeBits)) * f.scaling - f.scaling;
        double const min = f.isSigned ? -max : 0.0;
        value = value > max ? max : min > value ? min : value;
        double const quotient = value / f.scaling; // kept inside the field, and not negative
        integer = quotient >= std::ldexp(1.0, int(magnitudeBits))
                      ? (magnitudeBits == 0 ? 0 : ~UInt64(0) >> (64 - magnitudeBits))
                      : referenceBits(quotient > 0.0 ? quotient : 0.0);
    } else {
        integer = referenceBits(value);
    }
    for (unsigned i = 0, at = f.offset; i < f.length; ++i, ++at) {
        bool const bit = (integer >> i & 1) != 0 || (i + 1 == f.length && f.isSigned && !negative);
        bytes[at / 8] =
            static_cast<unsigned char>((bytes[at / 8] & ~(1 << at % 8)) | bit << at % 8);
    }
}

double referenceRead(Bytes const& bytes, Field const& f) {
    UInt64 raw = 0;
    for (unsigned i = 0, at = f.offset; i < f.length; ++i, ++at) {
        raw |= UInt64(bytes[at / 8] >> at % 8 & 1) << i;
    }
    bool const negative = f.isSigned && (raw >> (f.length - 1) & 1) == 0;
    raw &= f.isSigned ? ~(UInt64(1) << (f.length - 1)) : ~UInt64(0);
    double const value = f.scaling != 1.0 ? static_cast<double>(raw) * f.scaling : double(raw);
    return negative ? value * -1.0 : value;
}

// Stores value through a packer on a heap block of exactly the word's width.
Bytes packed(Bytes const& before, Field const& f, double value, double& read) {
    std::unique_ptr<unsigned char[]> word(new unsigned char[before.size()]);
    std::memcpy(word.get(), before.data(), before.size());
    kelBitsPacker packer(word.get(), f.offset, f.length, f.scaling, f.isSigned);
    packer = value;
    read = packer;
    return Bytes(word.get(), word.get() + before.size());
}

} // namespace

TEST(kelBitsPacker, MatchesTheReferenceEncoder) {
    std::mt19937_64 rng(29);
    std::uniform_real_distribution<double> mantissa(1.0, 2.0), factor(-1.2, 1.2);
    double const specials[] = {kNaN,    kInf,    -kInf, 0.0,    -0.0,      0x1p63 - 1024.0, 0x1p63,
                               -0x1p63, -0x1p70, 1e30,  -1e300, 0x1p-1070, 0x1p64 + 0x1p12};
    for (int round = 0; round < 40000; ++round) {
        unsigned const width = 1u << (round % 4); // every word width in turn
        unsigned const end = width == 1 ? 1 + rng() % 8 : width * 4 + 1 + rng() % (width * 4);
        Field f{};
        f.length = static_cast<unsigned char>(1 + rng() % end);
        f.offset = static_cast<unsigned char>(end - f.length);
        f.isSigned = rng() % 2 != 0;
        f.scaling = std::ldexp(mantissa(rng), int(rng() % 20) - 10);
        if (rng() % 3 == 0) {
            f.scaling = 1.0;
        } else if (rng() % 3 == 0) {
            f.scaling = kelBitsPacker::getScaling(f.isSigned ? -100.0 : 0.0, 100.0, f.length);
            f.scaling = f.scaling == 0.0 ? 0.5 : f.scaling;
        }
        double min = 0.0, max = 0.0;
        kelBitsPacker::getRanges(f.length, f.scaling, f.isSigned, min, max);
        double value = factor(rng) * (rng() % 2 != 0 ? max : std::ldexp(1.0, rng() % 90));
        if (rng() % 4 == 0) {
            value = specials[rng() % (sizeof specials / sizeof specials[0])];
        } else if (rng() % 2 == 0) { // just around a whole step
            value = std::nextafter(std::trunc(value / f.scaling) * f.scaling, value);
        }
        Bytes before(width);
        std::generate(before.begin(), before.end(), [&] { return static_cast<UInt8>(rng()); });
        Bytes expected = before;
        referenceStore(expected, f, value);
        double read = 0.0;
        ASSERT_EQ(expected, packed(before, f, value, read))
            << "offset " << +f.offset << " length " << +f.length << " scaling " << f.scaling
            << " signed " << f.isSigned << " value " << value;
        ASSERT_TRUE(sameDouble(referenceRead(expected, f), read)) << read;
    }
}

TEST(kelBitsPacker, DocumentedFieldsRangesAndRefusals) {
    struct Case {
        Field f;
        UInt64 before, after; // the word, least significant byte first in memory
        double value, read;
    } const cases[] = {
        {{0, 4, 1.0, true}, 0xF0, 0xF8, -0.0, 0.0},
        {{0, 4, 1.0, true}, 0xF0, 0xF9, -9.0, 1.0}, // the magnitude's top bit meets the sign
        {{0, 8, 0.1, true}, 0, 0x7F, -20.0, -127 * 0.1},
        {{0, 8, 0.1, false}, 0, 0x02, 0.3, 0.2},
        {{3, 10, 0.25, false}, 0, 0x0C80, 100.0, 100.0},
        {{2, 3, 1.0, false}, 0xFF, 0xE7, 1.0, 1.0},
        {{8, 40, 1.0, false}, ~UInt64(0), 0xFFFF0000001000FF, 0x1p64 + 0x1p12, 4096.0},
        {{0, 16, 1.0, true}, 0, 0, -kInf, -0.0},
        {{0, 0, 1.0, false}, 0xA5, 0xA5, 1e6, 0.0}, // fields not inside one word are refused
        {{60, 10, 1.0, false}, 0x1234, 0x1234, 1e6, 0.0},
        {{255, 255, 0.5, true}, 0x1234, 0x1234, 1e6, 0.0},
    };
    for (Case const& c : cases) {
        Bytes before, after;
        for (unsigned i = 0; i < kelBitsPacker::getByteLength(c.f.offset, c.f.length); ++i) {
            before.push_back(static_cast<unsigned char>(c.before >> 8 * i));
            after.push_back(static_cast<unsigned char>(c.after >> 8 * i));
        }
        double read = 0.0;
        EXPECT_EQ(after, packed(before, c.f, c.value, read)) << c.value;
        EXPECT_TRUE(sameDouble(c.read, read)) << c.value << " read " << read;
    }
    EXPECT_EQ(8, kelBitsPacker::getByteLength(255, 255)); // the sum doesn't wrap
    double min = 1.0, max = 0.0;
    kelBitsPacker::getRanges(64, 1.0, true, min, max);
    EXPECT_EQ(-0x1p63, min); // 2^63 - 1 rounds to 2^63 in a double
    double const scalings[][4] = {{0, 255, 8, 1.0}, {-127, 127, 8, 1.0}, {0, 100, 10, 100 / 1023.0},
                                  {-1, 2, 8, 0.0},  {1, 2, 8, 0.0},      {0, 10, 0, 0.0},
                                  {-5, 5, 1, 0.0},  {-5, 5, 0, 0.0}}; // min, max, length, scaling
    for (auto const& row : scalings) {
        EXPECT_EQ(row[3], kelBitsPacker::getScaling(row[0], row[1], UInt8(row[2])));
    }
    kelBitsPacker none(nullptr, 0, 8, 1.0, false);
    none = 5.0;
    EXPECT_EQ(0.0, double(none));
}

TEST(kelBoolPacker, OneBitInItsWord) {
    std::unique_ptr<unsigned char[]> word(new unsigned char[2]()); // the word at offset 9
    kelBoolPacker flag(word.get(), 9);
    kelIPacker& packer = flag;
    kelBoolPacker outside(word.get(), 64); // refused
    for (double const value : {2.5, 0.0, kNaN, -0.0, -1e-300}) {
        packer = value;
        outside = value;
        EXPECT_EQ(value != 0.0 ? 0x0200 : 0, word[0] | word[1] << 8) << value;
        EXPECT_EQ(value != 0.0 ? 1.0 : 0.0, double(packer) + double(outside));
    }
}
