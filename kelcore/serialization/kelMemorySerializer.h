#ifndef KELCORE_SERIALIZATION_KELMEMORYSERIALIZER_H
#define KELCORE_SERIALIZATION_KELMEMORYSERIALIZER_H

#include <kelcore/serialization/kelAbstractSerializer.h>

namespace KELKIT {

// A serializer inside a block that the caller owns; the block is never allocated, grown or
// freed here. Copies share the block.
//
// A write is stored only while it ends strictly before the block's end, so a block of N bytes
// takes at most N-1 bytes through writes (loadData can fill all N); a write that does not fit
// is dropped whole and silently. A read is limited by the block's size, not by what was
// written; a read past it throws kelException and moves nothing.
class KELCORE_API kelMemorySerializer : public kelAbstractSerializer {
public:
    kelMemorySerializer();
    kelMemorySerializer(UInt8* buffer, UInt32 size);
    kelMemorySerializer(const kelMemorySerializer& other);
    ~kelMemorySerializer() override;

    kelMemorySerializer& operator=(const kelMemorySerializer& other);
    // Writes the other's whole block, not only what was written into it.
    kelMemorySerializer& operator+=(const kelMemorySerializer& other);

    // The fixed-width values go straight into the block while this object is exactly a
    // kelMemorySerializer and the block has room for them; otherwise, and in any derived class,
    // they take the path through serializeData and deserializeData.
    using kelAbstractSerializer::deserialize;
    using kelAbstractSerializer::serialize;
    void serialize(Float64 value) override;
    void serialize(Float32 value) override;
    void serialize(SInt64 value) override;
    void serialize(SInt32 value) override;
    void serialize(SInt16 value) override;
    void serialize(SInt8 value) override;
    void serialize(UInt64 value) override;
    void serialize(UInt32 value) override;
    void serialize(UInt16 value) override;
    void serialize(UInt8 value) override;
    void serialize(bool value) override;
    void deserialize(Float64& value) override;
    void deserialize(Float32& value) override;
    void deserialize(SInt64& value) override;
    void deserialize(SInt32& value) override;
    void deserialize(SInt16& value) override;
    void deserialize(SInt8& value) override;
    void deserialize(UInt64& value) override;
    void deserialize(UInt32& value) override;
    void deserialize(UInt16& value) override;
    void deserialize(UInt8& value) override;
    void deserialize(bool& value) override;

    void serializeData(const void* data, UInt32 size) override;
    void deserializeData(void* data, UInt32 size) override;

    virtual const UInt8* getBuffer() const;
    virtual UInt8* getBuffer();

    UInt32 getSize() const override;
    UInt32 getRemainingSize() const override;
    // Zeroes the whole block, also bytes never written through this object.
    void clearData() override;
    // Clears, then copies as much of the data as the block holds.
    void loadData(const UInt8* data, UInt32 size) override;

private:
    UInt8* mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    UInt32 mBufferSize;
};

} // namespace KELKIT

#endif
