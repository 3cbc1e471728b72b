#ifndef KELCORE_MEMORY_KELMEMORYBUFFER_H
#define KELCORE_MEMORY_KELMEMORYBUFFER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/serialization/kelISerializable.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// An owned block of bytes of exact size: no spare capacity that any operation shows (a memory
// dumper's appends keep hidden room behind the bytes) and no cursor. Bytes of a new or grown
// block are not initialised.
//
// A refused allocation is the only failure and is reported by the bool results: after a
// failed reallocate, set(data, size), add or assignment the old content is still there; after
// a failed allocate the buffer is empty. Nothing here throws except a serializer passing
// through deserializeFrom.
class KELCORE_API kelMemoryBuffer : public virtual kelISerializable {
public:
    kelMemoryBuffer();
    explicit kelMemoryBuffer(UInt32 size);
    kelMemoryBuffer(kelMemoryBuffer const& other);
    virtual ~kelMemoryBuffer();

    virtual void clear();
    virtual UInt8 const* getBuffer() const;
    virtual UInt8* getBuffer();
    // Drops the content, then a new block of size bytes (allocate(0) gives an empty block).
    virtual bool allocate(UInt32 size);
    // A new block keeping the first min(old, size) bytes; the block always changes.
    virtual bool reallocate(UInt32 size);
    virtual UInt32 getSize() const;
    // Copies exactly getSize() bytes from data; false without a block.
    virtual bool set(UInt8 const* data, UInt32 size);
    virtual bool set(UInt8 const* data);
    // Appends the other's bytes. A buffer may add itself.
    virtual bool add(kelMemoryBuffer const& other);
    // The bytes up to the first zero byte, or all of them.
    virtual kelString toString() const;
    // Reads of exact width: the bytes least significant first when the size is exactly the
    // width of the type, else 0.
    virtual UInt8 toUInt8() const;
    virtual SInt8 toSInt8() const;
    virtual UInt16 toUInt16() const;
    virtual SInt16 toSInt16() const;
    virtual UInt32 toUInt32() const;
    virtual SInt32 toSInt32() const;
    virtual UInt64 toUInt64() const;
    virtual SInt64 toSInt64() const;
    virtual Float32 toFloat32() const;
    virtual Float64 toFloat64() const;

    // Both compare only buffers with content: two empty buffers are neither equal nor unequal.
    bool operator==(kelMemoryBuffer const& other) const;
    bool operator!=(kelMemoryBuffer const& other) const;
    kelMemoryBuffer& operator=(kelMemoryBuffer const& other);
    // Unchecked.
    UInt8& operator[](UInt32 index);
    UInt8 const& operator[](UInt32 index) const;

    // The size as UInt32, then the bytes.
    void serializeTo(kelISerializer& serializer) const override;
    // Replaces the content. A large stored size is read in pieces of 1 MiB, the block growing
    // with them, so that a hostile size fails on the missing bytes rather than on a huge
    // allocation; when the serializer throws, the buffer holds what was read so far.
    void deserializeFrom(kelISerializer& serializer) override;

private:
    friend class kelMemoryDumper;

    // Appends with room to spare behind the bytes, so that a run of small appends costs
    // amortised constant time per byte. The spare room never shows: getSize() and every other
    // operation see exactly the bytes. Same failure rule as add.
    bool appendWithSpare(UInt8 const* data, UInt32 size);

    UInt8* mBuffer;
    UInt32 mSize;
    // The block's byte count when appendWithSpare made it larger than mSize, else 0. Every
    // change of the block goes through clear(), which resets it.
    UInt32 mCapacity;
};

} // namespace KELKIT

#endif
