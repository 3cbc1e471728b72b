#include <kelcore/memory/kelBitAccumulator.h>

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

using namespace KELKIT;
using Bytes = std::vector<unsigned char>;

namespace {

void setModelBit(Bytes& model, UInt64 index, bool value) {
    if (index / 8 < model.size()) {
        unsigned char& byte = model[index / 8];
        byte = static_cast<unsigned char>(value ? byte | 1 << index % 8 : byte & ~(1 << index % 8));
    }
}

bool modelBit(Bytes const& model, UInt64 index) {
    return index / 8 < model.size() && (model[index / 8] >> index % 8 & 1) != 0;
}

// One step by the documented rules on byte and bit positions; an empty block stands still.
UInt64 step(UInt64 index, UInt64 size, bool forward) {
    UInt64 byte = index / 8;
    int bit = int(index % 8) + (forward ? 1 : -1);
    if (bit == 8 || bit < 0) {
        byte += forward ? 1 : UInt64(-1);
        bit = forward ? 0 : 7;
    }
    if (forward && byte == size) {
        return size == 0 ? 0 : 8 * size - 1;
    }
    return !forward && byte > index / 8 ? 0 : 8 * byte + bit; // below byte 0: the start
}

} // namespace

// Blocks of exactly `size` heap bytes, so that ASan sees any access beyond them. The cursor's
// bit, and the view's bits at any index, follow the models.
TEST(kelBitAccumulator, CursorAndViewFollowTheRules) {
    std::mt19937 rng(11);
    for (UInt32 size = 0; size <= 4; ++size) {
        std::unique_ptr<unsigned char[]> block(new unsigned char[size]());
        Bytes model(size);
        kelBitAccumulator cursor(block.get(), size);
        UInt64 at = 0;
        for (int round = 0; round < 3000; ++round) {
            UInt32 const count = rng() % 12;
            bool const value = rng() % 2 != 0;
            UInt32 const index = rng() % (8 * size + 20), probe = rng() % (8 * size + 20);
            switch (rng() % 8) {
            case 0:
                value ? ++cursor : --cursor;
                at = step(at, size, value);
                break;
            case 1:
                value ? cursor.moveForward(count) : cursor.moveBackward(count);
                for (UInt32 i = 0; i < count; ++i) {
                    at = step(at, size, value);
                }
                break;
            case 2: // also just past the block and beyond
                cursor.moveTo(index);
                at = index;
                break;
            case 3:
                round % 2 == 0 ? cursor.setBit(index, value)
                               : kelBitAdaptor::setBit(index, block.get(), size, value);
                setModelBit(model, index, value);
                break;
            default:
                cursor.insertBit(value);
                setModelBit(model, at, value);
                at = step(at, size, true);
                break;
            }
            ASSERT_EQ(modelBit(model, at), cursor.getBit()) << size << " " << round;
            ASSERT_EQ(modelBit(model, probe), cursor.getBit(probe));
            ASSERT_EQ(modelBit(model, probe), kelBitAdaptor::getBit(probe, block.get(), size));
            ASSERT_EQ(model, Bytes(block.get(), block.get() + size)) << size << " " << round;
        }
    }
    unsigned char two[2] = {0, 0};
    kelBitAccumulator far(two, 2);
    far.moveForward(0xFFFFFFFF); // stops on the last bit at once
    far.insertBit(true);
    far.moveBackward(0xFFFFFFFF);
    far.insertBit(true);
    EXPECT_EQ(0x8001, two[0] | two[1] << 8);
    UInt32 byte = 0;
    unsigned char mask = 0;
    kelBitAdaptor::getOffsets(13, byte, mask);
    EXPECT_EQ(0x120u, byte << 8 | mask);
    kelBitAdaptor::setBit(3, nullptr, 4, true); // a null block is refused whatever its size
    EXPECT_FALSE(kelBitAdaptor::getBit(3, nullptr, 4));
}
