#ifndef KELCORE_MEMORY_KELLISTMEMORYBLOCK_H
#define KELCORE_MEMORY_KELLISTMEMORYBLOCK_H

#include <kelcore/containers/kelList.h>
#include <kelcore/memory/kelMemoryBlock.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListMemoryBlock, kelMemoryBlock)

} // namespace KELKIT

#endif
