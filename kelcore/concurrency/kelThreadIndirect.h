#ifndef KELCORE_CONCURRENCY_KELTHREADINDIRECT_H
#define KELCORE_CONCURRENCY_KELTHREADINDIRECT_H

#include <kelcore/concurrency/kelThread.h>

namespace KELKIT {

// Runs a runnable that somebody else owns; a null runnable gives a run() that returns at once.
class KELCORE_API kelThreadIndirect : public kelThread {
public:
    explicit kelThreadIndirect(kelIRunnable* runnable = nullptr);
    kelThreadIndirect(kelThreadIndirect const& other);
    kelThreadIndirect& operator=(kelThreadIndirect const& other);
    // Stops the thread, and leaves the runnable alone.
    ~kelThreadIndirect() override;

    void run() override;

private:
    kelIRunnable* mRunnable;
};

} // namespace KELKIT

#endif
