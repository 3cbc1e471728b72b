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
// The file's length without moving the stream, so that what it has buffered for reading stays;
// false on failure or when written bytes may still wait in the stream's buffer. Windows cannot
// tell the latter: ask only when no write went into the stream since its last seek.
bool fileStreamLength(std::FILE* stream, long long& length);

} // namespace platform
} // namespace KELKIT

#endif
