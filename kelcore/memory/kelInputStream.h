#ifndef KELCORE_MEMORY_KELINPUTSTREAM_H
#define KELCORE_MEMORY_KELINPUTSTREAM_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A sequential source of bytes. Failures show as counts: a closed stream, or one at its end,
// gives 0 or fewer bytes than asked.
class KELCORE_API kelInputStream {
public:
    kelInputStream() = default;
    kelInputStream(kelInputStream const&) = default;
    kelInputStream& operator=(kelInputStream const&) = default;
    virtual ~kelInputStream();

    // The bytes still to be read.
    virtual UInt32 size() = 0;
    virtual void close() = 0;
    virtual bool isClosed() = 0;
    // The count of bytes read into data.
    virtual UInt32 read(UInt8* data, UInt32 size) = 0;
    // The next byte; 0 also at the end or when closed, so ask size() first.
    virtual UInt8 read() = 0;
    // The count of bytes skipped.
    virtual UInt32 skip(UInt32 size) = 0;
};

} // namespace KELKIT

#endif
