#ifndef KELCORE_MEMORY_KELBITADAPTOR_H
#define KELCORE_MEMORY_KELBITADAPTOR_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A bit-addressed view of a caller's block of bytes. Bit i lies in byte i / 8 at the weight
// 1 << (i % 8): bit 0 is the least significant bit of byte 0.
//
// The view neither owns nor allocates the block; copies view the same block. Every access is
// checked against the block: a bit outside it (or any bit of a null block) reads as false, and
// writing it changes nothing.
class KELCORE_API kelBitAdaptor {
public:
    kelBitAdaptor();
    kelBitAdaptor(void* buffer, UInt32 size);
    kelBitAdaptor(kelBitAdaptor const& other);
    kelBitAdaptor& operator=(kelBitAdaptor const& other);
    virtual ~kelBitAdaptor();

    // Points the view at another block; the caller keeps size bytes there.
    virtual void setBuffer(void* buffer, UInt32 size);
    virtual unsigned char const* getBuffer() const;
    virtual UInt32 getBufferSize() const;

    bool getBit(UInt32 index) const;
    void setBit(UInt32 index, bool value);

    // byte = index / 8, mask = 1 << (index % 8).
    static void getOffsets(UInt32 index, UInt32& byte, unsigned char& mask);
    // False when the bit's byte is not below size or the buffer is null.
    static bool getBit(UInt32 index, unsigned char const* buffer, UInt32 size);
    // Sets or clears the one bit, leaving the rest of its byte; nothing when the byte is not
    // below size or the buffer is null.
    static void setBit(UInt32 index, unsigned char* buffer, UInt32 size, bool value);

private:
    unsigned char* mBuffer;
    UInt32 mSize;
};

} // namespace KELKIT

#endif
