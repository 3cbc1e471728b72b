#include <kelcore/frame/kelGuid.h>

#include <kelcore/frame/kelRandom.h>

#include <cstdlib>
#include <cstring>

namespace KELKIT {

namespace {

constexpr UInt32 TEXT_LENGTH = 36;

// A hyphen follows these bytes in the text form.
bool hyphenAfter(UInt32 byteIndex) {
    return byteIndex == 3 || byteIndex == 5 || byteIndex == 7 || byteIndex == 9;
}

} // namespace

const UInt32 kelGuid::mGuidSize;

kelGuid::kelGuid() : mBytes() {
    regenerate();
}

kelGuid::kelGuid(kelGuid const& other) {
    std::memcpy(mBytes, other.mBytes, mGuidSize);
}

kelGuid& kelGuid::operator=(kelGuid const& other) {
    std::memmove(mBytes, other.mBytes, mGuidSize);
    return *this;
}

kelGuid::~kelGuid() = default;

void kelGuid::clear() {
    std::memset(mBytes, 0, mGuidSize);
}

bool kelGuid::isNull() const {
    for (UInt8 b : mBytes) {
        if (b != 0) {
            return false;
        }
    }
    return true;
}

void kelGuid::regenerate() {
    for (UInt8& b : mBytes) {
        b = static_cast<UInt8>(kelRandom::getUInt32() & 0xFF);
    }
    mBytes[8] = static_cast<UInt8>((mBytes[8] & 0xBF) | 0x80); // variant 10xx
    mBytes[6] = static_cast<UInt8>((mBytes[6] & 0x4F) | 0x40); // version 4
}

kelString kelGuid::toString() const {
    static char const digits[] = "0123456789abcdef";
    char text[TEXT_LENGTH + 1];
    UInt32 at = 0;
    for (UInt32 i = 0; i < mGuidSize; ++i) {
        text[at++] = digits[mBytes[i] >> 4];
        text[at++] = digits[mBytes[i] & 0xF];
        if (hyphenAfter(i)) {
            text[at++] = '-';
        }
    }
    text[at] = '\0';
    return kelString(text);
}

void kelGuid::fromString(char const* text) {
    clear();
    if (kelString::size(text) != TEXT_LENGTH) {
        return;
    }
    UInt32 at = 0;
    for (UInt32 i = 0; i < mGuidSize; ++i) {
        char const pair[3] = {text[at], text[at + 1], '\0'};
        mBytes[i] = static_cast<UInt8>(std::strtol(pair, nullptr, 16));
        at += hyphenAfter(i) ? 3 : 2;
    }
}

bool kelGuid::operator==(kelGuid const& other) const {
    return std::memcmp(mBytes, other.mBytes, mGuidSize) == 0;
}

bool kelGuid::operator!=(kelGuid const& other) const {
    return !(*this == other);
}

} // namespace KELKIT
