// kelString next to std::string for the operations that callers use most.

#include <kelcore/strings/kelString.h>

#include <benchmark/benchmark.h>

#include <string>

using namespace KELKIT;

namespace {

std::string sampleText(std::size_t length) {
    std::string s;
    for (std::size_t i = 0; s.size() < length; ++i) {
        s += (i % 7 == 0) ? ' ' : static_cast<char>('a' + i % 26);
    }
    return s;
}

void BM_kelString_AppendChar(benchmark::State& state) {
    for (auto _ : state) {
        kelString s;
        for (int64_t i = 0; i < state.range(0); ++i) {
            s += 'x';
        }
        benchmark::DoNotOptimize(s.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_kelString_AppendCharCall(benchmark::State& state) {
    for (auto _ : state) {
        kelString s;
        for (int64_t i = 0; i < state.range(0); ++i) {
            s.append('x');
        }
        benchmark::DoNotOptimize(s.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_stdString_AppendChar(benchmark::State& state) {
    for (auto _ : state) {
        std::string s;
        for (int64_t i = 0; i < state.range(0); ++i) {
            s += 'x';
        }
        benchmark::DoNotOptimize(s.c_str());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_kelString_Find(benchmark::State& state) {
    kelString const s((sampleText(static_cast<std::size_t>(state.range(0))) + "needle").c_str());
    for (auto _ : state) {
        UInt32 pos = 0;
        benchmark::DoNotOptimize(s.find("needle", pos));
        benchmark::DoNotOptimize(pos);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_stdString_Find(benchmark::State& state) {
    std::string const s = sampleText(static_cast<std::size_t>(state.range(0))) + "needle";
    for (auto _ : state) {
        benchmark::DoNotOptimize(s.find("needle"));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_kelString_Replace(benchmark::State& state) {
    std::string const text = sampleText(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        kelString s(text.c_str());
        benchmark::DoNotOptimize(s.replace(" ", "__"));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_kelString_Compare(benchmark::State& state) {
    std::string const text = sampleText(static_cast<std::size_t>(state.range(0)));
    kelString const a(text.c_str());
    kelString const b(text.c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(a < b);
    }
}

void BM_kelString_Hash(benchmark::State& state) {
    kelString const s(sampleText(static_cast<std::size_t>(state.range(0))).c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(s.getHashCode());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_kelString_Trim(benchmark::State& state) {
    std::string const text = "    " + sampleText(static_cast<std::size_t>(state.range(0))) + "    ";
    for (auto _ : state) {
        kelString s(text.c_str());
        s.trim();
        benchmark::DoNotOptimize(s.c_str());
    }
}

} // namespace

BENCHMARK(BM_kelString_AppendChar)->Arg(16)->Arg(1024)->Arg(65536);
BENCHMARK(BM_kelString_AppendCharCall)->Arg(16)->Arg(1024)->Arg(65536);
BENCHMARK(BM_stdString_AppendChar)->Arg(16)->Arg(1024)->Arg(65536);
BENCHMARK(BM_kelString_Find)->Arg(64)->Arg(4096)->Arg(262144);
BENCHMARK(BM_stdString_Find)->Arg(64)->Arg(4096)->Arg(262144);
BENCHMARK(BM_kelString_Replace)->Arg(64)->Arg(4096);
BENCHMARK(BM_kelString_Compare)->Arg(64)->Arg(4096);
BENCHMARK(BM_kelString_Hash)->Arg(64)->Arg(4096);
BENCHMARK(BM_kelString_Trim)->Arg(64)->Arg(4096);
