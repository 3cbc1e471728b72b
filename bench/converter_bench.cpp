// Number text round trips: the stream-based converter next to std::to_chars/std::from_chars.

#include <kelcore/strings/kelStringConverter.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
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

// The same, with the text kept in a kelString as the converter must return it: what the library
// cannot avoid beyond to_chars and from_chars.
void BM_charconvInKelString_UInt32RoundTrip(benchmark::State& state) {
    std::vector<UInt32> const values = randomValues();
    std::size_t i = 0;
    for (auto _ : state) {
        UInt32 const value = values[i++ & 1023];
        char text[16];
        *std::to_chars(text, text + sizeof text - 1, value).ptr = '\0';
        kelString const kept(text);
        UInt32 back = 0;
        std::from_chars(kept.c_str(), kept.c_str() + kept.size(), back);
        benchmark::DoNotOptimize(back);
    }
}

std::vector<double> randomReals() {
    std::mt19937_64 rng(4);
    std::vector<double> values(1024);
    for (auto& value : values) {
        value = std::ldexp(double(rng() >> 11), int(rng() % 80) - 93);
    }
    return values;
}

// Six significant digits, as the converter writes them.
void BM_kelStringConverter_Float64RoundTrip(benchmark::State& state) {
    std::vector<double> const values = randomReals();
    std::size_t i = 0;
    for (auto _ : state) {
        kelString const text = kelStringConverter::toString(values[i++ & 1023]);
        benchmark::DoNotOptimize(kelStringConverter::toFloat64(text));
    }
}

void BM_charconv_Float64RoundTrip(benchmark::State& state) {
    std::vector<double> const values = randomReals();
    std::size_t i = 0;
    for (auto _ : state) {
        char text[32];
        auto const written = std::to_chars(text, text + sizeof text, values[i++ & 1023],
                                           std::chars_format::general, 6);
        double back = 0;
        std::from_chars(text, written.ptr, back);
        benchmark::DoNotOptimize(back);
    }
}

} // namespace

BENCHMARK(BM_kelStringConverter_UInt32RoundTrip);
BENCHMARK(BM_charconv_UInt32RoundTrip);
BENCHMARK(BM_charconvInKelString_UInt32RoundTrip);
BENCHMARK(BM_kelStringConverter_Float64RoundTrip);
BENCHMARK(BM_charconv_Float64RoundTrip);
