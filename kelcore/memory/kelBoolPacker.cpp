#include <kelcore/memory/kelBoolPacker.h>

#include <kelcore/frame/kelTypes.h>
#include <kelcore/memory/kelBitsPacker.h>

namespace KELKIT {

kelBoolPacker::kelBoolPacker(void* buffer, unsigned char offset)
    : mBuffer(buffer), mOffset(offset) {}

kelBoolPacker::kelBoolPacker(kelBoolPacker const&) = default;

kelBoolPacker& kelBoolPacker::operator=(kelBoolPacker const&) = default;

kelBoolPacker::~kelBoolPacker() = default;

// The word is read and written whole, as for any field; only the one bit changes.
kelIPacker& kelBoolPacker::operator=(double value) {
    if (mBuffer == nullptr || mOffset >= 64) {
        return *this;
    }
    unsigned char const one = 1;
    unsigned const width = kelBitsPacker::getByteLength(mOffset, one);
    auto* bytes = static_cast<unsigned char*>(mBuffer);
    UInt64 word = 0;
    for (unsigned i = 0; i < width; ++i) {
        word |= UInt64(bytes[i]) << (8 * i);
    }
    UInt64 const bit = UInt64(1) << mOffset;
    word = value != 0.0 ? word | bit : word & ~bit;
    for (unsigned i = 0; i < width; ++i) {
        bytes[i] = static_cast<unsigned char>(word >> (8 * i));
    }
    return *this;
}

kelBoolPacker::operator double() const {
    if (mBuffer == nullptr || mOffset >= 64) {
        return 0.0;
    }
    auto const* bytes = static_cast<unsigned char const*>(mBuffer);
    return (bytes[mOffset / 8] >> (mOffset % 8) & 1) != 0 ? 1.0 : 0.0;
}

} // namespace KELKIT
