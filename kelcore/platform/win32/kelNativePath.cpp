#include <kelcore/platform/kelNativePath.h>

#include <cstdlib>
#include <direct.h>

namespace KELKIT {
namespace platform {

void native::toSystemSeparators(std::string& /*path: the system takes backslashes*/) {}

// "C:\" and "\" name roots.
std::size_t native::rootLength(std::string const& path) {
    return (path.size() >= 2 && path[1] == ':') ? 3 : 1;
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
