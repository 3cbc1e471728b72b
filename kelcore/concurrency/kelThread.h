#ifndef KELCORE_CONCURRENCY_KELTHREAD_H
#define KELCORE_CONCURRENCY_KELTHREAD_H

#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelIRunnable.h>
#include <kelcore/frame/kelTypes.h>

#include <memory>

// clang-format off
#define KEL_ROWS_kelThread_Priority(X) X(Highest, 1) X(AboveNormal, 2) X(Normal, 3) X(BelowNormal, 4) X(Lowest, 5)
// clang-format on

namespace KELKIT {

// A runnable with its own thread: a keep-running flag that run() polls through
// isStopRequested, a priority, and a stop with a time limit.
//
// Copies share one state (flag, lock, thread, priority), so that a stop through any copy
// reaches the thread and the thread is released once; the thread runs run() of the object
// that started it. Each destructor stops the thread, so a subclass whose run() uses its own
// members has to stop the thread in its own destructor.
//
// A stop with a time limit ends a thread that outlives it. Windows ends it at once, with exit
// code 255 and without unwinding: locks that the thread held stay held. POSIX has no safe forced
// end: there the thread is abandoned. It is detached and keeps running until its run() returns by
// itself; from then on isStopRequested answers true on that thread, also after the object has been
// started again, and no other call of the object waits for it. The object can start a new thread at
// once. An abandoned run() still uses its object, so the object (and whatever run() touches) must
// outlive it.
class KELCORE_API kelThread : public virtual kelIRunnable {
public:
    class KELCORE_API Priority : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelThread_Priority(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(Priority)
    };

    kelThread();
    kelThread(kelThread const& other);
    kelThread& operator=(kelThread const& other);
    ~kelThread() override;

    // Whether a thread is held; stays true after run() has returned, until stopThread.
    virtual bool isThreadStarted() const;
    // True before the first start and from the start of a stop; false while a thread runs.
    virtual bool isStopRequested() const;
    // A thread is held and has not ended.
    virtual bool isRunning() const;
    // False when a thread is already held or none could be made. The flag is raised here,
    // before the thread exists, so that a stop right after the start is never lost.
    virtual bool startThread();
    // Clears the flag, gives the thread 100 ms, then waits up to timeout ms (0xFFFFFFFF: no
    // limit) and ends the thread by force if it is still running (see above). Returns at once
    // when no thread is held. Called from run() on its own thread, it only clears the flag; a
    // later stop from another thread releases the thread.
    virtual void stopThread(UInt32 timeout);
    virtual void stopThread();
    // Stored, and applied at once when a thread is held; the value 0 and values outside the
    // table apply nothing.
    virtual void setPriority(Priority priority);
    virtual Priority getPriority() const;

    // A kelThreadIndirect for runnable, not started; the caller deletes it.
    static kelThread* createThread(kelIRunnable* runnable);
    static void sleep(UInt32 const& milliseconds);

private:
    void startExecution();
    static void staticThreadFunc(void* self);

    struct Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
