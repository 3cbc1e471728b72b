#ifndef KELCORE_PLATFORM_KELTEXTREADER_H
#define KELCORE_PLATFORM_KELTEXTREADER_H

// Internal: reading a file as text, line by line, each line end delivered as one line feed.

#include <kelcore/frame/kelTypes.h>

#include <cstdio>

namespace KELKIT {
namespace platform {

// Windows reads through the runtime's text mode. POSIX reads the bytes and turns each carriage
// return followed by a line feed into the line feed alone, so both give the same lines; the
// Windows runtime's end-of-file byte (26) has no meaning on POSIX.
class TextReader {
public:
    TextReader();
    ~TextReader();
    TextReader(TextReader const&) = delete;
    TextReader& operator=(TextReader const&) = delete;

    // False for a missing file or a folder.
    bool open(char const* path);
    // From the start of the file, in bytes.
    bool seek(UInt64 offset);
    // As fgets: at most size - 1 characters, up to and including a line feed, then a 0 byte.
    // False when nothing is left to read (buffer then unspecified).
    bool readLine(char* buffer, int size);
    void close();

private:
    // The file at a native path opened for reading as text; null for a missing file or a
    // folder. Each platform's own.
    static std::FILE* openNative(char const* native);

    std::FILE* mFile;
};

} // namespace platform
} // namespace KELKIT

#endif
