#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>
#include <kelcore/strings/kelString.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <new>
#include <random>
#include <string>

using namespace KELKIT;
using kelTest::bytesOf;
using kelTest::WireBytes;

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

TEST(kelStringWire, HostileLengthsRaiseTheSerializersException) {
    for (UInt32 length : {0xFFFFFFFFu, 0xFFFFFFFEu, 0x80000000u, 7u}) {
        UInt8 block[10];
        std::vector<unsigned char> const bytes = WireBytes().u32(length).text("xyzzyx").bytes();
        std::copy(bytes.begin(), bytes.end(), block);
        kelMemorySerializer s(block, 10);
        kelString target("unchanged");
        bool threw = false;
        try {
            target.deserializeFrom(s);
        } catch (kelException const& e) {
            threw = true;
            EXPECT_STREQ("Unable to desialize data. Buffer is too small", e.getDescription());
        } catch (std::bad_alloc const&) {
            threw = true;
        }
        EXPECT_TRUE(threw) << length;
        EXPECT_STREQ("unchanged", target.c_str());
        EXPECT_EQ(4u, s.getSize() - s.getRemainingSize()) << "only the length is consumed";
    }

    kelBinarySerializer binary;
    binary.serialize(0xFFFFFFFFu);
    binary.serialize(static_cast<UInt32>(0));
    kelString target;
    EXPECT_THROW(target.deserializeFrom(binary), kelException);
}
