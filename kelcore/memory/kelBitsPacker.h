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
//   those of the exact integer (2^64 + 5 stores as 5 would).
// - A NaN stores magnitude 0 (in a signed field with the sign of a non-negative value). With
//   a scaling of 1.0 an infinity stores magnitude 0 too; a scaled field clamps it.
//
// Reading (operator double) gives the magnitude times the scaling, negated for a negative
// field, so that a negative field of magnitude 0 reads as -0.0.
//
// A field that is not inside one 64-bit word (length 0, offset + length above 64), or a null
// buffer, is refused: storing writes nothing and reading gives 0.0. With a scaling of 0.0,
// which getScaling returns for a range it can't serve, every value stores magnitude 0.
class KELCORE_API kelBitsPacker : public virtual kelIPacker {
public:
    kelBitsPacker(void* buffer, unsigned char offset, unsigned char length, double scaling,
                  bool isSigned);
    kelBitsPacker(kelBitsPacker const& other);
    kelBitsPacker& operator=(kelBitsPacker const& other);
    ~kelBitsPacker() override;

    kelIPacker& operator=(double value) override;
    operator double() const override;

    // Unsigned: 0 to 2^length * scaling - scaling. Signed: symmetric, with max
    // 2^(length - 1) * scaling - scaling; a signed length of 0 gives 0 to 0.
    static void getRanges(unsigned char const& length, double const& scaling, bool const& isSigned,
                          double& min, double& max);
    // The word width in bytes for offset + length: up to 8 bits 1, up to 16 bits 2, up to 32
    // bits 4, else 8.
    static unsigned char getByteLength(unsigned char const& offset, unsigned char const& length);
    // The scaling that lets `length` bits span 0 to max, or -max to max with a sign bit; 0.0
    // for any other range and for a field with no magnitude bits.
    static double getScaling(double min, double max, unsigned char length);

private:
    void* mBuffer;
    unsigned char mOffset;
    unsigned char mLength;
    double mScaling;
    bool mIsSigned;
};

} // namespace KELKIT

#endif
