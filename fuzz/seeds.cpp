// Writes the seed inputs that the library produces itself, one file per value, into the
// corpus folders given by the targets' names:  kelcore_fuzz_seeds <fuzz/corpus folder>
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

    kelBinarySerializer texts;
    for (char const* text : {"", "abc", "a;b\"c", "Unique on 2024/03/09 07:05"}) {
        kelString(text).serializeTo(texts);
    }
    save("string_wire", "texts", texts);
    return 0;
}
