#include <kelcore/platform/kelPathChanges.h>

#include <kelcore/platform/kelNativePath.h>

#include <cstdio>
#include <string>

namespace KELKIT {
namespace platform {

bool renameItem(char const* from, char const* to) {
    std::string nativeFrom;
    std::string nativeTo;
    if (!toNativePath(from, nativeFrom) || !toNativePath(to, nativeTo)) {
        return false;
    }
    // The runtime's rename refuses a name that is taken.
    return std::rename(nativeFrom.c_str(), nativeTo.c_str()) == 0;
}

} // namespace platform
} // namespace KELKIT
