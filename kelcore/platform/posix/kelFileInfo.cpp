#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/posix/kelAttributeWord.h>

#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

namespace {

// lstat of the item at a library path. A path ending in a separator names a folder: lstat
// would follow a link written that way, so the separators go and the item must be a folder.
bool statItem(char const* path, std::string& native, struct stat& status) {
    bool endsWithSeparator = false;
    if (!toNativeItemPath(path, native, endsWithSeparator) ||
        ::lstat(native.c_str(), &status) != 0) {
        return false;
    }
    return !endsWithSeparator || S_ISDIR(status.st_mode);
}

} // namespace

UInt32 attributeWordOf(char const* name, mode_t mode) {
    UInt32 word = 0;
    if (S_ISDIR(mode)) {
        word |= kAttributeDirectory;
    } else if (S_ISLNK(mode)) {
        word |= kAttributeReparsePoint; // a link has no permissions of its own
    }
    if (!S_ISLNK(mode) && (mode & S_IWUSR) == 0) {
        word |= kAttributeReadOnly;
    }
    // "." and ".." stand for folders by their role; their names say nothing about hiding.
    if (name[0] == '.' && std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) {
        word |= kAttributeHidden;
    }
    return word;
}

bool getItemAttributeWord(char const* path, UInt32& word) {
    std::string native;
    struct stat status;
    if (!statItem(path, native, status)) {
        return false;
    }
    std::size_t const slash = native.rfind('/');
    char const* const name =
        (slash == std::string::npos || native.size() == 1) ? native.c_str() : &native[slash + 1];
    word = attributeWordOf(name, status.st_mode);
    return true;
}

bool isFileItem(char const* path) {
    std::string native;
    struct stat status;
    return statItem(path, native, status) && !S_ISDIR(status.st_mode);
}

bool isEnterableFolder(char const* path) {
    // Search permission for this process's effective identity, the one that chdir would use.
    std::string native;
    struct stat status;
    return statItem(path, native, status) && S_ISDIR(status.st_mode) &&
           ::faccessat(AT_FDCWD, native.c_str(), X_OK, AT_EACCESS) == 0;
}

bool setItemAttributeWord(char const* path, UInt32 word) {
    std::string native;
    struct stat status;
    if (!statItem(path, native, status) || S_ISLNK(status.st_mode)) {
        return false;
    }
    // Read-only takes every write bit away; clearing it gives the owner write access back.
    mode_t mode = status.st_mode & 07777;
    mode = (word & kAttributeReadOnly) != 0 ? (mode & ~mode_t(0222)) : (mode | S_IWUSR);
    return ::chmod(native.c_str(), mode) == 0;
}

bool getMetadataSize(char const* path, UInt64& size) {
    std::string native;
    struct stat status;
    if (!toNativePath(path, native) || ::stat(native.c_str(), &status) != 0) {
        return false;
    }
    size = S_ISDIR(status.st_mode) ? 0 : static_cast<UInt64>(status.st_size);
    return true;
}

} // namespace platform
} // namespace KELKIT
