#include <kelcore/platform/kelFileStream.h>

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

} // namespace platform
} // namespace KELKIT
