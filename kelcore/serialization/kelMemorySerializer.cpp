#include <kelcore/serialization/kelMemorySerializer.h>

#include <kelcore/internal/kelFixedWidth.h>
#include <kelcore/internal/kelThrowSite.h>

#include <cstring>

namespace KELKIT {

kelMemorySerializer::kelMemorySerializer()
    : mBuffer(nullptr), mWritePosition(0), mReadPosition(0), mBufferSize(0) {}

kelMemorySerializer::kelMemorySerializer(UInt8* buffer, UInt32 size)
    : mBuffer(buffer), mWritePosition(0), mReadPosition(0),
      mBufferSize(buffer == nullptr ? 0 : size) {}

kelMemorySerializer::kelMemorySerializer(const kelMemorySerializer& other) = default;

kelMemorySerializer::~kelMemorySerializer() = default;

kelMemorySerializer& kelMemorySerializer::operator=(const kelMemorySerializer& other) = default;

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
}

void kelMemorySerializer::deserializeData(void* data, UInt32 size) {
    if (static_cast<UInt64>(mReadPosition) + size > mBufferSize) {
        KEL_THROW("Unable to desialize data. Buffer is too small");
    }
    if (size == 0 || data == nullptr) {
        return;
    }
    std::memmove(data, mBuffer + mReadPosition, size);
    mReadPosition += size;
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

// The direct path does what serializeData and deserializeData do when the value fits: a write
// that ends strictly before the block's end, a read that ends within it.
#define KEL_FIXED_WIDTH_FORMS(T)                                                                   \
    void kelMemorySerializer::serialize(T value) {                                                 \
        if (internal::isExactly(*this) &&                                                          \
            static_cast<UInt64>(mWritePosition) + sizeof(T) < mBufferSize) {                       \
            internal::storeValue(mBuffer + mWritePosition, value);                                 \
            mWritePosition += sizeof(T);                                                           \
            return;                                                                                \
        }                                                                                          \
        kelAbstractSerializer::serialize(value);                                                   \
    }                                                                                              \
    void kelMemorySerializer::deserialize(T& value) {                                              \
        if (internal::isExactly(*this) &&                                                          \
            static_cast<UInt64>(mReadPosition) + sizeof(T) <= mBufferSize) {                       \
            internal::loadValue(value, mBuffer + mReadPosition);                                   \
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
