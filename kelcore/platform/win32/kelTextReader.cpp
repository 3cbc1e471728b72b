#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelTextReader.h>

#include <cstdio>
#include <string>

namespace KELKIT {
namespace platform {

TextReader::TextReader() : mFile(nullptr) {}

TextReader::~TextReader() {
    close();
}

bool TextReader::open(char const* path) {
    close();
    std::string native;
    if (!toNativePath(path, native)) {
        return false;
    }
    mFile = std::fopen(native.c_str(), "r"); // text mode: each CR LF arrives as LF
    return mFile != nullptr;
}

bool TextReader::seek(UInt64 offset) {
    return mFile != nullptr && ::_fseeki64(mFile, static_cast<__int64>(offset), SEEK_SET) == 0;
}

bool TextReader::readLine(char* buffer, int size) {
    return mFile != nullptr && size >= 1 && std::fgets(buffer, size, mFile) != nullptr;
}

void TextReader::close() {
    if (mFile != nullptr) {
        std::fclose(mFile);
        mFile = nullptr;
    }
}

} // namespace platform
} // namespace KELKIT
