#include <kelcore/serialization/kelBufferedSerializer.h>

#include <kelcore/internal/kelFixedWidth.h>

namespace KELKIT {

kelBufferedSerializer::kelBufferedSerializer()
    : mWritePosition(0), mReadPosition(0), mWriteBlock(nullptr), mReadBlock(nullptr),
      mWriteOffset(0), mReadOffset(0), mWriteEnd(0), mReadEnd(0) {}

kelBufferedSerializer::kelBufferedSerializer(kelBufferedSerializer const& other)
    : kelISerializer(other), kelAbstractSerializer(other), mBuffer(other.mBuffer),
      mWritePosition(other.mWritePosition), mReadPosition(other.mReadPosition),
      mWriteBlock(nullptr), mReadBlock(nullptr), mWriteOffset(0), mReadOffset(0), mWriteEnd(0),
      mReadEnd(0) {}

kelBufferedSerializer& kelBufferedSerializer::operator=(kelBufferedSerializer const& other) {
    mBuffer = other.mBuffer;
    mWritePosition = other.mWritePosition;
    mReadPosition = other.mReadPosition;
    mWriteBlock = nullptr;
    mReadBlock = nullptr;
    return *this;
}

kelBufferedSerializer::~kelBufferedSerializer() = default;

kelLinkedBuffer const* kelBufferedSerializer::getLinkedBuffer() const {
    return &mBuffer;
}

UInt32 kelBufferedSerializer::getSize() const {
    return static_cast<UInt32>(mBuffer.getSize());
}

UInt32 kelBufferedSerializer::getRemainingSize() const {
    return getSize() - mReadPosition;
}

void kelBufferedSerializer::clearData() {
    mBuffer.clear();
    mWritePosition = 0;
    mReadPosition = 0;
    mWriteBlock = nullptr;
    mReadBlock = nullptr;
}

void kelBufferedSerializer::loadData(UInt8 const* data, UInt32 size) {
    clearData();
    copyBuffer(data, size);
}

bool kelBufferedSerializer::copyBuffer(UInt8 const* data, UInt32 size) {
    clearData();
    if (data == nullptr || size == 0) {
        return false;
    }
    serializeData(data, size);
    return true;
}

void kelBufferedSerializer::serializeData(void const* data, UInt32 size) {
    if (mBuffer.write(static_cast<UInt8 const*>(data), size, mWritePosition)) {
        mWritePosition += size;
    }
    // The write may have changed what lies before the read position.
    mReadBlock = nullptr;
    openWriteWindow();
}

void kelBufferedSerializer::deserializeData(void* data, UInt32 size) {
    if (mBuffer.read(static_cast<UInt8*>(data), size, mReadPosition) != 0) {
        mReadPosition += size;
    }
    openReadWindow();
}

namespace {

// Where a window from offset in a block of the given capacity ends: at the capacity, unless the
// position standing at offset would reach 4 GiB first.
UInt32 windowEnd(UInt32 capacity, UInt32 offset, UInt32 position) {
    UInt32 const beforeWrap = 0xFFFFFFFFu - position;
    return capacity - offset < beforeWrap ? capacity : offset + beforeWrap;
}

} // namespace

// Only the last block: its used count is not part of the way to any offset in it or in an
// earlier block, so the direct writes change no other block's place nor the store's cursor.
// The windows open only here, never in a constructor: while the constructors of this class run,
// every object looks exactly like a kelBufferedSerializer, even one that is to be of a derived
// class.
void kelBufferedSerializer::openWriteWindow() {
    mWriteBlock = nullptr;
    kelMemoryBlock* block = nullptr;
    UInt32 offset = 0;
    UInt32 const count = mBuffer.mBlocks.size();
    if (count != 0 && internal::isExactly(*this) &&
        mBuffer.getBlockAt(mWritePosition, block, offset) &&
        block == mBuffer.mBlocks.get(count - 1) && offset == block->used) {
        mWriteBlock = block;
        mWriteOffset = offset;
        mWriteEnd = windowEnd(block->capacity, offset, mWritePosition);
    }
}

void kelBufferedSerializer::openReadWindow() {
    mReadBlock = nullptr;
    kelMemoryBlock* block = nullptr;
    UInt32 offset = 0;
    if (internal::isExactly(*this) && mBuffer.getBlockAt(mReadPosition, block, offset)) {
        mReadBlock = block;
        mReadOffset = offset;
        mReadEnd = windowEnd(block->capacity, offset, mReadPosition);
    }
}

} // namespace KELKIT
