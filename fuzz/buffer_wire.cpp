// kelMemoryBuffer::deserializeFrom through every serializer, a run of buffers into one object,
// against an independent reading of the bytes (as for the strings, without the cut at a 0 byte),
// and the exact-width reads and toString of what was read against their own models.

#include "kelFuzz.h"

#include <kelcore/memory/kelMemoryBuffer.h>

using namespace KELKIT;
using kelFuzz::Ahead;
using kelFuzz::Kind;

namespace {

std::vector<std::uint8_t> bytesOf(kelMemoryBuffer const& buffer) {
    return std::vector<std::uint8_t>(buffer.getBuffer(), buffer.getBuffer() + buffer.getSize());
}

bool same(kelMemoryBuffer const& a, kelMemoryBuffer const& b) {
    return bytesOf(a) == bytesOf(b);
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

void check(kelMemoryBuffer const& value, kelMemoryBuffer const& before, Kind kind, Ahead ahead,
           bool complete, UInt32 consumed) {
    kelFuzz::Counted const model(ahead.bytes, ahead.size);
    std::vector<std::uint8_t> const got = bytesOf(value);
    if (complete) {
        KEL_FUZZ_CHECK(consumed == 4 + model.count);
        KEL_FUZZ_CHECK(got == model.payload);
    } else if (kind == Kind::File) {
        // The file ends inside the payload: its bytes come first, or nothing changes.
        KEL_FUZZ_CHECK(got == bytesOf(before) ||
                       std::equal(model.payload.begin(), model.payload.end(), got.begin(),
                                  got.begin() + std::min(got.size(), model.payload.size())));
    }
    checkReads(value);
    std::vector<std::uint8_t> const wire =
        kelFuzz::writesBack(value, kelMemoryBuffer(1), 4 + got.size(), same);
    kelFuzz::Counted const back(wire.data(), wire.size());
    KEL_FUZZ_CHECK(back.complete && back.payload == got);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    kelMemoryBuffer initial(3);
    initial.set(reinterpret_cast<UInt8 const*>("old"));
    kelFuzz::readRuns(
        data, size, initial,
        [](Ahead ahead) { return kelFuzz::Counted(ahead.bytes, ahead.size).complete; }, same,
        check);
    return 0;
}
