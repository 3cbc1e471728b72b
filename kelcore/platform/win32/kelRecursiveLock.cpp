#include <kelcore/platform/kelRecursiveLock.h>

#include <windows.h>

namespace KELKIT {
namespace platform {

struct RecursiveLock {
    CRITICAL_SECTION section;
};

namespace {

void destroyRecursiveLock(RecursiveLock* lock) {
    DeleteCriticalSection(&lock->section);
    delete lock;
}

} // namespace

std::shared_ptr<RecursiveLock> createRecursiveLock() {
    auto* lock = new RecursiveLock;
    InitializeCriticalSection(&lock->section);
    return std::shared_ptr<RecursiveLock>(lock, destroyRecursiveLock);
}

void enterLock(RecursiveLock& lock) {
    EnterCriticalSection(&lock.section);
}

void leaveLock(RecursiveLock& lock) {
    LeaveCriticalSection(&lock.section);
}

} // namespace platform
} // namespace KELKIT
