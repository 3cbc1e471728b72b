#include <kelcore/platform/kelSystemMutex.h>

#include <kelcore/platform/posix/kelSharedObject.h>

#include <atomic>
#include <cerrno>
#include <map>
#include <mutex>
#include <pthread.h>
#include <string>

// A named lock is a robust, recursive, process-shared pthread mutex in the shared object
// "/kelcore-mutex-<name>" (see kelSharedObject.h: the object lives while a live process uses
// it, and the first user after the others have gone or died starts the lock afresh).
// One process keeps one connection per name, shared by all its objects of that name, so that
// each thread's list of held robust mutexes only ever sees one address for the lock.

namespace KELKIT {
namespace platform {

namespace {

struct SharedBlock {
    pthread_mutex_t mutex;
};

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

void initialiseSharedBlock(void* mapping) {
    initialiseMutex(&static_cast<SharedBlock*>(mapping)->mutex, true);
}

} // namespace

struct SystemMutex {
    pthread_mutex_t* mutex = nullptr;
    // Reserves minus releases by the threads of this process; only one holds at a time.
    std::atomic<long> heldHere{0};
    // Named only.
    std::string objectName;
    posix::SharedObject object;
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
    posix::leaveSharedObject(mutex->objectName, mutex->object);
    delete mutex;
}

// Opens or creates the object and joins its users; null with the reason on failure.
SystemMutex* connect(std::string const& objectName, SystemMutexFailure& failure) {
    auto* mutex = new SystemMutex;
    mutex->objectName = objectName;
    // One page holds the lock.
    switch (posix::joinSharedObject(objectName, posix::pageSize(), initialiseSharedBlock,
                                    mutex->object)) {
    case posix::SharedObjectJoin::Attached:
    case posix::SharedObjectJoin::Created:
        mutex->mutex = &static_cast<SharedBlock*>(mutex->object.mapping)->mutex;
        return mutex;
    case posix::SharedObjectJoin::CreateFailed:
        failure = SystemMutexFailure::CreateFailed;
        break;
    case posix::SharedObjectJoin::OpenFailed:
        failure = SystemMutexFailure::OpenFailed;
        break;
    }
    delete mutex;
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
    std::string const objectName = posix::sharedObjectName("mutex", name);
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
    return posix::sharedObjectInUse(posix::sharedObjectName("mutex", name));
}

} // namespace platform
} // namespace KELKIT
