#include <kelcore/frame/kelException.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelFileSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>
#include <kelcore/strings/kelString.h>
#include <kelcore/variant/kelVariant.h>

#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

using namespace KELKIT;
using namespace std::chrono_literals;

namespace {

// Counts the bytes a reader asks for: a piece it never asks for, it cannot have allocated.
template <class S>
struct Counting : S {
    template <class... Args>
    explicit Counting(Args... args) : S(args...) {}
    void deserializeData(void* data, UInt32 size) override {
        asked += size;
        S::deserializeData(data, size);
    }
    unsigned long long asked = 0;
};

// Loads the stream, runs the read, and reports whether the value survived and what was asked.
template <class V>
void expectRefused(kelISerializer& s, unsigned long long& asked, std::vector<UInt8> const& stream,
                   V const& before, char const* what) {
    s.loadData(stream.data(), UInt32(stream.size()));
    asked = 0;
    V value = before;
    try {
        value.deserializeFrom(s);
    } catch (kelException const&) {
    }
    EXPECT_TRUE(value == before) << what;
    EXPECT_LE(asked, 1ull << 20) << what; // a piece or two, not the stored length
}

} // namespace

// A length of 0xFFFFFFFF in front of "abc", as a string, a memory buffer and a String variant.
TEST(kelHostileLength, EndsInTheExceptionOrAnUnchangedValueThroughEverySerializer) {
    kelWatchdog watchdog("hostile lengths", 120s);
    std::vector<UInt8> const text = {0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b', 'c'};
    std::vector<UInt8> variantText = text;
    variantText.insert(variantText.begin(), 0x0B);

    std::string const path =
        (std::filesystem::temp_directory_path() /
         ("kelcore-hostile-" +
          std::to_string(std::chrono::steady_clock::now().time_since_epoch().count())))
            .string();
    UInt8 block[8];
    Counting<kelBinarySerializer> binary;
    Counting<kelMemorySerializer> memory(block, UInt32(sizeof block));
    Counting<kelBufferedSerializer> buffered;
    {
        Counting<kelFileSerializer> file(
            path.c_str(), kelFileSerializer::FileMode(kelFileSerializer::FileMode::ReadAndWrite));
        auto const readAll = [&](kelISerializer& s, unsigned long long& asked, char const* name) {
            expectRefused(s, asked, text, kelString("before"), name);
            kelMemoryBuffer buffer(3);
            buffer.set(reinterpret_cast<UInt8 const*>("xyz"));
            expectRefused(s, asked, text, buffer, name);
            expectRefused(s, asked, variantText, kelVariant(UInt32(7)), name);
        };
        readAll(binary, binary.asked, "binary");
        readAll(memory, memory.asked, "memory");
        readAll(buffered, buffered.asked, "buffered");
        readAll(file, file.asked, "file");
    }
    std::filesystem::remove(path);
}
