#include <kelcore/platform/kelSystemThread.h>

#include <new>

#include <process.h>
#include <windows.h>

namespace KELKIT {
namespace platform {

struct SystemThread {
    HANDLE handle = nullptr;
    ~SystemThread() {
        if (handle != nullptr) {
            CloseHandle(handle);
        }
    }
};

namespace {

struct Start {
    ThreadEntry entry;
    void* argument;
};

unsigned __stdcall trampoline(void* start) {
    Start const what = *static_cast<Start*>(start);
    delete static_cast<Start*>(start);
    what.entry(what.argument);
    _endthreadex(0);
    return 0;
}

} // namespace

std::shared_ptr<SystemThread> startSystemThread(ThreadEntry entry, void* argument) {
    auto thread = std::make_shared<SystemThread>();
    auto* start = new Start{entry, argument};
    uintptr_t const handle = _beginthreadex(nullptr, 0, trampoline, start, 0, nullptr);
    if (handle == 0) {
        delete start;
        return nullptr;
    }
    thread->handle = reinterpret_cast<HANDLE>(handle);
    return thread;
}

bool getSystemThreadExitCode(SystemThread& thread, UInt32& code) {
    DWORD exitCode = 0;
    if (!GetExitCodeThread(thread.handle, &exitCode)) {
        return false;
    }
    code = static_cast<UInt32>(exitCode);
    return true;
}

ThreadWait waitSystemThread(SystemThread& thread, UInt32 timeout) {
    switch (WaitForSingleObject(thread.handle, timeout == WAIT_NO_LIMIT ? INFINITE : timeout)) {
    case WAIT_OBJECT_0:
        return ThreadWait::Ended;
    case WAIT_TIMEOUT:
        return ThreadWait::TimedOut;
    default:
        return ThreadWait::Failed;
    }
}

void terminateSystemThread(SystemThread& thread, UInt32 exitCode) {
    TerminateThread(thread.handle, exitCode);
}

bool setSystemThreadPriority(SystemThread& thread, int level) {
    return SetThreadPriority(thread.handle, level) != 0;
}

bool isCurrentSystemThread(SystemThread& thread) {
    return GetThreadId(thread.handle) == GetCurrentThreadId();
}

bool isCurrentThreadAbandoned() {
    return false; // a forced end here really ends the thread
}

void sleepMilliseconds(UInt32 milliseconds) {
    Sleep(milliseconds);
}

} // namespace platform
} // namespace KELKIT
