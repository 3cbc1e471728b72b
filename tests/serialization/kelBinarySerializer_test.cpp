#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using namespace KELKIT;
using kelTest::bytesOf;

namespace {

// The capacity is not public; it shows as the largest read that still succeeds.
UInt32 capacityOf(kelBinarySerializer const& s) {
    kelBinarySerializer probe;
    probe = s;
    UInt32 readable = probe.getSize() - probe.getRemainingSize(); // the read position
    UInt8 byte;
    try {
        for (;;) {
            probe.deserialize(byte);
            ++readable;
        }
    } catch (kelException const&) {
    }
    return readable;
}

} // namespace

TEST(kelBinarySerializer, NewSerializerIsEmptyAndThrowsOnRead) {
    kelBinarySerializer s;
    EXPECT_EQ(nullptr, s.getBuffer());
    s.deserializeData(nullptr, 0); // nothing asked, nothing thrown
    UInt8 byte = 0x5A;
    try {
        s.deserialize(byte);
        FAIL() << "read from an empty serializer must throw";
    } catch (kelException const& e) {
        EXPECT_STREQ("Unable to desialize data. Buffer is too small", e.getDescription());
        EXPECT_STREQ("kelBinarySerializer.cpp", e.getSourceFile());
        EXPECT_GT(e.getLineNumber(), 0u);
        EXPECT_EQ(0u, e.getErrorNumber());
    }
    EXPECT_EQ(0x5A, byte);
}

TEST(kelBinarySerializer, GrowsByChunksAndKeepsOneByteFree) {
    std::vector<UInt8> data(1024, 0x11);
    kelBinarySerializer almost, full;
    almost.serialize(data.data(), 1023);
    EXPECT_EQ(1024u, capacityOf(almost));
    full.serialize(data.data(), 1024);
    EXPECT_EQ(2048u, capacityOf(full));

    kelBinarySerializer small;
    small.setAllocationChunk(16);
    small.setAllocationChunk(0);      // ignored
    small.serialize(data.data(), 31); // 31 < 32: two chunks
    EXPECT_EQ(32u, capacityOf(small));
    small.serialize(data.data(), 1); // 32 reaches the end: one more chunk
    EXPECT_EQ(48u, capacityOf(small));
}

TEST(kelBinarySerializer, ConstructedFromBytesReadsUpToTheCapacity) {
    unsigned char const data[8] = {1, 0, 0, 0, 2, 0, 0, 0};
    kelBinarySerializer s(data, 8);
    UInt32 v = 0;
    s.deserialize(v);
    EXPECT_EQ(1u, v);
    EXPECT_EQ(4294967292u, s.getRemainingSize()); // 0 - 4, unsigned
    s.deserialize(v);
    EXPECT_EQ(2u, v);
    EXPECT_THROW(s.deserialize(v), kelException);
    EXPECT_EQ(2u, v);

    kelBinarySerializer w(data, 8);
    w.serialize(static_cast<UInt32>(0xAABBCCDD)); // overwrites the front: write position was 0
    EXPECT_EQ((kelTest::WireBytes().u32(0xAABBCCDD).u32(2).bytes()), bytesOf(w.getBufferC(), 8));

    kelBinarySerializer loaded;
    loaded.loadData(data, 8);
    EXPECT_EQ(8u, loaded.getRemainingSize());
    loaded.loadData(nullptr, 5); // nothing to copy, yet the size is taken as given
    EXPECT_EQ(5u, loaded.getSize());
    EXPECT_THROW(loaded.deserialize(v), kelException);
    loaded.serialize(static_cast<UInt8>(9)); // grows past the counted bytes, no overrun
    EXPECT_EQ(6u, loaded.getSize());
}

TEST(kelBinarySerializer, CopiesAndAssignment) {
    kelBinarySerializer original;
    original.serialize(static_cast<UInt32>(10));
    original.serialize(static_cast<UInt32>(20));
    UInt32 v = 0;
    original.deserialize(v);

    kelBinarySerializer copied(original);
    EXPECT_EQ(0u, copied.getSize()); // positions start over
    copied.deserialize(v);
    EXPECT_EQ(10u, v);
    EXPECT_EQ(1024u, capacityOf(copied));

    kelBinarySerializer assigned;
    assigned.setAllocationChunk(8);
    assigned = original; // takes the positions, keeps its own chunk
    EXPECT_EQ(8u, assigned.getSize());
    EXPECT_EQ(4u, assigned.getRemainingSize());
    assigned.deserialize(v);
    EXPECT_EQ(20u, v);
    EXPECT_NE(original.getBufferC(), assigned.getBufferC());

    kelBinarySerializer& alias = original;
    original = alias; // clears before copying, so it ends empty
    EXPECT_EQ(0u, original.getSize());
    EXPECT_EQ(nullptr, original.getBufferC());
}

TEST(kelBinarySerializer, AppendingAnotherSerializer) {
    kelBinarySerializer s;
    s.setAllocationChunk(4);
    s.serialize(static_cast<UInt16>(0x0102));
    s.serialize(static_cast<UInt8>(3));
    EXPECT_EQ(4u, capacityOf(s));
    s += s; // doubles the content
    EXPECT_EQ((std::vector<unsigned char>{2, 1, 3, 2, 1, 3}), bytesOf(s.getBufferC(), s.getSize()));
    EXPECT_EQ(6u, capacityOf(s)); // exactly the data after an enlargement
    s.serialize(static_cast<UInt8>(4));
    EXPECT_EQ(10u, capacityOf(s)); // then by chunks again
    s += s;                        // 14 bytes fit into nothing smaller: grows to exactly 14
    EXPECT_EQ(14u, s.getSize());
    EXPECT_EQ(14u, capacityOf(s));

    kelBinarySerializer other;
    other.serialize(static_cast<UInt8>(0xEE));
    UInt8 skipped;
    other.deserialize(skipped); // the other's read position plays no part
    s += other;
    EXPECT_EQ(15u, s.getSize());
    EXPECT_EQ(0xEE, s.getBufferC()[14]);
}

TEST(kelBinarySerializer, ClearDataKeepsTheChunk) {
    kelBinarySerializer s;
    s.setAllocationChunk(4);
    s.serialize(static_cast<UInt32>(1));
    s.clearData();
    EXPECT_EQ(nullptr, s.getBufferC());
    s.serialize(static_cast<UInt8>(1));
    EXPECT_EQ(4u, capacityOf(s));
}
