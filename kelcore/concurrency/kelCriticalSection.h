#ifndef KELCORE_CONCURRENCY_KELCRITICALSECTION_H
#define KELCORE_CONCURRENCY_KELCRITICALSECTION_H

#include <kelcore/frame/kelExport.h>

#include <memory>

namespace KELKIT {

namespace platform {
struct RecursiveLock;
}

// The in-process re-entrant lock: the thread that holds it may enter again and must leave as
// many times. Copies and assignments name the same lock; it goes with the last of them.
class KELCORE_API kelCriticalSection {
public:
    kelCriticalSection();
    kelCriticalSection(kelCriticalSection const& other);
    kelCriticalSection& operator=(kelCriticalSection const& other);
    virtual ~kelCriticalSection();

    // Blocks without time limit.
    void enter();
    void leave();

private:
    std::shared_ptr<platform::RecursiveLock> mLock;
};

} // namespace KELKIT

#endif
