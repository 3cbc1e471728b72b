// kelVariant::deserializeFrom through every serializer, a run of values into one variant. The
// model: a format byte; for the numeric formats a 64-bit cell, which must read as the setter of
// that format given the cell cut to its width; for String a counted text; for Time the raw
// seconds; a larger number reads nothing more and leaves UInt8 0. A refused read leaves the
// variant as it was, and what was read travels back intact.

#include "kelFuzz.h"

#include <kelcore/variant/kelVariant.h>

using namespace KELKIT;
using kelFuzz::Ahead;
using kelFuzz::Kind;

namespace {

typedef kelVariantFormat F;

template <class T>
T bitsAs(std::uint64_t bits) {
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// What a setter makes of a numeric cell.
kelVariant numeric(int format, std::uint64_t cell) {
    kelVariant v;
    switch (format) {
    case F::Bool:
        v.setBool((cell & 0xFF) != 0);
        break;
    case F::UInt8:
        v.setUInt8(static_cast<UInt8>(cell));
        break;
    case F::SInt8:
        v.setSInt8(static_cast<SInt8>(cell));
        break;
    case F::UInt16:
        v.setUInt16(static_cast<UInt16>(cell));
        break;
    case F::SInt16:
        v.setSInt16(static_cast<SInt16>(cell));
        break;
    case F::UInt32:
        v.setUInt32(static_cast<UInt32>(cell));
        break;
    case F::SInt32:
        v.setSInt32(static_cast<SInt32>(cell));
        break;
    case F::UInt64:
        v.setUInt64(cell);
        break;
    case F::SInt64:
        v.setSInt64(static_cast<SInt64>(cell));
        break;
    case F::Float32:
        v.setFloat32(bitsAs<float>(cell & 0xFFFFFFFFu));
        break;
    default:
        v.setFloat64(bitsAs<double>(cell));
        break;
    }
    return v;
}

bool same(kelVariant const& a, kelVariant const& b) {
    // Same format, and by the cell's bits, so that a NaN equals itself.
    return a.getFormat().getValue() == b.getFormat().getValue() && a == b;
}

// Whether a whole value lies ahead: a format byte and its cell or counted text.
bool complete(Ahead ahead) {
    if (ahead.size == 0) {
        return false;
    }
    int const format = ahead.bytes[0];
    return format <= 10 || format == 12 ? ahead.size >= 9
           : format == 11               ? kelFuzz::Counted(ahead.bytes + 1, ahead.size - 1).complete
                                        : true;
}

void check(kelVariant const& value, kelVariant const&, Kind, Ahead ahead, bool whole,
           UInt32 consumed) {
    int const f = value.getFormat().getValue();
    if (whole) {
        int const format = ahead.bytes[0];
        std::uint8_t const* const cell = ahead.bytes + 1;
        if (format <= 10) {
            KEL_FUZZ_CHECK(consumed == 9);
            KEL_FUZZ_CHECK(same(value, numeric(format, kelFuzz::littleEndian(cell, 8))));
        } else if (format == 11) {
            kelFuzz::Counted const text(cell, ahead.size - 1);
            KEL_FUZZ_CHECK(consumed == 5 + text.count);
            std::string bytes(text.payload.begin(), text.payload.end());
            KEL_FUZZ_CHECK(f == F::String);
            KEL_FUZZ_CHECK(bytes.substr(0, std::strlen(bytes.c_str())) ==
                           value.getString().c_str());
        } else if (format == 12) {
            KEL_FUZZ_CHECK(consumed == 9);
            KEL_FUZZ_CHECK(f == F::Time);
            KEL_FUZZ_CHECK(value.getTime().getRawTime() == kelFuzz::littleEndian(cell, 8));
        } else {
            KEL_FUZZ_CHECK(consumed == 1);
            KEL_FUZZ_CHECK(f == F::UInt8 && value.getUInt64() == 0);
        }
    }
    std::size_t const wireSize = f == F::String ? 5 + value.getString().size() : 9;
    std::vector<std::uint8_t> const wire =
        kelFuzz::writesBack(value, kelVariant(UInt32(1)), wireSize, same);
    KEL_FUZZ_CHECK(wire[0] == f);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    kelFuzz::readRuns(data, size, kelVariant("before"), complete, same, check);
    return 0;
}
