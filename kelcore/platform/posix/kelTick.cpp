#include <kelcore/platform/kelTick.h>

#include <time.h>

namespace KELKIT {
namespace platform {

UInt32 tickMilliseconds() {
    struct timespec now;
    if (::clock_gettime(CLOCK_MONOTONIC, &now) != 0) {
        return 0;
    }
    UInt64 const ms =
        static_cast<UInt64>(now.tv_sec) * 1000u + static_cast<UInt64>(now.tv_nsec) / 1000000u;
    return static_cast<UInt32>(ms & 0xFFFFFFFFu);
}

} // namespace platform
} // namespace KELKIT
