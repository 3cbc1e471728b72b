#ifndef KELCORE_PLATFORM_KELFILEHANDLE_H
#define KELCORE_PLATFORM_KELFILEHANDLE_H

// Internal: unbuffered file handles of the system (a descriptor on POSIX, a HANDLE on Windows).

#include <kelcore/frame/kelTypes.h>

#include <cstdint>

namespace KELKIT {
namespace platform {

using FileHandle = std::intptr_t;
constexpr FileHandle kNoFileHandle = -1;

enum class FileAccess { Read, Write, ReadWrite };

// What happens to a missing or existing file at open.
enum class FileCreation {
    OpenAlways,   // open; a missing file is created empty; never truncates
    OpenExisting, // open; a missing file fails
    CreateAlways, // create or truncate
    CreateNew     // create; an existing item fails
};

// What other openers may do meanwhile (Windows only; POSIX has no sharing modes).
enum FileShare : unsigned { kShareNone = 0, kShareRead = 1, kShareWrite = 2 };

enum class SeekOrigin { Begin, Current, End };

// Opens a file (never a folder: that fails on both platforms). kNoFileHandle on failure.
FileHandle openFileHandle(char const* path, FileAccess access, FileCreation creation,
                          unsigned share);
void closeFileHandle(FileHandle handle);
// One system call each; the count it reports (0 on failure).
UInt32 readFileHandle(FileHandle handle, void* buffer, UInt32 size);
UInt32 writeFileHandle(FileHandle handle, void const* buffer, UInt32 size);
// Moves the position and gives the new one; false on failure.
bool seekFileHandle(FileHandle handle, SInt64 distance, SeekOrigin origin, UInt64& position);
bool getFileHandleSize(FileHandle handle, UInt64& size);

} // namespace platform
} // namespace KELKIT

#endif
