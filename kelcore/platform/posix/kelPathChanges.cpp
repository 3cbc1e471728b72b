#include <kelcore/platform/kelPathChanges.h>

#include <kelcore/platform/kelNativePath.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

namespace {

// Where the file system refuses RENAME_NOREPLACE (some network and FUSE file systems), a file
// moves as a new hard link plus the removal of the old name: link() fails on a taken name, so
// nothing is replaced. A folder cannot be linked; it is renamed after a check, which leaves a
// small window in which another process could take the name.
bool renameWithoutFlag(std::string const& from, std::string const& to) {
    struct stat source;
    if (::lstat(from.c_str(), &source) != 0) {
        return false;
    }
    if (!S_ISDIR(source.st_mode)) {
        if (::link(from.c_str(), to.c_str()) == 0) {
            return ::unlink(from.c_str()) == 0;
        }
        if (errno == EEXIST) {
            return false;
        }
    }
    struct stat target;
    if (::lstat(to.c_str(), &target) == 0 || errno != ENOENT) {
        return false;
    }
    return std::rename(from.c_str(), to.c_str()) == 0;
}

} // namespace

bool renameItem(char const* from, char const* to) {
    std::string nativeFrom;
    std::string nativeTo;
    bool endsWithSeparator = false;
    if (!toNativeItemPath(from, nativeFrom, endsWithSeparator) ||
        !toNativeItemPath(to, nativeTo, endsWithSeparator)) {
        return false;
    }
    // Plain rename() silently replaces a taken name; the Windows runtime refuses it.
    if (::renameat2(AT_FDCWD, nativeFrom.c_str(), AT_FDCWD, nativeTo.c_str(), RENAME_NOREPLACE) ==
        0) {
        return true;
    }
    if (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) {
        return renameWithoutFlag(nativeFrom, nativeTo);
    }
    return false;
}

} // namespace platform
} // namespace KELKIT
