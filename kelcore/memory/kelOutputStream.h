#ifndef KELCORE_MEMORY_KELOUTPUTSTREAM_H
#define KELCORE_MEMORY_KELOUTPUTSTREAM_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A sequential sink of bytes. Failures show as counts: a closed or full stream takes 0 bytes,
// or fewer than offered.
class KELCORE_API kelOutputStream {
public:
    kelOutputStream() = default;
    kelOutputStream(kelOutputStream const&) = default;
    kelOutputStream& operator=(kelOutputStream const&) = default;
    virtual ~kelOutputStream();

    // The bytes written so far.
    virtual UInt32 size() = 0;
    // The bytes that can still be written.
    virtual UInt32 available() = 0;
    virtual void close() = 0;
    virtual bool isClosed() = 0;
    virtual void flush() = 0;
    // The count of bytes written.
    virtual UInt32 write(UInt8 const* data, UInt32 size) = 0;
    // 1, or 0 when the byte was not taken.
    virtual UInt32 write(UInt8 value) = 0;
};

} // namespace KELKIT

#endif
