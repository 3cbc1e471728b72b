// Writing 4-byte values into the serializers for growing totals, and reading them back: the time
// per byte should stay flat. std::vector appends run beside them as the measure for both.

#include <kelcore/serialization/kelBinarySerializer.h>
#include <kelcore/serialization/kelBufferedSerializer.h>
#include <kelcore/serialization/kelMemorySerializer.h>

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

void BM_kelMemorySerializer_Write4(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0) / 4);
    std::vector<UInt8> block(static_cast<std::size_t>(state.range(0)) + 1);
    for (auto _ : state) {
        kelMemorySerializer s(block.data(), static_cast<UInt32>(block.size()));
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        benchmark::DoNotOptimize(block.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// Reading the 4-byte values back; filling the serializer is not timed. The calls are made on the
// object itself, as by a caller that holds the concrete class.
template <class Serializer>
void readValues(benchmark::State& state) {
    UInt32 const count = static_cast<UInt32>(state.range(0) / 4);
    Serializer s;
    for (auto _ : state) {
        state.PauseTiming();
        s.clearData();
        for (UInt32 i = 0; i < count; ++i) {
            s.serialize(i);
        }
        state.ResumeTiming();
        UInt32 sum = 0;
        for (UInt32 i = 0; i < count; ++i) {
            UInt32 value;
            s.deserialize(value);
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_kelBufferedSerializer_Read4(benchmark::State& state) {
    readValues<kelBufferedSerializer>(state);
}

void BM_kelBinarySerializer_Read4(benchmark::State& state) {
    readValues<kelBinarySerializer>(state);
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
BENCHMARK(BM_kelMemorySerializer_Write4)
    ->Arg(1 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelBufferedSerializer_Read4)
    ->Arg(1 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelBinarySerializer_Read4)
    ->Arg(1 << 20)
    ->Arg(256 << 20)
    ->Unit(benchmark::kMillisecond);
