#include <kelcore/memory/kelBitsPacker.h>

#include <cmath>

namespace KELKIT {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

// 2^exponent, exactly; 1.0 for an exponent of 0 or below.
double powerOfTwo(int exponent) {
    return exponent > 0 ? std::ldexp(1.0, exponent) : 1.0;
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
        return bits == 0 ? 0 : ~UInt64(0) >> (64 - bits);
    }
    return static_cast<UInt64>(quotient); // below 2^64 here
}

} // namespace

kelBitsPacker::kelBitsPacker(kelBitsPacker const&) = default;

kelBitsPacker& kelBitsPacker::operator=(kelBitsPacker const&) = default;

UInt64 kelBitsPacker::storedInteger(double value) const {
    if (mIsSigned && 0.0 > value) {
        value = -value; // the magnitude goes on; the sign is the sign bit's
    }
    if (mScaling == 1.0) {
        return lowBitsOf(value);
    }
    double min = 0.0;
    double max = 0.0;
    getRanges(mLength, mScaling, mIsSigned, min, max);
    if (value > max) {
        value = max;
    }
    if (min > value) {
        value = min;
    }
    return boundedMagnitude(value / mScaling, mIsSigned ? mLength - 1u : mLength);
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
