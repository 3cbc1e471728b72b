#include <kelcore/serialization/kelBufferedSerializer.h>

#include <kelcore/internal/kelFixedWidth.h>

namespace KELKIT {

kelBufferedSerializer::kelBufferedSerializer()
    : mWritePosition(0), mReadPosition(0), mWriteBlock(nullptr), mReadBlock(nullptr),
      mReadOffset(0) {}

kelBufferedSerializer::kelBufferedSerializer(kelBufferedSerializer const& other)
    : kelISerializer(other), kelAbstractSerializer(other), mBuffer(other.mBuffer),
      mWritePosition(other.mWritePosition), mReadPosition(other.mReadPosition),
      mWriteBlock(nullptr), mReadBlock(nullptr), mReadOffset(0) {}

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

// Only the last block: its used count is not part of the way to any offset in it or in an
// earlier block, so the direct writes change no other block's place nor the store's cursor.
void kelBufferedSerializer::openWriteWindow() {
    mWriteBlock = nullptr;
    kelMemoryBlock* block = nullptr;
    UInt32 offset = 0;
    UInt32 const count = mBuffer.mBlocks.size();
    if (count != 0 && mBuffer.getBlockAt(mWritePosition, block, offset) &&
        block == mBuffer.mBlocks.get(count - 1) && offset == block->used) {
        mWriteBlock = block;
    }
}

void kelBufferedSerializer::openReadWindow() {
    mReadBlock = nullptr;
    kelMemoryBlock* block = nullptr;
    UInt32 offset = 0;
    if (mBuffer.getBlockAt(mReadPosition, block, offset)) {
        mReadBlock = block;
        mReadOffset = offset;
    }
}

// The direct path does what the store does with a value that fits the window: a write appends
// to the last block's data and counts it; a read copies from the block, where bytes up to its
// capacity count, written or not. The positions stop short of wrapping at 4 GiB.
#define KEL_FIXED_WIDTH_FORMS(T)                                                                   \
    void kelBufferedSerializer::serialize(T value) {                                               \
        kelMemoryBlock* const block = mWriteBlock;                                                 \
        if (block != nullptr && internal::isExactly(*this) &&                                      \
            sizeof(T) <= block->capacity - block->used &&                                          \
            mWritePosition <= 0xFFFFFFFFu - sizeof(T)) {                                           \
            internal::storeValue(block->data + block->used, value);                                \
            block->used += sizeof(T);                                                              \
            mBuffer.mTotalUsed += sizeof(T);                                                       \
            mWritePosition += sizeof(T);                                                           \
            return;                                                                                \
        }                                                                                          \
        kelAbstractSerializer::serialize(value);                                                   \
    }                                                                                              \
    void kelBufferedSerializer::deserialize(T& value) {                                            \
        kelMemoryBlock const* const block = mReadBlock;                                            \
        if (block != nullptr && internal::isExactly(*this) &&                                      \
            sizeof(T) <= block->capacity - mReadOffset &&                                          \
            mReadPosition <= 0xFFFFFFFFu - sizeof(T)) {                                            \
            internal::loadValue(value, block->data + mReadOffset);                                 \
            mReadOffset += sizeof(T);                                                              \
            mReadPosition += sizeof(T);                                                            \
            return;                                                                                \
        }                                                                                          \
        kelAbstractSerializer::deserialize(value);                                                 \
    }

KEL_FIXED_WIDTH_FORMS(Float64)
KEL_FIXED_WIDTH_FORMS(Float32)
KEL_FIXED_WIDTH_FORMS(SInt64)
KEL_FIXED_WIDTH_FORMS(SInt32)
KEL_FIXED_WIDTH_FORMS(SInt16)
KEL_FIXED_WIDTH_FORMS(SInt8)
KEL_FIXED_WIDTH_FORMS(UInt64)
KEL_FIXED_WIDTH_FORMS(UInt32)
KEL_FIXED_WIDTH_FORMS(UInt16)
KEL_FIXED_WIDTH_FORMS(UInt8)
KEL_FIXED_WIDTH_FORMS(bool)

#undef KEL_FIXED_WIDTH_FORMS

} // namespace KELKIT
