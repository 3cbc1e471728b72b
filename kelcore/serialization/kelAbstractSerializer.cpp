#include <kelcore/serialization/kelAbstractSerializer.h>

namespace KELKIT {

// The wire is little-endian and each value goes out as its machine image, which is only right
// on a little-endian machine; every platform the library is built for is one.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
              "the wire form needs a little-endian host");

namespace {

constexpr UInt64 MAX_BYTES = 0xFFFFFFFFull;

// Byte length of an array call. Sizes are 32-bit; a product beyond that cannot be held by any
// serializer, so it is reported rather than wrapped to a small number.
bool arrayBytes(UInt32 count, UInt32 width, UInt32& bytes) {
    UInt64 const total = static_cast<UInt64>(count) * width;
    if (total > MAX_BYTES) {
        return false;
    }
    bytes = static_cast<UInt32>(total);
    return true;
}

} // namespace

kelAbstractSerializer::~kelAbstractSerializer() = default;

// An oversized array write is dropped: no sink could take it. An oversized read asks for the
// largest possible byte count, which every sink refuses by its own rule without touching the
// caller's array beyond its end.
#define KEL_SERIALIZER_FORMS(T)                                                                    \
    void kelAbstractSerializer::serialize(const T* values, UInt32 count) {                         \
        UInt32 bytes = 0;                                                                          \
        if (arrayBytes(count, sizeof(T), bytes)) {                                                 \
            serializeData(values, bytes);                                                          \
        }                                                                                          \
    }                                                                                              \
    void kelAbstractSerializer::serialize(T value) {                                               \
        serializeData(&value, sizeof(T));                                                          \
    }                                                                                              \
    void kelAbstractSerializer::deserialize(T* values, UInt32 count) {                             \
        UInt32 bytes = 0;                                                                          \
        if (!arrayBytes(count, sizeof(T), bytes)) {                                                \
            bytes = static_cast<UInt32>(MAX_BYTES);                                                \
        }                                                                                          \
        deserializeData(values, bytes);                                                            \
    }                                                                                              \
    void kelAbstractSerializer::deserialize(T& value) {                                            \
        deserializeData(&value, sizeof(T));                                                        \
    }

KEL_SERIALIZER_FORMS(Float64)
KEL_SERIALIZER_FORMS(Float32)
KEL_SERIALIZER_FORMS(SInt64)
KEL_SERIALIZER_FORMS(SInt32)
KEL_SERIALIZER_FORMS(SInt16)
KEL_SERIALIZER_FORMS(SInt8)
KEL_SERIALIZER_FORMS(UInt64)
KEL_SERIALIZER_FORMS(UInt32)
KEL_SERIALIZER_FORMS(UInt16)
KEL_SERIALIZER_FORMS(UInt8)
KEL_SERIALIZER_FORMS(bool)

#undef KEL_SERIALIZER_FORMS

} // namespace KELKIT
