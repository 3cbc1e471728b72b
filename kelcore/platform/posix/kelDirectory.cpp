#include <kelcore/platform/kelDirectory.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/posix/kelAttributeWord.h>

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

struct DirectoryReader::State {
    DIR* dir = nullptr;
};

namespace {

// O_NOFOLLOW: a link is never entered, also when an entry is swapped for one after it was read.
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool adopt(DIR*& dir, int fd) {
    if (fd < 0) {
        return false;
    }
    dir = ::fdopendir(fd);
    if (dir == nullptr) {
        ::close(fd);
        return false;
    }
    return true;
}

} // namespace

DirectoryReader::DirectoryReader() : mState(new State()) {}

DirectoryReader::~DirectoryReader() {
    close();
}

bool DirectoryReader::open(char const* path) {
    close();
    std::string native;
    bool endsWithSeparator = false;
    return toNativeItemPath(path, native, endsWithSeparator) &&
           adopt(mState->dir, ::open(native.c_str(), kFolderFlags));
}

bool DirectoryReader::openChild(DirectoryReader const& parent, char const* name,
                                char const* /*path*/) {
    close();
    return parent.mState->dir != nullptr &&
           adopt(mState->dir, ::openat(::dirfd(parent.mState->dir), name, kFolderFlags));
}

bool DirectoryReader::next(DirectoryEntry& entry, bool wantAttributes) {
    if (mState->dir == nullptr) {
        return false;
    }
    for (;;) {
        struct dirent const* const found = ::readdir(mState->dir);
        if (found == nullptr) {
            return false;
        }
        char const* const name = found->d_name;
        if (std::strchr(name, '\\') != nullptr) {
            continue;
        }
        mode_t mode = 0;
        switch (found->d_type) {
        case DT_DIR:
            mode = S_IFDIR | S_IWUSR;
            break;
        case DT_LNK:
            mode = S_IFLNK;
            break;
        case DT_UNKNOWN:
            wantAttributes = true;
            break;
        default:
            mode = S_IFREG | S_IWUSR;
            break;
        }
        if (wantAttributes) {
            struct stat status;
            if (::fstatat(::dirfd(mState->dir), name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
                mode = status.st_mode;
            } else if (found->d_type == DT_UNKNOWN) {
                continue; // gone since it was read
            }
        }
        entry.name = name;
        entry.attributes = attributeWordOf(name, mode);
        return true;
    }
}

void DirectoryReader::close() {
    if (mState->dir != nullptr) {
        ::closedir(mState->dir);
        mState->dir = nullptr;
    }
}

} // namespace platform
} // namespace KELKIT
