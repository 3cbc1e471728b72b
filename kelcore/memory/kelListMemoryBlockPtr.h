#ifndef KELCORE_MEMORY_KELLISTMEMORYBLOCKPTR_H
#define KELCORE_MEMORY_KELLISTMEMORYBLOCKPTR_H

#include <kelcore/containers/kelList.h>
#include <kelcore/memory/kelMemoryBlock.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListMemoryBlockPtr, kelMemoryBlock*)

} // namespace KELKIT

#endif
