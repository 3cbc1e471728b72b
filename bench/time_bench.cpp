// Calendar reads of kelTime: one conversion for the whole record against one per field, and the
// text form both ways. The zone is the process's (set TZ to compare zones).

#include <kelcore/time/kelTime.h>

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<kelTime> randomTimes() {
    std::mt19937_64 rng(5);
    std::vector<kelTime> times;
    for (int i = 0; i < 1024; ++i) {
        times.emplace_back(946684800ull + rng() % 2208988800ull); // 2000 .. 2070
    }
    return times;
}

void BM_kelTime_GetAll(benchmark::State& state) {
    std::vector<kelTime> const times = randomTimes();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(times[i++ & 1023].getAll());
    }
}

void BM_kelTime_SevenGetters(benchmark::State& state) {
    std::vector<kelTime> const times = randomTimes();
    std::size_t i = 0;
    for (auto _ : state) {
        kelTime const& t = times[i++ & 1023];
        unsigned sum = t.getYear() + t.getMonth() + t.getDay() + t.getHour() + t.getMinute() +
                       t.getSecond() + t.getWeekDay();
        benchmark::DoNotOptimize(sum);
    }
}

void BM_kelTime_ToString(benchmark::State& state) {
    std::vector<kelTime> const times = randomTimes();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(times[i++ & 1023].toString());
    }
}

void BM_kelTime_FromString(benchmark::State& state) {
    std::vector<kelTime> const times = randomTimes();
    std::vector<std::string> texts;
    for (kelTime const& t : times) {
        texts.emplace_back(t.toString().c_str());
    }
    kelTime target(0ull);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(target.fromString(texts[i++ & 1023].c_str()));
    }
}

} // namespace

BENCHMARK(BM_kelTime_GetAll);
BENCHMARK(BM_kelTime_SevenGetters);
BENCHMARK(BM_kelTime_ToString);
BENCHMARK(BM_kelTime_FromString);
