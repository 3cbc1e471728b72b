#ifndef KELCORE_PLATFORM_KELSHAREDBLOCK_H
#define KELCORE_PLATFORM_KELSHAREDBLOCK_H

// Internal: a block of memory that processes share by name.

#include <cstdint>

namespace KELKIT {
namespace platform {

// Defined by each platform around its native handles.
struct SharedBlock;

// Attaches to the block of that name, at the size its creator gave it, or creates it: size bytes
// taken up to whole pages, all zero before any other process can attach. The block lives while
// some live process has it open, however the others ended. Null on failure: a null name, a size
// of 0, and a new block whose whole pages would not fit 32 bits are refused.
SharedBlock* openSharedBlock(char const* name, std::uint32_t size);
// Readable and writable, all of getSharedBlockSize bytes.
unsigned char* getSharedBlockView(SharedBlock const& block);
// The size of the mapped region: whole pages; 0 when the system cannot say.
std::uint32_t getSharedBlockSize(SharedBlock const& block);
// Unmaps, closes and frees block; true when the system released both the view and the block.
bool closeSharedBlock(SharedBlock* block);
// Whether a block of that name is open in some live process.
bool sharedBlockExists(char const* name);

} // namespace platform
} // namespace KELKIT

#endif
