#ifndef KELCORE_SERIALIZATION_KELMEMORYSERIALIZER_H
#define KELCORE_SERIALIZATION_KELMEMORYSERIALIZER_H

#include <kelcore/serialization/kelAbstractSerializer.h>

#include <cstring>

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

    // The fixed-width values are inline so that a run of them costs no call: each goes straight
    // into the block while it has room and this object is exactly a kelMemorySerializer;
    // otherwise, and in any derived class, through serializeData and deserializeData.
    KEL_SERIALIZER_INLINE_FORMS

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
    void openDirectPath();
    template <typename T>
    void put(T value);
    template <typename T>
    void get(T& value);

    UInt8* mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    UInt32 mBufferSize;
    // The part of the block the inline forms may use: 0 until the general path has found this
    // object to be exactly a kelMemorySerializer, then the block's size.
    UInt32 mDirectSize;
};

template <typename T>
inline void kelMemorySerializer::put(T value) {
    if (!storeBefore(mBuffer, mWritePosition, mDirectSize, value)) {
        kelAbstractSerializer::serialize(value);
    }
}

template <typename T>
inline void kelMemorySerializer::get(T& value) {
    if (!fetchWithin(mBuffer, mReadPosition, mDirectSize, value)) {
        kelAbstractSerializer::deserialize(value);
    }
}

} // namespace KELKIT

#endif
