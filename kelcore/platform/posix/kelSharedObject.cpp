#include <kelcore/platform/posix/kelSharedObject.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {
namespace posix {

namespace {

off_t const kGateByte = 0;
off_t const kUsersByte = 1;

bool setRangeLock(int fd, short type, off_t byte, bool wait) {
    struct flock range;
    std::memset(&range, 0, sizeof range);
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    int status;
    do {
        status = fcntl(fd, wait ? F_OFD_SETLKW : F_OFD_SETLK, &range);
    } while (status != 0 && errno == EINTR);
    return status == 0;
}

// Removed by its last user while we waited at its gate.
bool isRetired(int fd) {
    struct stat status;
    return fstat(fd, &status) != 0 || status.st_nlink == 0;
}

// Closing drops every range lock of the descriptor, the gate included.
bool closeObject(SharedObject& object) {
    bool released = true;
    if (object.mapping != nullptr) {
        released = munmap(object.mapping, object.size) == 0;
    }
    if (object.fd >= 0) {
        released = close(object.fd) == 0 && released;
    }
    object = SharedObject();
    return released;
}

// A failed join by the only user also takes away the name it may have just made.
SharedObjectJoin fail(std::string const& objectName, SharedObject& object, bool alone,
                      SharedObjectJoin failure) {
    if (alone) {
        shm_unlink(objectName.c_str());
    }
    closeObject(object);
    return failure;
}

} // namespace

std::string sharedObjectName(char const* kind, char const* name) {
    std::string result = std::string("/kelcore-") + kind + '-';
    for (char const* p = name; *p != '\0'; ++p) {
        if (*p == '/' || *p == '%') {
            static char const digits[] = "0123456789ABCDEF";
            unsigned char const byte = static_cast<unsigned char>(*p);
            result += '%';
            result += digits[byte >> 4];
            result += digits[byte & 15];
        } else {
            result += *p;
        }
    }
    return result;
}

std::size_t pageSize() {
    long const page = sysconf(_SC_PAGESIZE);
    return page > 0 ? static_cast<std::size_t>(page) : 4096;
}

SharedObjectJoin joinSharedObject(std::string const& objectName, std::size_t createSize,
                                  void (*initialise)(void* mapping), SharedObject& object) {
    // An object that its last user removed while we waited at its gate is dead: open the name
    // again. Only a race with that removal repeats, so a few rounds always suffice.
    for (int attempt = 0; attempt < 100; ++attempt) {
        // Mode 0600: other users' processes cannot share a name.
        object.fd = shm_open(objectName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (object.fd < 0) {
            bool const refused = errno == EACCES;
            object = SharedObject();
            return refused ? SharedObjectJoin::OpenFailed : SharedObjectJoin::CreateFailed;
        }
        if (!setRangeLock(object.fd, F_WRLCK, kGateByte, true)) {
            return fail(objectName, object, false, SharedObjectJoin::OpenFailed);
        }
        if (isRetired(object.fd)) {
            closeObject(object);
            continue;
        }
        bool const alone = setRangeLock(object.fd, F_WRLCK, kUsersByte, false);
        if (alone) {
            // Truncating to nothing first drops whatever crashed users left; reserving the
            // pages now means a full memory file system fails here, not later as a fault on
            // first touch.
            if (createSize == 0 || ftruncate(object.fd, 0) != 0 ||
                posix_fallocate(object.fd, 0, static_cast<off_t>(createSize)) != 0) {
                return fail(objectName, object, true, SharedObjectJoin::CreateFailed);
            }
            object.size = createSize;
        } else {
            struct stat status;
            if (fstat(object.fd, &status) != 0 || status.st_size <= 0) {
                return fail(objectName, object, false, SharedObjectJoin::OpenFailed);
            }
            object.size = static_cast<std::size_t>(status.st_size);
        }
        void* mapping =
            mmap(nullptr, object.size, PROT_READ | PROT_WRITE, MAP_SHARED, object.fd, 0);
        if (mapping == MAP_FAILED) {
            return fail(objectName, object, alone,
                        alone ? SharedObjectJoin::CreateFailed : SharedObjectJoin::OpenFailed);
        }
        object.mapping = mapping;
        if (alone && initialise != nullptr) {
            initialise(mapping);
        }
        // Changing the exclusive range lock to a shared one is atomic for these locks. Without
        // the shared lock this process would be invisible to the next one, which would then
        // make the object afresh under it.
        if (!setRangeLock(object.fd, F_RDLCK, kUsersByte, true)) {
            return fail(objectName, object, alone, SharedObjectJoin::OpenFailed);
        }
        setRangeLock(object.fd, F_UNLCK, kGateByte, false);
        return alone ? SharedObjectJoin::Created : SharedObjectJoin::Attached;
    }
    return SharedObjectJoin::OpenFailed;
}

bool leaveSharedObject(std::string const& objectName, SharedObject& object) {
    if (object.fd < 0) {
        return closeObject(object);
    }
    if (setRangeLock(object.fd, F_WRLCK, kGateByte, true) &&
        setRangeLock(object.fd, F_WRLCK, kUsersByte, false) && !isRetired(object.fd)) {
        shm_unlink(objectName.c_str());
    }
    return closeObject(object);
}

bool sharedObjectInUse(std::string const& objectName) {
    int const fd = shm_open(objectName.c_str(), O_RDWR | O_CLOEXEC, 0);
    if (fd < 0) {
        return false;
    }
    bool inUse = false;
    if (setRangeLock(fd, F_WRLCK, kGateByte, true) && !isRetired(fd)) {
        inUse = !setRangeLock(fd, F_WRLCK, kUsersByte, false);
        if (!inUse) {
            // Every user of it crashed: clear the name away.
            shm_unlink(objectName.c_str());
        }
    }
    close(fd);
    return inUse;
}

} // namespace posix
} // namespace platform
} // namespace KELKIT
