// kelMemoryBuffer::deserializeFrom through every serializer, a run of buffers into one object,
// against an independent reading of the bytes (as for the strings, without the cut at a 0 byte),
// and the exact-width reads and toString of what was read against their own models.

#include "kelFuzz.h"

#include <kelcore/memory/kelMemoryBuffer.h>

#include <algorithm>
#include <cstring>

using namespace KELKIT;
using kelFuzz::Kind;

namespace {

std::vector<std::uint8_t> bytesOf(kelMemoryBuffer const& buffer) {
    return std::vector<std::uint8_t>(buffer.getBuffer(), buffer.getBuffer() + buffer.getSize());
}

// The exact-width reads: the bytes least significant first when the size is the width, else 0.
void checkReads(kelMemoryBuffer const& buffer) {
    std::vector<std::uint8_t> const bytes = bytesOf(buffer);
    auto const exact = [&](std::size_t width) {
        return bytes.size() == width ? kelFuzz::littleEndian(bytes.data(), width) : 0;
    };
    KEL_FUZZ_CHECK(buffer.toUInt8() == exact(1));
    KEL_FUZZ_CHECK(static_cast<std::uint8_t>(buffer.toSInt8()) == exact(1));
    KEL_FUZZ_CHECK(buffer.toUInt16() == exact(2));
    KEL_FUZZ_CHECK(static_cast<std::uint16_t>(buffer.toSInt16()) == exact(2));
    KEL_FUZZ_CHECK(buffer.toUInt32() == exact(4));
    KEL_FUZZ_CHECK(static_cast<std::uint32_t>(buffer.toSInt32()) == exact(4));
    KEL_FUZZ_CHECK(buffer.toUInt64() == exact(8));
    KEL_FUZZ_CHECK(static_cast<std::uint64_t>(buffer.toSInt64()) == exact(8));
    float const f = buffer.toFloat32();
    double const d = buffer.toFloat64();
    std::uint32_t fBits;
    std::uint64_t dBits;
    std::memcpy(&fBits, &f, 4);
    std::memcpy(&dBits, &d, 8);
    KEL_FUZZ_CHECK(fBits == exact(4));
    KEL_FUZZ_CHECK(dBits == exact(8));
    std::string const text(bytes.begin(), bytes.end());
    KEL_FUZZ_CHECK(text.substr(0, std::strlen(text.c_str())) == buffer.toString().c_str());
}

void readRun(kelISerializer& s, Kind kind, std::uint8_t const* data, UInt32 size) {
    kelMemoryBuffer value(3);
    value.set(reinterpret_cast<UInt8 const*>("old"));
    for (int round = 0; round < 16; ++round) {
        UInt32 const at = kelFuzz::Serializers::consumed(s, size);
        kelFuzz::Counted const model(data + std::min(at, size), at < size ? size - at : 0);
        std::vector<std::uint8_t> const old = bytesOf(value);
        bool threw;
        {
            kelFuzz::HeapCount heap;
            threw = kelFuzz::throws([&] { value.deserializeFrom(s); });
            KEL_FUZZ_CHECK(kelFuzz::withinBudget(heap.allocated(), size));
        }
        UInt32 const after = kelFuzz::Serializers::consumed(s, size);
        bool const memory = kind == Kind::Binary || kind == Kind::Memory;
        KEL_FUZZ_CHECK(threw == (memory && !model.complete));
        if (threw || after == at) {
            KEL_FUZZ_CHECK(bytesOf(value) == old);
            return;
        }
        if (model.complete) {
            KEL_FUZZ_CHECK(after == at + 4 + model.count);
            KEL_FUZZ_CHECK(bytesOf(value) == model.payload);
        } else if (kind == Kind::File) {
            // The file ends inside the payload: its bytes come first, or nothing changes.
            std::vector<std::uint8_t> const got = bytesOf(value);
            KEL_FUZZ_CHECK(got == old ||
                           std::equal(model.payload.begin(), model.payload.end(), got.begin(),
                                      got.begin() + std::min(got.size(), model.payload.size())));
        }
        checkReads(value);
        kelBinarySerializer out;
        value.serializeTo(out);
        KEL_FUZZ_CHECK(out.getSize() == 4 + value.getSize());
        KEL_FUZZ_CHECK(kelFuzz::littleEndian(out.getBufferC(), 4) == value.getSize());
        kelMemoryBuffer back(1);
        back.deserializeFrom(out);
        KEL_FUZZ_CHECK(bytesOf(back) == bytesOf(value));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    kelFuzz::Serializers serializers(data, size);
    serializers.forEach(
        [&](kelISerializer& s, Kind kind) { readRun(s, kind, data, static_cast<UInt32>(size)); });
    return 0;
}
