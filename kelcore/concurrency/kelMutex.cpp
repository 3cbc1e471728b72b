#include <kelcore/concurrency/kelMutex.h>

#include <kelcore/platform/kelSystemMutex.h>

namespace KELKIT {

kelMutex::kelMutex() {
    platform::SystemMutexFailure failure = platform::SystemMutexFailure::None;
    // Without a name there is nothing to report: a missing lock makes reserve a no-op.
    mHandle = platform::createSystemMutex(nullptr, failure);
}

kelMutex::kelMutex(char const* name) {
    platform::SystemMutexFailure failure = platform::SystemMutexFailure::None;
    mHandle = platform::createSystemMutex(name, failure);
    if (failure == platform::SystemMutexFailure::CreateFailed) {
        throw "CreateMutex() call failed. Unable to create a new mutex";
    }
    if (mHandle == nullptr) {
        throw "CreateMutex() call failed. Unable to create or open the mutex";
    }
}

kelMutex::kelMutex(kelMutex const&) {
    throw "Not supported";
}

kelMutex& kelMutex::operator=(kelMutex const& other) {
    mHandle = other.mHandle;
    return *this;
}

kelMutex::~kelMutex() {
    release();
}

void kelMutex::reserve() {
    if (mHandle != nullptr) {
        platform::reserveSystemMutex(*mHandle);
    }
}

void kelMutex::release() {
    if (mHandle != nullptr) {
        platform::releaseSystemMutex(*mHandle);
    }
}

bool kelMutex::exist(char const* name) {
    return platform::systemMutexExists(name);
}

} // namespace KELKIT
