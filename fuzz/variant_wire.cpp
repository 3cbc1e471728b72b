// kelVariant::deserializeFrom through every serializer, a run of values into one variant. The
// model: a format byte; for the numeric formats a 64-bit cell, which must read as the setter of
// that format given the cell cut to its width; for String a counted text; for Time the raw
// seconds; a larger number reads nothing more and leaves UInt8 0. A refused read leaves the
// variant as it was, and what was read travels back intact.

#include "kelFuzz.h"

#include <kelcore/variant/kelVariant.h>

#include <algorithm>
#include <cstring>

using namespace KELKIT;
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

void readRun(kelISerializer& s, Kind kind, std::uint8_t const* data, UInt32 size) {
    kelVariant value("before");
    for (int round = 0; round < 16; ++round) {
        UInt32 const at = kelFuzz::Serializers::consumed(s, size);
        std::size_t const available = at < size ? size - at : 0;
        std::uint8_t const* const here = data + std::min(at, size);
        int const format = available > 0 ? here[0] : -1;
        kelFuzz::Counted const text(here + 1, available > 0 ? available - 1 : 0);
        bool const complete = format < 0     ? false
                              : format <= 10 ? available >= 9
                              : format == 11 ? text.complete
                              : format == 12 ? available >= 9
                                             : true;
        kelVariant const old(value);
        bool threw;
        {
            kelFuzz::HeapCount heap;
            threw = kelFuzz::throws([&] { value.deserializeFrom(s); });
            KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), size));
        }
        UInt32 const after = kelFuzz::Serializers::consumed(s, size);
        bool const memory = kind == Kind::Binary || kind == Kind::Memory;
        KEL_FUZZ_CHECK(threw == (memory && !complete));
        if (threw || after == at) {
            KEL_FUZZ_CHECK(value.getFormat().getValue() == old.getFormat().getValue());
            KEL_FUZZ_CHECK(value == old); // same format: by the cell's bits, a NaN too
            return;
        }
        if (complete) {
            if (format <= 10) {
                KEL_FUZZ_CHECK(after == at + 9);
                kelVariant const expected = numeric(format, kelFuzz::littleEndian(here + 1, 8));
                KEL_FUZZ_CHECK(value.getFormat().getValue() == format);
                KEL_FUZZ_CHECK(value == expected);
            } else if (format == 11) {
                KEL_FUZZ_CHECK(after == at + 5 + text.count);
                std::string bytes(text.payload.begin(), text.payload.end());
                KEL_FUZZ_CHECK(value.getFormat().getValue() == F::String);
                KEL_FUZZ_CHECK(bytes.substr(0, std::strlen(bytes.c_str())) ==
                               value.getString().c_str());
            } else if (format == 12) {
                KEL_FUZZ_CHECK(after == at + 9);
                KEL_FUZZ_CHECK(value.getFormat().getValue() == F::Time);
                KEL_FUZZ_CHECK(value.getTime().getRawTime() == kelFuzz::littleEndian(here + 1, 8));
            } else {
                KEL_FUZZ_CHECK(after == at + 1);
                KEL_FUZZ_CHECK(value.getFormat().getValue() == F::UInt8 && value.getUInt64() == 0);
            }
        }
        kelBinarySerializer out;
        value.serializeTo(out);
        int const f = value.getFormat().getValue();
        KEL_FUZZ_CHECK(out.getSize() == (f == F::String ? 5 + value.getString().size() : 9));
        KEL_FUZZ_CHECK(out.getBufferC()[0] == f);
        kelVariant back(UInt32(1));
        back.deserializeFrom(out);
        KEL_FUZZ_CHECK(back.getFormat().getValue() == f);
        KEL_FUZZ_CHECK(back == value);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    kelFuzz::Serializers serializers(data, size);
    serializers.forEach(
        [&](kelISerializer& s, Kind kind) { readRun(s, kind, data, static_cast<UInt32>(size)); });
    return 0;
}
