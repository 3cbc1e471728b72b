#include <kelcore/platform/kelPathChanges.h>

#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/posix/kelItemAt.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

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

bool makeFolder(char const* path) {
    std::string native;
    bool endsWithSeparator = false;
    return toNativeItemPath(path, native, endsWithSeparator) && ::mkdir(native.c_str(), 0777) == 0;
}

bool removeFolder(char const* path) {
    // Without the trailing separators: "link/" would name the folder behind a link.
    std::string native;
    bool endsWithSeparator = false;
    return toNativeItemPath(path, native, endsWithSeparator) && ::rmdir(native.c_str()) == 0;
}

bool removeFile(char const* path) {
    // A trailing separator stays, so that "file/" names no file here either.
    std::string native;
    return toNativePath(path, native) && ::unlink(native.c_str()) == 0;
}

bool readLinkAt(int folder, char const* name, std::size_t sizeHint, std::vector<char>& text) {
    text.assign(sizeHint + 1, '\0');
    for (;;) {
        ssize_t const length = ::readlinkat(folder, name, text.data(), text.size());
        if (length < 0) {
            return false;
        }
        if (static_cast<std::size_t>(length) < text.size()) {
            text[static_cast<std::size_t>(length)] = '\0';
            return true;
        }
        text.resize(text.size() * 2);
    }
}

bool copyLink(char const* source, char const* target) {
    std::string from;
    std::string to;
    bool endsWithSeparator = false;
    struct stat status;
    if (!toNativeItemPath(source, from, endsWithSeparator) || endsWithSeparator ||
        !toNativeItemPath(target, to, endsWithSeparator) || ::lstat(from.c_str(), &status) != 0 ||
        !S_ISLNK(status.st_mode)) {
        return false;
    }
    std::vector<char> content;
    if (!readLinkAt(AT_FDCWD, from.c_str(), static_cast<std::size_t>(status.st_size), content)) {
        return false;
    }
    struct stat existing;
    if (::lstat(to.c_str(), &existing) == 0 &&
        (S_ISDIR(existing.st_mode) ||
         (existing.st_dev == status.st_dev && existing.st_ino == status.st_ino) ||
         ::unlink(to.c_str()) != 0)) {
        return false;
    }
    return ::symlink(content.data(), to.c_str()) == 0;
}

} // namespace platform
} // namespace KELKIT
