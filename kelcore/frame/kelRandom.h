#ifndef KELCORE_FRAME_KELRANDOM_H
#define KELCORE_FRAME_KELRANDOM_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The library's one random generator: a Mersenne Twister (MT19937), seeded once when the
// library loads from the system's random source (falling back to the time and the processor
// clock). There is no way to set a seed. The state is shared and not locked: callers on several
// threads must exclude each other.
class KELCORE_API kelRandom {
public:
    kelRandom() = default;
    kelRandom(kelRandom const&) = default;
    kelRandom& operator=(kelRandom const&) = default;
    virtual ~kelRandom();

    static UInt32 getUInt32();
    // From min to max, both included, without modulo bias (values outside are drawn again).
    // The span is max - min in 32 bits, so min above max wraps around.
    static UInt32 getUInt32(UInt32 min, UInt32 max);
    // From 0.0 to 1.0, both included.
    static double getDouble();
    static double getDouble(double min, double max);
    // Clears out, then appends length characters drawn from the alphabet; a null or empty
    // alphabet appends nothing.
    static void getName(kelString& out, UInt32 length, char const* alphabet);
    static void getName(kelString& out, UInt32 length);
};

} // namespace KELKIT

#endif
