#include <kelcore/serialization/kelBufferedSerializer.h>

namespace KELKIT {

kelBufferedSerializer::kelBufferedSerializer() : mWritePosition(0), mReadPosition(0) {}

kelBufferedSerializer::kelBufferedSerializer(kelBufferedSerializer const& other)
    : kelISerializer(other), kelAbstractSerializer(other), mBuffer(other.mBuffer),
      mWritePosition(other.mWritePosition), mReadPosition(other.mReadPosition) {}

kelBufferedSerializer& kelBufferedSerializer::operator=(kelBufferedSerializer const& other) {
    mBuffer = other.mBuffer;
    mWritePosition = other.mWritePosition;
    mReadPosition = other.mReadPosition;
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
}

void kelBufferedSerializer::deserializeData(void* data, UInt32 size) {
    if (mBuffer.read(static_cast<UInt8*>(data), size, mReadPosition) != 0) {
        mReadPosition += size;
    }
}

} // namespace KELKIT
