#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelSystemInfo.h>
#include <kelcore/platform/posix/kelTrash.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

namespace {

// The Path key holds the path escaped as in a URL: every byte but the unreserved characters
// of RFC 2396 and the separator as %XX.
std::string escaped(std::string const& path) {
    static char const hex[] = "0123456789ABCDEF";
    std::string out;
    for (char const c : path) {
        unsigned char const byte = static_cast<unsigned char>(c);
        bool const plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= '0' && byte <= '9') ||
                           std::string("/-_.!~*'()").find(c) != std::string::npos;
        if (plain) {
            out += c;
        } else {
            out += '%';
            out += hex[byte >> 4];
            out += hex[byte & 15];
        }
    }
    return out;
}

// Local time as the trash records it: YYYY-MM-DDThh:mm:ss.
std::string deletionDate() {
    std::time_t const now = std::time(nullptr);
    std::tm local{};
    char text[32] = "";
    if (::localtime_r(&now, &local) != nullptr) {
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    }
    return text;
}

// A folder of the trash: made with mode 0700 where missing (parents too, when asked), and
// never a link.
bool trashFolder(std::string const& path, bool withParents) {
    struct stat status;
    if (::lstat(path.c_str(), &status) == 0) {
        return S_ISDIR(status.st_mode);
    }
    if (withParents) {
        std::size_t const slash = path.rfind('/');
        if (slash != std::string::npos && slash > 0 && !trashFolder(path.substr(0, slash), true)) {
            return false;
        }
    }
    return (::mkdir(path.c_str(), 0700) == 0 || errno == EEXIST) &&
           ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool writeAll(int fd, std::string const& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        ssize_t const put = ::write(fd, text.data() + done, text.size() - done);
        if (put < 0 && errno == EINTR) {
            continue;
        }
        if (put <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(put);
    }
    return true;
}

// Moves the item at `absolute` into the trash folder `trash`. The info file is made first and
// exclusively, which reserves the name; the item then moves without replacing anything.
bool trashInto(std::string const& trash, bool withParents, std::string const& absolute) {
    std::string const files = trash + "/files";
    std::string const info = trash + "/info";
    if (!trashFolder(trash, withParents) || !trashFolder(files, false) ||
        !trashFolder(info, false)) {
        return false;
    }
    std::string const base = absolute.substr(absolute.rfind('/') + 1);
    std::string const record =
        "[Trash Info]\nPath=" + escaped(absolute) + "\nDeletionDate=" + deletionDate() + "\n";
    for (int n = 1; n < 100000; ++n) {
        std::string const name = n == 1 ? base : base + "." + std::to_string(n);
        std::string const infoFile = info + "/" + name + ".trashinfo";
        int const fd =
            ::open(infoFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (fd < 0) {
            if (errno == EEXIST) {
                continue;
            }
            return false;
        }
        bool const written = writeAll(fd, record);
        if (::close(fd) != 0 || !written) {
            ::unlink(infoFile.c_str());
            return false;
        }
        std::string const target = files + "/" + name;
        if (::renameat2(AT_FDCWD, absolute.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) ==
            0) {
            return true;
        }
        int error = errno;
        if (error == EINVAL || error == ENOSYS || error == EOPNOTSUPP) {
            // The flag is refused here: the name was free when looked at.
            struct stat status;
            error = ::lstat(target.c_str(), &status) == 0                ? EEXIST
                    : std::rename(absolute.c_str(), target.c_str()) == 0 ? 0
                                                                         : errno;
            if (error == 0) {
                return true;
            }
        }
        ::unlink(infoFile.c_str());
        if (error != EEXIST) {
            errno = error;
            return false; // EXDEV among others: another trash may take it
        }
    }
    return false;
}

// The top folder of the file system that holds `folder` (a path without links).
std::string topFolderOf(std::string folder, dev_t device) {
    while (folder.size() > 1) {
        std::size_t const slash = folder.rfind('/');
        std::string const parent = slash == 0 ? "/" : folder.substr(0, slash);
        struct stat status;
        if (::stat(parent.c_str(), &status) != 0 || status.st_dev != device) {
            break;
        }
        folder = parent;
    }
    return folder;
}

} // namespace

bool moveToTrash(std::string const& native) {
    std::size_t const slash = native.rfind('/');
    std::string const name = slash == std::string::npos ? native : native.substr(slash + 1);
    std::string const parent = slash == std::string::npos ? "." : native.substr(0, slash + 1);
    struct stat item;
    if (name.empty() || name == "." || name == ".." || ::lstat(native.c_str(), &item) != 0) {
        return false;
    }
    // The folder is written without links, ".." or "." so that the recorded path leads back to
    // the same place; the item's own name stays as it is (a link is not resolved).
    char* const real = ::realpath(parent.c_str(), nullptr);
    if (real == nullptr) {
        return false;
    }
    std::string const folder = real;
    std::free(real);
    std::string const absolute = (folder == "/" ? "" : folder) + "/" + name;

    std::string home;
    if (toNativePath(knownFolder(KnownFolder::UserSettings).c_str(), home)) {
        if (trashInto(home + "/Trash", true, absolute)) {
            return true;
        }
        if (errno != EXDEV) {
            return false;
        }
    }
    // Another file system: its own trash. A shared .Trash counts only when it is a real
    // folder with the sticky bit; otherwise the user's .Trash-$uid is used.
    std::string const top = topFolderOf(folder, item.st_dev);
    std::string const base = top == "/" ? "" : top;
    std::string const uid = std::to_string(::getuid());
    struct stat shared;
    if (::lstat((base + "/.Trash").c_str(), &shared) == 0 && S_ISDIR(shared.st_mode) &&
        (shared.st_mode & S_ISVTX) != 0 && trashInto(base + "/.Trash/" + uid, false, absolute)) {
        return true;
    }
    return trashInto(base + "/.Trash-" + uid, false, absolute);
}

} // namespace platform
} // namespace KELKIT
