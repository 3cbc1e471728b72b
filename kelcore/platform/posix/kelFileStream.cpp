#include <kelcore/platform/kelFileStream.h>

#include <stdio_ext.h>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace KELKIT {
namespace platform {

std::FILE* openFileStream(char const* path, char const* mode) {
    if (path == nullptr) {
        return nullptr;
    }
    std::string native(path);
    for (char& c : native) {
        if (c == '\\') {
            c = '/';
        }
    }
    return std::fopen(native.c_str(), mode);
}

bool seekFileStream(std::FILE* stream, long long offset, int whence) {
    return fseeko(stream, static_cast<off_t>(offset), whence) == 0;
}

long long tellFileStream(std::FILE* stream) {
    return static_cast<long long>(ftello(stream));
}

bool fileStreamLength(std::FILE* stream, long long& length) {
    struct stat status;
    if (__fpending(stream) != 0 || fstat(fileno(stream), &status) != 0) {
        return false;
    }
    length = static_cast<long long>(status.st_size);
    return true;
}

} // namespace platform
} // namespace KELKIT
