#include <kelcore/platform/kelTextReader.h>

#include <cstdio>

namespace KELKIT {
namespace platform {

std::FILE* TextReader::openNative(char const* native) {
    return std::fopen(native, "r"); // text mode: each CR LF arrives as LF
}

bool TextReader::seek(UInt64 offset) {
    return mFile != nullptr && ::_fseeki64(mFile, static_cast<__int64>(offset), SEEK_SET) == 0;
}

bool TextReader::readLine(char* buffer, int size) {
    return mFile != nullptr && size >= 1 && std::fgets(buffer, size, mFile) != nullptr;
}

} // namespace platform
} // namespace KELKIT
