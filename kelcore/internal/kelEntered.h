#ifndef KELCORE_INTERNAL_KELENTERED_H
#define KELCORE_INTERNAL_KELENTERED_H

// Internal: holds a critical section for one scope.

#include <kelcore/concurrency/kelCriticalSection.h>

namespace KELKIT {
namespace internal {

// Leaves the critical section on every path, exceptions included.
class Entered {
public:
    explicit Entered(kelCriticalSection& lock) : mLock(lock) { mLock.enter(); }
    ~Entered() { mLock.leave(); }
    Entered(Entered const&) = delete;
    Entered& operator=(Entered const&) = delete;

private:
    kelCriticalSection& mLock;
};

} // namespace internal
} // namespace KELKIT

#endif
