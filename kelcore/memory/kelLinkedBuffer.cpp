#include <kelcore/memory/kelLinkedBuffer.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace KELKIT {

kelLinkedBuffer::kelLinkedBuffer()
    : mDefaultBlockSize(1024), mCursorIndex(0), mCursorStart(0), mCursorFloor(0), mTotalUsed(0),
      mTotalCapacity(0) {}

kelLinkedBuffer::kelLinkedBuffer(kelLinkedBuffer const& other) : kelLinkedBuffer() {
    copyBlocksOf(other);
}

kelLinkedBuffer& kelLinkedBuffer::operator=(kelLinkedBuffer const& other) {
    if (this != &other) {
        clear();
        copyBlocksOf(other);
    }
    return *this;
}

kelLinkedBuffer::~kelLinkedBuffer() {
    clear();
}

void kelLinkedBuffer::copyBlocksOf(kelLinkedBuffer const& other) {
    mDefaultBlockSize = other.mDefaultBlockSize;
    for (UInt32 i = 0; i < other.mBlocks.size(); ++i) {
        kelMemoryBlock const* source = other.mBlocks.get(i);
        kelMemoryBlock* block = getNewBlock(source->capacity);
        if (block == nullptr) {
            throw std::bad_alloc(); // a copy that silently lost data would be worse
        }
        std::memcpy(block->data, source->data, source->capacity);
        block->used = source->used;
        mBlocks.add(block);
        mTotalUsed += block->used;
        mTotalCapacity += block->capacity;
    }
}

void kelLinkedBuffer::clear() {
    for (UInt32 i = 0; i < mBlocks.size(); ++i) {
        deleteBlock(mBlocks.get(i));
    }
    mBlocks.clear();
    mTotalUsed = 0;
    mTotalCapacity = 0;
    forgetCursor();
}

UInt64 kelLinkedBuffer::getSize() const {
    return mTotalUsed;
}

UInt64 kelLinkedBuffer::getCapacity() const {
    return mTotalCapacity;
}

void kelLinkedBuffer::forgetCursor() const {
    mCursorIndex = 0;
    mCursorStart = 0;
    mCursorFloor = 0;
}

bool kelLinkedBuffer::getBlockAt(UInt64 offset, kelMemoryBlock*& block,
                                 UInt32& offsetInBlock) const {
    block = nullptr;
    offsetInBlock = 0;
    UInt32 const count = mBlocks.size();
    // Going on from the cursor gives what the walk from the head gives when the walk would
    // pass the cursor: no earlier block takes the offset, and the offset is not behind it.
    if (mCursorIndex >= count || offset < mCursorFloor || offset < mCursorStart) {
        forgetCursor();
    }
    UInt64 remaining = offset - mCursorStart;
    UInt64 start = mCursorStart;
    UInt64 floor = mCursorFloor;
    for (UInt32 i = mCursorIndex; i < count; ++i) {
        kelMemoryBlock* current = mBlocks.get(i);
        if (remaining < current->capacity) {
            mCursorIndex = i;
            mCursorStart = start;
            mCursorFloor = floor;
            block = current;
            offsetInBlock = static_cast<UInt32>(remaining);
            return true;
        }
        remaining -= current->used;
        floor = std::max(floor, start + current->capacity);
        start += current->used;
    }
    return false;
}

UInt32 kelLinkedBuffer::read(UInt8* data, UInt32 size, UInt64 offset) const {
    UInt32 copied = 0;
    while (copied < size) {
        kelMemoryBlock* block = nullptr;
        UInt32 offsetInBlock = 0;
        if (!getBlockAt(offset, block, offsetInBlock)) {
            break;
        }
        UInt32 const piece = std::min(size - copied, block->capacity - offsetInBlock);
        std::memcpy(data + copied, block->data + offsetInBlock, piece);
        copied += piece;
        offset += piece;
    }
    return copied;
}

bool kelLinkedBuffer::write(UInt8 const* data, UInt32 size, UInt64 offset) {
    UInt64 const end = offset + size;
    if (getCapacity() < end && !reserve(end)) {
        return false;
    }
    UInt32 left = size;
    while (left > 0) {
        kelMemoryBlock* block = nullptr;
        UInt32 offsetInBlock = 0;
        if (!getBlockAt(offset, block, offsetInBlock)) {
            break;
        }
        UInt32 const piece = std::min(left, block->capacity - offsetInBlock);
        std::memcpy(block->data + offsetInBlock, data, piece);
        // Only this block's used changes; the cursor stands on it and depends on earlier ones.
        if (block->used < offsetInBlock + piece) {
            mTotalUsed += offsetInBlock + piece - block->used;
            block->used = offsetInBlock + piece;
        }
        data += piece;
        offset += piece;
        left -= piece;
    }
    return left == 0;
}

bool kelLinkedBuffer::reserve(UInt64 size) {
    while (getCapacity() < size) {
        kelMemoryBlock* block = getNewBlock(mDefaultBlockSize);
        if (block == nullptr) {
            return false;
        }
        mBlocks.add(block);
        mTotalCapacity += block->capacity;
    }
    return true;
}

bool kelLinkedBuffer::resize(UInt64 size) {
    if (size > getCapacity()) {
        return false;
    }
    UInt64 remaining = size;
    UInt64 total = 0;
    for (UInt32 i = 0; i < mBlocks.size(); ++i) {
        kelMemoryBlock* block = mBlocks.get(i);
        if (remaining <= block->capacity) {
            block->used = static_cast<UInt32>(remaining);
            remaining = 0;
        } else {
            remaining -= block->capacity;
        }
        total += block->used;
    }
    mTotalUsed = total;
    forgetCursor();
    return true;
}

UInt32 kelLinkedBuffer::getDefaultBlockSize() const {
    return mDefaultBlockSize;
}

void kelLinkedBuffer::setDefaultBlockSize(UInt32 size) {
    mDefaultBlockSize = size == 0 ? 1 : size;
}

kelMemoryBlock* kelLinkedBuffer::getNewBlock(UInt32 size) {
    auto* block = new (std::nothrow) kelMemoryBlock;
    if (block == nullptr) {
        return nullptr;
    }
    block->data = static_cast<UInt8*>(::operator new(size, std::nothrow));
    if (block->data == nullptr) {
        delete block;
        return nullptr;
    }
    block->capacity = size;
    block->used = 0;
    return block;
}

void kelLinkedBuffer::deleteBlock(kelMemoryBlock* block) {
    if (block == nullptr) {
        return;
    }
    ::operator delete(block->data);
    block->data = nullptr;
    block->capacity = 0;
    block->used = 0;
    delete block;
}

} // namespace KELKIT
