// Packing and unpacking 10 million adjacent 12-bit fields of a block with kelBitsPacker, beside
// a plain shift-and-mask loop over the same 16-bit words. Both take and give doubles.

#include <kelcore/memory/kelBitsPacker.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

using namespace KELKIT;

namespace {

constexpr std::size_t kFields = 10000000;
constexpr unsigned kBits = 12;

std::vector<unsigned char>& block() {
    static std::vector<unsigned char> bytes(kFields * kBits / 8 + 8);
    return bytes;
}

double valueOf(std::size_t i) {
    return static_cast<double>((i * 2654435761u) & 0xFFF);
}

void BM_kelBitsPacker_Pack12(benchmark::State& state) {
    unsigned char* const bytes = block().data();
    for (auto _ : state) {
        for (std::size_t i = 0; i < kFields; ++i) {
            std::size_t const bit = i * kBits;
            kelBitsPacker field(bytes + bit / 8, static_cast<unsigned char>(bit % 8), kBits, 1.0,
                                false);
            field = valueOf(i);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kFields);
}

void BM_ShiftMask_Pack12(benchmark::State& state) {
    unsigned char* const bytes = block().data();
    for (auto _ : state) {
        for (std::size_t i = 0; i < kFields; ++i) {
            std::size_t const bit = i * kBits;
            unsigned const shift = bit % 8;
            UInt16 word = 0;
            std::memcpy(&word, bytes + bit / 8, 2);
            UInt16 const mask = static_cast<UInt16>(0xFFF << shift);
            UInt16 const field = static_cast<UInt16>(static_cast<unsigned>(valueOf(i)) << shift);
            word = static_cast<UInt16>((word & ~mask) | (field & mask));
            std::memcpy(bytes + bit / 8, &word, 2);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kFields);
}

void BM_kelBitsPacker_Unpack12(benchmark::State& state) {
    unsigned char* const bytes = block().data();
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t i = 0; i < kFields; ++i) {
            std::size_t const bit = i * kBits;
            kelBitsPacker const field(bytes + bit / 8, static_cast<unsigned char>(bit % 8), kBits,
                                      1.0, false);
            sum += field;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kFields);
}

void BM_ShiftMask_Unpack12(benchmark::State& state) {
    unsigned char* const bytes = block().data();
    for (auto _ : state) {
        double sum = 0.0;
        for (std::size_t i = 0; i < kFields; ++i) {
            std::size_t const bit = i * kBits;
            UInt16 word = 0;
            std::memcpy(&word, bytes + bit / 8, 2);
            sum += static_cast<double>((word >> (bit % 8)) & 0xFFF);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kFields);
}

} // namespace

BENCHMARK(BM_kelBitsPacker_Pack12)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ShiftMask_Pack12)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelBitsPacker_Unpack12)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ShiftMask_Unpack12)->Unit(benchmark::kMillisecond);
