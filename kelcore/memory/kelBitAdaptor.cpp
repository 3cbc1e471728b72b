#include <kelcore/memory/kelBitAdaptor.h>

namespace KELKIT {

kelBitAdaptor::kelBitAdaptor() : mBuffer(nullptr), mSize(0) {}

kelBitAdaptor::kelBitAdaptor(void* buffer, UInt32 size) : mBuffer(nullptr), mSize(0) {
    // Through the virtual slot's own implementation: a constructor can't reach a derived one.
    kelBitAdaptor::setBuffer(buffer, size);
}

kelBitAdaptor::kelBitAdaptor(kelBitAdaptor const& other) = default;

kelBitAdaptor& kelBitAdaptor::operator=(kelBitAdaptor const& other) = default;

kelBitAdaptor::~kelBitAdaptor() = default;

void kelBitAdaptor::setBuffer(void* buffer, UInt32 size) {
    mBuffer = static_cast<unsigned char*>(buffer);
    mSize = size;
}

unsigned char const* kelBitAdaptor::getBuffer() const {
    return mBuffer;
}

UInt32 kelBitAdaptor::getBufferSize() const {
    return mSize;
}

bool kelBitAdaptor::getBit(UInt32 index) const {
    return getBit(index, mBuffer, mSize);
}

void kelBitAdaptor::setBit(UInt32 index, bool value) {
    setBit(index, mBuffer, mSize, value);
}

void kelBitAdaptor::getOffsets(UInt32 index, UInt32& byte, unsigned char& mask) {
    byte = index / 8;
    mask = static_cast<unsigned char>(1u << (index % 8));
}

bool kelBitAdaptor::getBit(UInt32 index, unsigned char const* buffer, UInt32 size) {
    UInt32 byte = 0;
    unsigned char mask = 0;
    getOffsets(index, byte, mask);
    if (buffer == nullptr || byte >= size) {
        return false;
    }
    return (buffer[byte] & mask) != 0;
}

void kelBitAdaptor::setBit(UInt32 index, unsigned char* buffer, UInt32 size, bool value) {
    UInt32 byte = 0;
    unsigned char mask = 0;
    getOffsets(index, byte, mask);
    if (buffer == nullptr || byte >= size) {
        return;
    }
    if (value) {
        buffer[byte] = static_cast<unsigned char>(buffer[byte] | mask);
    } else {
        buffer[byte] = static_cast<unsigned char>(buffer[byte] & ~mask);
    }
}

} // namespace KELKIT
