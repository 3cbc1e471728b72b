#include <kelcore/memory/kelBufferInputStream.h>

#include <algorithm>
#include <cstring>

namespace KELKIT {

kelBufferInputStream::kelBufferInputStream(UInt8 const* buffer, UInt32 size)
    : mBuffer(buffer), mSize(size), mPosition(0) {}

kelBufferInputStream::~kelBufferInputStream() {
    close();
}

UInt32 kelBufferInputStream::size() {
    return mSize - mPosition;
}

void kelBufferInputStream::close() {
    mBuffer = nullptr;
}

bool kelBufferInputStream::isClosed() {
    return mBuffer == nullptr;
}

UInt32 kelBufferInputStream::read(UInt8* data, UInt32 size) {
    if (mBuffer == nullptr || data == nullptr) {
        return 0;
    }
    UInt32 const count = std::min(size, mSize - mPosition);
    if (count > 0) {
        std::memcpy(data, mBuffer + mPosition, count);
        mPosition += count;
    }
    return count;
}

UInt8 kelBufferInputStream::read() {
    if (mBuffer == nullptr || mPosition >= mSize) {
        return 0;
    }
    return mBuffer[mPosition++];
}

UInt32 kelBufferInputStream::skip(UInt32 size) {
    if (mBuffer == nullptr) {
        return 0;
    }
    UInt32 const count = std::min(size, mSize - mPosition);
    mPosition += count;
    return count;
}

} // namespace KELKIT
