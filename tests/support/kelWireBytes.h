#ifndef KELCORE_TESTS_KELWIREBYTES_H
#define KELCORE_TESTS_KELWIREBYTES_H

// An oracle for the wire form, built by shifting values apart byte by byte, independent of how
// the library copies memory.

#include <cstdint>
#include <cstring>
#include <vector>

namespace kelTest {

class WireBytes {
public:
    WireBytes& le(std::uint64_t value, unsigned width) {
        for (unsigned i = 0; i < width; ++i) {
            mBytes.push_back(static_cast<unsigned char>((value >> (8 * i)) & 0xFF));
        }
        return *this;
    }
    WireBytes& u8(std::uint8_t v) { return le(v, 1); }
    WireBytes& u16(std::uint16_t v) { return le(v, 2); }
    WireBytes& u32(std::uint32_t v) { return le(v, 4); }
    WireBytes& u64(std::uint64_t v) { return le(v, 8); }
    WireBytes& s16(std::int16_t v) { return le(static_cast<std::uint16_t>(v), 2); }
    WireBytes& s32(std::int32_t v) { return le(static_cast<std::uint32_t>(v), 4); }
    WireBytes& s64(std::int64_t v) { return le(static_cast<std::uint64_t>(v), 8); }
    WireBytes& f32bits(std::uint32_t bits) { return le(bits, 4); }
    WireBytes& f64bits(std::uint64_t bits) { return le(bits, 8); }
    WireBytes& f32(float v) {
        std::uint32_t bits;
        std::memcpy(&bits, &v, 4);
        return f32bits(bits);
    }
    WireBytes& f64(double v) {
        std::uint64_t bits;
        std::memcpy(&bits, &v, 8);
        return f64bits(bits);
    }
    WireBytes& text(char const* s) {
        while (*s != '\0') {
            mBytes.push_back(static_cast<unsigned char>(*s++));
        }
        return *this;
    }
    std::vector<unsigned char> const& bytes() const { return mBytes; }

private:
    std::vector<unsigned char> mBytes;
};

inline std::vector<unsigned char> bytesOf(unsigned char const* data, std::uint32_t size) {
    return std::vector<unsigned char>(data, data + size);
}

} // namespace kelTest

#endif
