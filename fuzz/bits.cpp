// Bit access and packers over blocks of exactly the size they are given (so that a byte touched
// beyond them is a finding), under a run of operations with fuzzed offsets, lengths, scalings and
// values, each against a reference written from the documented rules:
//  - kelBitAdaptor: bit i is bit i % 8 of byte i / 8; outside the block (or on a null one) a bit
//    reads false and a write changes nothing;
//  - kelBitAccumulator: a cursor that a forward step moves one bit on and that stops on the
//    block's last bit (an empty block keeps it at 0), a backward step stops at bit 0, moveTo
//    places it anywhere; bits under a cursor outside the block read false and take no writes;
//  - kelBitsPacker: a field of the word of 1, 2, 4 or 8 bytes that its end needs, least
//    significant byte first; sign and magnitude (the sign bit set for a value that is not
//    negative); a scaled value clamped to the range, divided and cut towards zero, its magnitude
//    held in the field; with a scaling of 1.0 the low bits of the exact integer (two's
//    complement for negatives in an unsigned field, 0 for NaN and infinities); reading gives
//    magnitude times scaling, negated for a negative field; a field beyond 64 bits, of length 0
//    or on a null buffer writes nothing and reads 0.0. Only the field's bits change;
//  - kelBoolPacker: one bit, set by anything but 0.0 and -0.0.

#include "kelFuzz.h"

#include <kelcore/memory/kelBitAccumulator.h>
#include <kelcore/memory/kelBitAdaptor.h>
#include <kelcore/memory/kelBitsPacker.h>
#include <kelcore/memory/kelBoolPacker.h>

#include <cmath>
#include <limits>

using namespace KELKIT;

