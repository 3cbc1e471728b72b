#ifndef KELCORE_SERIALIZATION_KELMEMORYDUMPER_H
#define KELCORE_SERIALIZATION_KELMEMORYDUMPER_H

#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelIDumper.h>

#include <cstring>

namespace KELKIT {

// Dumps onto the end of a memory buffer, which grows by exactly what was dumped. Appending
// costs amortised constant time per byte: the buffer keeps room it does not show. A value
// that finds no memory is lost and the buffer stays as it was.
class KELCORE_API kelMemoryDumper : public virtual kelIDumper {
public:
    kelMemoryDumper();
    // Copies the content.
    kelMemoryDumper(kelMemoryDumper const& other);
    kelMemoryDumper& operator=(kelMemoryDumper const& other);
    ~kelMemoryDumper() override;

    // The bytes dumped so far; a caller empties the dumper through it.
    kelMemoryBuffer const& getBuffer() const;
    kelMemoryBuffer& getBuffer();

    using kelIDumper::dump;
    void dump(kelMemoryBuffer const* values, UInt32 count) override;
    void dump(kelMemoryBuffer const& value) override;
    void dump(kelString const* values, UInt32 count) override;
    void dump(kelString const& value) override;
    void dump(Float64 const* values, UInt32 count) override;
    void dump(Float32 const* values, UInt32 count) override;
    void dump(SInt64 const* values, UInt32 count) override;
    void dump(SInt32 const* values, UInt32 count) override;
    void dump(SInt16 const* values, UInt32 count) override;
    void dump(SInt8 const* values, UInt32 count) override;
    void dump(UInt64 const* values, UInt32 count) override;
    void dump(UInt32 const* values, UInt32 count) override;
    void dump(UInt16 const* values, UInt32 count) override;
    void dump(UInt8 const* values, UInt32 count) override;
    void dump(bool const* values, UInt32 count) override;
    // Inline so that a run of small dumps costs no call while the buffer has room behind its
    // bytes; the rest takes the general path.
    void dump(Float64 value) override { put(value); }
    void dump(Float32 value) override { put(value); }
    void dump(SInt64 value) override { put(value); }
    void dump(SInt32 value) override { put(value); }
    void dump(SInt16 value) override { put(value); }
    void dump(SInt8 value) override { put(value); }
    void dump(UInt64 value) override { put(value); }
    void dump(UInt32 value) override { put(value); }
    void dump(UInt16 value) override { put(value); }
    void dump(UInt8 value) override { put(value); }
    void dump(bool value) override { put(value); }

private:
    void append(void const* data, UInt64 size);
    template <typename T>
    void put(T value);

    kelMemoryBuffer mBuffer;
};

template <typename T>
inline void kelMemoryDumper::put(T value) {
    if (static_cast<UInt64>(mBuffer.mSize) + sizeof(T) <= mBuffer.mCapacity) {
        std::memcpy(mBuffer.mBuffer + mBuffer.mSize, &value, sizeof(T));
        mBuffer.mSize += sizeof(T);
    } else {
        append(&value, sizeof(T));
    }
}

} // namespace KELKIT

#endif
