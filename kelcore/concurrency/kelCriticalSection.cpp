#include <kelcore/concurrency/kelCriticalSection.h>

#include <kelcore/platform/kelRecursiveLock.h>

namespace KELKIT {

kelCriticalSection::kelCriticalSection() : mLock(platform::createRecursiveLock()) {}

kelCriticalSection::kelCriticalSection(kelCriticalSection const& other) = default;

kelCriticalSection& kelCriticalSection::operator=(kelCriticalSection const& other) = default;

kelCriticalSection::~kelCriticalSection() = default;

void kelCriticalSection::enter() {
    platform::enterLock(*mLock);
}

void kelCriticalSection::leave() {
    platform::leaveLock(*mLock);
}

} // namespace KELKIT
