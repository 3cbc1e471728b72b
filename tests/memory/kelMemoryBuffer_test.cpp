#include <kelcore/frame/kelException.h>
#include <kelcore/memory/kelMemory.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

using namespace KELKIT;
using kelTest::bytesOf;

namespace {

kelMemoryBuffer bufferOf(std::vector<unsigned char> const& bytes) {
    kelMemoryBuffer buffer;
    buffer.set(bytes.data(), static_cast<UInt32>(bytes.size()));
    return buffer;
}

// Oracle: the value of T whose bits are the bytes least significant first, when the size fits.
template <class T>
T expected(std::vector<unsigned char> const& bytes) {
    if (bytes.size() != sizeof(T)) {
        return T();
    }
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bits |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
    }
    T value;
    std::memcpy(&value, &bits, sizeof value); // the test hosts are little-endian
    return value;
}

template <class T>
void expectSameBits(T want, T got) {
    EXPECT_EQ(0, std::memcmp(&want, &got, sizeof(T)));
}

} // namespace

TEST(kelMemoryBuffer, ReadsOfExactWidthOnly) {
    std::mt19937 rng(5);
    for (unsigned size = 0; size <= 9; ++size) {
        for (int round = 0; round < 20; ++round) {
            std::vector<unsigned char> bytes(size);
            for (auto& b : bytes) {
                b = static_cast<unsigned char>(rng());
            }
            kelMemoryBuffer const buffer = bufferOf(bytes);
            EXPECT_EQ(expected<UInt8>(bytes), buffer.toUInt8());
            EXPECT_EQ(expected<SInt8>(bytes), buffer.toSInt8());
            EXPECT_EQ(expected<UInt16>(bytes), buffer.toUInt16());
            EXPECT_EQ(expected<SInt16>(bytes), buffer.toSInt16());
            EXPECT_EQ(expected<UInt32>(bytes), buffer.toUInt32());
            EXPECT_EQ(expected<SInt32>(bytes), buffer.toSInt32());
            EXPECT_EQ(expected<UInt64>(bytes), buffer.toUInt64());
            EXPECT_EQ(expected<SInt64>(bytes), buffer.toSInt64());
            expectSameBits(expected<Float32>(bytes), buffer.toFloat32());
            expectSameBits(expected<Float64>(bytes), buffer.toFloat64());
        }
    }
    EXPECT_EQ(0x1234, bufferOf({0x34, 0x12}).toUInt16());
    EXPECT_EQ(-1, bufferOf({0xFF, 0xFF}).toSInt16());
}

TEST(kelMemoryBuffer, EditingKeepsExactSizes) {
    kelMemoryBuffer buffer = bufferOf({1, 2, 3, 4});
    ASSERT_TRUE(buffer.reallocate(2));
    EXPECT_EQ((std::vector<unsigned char>{1, 2}), bytesOf(buffer.getBuffer(), buffer.getSize()));
    ASSERT_TRUE(buffer.reallocate(8));
    EXPECT_EQ(8u, buffer.getSize());
    EXPECT_EQ(2, buffer[1]);

    kelMemoryBuffer none;
    unsigned char const data[2] = {9, 9};
    EXPECT_FALSE(none.set(data));
    EXPECT_TRUE(none.set(data, 0));
    EXPECT_NE(nullptr, none.getBuffer());
    EXPECT_EQ(0u, none.getSize());
    EXPECT_TRUE(kelMemoryBuffer().allocate(0));

    kelMemoryBuffer text = bufferOf({'A', 0, 'B'});
    EXPECT_STREQ("A", text.toString().c_str());
    EXPECT_STREQ("AB", bufferOf({'A', 'B'}).toString().c_str());
    ASSERT_TRUE(text.add(text)); // adding itself doubles the content
    EXPECT_EQ((std::vector<unsigned char>{'A', 0, 'B', 'A', 0, 'B'}),
              bytesOf(text.getBuffer(), text.getSize()));
    EXPECT_TRUE(text.add(kelMemoryBuffer()));
    EXPECT_EQ(6u, text.getSize());

    // Equality compares sizes and bytes; two empty buffers are neither equal nor unequal.
    EXPECT_TRUE(bufferOf({1, 2}) == bufferOf({1, 2}));
    EXPECT_FALSE(bufferOf({1, 2}) != bufferOf({1, 2}));
    EXPECT_TRUE(bufferOf({1, 2}) != bufferOf({1, 2, 0}));
    EXPECT_FALSE(kelMemoryBuffer() == kelMemoryBuffer());
    EXPECT_FALSE(kelMemoryBuffer() != kelMemoryBuffer());
    kelMemoryBuffer assigned(3);
    assigned = bufferOf({5, 6});
    EXPECT_TRUE(assigned == bufferOf({5, 6}));
    assigned = assigned;
    EXPECT_TRUE(assigned == bufferOf({5, 6}));

    unsigned char left[3] = {1, 2, 3}, right[3] = {7, 8, 9};
    EXPECT_TRUE(kelMemory::swap(left, right, 3));
    EXPECT_EQ(7, left[0]);
    EXPECT_EQ(3, right[2]);
    EXPECT_TRUE(kelMemory::swap(left, right, 0));
    EXPECT_EQ(7, left[0]);
}

TEST(kelMemoryBuffer, SerializedFormAndHostileSizes) {
    kelBinarySerializer out;
    bufferOf({0xAA, 0xBB, 0xCC}).serializeTo(out);
    kelMemoryBuffer().serializeTo(out);
    EXPECT_EQ(kelTest::WireBytes().u32(3).u8(0xAA).u8(0xBB).u8(0xCC).u32(0).bytes(),
              bytesOf(out.getBufferC(), out.getSize()));

    // Sizes around the reading piece round-trip exactly.
    std::mt19937 rng(9);
    for (UInt32 size : {1u, (1u << 20) - 1, 1u << 20, (1u << 20) + 1, 3u * (1u << 20) + 5}) {
        std::vector<unsigned char> bytes(size);
        for (auto& b : bytes) {
            b = static_cast<unsigned char>(rng());
        }
        kelBinarySerializer wire;
        bufferOf(bytes).serializeTo(wire);
        kelMemoryBuffer back = bufferOf({1, 2, 3});
        back.deserializeFrom(wire);
        ASSERT_EQ(size, back.getSize());
        EXPECT_TRUE(back == bufferOf(bytes));
    }

    for (UInt32 hostile : {0xFFFFFFFFu, 0xFFFFFFFEu, 64u}) {
        UInt8 block[10] = {};
        std::memcpy(block, &hostile, 4);
        kelMemorySerializer in(block, sizeof block);
        kelMemoryBuffer victim;
        EXPECT_THROW(victim.deserializeFrom(in), kelException) << hostile;
    }
}
