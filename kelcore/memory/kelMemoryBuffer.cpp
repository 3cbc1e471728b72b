#include <kelcore/memory/kelMemoryBuffer.h>

#include <kelcore/serialization/kelISerializer.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

namespace KELKIT {

namespace {

UInt32 const kDeserializePiece = 1u << 20;

// The unsigned integer of T's width.
template <std::size_t Width>
struct BitsOfWidth;
template <>
struct BitsOfWidth<1> {
    using type = std::uint8_t;
};
template <>
struct BitsOfWidth<2> {
    using type = std::uint16_t;
};
template <>
struct BitsOfWidth<4> {
    using type = std::uint32_t;
};
template <>
struct BitsOfWidth<8> {
    using type = std::uint64_t;
};

template <class T>
T readExact(UInt8 const* bytes, UInt32 size) {
    if (bytes == nullptr || size != sizeof(T)) {
        return T();
    }
    using Bits = typename BitsOfWidth<sizeof(T)>::type;
    Bits bits = 0;
    for (UInt32 i = sizeof(T); i > 0; --i) {
        bits = static_cast<Bits>(static_cast<std::uint64_t>(bits) << 8 | bytes[i - 1]);
    }
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

kelMemoryBuffer::kelMemoryBuffer() : mBuffer(nullptr), mSize(0), mCapacity(0) {}

kelMemoryBuffer::kelMemoryBuffer(UInt32 size) : mBuffer(nullptr), mSize(0), mCapacity(0) {
    allocate(size);
}

kelMemoryBuffer::kelMemoryBuffer(kelMemoryBuffer const& other)
    : kelISerializable(other), mBuffer(nullptr), mSize(0), mCapacity(0) {
    *this = other;
}

kelMemoryBuffer::~kelMemoryBuffer() {
    clear();
}

void kelMemoryBuffer::clear() {
    ::operator delete(mBuffer);
    mBuffer = nullptr;
    mSize = 0;
    mCapacity = 0;
}

UInt8 const* kelMemoryBuffer::getBuffer() const {
    return mBuffer;
}

UInt8* kelMemoryBuffer::getBuffer() {
    return mBuffer;
}

bool kelMemoryBuffer::allocate(UInt32 size) {
    clear();
    mBuffer = static_cast<UInt8*>(::operator new(size, std::nothrow));
    if (mBuffer == nullptr) {
        return false;
    }
    mSize = size;
    return true;
}

bool kelMemoryBuffer::reallocate(UInt32 size) {
    auto* block = static_cast<UInt8*>(::operator new(size, std::nothrow));
    if (block == nullptr) {
        return false;
    }
    if (mBuffer != nullptr) {
        std::memcpy(block, mBuffer, std::min(mSize, size));
    }
    clear();
    mBuffer = block;
    mSize = size;
    return true;
}

UInt32 kelMemoryBuffer::getSize() const {
    return mSize;
}

bool kelMemoryBuffer::set(UInt8 const* data, UInt32 size) {
    if (!reallocate(size) || mBuffer == nullptr || mSize != size) {
        return false;
    }
    return set(data);
}

bool kelMemoryBuffer::set(UInt8 const* data) {
    if (mBuffer == nullptr) {
        return false;
    }
    if (mSize > 0) {
        std::memcpy(mBuffer, data, mSize);
    }
    return true;
}

bool kelMemoryBuffer::add(kelMemoryBuffer const& other) {
    UInt32 const oldSize = mSize;
    UInt32 const otherSize = other.mSize;
    if (otherSize > 0xFFFFFFFFu - oldSize) {
        return false; // the sum would wrap to a smaller block
    }
    UInt8 const* const source = other.mBuffer; // this block when adding itself
    auto* block = static_cast<UInt8*>(::operator new(oldSize + otherSize, std::nothrow));
    if (block == nullptr) {
        return false;
    }
    if (oldSize > 0) {
        std::memcpy(block, mBuffer, oldSize);
    }
    if (otherSize > 0) {
        std::memcpy(block + oldSize, source, otherSize);
    }
    clear();
    mBuffer = block;
    mSize = oldSize + otherSize;
    return true;
}

bool kelMemoryBuffer::appendWithSpare(UInt8 const* data, UInt32 size) {
    if (size == 0) {
        return true;
    }
    if (size > 0xFFFFFFFFu - mSize) {
        return false;
    }
    UInt32 const needed = mSize + size;
    if (mBuffer != nullptr && needed <= mCapacity) {
        std::memcpy(mBuffer + mSize, data, size);
        mSize = needed;
        return true;
    }
    // Doubling keeps the copies of a long run of appends linear in its length; if the larger
    // block is refused, an exact one is still worth a try.
    UInt32 capacity = std::max<UInt32>(needed, mSize > 0x7FFFFFFFu ? 0xFFFFFFFFu : 2 * mSize);
    capacity = std::max<UInt32>(capacity, 64);
    auto* block = static_cast<UInt8*>(::operator new(capacity, std::nothrow));
    if (block == nullptr) {
        capacity = needed;
        block = static_cast<UInt8*>(::operator new(capacity, std::nothrow));
        if (block == nullptr) {
            return false;
        }
    }
    if (mSize > 0) {
        std::memcpy(block, mBuffer, mSize);
    }
    std::memcpy(block + mSize, data, size); // before clear(): data may be this buffer's bytes
    clear();
    mBuffer = block;
    mSize = needed;
    mCapacity = capacity;
    return true;
}

kelString kelMemoryBuffer::toString() const {
    auto* text = static_cast<char*>(::operator new(std::size_t(mSize) + 1, std::nothrow));
    if (text == nullptr) {
        return kelString();
    }
    if (mSize > 0) {
        std::memcpy(text, mBuffer, mSize);
    }
    text[mSize] = '\0';
    kelString result(text);
    ::operator delete(text);
    return result;
}

UInt8 kelMemoryBuffer::toUInt8() const {
    return readExact<UInt8>(mBuffer, mSize);
}
SInt8 kelMemoryBuffer::toSInt8() const {
    return readExact<SInt8>(mBuffer, mSize);
}
UInt16 kelMemoryBuffer::toUInt16() const {
    return readExact<UInt16>(mBuffer, mSize);
}
SInt16 kelMemoryBuffer::toSInt16() const {
    return readExact<SInt16>(mBuffer, mSize);
}
UInt32 kelMemoryBuffer::toUInt32() const {
    return readExact<UInt32>(mBuffer, mSize);
}
SInt32 kelMemoryBuffer::toSInt32() const {
    return readExact<SInt32>(mBuffer, mSize);
}
UInt64 kelMemoryBuffer::toUInt64() const {
    return readExact<UInt64>(mBuffer, mSize);
}
SInt64 kelMemoryBuffer::toSInt64() const {
    return readExact<SInt64>(mBuffer, mSize);
}
Float32 kelMemoryBuffer::toFloat32() const {
    return readExact<Float32>(mBuffer, mSize);
}
Float64 kelMemoryBuffer::toFloat64() const {
    return readExact<Float64>(mBuffer, mSize);
}

bool kelMemoryBuffer::operator==(kelMemoryBuffer const& other) const {
    if (mSize == 0 && other.mSize == 0) {
        return false;
    }
    return mSize == other.mSize && std::memcmp(mBuffer, other.mBuffer, mSize) == 0;
}

bool kelMemoryBuffer::operator!=(kelMemoryBuffer const& other) const {
    if (mSize == 0 && other.mSize == 0) {
        return false;
    }
    return !(*this == other);
}

kelMemoryBuffer& kelMemoryBuffer::operator=(kelMemoryBuffer const& other) {
    if (this != &other && reallocate(other.mSize) && mSize > 0) {
        std::memcpy(mBuffer, other.mBuffer, mSize);
    }
    return *this;
}

UInt8& kelMemoryBuffer::operator[](UInt32 index) {
    return mBuffer[index];
}

UInt8 const& kelMemoryBuffer::operator[](UInt32 index) const {
    return mBuffer[index];
}

void kelMemoryBuffer::serializeTo(kelISerializer& serializer) const {
    serializer.serialize(mSize);
    if (mSize != 0) {
        serializer.serialize(mBuffer, mSize);
    }
}

void kelMemoryBuffer::deserializeFrom(kelISerializer& serializer) {
    UInt32 count = 0;
    serializer.deserialize(count);
    if (!allocate(std::min(count, kDeserializePiece))) {
        return;
    }
    UInt32 done = 0;
    while (done < count) {
        if (mSize == done) {
            UInt32 const grown = count - mSize > mSize ? mSize * 2 : count;
            if (!reallocate(grown)) {
                return;
            }
        }
        UInt32 const piece = std::min(mSize - done, kDeserializePiece);
        serializer.deserialize(mBuffer + done, piece);
        done += piece;
    }
}

} // namespace KELKIT
