#include <kelcore/memory/kelBitsPacker.h>

#include <kelcore/frame/kelTypes.h>

#include <cmath>

namespace KELKIT {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

// 2^exponent, exactly; 1.0 for an exponent of 0 or below.
double powerOfTwo(int exponent) {
    return exponent > 0 ? std::ldexp(1.0, exponent) : 1.0;
}

// `bits` one-bits, bits from 0 to 64.
UInt64 lowMask(unsigned bits) {
    return bits >= 64 ? ~UInt64(0) : (UInt64(1) << bits) - 1;
}

// trunc(value) modulo 2^64, a negative as its two's complement; NaN and infinities give 0. A
// plain conversion is undefined outside the range of the integer, so larger magnitudes are
// reduced first: fmod is exact, and every double of 2^63 or more is an integer.
UInt64 lowBitsOf(double value) {
    if (value > -kTwoTo63 && value < kTwoTo63) {
        return static_cast<UInt64>(static_cast<SInt64>(value));
    }
    if (!std::isfinite(value)) {
        return 0;
    }
    UInt64 const magnitude = static_cast<UInt64>(std::fmod(std::fabs(value), kTwoTo64));
    return value < 0.0 ? UInt64(0) - magnitude : magnitude;
}

// trunc(quotient) held within `bits` bits: below zero (and NaN) 0, beyond the field its
// largest magnitude.
UInt64 boundedMagnitude(double quotient, unsigned bits) {
    if (!(quotient > 0.0)) {
        return 0;
    }
    if (quotient >= std::ldexp(1.0, static_cast<int>(bits))) {
        return lowMask(bits);
    }
    return static_cast<UInt64>(quotient); // below 2^64 here
}

template <unsigned W>
UInt64 loadWord(unsigned char const* bytes) {
    UInt64 word = 0;
    for (unsigned i = 0; i < W; ++i) {
        word |= UInt64(bytes[i]) << (8 * i);
    }
    return word;
}

template <unsigned W>
void storeWord(unsigned char* bytes, UInt64 word) {
    for (unsigned i = 0; i < W; ++i) {
        bytes[i] = static_cast<unsigned char>(word >> (8 * i));
    }
}

UInt64 readWord(void const* buffer, unsigned width) {
    auto const* bytes = static_cast<unsigned char const*>(buffer);
    switch (width) {
    case 1:
        return loadWord<1>(bytes);
    case 2:
        return loadWord<2>(bytes);
    case 4:
        return loadWord<4>(bytes);
    default:
        return loadWord<8>(bytes);
    }
}

void writeWord(void* buffer, unsigned width, UInt64 word) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    switch (width) {
    case 1:
        storeWord<1>(bytes, word);
        break;
    case 2:
        storeWord<2>(bytes, word);
        break;
    case 4:
        storeWord<4>(bytes, word);
        break;
    default:
        storeWord<8>(bytes, word);
        break;
    }
}

} // namespace

kelBitsPacker::kelBitsPacker(void* buffer, unsigned char offset, unsigned char length,
                             double scaling, bool isSigned)
    : mBuffer(buffer), mOffset(offset), mLength(length), mScaling(scaling), mIsSigned(isSigned) {}

kelBitsPacker::kelBitsPacker(kelBitsPacker const& other)
    : kelIPacker(other), mBuffer(other.mBuffer), mOffset(other.mOffset), mLength(other.mLength),
      mScaling(other.mScaling), mIsSigned(other.mIsSigned) {}

kelBitsPacker& kelBitsPacker::operator=(kelBitsPacker const& other) {
    mBuffer = other.mBuffer;
    mOffset = other.mOffset;
    mLength = other.mLength;
    mScaling = other.mScaling;
    mIsSigned = other.mIsSigned;
    return *this;
}

kelBitsPacker::~kelBitsPacker() = default;

kelIPacker& kelBitsPacker::operator=(double value) {
    unsigned const offset = mOffset;
    unsigned const length = mLength;
    if (mBuffer == nullptr || length == 0 || offset + length > 64) {
        return *this;
    }
    bool const negative = 0.0 > value;
    if (mIsSigned && negative) {
        value = -value;
    }
    UInt64 integer = 0;
    if (mScaling != 1.0) {
        double min = 0.0;
        double max = 0.0;
        getRanges(mLength, mScaling, mIsSigned, min, max);
        if (value > max) {
            value = max;
        }
        if (min > value) {
            value = min;
        }
        integer = boundedMagnitude(value / mScaling, mIsSigned ? length - 1 : length);
    } else {
        integer = lowBitsOf(value);
    }
    UInt64 const mask = lowMask(length) << offset;
    UInt64 shifted = integer << offset;
    if (mIsSigned && !negative) {
        shifted |= UInt64(1) << (offset + length - 1);
    }
    unsigned const width = getByteLength(mOffset, mLength);
    UInt64 const word = readWord(mBuffer, width);
    writeWord(mBuffer, width, (word & ~mask) | (shifted & mask));
    return *this;
}

kelBitsPacker::operator double() const {
    unsigned const offset = mOffset;
    unsigned const length = mLength;
    if (mBuffer == nullptr || length == 0 || offset + length > 64) {
        return 0.0;
    }
    UInt64 raw = (readWord(mBuffer, getByteLength(mOffset, mLength)) >> offset) & lowMask(length);
    bool negative = false;
    if (mIsSigned) {
        UInt64 const sign = UInt64(1) << (length - 1);
        if ((raw & sign) != 0) {
            raw &= ~sign;
        } else {
            negative = true;
        }
    }
    double value = static_cast<double>(raw);
    if (mScaling != 1.0) {
        value *= mScaling;
    }
    if (negative) {
        value *= -1.0;
    }
    return value;
}

void kelBitsPacker::getRanges(unsigned char const& length, double const& scaling,
                              bool const& isSigned, double& min, double& max) {
    if (isSigned) {
        max = powerOfTwo(length - 1) * scaling - scaling;
        min = -max;
    } else {
        min = 0.0;
        max = powerOfTwo(length) * scaling - scaling;
    }
}

unsigned char kelBitsPacker::getByteLength(unsigned char const& offset,
                                           unsigned char const& length) {
    unsigned const end = unsigned(offset) + unsigned(length);
    if (end <= 8) {
        return 1;
    }
    if (end <= 16) {
        return 2;
    }
    return end <= 32 ? 4 : 8;
}

double kelBitsPacker::getScaling(double min, double max, unsigned char length) {
    int bits = length;
    if (min < 0.0) {
        if (-min != max) {
            return 0.0;
        }
        --bits;
        min = 0.0;
    } else if (min != 0.0) {
        return 0.0;
    }
    if (bits <= 0) {
        return 0.0;
    }
    return (max - min) / (powerOfTwo(bits) - 1.0);
}

} // namespace KELKIT
