#include <kelcore/memory/kelBitAccumulator.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

using namespace KELKIT;

// Every index, inside and past blocks of exactly `size` heap bytes (so that ASan sees any
// access beyond them), against the byte/bit oracle.
TEST(kelBitAdaptor, ChecksEveryIndexAgainstTheBlock) {
    std::mt19937 rng(3);
    for (UInt32 size = 0; size <= 5; ++size) {
        std::unique_ptr<unsigned char[]> block(new unsigned char[size]());
        std::vector<unsigned char> model(size);
        kelBitAdaptor view(block.get(), size);
        for (int round = 0; round < 400; ++round) {
            UInt32 const index = rng() % (8 * size + 20);
            bool const value = rng() % 2 != 0;
            if (round % 2 == 0) {
                view.setBit(index, value);
            } else {
                kelBitAdaptor::setBit(index, block.get(), size, value);
            }
            if (index / 8 < size) {
                model[index / 8] =
                    static_cast<unsigned char>(value ? model[index / 8] | 1 << index % 8
                                                     : model[index / 8] & ~(1 << index % 8));
            }
            UInt32 const probe = rng() % (8 * size + 20);
            bool const expected = probe / 8 < size && (model[probe / 8] >> probe % 8 & 1) != 0;
            ASSERT_EQ(expected, view.getBit(probe)) << size << " " << probe;
            ASSERT_EQ(expected, kelBitAdaptor::getBit(probe, block.get(), size));
        }
        EXPECT_EQ(model, std::vector<unsigned char>(block.get(), block.get() + size));
    }
    UInt32 byte = 0;
    unsigned char mask = 0;
    kelBitAdaptor::getOffsets(13, byte, mask);
    EXPECT_EQ(1u, byte);
    EXPECT_EQ(0x20, mask);
    EXPECT_FALSE(kelBitAdaptor().getBit(0));
    kelBitAdaptor::setBit(3, nullptr, 4, true); // a null block is refused whatever its size
    EXPECT_FALSE(kelBitAdaptor::getBit(3, nullptr, 4));
}

namespace {

// The cursor stepped one bit at a time by the documented rules, an empty block standing still.
struct CursorModel {
    UInt32 size;
    UInt64 byte = 0;
    int bit = 0;
    void forward() {
        if (size == 0) {
            return;
        }
        if (++bit == 8) {
            bit = 0;
            byte = (byte + 1) % (UInt64(1) << 32);
        }
        if (byte == size) {
            byte = size - 1;
            bit = 7;
        }
    }
    void backward() {
        if (--bit < 0) {
            bit = 7;
            if (byte-- == 0) {
                byte = 0;
                bit = 0;
            }
        }
    }
};

} // namespace

TEST(kelBitAccumulator, CursorFollowsTheSteppingRules) {
    std::mt19937 rng(11);
    for (UInt32 size = 0; size <= 4; ++size) {
        std::unique_ptr<unsigned char[]> block(new unsigned char[size]());
        std::vector<unsigned char> model(size);
        kelBitAccumulator cursor(block.get(), size);
        CursorModel at{size};
        for (int round = 0; round < 3000; ++round) {
            UInt32 const count = rng() % 12;
            bool const value = rng() % 2 != 0;
            switch (rng() % 7) {
            case 0:
                ++cursor;
                at.forward();
                break;
            case 1:
                --cursor;
                at.backward();
                break;
            case 2:
                cursor.moveForward(count);
                for (UInt32 i = 0; i < count; ++i) {
                    at.forward();
                }
                break;
            case 3:
                cursor.moveBackward(count);
                for (UInt32 i = 0; i < count; ++i) {
                    at.backward();
                }
                break;
            case 4: { // also just past the block and beyond
                UInt32 const index = count + (rng() % 2) * 8 * size;
                cursor.moveTo(index);
                at.byte = index / 8;
                at.bit = index % 8;
                break;
            }
            default:
                cursor.insertBit(value);
                if (at.byte < size) {
                    model[at.byte] = static_cast<unsigned char>(
                        value ? model[at.byte] | 1 << at.bit : model[at.byte] & ~(1 << at.bit));
                }
                at.forward();
                break;
            }
            bool const expected = at.byte < size && (model[at.byte] >> at.bit & 1) != 0;
            ASSERT_EQ(expected, cursor.getBit()) << size << " round " << round;
            ASSERT_EQ(model, std::vector<unsigned char>(block.get(), block.get() + size));
        }
    }
    unsigned char two[2] = {0, 0};
    kelBitAccumulator far(two, 2);
    far.moveForward(0xFFFFFFFF); // stops on the last bit at once
    far = true;
    far.moveBackward(0xFFFFFFFF);
    far = true;
    far.moveTo(800);
    far.moveForward(100); // outside the block: no stop, no access
    far.insertBit(true);
    EXPECT_EQ(0x01, two[0]);
    EXPECT_EQ(0x80, two[1]);
}
