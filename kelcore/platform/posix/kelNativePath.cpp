#include <kelcore/platform/kelNativePath.h>

#include <cstdlib>
#include <cstring>
#include <unistd.h>

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
    for (char& c : native) {
        if (c == '\\') {
            c = '/';
        }
    }
    return true;
}

bool toNativeItemPath(char const* path, std::string& native, bool& endsWithSeparator) {
    if (!toNativePath(path, native)) {
        return false;
    }
    std::size_t end = native.size();
    while (end > 1 && native[end - 1] == '/') {
        --end;
    }
    endsWithSeparator = end < native.size();
    native.resize(end);
    return true;
}

void fromNativePath(std::string& path) {
    for (char& c : path) {
        if (c == '/') {
            c = '\\';
        }
    }
}

bool getWorkingFolder(std::string& folder) {
    char* const cwd = ::getcwd(nullptr, 0); // glibc sizes the buffer itself
    if (cwd == nullptr) {
        return false;
    }
    folder.assign(cwd);
    std::free(cwd);
    fromNativePath(folder);
    return true;
}

} // namespace platform
} // namespace KELKIT
