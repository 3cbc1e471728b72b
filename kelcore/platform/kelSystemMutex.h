#ifndef KELCORE_PLATFORM_KELSYSTEMMUTEX_H
#define KELCORE_PLATFORM_KELSYSTEMMUTEX_H

// Internal: a re-entrant lock that other processes can find by its name.

#include <memory>

namespace KELKIT {
namespace platform {

// Defined by each platform around its native handle.
struct SystemMutex;

enum class SystemMutexFailure {
    None,
    CreateFailed, // the name could not be created (bad name, no resources)
    OpenFailed,   // the name exists but could not be opened
};

// A null or empty name gives a mutex private to this process. On failure the result is null
// and failure says why. Other processes holding the same name share the lock; it lives while
// any holder of any process lives, and a holder that dies while it holds the lock leaves it
// to the next waiter rather than locked for ever.
std::shared_ptr<SystemMutex> createSystemMutex(char const* name, SystemMutexFailure& failure);

// Blocks without time limit; a lock left by a dead holder counts as taken.
void reserveSystemMutex(SystemMutex& mutex);
// Undoes one reserve; does nothing for a thread that does not hold the lock.
void releaseSystemMutex(SystemMutex& mutex);
// Whether any live holder of the name exists, in any process.
bool systemMutexExists(char const* name);

} // namespace platform
} // namespace KELKIT

#endif
