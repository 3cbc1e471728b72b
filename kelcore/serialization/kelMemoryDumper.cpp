#include <kelcore/serialization/kelMemoryDumper.h>

#include <kelcore/strings/kelString.h>

#include <cstring>

namespace KELKIT {

// Numbers are appended as their machine image, which is the little-endian wire form only on a
// little-endian machine; every platform the library is built for is one.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the dump needs a little-endian host");

kelMemoryDumper::kelMemoryDumper() = default;

kelMemoryDumper::kelMemoryDumper(kelMemoryDumper const& other)
    : kelIDumper(other), mBuffer(other.mBuffer) {}

kelMemoryDumper& kelMemoryDumper::operator=(kelMemoryDumper const& other) {
    mBuffer = other.mBuffer;
    return *this;
}

kelMemoryDumper::~kelMemoryDumper() = default;

kelMemoryBuffer const& kelMemoryDumper::getBuffer() const {
    return mBuffer;
}

kelMemoryBuffer& kelMemoryDumper::getBuffer() {
    return mBuffer;
}

// With the spare room the buffer keeps, a value is one store; the inline forms do the same.
void kelMemoryDumper::append(void const* data, UInt64 size) {
    if (size == 0) {
        return;
    }
    UInt32 const room = mBuffer.mCapacity > mBuffer.mSize ? mBuffer.mCapacity - mBuffer.mSize : 0;
    if (size <= room) {
        std::memcpy(mBuffer.mBuffer + mBuffer.mSize, data, static_cast<std::size_t>(size));
        mBuffer.mSize += static_cast<UInt32>(size);
    } else if (size <= 0xFFFFFFFFu) {
        mBuffer.appendWithSpare(static_cast<UInt8 const*>(data), static_cast<UInt32>(size));
    }
}

void kelMemoryDumper::dump(kelMemoryBuffer const* values, UInt32 count) {
    for (UInt32 i = 0; values != nullptr && i < count; ++i) {
        dump(values[i]);
    }
}

void kelMemoryDumper::dump(kelMemoryBuffer const& value) {
    dump(value.getBuffer(), value.getSize());
}

void kelMemoryDumper::dump(kelString const* values, UInt32 count) {
    for (UInt32 i = 0; values != nullptr && i < count; ++i) {
        dump(values[i]);
    }
}

void kelMemoryDumper::dump(kelString const& value) {
    dump(reinterpret_cast<UInt8 const*>(value.c_str()), value.size());
}

#define KEL_MEMORY_DUMPER_FORMS(T)                                                                 \
    void kelMemoryDumper::dump(T const* values, UInt32 count) {                                    \
        if (values != nullptr) {                                                                   \
            append(values, static_cast<UInt64>(count) * sizeof(T));                                \
        }                                                                                          \
    }

KEL_MEMORY_DUMPER_FORMS(Float64)
KEL_MEMORY_DUMPER_FORMS(Float32)
KEL_MEMORY_DUMPER_FORMS(SInt64)
KEL_MEMORY_DUMPER_FORMS(SInt32)
KEL_MEMORY_DUMPER_FORMS(SInt16)
KEL_MEMORY_DUMPER_FORMS(SInt8)
KEL_MEMORY_DUMPER_FORMS(UInt64)
KEL_MEMORY_DUMPER_FORMS(UInt32)
KEL_MEMORY_DUMPER_FORMS(UInt16)
KEL_MEMORY_DUMPER_FORMS(UInt8)
KEL_MEMORY_DUMPER_FORMS(bool)

#undef KEL_MEMORY_DUMPER_FORMS

} // namespace KELKIT
