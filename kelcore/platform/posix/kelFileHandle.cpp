#include <kelcore/platform/kelFileHandle.h>
#include <kelcore/platform/kelNativePath.h>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

FileHandle openFileHandle(char const* path, FileAccess access, FileCreation creation,
                          unsigned /*share: POSIX has no sharing modes*/) {
    std::string native;
    if (!toNativePath(path, native)) {
        return kNoFileHandle;
    }
    int flags = O_CLOEXEC | O_NONBLOCK; // no wait at open for a FIFO; cleared below
    switch (access) {
    case FileAccess::Read:
        flags |= O_RDONLY;
        break;
    case FileAccess::Write:
        flags |= O_WRONLY;
        break;
    case FileAccess::ReadWrite:
        flags |= O_RDWR;
        break;
    }
    switch (creation) {
    case FileCreation::OpenAlways:
        flags |= O_CREAT;
        break;
    case FileCreation::OpenExisting:
        break;
    case FileCreation::CreateAlways:
        flags |= O_CREAT | O_TRUNC;
        break;
    case FileCreation::CreateNew:
        flags |= O_CREAT | O_EXCL;
        break;
    }
    int const fd = ::open(native.c_str(), flags, 0666);
    if (fd < 0) {
        return kNoFileHandle;
    }
    // Reading opens folders on Linux; on Windows it never does.
    struct stat status;
    bool const folder = ::fstat(fd, &status) == 0 && S_ISDIR(status.st_mode);
    if (folder || ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK) != 0) {
        int const error = folder ? EISDIR : errno;
        ::close(fd);
        errno = error;
        return kNoFileHandle;
    }
    return fd;
}

void closeFileHandle(FileHandle handle) {
    if (handle != kNoFileHandle) {
        ::close(static_cast<int>(handle));
    }
}

UInt32 readFileHandle(FileHandle handle, void* buffer, UInt32 size) {
    ssize_t const count = ::read(static_cast<int>(handle), buffer, size);
    return count > 0 ? static_cast<UInt32>(count) : 0;
}

UInt32 writeFileHandle(FileHandle handle, void const* buffer, UInt32 size) {
    ssize_t const count = ::write(static_cast<int>(handle), buffer, size);
    return count > 0 ? static_cast<UInt32>(count) : 0;
}

bool seekFileHandle(FileHandle handle, SInt64 distance, SeekOrigin origin, UInt64& position) {
    int const whence = origin == SeekOrigin::Begin
                           ? SEEK_SET
                           : (origin == SeekOrigin::Current ? SEEK_CUR : SEEK_END);
    off_t const result = ::lseek(static_cast<int>(handle), static_cast<off_t>(distance), whence);
    if (result < 0) {
        return false;
    }
    position = static_cast<UInt64>(result);
    return true;
}

bool getFileHandleSize(FileHandle handle, UInt64& size) {
    struct stat status;
    if (::fstat(static_cast<int>(handle), &status) != 0) {
        return false;
    }
    size = static_cast<UInt64>(status.st_size);
    return true;
}

} // namespace platform
} // namespace KELKIT
