#ifndef KELCORE_PLATFORM_KELSYSTEMTHREAD_H
#define KELCORE_PLATFORM_KELSYSTEMTHREAD_H

// Internal: threads of the operating system, and sleeping.

#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {
namespace platform {

// Defined by each platform around its native thread.
struct SystemThread;

using ThreadEntry = void (*)(void* argument);

// The exit code of a thread that is still active.
constexpr UInt32 THREAD_STILL_ACTIVE = 259;
// A limit that never expires.
constexpr UInt32 WAIT_NO_LIMIT = 0xFFFFFFFFu;

// Runs entry(argument) on a new thread with the default stack size; the thread's exit code is
// 0 when entry returns. Null when no thread could be made. The record may be shared; the
// native thread is released with the last reference.
std::shared_ptr<SystemThread> startSystemThread(ThreadEntry entry, void* argument);

// THREAD_STILL_ACTIVE while the thread runs, else its exit code. False if it can't be asked.
bool getSystemThreadExitCode(SystemThread& thread, UInt32& code);

enum class ThreadWait { Ended, TimedOut, Failed };
// Waits up to timeout milliseconds (WAIT_NO_LIMIT: without limit) for the thread to end.
ThreadWait waitSystemThread(SystemThread& thread, UInt32 timeout);

// Ends a thread that did not end by itself, giving it exitCode. Windows ends it at once; POSIX
// has no safe forced end, so there the thread is abandoned: detached and left to run until
// its entry returns, while the record already reports it ended with exitCode.
void terminateSystemThread(SystemThread& thread, UInt32 exitCode);

// level runs from -2 (lowest) to 2 (highest). Best effort: false when the system refused.
bool setSystemThreadPriority(SystemThread& thread, int level);

// Whether the calling thread is this thread.
bool isCurrentSystemThread(SystemThread& thread);

// Whether the calling thread was started by startSystemThread and has since been abandoned.
bool isCurrentThreadAbandoned();

void sleepMilliseconds(UInt32 milliseconds);

} // namespace platform
} // namespace KELKIT

#endif
