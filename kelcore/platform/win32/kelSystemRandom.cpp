#include <kelcore/platform/kelSystemRandom.h>

#include <windows.h>

#include <bcrypt.h>

namespace KELKIT {
namespace platform {

bool readSystemRandom(void* buffer, std::size_t size) {
    if (size > 0xFFFFFFFFu) {
        return false;
    }
    NTSTATUS const status =
        BCryptGenRandom(nullptr, static_cast<PUCHAR>(buffer), static_cast<ULONG>(size),
                        BCRYPT_USE_SYSTEM_PREFERRED_RNG);
    return status >= 0;
}

} // namespace platform
} // namespace KELKIT
