#include <kelcore/platform/kelSystemMutex.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <pthread.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

// A named lock is a robust, recursive, process-shared pthread mutex in a shared-memory object
// "/kelcore-mutex-<name>". Who is using the object is told by open-file-description locks on
// its descriptor, which the kernel drops when a process ends, however it ends:
//   byte 0, the gate: held exclusively while a process connects, disconnects or asks;
//   byte 1, the users: every connection holds it shared. Whoever can take it exclusively
//   under the gate is alone: on connect it starts the lock afresh (earlier users crashed),
//   on disconnect and in exist() it removes the name.
// One process keeps one connection per name, shared by all its objects of that name, so that
// each thread's list of held robust mutexes only ever sees one address for the lock.

namespace KELKIT {
namespace platform {

namespace {

struct SharedBlock {
    pthread_mutex_t mutex;
};

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

void initialiseMutex(pthread_mutex_t* mutex, bool processShared) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    // Robust also for the private lock: a thread that ends while holding it hands it on, as
    // an abandoned mutex does on Windows.
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    if (processShared) {
        pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    }
    pthread_mutex_init(mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

// Object names allow no '/' after the first character; '%' is escaped so the map is one-to-one.
std::string sharedObjectName(char const* name) {
    std::string result = "/kelcore-mutex-";
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

std::size_t mappingSize() {
    long const page = sysconf(_SC_PAGESIZE);
    std::size_t const pageSize = page > 0 ? static_cast<std::size_t>(page) : 4096;
    return (sizeof(SharedBlock) + pageSize - 1) / pageSize * pageSize;
}

bool isRetired(int fd) {
    struct stat status;
    return fstat(fd, &status) != 0 || status.st_nlink == 0;
}

} // namespace

struct SystemMutex {
    pthread_mutex_t* mutex = nullptr;
    // Reserves minus releases by the threads of this process; only one holds at a time.
    std::atomic<long> heldHere{0};
    // Named only.
    std::string objectName;
    int fd = -1;
    void* mapping = nullptr;
    // Unnamed only.
    pthread_mutex_t privateMutex;
};

namespace {

// Connections by object name. Never destroyed, so that objects living in statics of other
// units can still let go at exit.
std::mutex& registryLock() {
    static auto* lock = new std::mutex;
    return *lock;
}

std::map<std::string, std::weak_ptr<SystemMutex>>& registry() {
    static auto* connections = new std::map<std::string, std::weak_ptr<SystemMutex>>;
    return *connections;
}

void destroyPrivate(SystemMutex* mutex) {
    pthread_mutex_destroy(&mutex->privateMutex);
    delete mutex;
}

// Leaves the gate and closes; closing drops every range lock of the descriptor.
void closeConnection(SystemMutex* mutex) {
    if (mutex->mapping != nullptr) {
        munmap(mutex->mapping, mappingSize());
    }
    if (mutex->fd >= 0) {
        close(mutex->fd);
    }
    delete mutex;
}

// Whether a thread of this process that is still alive holds the lock (it reserved more often
// than it released before the last object of the name went).
bool heldByLiveThreadHere(SystemMutex& mutex) {
    if (mutex.heldHere.load() <= 0) {
        return false;
    }
    int const status = pthread_mutex_trylock(mutex.mutex);
    if (status == EOWNERDEAD) { // the holder was ours and has ended
        pthread_mutex_consistent(mutex.mutex);
        pthread_mutex_unlock(mutex.mutex);
        return false;
    }
    if (status == 0) { // re-entered: this very thread holds it
        pthread_mutex_unlock(mutex.mutex);
        return true;
    }
    return status == EBUSY;
}

void disconnect(SystemMutex* mutex) {
    {
        std::lock_guard<std::mutex> guard(registryLock());
        auto entry = registry().find(mutex->objectName);
        if (entry != registry().end() && entry->second.expired()) {
            registry().erase(entry);
        }
    }
    if (heldByLiveThreadHere(*mutex)) {
        // Unmapping would leave that thread's list of held robust mutexes pointing into
        // nothing, so the connection stays, and the name lives, until the process ends.
        return;
    }
    if (setRangeLock(mutex->fd, F_WRLCK, kGateByte, true) &&
        setRangeLock(mutex->fd, F_WRLCK, kUsersByte, false) && !isRetired(mutex->fd)) {
        shm_unlink(mutex->objectName.c_str());
    }
    closeConnection(mutex);
}

// Opens or creates the object and joins its users; null with the reason on failure.
SystemMutex* connect(std::string const& objectName, SystemMutexFailure& failure) {
    // An object that its last user removed while we waited at its gate is dead: open the name
    // again. Only a race with that removal repeats, so a few rounds always suffice.
    for (int attempt = 0; attempt < 100; ++attempt) {
        int const fd = shm_open(objectName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd < 0) {
            failure =
                errno == EACCES ? SystemMutexFailure::OpenFailed : SystemMutexFailure::CreateFailed;
            return nullptr;
        }
        auto* mutex = new SystemMutex;
        mutex->objectName = objectName;
        mutex->fd = fd;
        if (!setRangeLock(fd, F_WRLCK, kGateByte, true)) {
            closeConnection(mutex);
            failure = SystemMutexFailure::OpenFailed;
            return nullptr;
        }
        if (isRetired(fd)) {
            closeConnection(mutex);
            continue;
        }
        bool const alone = setRangeLock(fd, F_WRLCK, kUsersByte, false);
        std::size_t const size = mappingSize();
        // Alone, whatever the object holds was left by users that crashed: start afresh.
        if (alone && (ftruncate(fd, 0) != 0 || ftruncate(fd, static_cast<off_t>(size)) != 0)) {
            closeConnection(mutex);
            failure = SystemMutexFailure::CreateFailed;
            return nullptr;
        }
        void* mapping = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (mapping == MAP_FAILED) {
            closeConnection(mutex);
            failure = alone ? SystemMutexFailure::CreateFailed : SystemMutexFailure::OpenFailed;
            return nullptr;
        }
        mutex->mapping = mapping;
        mutex->mutex = &static_cast<SharedBlock*>(mapping)->mutex;
        if (alone) {
            initialiseMutex(mutex->mutex, true);
        }
        // Changing the exclusive range lock to a shared one is atomic for these locks.
        setRangeLock(fd, F_RDLCK, kUsersByte, true);
        setRangeLock(fd, F_UNLCK, kGateByte, false);
        return mutex;
    }
    failure = SystemMutexFailure::OpenFailed;
    return nullptr;
}

} // namespace

std::shared_ptr<SystemMutex> createSystemMutex(char const* name, SystemMutexFailure& failure) {
    failure = SystemMutexFailure::None;
    if (name == nullptr || *name == '\0') {
        auto* mutex = new SystemMutex;
        initialiseMutex(&mutex->privateMutex, false);
        mutex->mutex = &mutex->privateMutex;
        return std::shared_ptr<SystemMutex>(mutex, destroyPrivate);
    }
    std::string const objectName = sharedObjectName(name);
    std::lock_guard<std::mutex> guard(registryLock());
    auto& entry = registry()[objectName];
    if (auto existing = entry.lock()) {
        return existing;
    }
    SystemMutex* connection = connect(objectName, failure);
    if (connection == nullptr) {
        registry().erase(objectName);
        return nullptr;
    }
    std::shared_ptr<SystemMutex> result(connection, disconnect);
    entry = result;
    return result;
}

void reserveSystemMutex(SystemMutex& mutex) {
    int status = pthread_mutex_lock(mutex.mutex);
    if (status == EOWNERDEAD) {
        // The holder died: the lock is ours, as an abandoned mutex is on Windows.
        // What the dead holder counted is void.
        pthread_mutex_consistent(mutex.mutex);
        mutex.heldHere = 0;
        status = 0;
    }
    if (status == 0) {
        ++mutex.heldHere;
    }
}

void releaseSystemMutex(SystemMutex& mutex) {
    if (pthread_mutex_unlock(mutex.mutex) == 0) {
        --mutex.heldHere;
    }
}

bool systemMutexExists(char const* name) {
    if (name == nullptr || *name == '\0') {
        return false;
    }
    std::string const objectName = sharedObjectName(name);
    int const fd = shm_open(objectName.c_str(), O_RDWR | O_CLOEXEC, 0);
    if (fd < 0) {
        return false;
    }
    bool alive = false;
    if (setRangeLock(fd, F_WRLCK, kGateByte, true) && !isRetired(fd)) {
        alive = !setRangeLock(fd, F_WRLCK, kUsersByte, false);
        if (!alive) {
            // Every user of it crashed: clear the name away.
            shm_unlink(objectName.c_str());
        }
    }
    close(fd);
    return alive;
}

} // namespace platform
} // namespace KELKIT
