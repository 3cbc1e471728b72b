#ifndef KELCORE_PLATFORM_POSIX_KELITEMAT_H
#define KELCORE_PLATFORM_POSIX_KELITEMAT_H

// Internal to the POSIX backend: reaching an item by its name in an open folder (or AT_FDCWD
// and a path). The openers never go through a link at that name; each gives a descriptor, or -1
// with errno set.

#include <cstddef>
#include <vector>

namespace KELKIT {
namespace platform {

// A regular file, for reading and writing in place (no creation, no truncation).
int openForOverwriteAt(int folder, char const* name);
// Anything but a folder, for reading.
int openForReadingAt(int folder, char const* name);
// The text of the link at name and a 0 byte after it. sizeHint is the link's size from lstat,
// which some file systems leave at 0: the buffer grows until the text fits. False on failure.
bool readLinkAt(int folder, char const* name, std::size_t sizeHint, std::vector<char>& text);

} // namespace platform
} // namespace KELKIT

#endif
