#include <kelcore/memory/kelBitAccumulator.h>

namespace KELKIT {

namespace {

// Byte positions are 32-bit and wrap; bit indexes of the cursor are counted in 64 bits.
constexpr UInt64 kBytePositions = UInt64(1) << 32;

} // namespace

kelBitAccumulator::kelBitAccumulator() : mBytePosition(0), mBitPosition(0) {}

kelBitAccumulator::kelBitAccumulator(void* buffer, UInt32 size)
    : kelBitAdaptor(buffer, size), mBytePosition(0), mBitPosition(0) {}

kelBitAccumulator::kelBitAccumulator(kelBitAccumulator const& other) = default;

kelBitAccumulator& kelBitAccumulator::operator=(kelBitAccumulator const& other) = default;

kelBitAccumulator::~kelBitAccumulator() = default;

void kelBitAccumulator::reset() {
    mBytePosition = 0;
    mBitPosition = 0;
}

bool kelBitAccumulator::getBit() const {
    unsigned char const* buffer = getBuffer();
    if (buffer == nullptr || mBytePosition >= getBufferSize()) {
        return false;
    }
    return (buffer[mBytePosition] >> mBitPosition & 1) != 0;
}

void kelBitAccumulator::setBit(bool value) {
    if (getBuffer() == nullptr || mBytePosition >= getBufferSize()) {
        return;
    }
    // The block was handed over writable; the view only hands it out as const.
    unsigned char& byte = const_cast<unsigned char*>(getBuffer())[mBytePosition];
    unsigned char const mask = static_cast<unsigned char>(1u << mBitPosition);
    byte = static_cast<unsigned char>(value ? byte | mask : byte & ~mask);
}

kelBitAccumulator& kelBitAccumulator::operator=(bool const& value) {
    setBit(value);
    return *this;
}

void kelBitAccumulator::insertBit(bool value) {
    setBit(value);
    ++*this;
}

kelBitAccumulator const& kelBitAccumulator::operator++() const {
    moveForward(1);
    return *this;
}

kelBitAccumulator const& kelBitAccumulator::operator--() const {
    moveBackward(1);
    return *this;
}

void kelBitAccumulator::moveForward(UInt32 count) const {
    if (count == 0) {
        return;
    }
    UInt64 const size = getBufferSize();
    if (size == 0) {
        placeCursor(0);
        return;
    }
    // Single steps stop on the last bit at the first step that leaves the byte position equal
    // to the size, that is on a bit of the byte just past the block: from inside the block
    // its first bit; from within that byte the next bit; from its last bit or beyond only
    // after the byte position wraps round.
    UInt64 const index = cursorIndex();
    UInt64 const pastBlock = size * 8;
    UInt64 stop = (kBytePositions + size) * 8;
    if (index < pastBlock) {
        stop = pastBlock;
    } else if (index < pastBlock + 7) {
        stop = index + 1;
    }
    UInt64 const target = index + count;
    placeCursor(target >= stop ? size * 8 - 1 : target);
}

void kelBitAccumulator::moveBackward(UInt32 count) const {
    UInt64 const index = cursorIndex();
    placeCursor(index > count ? index - count : 0);
}

void kelBitAccumulator::moveTo(UInt32 index) const {
    placeCursor(index);
}

UInt64 kelBitAccumulator::cursorIndex() const {
    return UInt64(mBytePosition) * 8 + mBitPosition;
}

void kelBitAccumulator::placeCursor(UInt64 index) const {
    mBytePosition = static_cast<UInt32>((index / 8) % kBytePositions);
    mBitPosition = static_cast<UInt8>(index % 8);
}

} // namespace KELKIT
