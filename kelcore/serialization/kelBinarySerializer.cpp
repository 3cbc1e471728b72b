#include <kelcore/serialization/kelBinarySerializer.h>

#include <kelcore/internal/kelFixedWidth.h>
#include <kelcore/internal/kelThrowSite.h>

#include <cstdlib>
#include <cstring>

namespace KELKIT {

namespace {

constexpr UInt32 DEFAULT_CHUNK = 1024;
constexpr UInt64 MAX_CAPACITY = 0xFFFFFFFFull;

} // namespace

kelBinarySerializer::kelBinarySerializer()
    : mAllocationChunk(DEFAULT_CHUNK), mBuffer(nullptr), mWritePosition(0), mReadPosition(0),
      mCapacity(0), mDirectCapacity(0) {}

kelBinarySerializer::kelBinarySerializer(const UInt8* data, UInt32 size) : kelBinarySerializer() {
    copyBuffer(data, size);
}

kelBinarySerializer::kelBinarySerializer(const kelBinarySerializer& other)
    : kelISerializer(other), kelAbstractSerializer(other), mAllocationChunk(DEFAULT_CHUNK),
      mBuffer(nullptr), mWritePosition(0), mReadPosition(0), mCapacity(0), mDirectCapacity(0) {
    copyBuffer(other.mBuffer, other.mCapacity);
}

kelBinarySerializer::~kelBinarySerializer() {
    std::free(mBuffer);
}

kelBinarySerializer& kelBinarySerializer::operator=(const kelBinarySerializer& other) {
    clearData();
    // Read the other's block only now: for self-assignment it is already gone.
    if (copyBuffer(other.mBuffer, other.mCapacity)) {
        mWritePosition = other.mWritePosition;
        mReadPosition = other.mReadPosition;
    }
    return *this;
}

kelBinarySerializer& kelBinarySerializer::operator+=(const kelBinarySerializer& other) {
    UInt32 const added = other.getSize();
    UInt64 const total = static_cast<UInt64>(getSize()) + added;
    if (total > MAX_CAPACITY || !resize(static_cast<UInt32>(total))) {
        return *this;
    }
    // After a failed load the other may count bytes it has no block for; copy only real ones.
    UInt32 const available = other.mBuffer == nullptr ? 0 : other.mCapacity;
    UInt32 const copied = added < available ? added : available;
    if (copied > 0) {
        // The other's block is looked up after the resize, so that s += s sees its new block.
        std::memmove(mBuffer + mWritePosition, other.mBuffer, copied);
    }
    mWritePosition += copied;
    return *this;
}

void kelBinarySerializer::serializeData(const void* data, UInt32 size) {
    if (data == nullptr && size > 0) {
        return;
    }
    // Grow while the data would reach the end of the block, so that a byte always stays free.
    // The growth is computed in one step: the result is the same block size that adding one
    // chunk at a time would reach, with one reallocation instead of many.
    UInt64 const needed = static_cast<UInt64>(mWritePosition) + size;
    if (needed >= mCapacity) {
        UInt64 const steps = (needed - mCapacity) / mAllocationChunk + 1;
        UInt64 const target = mCapacity + steps * mAllocationChunk;
        if (target > MAX_CAPACITY || !resize(static_cast<UInt32>(target))) {
            return;
        }
    }
    if (size > 0) {
        std::memcpy(mBuffer + mWritePosition, data, size);
    }
    mWritePosition += size;
    openDirectPath();
}

void kelBinarySerializer::deserializeData(void* data, UInt32 size) {
    if (static_cast<UInt64>(mReadPosition) + size > mCapacity) {
        KEL_THROW("Unable to desialize data. Buffer is too small");
    }
    openDirectPath();
    if (size == 0) {
        return;
    }
    if (data == nullptr) {
        // Nowhere to put the bytes: treat like a refused read without the exception.
        return;
    }
    std::memcpy(data, mBuffer + mReadPosition, size);
    mReadPosition += size;
}

// Only here, never in a constructor: while the constructors of this class run, every object
// looks exactly like a kelBinarySerializer, even one that is to be of a derived class.
void kelBinarySerializer::openDirectPath() {
    mDirectCapacity = internal::isExactly(*this) ? mCapacity : 0;
}

void kelBinarySerializer::setAllocationChunk(UInt32 chunk) {
    if (chunk != 0) {
        mAllocationChunk = chunk;
    }
}

const UInt8* kelBinarySerializer::getBufferC() const {
    return mBuffer;
}

UInt8* kelBinarySerializer::getBuffer() {
    return mBuffer;
}

UInt32 kelBinarySerializer::getSize() const {
    return mWritePosition;
}

UInt32 kelBinarySerializer::getRemainingSize() const {
    return getSize() - mReadPosition;
}

void kelBinarySerializer::clearData() {
    std::free(mBuffer);
    mBuffer = nullptr;
    mWritePosition = 0;
    mReadPosition = 0;
    mCapacity = 0;
    mDirectCapacity = 0;
}

void kelBinarySerializer::loadData(const UInt8* data, UInt32 size) {
    clearData();
    copyBuffer(data, size);
    mWritePosition = size;
}

bool kelBinarySerializer::copyBuffer(const UInt8* data, UInt32 size) {
    clearData();
    if (data == nullptr || size == 0) {
        return false;
    }
    auto* block = static_cast<UInt8*>(std::malloc(size));
    if (block == nullptr) {
        return false;
    }
    std::memcpy(block, data, size);
    mBuffer = block;
    mCapacity = size;
    return true;
}

bool kelBinarySerializer::resize(UInt32 size) {
    if (size == mCapacity) {
        return true;
    }
    if (size > mCapacity) {
        void* block = std::realloc(mBuffer, size);
        if (block == nullptr) {
            return false; // the old block and its content stay as they were
        }
        mBuffer = static_cast<UInt8*>(block);
        mCapacity = size;
        return true;
    }
    // Nothing ever shrinks; only positions beyond the new size are pulled back.
    if (mWritePosition > size) {
        mWritePosition = size;
    }
    if (mReadPosition > size) {
        mReadPosition = size;
    }
    return true;
}

} // namespace KELKIT
