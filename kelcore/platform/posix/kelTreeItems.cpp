#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/kelPathChanges.h>
#include <kelcore/platform/kelTreeItems.h>
#include <kelcore/platform/posix/kelAttributeWord.h>
#include <kelcore/platform/posix/kelDescriptor.h>
#include <kelcore/platform/posix/kelItemAt.h>

#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace KELKIT {
namespace platform {

namespace {

// A folder on the way: opened for lookups only, never through a link.
constexpr int kWayFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

using posix::Descriptor;

enum class Place { Outside, Root, Inside };

} // namespace

struct TreeItems::State {
    int root = -1;
    std::string text; // the root as the caller wrote it

    // The folder that holds item, reached from the root, and the item's name in it.
    Place locate(char const* item, Descriptor& folder, std::string& name) const {
        if (root < 0 || item == nullptr || std::strlen(item) > kMaxPathLength ||
            std::strncmp(item, text.c_str(), text.size()) != 0) {
            return Place::Outside;
        }
        char const* rest = item + text.size();
        bool const rootEndsWithSeparator =
            !text.empty() && (text.back() == '\\' || text.back() == '/');
        if (*rest != '\0' && !rootEndsWithSeparator && *rest != '\\' && *rest != '/') {
            return Place::Outside; // "rootX" is not in "root"
        }
        // Both separators count: POSIX takes a slash inside a library name as one as well.
        std::vector<std::string> parts;
        for (char const* at = rest; *at != '\0';) {
            std::size_t const length = std::strcspn(at, "\\/");
            if (length != 0) {
                parts.emplace_back(at, length);
            }
            at += length + (at[length] != '\0' ? 1 : 0);
        }
        if (parts.empty()) {
            return Place::Root;
        }
        int current = root;
        Descriptor way[2];
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (parts[i] == "." || parts[i] == "..") {
                return Place::Outside;
            }
            if (i + 1 < parts.size()) {
                Descriptor& next = way[i % 2];
                if (next.fd >= 0) {
                    ::close(next.fd);
                }
                next.fd = ::openat(current, parts[i].c_str(), kWayFlags);
                if (next.fd < 0) {
                    return Place::Outside;
                }
                current = next.fd;
            }
        }
        folder.fd = ::dup(current);
        name = parts.back();
        return folder.fd < 0 ? Place::Outside : Place::Inside;
    }
};

TreeItems::TreeItems() : mState(new State()) {}

TreeItems::~TreeItems() {
    if (mState->root >= 0) {
        ::close(mState->root);
    }
}

bool TreeItems::open(char const* root) {
    std::string native;
    bool endsWithSeparator = false;
    if (mState->root >= 0 || !toNativeItemPath(root, native, endsWithSeparator)) {
        return false;
    }
    mState->root = ::open(native.c_str(), kWayFlags);
    mState->text = root;
    return mState->root >= 0;
}

bool TreeItems::getItemAttributeWord(char const* item, UInt32& word) const {
    Descriptor folder;
    std::string name;
    struct stat status;
    switch (mState->locate(item, folder, name)) {
    case Place::Root:
        return platform::getItemAttributeWord(item, word);
    case Place::Inside:
        if (::fstatat(folder.fd, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return false;
        }
        word = attributeWordOf(name.c_str(), status.st_mode);
        return true;
    default:
        return false;
    }
}

bool TreeItems::setItemAttributeWord(char const* item, UInt32 word) const {
    Descriptor folder;
    std::string name;
    struct stat status;
    if (mState->locate(item, folder, name) != Place::Inside ||
        ::fstatat(folder.fd, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        S_ISLNK(status.st_mode)) {
        return false;
    }
    mode_t mode = status.st_mode & 07777;
    mode = (word & kAttributeReadOnly) != 0 ? (mode & ~mode_t(0222)) : (mode | S_IWUSR);
    return ::fchmodat(folder.fd, name.c_str(), mode, 0) == 0;
}

FileHandle TreeItems::openForOverwrite(char const* item) const {
    Descriptor folder;
    std::string name;
    return mState->locate(item, folder, name) == Place::Inside
               ? openForOverwriteAt(folder.fd, name.c_str())
               : kNoFileHandle;
}

FileHandle TreeItems::openForReading(char const* item) const {
    Descriptor folder;
    std::string name;
    return mState->locate(item, folder, name) == Place::Inside
               ? openForReadingAt(folder.fd, name.c_str())
               : kNoFileHandle;
}

bool TreeItems::removeFile(char const* item) const {
    Descriptor folder;
    std::string name;
    return mState->locate(item, folder, name) == Place::Inside &&
           ::unlinkat(folder.fd, name.c_str(), 0) == 0;
}

bool TreeItems::removeFolder(char const* item) const {
    Descriptor folder;
    std::string name;
    switch (mState->locate(item, folder, name)) {
    case Place::Root:
        return platform::removeFolder(item);
    case Place::Inside:
        return ::unlinkat(folder.fd, name.c_str(), AT_REMOVEDIR) == 0;
    default:
        return false;
    }
}

} // namespace platform
} // namespace KELKIT
