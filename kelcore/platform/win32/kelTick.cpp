#include <kelcore/platform/kelTick.h>

#include <windows.h>

namespace KELKIT {
namespace platform {

UInt32 tickMilliseconds() {
    // GetTickCount64 would not wrap, but the 32-bit wrap is what callers are written for.
    return static_cast<UInt32>(::GetTickCount());
}

} // namespace platform
} // namespace KELKIT
