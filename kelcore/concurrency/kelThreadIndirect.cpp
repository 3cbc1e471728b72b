#include <kelcore/concurrency/kelThreadIndirect.h>

namespace KELKIT {

kelThreadIndirect::kelThreadIndirect(kelIRunnable* runnable) : mRunnable(runnable) {}

kelThreadIndirect::kelThreadIndirect(kelThreadIndirect const& other)
    : kelIRunnable(other), kelThread(other), mRunnable(other.mRunnable) {}

kelThreadIndirect& kelThreadIndirect::operator=(kelThreadIndirect const& other) {
    kelThread::operator=(other);
    mRunnable = other.mRunnable;
    return *this;
}

kelThreadIndirect::~kelThreadIndirect() {
    // run() reads mRunnable, which goes with this object.
    stopThread();
}

void kelThreadIndirect::run() {
    if (mRunnable != nullptr) {
        mRunnable->run();
    }
}

} // namespace KELKIT
