#ifndef KELCORE_TESTS_KELWATCHDOG_H
#define KELCORE_TESTS_KELWATCHDOG_H

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

// Ends the test process with a message if the guarded scope outlives its limit, so that a
// hang fails the run instead of stalling it. The limit is generous: it only catches hangs.
class kelWatchdog {
public:
    kelWatchdog(char const* what, std::chrono::seconds limit)
        : mThread([this, what, limit] {
              std::unique_lock<std::mutex> lock(mMutex);
              if (!mDone.wait_for(lock, limit, [this] { return mFinished; })) {
                  std::fprintf(stderr, "watchdog: %s did not finish within %lld s\n", what,
                               static_cast<long long>(limit.count()));
                  std::fflush(stderr);
                  std::_Exit(124);
              }
          }) {}

    ~kelWatchdog() {
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mFinished = true;
        }
        mDone.notify_all();
        mThread.join();
    }

    kelWatchdog(kelWatchdog const&) = delete;
    kelWatchdog& operator=(kelWatchdog const&) = delete;

private:
    std::mutex mMutex;
    std::condition_variable mDone;
    bool mFinished = false;
    std::thread mThread;
};

#endif
