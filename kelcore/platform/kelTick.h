#ifndef KELCORE_PLATFORM_KELTICK_H
#define KELCORE_PLATFORM_KELTICK_H

// Internal: the system's millisecond tick.

#include <kelcore/frame/kelTypes.h>

namespace KELKIT {
namespace platform {

// Milliseconds of a monotonic clock, cut to 32 bits: it wraps about every 49.7 days, so only
// differences taken in 32-bit unsigned arithmetic mean anything.
UInt32 tickMilliseconds();

} // namespace platform
} // namespace KELKIT

#endif
