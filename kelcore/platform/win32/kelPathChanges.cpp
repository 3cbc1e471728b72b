#include <kelcore/platform/kelPathChanges.h>

#include <kelcore/platform/kelNativePath.h>

#include <windows.h>

#include <cstdio>
#include <direct.h>
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

bool makeFolder(char const* path) {
    std::string native;
    return toNativePath(path, native) && ::_mkdir(native.c_str()) == 0;
}

bool removeFolder(char const* path) {
    std::string native;
    return toNativePath(path, native) && ::_rmdir(native.c_str()) == 0;
}

bool removeFile(char const* path) {
    std::string native;
    return toNativePath(path, native) && std::remove(native.c_str()) == 0;
}

bool copyLink(char const* source, char const* target) {
    std::string from;
    std::string to;
    if (!toNativePath(source, from) || !toNativePath(target, to)) {
        return false;
    }
    // The link itself is copied, replacing an existing file (the system refuses the source
    // itself, which it holds open meanwhile).
    return ::CopyFileExA(from.c_str(), to.c_str(), nullptr, nullptr, nullptr,
                         COPY_FILE_COPY_SYMLINK) != 0;
}

} // namespace platform
} // namespace KELKIT
