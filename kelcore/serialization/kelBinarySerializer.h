#ifndef KELCORE_SERIALIZATION_KELBINARYSERIALIZER_H
#define KELCORE_SERIALIZATION_KELBINARYSERIALIZER_H

#include <kelcore/serialization/kelAbstractSerializer.h>

namespace KELKIT {

// A serializer over a block it owns and grows by a fixed chunk (1024 bytes unless set).
//
// A read is limited by the capacity of the block, not by what was written: a serializer built
// from bytes has getSize() 0 and still reads them. A read past the capacity throws kelException
// and moves nothing. A write that cannot get memory is dropped silently.
class KELCORE_API kelBinarySerializer : public kelAbstractSerializer {
public:
    kelBinarySerializer();
    // Copies the bytes into a block of exactly size bytes; both positions stay 0.
    kelBinarySerializer(const UInt8* data, UInt32 size);
    // Copies the other's whole block; both positions stay 0 and the chunk is 1024.
    kelBinarySerializer(const kelBinarySerializer& other);
    ~kelBinarySerializer() override;

    // Clears first, then copies the other's block and positions. Assigning an object to itself
    // therefore leaves it empty.
    kelBinarySerializer& operator=(const kelBinarySerializer& other);
    // Appends the bytes the other has written; s += s doubles the content.
    kelBinarySerializer& operator+=(const kelBinarySerializer& other);

    // The fixed-width values go straight into the block while this object is exactly a
    // kelBinarySerializer and the block has room for them; otherwise, and in any derived class,
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

    // A chunk of 0 is ignored.
    virtual void setAllocationChunk(UInt32 chunk);
    // The block, or null; valid until the next growth or clearData().
    virtual const UInt8* getBufferC() const;
    virtual UInt8* getBuffer();

    UInt32 getSize() const override;
    UInt32 getRemainingSize() const override;
    void clearData() override;
    void loadData(const UInt8* data, UInt32 size) override;

private:
    bool copyBuffer(const UInt8* data, UInt32 size);
    bool resize(UInt32 size);

    UInt32 mAllocationChunk;
    UInt8* mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    UInt32 mCapacity;
};

} // namespace KELKIT

#endif
