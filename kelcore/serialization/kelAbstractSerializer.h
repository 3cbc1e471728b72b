#ifndef KELCORE_SERIALIZATION_KELABSTRACTSERIALIZER_H
#define KELCORE_SERIALIZATION_KELABSTRACTSERIALIZER_H

#include <kelcore/serialization/kelISerializer.h>

namespace KELKIT {

// Turns every typed operation into one of two raw byte operations, so that a concrete
// serializer supplies only serializeData, deserializeData and its bookkeeping.
class KELCORE_API kelAbstractSerializer : public virtual kelISerializer {
public:
    kelAbstractSerializer() = default;
    kelAbstractSerializer(kelAbstractSerializer const&) = default;
    kelAbstractSerializer& operator=(kelAbstractSerializer const&) = default;
    ~kelAbstractSerializer() override;

    using kelISerializer::serialize;

    void serialize(const Float64* values, UInt32 count) override;
    void serialize(Float64 value) override;
    void serialize(const Float32* values, UInt32 count) override;
    void serialize(Float32 value) override;
    void serialize(const SInt64* values, UInt32 count) override;
    void serialize(SInt64 value) override;
    void serialize(const SInt32* values, UInt32 count) override;
    void serialize(SInt32 value) override;
    void serialize(const SInt16* values, UInt32 count) override;
    void serialize(SInt16 value) override;
    void serialize(const SInt8* values, UInt32 count) override;
    void serialize(SInt8 value) override;
    void serialize(const UInt64* values, UInt32 count) override;
    void serialize(UInt64 value) override;
    void serialize(const UInt32* values, UInt32 count) override;
    void serialize(UInt32 value) override;
    void serialize(const UInt16* values, UInt32 count) override;
    void serialize(UInt16 value) override;
    void serialize(const UInt8* values, UInt32 count) override;
    void serialize(UInt8 value) override;
    void serialize(const bool* values, UInt32 count) override;
    void serialize(bool value) override;

    void deserialize(Float64* values, UInt32 count) override;
    void deserialize(Float64& value) override;
    void deserialize(Float32* values, UInt32 count) override;
    void deserialize(Float32& value) override;
    void deserialize(SInt64* values, UInt32 count) override;
    void deserialize(SInt64& value) override;
    void deserialize(SInt32* values, UInt32 count) override;
    void deserialize(SInt32& value) override;
    void deserialize(SInt16* values, UInt32 count) override;
    void deserialize(SInt16& value) override;
    void deserialize(SInt8* values, UInt32 count) override;
    void deserialize(SInt8& value) override;
    void deserialize(UInt64* values, UInt32 count) override;
    void deserialize(UInt64& value) override;
    void deserialize(UInt32* values, UInt32 count) override;
    void deserialize(UInt32& value) override;
    void deserialize(UInt16* values, UInt32 count) override;
    void deserialize(UInt16& value) override;
    void deserialize(UInt8* values, UInt32 count) override;
    void deserialize(UInt8& value) override;
    void deserialize(bool* values, UInt32 count) override;
    void deserialize(bool& value) override;

    // Appends size bytes at the write position.
    virtual void serializeData(const void* data, UInt32 size) = 0;
    // Copies size bytes from the read position.
    virtual void deserializeData(void* data, UInt32 size) = 0;
};

} // namespace KELKIT

#endif
