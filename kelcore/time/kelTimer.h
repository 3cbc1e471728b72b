#ifndef KELCORE_TIME_KELTIMER_H
#define KELCORE_TIME_KELTIMER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A stopwatch on the system's 32-bit millisecond tick, read in laps: getTimer() gives the time
// banked by the last stopTimer() or pauseTimer(), not the time running since then. A lap longer
// than the tick's wrap (about 49.7 days) is counted modulo that wrap.
class KELCORE_API kelTimer {
public:
    kelTimer();
    kelTimer(kelTimer const& other);
    kelTimer& operator=(kelTimer const& other);
    virtual ~kelTimer();

    // Starts a new count from zero; the paused flag stays as it is.
    virtual void startTimer();
    // Banks the time since the start (or the previous stop) and begins the next lap there.
    virtual void stopTimer();
    // Toggles the pause: pausing banks the running lap; resuming starts a new lap and keeps what
    // was banked, so the paused stretch is not counted.
    virtual void pauseTimer();
    virtual bool isPaused();
    // Seconds.
    virtual Float64 getTimer() const;

private:
    bool mPaused;
    Float64 mAccumulated;
    UInt32 mStartTick;
    UInt32 mStopTick;
};

} // namespace KELKIT

#endif
