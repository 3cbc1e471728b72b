// Writing 4-byte values into the buffered serializer for growing totals: the time per byte
// should stay flat. The binary serializer and std::vector appends run beside it.

#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>

#include <benchmark/benchmark.h>

#include <vector>

using namespace KELKIT;

namespace {

template <class Serializer>
void writeValues(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0) / 4);
    for (auto _ : state) {
        Serializer s;
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        benchmark::DoNotOptimize(s.getSize());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_kelBufferedSerializer_Write4(benchmark::State& state) {
    writeValues<kelBufferedSerializer>(state);
}

void BM_kelBinarySerializer_Write4(benchmark::State& state) {
    writeValues<kelBinarySerializer>(state);
}

void BM_stdVector_Append4(benchmark::State& state) {
    std::size_t const count = static_cast<std::size_t>(state.range(0) / 4);
    for (auto _ : state) {
        std::vector<unsigned char> bytes;
        for (std::size_t i = 0; i < count; ++i) {
            UInt32 const value = static_cast<UInt32>(i);
            unsigned char const le[4] = {
                static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8),
                static_cast<unsigned char>(value >> 16), static_cast<unsigned char>(value >> 24)};
            bytes.insert(bytes.end(), le, le + 4);
        }
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_kelBufferedSerializer_Write4)
    ->Arg(1 << 20)
    ->Arg(16 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelBinarySerializer_Write4)
    ->Arg(1 << 20)
    ->Arg(16 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_stdVector_Append4)
    ->Arg(1 << 20)
    ->Arg(16 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
