#ifndef KELCORE_MEMORY_KELBUFFERINPUTSTREAM_H
#define KELCORE_MEMORY_KELBUFFERINPUTSTREAM_H

#include <kelcore/memory/kelInputStream.h>

namespace KELKIT {

// Reads the caller's memory, which it never copies, allocates or frees; a copy reads the same
// memory from the same position on. size() is what lies behind the position, also after
// close(), which only lets go of the memory. A null buffer is a closed stream from the start.
class KELCORE_API kelBufferInputStream : public kelInputStream {
public:
    kelBufferInputStream(UInt8 const* buffer, UInt32 size);
    kelBufferInputStream(kelBufferInputStream const& other) = default;
    kelBufferInputStream& operator=(kelBufferInputStream const& other) = default;
    ~kelBufferInputStream() override;

    UInt32 size() override;
    void close() override;
    bool isClosed() override;
    UInt32 read(UInt8* data, UInt32 size) override;
    UInt8 read() override;
    UInt32 skip(UInt32 size) override;

private:
    UInt8 const* mBuffer;
    UInt32 mSize;
    UInt32 mPosition;
};

} // namespace KELKIT

#endif
