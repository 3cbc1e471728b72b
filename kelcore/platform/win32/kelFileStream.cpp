#include <kelcore/platform/kelFileStream.h>

#include <io.h>

namespace KELKIT {
namespace platform {

std::FILE* openFileStream(char const* path, char const* mode) {
    return path == nullptr ? nullptr : std::fopen(path, mode);
}

bool seekFileStream(std::FILE* stream, long long offset, int whence) {
    return _fseeki64(stream, offset, whence) == 0;
}

long long tellFileStream(std::FILE* stream) {
    return _ftelli64(stream);
}

bool fileStreamLength(std::FILE* stream, long long& length) {
    long long const result = _filelengthi64(_fileno(stream));
    if (result < 0) {
        return false;
    }
    length = result;
    return true;
}

} // namespace platform
} // namespace KELKIT
