// Uncontended locking: the library's locks next to std::recursive_mutex.

#include <kelcore/concurrency/kelCriticalSection.h>
#include <kelcore/concurrency/kelMutex.h>

#include <benchmark/benchmark.h>

#include <mutex>

using namespace KELKIT;

namespace {

void BM_kelCriticalSection_EnterLeave(benchmark::State& state) {
    kelCriticalSection lock;
    for (auto _ : state) {
        lock.enter();
        lock.leave();
    }
}

void BM_kelMutex_Unnamed_ReserveRelease(benchmark::State& state) {
    kelMutex lock;
    for (auto _ : state) {
        lock.reserve();
        lock.release();
    }
}

void BM_kelMutex_Named_ReserveRelease(benchmark::State& state) {
    kelMutex lock("kelcore-bench-named-mutex");
    for (auto _ : state) {
        lock.reserve();
        lock.release();
    }
}

void BM_stdRecursiveMutex_LockUnlock(benchmark::State& state) {
    std::recursive_mutex lock;
    for (auto _ : state) {
        lock.lock();
        lock.unlock();
    }
}

} // namespace

BENCHMARK(BM_kelCriticalSection_EnterLeave);
BENCHMARK(BM_kelMutex_Unnamed_ReserveRelease);
BENCHMARK(BM_kelMutex_Named_ReserveRelease);
BENCHMARK(BM_stdRecursiveMutex_LockUnlock);
