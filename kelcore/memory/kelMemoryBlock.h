#ifndef KELCORE_MEMORY_KELMEMORYBLOCK_H
#define KELCORE_MEMORY_KELMEMORYBLOCK_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// The record of one block of a linked buffer. It does not own its data: copies share the
// pointer and the destructor frees nothing.
class KELCORE_API kelMemoryBlock {
public:
    kelMemoryBlock();
    kelMemoryBlock(kelMemoryBlock const& other);
    kelMemoryBlock& operator=(kelMemoryBlock const& other);
    virtual ~kelMemoryBlock();

    // All three fields equal.
    bool operator==(kelMemoryBlock const& other) const;
    bool operator!=(kelMemoryBlock const& other) const;
    // By used alone.
    bool operator<(kelMemoryBlock const& other) const;

    UInt8* data;
    UInt32 capacity;
    // The highest written end, in bytes from the block's start.
    UInt32 used;
};

} // namespace KELKIT

#endif