namespace {

typedef std::vector<std::uint8_t> Bytes;

using kelFuzz::Block;

bool sameDouble(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

double consumeValue(FuzzedDataProvider& input) {
    static double const INTERESTING[] = {0.0,
                                         -0.0,
                                         0.5,
                                         1.0,
                                         -1.0,
                                         3.3,
                                         -3.0,
                                         200.7,
                                         300.0,
                                         0.3,
                                         4503599627370496.0,    // 2^52
                                         9007199254740993.0,    // 2^53 + 1 (not exact)
                                         9223372036854775808.0, // 2^63
                                         -9223372036854775808.0,
                                         18446744073709555712.0, // 2^64 + 4096
                                         1e300,
                                         -1e300,
                                         4.9e-324,
                                         std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::quiet_NaN()};
    std::size_t const count = sizeof INTERESTING / sizeof INTERESTING[0];
    std::size_t const pick = input.ConsumeIntegralInRange<std::size_t>(0, count + 1);
    if (pick < count) {
        return INTERESTING[pick];
    }
    if (pick == count) {
        return static_cast<double>(input.ConsumeIntegralInRange<std::int64_t>(-70000, 70000)) / 4;
    }
    std::uint64_t const bits = input.ConsumeIntegral<std::uint64_t>();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// ---- Bit adaptor and accumulator ----------------------------------------------------------

bool modelBit(Bytes const& bytes, bool present, std::uint64_t index) {
    return present && index / 8 < bytes.size() && ((bytes[index / 8] >> (index % 8)) & 1) != 0;
}

void modelSet(Bytes& bytes, bool present, std::uint64_t index, bool value) {
    if (present && index / 8 < bytes.size()) {
        std::uint8_t const mask = static_cast<std::uint8_t>(1u << (index % 8));
        bytes[index / 8] =
            static_cast<std::uint8_t>(value ? bytes[index / 8] | mask : bytes[index / 8] & ~mask);
    }
}

// The cursor as a bit index: a byte position of 32 bits that wraps, and a bit position.
std::uint64_t const RING = std::uint64_t(1) << 35;

std::uint64_t stepForward(std::uint64_t index, std::uint64_t size) {
    if (size == 0) {
        return 0;
    }
    index = (index + 1) % RING;
    return index / 8 == size ? size * 8 - 1 : index;
}

// count forward steps: one at a time for a small count; for a large one, the steps pass without
// effect until the first that reaches the byte just past the block, which stops the cursor.
std::uint64_t forward(std::uint64_t index, std::uint64_t size, std::uint32_t count) {
    if (size == 0) {
        return count == 0 ? index : 0;
    }
    if (count <= 4096) {
        for (std::uint32_t i = 0; i < count; ++i) {
            index = stepForward(index, size);
        }
        return index;
    }
    std::uint64_t const next = index < size * 8       ? size * 8
                               : index < size * 8 + 7 ? index + 1
                                                      : size * 8 + RING;
    return index + count >= next ? size * 8 - 1 : index + count;
}

void runBits(FuzzedDataProvider& input) {
    Bytes model = input.ConsumeBytes<std::uint8_t>(input.ConsumeIntegralInRange(0, 24));
    Block block(model);
    bool present = block.data != nullptr && input.ConsumeIntegralInRange(0, 7) != 0;
    UInt32 const size = static_cast<UInt32>(block.size);
    kelBitAccumulator bits(present ? block.data.get() : nullptr, size);
    std::uint64_t cursor = 0;
    auto const index = [&]() -> UInt32 {
        return input.ConsumeBool() ? input.ConsumeIntegralInRange<UInt32>(0, size * 8 + 16)
                                   : input.ConsumeIntegral<UInt32>();
    };
    for (int step = 0; step < 48 && input.remaining_bytes() > 0; ++step) {
        switch (input.ConsumeIntegralInRange(0, 11)) {
        case 0: {
            UInt32 const i = index();
            KEL_FUZZ_CHECK(bits.getBit(i) == modelBit(model, present, i));
            KEL_FUZZ_CHECK(kelBitAdaptor::getBit(i, bits.getBuffer(), size) ==
                           modelBit(model, present, i));
            UInt32 byte = 7;
            unsigned char mask = 0;
            kelBitAdaptor::getOffsets(i, byte, mask);
            KEL_FUZZ_CHECK(byte == i / 8 && mask == 1u << (i % 8));
            break;
        }
        case 1: {
            UInt32 const i = index();
            bool const value = input.ConsumeBool();
            if (input.ConsumeBool()) {
                bits.setBit(i, value);
            } else {
                kelBitAdaptor::setBit(i, present ? block.data.get() : nullptr, size, value);
            }
            modelSet(model, present, i, value);
            break;
        }
        case 2: {
            // A copy views the same block and takes the cursor along.
            kelBitAccumulator const copy(bits);
            KEL_FUZZ_CHECK(copy.getBit() == bits.getBit() && copy.getBuffer() == bits.getBuffer());
            kelBitAdaptor const view(bits);
            KEL_FUZZ_CHECK(view.getBufferSize() == size);
            bits.reset();
            cursor = 0;
            break;
        }
        case 3:
            KEL_FUZZ_CHECK(bits.getBit() == modelBit(model, present, cursor));
            break;
        case 4: {
            bool const value = input.ConsumeBool();
            if (input.ConsumeBool()) {
                bits.setBit(value);
            } else {
                bits = value;
            }
            modelSet(model, present, cursor, value);
            break;
        }
        case 5: {
            bool const value = input.ConsumeBool();
            bits.insertBit(value);
            modelSet(model, present, cursor, value);
            cursor = stepForward(cursor, size);
            break;
        }
        case 6:
            ++bits;
            cursor = stepForward(cursor, size);
            break;
        case 7:
            --bits;
            cursor = cursor > 0 ? cursor - 1 : 0;
            break;
        case 8: {
            UInt32 const count = input.ConsumeBool() ? input.ConsumeIntegralInRange(0u, 5000u)
                                                     : input.ConsumeIntegral<UInt32>();
            bits.moveForward(count);
            cursor = forward(cursor, size, count);
            break;
        }
        case 9: {
            UInt32 const count = input.ConsumeIntegral<UInt32>();
            bits.moveBackward(count);
            cursor = cursor > count ? cursor - count : 0;
            break;
        }
        case 10: {
            UInt32 const i = index();
            bits.moveTo(i);
            cursor = i;
            break;
        }
        default:
            // setBuffer keeps the cursor; a null block reads nothing.
            present = block.data != nullptr && !present;
            bits.setBuffer(present ? block.data.get() : nullptr, size);
            break;
        }
        KEL_FUZZ_CHECK(block.bytes() == model);
        // Where the cursor stands: a copy takes it along, and on a block of zeros of the same
        // size sets the one bit under it, if it is inside.
        Block zeros(Bytes(block.size, 0));
        kelBitAccumulator probe(bits);
        probe.setBuffer(zeros.data.get(), size);
        probe.setBit(true);
        Bytes expected(block.size, 0);
        modelSet(expected, true, cursor, true);
        KEL_FUZZ_CHECK(zeros.bytes() == expected);
    }
}

// ---- Packers ------------------------------------------------------------------------------

unsigned wordWidth(unsigned offset, unsigned length) {
    unsigned const end = offset + length;
    return end <= 8 ? 1 : end <= 16 ? 2 : end <= 32 ? 4 : 8;
}

double power(int exponent) {
    double p = 1.0;
    for (int i = 0; i < exponent; ++i) {
        p *= 2.0;
    }
    return p;
}

void modelRanges(unsigned length, double scaling, bool isSigned, double& min, double& max) {
    if (isSigned) {
        max = power(static_cast<int>(length) - 1) * scaling - scaling;
        min = -max;
    } else {
        min = 0.0;
        max = power(static_cast<int>(length)) * scaling - scaling;
    }
}

double modelScaling(double min, double max, int length) {
    if (min < 0.0) {
        if (-min != max) {
            return 0.0;
        }
        --length;
        min = 0.0;
    } else if (min != 0.0) {
        return 0.0;
    }
    return length <= 0 ? 0.0 : (max - min) / (power(length) - 1.0);
}

// The low 64 bits of trunc(value), a negative as its two's complement; 0 for NaN and infinity.
std::uint64_t lowBits(double value) {
    if (!std::isfinite(value)) {
        return 0;
    }
    double const magnitude = std::trunc(std::fabs(value));
    std::uint64_t bits;
    if (magnitude < 9223372036854775808.0) {
        bits = static_cast<std::uint64_t>(magnitude);
    } else {
        int exponent;
        double const fraction = std::frexp(magnitude, &exponent); // magnitude = fraction * 2^e
        auto const mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
        bits = exponent - 53 >= 64 ? 0 : mantissa << (exponent - 53);
    }
    return value < 0.0 ? 0 - bits : bits;
}

struct Field {
    unsigned offset;
    unsigned length;
    double scaling;
    bool isSigned;
    bool usable() const { return length != 0 && offset + length <= 64; }
    std::uint64_t mask() const { return (~std::uint64_t(0) >> (64 - length)) << offset; }
};

std::uint64_t stored(Field const& f, std::uint64_t word, double value) {
    bool const negative = 0.0 > value;
    if (f.isSigned && negative) {
        value = -value;
    }
    std::uint64_t integer;
    if (f.scaling == 1.0) {
        integer = lowBits(value);
    } else {
        double min, max;
        modelRanges(f.length, f.scaling, f.isSigned, min, max);
        value = value > max ? max : value;
        value = min > value ? min : value;
        double const quotient = value / f.scaling;
        unsigned const bits = f.isSigned ? f.length - 1 : f.length;
        if (!(quotient > 0.0)) {
            integer = 0;
        } else if (quotient >= std::ldexp(1.0, static_cast<int>(bits))) {
            integer = bits == 0 ? 0 : ~std::uint64_t(0) >> (64 - bits);
        } else {
            integer = static_cast<std::uint64_t>(quotient);
        }
    }
    std::uint64_t shifted = integer << f.offset;
    if (f.isSigned && !negative) {
        shifted |= std::uint64_t(1) << (f.offset + f.length - 1);
    }
    return (word & ~f.mask()) | (shifted & f.mask());
}

double readBack(Field const& f, std::uint64_t word) {
    std::uint64_t raw = (word & f.mask()) >> f.offset;
    bool negative = false;
    if (f.isSigned) {
        std::uint64_t const sign = std::uint64_t(1) << (f.length - 1);
        negative = (raw & sign) == 0;
        raw &= ~sign;
    }
    double value = static_cast<double>(raw);
    if (f.scaling != 1.0) {
        value *= f.scaling;
    }
    return negative ? value * -1.0 : value;
}

double consumeScaling(FuzzedDataProvider& input) {
    static double const SCALINGS[] = {1.0,          0.5,  0.25, 0.1,    3.0,
                                      100.0 / 1023, -1.0, 0.0,  1e-300, 1e300};
    std::size_t const count = sizeof SCALINGS / sizeof SCALINGS[0];
    std::size_t const pick = input.ConsumeIntegralInRange<std::size_t>(0, count);
    return pick < count ? SCALINGS[pick] : consumeValue(input);
}

void runPackers(FuzzedDataProvider& input) {
    for (int step = 0; step < 24 && input.remaining_bytes() > 0; ++step) {
        if (input.ConsumeIntegralInRange(0, 4) == 0) {
            // The bool packer.
            auto const offset = input.ConsumeIntegral<unsigned char>();
            bool const usable = offset < 64;
            unsigned const width = usable ? wordWidth(offset, 1) : 8;
            Bytes const start = input.ConsumeBytes<std::uint8_t>(width);
            Bytes model(width, 0x5A);
            std::copy(start.begin(), start.end(), model.begin());
            Block block(model);
            kelBoolPacker packer(block.data.get(), offset);
            kelIPacker& as = packer;
            double const value = consumeValue(input);
            as = value;
            if (usable && value != 0.0) {
                model[offset / 8] =
                    static_cast<std::uint8_t>(model[offset / 8] | 1u << (offset % 8));
            } else if (usable) {
                model[offset / 8] =
                    static_cast<std::uint8_t>(model[offset / 8] & ~(1u << (offset % 8)));
            }
            KEL_FUZZ_CHECK(block.bytes() == model);
            double const read = as;
            KEL_FUZZ_CHECK(
                sameDouble(read, usable && ((model[offset / 8] >> (offset % 8)) & 1) ? 1.0 : 0.0));
            kelBoolPacker none(nullptr, offset);
            none = 1.0;
            KEL_FUZZ_CHECK(sameDouble(double(none), 0.0));
            continue;
        }
        Field f;
        f.offset = input.ConsumeBool() ? input.ConsumeIntegralInRange(0u, 63u)
                                       : input.ConsumeIntegral<unsigned char>();
        f.length = input.ConsumeBool()
                       ? input.ConsumeIntegralInRange(1u, 64u - std::min(f.offset, 63u))
                       : input.ConsumeIntegral<unsigned char>();
        f.scaling = consumeScaling(input);
        f.isSigned = input.ConsumeBool();
        auto const offset = static_cast<unsigned char>(f.offset);
        auto const length = static_cast<unsigned char>(f.length);
        unsigned const width = wordWidth(f.offset, f.length);
        KEL_FUZZ_CHECK(kelBitsPacker::getByteLength(offset, length) == width);

        double min, max, modelMin, modelMax;
        kelBitsPacker::getRanges(length, f.scaling, f.isSigned, min, max);
        modelRanges(f.length, f.scaling, f.isSigned, modelMin, modelMax);
        KEL_FUZZ_CHECK(sameDouble(min, modelMin) && sameDouble(max, modelMax));
        double const low = consumeValue(input), high = consumeValue(input);
        KEL_FUZZ_CHECK(sameDouble(kelBitsPacker::getScaling(low, high, length),
                                  modelScaling(low, high, f.length)));
        KEL_FUZZ_CHECK(sameDouble(kelBitsPacker::getScaling(-high, high, length),
                                  modelScaling(-high, high, f.length)));

        Bytes const start = input.ConsumeBytes<std::uint8_t>(width);
        Bytes model(width, 0xA5);
        std::copy(start.begin(), start.end(), model.begin());
        Block block(model);
        kelBitsPacker packer(block.data.get(), offset, length, f.scaling, f.isSigned);
        kelBitsPacker const copy(packer); // names the same field
        kelIPacker& as = packer;
        double const value = consumeValue(input);
        as = value;
        if (f.usable()) {
            std::uint64_t const word = stored(f, kelFuzz::littleEndian(model.data(), width), value);
            for (unsigned i = 0; i < width; ++i) {
                model[i] = static_cast<std::uint8_t>(word >> (8 * i));
            }
        }
        KEL_FUZZ_CHECK(block.bytes() == model);
        double const expected =
            f.usable() ? readBack(f, kelFuzz::littleEndian(model.data(), width)) : 0.0;
        KEL_FUZZ_CHECK(sameDouble(double(copy), expected));
        KEL_FUZZ_CHECK(sameDouble(double(as), expected));
        kelBitsPacker none(nullptr, offset, length, f.scaling, f.isSigned);
        none = value;
        KEL_FUZZ_CHECK(sameDouble(double(none), 0.0));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        runBits(input);
    } else {
        runPackers(input);
    }
    return 0;
}
