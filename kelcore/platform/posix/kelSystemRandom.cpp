#include <kelcore/platform/kelSystemRandom.h>

#include <cstdio>

namespace KELKIT {
namespace platform {

bool readSystemRandom(void* buffer, std::size_t size) {
    std::FILE* source = std::fopen("/dev/urandom", "rb");
    if (source == nullptr) {
        return false;
    }
    std::size_t const got = std::fread(buffer, 1, size, source);
    std::fclose(source);
    return got == size;
}

} // namespace platform
} // namespace KELKIT
