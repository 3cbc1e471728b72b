#ifndef KELCORE_CONCURRENCY_KELMUTEX_H
#define KELCORE_CONCURRENCY_KELMUTEX_H

#include <kelcore/frame/kelExport.h>

#include <memory>

namespace KELKIT {

namespace platform {
struct SystemMutex;
}

// A re-entrant lock that other processes can share by name.
//
// The named constructor throws a plain `char const*` text when no lock can be had:
// "CreateMutex() call failed. Unable to create a new mutex" when the name cannot be created,
// "CreateMutex() call failed. Unable to create or open the mutex" when it exists but cannot be
// opened. A holder that dies while it holds the lock does not block the next reserve(), and
// the name lives exactly as long as some object of it lives in some process.
//
// Assignment makes both objects name one lock, which goes with the last of them. Copy
// construction is not supported.
class KELCORE_API kelMutex {
public:
    // A lock private to this process.
    kelMutex();
    explicit kelMutex(char const* name);
    kelMutex& operator=(kelMutex const& other);
    // Releases once (harmless when this thread does not hold the lock), then lets go.
    virtual ~kelMutex();

    // Blocks without time limit; does nothing on an object without a lock.
    void reserve();
    void release();

    // Whether a lock of that name lives now, in this or any other process.
    static bool exist(char const* name);

private:
    // Throws "Not supported".
    kelMutex(kelMutex const& other);

    std::shared_ptr<platform::SystemMutex> mHandle;
};

} // namespace KELKIT

#endif
