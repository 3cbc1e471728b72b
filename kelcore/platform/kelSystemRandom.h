#ifndef KELCORE_PLATFORM_KELSYSTEMRANDOM_H
#define KELCORE_PLATFORM_KELSYSTEMRANDOM_H

// Internal: the operating system's source of random bytes.

#include <cstddef>

namespace KELKIT {
namespace platform {

// Fills the whole buffer from the system's random source; false if it cannot.
bool readSystemRandom(void* buffer, std::size_t size);

} // namespace platform
} // namespace KELKIT

#endif
