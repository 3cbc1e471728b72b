// Writes the seed inputs that the library produces itself, one file per value, into the corpus
// folders named after the targets:  kelcore_fuzz_seeds <fuzz/corpus folder>
// The text seeds (examples of the documented text forms) are written by hand and committed.

#include <kelcore/kelcore.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

using namespace KELKIT;
namespace fs = std::filesystem;

namespace {

fs::path gRoot;

void save(char const* family, std::string const& name, kelBinarySerializer const& s) {
    fs::create_directories(gRoot / family);
    std::ofstream out(gRoot / family / name, std::ios::binary);
    out.write(reinterpret_cast<char const*>(s.getBufferC()), s.getSize());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <corpus folder>\n", argv[0]);
        return 2;
    }
    gRoot = argv[1];

    // Several values in a row, as a reader meets them, and the stream of a hostile length.
    kelBinarySerializer texts;
    for (char const* text : {"", "abc", "a;b\"c", "Unique on 2024/03/09 07:05"}) {
        kelString(text).serializeTo(texts);
    }
    save("string_wire", "texts", texts);
    kelBinarySerializer hostile;
    hostile.serialize(UInt32(0xFFFFFFFFu));
    hostile.serialize(reinterpret_cast<UInt8 const*>("abc"), 3);
    save("string_wire", "hostile-length", hostile);
    save("buffer_wire", "hostile-length", hostile);

    kelBinarySerializer buffers;
    for (UInt32 size : {0u, 1u, 2u, 4u, 8u, 13u}) {
        kelMemoryBuffer buffer(size);
        for (UInt32 i = 0; i < size; ++i) {
            buffer[i] = static_cast<UInt8>(0x41 + i);
        }
        buffer.serializeTo(buffers);
    }
    save("buffer_wire", "buffers", buffers);

    kelBinarySerializer variants;
    kelVariant const values[] = {kelVariant(true),
                                 kelVariant(UInt8(200)),
                                 kelVariant(char(-5)),
                                 kelVariant(UInt16(60000)),
                                 kelVariant(short(-300)),
                                 kelVariant(UInt32(4000000000u)),
                                 kelVariant(SInt32(-7)),
                                 kelVariant(18446744073709551615ull),
                                 kelVariant(-9000000000ll),
                                 kelVariant(1.5f),
                                 kelVariant(-2.25),
                                 kelVariant("text"),
                                 kelVariant(kelTime(1709967900ull))};
    for (kelVariant const& v : values) {
        kelBinarySerializer one;
        v.serializeTo(one);
        save("variant_wire", std::string("format-") + v.getFormat().toString(), one);
        v.serializeTo(variants);
    }
    save("variant_wire", "all-formats", variants);
    kelBinarySerializer hostileVariant;
    hostileVariant.serialize(UInt8(11));
    hostileVariant.serialize(UInt32(0xFFFFFFFFu));
    hostileVariant.serialize(reinterpret_cast<UInt8 const*>("abc"), 3);
    save("variant_wire", "hostile-length", hostileVariant);

    kelBinarySerializer time;
    kelTime(1709967900ull).serializeTo(time);
    save("time", "wire", time);
    return 0;
}
