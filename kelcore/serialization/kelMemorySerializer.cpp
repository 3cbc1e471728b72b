#include <kelcore/serialization/kelMemorySerializer.h>

#include <kelcore/internal/kelFixedWidth.h>
#include <kelcore/internal/kelThrowSite.h>

#include <cstring>

namespace KELKIT {

kelMemorySerializer::kelMemorySerializer()
    : mBuffer(nullptr), mWritePosition(0), mReadPosition(0), mBufferSize(0), mDirectSize(0) {}

kelMemorySerializer::kelMemorySerializer(UInt8* buffer, UInt32 size)
    : mBuffer(buffer), mWritePosition(0), mReadPosition(0),
      mBufferSize(buffer == nullptr ? 0 : size), mDirectSize(0) {}

// The inline forms' part of the block is not copied: the copy may be part of a derived object.
kelMemorySerializer::kelMemorySerializer(const kelMemorySerializer& other)
    : kelISerializer(other), kelAbstractSerializer(other), mBuffer(other.mBuffer),
      mWritePosition(other.mWritePosition), mReadPosition(other.mReadPosition),
      mBufferSize(other.mBufferSize), mDirectSize(0) {}

kelMemorySerializer::~kelMemorySerializer() = default;

kelMemorySerializer& kelMemorySerializer::operator=(const kelMemorySerializer& other) {
    mBuffer = other.mBuffer;
    mWritePosition = other.mWritePosition;
    mReadPosition = other.mReadPosition;
    mBufferSize = other.mBufferSize;
    mDirectSize = 0;
    return *this;
}

kelMemorySerializer& kelMemorySerializer::operator+=(const kelMemorySerializer& other) {
    serializeData(other.mBuffer, other.mBufferSize);
    return *this;
}

void kelMemorySerializer::serializeData(const void* data, UInt32 size) {
    if (data == nullptr && size > 0) {
        return;
    }
    // Strictly below: a write that would end exactly at the block's end is dropped too.
    if (static_cast<UInt64>(mWritePosition) + size < mBufferSize) {
        if (size > 0) {
            // The source may lie in the block itself (another serializer over the same memory).
            std::memmove(mBuffer + mWritePosition, data, size);
        }
        mWritePosition += size;
    }
    openDirectPath();
}

void kelMemorySerializer::deserializeData(void* data, UInt32 size) {
    if (static_cast<UInt64>(mReadPosition) + size > mBufferSize) {
        KEL_THROW("Unable to desialize data. Buffer is too small");
    }
    openDirectPath();
    if (size == 0 || data == nullptr) {
        return;
    }
    std::memmove(data, mBuffer + mReadPosition, size);
    mReadPosition += size;
}

// Only here, never in a constructor: while the constructors of this class run, every object
// looks exactly like a kelMemorySerializer, even one that is to be of a derived class.
void kelMemorySerializer::openDirectPath() {
    mDirectSize = internal::isExactly(*this) ? mBufferSize : 0;
}

const UInt8* kelMemorySerializer::getBuffer() const {
    return mBuffer;
}

UInt8* kelMemorySerializer::getBuffer() {
    return mBuffer;
}

UInt32 kelMemorySerializer::getSize() const {
    return mWritePosition;
}

UInt32 kelMemorySerializer::getRemainingSize() const {
    return getSize() - mReadPosition;
}

void kelMemorySerializer::clearData() {
    if (mBuffer != nullptr && mBufferSize > 0) {
        std::memset(mBuffer, 0, mBufferSize);
    }
    mWritePosition = 0;
    mReadPosition = 0;
}

void kelMemorySerializer::loadData(const UInt8* data, UInt32 size) {
    clearData();
    if (mBuffer == nullptr || mBufferSize == 0 || data == nullptr) {
        return;
    }
    UInt32 const copied = size < mBufferSize ? size : mBufferSize;
    std::memmove(mBuffer, data, copied);
    mWritePosition = copied;
}

} // namespace KELKIT
