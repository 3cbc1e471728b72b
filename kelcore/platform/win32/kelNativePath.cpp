#include <kelcore/platform/kelNativePath.h>

#include <cstdlib>
#include <cstring>
#include <direct.h>

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
    return true;
}

bool toNativeItemPath(char const* path, std::string& native, bool& endsWithSeparator) {
    if (!toNativePath(path, native)) {
        return false;
    }
    // "C:\" and "\" name roots and keep their separator.
    std::size_t end = native.size();
    std::size_t const keep = (end >= 2 && native[1] == ':') ? 3 : 1;
    while (end > keep && (native[end - 1] == '\\' || native[end - 1] == '/')) {
        --end;
    }
    endsWithSeparator = end < native.size();
    native.resize(end);
    return true;
}

void fromNativePath(std::string& /*path: already in the library's form*/) {}

bool getWorkingFolder(std::string& folder) {
    char* const cwd = ::_getcwd(nullptr, 0); // the runtime sizes the buffer itself
    if (cwd == nullptr) {
        return false;
    }
    folder.assign(cwd);
    std::free(cwd);
    return true;
}

} // namespace platform
} // namespace KELKIT
