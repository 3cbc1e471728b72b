#ifndef KELCORE_SERIALIZATION_KELBINARYSERIALIZER_H
#define KELCORE_SERIALIZATION_KELBINARYSERIALIZER_H

#include <kelcore/serialization/kelAbstractSerializer.h>

#include <cstring>

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

    // The fixed-width values are inline so that a run of them costs no call: each goes straight
    // into the block while it has room and this object is exactly a kelBinarySerializer;
    // otherwise, and in any derived class, through serializeData and deserializeData.
    KEL_SERIALIZER_INLINE_FORMS

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
    void openDirectPath();
    template <typename T>
    void put(T value);
    template <typename T>
    void get(T& value);

    UInt32 mAllocationChunk;
    UInt8* mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    UInt32 mCapacity;
    // The part of the block the inline forms may use: 0 until the general path has found this
    // object to be exactly a kelBinarySerializer, then the capacity it saw (never more than the
    // present one: the block only grows until clearData, which sets 0 again).
    UInt32 mDirectCapacity;
};

template <typename T>
inline void kelBinarySerializer::put(T value) {
    if (!storeBefore(mBuffer, mWritePosition, mDirectCapacity, value)) {
        kelAbstractSerializer::serialize(value);
    }
}

template <typename T>
inline void kelBinarySerializer::get(T& value) {
    if (!fetchWithin(mBuffer, mReadPosition, mDirectCapacity, value)) {
        kelAbstractSerializer::deserialize(value);
    }
}

} // namespace KELKIT

#endif
