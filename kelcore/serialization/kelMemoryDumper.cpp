#include <kelcore/serialization/kelMemoryDumper.h>

#include <kelcore/internal/kelDumperForms.h>

#include <cstring>

namespace KELKIT {

kelMemoryDumper::kelMemoryDumper() = default;

kelMemoryDumper::kelMemoryDumper(kelMemoryDumper const&) = default;

kelMemoryDumper& kelMemoryDumper::operator=(kelMemoryDumper const&) = default;

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

// The single numbers are inline in the header.
KEL_DUMPER_ARRAY_FORMS(kelMemoryDumper, append)

} // namespace KELKIT
