#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelTextReader.h>

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
    mFile = openNative(native.c_str());
    return mFile != nullptr;
}

void TextReader::close() {
    if (mFile != nullptr) {
        std::fclose(mFile);
        mFile = nullptr;
    }
}

} // namespace platform
} // namespace KELKIT
