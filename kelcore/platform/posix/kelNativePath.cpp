#include <kelcore/platform/kelNativePath.h>

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

namespace KELKIT {
namespace platform {

void native::toSystemSeparators(std::string& path) {
    std::replace(path.begin(), path.end(), '\\', '/');
}

std::size_t native::rootLength(std::string const& /*path*/) {
    return 1;
}

void fromNativePath(std::string& path) {
    std::replace(path.begin(), path.end(), '/', '\\');
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
