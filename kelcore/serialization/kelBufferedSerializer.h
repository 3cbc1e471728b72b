#ifndef KELCORE_SERIALIZATION_KELBUFFEREDSERIALIZER_H
#define KELCORE_SERIALIZATION_KELBUFFEREDSERIALIZER_H

#include <kelcore/memory/kelLinkedBuffer.h>
#include <kelcore/serialization/kelAbstractSerializer.h>

namespace KELKIT {

// A serializer over a linked buffer, which grows without copying what it holds.
//
// Nothing here throws: a write the store cannot take leaves the write position; a read where
// the chain holds nothing leaves destination and position; a read that the chain ends in the
// middle copies what exists and still moves the position by the whole size. A read past
// getSize() inside the last block returns bytes that were never written.
class KELCORE_API kelBufferedSerializer : public kelAbstractSerializer {
public:
    kelBufferedSerializer();
    // Copies the blocks and both positions.
    kelBufferedSerializer(kelBufferedSerializer const& other);
    kelBufferedSerializer& operator=(kelBufferedSerializer const& other);
    ~kelBufferedSerializer() override;

    kelLinkedBuffer const* getLinkedBuffer() const;

    // The store's size cut to 32 bits.
    UInt32 getSize() const override;
    UInt32 getRemainingSize() const override;
    void clearData() override;
    void loadData(UInt8 const* data, UInt32 size) override;

    // The fixed-width values go straight into the block while this object is exactly a
    // kelBufferedSerializer and the block has room for them; otherwise, and in any derived class,
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

    void serializeData(void const* data, UInt32 size) override;
    void deserializeData(void* data, UInt32 size) override;

private:
    bool copyBuffer(UInt8 const* data, UInt32 size);

    void openWriteWindow();
    void openReadWindow();

    kelLinkedBuffer mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    // Where fixed-width values go without asking the store: the last block of the chain while
    // the write position stands at the end of its data, and the block that holds the read
    // position with the offset in it. Null when unknown; set again by the general path.
    kelMemoryBlock* mWriteBlock;
    kelMemoryBlock const* mReadBlock;
    UInt32 mReadOffset;
};

} // namespace KELKIT

#endif
