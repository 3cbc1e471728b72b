#include <kelcore/platform/kelFileStream.h>

#include <string>
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

} // namespace platform
} // namespace KELKIT
