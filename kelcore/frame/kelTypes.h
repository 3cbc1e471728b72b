#ifndef KELCORE_FRAME_KELTYPES_H
#define KELCORE_FRAME_KELTYPES_H

#include <climits>
#include <cstdint>

namespace KELKIT {

// Fixed widths on every platform. The 32-bit names are int-based on both Linux and Windows, so
// that a native 64-bit long never silently picks a 32-bit overload, and overload resolution is
// the same on both platforms.
typedef unsigned char UInt8;
typedef unsigned short UInt16;
typedef std::uint32_t UInt32;
typedef unsigned long long UInt64;
typedef char SInt8;
typedef short SInt16;
typedef std::int32_t SInt32;
typedef long long SInt64;
typedef float Float32;
typedef double Float64;

static_assert(sizeof(UInt16) == 2 && sizeof(SInt16) == 2, "16-bit types");
static_assert(sizeof(UInt32) == 4 && sizeof(SInt32) == 4, "32-bit types");
static_assert(sizeof(UInt64) == 8 && sizeof(SInt64) == 8, "64-bit types");
static_assert(sizeof(Float32) == 4 && sizeof(Float64) == 8, "IEEE 754 floating point");
static_assert(CHAR_BIT == 8 && CHAR_MIN < 0, "char is a signed 8-bit byte");

} // namespace KELKIT

#endif
