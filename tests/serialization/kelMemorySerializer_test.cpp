#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

using namespace KELKIT;

TEST(kelMemorySerializer, WritesTakeAtMostOneByteLessThanTheBlock) {
    std::array<UInt8, 8> block{};
    kelMemorySerializer s(block.data(), 8);
    UInt8 const data[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    s.serialize(data, 8); // would end at the block's end: dropped whole
    s.serialize(data, 7);
    s.serialize(data[7]);
    EXPECT_EQ(7u, s.getSize());
    EXPECT_EQ(0, block[7]);
    EXPECT_EQ(0, std::memcmp(block.data(), data, 7));

    // Reading is limited by the block, not by what was written.
    UInt8 back[8] = {};
    s.deserialize(back, 8);
    EXPECT_EQ(0, std::memcmp(back, block.data(), 8));
    try {
        s.deserialize(back[0]);
        FAIL() << "read past the block must throw";
    } catch (kelException const& e) {
        EXPECT_STREQ("Unable to desialize data. Buffer is too small", e.getDescription());
        EXPECT_STREQ("kelMemorySerializer.cpp", e.getSourceFile());
    }
    EXPECT_EQ(7u, s.getSize());
    EXPECT_EQ(0xFFFFFFFFu, s.getRemainingSize()); // 7 - 8, unsigned
}

TEST(kelMemorySerializer, ExistingContentIsReadableAtOnce) {
    UInt8 block[6] = {0x78, 0x56, 0x34, 0x12, 0xFF, 0x7F};
    kelMemorySerializer s(block, sizeof block);
    UInt32 v = 0;
    SInt16 w = 0;
    s.deserialize(v);
    s.deserialize(w);
    EXPECT_EQ(0x12345678u, v);
    EXPECT_EQ(0x7FFF, w);
    EXPECT_THROW(s.deserialize(w), kelException);
    EXPECT_EQ(0x7FFF, w);
}

TEST(kelMemorySerializer, WithoutABlockEverythingIsDropped) {
    kelMemorySerializer s;
    s.serialize(static_cast<UInt8>(1));
    s.clearData();
    UInt8 b = 1;
    s.loadData(&b, 1);
    EXPECT_EQ(0u, s.getSize());
    EXPECT_EQ(nullptr, s.getBuffer());
    EXPECT_THROW(s.deserialize(b), kelException);
}

TEST(kelMemorySerializer, ClearAndLoadWorkOnTheWholeBlock) {
    UInt8 block[10];
    std::memset(block, 0xCC, sizeof block);
    kelMemorySerializer s(block, 10);
    s.clearData();
    EXPECT_EQ(std::vector<UInt8>(10, 0), std::vector<UInt8>(block, block + 10));
    UInt8 big[100];
    std::memset(big, 0x5A, sizeof big);
    s.loadData(big, 100);
    EXPECT_EQ(10u, s.getSize()); // loadData may fill all ten bytes
    EXPECT_EQ(0, std::memcmp(block, big, 10));
    s.loadData(big, 3);
    EXPECT_EQ(3u, s.getSize());
    EXPECT_EQ(0, block[3]); // cleared before the copy
}

TEST(kelMemorySerializer, CopiesShareTheBlockAndAppendTakesItWhole) {
    UInt8 block[16] = {};
    kelMemorySerializer a(block, 16);
    a.serialize(static_cast<UInt16>(0xA1A2));
    kelMemorySerializer b(a);
    EXPECT_EQ(2u, b.getSize());
    b.serialize(static_cast<UInt8>(0xB3));
    EXPECT_EQ(0xB3, a.getBuffer()[2]); // one block
    kelMemorySerializer c;
    c = b;
    EXPECT_EQ(block, c.getBuffer());

    UInt8 source[4] = {9, 8, 7, 6};
    kelMemorySerializer other(source, 4); // nothing written into it
    UInt8 target[8] = {};
    kelMemorySerializer dest(target, 8);
    dest += other;
    EXPECT_EQ(4u, dest.getSize()); // the whole block of the other
    EXPECT_EQ(0, std::memcmp(target, source, 4));
    dest += other; // 8 would reach the end: dropped
    EXPECT_EQ(4u, dest.getSize());
    dest += dest;
    EXPECT_EQ(4u, dest.getSize());
}
