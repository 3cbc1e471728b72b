#ifndef KELCORE_SERIALIZATION_KELABSTRACTSERIALIZER_H
#define KELCORE_SERIALIZATION_KELABSTRACTSERIALIZER_H

#include <kelcore/serialization/kelISerializer.h>

#include <cstring>

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

protected:
    // The inline fast paths of a serializer over one block: a write stored only while it ends
    // strictly before end, a read taken only while it ends within it. Each moves position and
    // answers true, or leaves everything as it was and answers false. The read goes through a
    // copy, as the destination may lie inside the block.
    template <typename T>
    static bool storeBefore(UInt8* block, UInt32& position, UInt32 end, T value) {
        if (static_cast<UInt64>(position) + sizeof(T) >= end) {
            return false;
        }
        std::memcpy(block + position, &value, sizeof(T));
        position += sizeof(T);
        return true;
    }
    template <typename T>
    static bool fetchWithin(UInt8 const* block, UInt32& position, UInt32 end, T& value) {
        if (static_cast<UInt64>(position) + sizeof(T) > end) {
            return false;
        }
        unsigned char bytes[sizeof(T)];
        std::memcpy(bytes, block + position, sizeof(T));
        std::memcpy(&value, bytes, sizeof(T));
        position += sizeof(T);
        return true;
    }
};

// Declares a serializer's single fixed-width values inline, each handed to the class's own
// put and get templates, so that a run of them costs no call.
#define KEL_SERIALIZER_INLINE_FORMS                                                                \
    using kelAbstractSerializer::deserialize;                                                      \
    using kelAbstractSerializer::serialize;                                                        \
    void serialize(Float64 value) override {                                                       \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(Float32 value) override {                                                       \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(SInt64 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(SInt32 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(SInt16 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(SInt8 value) override {                                                         \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(UInt64 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(UInt32 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(UInt16 value) override {                                                        \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(UInt8 value) override {                                                         \
        put(value);                                                                                \
    }                                                                                              \
    void serialize(bool value) override {                                                          \
        put(value);                                                                                \
    }                                                                                              \
    void deserialize(Float64& value) override {                                                    \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(Float32& value) override {                                                    \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(SInt64& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(SInt32& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(SInt16& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(SInt8& value) override {                                                      \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(UInt64& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(UInt32& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(UInt16& value) override {                                                     \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(UInt8& value) override {                                                      \
        get(value);                                                                                \
    }                                                                                              \
    void deserialize(bool& value) override {                                                       \
        get(value);                                                                                \
    }

} // namespace KELKIT

#endif
