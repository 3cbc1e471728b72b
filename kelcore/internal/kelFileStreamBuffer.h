#ifndef KELCORE_INTERNAL_KELFILESTREAMBUFFER_H
#define KELCORE_INTERNAL_KELFILESTREAMBUFFER_H

// Internal: a C stream shared between copies of the object that opened it, with a buffer of
// its own.

#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>

namespace KELKIT {
namespace internal {

// Whole-file streams move data in large runs: a buffer of this size (instead of the C library's
// default, one disk block) cuts the system calls per megabyte several times over.
constexpr std::size_t FILE_STREAM_BUFFER = 64 * 1024;

// Takes over an open stream: it closes, and its buffer is freed, when the last share goes.
// Without memory for the buffer the stream keeps the C library's own.
inline std::shared_ptr<std::FILE> shareFileStream(std::FILE* file) {
    char* buffer = new (std::nothrow) char[FILE_STREAM_BUFFER];
    if (buffer != nullptr && std::setvbuf(file, buffer, _IOFBF, FILE_STREAM_BUFFER) != 0) {
        delete[] buffer;
        buffer = nullptr;
    }
    return std::shared_ptr<std::FILE>(file, [buffer](std::FILE* stream) {
        std::fclose(stream);
        delete[] buffer;
    });
}

} // namespace internal
} // namespace KELKIT

#endif
