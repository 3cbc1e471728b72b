#ifndef KELCORE_CONCURRENCY_KELBASETHREAD_H
#define KELCORE_CONCURRENCY_KELBASETHREAD_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {

// The low thread object: a locked handle and a body to override, with no stop signal of its
// own (a subclass supplies one through isStopRequested). Copies share one implementation
// record, so they name one thread and one lock; the record goes with the last copy.
class KELCORE_API kelBaseThread {
public:
    kelBaseThread();
    kelBaseThread(kelBaseThread const& other);
    kelBaseThread& operator=(kelBaseThread const& other);
    // Stops with this class's stopThread: a subclass whose body uses its own members must
    // stop the thread in its own destructor.
    virtual ~kelBaseThread();

    // The object's re-entrant lock; subclasses take it around their own state.
    virtual void lock();
    virtual void unlock();
    // Whether a thread is held; stays true after the body has ended, until stopThread.
    virtual bool isThreadStarted();
    // Starts thread() on a new thread at the highest level of the normal priorities. False when
    // a thread is already held or none could be made.
    virtual bool startThread();
    // Waits without limit for the body to end by itself, then releases the thread. Nothing is
    // signalled. The wait does not hold the lock of lock(): a body may still take it (and
    // call what takes it) while a stop waits, so the stop always completes. Starts and stops
    // of one object exclude each other through a separate lock. Called by the body itself, it
    // returns at once: a thread can't wait for itself.
    virtual void stopThread();

protected:
    virtual void thread() = 0;

public:
    virtual bool isStopRequested() = 0;

private:
    static void staticThreadFunc(void* self);

    struct Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
