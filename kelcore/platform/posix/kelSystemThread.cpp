#include <kelcore/platform/kelSystemThread.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace KELKIT {
namespace platform {

struct SystemThread {
    std::mutex mutex;
    std::condition_variable endedChanged;
    pthread_t id{};
    pid_t tid = 0;         // the kernel's id, known once the thread runs
    bool ended = false;    // entry has returned
    bool released = false; // joined or detached: the pthread is no longer ours to release
    bool havePriority = false;
    int priority = 0;
    UInt32 exitCode = THREAD_STILL_ACTIVE;
    std::atomic<bool> abandoned{false};
    ThreadEntry entry = nullptr;
    void* argument = nullptr;

    ~SystemThread() {
        // The last reference may be the thread's own, so it is detached rather than joined.
        if (!released) {
            pthread_detach(id);
        }
    }
};

namespace {

thread_local SystemThread* tCurrent = nullptr;

// Linux threads carry their own nice value; levels map onto it in steps of five. Raising it
// needs privileges the process usually lacks, which is why priorities are best effort here.
bool applyPriority(pid_t tid, int level) {
    return setpriority(PRIO_PROCESS, static_cast<id_t>(tid), -5 * level) == 0;
}

void* trampoline(void* start) {
    std::shared_ptr<SystemThread> const self(
        std::move(*static_cast<std::shared_ptr<SystemThread>*>(start)));
    delete static_cast<std::shared_ptr<SystemThread>*>(start);
    tCurrent = self.get();
    {
        std::lock_guard<std::mutex> lock(self->mutex);
        self->tid = static_cast<pid_t>(syscall(SYS_gettid));
        if (self->havePriority) {
            applyPriority(self->tid, self->priority);
        }
    }
    self->entry(self->argument);
    {
        std::lock_guard<std::mutex> lock(self->mutex);
        self->ended = true;
        if (!self->abandoned.load()) {
            self->exitCode = 0;
        }
    }
    self->endedChanged.notify_all();
    tCurrent = nullptr;
    return nullptr;
}

} // namespace

std::shared_ptr<SystemThread> startSystemThread(ThreadEntry entry, void* argument) {
    auto thread = std::make_shared<SystemThread>();
    thread->entry = entry;
    thread->argument = argument;
    auto* start = new std::shared_ptr<SystemThread>(thread);
    // The record is complete before the thread can see it; id is written under the mutex so
    // that the new thread's reads of the record don't race with it.
    std::lock_guard<std::mutex> lock(thread->mutex);
    if (pthread_create(&thread->id, nullptr, trampoline, start) != 0) {
        delete start;
        thread->released = true;
        return nullptr;
    }
    return thread;
}

bool getSystemThreadExitCode(SystemThread& thread, UInt32& code) {
    std::lock_guard<std::mutex> lock(thread.mutex);
    code = thread.exitCode;
    return true;
}

ThreadWait waitSystemThread(SystemThread& thread, UInt32 timeout) {
    std::unique_lock<std::mutex> lock(thread.mutex);
    auto const finished = [&thread] { return thread.ended || thread.abandoned.load(); };
    if (timeout == WAIT_NO_LIMIT) {
        thread.endedChanged.wait(lock, finished);
    } else if (!thread.endedChanged.wait_for(lock, std::chrono::milliseconds(timeout), finished)) {
        return ThreadWait::TimedOut;
    }
    if (thread.ended && !thread.released) {
        thread.released = true;
        pthread_t const id = thread.id;
        lock.unlock();
        pthread_join(id, nullptr);
    }
    return ThreadWait::Ended;
}

void terminateSystemThread(SystemThread& thread, UInt32 exitCode) {
    {
        std::lock_guard<std::mutex> lock(thread.mutex);
        if (thread.ended || thread.abandoned.load()) {
            return;
        }
        thread.abandoned.store(true);
        thread.exitCode = exitCode;
        if (!thread.released) {
            thread.released = true;
            pthread_detach(thread.id);
        }
    }
    thread.endedChanged.notify_all();
}

bool setSystemThreadPriority(SystemThread& thread, int level) {
    std::lock_guard<std::mutex> lock(thread.mutex);
    thread.havePriority = true;
    thread.priority = level;
    if (thread.tid == 0 || thread.ended) {
        return true; // applied by the thread itself when it starts
    }
    return applyPriority(thread.tid, level);
}

bool isCurrentSystemThread(SystemThread& thread) {
    return tCurrent == &thread;
}

bool isCurrentThreadAbandoned() {
    return tCurrent != nullptr && tCurrent->abandoned.load();
}

void sleepMilliseconds(UInt32 milliseconds) {
    struct timespec left;
    left.tv_sec = static_cast<time_t>(milliseconds / 1000u);
    left.tv_nsec = static_cast<long>(milliseconds % 1000u) * 1000000L;
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

} // namespace platform
} // namespace KELKIT
