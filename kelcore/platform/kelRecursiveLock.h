#ifndef KELCORE_PLATFORM_KELRECURSIVELOCK_H
#define KELCORE_PLATFORM_KELRECURSIVELOCK_H

// Internal: the in-process re-entrant lock of the operating system.

#include <memory>

namespace KELKIT {
namespace platform {

// Defined by each platform around its native lock.
struct RecursiveLock;

// Never null: a lock that cannot be made is an allocation failure and throws.
std::shared_ptr<RecursiveLock> createRecursiveLock();
void enterLock(RecursiveLock& lock);
void leaveLock(RecursiveLock& lock);

} // namespace platform
} // namespace KELKIT

#endif
