#ifndef KELCORE_INTERNAL_KELDUMPERFORMS_H
#define KELCORE_INTERNAL_KELDUMPERFORMS_H

// Internal: not installed. The dump forms that every dumper defines alike over its one sink,
// a private `void sink(void const* data, UInt64 size)`: arrays of buffers and texts go value by
// value, a buffer or a text as its bytes, a number as its machine image, an array of numbers as
// one run of bytes. A null array dumps nothing. The sink is called in the dumper's own unit, so
// it may be inline there.

#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/strings/kelString.h>

// The machine image is the little-endian wire form only on a little-endian machine; every
// platform the library is built for is one.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the dump needs a little-endian host");

#define KEL_DUMPER_NUMBER_ARRAY_FORM(Dumper, sink, T)                                              \
    void Dumper::dump(T const* values, UInt32 count) {                                             \
        if (values != nullptr) {                                                                   \
            sink(values, static_cast<UInt64>(count) * sizeof(T));                                  \
        }                                                                                          \
    }

#define KEL_DUMPER_NUMBER_VALUE_FORM(Dumper, sink, T)                                              \
    void Dumper::dump(T value) {                                                                   \
        sink(&value, sizeof(T));                                                                   \
    }

#define KEL_DUMPER_EACH_NUMBER(FORM, Dumper, sink)                                                 \
    FORM(Dumper, sink, Float64)                                                                    \
    FORM(Dumper, sink, Float32)                                                                    \
    FORM(Dumper, sink, SInt64)                                                                     \
    FORM(Dumper, sink, SInt32)                                                                     \
    FORM(Dumper, sink, SInt16)                                                                     \
    FORM(Dumper, sink, SInt8)                                                                      \
    FORM(Dumper, sink, UInt64)                                                                     \
    FORM(Dumper, sink, UInt32)                                                                     \
    FORM(Dumper, sink, UInt16)                                                                     \
    FORM(Dumper, sink, UInt8)                                                                      \
    FORM(Dumper, sink, bool)

// Every form but the single numbers, which a dumper may define inline in its header.
#define KEL_DUMPER_ARRAY_FORMS(Dumper, sink)                                                       \
    void Dumper::dump(kelMemoryBuffer const* values, UInt32 count) {                               \
        for (UInt32 i = 0; values != nullptr && i < count; ++i) {                                  \
            dump(values[i]);                                                                       \
        }                                                                                          \
    }                                                                                              \
    void Dumper::dump(kelMemoryBuffer const& value) {                                              \
        dump(value.getBuffer(), value.getSize());                                                  \
    }                                                                                              \
    void Dumper::dump(kelString const* values, UInt32 count) {                                     \
        for (UInt32 i = 0; values != nullptr && i < count; ++i) {                                  \
            dump(values[i]);                                                                       \
        }                                                                                          \
    }                                                                                              \
    void Dumper::dump(kelString const& value) {                                                    \
        dump(reinterpret_cast<UInt8 const*>(value.c_str()), value.size());                         \
    }                                                                                              \
    KEL_DUMPER_EACH_NUMBER(KEL_DUMPER_NUMBER_ARRAY_FORM, Dumper, sink)

#define KEL_DUMPER_FORMS(Dumper, sink)                                                             \
    KEL_DUMPER_ARRAY_FORMS(Dumper, sink)                                                           \
    KEL_DUMPER_EACH_NUMBER(KEL_DUMPER_NUMBER_VALUE_FORM, Dumper, sink)

#endif
