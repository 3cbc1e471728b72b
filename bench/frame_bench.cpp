// The frame's small pieces: throwing the library's exception, and sorting through comparators.

#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelException.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/strings/kelString.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

void BM_kelException_ThrowCatch(benchmark::State& state) {
    for (auto _ : state) {
        try {
            throw kelException("Unable to desialize data. Buffer is too small", "unit.cpp", 1);
        } catch (kelException const& e) {
            benchmark::DoNotOptimize(e.getDescription());
        }
    }
}

std::vector<kelString> randomWords(std::size_t count) {
    std::mt19937 rng(1);
    std::vector<kelString> words;
    for (std::size_t i = 0; i < count; ++i) {
        std::string w(1 + rng() % 12, 'a');
        for (char& c : w) {
            c = static_cast<char>('a' + rng() % 26);
        }
        words.emplace_back(w.c_str());
    }
    return words;
}

void BM_kelDefaultComparator_Sort(benchmark::State& state) {
    std::vector<kelString> const words = randomWords(static_cast<std::size_t>(state.range(0)));
    kelDefaultComparator<kelString> const cmp;
    kelIComparator const& order = cmp; // through the interface, as a list sorts
    for (auto _ : state) {
        std::vector<kelString> copy = words;
        std::sort(copy.begin(), copy.end(), [&](kelString const& a, kelString const& b) {
            return order.compare(&a, &b) < 0;
        });
        benchmark::DoNotOptimize(copy.data());
    }
}

void BM_kelReverseComparator_Sort(benchmark::State& state) {
    std::vector<kelString> const words = randomWords(static_cast<std::size_t>(state.range(0)));
    kelDefaultComparator<kelString> const cmp;
    kelReverseComparator const reverse(cmp);
    for (auto _ : state) {
        std::vector<kelString> copy = words;
        std::sort(copy.begin(), copy.end(), [&](kelString const& a, kelString const& b) {
            return reverse.compare(&a, &b) < 0;
        });
        benchmark::DoNotOptimize(copy.data());
    }
}

} // namespace

BENCHMARK(BM_kelException_ThrowCatch);
BENCHMARK(BM_kelDefaultComparator_Sort)->Arg(1000)->Arg(100000);
BENCHMARK(BM_kelReverseComparator_Sort)->Arg(1000)->Arg(100000);
