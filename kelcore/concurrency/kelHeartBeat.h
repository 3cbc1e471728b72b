#ifndef KELCORE_CONCURRENCY_KELHEARTBEAT_H
#define KELCORE_CONCURRENCY_KELHEARTBEAT_H

#include <kelcore/events/kelEvent.h>
#include <kelcore/strings/kelString.h>

#include <atomic>

namespace KELKIT {

// A named periodic tick, published through the event bus with type kelEventTypes::HeartBeat
// (4). Equality compares the names alone.
class KELCORE_API kelHeartBeat : public kelEvent {
public:
    kelHeartBeat();
    kelHeartBeat(char const* name, UInt32 interval);
    // Takes over name, interval and last beat, so the copy keeps the source's phase.
    kelHeartBeat(kelHeartBeat const& other);
    kelHeartBeat& operator=(kelHeartBeat const& other);
    ~kelHeartBeat() override;

    UInt64 getType() const override;
    virtual char const* getName() const;
    // Milliseconds.
    virtual UInt32 getInterval() const;
    // True, and the beat is taken, when at least the interval has passed on the millisecond
    // tick since the last beat. A new heartbeat is due at once; a late call shifts the beats
    // that follow, and no beat is ever owed. When the 32-bit tick wraps, one beat comes early.
    // Two threads asking at once can't both take one beat.
    virtual bool isBeatTime();

    bool operator==(kelHeartBeat const& other) const;
    bool operator!=(kelHeartBeat const& other) const;
    // Always false: heartbeats have no order.
    bool operator<(kelHeartBeat const& other) const;

private:
    kelString mName;
    UInt32 mInterval;
    std::atomic<UInt64> mLastBeat; // the tick at the last beat
};

} // namespace KELKIT

#endif
