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

    void serializeData(void const* data, UInt32 size) override;
    void deserializeData(void* data, UInt32 size) override;

private:
    bool copyBuffer(UInt8 const* data, UInt32 size);

    kelLinkedBuffer mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
};

} // namespace KELKIT

#endif
