#include <kelcore/frame/kelException.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelFileSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>
#include <kelcore/strings/kelString.h>
#include <kelcore/variant/kelVariant.h>

#include "support/kelWatchdog.h"
#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <string>

using namespace KELKIT;
using kelTest::bytesOf;
using kelTest::WireBytes;
using namespace std::chrono_literals;

// The length, then the bytes without a terminator; both memory serializers alike.
TEST(kelStringWire, GeneratedTextsRoundTripThroughBothMemorySerializers) {
    std::mt19937 rng(3);
    std::vector<UInt8> block(1 << 16);
    kelMemorySerializer fixed(block.data(), static_cast<UInt32>(block.size()));
    kelBinarySerializer growing;
    std::vector<std::string> texts;
    WireBytes want;
    for (int i = 0; i < 200; ++i) {
        std::string t(i == 0 ? 0 : rng() % 100, ' ');
        for (char& c : t) {
            c = static_cast<char>(1 + rng() % 255);
        }
        texts.push_back(t);
        want.u32(UInt32(t.size())).text(t.c_str());
        kelString(t.c_str()).serializeTo(fixed);
        kelString(t.c_str()).serializeTo(growing);
    }
    EXPECT_EQ(want.bytes(), bytesOf(growing.getBufferC(), growing.getSize()));
    EXPECT_EQ(want.bytes(), bytesOf(fixed.getBuffer(), fixed.getSize()));
    for (std::string const& t : texts) {
        kelString a("old"), b("old");
        a.deserializeFrom(fixed);
        b.deserializeFrom(growing);
        ASSERT_EQ(t, a.c_str());
        ASSERT_EQ(t, b.c_str());
    }
    EXPECT_EQ(0u, growing.getRemainingSize());
}

TEST(kelStringWire, ZeroByteInsidePayloadEndsTheText) {
    kelBinarySerializer s;
    s.loadData(WireBytes().u32(5).text("ab").u8(0).text("cd").bytes().data(), 9);
    kelString t;
    t.deserializeFrom(s);
    EXPECT_STREQ("ab", t.c_str());
    EXPECT_EQ(2u, t.size());
    EXPECT_EQ(0u, s.getRemainingSize()); // the whole payload was consumed
}

namespace {

// Counts the bytes a reader asks for: a piece it never asks for, it cannot have allocated.
template <class S>
struct Counting : S {
    using S::S;
    void deserializeData(void* data, UInt32 size) override {
        asked += size;
        S::deserializeData(data, size);
    }
    unsigned long long asked = 0;
};

} // namespace

// A length of 0xFFFFFFFF in front of "abc", as a string, a memory buffer and a String variant,
// ends in the serializer's exception or an unchanged value, through every serializer.
TEST(kelStringWire, HostileLengthsCostAPieceAndChangeNothing) {
    kelWatchdog watchdog("hostile lengths", 120s);
    std::vector<UInt8> const text = WireBytes().u32(0xFFFFFFFFu).text("abc").bytes();
    std::vector<UInt8> const variant = WireBytes().u8(0x0B).u32(0xFFFFFFFFu).text("abc").bytes();
    kelMemoryBuffer bytes(3);
    bytes.set(text.data() + 4);
    auto const check = [](auto& s, std::vector<UInt8> const& stream, auto const& before) {
        s.loadData(stream.data(), UInt32(stream.size()));
        s.asked = 0;
        auto value = before;
        try {
            value.deserializeFrom(s);
        } catch (kelException const& e) {
            EXPECT_STREQ("Unable to desialize data. Buffer is too small", e.getDescription());
        }
        EXPECT_TRUE(value == before);
        EXPECT_LE(s.asked, 1ull << 20); // a piece or two, not the stored length
    };
    auto const all = [&](auto& s) {
        check(s, text, kelString("before"));
        check(s, text, bytes);
        check(s, variant, kelVariant(UInt32(7)));
    };
    UInt8 block[8];
    Counting<kelBinarySerializer> binary;
    Counting<kelMemorySerializer> memory(block, UInt32(sizeof block));
    Counting<kelBufferedSerializer> buffered;
    all(binary);
    all(memory);
    all(buffered);
    auto const stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    std::string const path =
        (std::filesystem::temp_directory_path() / ("kelcore-hostile-" + std::to_string(stamp)))
            .string();
    {
        Counting<kelFileSerializer> file(path.c_str(), kelFileSerializer::FileMode::ReadAndWrite);
        all(file);
    }
    std::filesystem::remove(path);
}
