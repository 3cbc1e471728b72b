#ifndef KELCORE_PLATFORM_KELFILESTREAM_H
#define KELCORE_PLATFORM_KELFILESTREAM_H

// Internal: C streams on the library's backslash paths, with 64-bit positions.

#include <cstdio>

namespace KELKIT {
namespace platform {

// fopen of a library path (backslashes as separators); null on failure.
std::FILE* openFileStream(char const* path, char const* mode);
// fseek from the start (whence SEEK_SET) or the end (SEEK_END); false on failure.
bool seekFileStream(std::FILE* stream, long long offset, int whence);
// ftell; -1 on failure.
long long tellFileStream(std::FILE* stream);

} // namespace platform
} // namespace KELKIT

#endif
