// The event bus's throughput, and how evenly the scheduler spaces a heartbeat's beats.

#include <kelcore/concurrency/kelScheduler.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/frame/kelEventTypes.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using namespace KELKIT;
using Clock = std::chrono::steady_clock;

namespace {

struct CountingNotifier : kelEventNotifier {
    void onEvent(kelEvent* event) override { calls += event->getType() != 0 ? 1 : 0; }
    unsigned long long calls = 0;
};

struct BenchEvent : kelEvent {
    UInt64 getType() const override { return kelEventTypes::Custom; }
};

// Events per second through publishEvent to state.range(0) notifiers.
void BM_kelEventPublisher_Publish(benchmark::State& state) {
    kelEventPublisher& bus = kelEventPublisher::getInstance();
    std::vector<std::unique_ptr<CountingNotifier>> notifiers;
    for (int64_t i = 0; i < state.range(0); ++i) {
        notifiers.emplace_back(new CountingNotifier);
        bus.registerNotifier(notifiers.back().get());
    }
    BenchEvent event;
    for (auto _ : state) {
        bus.publishEvent(&event);
    }
    for (auto& n : notifiers) {
        bus.unregisterNotifier(n.get());
    }
    benchmark::DoNotOptimize(notifiers.front()->calls);
    state.SetItemsProcessed(state.iterations());
    state.counters["notifier_calls_per_s"] = benchmark::Counter(
        static_cast<double>(state.iterations() * state.range(0)), benchmark::Counter::kIsRate);
}

// Records when its heartbeat arrives.
class BeatTimes : public kelEventNotifier {
public:
    explicit BeatTimes(kelHeartBeat const* beat) : mBeat(beat) {}
    void onEvent(kelEvent* event) override {
        if (event == mBeat) {
            std::lock_guard<std::mutex> lock(mutex);
            times.push_back(Clock::now());
        }
    }
    std::mutex mutex;
    std::vector<Clock::time_point> times;

private:
    kelHeartBeat const* mBeat;
};

// The intervals between beats of a 100 ms heartbeat over 10 s, as percentiles in ms.
void BM_kelScheduler_HeartBeatJitter(benchmark::State& state) {
    kelScheduler& scheduler = kelScheduler::getInstance();
    std::vector<double> gaps;
    for (auto _ : state) {
        kelHeartBeat* beat = scheduler.createHeartBeat("jitter", 100);
        BeatTimes times(beat);
        kelEventPublisher::getInstance().registerNotifier(&times);
        std::this_thread::sleep_for(std::chrono::seconds(10));
        kelEventPublisher::getInstance().unregisterNotifier(&times);
        scheduler.deleteHeartBeat(beat);
        std::lock_guard<std::mutex> lock(times.mutex);
        for (std::size_t i = 1; i < times.times.size(); ++i) {
            gaps.push_back(
                std::chrono::duration<double, std::milli>(times.times[i] - times.times[i - 1])
                    .count());
        }
    }
    if (gaps.empty()) {
        state.SkipWithError("no beats arrived");
        return;
    }
    std::sort(gaps.begin(), gaps.end());
    auto const at = [&gaps](double p) {
        return gaps[std::min(gaps.size() - 1, static_cast<std::size_t>(p * (gaps.size() - 1)))];
    };
    state.counters["beats"] = static_cast<double>(gaps.size() + 1);
    state.counters["min_ms"] = gaps.front();
    state.counters["p50_ms"] = at(0.50);
    state.counters["p90_ms"] = at(0.90);
    state.counters["p99_ms"] = at(0.99);
    state.counters["max_ms"] = gaps.back();
}

} // namespace

BENCHMARK(BM_kelEventPublisher_Publish)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(BM_kelScheduler_HeartBeatJitter)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
