#include <kelcore/memory/kelBufferOutputStream.h>

#include <algorithm>
#include <cstring>

namespace KELKIT {

kelBufferOutputStream::kelBufferOutputStream(UInt8* buffer, UInt32 size)
    : mBuffer(buffer), mSize(size), mPosition(0) {}

kelBufferOutputStream::~kelBufferOutputStream() {
    close();
}

UInt32 kelBufferOutputStream::size() {
    return mPosition;
}

UInt32 kelBufferOutputStream::available() {
    return mSize - mPosition;
}

void kelBufferOutputStream::close() {
    mBuffer = nullptr;
}

bool kelBufferOutputStream::isClosed() {
    return mBuffer == nullptr;
}

void kelBufferOutputStream::flush() {}

UInt32 kelBufferOutputStream::write(UInt8 const* data, UInt32 size) {
    if (mBuffer == nullptr || data == nullptr) {
        return 0;
    }
    UInt32 const count = std::min(size, mSize - mPosition);
    if (count > 0) {
        std::memmove(mBuffer + mPosition, data, count); // the data may lie in the same memory
        mPosition += count;
    }
    return count;
}

UInt32 kelBufferOutputStream::write(UInt8 value) {
    if (mBuffer == nullptr || mPosition >= mSize) {
        return 0;
    }
    mBuffer[mPosition++] = value;
    return 1;
}

} // namespace KELKIT
