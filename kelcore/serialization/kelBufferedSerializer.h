#ifndef KELCORE_SERIALIZATION_KELBUFFEREDSERIALIZER_H
#define KELCORE_SERIALIZATION_KELBUFFEREDSERIALIZER_H

#include <kelcore/memory/kelLinkedBuffer.h>
#include <kelcore/serialization/kelAbstractSerializer.h>

#include <cstring>

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

    // The fixed-width values are inline so that a run of them costs no call: each goes straight
    // into the block while it has room and this object is exactly a kelBufferedSerializer;
    // otherwise, and in any derived class, through serializeData and deserializeData.
    KEL_SERIALIZER_INLINE_FORMS

    void serializeData(void const* data, UInt32 size) override;
    void deserializeData(void* data, UInt32 size) override;

private:
    bool copyBuffer(UInt8 const* data, UInt32 size);

    void openWriteWindow();
    void openReadWindow();
    template <typename T>
    void put(T value);
    template <typename T>
    void get(T& value);

    kelLinkedBuffer mBuffer;
    UInt32 mWritePosition;
    UInt32 mReadPosition;
    // Where the inline forms go without asking the store: the last block of the chain while the
    // write position stands at the end of its data, and the block that holds the read position.
    // Null when unknown or when this object is not exactly a kelBufferedSerializer; set again by
    // the general path. The offsets stand where the positions do in the blocks (for writing, it
    // is the block's used count, kept here too so that a run of writes never reads it back from
    // the block); each window ends at its block's capacity, or earlier where the position would
    // otherwise wrap at 4 GiB.
    kelMemoryBlock* mWriteBlock;
    kelMemoryBlock const* mReadBlock;
    UInt32 mWriteOffset;
    UInt32 mReadOffset;
    UInt32 mWriteEnd;
    UInt32 mReadEnd;
};

// What the store does with a value that fits the window: a write appends to the last block's
// data and counts it; a read copies from the block, where bytes up to its capacity count,
// written or not. The read goes through a copy, as the destination may lie inside the block.
template <typename T>
inline void kelBufferedSerializer::put(T value) {
    kelMemoryBlock* const block = mWriteBlock;
    UInt32 const used = mWriteOffset;
    if (block != nullptr && sizeof(T) <= mWriteEnd - used) {
        std::memcpy(block->data + used, &value, sizeof(T));
        block->used = used + sizeof(T);
        mWriteOffset = used + sizeof(T);
        mBuffer.mTotalUsed += sizeof(T);
        mWritePosition += sizeof(T);
    } else {
        kelAbstractSerializer::serialize(value);
    }
}

template <typename T>
inline void kelBufferedSerializer::get(T& value) {
    kelMemoryBlock const* const block = mReadBlock;
    if (block != nullptr && sizeof(T) <= mReadEnd - mReadOffset) {
        unsigned char bytes[sizeof(T)];
        std::memcpy(bytes, block->data + mReadOffset, sizeof(T));
        std::memcpy(&value, bytes, sizeof(T));
        mReadOffset += sizeof(T);
        mReadPosition += sizeof(T);
    } else {
        kelAbstractSerializer::deserialize(value);
    }
}

} // namespace KELKIT

#endif
