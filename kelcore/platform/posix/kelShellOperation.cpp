#include <kelcore/platform/kelFileContent.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelPathChanges.h>
#include <kelcore/platform/kelShellOperation.h>
#include <kelcore/platform/posix/kelDescriptor.h>
#include <kelcore/platform/posix/kelItemAt.h>
#include <kelcore/platform/posix/kelTrash.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

// The shell's batch operation, carried out by the library: every source is checked and every
// destination worked out before the first change, trees are walked through folder descriptors
// with O_NOFOLLOW (a link is copied, moved or removed as itself and never entered), and an
// existing item is replaced only when the caller waived the confirmation.

namespace KELKIT {
namespace platform {

namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr UInt32 kCopyBuffer = 1u << 20;

using posix::Descriptor;

std::vector<std::string> listOf(char const* doubleZero) {
    std::vector<std::string> paths;
    for (char const* p = doubleZero; p != nullptr && *p != '\0'; p += std::strlen(p) + 1) {
        paths.emplace_back(p);
    }
    return paths;
}

std::string nameOf(std::string const& path) {
    std::size_t const slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string parentOf(std::string const& path) {
    std::size_t const slash = path.rfind('/');
    return slash == std::string::npos ? "." : (slash == 0 ? "/" : path.substr(0, slash));
}

std::string childOf(std::string const& folder, std::string const& name) {
    return folder == "/" ? "/" + name : folder + "/" + name;
}

// '*' stands for any run of characters, '?' for one; bytes compare exactly.
bool matches(char const* pattern, char const* name) {
    char const* starPattern = nullptr;
    char const* starName = nullptr;
    while (*name != '\0') {
        if (*pattern == '*') {
            starPattern = ++pattern;
            starName = name;
        } else if (*pattern == '?' || *pattern == *name) {
            ++pattern;
            ++name;
        } else if (starPattern != nullptr) {
            pattern = starPattern;
            name = ++starName;
        } else {
            return false;
        }
    }
    while (*pattern == '*') {
        ++pattern;
    }
    return *pattern == '\0';
}

// The names of a folder, "." and ".." left out, in byte order.
bool namesIn(int folder, std::vector<std::string>& names) {
    int const fd = ::dup(folder);
    DIR* const dir = fd < 0 ? nullptr : ::fdopendir(fd);
    if (dir == nullptr) {
        if (fd >= 0) {
            ::close(fd);
        }
        return false;
    }
    ::rewinddir(dir);
    while (struct dirent const* entry = ::readdir(dir)) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
            names.emplace_back(entry->d_name);
        }
    }
    ::closedir(dir);
    std::sort(names.begin(), names.end());
    return true;
}

// Library paths as native ones, without trailing separators; a wildcard in the last part
// stands for the matching names of that folder (at least one).
bool nativeSources(std::vector<std::string> const& library, std::vector<std::string>& native) {
    for (std::string const& path : library) {
        std::string item;
        bool endsWithSeparator = false;
        if (!toNativeItemPath(path.c_str(), item, endsWithSeparator)) {
            return false;
        }
        std::string const name = nameOf(item);
        if (name.find_first_of("*?") == std::string::npos) {
            native.push_back(item);
            continue;
        }
        std::string const folder = item == name ? "." : parentOf(item);
        Descriptor const dir(::open(folder.c_str(), kFolderFlags & ~O_NOFOLLOW));
        std::vector<std::string> names;
        if (dir.fd < 0 || !namesIn(dir.fd, names)) {
            return false;
        }
        std::size_t const before = native.size();
        for (std::string const& candidate : names) {
            if (matches(name.c_str(), candidate.c_str())) {
                native.push_back(item == name ? candidate : childOf(folder, candidate));
            }
        }
        if (native.size() == before) {
            return false;
        }
    }
    return true;
}

// Whether path lies in folder or is folder, both resolved as the system would (the part of
// path that does not exist yet is taken as written).
bool inside(std::string const& path, std::string const& folder) {
    char* const realFolder = ::realpath(folder.c_str(), nullptr);
    if (realFolder == nullptr) {
        return true; // cannot tell: the safe answer
    }
    std::string const base = realFolder;
    std::free(realFolder);
    std::string existing = path;
    std::string rest;
    struct stat status;
    while (::lstat(existing.c_str(), &status) != 0) {
        rest = "/" + nameOf(existing) + rest;
        std::string const parent = parentOf(existing);
        if (parent == existing) {
            break;
        }
        existing = parent;
    }
    char* const realPath = ::realpath(existing.c_str(), nullptr);
    if (realPath == nullptr) {
        return true;
    }
    std::string const resolved = std::string(realPath) + rest;
    std::free(realPath);
    return base == "/" || resolved == base || resolved.compare(0, base.size() + 1, base + "/") == 0;
}

// Makes a folder and its missing parents.
bool makeFolders(std::string const& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) == 0) {
        return S_ISDIR(status.st_mode);
    }
    std::string const parent = parentOf(path);
    return (parent == path || makeFolders(parent)) &&
           (::mkdir(path.c_str(), 0777) == 0 || errno == EEXIST);
}

