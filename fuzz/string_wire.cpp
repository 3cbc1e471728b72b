// kelString::deserializeFrom through every serializer: a run of texts read into one string until
// a read is refused. Against an independent reading of the bytes: a complete text reads exactly,
// cut at its first 0 byte; a stream that ends too soon is refused (by the memory serializers'
// exception) or, where a serializer cannot throw, gives at most the bytes present. A refused read
// leaves the string as it was, a read costs no more memory than the bytes behind it, and what was
// read writes and reads back the same.

#include "kelFuzz.h"

#include <kelcore/strings/kelString.h>

using namespace KELKIT;
using kelFuzz::Ahead;
using kelFuzz::Kind;

namespace {

std::string cutAtZero(std::vector<std::uint8_t> const& bytes) {
    std::string text(bytes.begin(), bytes.end());
    return text.substr(0, std::strlen(text.c_str()));
}

void check(kelString const& value, kelString const& before, Kind kind, Ahead ahead, bool complete,
           UInt32 consumed) {
    kelFuzz::Counted const model(ahead.bytes, ahead.size);
    if (complete) {
        KEL_FUZZ_CHECK(consumed == 4 + model.count);
        KEL_FUZZ_CHECK(cutAtZero(model.payload) == value.c_str());
    } else if (kind == Kind::File) {
        // The file ends inside the text: at most the bytes present, or nothing.
        KEL_FUZZ_CHECK(value == before || cutAtZero(model.payload) == value.c_str());
    }
    // Whatever was read, as the exact wire form, and back.
    auto const same = [](kelString const& a, kelString const& b) { return a == b; };
    std::vector<std::uint8_t> const wire =
        kelFuzz::writesBack(value, kelString("x"), 4 + value.size(), same);
    kelFuzz::Counted const back(wire.data(), wire.size());
    KEL_FUZZ_CHECK(back.complete && std::string(back.payload.begin(), back.payload.end()) ==
                                        std::string(value.c_str(), value.size()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    kelFuzz::readRuns(
        data, size, kelString("before"),
        [](Ahead ahead) { return kelFuzz::Counted(ahead.bytes, ahead.size).complete; },
        [](kelString const& a, kelString const& b) { return a == b; }, check);
    return 0;
}
