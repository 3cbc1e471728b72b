#ifndef KELCORE_INTERNAL_KELRANDOMSEEDING_H
#define KELCORE_INTERNAL_KELRANDOMSEEDING_H

// Internal, not installed: reseeds the shared generator so that tests can check its output
// against published reference sequences. Applications cannot reach it.

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {
namespace internal {

KELCORE_API void seedRandomWithKey(UInt32 const* key, UInt32 length);
KELCORE_API void seedRandomWithValue(UInt32 seed);
// The single seed that the fallback computes from the time and the processor clock.
KELCORE_API UInt32 fallbackRandomSeed();

} // namespace internal
} // namespace KELKIT

#endif
