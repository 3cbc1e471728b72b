#ifndef KELCORE_MEMORY_KELFILEINPUTSTREAM_H
#define KELCORE_MEMORY_KELFILEINPUTSTREAM_H

#include <kelcore/memory/kelInputStream.h>

#include <cstdio>
#include <memory>

namespace KELKIT {

// Reads a file from its start. The size is measured when the file opens: size() and skip()
// count from it, so growth of the file afterwards is not seen, while read() takes whatever the
// file gives. size() says 4294967295 while more than that is left.
//
// Copies share the open file. close() lets go of this object's share; the file closes when
// the last object sharing it closes or goes, so it is closed exactly once.
class KELCORE_API kelFileInputStream : public kelInputStream {
public:
    // Throws kelException "Unable to create file input stream!" when the file cannot be opened.
    explicit kelFileInputStream(char const* path);
    kelFileInputStream(kelFileInputStream const& other) = default;
    kelFileInputStream& operator=(kelFileInputStream const& other) = default;
    ~kelFileInputStream() override;

    // 0 when closed.
    UInt32 size() override;
    void close() override;
    bool isClosed() override;
    UInt32 read(UInt8* data, UInt32 size) override;
    UInt8 read() override;
    // Never beyond the size measured at opening.
    UInt32 skip(UInt32 size) override;

private:
    std::shared_ptr<std::FILE> mFile;
    UInt64 mFileSize;
};

} // namespace KELKIT

#endif
