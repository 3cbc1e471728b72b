#ifndef KELCORE_PLATFORM_POSIX_KELDESCRIPTOR_H
#define KELCORE_PLATFORM_POSIX_KELDESCRIPTOR_H

// Internal to the POSIX backend: an open descriptor that is closed when it goes.

#include <unistd.h>

namespace KELKIT {
namespace platform {
namespace posix {

struct Descriptor {
    Descriptor() = default;
    explicit Descriptor(int value) : fd(value) {}
    ~Descriptor() {
        if (fd >= 0) {
            ::close(fd);
        }
    }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    int fd = -1;
};

} // namespace posix
} // namespace platform
} // namespace KELKIT

#endif
