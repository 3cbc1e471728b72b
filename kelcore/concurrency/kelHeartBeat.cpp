#include <kelcore/concurrency/kelHeartBeat.h>

#include <kelcore/frame/kelEventTypes.h>
#include <kelcore/platform/kelTick.h>

namespace KELKIT {

kelHeartBeat::kelHeartBeat() : mInterval(0), mLastBeat(0) {}

kelHeartBeat::kelHeartBeat(char const* name, UInt32 interval)
    : mName(name != nullptr ? name : ""), mInterval(interval), mLastBeat(0) {}

kelHeartBeat::kelHeartBeat(kelHeartBeat const& other)
    : kelEvent(other), mName(other.mName), mInterval(other.mInterval),
      mLastBeat(other.mLastBeat.load()) {}

kelHeartBeat& kelHeartBeat::operator=(kelHeartBeat const& other) {
    if (this != &other) {
        mName = other.mName;
        mInterval = other.mInterval;
        mLastBeat.store(other.mLastBeat.load());
    }
    return *this;
}

kelHeartBeat::~kelHeartBeat() = default;

UInt64 kelHeartBeat::getType() const {
    return kelEventTypes::HeartBeat;
}

char const* kelHeartBeat::getName() const {
    return mName.c_str();
}

UInt32 kelHeartBeat::getInterval() const {
    return mInterval;
}

bool kelHeartBeat::isBeatTime() {
    UInt64 const now = platform::tickMilliseconds();
    UInt64 last = mLastBeat.load();
    // The difference is taken in 64 bits: after a wrap of the tick it is huge, hence due.
    while (now - last >= mInterval) {
        if (mLastBeat.compare_exchange_weak(last, now)) {
            return true;
        }
    }
    return false;
}

bool kelHeartBeat::operator==(kelHeartBeat const& other) const {
    return mName == other.mName;
}

bool kelHeartBeat::operator!=(kelHeartBeat const& other) const {
    return !(*this == other);
}

bool kelHeartBeat::operator<(kelHeartBeat const& /*other*/) const {
    return false;
}

} // namespace KELKIT
