// kelSchedule::matches on repetitive schedules started further and further back: minutely ones
// must cost the same whatever the distance; monthly ones walk one calendar step per month.
// The zone is the process's (set TZ to compare zones).

#include <kelcore/time/kelSchedule.h>

#include <benchmark/benchmark.h>

using namespace KELKIT;

namespace {

UInt64 const T = 1732363200ull; // 2024/11/23 12:00:00 UTC: day 23 exists in every month
UInt64 const DAY = 86400ull;

// Asks alternately for t, which the schedule hits, and for 17 minutes later: every minute for a
// minutely schedule, another clock time for a monthly one.
void matchesFrom(benchmark::State& state, kelTime const& start, RepetitiveType::Enum unit) {
    kelSchedule schedule;
    schedule.setRepetitive(start, 1, unit);
    kelTime const hit(T);
    kelTime const later(T + 17 * 60);
    if (!schedule.matches(hit) || schedule.matches(later) != (unit == RepetitiveType::Minutes)) {
        state.SkipWithError("unexpected answer");
        return;
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(schedule.matches((i++ & 1) != 0 ? later : hit));
    }
}

// Argument: days from the start to t.
void BM_kelSchedule_MatchesMinutely(benchmark::State& state) {
    matchesFrom(state, kelTime(T - static_cast<UInt64>(state.range(0)) * DAY),
                RepetitiveType::Minutes);
}

// Argument: months from the start to t. The miss stops at the clock check; the hit walks.
void BM_kelSchedule_MatchesMonthly(benchmark::State& state) {
    kelTime start(T);
    start.add(-state.range(0), kelTimeUnit::Months);
    matchesFrom(state, start, RepetitiveType::Months);
}

void BM_kelSchedule_TextRoundTrip(benchmark::State& state) {
    kelSchedule schedule;
    kelListMonth months;
    months.add(kelMonth::January);
    months.add(kelMonth::July);
    schedule.setMontly(kelTime(T), 15, months);
    kelSchedule read;
    for (auto _ : state) {
        benchmark::DoNotOptimize(read.fromString(schedule.toString().c_str()));
    }
}

} // namespace

// 1 day, 1 year and 10 years back.
BENCHMARK(BM_kelSchedule_MatchesMinutely)->Arg(1)->Arg(365)->Arg(3652);
BENCHMARK(BM_kelSchedule_MatchesMonthly)->Arg(1)->Arg(12)->Arg(120);
BENCHMARK(BM_kelSchedule_TextRoundTrip);
