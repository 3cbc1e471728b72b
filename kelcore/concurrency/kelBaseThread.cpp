#include <kelcore/concurrency/kelBaseThread.h>

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/internal/kelEntered.h>
#include <kelcore/platform/kelSystemThread.h>

#include <mutex>

namespace KELKIT {

using internal::Entered;

struct kelBaseThread::Impl {
    kelCriticalSection lock;
    // Serialises whole starts and stops, so that the wait of a stop needs no hold on `lock`.
    std::recursive_mutex startStop;
    std::shared_ptr<platform::SystemThread> handle; // under `lock`
};

kelBaseThread::kelBaseThread() : mImpl(std::make_shared<Impl>()) {}

kelBaseThread::kelBaseThread(kelBaseThread const& other) = default;

kelBaseThread& kelBaseThread::operator=(kelBaseThread const& other) = default;

kelBaseThread::~kelBaseThread() {
    kelBaseThread::stopThread();
}

void kelBaseThread::lock() {
    mImpl->lock.enter();
}

void kelBaseThread::unlock() {
    mImpl->lock.leave();
}

bool kelBaseThread::isThreadStarted() {
    Entered const entered(mImpl->lock);
    return mImpl->handle != nullptr;
}

bool kelBaseThread::startThread() {
    std::lock_guard<std::recursive_mutex> const serial(mImpl->startStop);
    Entered const entered(mImpl->lock);
    if (mImpl->handle) {
        return false;
    }
    mImpl->handle = platform::startSystemThread(&kelBaseThread::staticThreadFunc, this);
    if (!mImpl->handle) {
        return false;
    }
    platform::setSystemThreadPriority(*mImpl->handle, 2);
    return true;
}

void kelBaseThread::stopThread() {
    std::shared_ptr<platform::SystemThread> handle;
    {
        Entered const entered(mImpl->lock);
        handle = mImpl->handle;
    }
    // The body can't wait for itself; checked before the serial lock, which a stop from
    // outside may hold while it waits for this very thread.
    if (handle && platform::isCurrentSystemThread(*handle)) {
        return;
    }
    std::lock_guard<std::recursive_mutex> const serial(mImpl->startStop);
    {
        Entered const entered(mImpl->lock);
        handle = mImpl->handle;
    }
    if (!handle) {
        return;
    }
    UInt32 code = 0;
    if (platform::getSystemThreadExitCode(*handle, code) && code == platform::THREAD_STILL_ACTIVE) {
        platform::waitSystemThread(*handle, platform::WAIT_NO_LIMIT);
    }
    Entered const entered(mImpl->lock);
    mImpl->handle.reset();
}

void kelBaseThread::staticThreadFunc(void* self) {
    static_cast<kelBaseThread*>(self)->thread();
}

} // namespace KELKIT
