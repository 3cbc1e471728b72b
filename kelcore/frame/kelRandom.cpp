#include <kelcore/frame/kelRandom.h>

#include <kelcore/internal/kelRandomSeeding.h>
#include <kelcore/platform/kelSystemRandom.h>

#include <array>
#include <cstring>
#include <ctime>

namespace KELKIT {

namespace {

// MT19937 with its published parameters.
class MersenneTwister {
public:
    static constexpr int N = 624;
    static constexpr int M = 397;

    void seed(UInt32 value) {
        mState[0] = value;
        for (int i = 1; i < N; ++i) {
            UInt32 const prev = mState[i - 1];
            mState[i] = 1812433253u * (prev ^ (prev >> 30)) + static_cast<UInt32>(i);
        }
        mIndex = N;
    }

    void seed(UInt32 const* key, UInt32 length) {
        seed(19650218u);
        int i = 1;
        UInt32 j = 0;
        for (UInt32 k = (N > length ? N : length); k > 0; --k) {
            UInt32 const prev = mState[i - 1];
            mState[i] = (mState[i] ^ ((prev ^ (prev >> 30)) * 1664525u)) + key[j] + j;
            ++i;
            ++j;
            if (i >= N) {
                mState[0] = mState[N - 1];
                i = 1;
            }
            if (j >= length) {
                j = 0;
            }
        }
        for (int k = N - 1; k > 0; --k) {
            UInt32 const prev = mState[i - 1];
            mState[i] =
                (mState[i] ^ ((prev ^ (prev >> 30)) * 1566083941u)) - static_cast<UInt32>(i);
            ++i;
            if (i >= N) {
                mState[0] = mState[N - 1];
                i = 1;
            }
        }
        mState[0] = 0x80000000u; // the most significant bit makes the state non-zero
        mIndex = N;
    }

    UInt32 next() {
        if (mIndex >= N) {
            twist();
        }
        UInt32 y = mState[mIndex++];
        y ^= y >> 11;
        y ^= (y << 7) & 0x9D2C5680u;
        y ^= (y << 15) & 0xEFC60000u;
        y ^= y >> 18;
        return y;
    }

private:
    void twist() {
        for (int k = 0; k < N; ++k) {
            UInt32 const y = (mState[k] & 0x80000000u) | (mState[(k + 1) % N] & 0x7FFFFFFFu);
            mState[k] = mState[(k + M) % N] ^ (y >> 1) ^ ((y & 1u) ? 0x9908B0DFu : 0u);
        }
        mIndex = 0;
    }

    std::array<UInt32, N> mState{};
    int mIndex = N + 1;
};

UInt32 gFallbackDiffer = 0;

UInt32 computeFallbackSeed() {
    std::time_t const now = std::time(nullptr);
    std::clock_t const ticks = std::clock();
    // Eight bytes of the time and four of the clock, as they lie in memory, whatever the
    // platform's own widths of time_t and clock_t.
    unsigned char timeBytes[8] = {};
    unsigned char clockBytes[4] = {};
    std::memcpy(timeBytes, &now, sizeof now < sizeof timeBytes ? sizeof now : sizeof timeBytes);
    std::memcpy(clockBytes, &ticks,
                sizeof ticks < sizeof clockBytes ? sizeof ticks : sizeof clockBytes);
    UInt32 h1 = 0;
    for (unsigned char b : timeBytes) {
        h1 = h1 * 257u + b;
    }
    UInt32 h2 = 0;
    for (unsigned char b : clockBytes) {
        h2 = h2 * 257u + b;
    }
    return (h1 + gFallbackDiffer++) ^ h2;
}

MersenneTwister& generator() {
    static MersenneTwister twister = [] {
        MersenneTwister seeded;
        std::array<UInt32, MersenneTwister::N> key{};
        if (platform::readSystemRandom(key.data(), sizeof key)) {
            seeded.seed(key.data(), static_cast<UInt32>(key.size()));
        } else {
            seeded.seed(computeFallbackSeed());
        }
        return seeded;
    }();
    return twister;
}

// Seed while the library loads, not at the first draw.
bool const gSeededAtLoad = (generator(), true);

} // namespace

namespace internal {

void seedRandomWithKey(UInt32 const* key, UInt32 length) {
    if (key != nullptr && length > 0) {
        generator().seed(key, length);
    }
}

void seedRandomWithValue(UInt32 seed) {
    generator().seed(seed);
}

UInt32 fallbackRandomSeed() {
    return computeFallbackSeed();
}

} // namespace internal

kelRandom::~kelRandom() = default;

UInt32 kelRandom::getUInt32() {
    return generator().next();
}

UInt32 kelRandom::getUInt32(UInt32 min, UInt32 max) {
    UInt32 const span = max - min;
    UInt32 mask = span;
    mask |= mask >> 1;
    mask |= mask >> 2;
    mask |= mask >> 4;
    mask |= mask >> 8;
    mask |= mask >> 16;
    UInt32 r;
    do {
        r = getUInt32() & mask;
    } while (r > span);
    return min + r;
}

double kelRandom::getDouble() {
    return getUInt32() * (1.0 / 4294967295.0);
}

double kelRandom::getDouble(double min, double max) {
    return min + getDouble() * (max - min);
}

void kelRandom::getName(kelString& out, UInt32 length, char const* alphabet) {
    out.clear();
    UInt32 const letters = kelString::size(alphabet);
    if (letters == 0) {
        return;
    }
    for (UInt32 i = 0; i < length; ++i) {
        out += alphabet[getUInt32(0, letters - 1)];
    }
}

void kelRandom::getName(kelString& out, UInt32 length) {
    getName(out, length, "abcdefghijklmnopqrstuvwxyz");
}

} // namespace KELKIT
