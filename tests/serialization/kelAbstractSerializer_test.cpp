#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace KELKIT;
using kelTest::bytesOf;
using kelTest::WireBytes;

namespace {

std::vector<unsigned char> written(kelBinarySerializer& s) {
    return bytesOf(s.getBufferC(), s.getSize());
}

} // namespace

TEST(kelAbstractSerializer, ScalarsHaveExactLittleEndianWidths) {
    kelBinarySerializer s;
    s.serialize(static_cast<UInt32>(1));
    s.serialize(static_cast<SInt16>(-2));
    s.serialize(true);
    s.serialize(1.0f);
    s.serialize(static_cast<UInt64>(0x0102030405060708ull));
    s.serialize(static_cast<SInt64>(-3));
    s.serialize(static_cast<SInt32>(-0x12345678));
    s.serialize(static_cast<UInt16>(0xBEEF));
    s.serialize(static_cast<UInt8>(0xAB));
    s.serialize(static_cast<SInt8>(-1));
    s.serialize(-2.5);
    WireBytes want;
    want.u32(1).s16(-2).u8(1).f32bits(0x3F800000u).u64(0x0102030405060708ull).s64(-3);
    want.s32(-0x12345678).u16(0xBEEF).u8(0xAB).u8(0xFF).f64bits(0xC004000000000000ull);
    EXPECT_EQ(want.bytes(), written(s));
    EXPECT_EQ((std::vector<unsigned char>{0x01, 0x00, 0x00, 0x00}), bytesOf(s.getBufferC(), 4));
}

TEST(kelAbstractSerializer, ArraysWriteElementsOnlyAndMatchRepeatedScalars) {
    kelBinarySerializer arrays, scalars;
    UInt16 const shorts[3] = {1, 0x0203, 0xFFFF};
    arrays.serialize(shorts, 3);
    EXPECT_EQ(6u, arrays.getSize());
    UInt32 const longs[2] = {0xDEADBEEF, 7};
    arrays.serialize(longs, 2);
    arrays.serialize(longs, 0);
    scalars.serialize(shorts[0]);
    scalars.serialize(shorts[1]);
    scalars.serialize(shorts[2]);
    scalars.serialize(longs[0]);
    scalars.serialize(longs[1]);
    EXPECT_EQ(written(scalars), written(arrays));

    UInt32 out[2] = {5, 5};
    arrays.deserialize(out, 0);
    EXPECT_EQ(0u, arrays.getSize() - arrays.getRemainingSize());
    UInt16 shortsBack[3] = {};
    arrays.deserialize(shortsBack, 3);
    arrays.deserialize(out, 2);
    EXPECT_EQ(0, std::memcmp(shorts, shortsBack, sizeof shorts));
    EXPECT_EQ(0xDEADBEEFu, out[0]);
    EXPECT_EQ(7u, out[1]);
}

TEST(kelAbstractSerializer, ArrayByteCountsDoNotWrap) {
    // 0x20000001 doubles are 0x100000008 bytes: computed in 32 bits that would be 8.
    UInt32 const wrappingCount = 0x20000001u;
    Float64 one[1] = {1.0};
    kelBinarySerializer s;
    s.serialize(one, wrappingCount);
    EXPECT_EQ(0u, s.getSize());
    s.serialize(one, 1);
    s.serialize(one, 1);
    EXPECT_THROW(s.deserialize(one, wrappingCount), kelException);
    EXPECT_EQ(16u, s.getRemainingSize());
}

TEST(kelAbstractSerializer, UnalignedMixAndNaNBitsRoundTrip) {
    kelBinarySerializer s;
    s.serialize(static_cast<UInt32>(0xCAFEF00D));
    s.serialize(3.25);
    s.serialize('z');
    EXPECT_EQ(13u, s.getSize());
    float const nan = std::numeric_limits<float>::quiet_NaN();
    UInt32 nanBits;
    std::memcpy(&nanBits, &nan, 4);
    nanBits |= 0x12345u; // a payload that must survive
    float payloadNaN;
    std::memcpy(&payloadNaN, &nanBits, 4);
    s.serialize(payloadNaN);
    s.serialize(-std::numeric_limits<double>::infinity());

    UInt32 u = 0;
    Float64 d = 0;
    SInt8 c = 0;
    Float32 f = 0;
    Float64 inf = 0;
    s.deserialize(u);
    s.deserialize(d);
    s.deserialize(c);
    s.deserialize(f);
    s.deserialize(inf);
    EXPECT_EQ(0xCAFEF00Du, u);
    EXPECT_EQ(3.25, d);
    EXPECT_EQ('z', c);
    UInt32 back;
    std::memcpy(&back, &f, 4);
    EXPECT_EQ(nanBits, back);
    EXPECT_TRUE(std::isinf(inf) && inf < 0);
}

TEST(kelAbstractSerializer, BoolIsReadBackAsTheStoredByte) {
    unsigned char const raw[2] = {0x02, 0x00};
    kelBinarySerializer s(raw, 2);
    bool b = false;
    s.deserialize(b);
    unsigned char asByte;
    std::memcpy(&asByte, &b, 1);
    EXPECT_EQ(0x02, asByte);
}

TEST(kelAbstractSerializer, RandomMixedSequenceMatchesTheOracle) {
    std::mt19937_64 rng(42);
    for (int round = 0; round < 50; ++round) {
        kelBinarySerializer s;
        s.setAllocationChunk(1 + static_cast<UInt32>(rng() % 64));
        WireBytes want;
        std::vector<int> kinds;
        std::vector<std::uint64_t> values;
        for (int i = 0; i < 200; ++i) {
            int const kind = static_cast<int>(rng() % 6);
            std::uint64_t const v = rng();
            kinds.push_back(kind);
            values.push_back(v);
            switch (kind) {
            case 0:
                s.serialize(static_cast<UInt8>(v));
                want.u8(static_cast<std::uint8_t>(v));
                break;
            case 1:
                s.serialize(static_cast<SInt16>(v));
                want.le(v, 2);
                break;
            case 2:
                s.serialize(static_cast<UInt32>(v));
                want.le(v, 4);
                break;
            case 3:
                s.serialize(static_cast<SInt64>(v));
                want.le(v, 8);
                break;
            case 4:
                s.serialize(static_cast<Float64>(static_cast<double>(v)));
                want.f64(static_cast<double>(v));
                break;
            default:
                s.serialize((v & 1) != 0);
                want.u8(v & 1);
                break;
            }
        }
        ASSERT_EQ(want.bytes(), written(s));
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            std::uint64_t const v = values[i];
            switch (kinds[i]) {
            case 0: {
                UInt8 x;
                s.deserialize(x);
                ASSERT_EQ(static_cast<UInt8>(v), x);
                break;
            }
            case 1: {
                SInt16 x;
                s.deserialize(x);
                ASSERT_EQ(static_cast<SInt16>(v), x);
                break;
            }
            case 2: {
                UInt32 x;
                s.deserialize(x);
                ASSERT_EQ(static_cast<UInt32>(v), x);
                break;
            }
            case 3: {
                SInt64 x;
                s.deserialize(x);
                ASSERT_EQ(static_cast<SInt64>(v), x);
                break;
            }
            case 4: {
                Float64 x;
                s.deserialize(x);
                ASSERT_EQ(static_cast<double>(v), x);
                break;
            }
            default: {
                bool x;
                s.deserialize(x);
                ASSERT_EQ((v & 1) != 0, x);
                break;
            }
            }
        }
        ASSERT_EQ(0u, s.getRemainingSize());
    }
}
