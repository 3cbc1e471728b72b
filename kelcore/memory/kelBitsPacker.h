#ifndef KELCORE_MEMORY_KELBITSPACKER_H
#define KELCORE_MEMORY_KELBITSPACKER_H

#include <kelcore/memory/kelIPacker.h>

namespace KELKIT {

// A number in a bit field of a caller's memory: `length` bits (1 to 64, a sign bit included)
// starting `offset` bits above the least significant bit of the word at `buffer`. The word is
// getByteLength(offset, length) bytes wide, least significant byte first, needs no alignment,
// and is read and written whole; only the field's bits change. The packer owns no memory and
// holds no value: copies name the same field.
//
// Storing (operator=):
// - A signed field holds sign and magnitude: its top bit is 1 for a value that is not negative
//   (zero included, and -0.0) and 0 for a negative one. No two's complement.
// - With a scaling other than exactly 1.0 the value is clamped to getRanges, divided by the
//   scaling and cut towards zero: v reads back as trunc(v / scaling) * scaling. The magnitude
//   always stays inside the field: a quotient below zero (a negative scaling) stores 0, one
//   that rounding pushes past the field (fields wider than 52 bits) stores the largest.
// - With a scaling of exactly 1.0 nothing is clamped: the value is cut towards zero to an
//   integer, negatives in an unsigned field taken as two's complement, and the field keeps
//   the low bits. This holds for every finite double, also beyond 2^63: the low bits are
//   those of the exact integer (2^64 + 4096 stores as 4096 would).
// - A NaN stores magnitude 0 (in a signed field with the sign of a non-negative value). With
//   a scaling of 1.0 an infinity stores magnitude 0 too; a scaled field clamps it.
//
// Reading (operator double) gives the magnitude times the scaling, negated for a negative
// field, so that a negative field of magnitude 0 reads as -0.0.
//
// A field that is not inside one 64-bit word (length 0, offset + length above 64), or a null
// buffer, is refused: storing writes nothing and reading gives 0.0. With a scaling of 0.0,
// which getScaling returns for a range it can't serve, every value stores magnitude 0.
//
// Construction, stores and reads are inline: packers are made and used one per field in tight
// loops over large buffers, where a call into the library for each would cost more than the
// work. What is rare (negative, huge, non-finite or scaled values) goes to the library.
class KELCORE_API kelBitsPacker : public virtual kelIPacker {
public:
    kelBitsPacker(void* buffer, unsigned char offset, unsigned char length, double scaling,
                  bool isSigned)
        : mBuffer(buffer), mOffset(offset), mLength(length), mScaling(scaling),
          mIsSigned(isSigned) {}
    kelBitsPacker(kelBitsPacker const& other);
    kelBitsPacker& operator=(kelBitsPacker const& other);
    ~kelBitsPacker() override {}

    kelIPacker& operator=(double value) override;
    operator double() const override;

    // Unsigned: 0 to 2^length * scaling - scaling. Signed: symmetric, with max
    // 2^(length - 1) * scaling - scaling; a signed length of 0 gives 0 to 0.
    static void getRanges(unsigned char const& length, double const& scaling, bool const& isSigned,
                          double& min, double& max);
    // The word width in bytes for offset + length: up to 8 bits 1, up to 16 bits 2, up to 32
    // bits 4, else 8.
    static unsigned char getByteLength(unsigned char const& offset, unsigned char const& length) {
        return wordWidth(offset, length);
    }
    // The scaling that lets `length` bits span 0 to max, or -max to max with a sign bit; 0.0
    // for any other range and for a field with no magnitude bits.
    static double getScaling(double min, double max, unsigned char length);

private:
    static unsigned char wordWidth(unsigned offset, unsigned length) {
        unsigned const end = offset + length;
        return end <= 8 ? 1 : end <= 16 ? 2 : end <= 32 ? 4 : 8;
    }
    bool isUsable() const { return mBuffer != nullptr && mLength != 0 && mOffset + mLength <= 64; }
    // The integer that the store puts into the field for a value, sign aside: clamped,
    // scaled and cut as documented above.
    UInt64 storedInteger(double value) const;
    // Bytes least significant first, whatever the host's order; compilers make single loads and
    // stores of these.
    static UInt64 readWord(void const* buffer, unsigned width) {
        auto const* b = static_cast<unsigned char const*>(buffer);
        switch (width) {
        case 1:
            return b[0];
        case 2:
            return UInt64(b[0]) | UInt64(b[1]) << 8;
        case 4:
            return UInt64(b[0]) | UInt64(b[1]) << 8 | UInt64(b[2]) << 16 | UInt64(b[3]) << 24;
        default:
            return UInt64(b[0]) | UInt64(b[1]) << 8 | UInt64(b[2]) << 16 | UInt64(b[3]) << 24 |
                   UInt64(b[4]) << 32 | UInt64(b[5]) << 40 | UInt64(b[6]) << 48 |
                   UInt64(b[7]) << 56;
        }
    }

    static void writeWord(void* buffer, unsigned width, UInt64 word) {
        auto* b = static_cast<unsigned char*>(buffer);
        switch (width) {
        case 8:
            b[7] = static_cast<unsigned char>(word >> 56);
            b[6] = static_cast<unsigned char>(word >> 48);
            b[5] = static_cast<unsigned char>(word >> 40);
            b[4] = static_cast<unsigned char>(word >> 32);
            // fall through
        case 4:
            b[3] = static_cast<unsigned char>(word >> 24);
            b[2] = static_cast<unsigned char>(word >> 16);
            // fall through
        case 2:
            b[1] = static_cast<unsigned char>(word >> 8);
            // fall through
        default:
            b[0] = static_cast<unsigned char>(word);
        }
    }

    void* mBuffer;
    unsigned char mOffset;
    unsigned char mLength;
    double mScaling;
    bool mIsSigned;
};

inline kelIPacker& kelBitsPacker::operator=(double value) {
    if (!isUsable()) {
        return *this;
    }
    unsigned const offset = mOffset;
    unsigned const length = mLength;
    bool const negative = 0.0 > value;
    // The common case inline: a whole-step field and a value that converts as it is.
    UInt64 const integer = mScaling == 1.0 && value >= 0.0 && value < 9223372036854775808.0
                               ? static_cast<UInt64>(static_cast<SInt64>(value))
                               : storedInteger(value);
    UInt64 const mask = (~UInt64(0) >> (64 - length)) << offset;
    UInt64 shifted = integer << offset;
    if (mIsSigned && !negative) {
        shifted |= UInt64(1) << (offset + length - 1);
    }
    unsigned const width = wordWidth(offset, length);
    writeWord(mBuffer, width, (readWord(mBuffer, width) & ~mask) | (shifted & mask));
    return *this;
}

inline kelBitsPacker::operator double() const {
    if (!isUsable()) {
        return 0.0;
    }
    unsigned const offset = mOffset;
    unsigned const length = mLength;
    UInt64 raw =
        (readWord(mBuffer, wordWidth(offset, length)) >> offset) & (~UInt64(0) >> (64 - length));
    bool negative = false;
    if (mIsSigned) {
        UInt64 const sign = UInt64(1) << (length - 1);
        negative = (raw & sign) == 0;
        raw &= ~sign;
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

} // namespace KELKIT

#endif
