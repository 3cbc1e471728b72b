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

// The cursor stepped one bit at a time by the documented rules; an empty block stands still.
struct CursorModel {
    UInt64 size, byte = 0;
    int bit = 0;
    void step(bool forward) {
        if (forward && size != 0) {
            byte = (byte + (++bit == 8)) % (UInt64(1) << 32);
            bit %= 8;
            if (byte == size) {
                byte = size - 1;
                bit = 7;
            }
        } else if (!forward && --bit < 0) {
            bit = byte == 0 ? 0 : 7;
            byte -= byte == 0 ? 0 : 1;
        }
    }
    UInt64 index() const { return byte * 8 + bit; }
};

} // namespace

// Blocks of exactly `size` heap bytes, so that ASan sees any access beyond them. The cursor's
// bit, and the view's bits at any index, follow the models.
TEST(kelBitAccumulator, CursorAndViewFollowTheRules) {
    std::mt19937 rng(11);
    for (UInt32 size = 0; size <= 4; ++size) {
        std::unique_ptr<unsigned char[]> block(new unsigned char[size]());
        Bytes model(size);
        kelBitAccumulator cursor(block.get(), size);
        CursorModel at{size};
        for (int round = 0; round < 3000; ++round) {
            UInt32 const count = rng() % 12;
            bool const value = rng() % 2 != 0;
            UInt32 const index = rng() % (8 * size + 20), probe = rng() % (8 * size + 20);
            switch (rng() % 8) {
            case 0:
                value ? ++cursor : --cursor;
                at.step(value);
                break;
            case 1:
                value ? cursor.moveForward(count) : cursor.moveBackward(count);
                for (UInt32 i = 0; i < count; ++i) {
                    at.step(value);
                }
                break;
            case 2: // also just past the block and beyond
                cursor.moveTo(index);
                at.byte = index / 8;
                at.bit = index % 8;
                break;
            case 3:
                round % 2 == 0 ? cursor.setBit(index, value)
                               : kelBitAdaptor::setBit(index, block.get(), size, value);
                setModelBit(model, index, value);
                break;
            default:
                cursor.insertBit(value);
                setModelBit(model, at.index(), value);
                at.step(true);
                break;
            }
            ASSERT_EQ(modelBit(model, at.index()), cursor.getBit()) << size << " " << round;
            ASSERT_EQ(modelBit(model, probe), cursor.getBit(probe));
            ASSERT_EQ(modelBit(model, probe), kelBitAdaptor::getBit(probe, block.get(), size));
            ASSERT_EQ(model, Bytes(block.get(), block.get() + size)) << size << " " << round;
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
    UInt32 byte = 0;
    unsigned char mask = 0;
    kelBitAdaptor::getOffsets(13, byte, mask);
    EXPECT_EQ(0x120u, byte << 8 | mask);
    kelBitAdaptor::setBit(3, nullptr, 4, true); // a null block is refused whatever its size
    EXPECT_FALSE(kelBitAdaptor::getBit(3, nullptr, 4));
}
