#ifndef KELCORE_PLATFORM_KELFILECONTENT_H
#define KELCORE_PLATFORM_KELFILECONTENT_H

// Internal: moving file contents in bulk (copying between open files, in the system's fastest
// way) and opening files for the content operations without writing through a link.

#include <kelcore/frame/kelTypes.h>
#include <kelcore/platform/kelFileHandle.h>

#include <vector>

namespace KELKIT {
namespace platform {

// Opens an existing regular file to be overwritten in place: read and write, neither created nor
// truncated. A link (never followed), a folder, a device or a FIFO gives kNoFileHandle, as does
// a file this process may not write.
FileHandle openForOverwrite(char const* path);

// Opens target to receive a copy of the open source: created, or emptied when it exists. Gives
// kNoFileHandle, with target untouched, when target is a link (never written through), a folder,
// or the source file itself under any name (emptying it would lose the source).
FileHandle openCopyTarget(char const* path, FileHandle source);

// Copies from the current position of one handle to that of another: in the kernel where it can
// (POSIX copy_file_range), otherwise through a buffer of the channel's own.
class CopyChannel {
public:
    // bufferSize: the most a step moves through the buffer (at least 1).
    CopyChannel(FileHandle source, FileHandle target, UInt32 bufferSize);
    // Moves up to count bytes; moved is what was moved, 0 only at the source's end. False on a
    // read or write error, or a write that takes nothing (a full disk).
    bool move(UInt64 count, UInt64& moved);

private:
    bool moveThroughBuffer(UInt64 count, UInt64& moved);

    FileHandle mSource;
    FileHandle mTarget;
    UInt32 mBufferSize;
    bool mInKernel;
    std::vector<unsigned char> mBuffer;
};

// Writes what the system holds of the file to the disk; false when it cannot.
bool flushFileHandle(FileHandle handle);

// Ends a copy that failed so that no target looks complete: empties the file behind the handle,
// closes the handle and removes path if it still names that file.
void discardCopyTarget(FileHandle target, char const* path);

} // namespace platform
} // namespace KELKIT

#endif
