#ifndef KELCORE_MEMORY_KELBUFFEROUTPUTSTREAM_H
#define KELCORE_MEMORY_KELBUFFEROUTPUTSTREAM_H

#include <kelcore/memory/kelOutputStream.h>

namespace KELKIT {

// Writes into the caller's memory, up to its last byte, and never allocates or frees it; a
// copy writes the same memory from the same position on. close() lets go of the memory and
// keeps the position. A null buffer is a closed stream from the start.
class KELCORE_API kelBufferOutputStream : public kelOutputStream {
public:
    kelBufferOutputStream(UInt8* buffer, UInt32 size);
    kelBufferOutputStream(kelBufferOutputStream const& other) = default;
    kelBufferOutputStream& operator=(kelBufferOutputStream const& other) = default;
    ~kelBufferOutputStream() override;

    // The position.
    UInt32 size() override;
    // The room behind the position, also when closed.
    UInt32 available() override;
    void close() override;
    bool isClosed() override;
    // Nothing to do.
    void flush() override;
    UInt32 write(UInt8 const* data, UInt32 size) override;
    UInt32 write(UInt8 value) override;

private:
    UInt8* mBuffer;
    UInt32 mSize;
    UInt32 mPosition;
};

} // namespace KELKIT

#endif
