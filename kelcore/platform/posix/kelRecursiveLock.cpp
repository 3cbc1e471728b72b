#include <kelcore/platform/kelRecursiveLock.h>

#include <pthread.h>

#include <new>

namespace KELKIT {
namespace platform {

struct RecursiveLock {
    pthread_mutex_t mutex;
};

namespace {

void destroyRecursiveLock(RecursiveLock* lock) {
    pthread_mutex_destroy(&lock->mutex);
    delete lock;
}

} // namespace

std::shared_ptr<RecursiveLock> createRecursiveLock() {
    auto* lock = new RecursiveLock;
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    int const status = pthread_mutex_init(&lock->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    if (status != 0) {
        delete lock;
        throw std::bad_alloc();
    }
    return std::shared_ptr<RecursiveLock>(lock, destroyRecursiveLock);
}

void enterLock(RecursiveLock& lock) {
    pthread_mutex_lock(&lock.mutex);
}

void leaveLock(RecursiveLock& lock) {
    pthread_mutex_unlock(&lock.mutex);
}

} // namespace platform
} // namespace KELKIT
