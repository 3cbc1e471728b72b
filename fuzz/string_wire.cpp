// kelString::deserializeFrom through every serializer: a run of texts read into one string until
// a read is refused. Against an independent reading of the bytes: a complete text reads exactly,
// cut at its first 0 byte; a stream that ends too soon is refused (by the memory serializers'
// exception) or, where a serializer cannot throw, gives at most the bytes present. A refused read
// leaves the string as it was, a read costs no more memory than the bytes behind it, and what was
// read writes and reads back the same.

#include "kelFuzz.h"

#include <kelcore/strings/kelString.h>

#include <algorithm>
#include <cstring>

using namespace KELKIT;
using kelFuzz::Kind;

namespace {

std::string cutAtZero(std::vector<std::uint8_t> const& bytes) {
    std::string text(bytes.begin(), bytes.end());
    return text.substr(0, std::strlen(text.c_str()));
}

void readRun(kelISerializer& s, Kind kind, std::uint8_t const* data, UInt32 size) {
    kelString value("before");
    for (int round = 0; round < 16; ++round) {
        UInt32 const at = kelFuzz::Serializers::consumed(s, size);
        // A buffered serializer moves on by what was asked, also beyond the end of its bytes.
        kelFuzz::Counted const model(data + std::min(at, size), at < size ? size - at : 0);
        kelString const old(value);
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
            KEL_FUZZ_CHECK(value == old);
            return;
        }
        if (model.complete) {
            KEL_FUZZ_CHECK(after == at + 4 + model.count);
            KEL_FUZZ_CHECK(cutAtZero(model.payload) == value.c_str());
        } else if (kind == Kind::File) {
            // The file ends inside the text: at most the bytes present, or nothing.
            KEL_FUZZ_CHECK(value == old || cutAtZero(model.payload) == value.c_str());
        }
        // Whatever was read, as the exact wire form, and back.
        kelBinarySerializer out;
        value.serializeTo(out);
        KEL_FUZZ_CHECK(out.getSize() == 4 + value.size());
        KEL_FUZZ_CHECK(kelFuzz::littleEndian(out.getBufferC(), 4) == value.size());
        KEL_FUZZ_CHECK(value.size() == 0 ||
                       std::memcmp(out.getBufferC() + 4, value.c_str(), value.size()) == 0);
        kelString back("x");
        back.deserializeFrom(out);
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
