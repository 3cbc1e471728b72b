#include <kelcore/time/kelTimer.h>

#include <kelcore/platform/kelTick.h>

namespace KELKIT {

kelTimer::kelTimer() : mPaused(false), mAccumulated(0.0), mStartTick(0), mStopTick(0) {}

kelTimer::kelTimer(kelTimer const& other)
    : mPaused(other.mPaused), mAccumulated(other.mAccumulated), mStartTick(other.mStartTick),
      mStopTick(other.mStopTick) {}

kelTimer& kelTimer::operator=(kelTimer const& other) {
    mPaused = other.mPaused;
    mAccumulated = other.mAccumulated;
    mStartTick = other.mStartTick;
    mStopTick = other.mStopTick;
    return *this;
}

kelTimer::~kelTimer() {}

void kelTimer::startTimer() {
    mStartTick = platform::tickMilliseconds();
    mAccumulated = 0.0;
}

void kelTimer::stopTimer() {
    mStopTick = platform::tickMilliseconds();
    // Unsigned 32-bit difference: one wrap of the tick between start and stop is harmless.
    UInt32 const elapsed = mStopTick - mStartTick;
    mAccumulated += elapsed / 1000.0;
    mStartTick = mStopTick;
}

void kelTimer::pauseTimer() {
    mPaused = !mPaused;
    if (mPaused) {
        stopTimer();
    } else {
        Float64 const banked = mAccumulated;
        startTimer();
        mAccumulated = banked;
    }
}

bool kelTimer::isPaused() {
    return mPaused;
}

Float64 kelTimer::getTimer() const {
    return mAccumulated;
}

} // namespace KELKIT
