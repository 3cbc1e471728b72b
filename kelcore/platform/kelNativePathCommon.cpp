#include <kelcore/platform/kelNativePath.h>

#include <cstring>

namespace KELKIT {
namespace platform {

bool toNativePath(char const* path, std::string& native) {
    if (path == nullptr || path[0] == '\0') {
        return false;
    }
    std::size_t const length = std::strlen(path);
    if (length > kMaxPathLength) {
        return false;
    }
    native.assign(path, length);
    native::toSystemSeparators(native);
    return true;
}

bool toNativeItemPath(char const* path, std::string& native, bool& endsWithSeparator) {
    if (!toNativePath(path, native)) {
        return false;
    }
    std::size_t end = native.size();
    std::size_t const keep = native::rootLength(native);
    while (end > keep && (native[end - 1] == '\\' || native[end - 1] == '/')) {
        --end;
    }
    endsWithSeparator = end < native.size();
    native.resize(end);
    return true;
}

} // namespace platform
} // namespace KELKIT
