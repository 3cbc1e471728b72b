#ifndef KELCORE_MEMORY_KELLINKEDBUFFER_H
#define KELCORE_MEMORY_KELLINKEDBUFFER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/memory/kelListMemoryBlockPtr.h>

namespace KELKIT {

class kelBufferedSerializer;

// A byte store made of a chain of fixed blocks: it grows without moving what it holds, and it
// is addressed with 64-bit offsets.
//
// An offset is mapped to the chain by walking it: the offset falls into a block when what
// remains of it is below the block's capacity, and otherwise the block's used bytes (not its
// capacity) are subtracted. Data written from 0 on without a gap therefore has flat offsets,
// and a read may run on into the unwritten end of the last block.
//
// Sequential access stays O(1) per call: the buffer remembers where the last access ended in
// the chain and goes on from there whenever the walk from the head would pass that point, and
// it keeps the totals of used and capacity. Results are the same as with a walk from the head.
//
// A copy gets blocks of its own with the same bytes, so each block is freed exactly once.
// A default block size of 0 is taken as 1.
class KELCORE_API kelLinkedBuffer {
public:
    kelLinkedBuffer();
    kelLinkedBuffer(kelLinkedBuffer const& other);
    kelLinkedBuffer& operator=(kelLinkedBuffer const& other);
    virtual ~kelLinkedBuffer();

    virtual void clear();
    // Sum of used over the blocks.
    virtual UInt64 getSize() const;
    // Sum of capacity over the blocks.
    virtual UInt64 getCapacity() const;
    // The count of bytes copied; below size only where the chain ends.
    virtual UInt32 read(UInt8* data, UInt32 size, UInt64 offset) const;
    // True when every byte was stored; what was stored before a stop stays.
    virtual bool write(UInt8 const* data, UInt32 size, UInt64 offset);
    // Adds blocks of the default size until the capacity is at least size.
    virtual bool reserve(UInt64 size);
    // Moves the end of the data inside the present capacity; never adds or frees a block.
    virtual bool resize(UInt64 size);
    virtual UInt32 getDefaultBlockSize() const;
    virtual void setDefaultBlockSize(UInt32 size);

private:
    // Its one user in the library writes fixed-width values straight into the last block,
    // keeping used and the total as write() keeps them.
    friend class kelBufferedSerializer;

    kelMemoryBlock* getNewBlock(UInt32 size);
    void deleteBlock(kelMemoryBlock* block);
    bool getBlockAt(UInt64 offset, kelMemoryBlock*& block, UInt32& offsetInBlock) const;
    void copyBlocksOf(kelLinkedBuffer const& other);
    void forgetCursor() const;

    UInt32 mDefaultBlockSize;
    kelListMemoryBlockPtr mBlocks;

    // Where the walk from the head stands when it reaches block mCursorIndex: the offsets
    // below mCursorFloor stop at an earlier block, and mCursorStart is the sum of used before.
    mutable UInt32 mCursorIndex;
    mutable UInt64 mCursorStart;
    mutable UInt64 mCursorFloor;
    UInt64 mTotalUsed;
    UInt64 mTotalCapacity;
};

} // namespace KELKIT

#endif
