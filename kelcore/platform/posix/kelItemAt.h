#ifndef KELCORE_PLATFORM_POSIX_KELITEMAT_H
#define KELCORE_PLATFORM_POSIX_KELITEMAT_H

// Internal to the POSIX backend: opening an item by its name in an open folder (or AT_FDCWD
// and a path), never through a link at that name. Each gives a descriptor, or -1 with errno set.

namespace KELKIT {
namespace platform {

// A regular file, for reading and writing in place (no creation, no truncation).
int openForOverwriteAt(int folder, char const* name);
// Anything but a folder, for reading.
int openForReadingAt(int folder, char const* name);

} // namespace platform
} // namespace KELKIT

#endif
