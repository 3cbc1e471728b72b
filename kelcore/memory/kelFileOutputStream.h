#ifndef KELCORE_MEMORY_KELFILEOUTPUTSTREAM_H
#define KELCORE_MEMORY_KELFILEOUTPUTSTREAM_H

#include <kelcore/memory/kelOutputStream.h>

#include <cstdio>
#include <memory>

namespace KELKIT {

// Writes a file from its start, making it or emptying it first. size() counts what the stream
// took (a short write shows there), stays after close(), and holds at 4294967295 beyond that.
//
// Copies share the open file and each counts its own writes. close() flushes and lets go of
// this object's share; the file closes when the last object sharing it closes or goes, so it
// is closed exactly once.
class KELCORE_API kelFileOutputStream : public kelOutputStream {
public:
    // Throws kelException "Unable to create file output stream!" when the file cannot be opened.
    explicit kelFileOutputStream(char const* path);
    kelFileOutputStream(kelFileOutputStream const& other) = default;
    kelFileOutputStream& operator=(kelFileOutputStream const& other) = default;
    ~kelFileOutputStream() override;

    UInt32 size() override;
    // 4294967295 in any state.
    UInt32 available() override;
    void close() override;
    bool isClosed() override;
    void flush() override;
    UInt32 write(UInt8 const* data, UInt32 size) override;
    UInt32 write(UInt8 value) override;

private:
    std::shared_ptr<std::FILE> mFile;
    UInt64 mWritten;
};

} // namespace KELKIT

#endif
