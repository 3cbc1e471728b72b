// Number text round trips: the stream-based converter next to std::to_chars/std::from_chars.

#include <kelcore/strings/kelStringConverter.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <random>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<UInt32> randomValues() {
    std::mt19937 rng(3);
    std::vector<UInt32> values(1024);
    for (auto& value : values) {
        value = static_cast<UInt32>(rng());
    }
    return values;
}

void BM_kelStringConverter_UInt32RoundTrip(benchmark::State& state) {
    std::vector<UInt32> const values = randomValues();
    std::size_t i = 0;
    for (auto _ : state) {
        UInt32 const value = values[i++ & 1023];
        kelString const text = kelStringConverter::toString(value);
        benchmark::DoNotOptimize(kelStringConverter::toUInt32(text));
    }
}

void BM_charconv_UInt32RoundTrip(benchmark::State& state) {
    std::vector<UInt32> const values = randomValues();
    std::size_t i = 0;
    for (auto _ : state) {
        UInt32 const value = values[i++ & 1023];
        char text[16];
        auto const written = std::to_chars(text, text + sizeof text, value);
        UInt32 back = 0;
        std::from_chars(text, written.ptr, back);
        benchmark::DoNotOptimize(back);
    }
}

} // namespace

BENCHMARK(BM_kelStringConverter_UInt32RoundTrip);
BENCHMARK(BM_charconv_UInt32RoundTrip);
