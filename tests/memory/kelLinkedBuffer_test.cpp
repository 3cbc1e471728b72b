#include <kelcore/memory/kelLinkedBuffer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace KELKIT;

namespace {

// The chain walked literally from its head on every access, with a mask of written bytes so
// that reads compare only what both sides know.
class ReferenceChain {
public:
    struct Block {
        std::vector<int> bytes; // -1: never written
        UInt32 used = 0;
    };

    UInt32 blockSize = 1024;
    std::vector<Block> blocks;

    UInt64 size() const { return total(true); }
    UInt64 capacity() const { return total(false); }
    UInt64 total(bool used) const {
        UInt64 sum = 0;
        for (auto const& b : blocks) {
            sum += used ? b.used : b.bytes.size();
        }
        return sum;
    }
    Block* at(UInt64 offset, UInt32& inBlock) {
        for (auto& b : blocks) {
            if (offset < b.bytes.size()) {
                inBlock = static_cast<UInt32>(offset);
                return &b;
            }
            offset -= b.used;
        }
        return nullptr;
    }
    void reserve(UInt64 wanted) {
        while (capacity() < wanted) {
            blocks.push_back({std::vector<int>(blockSize, -1), 0});
        }
    }
    bool write(std::vector<UInt8> const& data, UInt64 offset) {
        reserve(offset + data.size());
        std::size_t done = 0;
        UInt32 inBlock = 0;
        while (done < data.size()) {
            Block* b = at(offset, inBlock);
            if (b == nullptr) {
                break;
            }
            std::size_t piece = std::min(data.size() - done, b->bytes.size() - inBlock);
            std::copy(data.begin() + done, data.begin() + done + piece, b->bytes.begin() + inBlock);
            b->used = std::max<UInt32>(b->used, static_cast<UInt32>(inBlock + piece));
            done += piece;
            offset += piece;
        }
        return done == data.size();
    }
    std::vector<int> read(UInt32 size, UInt64 offset) {
        std::vector<int> out;
        UInt32 inBlock = 0;
        while (out.size() < size) {
            Block* b = at(offset, inBlock);
            if (b == nullptr) {
                break;
            }
            std::size_t piece = std::min<std::size_t>(size - out.size(), b->bytes.size() - inBlock);
            out.insert(out.end(), b->bytes.begin() + inBlock, b->bytes.begin() + inBlock + piece);
            offset += piece;
        }
        return out;
    }
    bool resize(UInt64 wanted) {
        if (wanted > capacity()) {
            return false;
        }
        for (auto& b : blocks) {
            if (wanted <= b.bytes.size()) {
                b.used = static_cast<UInt32>(wanted);
                wanted = 0;
            } else {
                wanted -= b.bytes.size();
            }
        }
        return true;
    }
};

bool sameKnownBytes(std::vector<int> const& want, std::vector<UInt8> const& got) {
    return std::equal(want.begin(), want.end(), got.begin(),
                      [](int w, UInt8 g) { return w < 0 || w == g; });
}

} // namespace

TEST(kelLinkedBuffer, MatchesALiteralWalkFromTheHead) {
    std::mt19937_64 rng(11);
    for (int round = 0; round < 60; ++round) {
        kelLinkedBuffer buffer;
        ReferenceChain reference;
        if (round > 0) { // the first round keeps the default size
            reference.blockSize = 1 + static_cast<UInt32>(rng() % 300);
            buffer.setDefaultBlockSize(reference.blockSize);
        }
        UInt32 const blockSize = reference.blockSize;
        UInt64 cursor = 0; // mostly sequential, sometimes anywhere
        for (int step = 0; step < 150; ++step) {
            UInt64 const offset = rng() % 4 == 0 ? rng() % (reference.capacity() + 50) : cursor;
            UInt32 const size = static_cast<UInt32>(rng() % (2 * blockSize + 3));
            int const operation = static_cast<int>(rng() % 9);
            if (operation == 0) {
                UInt64 const wanted = rng() % (reference.capacity() + 20);
                ASSERT_EQ(reference.resize(wanted), buffer.resize(wanted));
            } else if (operation == 1) {
                UInt64 const wanted = rng() % (reference.capacity() + 3 * blockSize);
                reference.reserve(wanted);
                ASSERT_TRUE(buffer.reserve(wanted));
            } else if (operation < 5) {
                std::vector<int> const want = reference.read(size, offset);
                std::vector<UInt8> got(size, 0);
                ASSERT_EQ(want.size(), buffer.read(got.data(), size, offset));
                ASSERT_TRUE(sameKnownBytes(want, got)) << "round " << round << " step " << step;
                cursor = offset + size;
            } else {
                std::vector<UInt8> data(size);
                std::generate(data.begin(), data.end(), [&] { return static_cast<UInt8>(rng()); });
                ASSERT_EQ(reference.write(data, offset), buffer.write(data.data(), size, offset));
                cursor = offset + size;
            }
            ASSERT_EQ(reference.size(), buffer.getSize());
            ASSERT_EQ(reference.capacity(), buffer.getCapacity());
        }
        // A copy has blocks of its own with the same bytes.
        kelLinkedBuffer copy(buffer);
        kelLinkedBuffer assigned;
        assigned = copy;
        buffer.clear();
        std::vector<int> const want = reference.read(static_cast<UInt32>(reference.size()), 0);
        std::vector<UInt8> got(want.size());
        ASSERT_EQ(want.size(), assigned.read(got.data(), static_cast<UInt32>(got.size()), 0));
        ASSERT_TRUE(sameKnownBytes(want, got)) << "copy, round " << round;
    }
}

TEST(kelLinkedBuffer, GapsEndsAndBlockCounts) {
    kelLinkedBuffer buffer;
    UInt8 const bytes[10] = {};
    EXPECT_FALSE(buffer.write(bytes, 10, 5000)); // behind a gap: blocks come, the data cannot
    EXPECT_EQ(5u * 1024, buffer.getCapacity());
}

TEST(kelBufferedSerializer, ReadsAndWritesThroughTheChain) {
    kelBufferedSerializer serializer;
    UInt8 in[3000];
    std::generate(in, in + 3000, [i = 0]() mutable { return static_cast<UInt8>(7 * i++); });
    serializer.serialize(in, 3000);
    EXPECT_EQ(3000u, serializer.getSize());
    EXPECT_EQ(3072u, serializer.getLinkedBuffer()->getCapacity());
    UInt8 out[3000] = {};
    serializer.deserialize(out, 3000);
    EXPECT_TRUE(std::equal(in, in + 3000, out));

    kelBufferedSerializer fresh;
    UInt32 untouched = 0xA5A5A5A5;
    fresh.deserialize(untouched);
    EXPECT_EQ(0xA5A5A5A5u, untouched);
    EXPECT_EQ(0u, fresh.getRemainingSize());

    fresh.loadData(in, 10);
    UInt8 big[2000];
    std::fill(big, big + 2000, 0xEE);
    fresh.deserialize(big, 2000); // copies the one block, moves by the whole size
    EXPECT_EQ(in[9], big[9]);
    EXPECT_EQ(0xEE, big[1500]);
    EXPECT_EQ(10u - 2000u, fresh.getRemainingSize());

    kelBufferedSerializer copy(serializer);
    serializer.clearData();
    EXPECT_EQ(3000u, copy.getSize());
    EXPECT_EQ(0u, copy.getRemainingSize());
}
