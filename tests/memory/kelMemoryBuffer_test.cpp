#include <kelcore/frame/kelException.h>
#include <kelcore/memory/kelMemory.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;

namespace {

kelMemoryBuffer bufferOf(Bytes const& bytes) {
    kelMemoryBuffer buffer;
    buffer.set(bytes.data(), static_cast<UInt32>(bytes.size()));
    return buffer;
}

// Oracle: the bits of the bytes taken least significant first when the size fits, else zero.
template <class T>
void expectRead(Bytes const& bytes, T got) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; bytes.size() == sizeof(T) && i < bytes.size(); ++i) {
        bits |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
    }
    // The test hosts are little-endian: the low bytes of `bits` are the value's.
    EXPECT_EQ(0, std::memcmp(&bits, &got, sizeof(T))) << bytes.size() << " bytes, read " << +got;
}

} // namespace

TEST(kelMemoryBuffer, ReadsOfExactWidthOnly) {
    std::mt19937 rng(5);
    for (unsigned size = 0; size <= 9; ++size) {
        for (int round = 0; round < 20; ++round) {
            Bytes bytes(size);
            std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<UInt8>(rng()); });
            kelMemoryBuffer const buffer = bufferOf(bytes);
            expectRead(bytes, buffer.toUInt8());
            expectRead(bytes, buffer.toSInt8());
            expectRead(bytes, buffer.toUInt16());
            expectRead(bytes, buffer.toSInt16());
            expectRead(bytes, buffer.toUInt32());
            expectRead(bytes, buffer.toSInt32());
            expectRead(bytes, buffer.toUInt64());
            expectRead(bytes, buffer.toSInt64());
            expectRead(bytes, buffer.toFloat32());
            expectRead(bytes, buffer.toFloat64());
        }
    }
    EXPECT_EQ(0x1234, bufferOf({0x34, 0x12}).toUInt16()); // whatever the host's order
}

TEST(kelMemoryBuffer, EditingKeepsExactSizes) {
    kelMemoryBuffer buffer = bufferOf({1, 2, 3, 4});
    ASSERT_TRUE(buffer.reallocate(2));
    EXPECT_EQ((Bytes{1, 2}), kelTest::bytesOf(buffer.getBuffer(), buffer.getSize()));
    ASSERT_TRUE(buffer.reallocate(8));
    EXPECT_EQ(8u, buffer.getSize());
    EXPECT_EQ(2, buffer[1]);

    kelMemoryBuffer none;
    unsigned char const data[2] = {9, 9};
    EXPECT_FALSE(none.set(data)); // no block to copy into
    EXPECT_TRUE(none.set(data, 0));
    EXPECT_NE(nullptr, none.getBuffer());
    EXPECT_TRUE(kelMemoryBuffer().allocate(0));

    kelMemoryBuffer text = bufferOf({'A', 0, 'B'});
    EXPECT_STREQ("A", text.toString().c_str());
    EXPECT_STREQ("AB", bufferOf({'A', 'B'}).toString().c_str());
    ASSERT_TRUE(text.add(text)); // adding itself doubles the content
    EXPECT_TRUE(text.add(kelMemoryBuffer()));
    EXPECT_EQ((Bytes{'A', 0, 'B', 'A', 0, 'B'}),
              kelTest::bytesOf(text.getBuffer(), text.getSize()));

    // Equality compares sizes and bytes; two empty buffers are neither equal nor unequal.
    EXPECT_TRUE(bufferOf({1, 2}) == bufferOf({1, 2}) && !(bufferOf({1, 2}) != bufferOf({1, 2})));
    EXPECT_TRUE(bufferOf({1, 2}) != bufferOf({1, 2, 0}));
    EXPECT_FALSE(kelMemoryBuffer() == kelMemoryBuffer() || kelMemoryBuffer() != kelMemoryBuffer());
    kelMemoryBuffer assigned(3);
    assigned = bufferOf({5, 6});
    assigned = assigned;
    EXPECT_EQ((Bytes{5, 6}), kelTest::bytesOf(assigned.getBuffer(), assigned.getSize()));

    unsigned char left[3] = {1, 2, 3}, right[3] = {7, 8, 9};
    EXPECT_TRUE(kelMemory::swap(left, right, 3));
    EXPECT_TRUE(kelMemory::swap(left, right, 0));
    EXPECT_EQ((Bytes{7, 8, 9, 1, 2, 3}),
              (Bytes{left[0], left[1], left[2], right[0], right[1], right[2]}));
}

TEST(kelMemoryBuffer, SerializedFormAndHostileSizes) {
    kelBinarySerializer out;
    bufferOf({0xAA, 0xBB, 0xCC}).serializeTo(out);
    kelMemoryBuffer().serializeTo(out);
    EXPECT_EQ(kelTest::WireBytes().u32(3).u8(0xAA).u8(0xBB).u8(0xCC).u32(0).bytes(),
              kelTest::bytesOf(out.getBufferC(), out.getSize()));

    // Sizes around the reading piece round-trip exactly.
    std::mt19937 rng(9);
    for (UInt32 size : {1u, (1u << 20) - 1, 1u << 20, (1u << 20) + 1, 3u * (1u << 20) + 5}) {
        Bytes bytes(size);
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<UInt8>(rng()); });
        kelBinarySerializer wire;
        bufferOf(bytes).serializeTo(wire);
        kelMemoryBuffer back = bufferOf({1, 2, 3});
        back.deserializeFrom(wire);
        EXPECT_TRUE(back == bufferOf(bytes)) << size;
    }

    for (UInt32 hostile : {0xFFFFFFFFu, 0xFFFFFFFEu, 64u}) {
        UInt8 block[10] = {};
        std::memcpy(block, &hostile, 4);
        kelMemorySerializer in(block, sizeof block);
        kelMemoryBuffer victim;
        EXPECT_THROW(victim.deserializeFrom(in), kelException) << hostile;
    }
}
