#ifndef KELCORE_SERIALIZATION_KELISERIALIZER_H
#define KELCORE_SERIALIZATION_KELISERIALIZER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A byte sink and source for typed values. Every value is stored as its little-endian image,
// without tag, count, padding or alignment: a stream means only what its reader knows. The
// 32-bit forms are the library's "unsigned long" and "long"; there is no form for a native long
// (on LP64 it is ambiguous here on purpose, so it cannot silently lose its upper half).
class KELCORE_API kelISerializer {
public:
    kelISerializer() = default;
    kelISerializer(kelISerializer const&) = default;
    kelISerializer& operator=(kelISerializer const&) = default;
    virtual ~kelISerializer();

    // Bytes held, and bytes from the read position to getSize() as an unsigned difference.
    virtual UInt32 getSize() const = 0;
    virtual UInt32 getRemainingSize() const = 0;
    virtual void clearData() = 0;
    virtual void loadData(const UInt8* data, UInt32 size) = 0;

    // Arrays write count * width bytes and no count.
    virtual void serialize(const Float64* values, UInt32 count) = 0;
    virtual void serialize(Float64 value) = 0;
    virtual void serialize(const Float32* values, UInt32 count) = 0;
    virtual void serialize(Float32 value) = 0;
    virtual void serialize(const SInt64* values, UInt32 count) = 0;
    virtual void serialize(SInt64 value) = 0;
    virtual void serialize(const SInt32* values, UInt32 count) = 0;
    virtual void serialize(SInt32 value) = 0;
    virtual void serialize(const SInt16* values, UInt32 count) = 0;
    virtual void serialize(SInt16 value) = 0;
    virtual void serialize(const SInt8* values, UInt32 count) = 0;
    virtual void serialize(SInt8 value) = 0;
    virtual void serialize(const UInt64* values, UInt32 count) = 0;
    virtual void serialize(UInt64 value) = 0;
    virtual void serialize(const UInt32* values, UInt32 count) = 0;
    virtual void serialize(UInt32 value) = 0;
    virtual void serialize(const UInt16* values, UInt32 count) = 0;
    virtual void serialize(UInt16 value) = 0;
    virtual void serialize(const UInt8* values, UInt32 count) = 0;
    virtual void serialize(UInt8 value) = 0;
    virtual void serialize(const bool* values, UInt32 count) = 0;
    virtual void serialize(bool value) = 0;

    virtual void deserialize(Float64* values, UInt32 count) = 0;
    virtual void deserialize(Float64& value) = 0;
    virtual void deserialize(Float32* values, UInt32 count) = 0;
    virtual void deserialize(Float32& value) = 0;
    virtual void deserialize(SInt64* values, UInt32 count) = 0;
    virtual void deserialize(SInt64& value) = 0;
    virtual void deserialize(SInt32* values, UInt32 count) = 0;
    virtual void deserialize(SInt32& value) = 0;
    virtual void deserialize(SInt16* values, UInt32 count) = 0;
    virtual void deserialize(SInt16& value) = 0;
    virtual void deserialize(SInt8* values, UInt32 count) = 0;
    virtual void deserialize(SInt8& value) = 0;
    virtual void deserialize(UInt64* values, UInt32 count) = 0;
    virtual void deserialize(UInt64& value) = 0;
    virtual void deserialize(UInt32* values, UInt32 count) = 0;
    virtual void deserialize(UInt32& value) = 0;
    virtual void deserialize(UInt16* values, UInt32 count) = 0;
    virtual void deserialize(UInt16& value) = 0;
    virtual void deserialize(UInt8* values, UInt32 count) = 0;
    virtual void deserialize(UInt8& value) = 0;
    virtual void deserialize(bool* values, UInt32 count) = 0;
    virtual void deserialize(bool& value) = 0;

    // A pointer would otherwise convert to bool and write one byte; refuse it at compile time.
    template <typename T>
    void serialize(const T* pointer) = delete;
};

} // namespace KELKIT

#endif
