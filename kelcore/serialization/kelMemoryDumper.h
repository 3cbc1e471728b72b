#ifndef KELCORE_SERIALIZATION_KELMEMORYDUMPER_H
#define KELCORE_SERIALIZATION_KELMEMORYDUMPER_H

#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/serialization/kelIDumper.h>

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
    void dump(Float64 value) override;
    void dump(Float32 const* values, UInt32 count) override;
    void dump(Float32 value) override;
    void dump(SInt64 const* values, UInt32 count) override;
    void dump(SInt64 value) override;
    void dump(SInt32 const* values, UInt32 count) override;
    void dump(SInt32 value) override;
    void dump(SInt16 const* values, UInt32 count) override;
    void dump(SInt16 value) override;
    void dump(SInt8 const* values, UInt32 count) override;
    void dump(SInt8 value) override;
    void dump(UInt64 const* values, UInt32 count) override;
    void dump(UInt64 value) override;
    void dump(UInt32 const* values, UInt32 count) override;
    void dump(UInt32 value) override;
    void dump(UInt16 const* values, UInt32 count) override;
    void dump(UInt16 value) override;
    void dump(UInt8 const* values, UInt32 count) override;
    void dump(UInt8 value) override;
    void dump(bool const* values, UInt32 count) override;
    void dump(bool value) override;

private:
    // Inline so that each form can take the fast path without a call.
    inline void append(void const* data, UInt64 size);

    kelMemoryBuffer mBuffer;
};

} // namespace KELKIT

#endif
