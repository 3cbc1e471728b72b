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
    using kelAbstractSerializer::deserialize;
    using kelAbstractSerializer::serialize;
    void serialize(Float64 value) override { put(value); }
    void serialize(Float32 value) override { put(value); }
    void serialize(SInt64 value) override { put(value); }
    void serialize(SInt32 value) override { put(value); }
    void serialize(SInt16 value) override { put(value); }
    void serialize(SInt8 value) override { put(value); }
    void serialize(UInt64 value) override { put(value); }
    void serialize(UInt32 value) override { put(value); }
    void serialize(UInt16 value) override { put(value); }
    void serialize(UInt8 value) override { put(value); }
    void serialize(bool value) override { put(value); }
    void deserialize(Float64& value) override { get(value); }
    void deserialize(Float32& value) override { get(value); }
    void deserialize(SInt64& value) override { get(value); }
    void deserialize(SInt32& value) override { get(value); }
    void deserialize(SInt16& value) override { get(value); }
    void deserialize(SInt8& value) override { get(value); }
    void deserialize(UInt64& value) override { get(value); }
    void deserialize(UInt32& value) override { get(value); }
    void deserialize(UInt16& value) override { get(value); }
    void deserialize(UInt8& value) override { get(value); }
    void deserialize(bool& value) override { get(value); }

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

// What serializeData and deserializeData do with a value that fits: a write that ends strictly
// before the block's end, a read that ends within it. Both go through a copy, as a value read
// may lie inside the block.
template <typename T>
inline void kelMemorySerializer::put(T value) {
    if (static_cast<UInt64>(mWritePosition) + sizeof(T) < mDirectSize) {
        std::memcpy(mBuffer + mWritePosition, &value, sizeof(T));
        mWritePosition += sizeof(T);
    } else {
        kelAbstractSerializer::serialize(value);
    }
}

template <typename T>
inline void kelMemorySerializer::get(T& value) {
    if (static_cast<UInt64>(mReadPosition) + sizeof(T) <= mDirectSize) {
        unsigned char bytes[sizeof(T)];
        std::memcpy(bytes, mBuffer + mReadPosition, sizeof(T));
        std::memcpy(&value, bytes, sizeof(T));
        mReadPosition += sizeof(T);
    } else {
        kelAbstractSerializer::deserialize(value);
    }
}

} // namespace KELKIT

#endif
