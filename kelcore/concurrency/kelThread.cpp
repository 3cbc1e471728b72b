#include <kelcore/concurrency/kelThread.h>

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/concurrency/kelThreadIndirect.h>
#include <kelcore/internal/kelEntered.h>
#include <kelcore/platform/kelSystemThread.h>

#include <atomic>

namespace KELKIT {

using internal::Entered;

KEL_ENUM_DEFINE(kelThread::Priority, Priority, KEL_ROWS_kelThread_Priority)

struct kelThread::Impl {
    std::atomic<bool> keepRunning{false};
    kelCriticalSection lock; // guards start and stop
    // Read without the lock by the queries, hence the atomic access functions.
    std::shared_ptr<platform::SystemThread> handle;
    std::atomic<int> priority{Priority::Normal};

    std::shared_ptr<platform::SystemThread> currentHandle() const {
        return std::atomic_load(&handle);
    }
};

namespace {

// The state of the thread object whose run() the calling thread executes.
thread_local void const* tRunning = nullptr;

// The platform level of each named priority; 0 and unnamed values have none.
bool levelOf(int priority, int& level) {
    if (priority < kelThread::Priority::Highest || priority > kelThread::Priority::Lowest) {
        return false;
    }
    level = kelThread::Priority::Normal - priority;
    return true;
}

} // namespace

kelThread::kelThread() : mImpl(std::make_shared<Impl>()) {}

kelThread::kelThread(kelThread const& other) : kelIRunnable(other), mImpl(other.mImpl) {}

kelThread& kelThread::operator=(kelThread const& other) {
    mImpl = other.mImpl;
    return *this;
}

kelThread::~kelThread() {
    kelThread::stopThread();
}

bool kelThread::isThreadStarted() const {
    return mImpl->currentHandle() != nullptr;
}

bool kelThread::isStopRequested() const {
    return !mImpl->keepRunning.load() || platform::isCurrentThreadAbandoned();
}

bool kelThread::isRunning() const {
    auto const handle = mImpl->currentHandle();
    UInt32 code = 0;
    return handle && platform::getSystemThreadExitCode(*handle, code) &&
           code == platform::THREAD_STILL_ACTIVE;
}

bool kelThread::startThread() {
    Entered const entered(mImpl->lock);
    if (mImpl->currentHandle()) {
        return false;
    }
    mImpl->keepRunning.store(true);
    std::shared_ptr<platform::SystemThread> handle;
    try {
        handle = platform::startSystemThread(&kelThread::staticThreadFunc, this);
    } catch (...) {
        mImpl->keepRunning.store(false); // no thread: the stop stays requested
        throw;
    }
    if (!handle) {
        mImpl->keepRunning.store(false);
        return false;
    }
    std::atomic_store(&mImpl->handle, handle);
    setPriority(getPriority());
    return true;
}

void kelThread::stopThread(UInt32 timeout) {
    // run() can't wait for its own thread; it only clears the flag. Known by the thread's own
    // mark rather than by the handle, which the new thread may run before it is stored, and
    // checked before the lock, which a stop from outside may hold while it waits for this
    // very thread.
    if (tRunning == mImpl.get() && !platform::isCurrentThreadAbandoned()) {
        mImpl->keepRunning.store(false);
        return;
    }
    Entered const entered(mImpl->lock);
    auto const handle = mImpl->currentHandle();
    if (!handle) {
        return;
    }
    mImpl->keepRunning.store(false);
    // A thread that polls its flag gets the chance to end before it is looked at.
    platform::sleepMilliseconds(100);
    for (;;) {
        UInt32 code = 0;
        if (!platform::getSystemThreadExitCode(*handle, code) ||
            code != platform::THREAD_STILL_ACTIVE) {
            break;
        }
        if (platform::waitSystemThread(*handle, timeout) != platform::ThreadWait::Ended) {
            platform::terminateSystemThread(*handle, 255);
        }
    }
    std::atomic_store(&mImpl->handle, std::shared_ptr<platform::SystemThread>());
}

void kelThread::stopThread() {
    stopThread(0xFFFFFFFFu);
}

void kelThread::setPriority(Priority priority) {
    mImpl->priority.store(priority.getValue());
    int level = 0;
    auto const handle = mImpl->currentHandle();
    if (handle && levelOf(priority.getValue(), level)) {
        platform::setSystemThreadPriority(*handle, level);
    }
}

kelThread::Priority kelThread::getPriority() const {
    return Priority(mImpl->priority.load());
}

kelThread* kelThread::createThread(kelIRunnable* runnable) {
    return new kelThreadIndirect(runnable);
}

void kelThread::sleep(UInt32 const& milliseconds) {
    platform::sleepMilliseconds(milliseconds);
}

void kelThread::startExecution() {
    run();
}

void kelThread::staticThreadFunc(void* self) {
    tRunning = static_cast<kelThread*>(self)->mImpl.get();
    static_cast<kelThread*>(self)->startExecution();
}

} // namespace KELKIT
