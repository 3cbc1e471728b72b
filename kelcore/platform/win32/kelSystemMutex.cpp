#include <kelcore/platform/kelSystemMutex.h>

#include <windows.h>

namespace KELKIT {
namespace platform {

struct SystemMutex {
    HANDLE handle;
};

namespace {

// MUTEX_ALL_ACCESS, spelled out because it is what other processes must be granted.
DWORD const kAllAccess = 0x1F0001;

std::shared_ptr<SystemMutex> adopt(HANDLE handle) {
    auto* mutex = new SystemMutex{handle};
    try {
        return std::shared_ptr<SystemMutex>(mutex, [](SystemMutex* owned) {
            CloseHandle(owned->handle);
            delete owned;
        });
    } catch (...) {
        CloseHandle(handle);
        throw;
    }
}

} // namespace

std::shared_ptr<SystemMutex> createSystemMutex(char const* name, SystemMutexFailure& failure) {
    failure = SystemMutexFailure::None;
    HANDLE handle = CreateMutexA(nullptr, FALSE, name);
    if (handle == nullptr) {
        if (GetLastError() != ERROR_ALREADY_EXISTS) {
            failure = SystemMutexFailure::CreateFailed;
            return nullptr;
        }
        handle = OpenMutexA(kAllAccess, FALSE, name);
        if (handle == nullptr) {
            failure = SystemMutexFailure::OpenFailed;
            return nullptr;
        }
    }
    return adopt(handle);
}

void reserveSystemMutex(SystemMutex& mutex) {
    // WAIT_ABANDONED also hands the mutex over: its holder died.
    WaitForSingleObject(mutex.handle, INFINITE);
}

void releaseSystemMutex(SystemMutex& mutex) {
    ReleaseMutex(mutex.handle);
}

bool systemMutexExists(char const* name) {
    if (name == nullptr || *name == '\0') {
        return false;
    }
    HANDLE const handle = OpenMutexA(kAllAccess, FALSE, name);
    if (handle == nullptr) {
        return false;
    }
    CloseHandle(handle);
    return true;
}

} // namespace platform
} // namespace KELKIT
