#ifndef KELCORE_SERIALIZATION_KELIDUMPER_H
#define KELCORE_SERIALIZATION_KELIDUMPER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

class kelMemoryBuffer;
class kelString;

// A write-only sink of raw bytes. Numbers go out in the serializers' wire form (little-endian,
// fixed widths), texts and buffers as their bytes alone, arrays as their elements in order:
// no counts, lengths, separators or terminators, so nothing can read a dump back by itself.
// An array whose byte length exceeds 32 bits is dropped whole.
class KELCORE_API kelIDumper {
public:
    kelIDumper() = default;
    kelIDumper(kelIDumper const&) = default;
    kelIDumper& operator=(kelIDumper const&) = default;
    virtual ~kelIDumper();

    virtual void dump(kelMemoryBuffer const* values, UInt32 count) = 0;
    virtual void dump(kelMemoryBuffer const& value) = 0;
    virtual void dump(kelString const* values, UInt32 count) = 0;
    virtual void dump(kelString const& value) = 0;
    virtual void dump(Float64 const* values, UInt32 count) = 0;
    virtual void dump(Float64 value) = 0;
    virtual void dump(Float32 const* values, UInt32 count) = 0;
    virtual void dump(Float32 value) = 0;
    virtual void dump(SInt64 const* values, UInt32 count) = 0;
    virtual void dump(SInt64 value) = 0;
    virtual void dump(SInt32 const* values, UInt32 count) = 0;
    virtual void dump(SInt32 value) = 0;
    virtual void dump(SInt16 const* values, UInt32 count) = 0;
    virtual void dump(SInt16 value) = 0;
    virtual void dump(SInt8 const* values, UInt32 count) = 0;
    virtual void dump(SInt8 value) = 0;
    virtual void dump(UInt64 const* values, UInt32 count) = 0;
    virtual void dump(UInt64 value) = 0;
    virtual void dump(UInt32 const* values, UInt32 count) = 0;
    virtual void dump(UInt32 value) = 0;
    virtual void dump(UInt16 const* values, UInt32 count) = 0;
    virtual void dump(UInt16 value) = 0;
    virtual void dump(UInt8 const* values, UInt32 count) = 0;
    virtual void dump(UInt8 value) = 0;
    virtual void dump(bool const* values, UInt32 count) = 0;
    virtual void dump(bool value) = 0;

    // A pointer without a count would otherwise convert to bool and dump one byte; a text
    // literal is dumped as kelString("...").
    template <typename T>
    void dump(T const* pointer) = delete;
};

} // namespace KELKIT

#endif
