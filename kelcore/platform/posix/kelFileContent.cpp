#include <kelcore/platform/kelFileContent.h>
#include <kelcore/platform/kelNativePath.h>
#include <kelcore/platform/posix/kelItemAt.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

namespace {

// Open flags of the content operations: never through a link at the path, no controlling
// terminal, and no wait at open for a FIFO (cleared once the item is known).
constexpr int kContentFlags = O_NOFOLLOW | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

// Closes fd keeping the reason of the failure in errno; gives kNoFileHandle.
FileHandle giveBack(int fd, int error) {
    ::close(fd);
    errno = error;
    return kNoFileHandle;
}

bool blocking(int fd) {
    int const flags = ::fcntl(fd, F_GETFL);
    return flags >= 0 && ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

bool sameFile(struct stat const& a, struct stat const& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

int openForOverwriteAt(int folder, char const* name) {
    int const fd = ::openat(folder, name, O_RDWR | kContentFlags);
    if (fd < 0) {
        return -1;
    }
    // Writing spaces over a device or into a FIFO overwrites no file's content.
    struct stat status;
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode) || !blocking(fd)) {
        giveBack(fd, EINVAL);
        return -1;
    }
    return fd;
}

int openForReadingAt(int folder, char const* name) {
    int const fd = ::openat(folder, name, O_RDONLY | kContentFlags);
    if (fd < 0) {
        return -1;
    }
    struct stat status;
    if (::fstat(fd, &status) != 0 || S_ISDIR(status.st_mode) || !blocking(fd)) {
        giveBack(fd, EISDIR);
        return -1;
    }
    return fd;
}

FileHandle openForOverwrite(char const* path) {
    std::string native;
    return toNativePath(path, native) ? openForOverwriteAt(AT_FDCWD, native.c_str())
                                      : kNoFileHandle;
}

FileHandle openCopyTarget(char const* path, FileHandle source) {
    std::string native;
    struct stat from;
    if (!toNativePath(path, native) || ::fstat(static_cast<int>(source), &from) != 0) {
        return kNoFileHandle;
    }
    // Not truncated at open: the source itself must be recognised first.
    int const fd = ::open(native.c_str(), O_WRONLY | O_CREAT | kContentFlags, 0666);
    if (fd < 0) {
        return kNoFileHandle;
    }
    struct stat to;
    if (::fstat(fd, &to) != 0 || sameFile(from, to)) {
        return giveBack(fd, EINVAL);
    }
    // Only a file with content is truncated: ext4 takes a truncation to zero for a rewrite and
    // pushes the new data to the disk at close, which would slow every copy into a new file.
    if ((S_ISREG(to.st_mode) && to.st_size != 0 && ::ftruncate(fd, 0) != 0) || !blocking(fd)) {
        return giveBack(fd, errno);
    }
    return fd;
}

CopyChannel::CopyChannel(FileHandle source, FileHandle target, UInt32 bufferSize)
    : mSource(source), mTarget(target), mBufferSize(std::max<UInt32>(bufferSize, 1)),
      mInKernel(true) {
    // Read ahead generously, as for any front-to-back copy.
    ::posix_fadvise(static_cast<int>(source), 0, 0, POSIX_FADV_SEQUENTIAL);
}

bool CopyChannel::move(UInt64 count, UInt64& moved) {
    moved = 0;
    if (count == 0) {
        return true;
    }
    while (mInKernel) {
        std::size_t const step = static_cast<std::size_t>(std::min<UInt64>(count, 1u << 30));
        ssize_t const done = ::copy_file_range(static_cast<int>(mSource), nullptr,
                                               static_cast<int>(mTarget), nullptr, step, 0);
        if (done > 0) {
            moved = static_cast<UInt64>(done);
            return true;
        }
        if (done < 0 && errno == EINTR) {
            continue;
        }
        // An error, or nothing: the end, or items the kernel cannot copy (pipes, devices, other
        // file systems, files that report no size such as those of /proc). Plain reads and
        // writes tell which, and carry on from here.
        mInKernel = false;
    }
    return moveThroughBuffer(count, moved);
}

bool CopyChannel::moveThroughBuffer(UInt64 count, UInt64& moved) {
    if (mBuffer.empty()) {
        mBuffer.resize(mBufferSize);
    }
    std::size_t const want = static_cast<std::size_t>(std::min<UInt64>(count, mBuffer.size()));
    ssize_t got;
    do {
        got = ::read(static_cast<int>(mSource), mBuffer.data(), want);
    } while (got < 0 && errno == EINTR);
    if (got <= 0) {
        return got == 0;
    }
    for (ssize_t written = 0; written < got;) {
        ssize_t const put = ::write(static_cast<int>(mTarget), mBuffer.data() + written,
                                    static_cast<std::size_t>(got - written));
        if (put < 0 && errno == EINTR) {
            continue;
        }
        if (put <= 0) {
            return false; // a full disk takes nothing: no second try
        }
        written += put;
    }
    moved = static_cast<UInt64>(got);
    return true;
}

bool flushFileHandle(FileHandle handle) {
    // A file system without a flush of its own (EINVAL) keeps nothing back to write.
    return ::fsync(static_cast<int>(handle)) == 0 || errno == EINVAL || errno == EROFS;
}

void discardCopyTarget(FileHandle target, char const* path) {
    int const fd = static_cast<int>(target);
    struct stat opened;
    if (::fstat(fd, &opened) == 0 && S_ISREG(opened.st_mode)) {
        if (::ftruncate(fd, 0) != 0) {
            // Emptying failed; removing the name below still leaves no complete-looking copy.
        }
        std::string native;
        struct stat named;
        if (toNativePath(path, native) && ::lstat(native.c_str(), &named) == 0 &&
            sameFile(opened, named)) {
            ::unlink(native.c_str());
        }
    }
    ::close(fd);
}

} // namespace platform
} // namespace KELKIT