// Permissions and modification time of the source, as the shell's copy keeps them.
void keepMetadata(int fd, struct stat const& source) {
    struct timespec const times[2] = {source.st_atim, source.st_mtim};
    ::fchmod(fd, source.st_mode & 07777);
    ::futimens(fd, times);
}

bool copyAt(int fromDir, char const* fromName, int toDir, char const* toName);

bool copyFolderAt(int fromDir, char const* fromName, struct stat const& source, int toDir,
                  char const* toName, bool exists) {
    // Private while it is filled; the source's permissions come last.
    if (!exists && ::mkdirat(toDir, toName, 0700) != 0) {
        return false;
    }
    Descriptor const from(::openat(fromDir, fromName, kFolderFlags));
    Descriptor const to(::openat(toDir, toName, kFolderFlags));
    std::vector<std::string> names;
    if (from.fd < 0 || to.fd < 0 || !namesIn(from.fd, names)) {
        return false;
    }
    for (std::string const& name : names) {
        if (!copyAt(from.fd, name.c_str(), to.fd, name.c_str())) {
            return false;
        }
    }
    keepMetadata(to.fd, source);
    return true;
}

bool copyFileAt(int fromDir, char const* fromName, struct stat const& source, int toDir,
                char const* toName) {
    Descriptor const from(::openat(fromDir, fromName, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    struct stat opened;
    if (from.fd < 0 || ::fstat(from.fd, &opened) != 0 || !S_ISREG(opened.st_mode)) {
        return false;
    }
    // Not truncated before it is known not to be the source under another name.
    Descriptor const to(
        ::openat(toDir, toName, O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY, 0600));
    struct stat target;
    if (to.fd < 0 || ::fstat(to.fd, &target) != 0 || !S_ISREG(target.st_mode) ||
        (target.st_dev == opened.st_dev && target.st_ino == opened.st_ino) ||
        (target.st_size != 0 && ::ftruncate(to.fd, 0) != 0)) {
        return false;
    }
    CopyChannel channel(from.fd, to.fd, kCopyBuffer);
    UInt64 moved = 0;
    do {
        if (!channel.move(UInt64(1) << 30, moved)) {
            return false;
        }
    } while (moved != 0);
    keepMetadata(to.fd, source);
    return true;
}

bool copyLinkAt(int fromDir, char const* fromName, struct stat const& source, int toDir,
                char const* toName) {
    std::vector<char> content;
    return readLinkAt(fromDir, fromName, static_cast<std::size_t>(source.st_size), content) &&
           ::symlinkat(content.data(), toDir, toName) == 0;
}

// Copies the item fromName of one folder to toName in another. An existing target of the same
// kind is replaced (a folder merged); one of the other kind fails the copy.
bool copyAt(int fromDir, char const* fromName, int toDir, char const* toName) {
    struct stat source;
    struct stat target;
    if (::fstatat(fromDir, fromName, &source, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    bool const exists = ::fstatat(toDir, toName, &target, AT_SYMLINK_NOFOLLOW) == 0;
    if (exists && S_ISDIR(source.st_mode) != S_ISDIR(target.st_mode)) {
        return false;
    }
    if (S_ISDIR(source.st_mode)) {
        return copyFolderAt(fromDir, fromName, source, toDir, toName, exists);
    }
    // A link in the way is replaced itself, never written through.
    if (exists && S_ISLNK(target.st_mode) && ::unlinkat(toDir, toName, 0) != 0) {
        return false;
    }
    if (S_ISREG(source.st_mode)) {
        return copyFileAt(fromDir, fromName, source, toDir, toName);
    }
    if (S_ISLNK(source.st_mode)) {
        if (exists && !S_ISLNK(target.st_mode) && ::unlinkat(toDir, toName, 0) != 0) {
            return false;
        }
        return copyLinkAt(fromDir, fromName, source, toDir, toName);
    }
    return false; // devices, FIFOs and sockets are not copied
}

// Removes an item and, for a folder, everything in it; links go themselves.
bool removeAt(int dir, char const* name) {
    struct stat status;
    if (::fstatat(dir, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    if (!S_ISDIR(status.st_mode)) {
        return ::unlinkat(dir, name, 0) == 0;
    }
    {
        Descriptor const folder(::openat(dir, name, kFolderFlags));
        std::vector<std::string> names;
        if (folder.fd < 0 || !namesIn(folder.fd, names)) {
            return false;
        }
        for (std::string const& child : names) {
            if (!removeAt(folder.fd, child.c_str())) {
                return false;
            }
        }
    }
    return ::unlinkat(dir, name, AT_REMOVEDIR) == 0;
}

bool copyItem(std::string const& from, std::string const& to) {
    return makeFolders(parentOf(to)) && copyAt(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str());
}

// Moves by renaming where it can; across file systems by a copy, after which the source goes
// only if the whole copy succeeded. An existing folder at the target is merged into.
bool moveItem(std::string const& from, std::string const& to) {
    struct stat source;
    struct stat target;
    if (::lstat(from.c_str(), &source) != 0 || !makeFolders(parentOf(to))) {
        return false;
    }
    bool const exists = ::lstat(to.c_str(), &target) == 0;
    if (exists && S_ISDIR(source.st_mode) != S_ISDIR(target.st_mode)) {
        return false;
    }
    if (exists && S_ISDIR(source.st_mode)) {
        Descriptor const folder(::open(from.c_str(), kFolderFlags));
        std::vector<std::string> names;
        if (folder.fd < 0 || !namesIn(folder.fd, names)) {
            return false;
        }
        for (std::string const& name : names) {
            if (!moveItem(childOf(from, name), childOf(to, name))) {
                return false;
            }
        }
        return ::rmdir(from.c_str()) == 0;
    }
    int const result =
        exists ? std::rename(from.c_str(), to.c_str())
               : ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result == 0) {
        return true;
    }
    if (!exists && (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) &&
        ::lstat(to.c_str(), &target) != 0) {
        return std::rename(from.c_str(), to.c_str()) == 0;
    }
    if (errno != EXDEV) {
        return false;
    }
    if (!copyAt(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str())) {
        if (!exists) {
            removeAt(AT_FDCWD, to.c_str()); // nothing half-moved stays behind
        }
        return false;
    }
    return removeAt(AT_FDCWD, from.c_str());
}

struct Step {
    std::string from;
    std::string to;
};

// The destination of each source, checked before anything changes.
bool plan(UInt32 flags, std::vector<std::string> const& sources,
          std::vector<std::string> const& targets, std::vector<Step>& steps,
          std::string& folderToMake) {
    std::vector<std::string> natives;
    for (std::string const& target : targets) {
        std::string native;
        bool endsWithSeparator = false;
        if (!toNativeItemPath(target.c_str(), native, endsWithSeparator)) {
            return false;
        }
        natives.push_back(native);
    }
    if ((flags & kShellMultipleTargets) != 0) {
        if (natives.size() != sources.size()) {
            return false;
        }
        for (std::size_t i = 0; i < sources.size(); ++i) {
            steps.push_back(Step{sources[i], natives[i]});
        }
    } else {
        if (natives.size() != 1) {
            return false;
        }
        // Into an existing folder (the caller's own path, so a link to one counts); a single
        // source onto the target name itself; several into a folder made for them.
        struct stat status;
        bool const intoFolder = ::stat(natives[0].c_str(), &status) == 0 && S_ISDIR(status.st_mode);
        if (!intoFolder && sources.size() > 1) {
            folderToMake = natives[0];
        }
        for (std::string const& source : sources) {
            steps.push_back(Step{source, (intoFolder || sources.size() > 1)
                                             ? childOf(natives[0], nameOf(source))
                                             : natives[0]});
        }
    }
    bool const replace = (flags & kShellNoConfirmation) != 0;
    for (Step const& step : steps) {
        std::string const name = nameOf(step.from);
        struct stat source;
        struct stat target;
        if (name.empty() || name == "." || name == ".." ||
            ::lstat(step.from.c_str(), &source) != 0) {
            return false;
        }
        if (::lstat(step.to.c_str(), &target) == 0) {
            bool const same = source.st_dev == target.st_dev && source.st_ino == target.st_ino;
            if (same || !replace || S_ISDIR(source.st_mode) != S_ISDIR(target.st_mode)) {
                return false;
            }
        }
        if (S_ISDIR(source.st_mode) && inside(step.to, step.from)) {
            return false; // a folder never goes into itself
        }
    }
    return true;
}

} // namespace

bool runShellOperation(UInt32 operation, UInt32 flags, char const* sources, char const* targets) {
    std::vector<std::string> const from = listOf(sources);
    std::vector<std::string> const to = listOf(targets);
    if (operation == kShellRename) {
        // One item, one new name, never onto a taken one.
        return from.size() == 1 && to.size() == 1 && renameItem(from[0].c_str(), to[0].c_str());
    }
    // An empty list is an error to the shell as well.
    std::vector<std::string> items;
    if (!nativeSources(from, items) || items.empty()) {
        return false;
    }
    if (operation == kShellDelete) {
        struct stat status;
        for (std::string const& item : items) {
            std::string const name = nameOf(item);
            if (name.empty() || name == "." || name == ".." ||
                ::lstat(item.c_str(), &status) != 0) {
                return false;
            }
        }
        for (std::string const& item : items) {
            bool const done = (flags & kShellAllowUndo) != 0 ? moveToTrash(item)
                                                             : removeAt(AT_FDCWD, item.c_str());
            if (!done) {
                return false;
            }
        }
        return true;
    }
    if (operation != kShellCopy && operation != kShellMove) {
        return false;
    }
    std::vector<Step> steps;
    std::string folderToMake;
    if (!plan(flags, items, to, steps, folderToMake) ||
        (!folderToMake.empty() && !makeFolders(folderToMake))) {
        return false;
    }
    for (Step const& step : steps) {
        if (!(operation == kShellCopy ? copyItem(step.from, step.to)
                                      : moveItem(step.from, step.to))) {
            return false;
        }
    }
    return true;
}

} // namespace platform
} // namespace KELKIT
