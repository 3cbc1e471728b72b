#include <kelcore/frame/kelException.h>
#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelFileSerializer.h>

#include "support/kelWireBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>

using namespace KELKIT;
using kelTest::bytesOf;
using kelTest::WireBytes;

namespace {

std::vector<unsigned char> written(kelBinarySerializer& s) {
    return bytesOf(s.getBufferC(), s.getSize());
}

} // namespace

TEST(kelAbstractSerializer, ArraysWriteElementsOnlyAndMatchRepeatedScalars) {
    kelBinarySerializer arrays, scalars;
    UInt16 const shorts[3] = {1, 0x0203, 0xFFFF};
    UInt32 const longs[2] = {0xDEADBEEF, 7};
    arrays.serialize(shorts, 3);
    arrays.serialize(longs, 2);
    arrays.serialize(longs, 0);
    for (UInt16 v : shorts) {
        scalars.serialize(v);
    }
    for (UInt32 v : longs) {
        scalars.serialize(v);
    }
    EXPECT_EQ(written(scalars), written(arrays));

    UInt16 shortsBack[3] = {};
    UInt32 longsBack[2] = {};
    arrays.deserialize(longsBack, 0);
    arrays.deserialize(shortsBack, 3);
    arrays.deserialize(longsBack, 2);
    EXPECT_EQ(0, std::memcmp(shorts, shortsBack, sizeof shorts));
    EXPECT_EQ(0, std::memcmp(longs, longsBack, sizeof longs));
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

TEST(kelAbstractSerializer, BoolIsReadBackAsTheStoredByte) {
    unsigned char const raw[2] = {0x02, 0x00};
    kelBinarySerializer s(raw, 2);
    bool b = false;
    s.deserialize(b);
    EXPECT_EQ(0x02, *reinterpret_cast<unsigned char const*>(&b));
}

namespace {

// Every type, written from raw bits (NaNs with payloads included) and checked bit for bit.
template <typename T>
void writeBits(kelISerializer& s, WireBytes& want, std::uint64_t bits) {
    T value;
    std::memcpy(&value, &bits, sizeof(T));
    s.serialize(value);
    want.le(bits, sizeof(T));
}

template <typename T>
std::uint64_t readBits(kelISerializer& s) {
    T value;
    s.deserialize(value);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof(T));
    return bits;
}

struct Kind {
    void (*write)(kelISerializer&, WireBytes&, std::uint64_t);
    std::uint64_t (*read)(kelISerializer&);
    unsigned width;
};

#define KIND(T)                                                                                    \
    { &writeBits<T>, &readBits<T>, sizeof(T) }
Kind const KINDS[] = {KIND(Float64), KIND(Float32), KIND(SInt64), KIND(SInt32),
                      KIND(SInt16),  KIND(SInt8),   KIND(UInt64), KIND(UInt32),
                      KIND(UInt16),  KIND(UInt8),   KIND(bool)};
#undef KIND

// Writes a random mix of every type, compares the bytes with the oracle and reads it back:
// the same sequence must give the same bytes in every serializer.
void checkRandomMix(kelISerializer& s, std::function<std::vector<unsigned char>()> const& bytes,
                    std::mt19937_64& rng) {
    WireBytes want;
    std::vector<std::pair<Kind const*, std::uint64_t>> sequence;
    for (int i = 0; i < 200; ++i) {
        Kind const& kind = KINDS[rng() % (sizeof KINDS / sizeof KINDS[0])];
        std::uint64_t bits = rng();
        bits &= kind.width == 8 ? ~0ull : ((1ull << (8 * kind.width)) - 1);
        if (kind.write == &writeBits<bool>) {
            bits &= 1; // a bool holds 0 or 1
        }
        kind.write(s, want, bits);
        sequence.emplace_back(&kind, bits);
    }
    ASSERT_EQ(want.bytes(), bytes());
    for (auto const& [kind, bits] : sequence) {
        ASSERT_EQ(bits, kind->read(s));
    }
    ASSERT_EQ(0u, s.getRemainingSize());
}

} // namespace

TEST(kelAbstractSerializer, RandomMixedSequenceMatchesTheOracle) {
    std::mt19937_64 rng(42);
    std::string const path =
        (std::filesystem::temp_directory_path() / "kelcore-random-mix.bin").string();
    for (int round = 0; round < 50; ++round) {
        // One sequence per round, the same for the three serializers.
        std::uint64_t const seed = rng();
        std::mt19937_64 forBinary(seed), forBuffered(seed), forFile(seed);
        kelBinarySerializer binary;
        binary.setAllocationChunk(1 + static_cast<UInt32>(rng() % 64));
        checkRandomMix(
            binary, [&] { return written(binary); }, forBinary);

        kelBufferedSerializer buffered;
        checkRandomMix(
            buffered,
            [&] {
                std::vector<unsigned char> bytes(buffered.getSize());
                buffered.getLinkedBuffer()->read(bytes.data(), buffered.getSize(), 0);
                return bytes;
            },
            forBuffered);

        kelFileSerializer file(path.c_str(), kelFileSerializer::FileMode::ReadAndWrite);
        checkRandomMix(
            file,
            [&] {
                file.flushFile();
                std::ifstream in(path, std::ios::binary);
                return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), {});
            },
            forFile);
    }
    std::filesystem::remove(path);
}
