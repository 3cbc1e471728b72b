// kelListUInt32 and kelListString next to std::vector with std::sort and std::find, on the same
// data in the same run. Sorting times include making the unsorted copy, on both sides alike.
// Each benchmark first runs its body once untimed, so that the allocator has settled on how it
// serves blocks of that size (otherwise whichever side runs first pays for fresh pages).

#include <kelcore/containers/kelLists.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;

namespace {

std::vector<UInt32> numbers(std::size_t count) {
    std::mt19937 rng(12345);
    std::vector<UInt32> out(count);
    for (UInt32& v : out) {
        v = rng();
    }
    return out;
}

std::vector<kelString> words(std::size_t count) {
    std::mt19937 rng(54321);
    std::vector<kelString> out;
    out.reserve(count);
    std::string w(12, ' ');
    for (std::size_t i = 0; i < count; ++i) {
        for (char& c : w) {
            c = static_cast<char>('a' + rng() % 26);
        }
        out.push_back(kelString(w.c_str()));
    }
    return out;
}

template <typename L, typename T>
L listOf(std::vector<T> const& values) {
    L list;
    for (T const& v : values) {
        list.add(v);
    }
    return list;
}

template <typename L, typename T>
void listAdd(benchmark::State& state, std::vector<T> const& values) {
    auto body = [&] {
        L list;
        for (T const& v : values) {
            list.add(v);
        }
        benchmark::DoNotOptimize(&list.get(0));
    };
    body();
    for (auto _ : state) {
        body();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename T>
void vectorAdd(benchmark::State& state, std::vector<T> const& values) {
    auto body = [&] {
        std::vector<T> vec;
        for (T const& v : values) {
            vec.push_back(v);
        }
        benchmark::DoNotOptimize(vec.data());
    };
    body();
    for (auto _ : state) {
        body();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The list keeps its vector behind an owning pointer, so a caller's loop of add() cannot hold
// the vector's end in a register: each add loads the pointer and the vector's ends and stores
// the new end. A vector reached the same way shows what that costs apart from the list.
template <typename T>
void vectorBehindPointerAdd(benchmark::State& state, std::vector<T> const& values) {
    auto body = [&] {
        auto vec = std::make_unique<std::vector<T>>();
        benchmark::DoNotOptimize(&vec);
        for (T const& v : values) {
            vec->push_back(v);
        }
        benchmark::DoNotOptimize(vec->data());
    };
    body();
    for (auto _ : state) {
        body();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename L, typename T>
void listSort(benchmark::State& state, std::vector<T> const& values) {
    L const unsorted = listOf<L>(values);
    auto body = [&] {
        L list(unsorted);
        list.sort();
        benchmark::DoNotOptimize(&list.get(0));
    };
    body();
    for (auto _ : state) {
        body();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename T>
void vectorSort(benchmark::State& state, std::vector<T> const& values) {
    auto body = [&] {
        std::vector<T> vec(values);
        std::sort(vec.begin(), vec.end());
        benchmark::DoNotOptimize(vec.data());
    };
    body();
    for (auto _ : state) {
        body();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The value searched for is absent: a full scan each time.
template <typename L, typename T>
void listFind(benchmark::State& state, std::vector<T> const& values, T const& missing) {
    L const list = listOf<L>(values);
    for (auto _ : state) {
        typename L::INDEX found;
        benchmark::DoNotOptimize(list.find(missing, found));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename T>
void vectorFind(benchmark::State& state, std::vector<T> const& values, T const& missing) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::find(values.begin(), values.end(), missing));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

UInt32 const MISSING_NUMBER = 7; // not among the generated values for these sizes
kelString const MISSING_WORD("no such word");

void BM_kelListUInt32_Add(benchmark::State& s) {
    listAdd<kelListUInt32>(s, numbers(s.range(0)));
}
void BM_vectorUInt32_Add(benchmark::State& s) {
    vectorAdd(s, numbers(s.range(0)));
}
void BM_vectorBehindPointerUInt32_Add(benchmark::State& s) {
    vectorBehindPointerAdd(s, numbers(s.range(0)));
}
void BM_kelListUInt32_Sort(benchmark::State& s) {
    listSort<kelListUInt32>(s, numbers(s.range(0)));
}
void BM_vectorUInt32_Sort(benchmark::State& s) {
    vectorSort(s, numbers(s.range(0)));
}
void BM_kelListUInt32_Find(benchmark::State& s) {
    listFind<kelListUInt32>(s, numbers(s.range(0)), MISSING_NUMBER);
}
void BM_vectorUInt32_Find(benchmark::State& s) {
    vectorFind(s, numbers(s.range(0)), MISSING_NUMBER);
}
void BM_kelListString_Add(benchmark::State& s) {
    listAdd<kelListString>(s, words(s.range(0)));
}
void BM_vectorString_Add(benchmark::State& s) {
    vectorAdd(s, words(s.range(0)));
}
void BM_kelListString_Sort(benchmark::State& s) {
    listSort<kelListString>(s, words(s.range(0)));
}
void BM_vectorString_Sort(benchmark::State& s) {
    vectorSort(s, words(s.range(0)));
}
void BM_kelListString_Find(benchmark::State& s) {
    listFind<kelListString>(s, words(s.range(0)), MISSING_WORD);
}
void BM_vectorString_Find(benchmark::State& s) {
    vectorFind(s, words(s.range(0)), MISSING_WORD);
}

} // namespace

#define KEL_LIST_BENCH(name) BENCHMARK(name)->RangeMultiplier(10)->Range(1000, 1000000)
KEL_LIST_BENCH(BM_kelListUInt32_Add);
KEL_LIST_BENCH(BM_vectorUInt32_Add);
KEL_LIST_BENCH(BM_vectorBehindPointerUInt32_Add);
KEL_LIST_BENCH(BM_kelListUInt32_Sort);
KEL_LIST_BENCH(BM_vectorUInt32_Sort);
KEL_LIST_BENCH(BM_kelListUInt32_Find);
KEL_LIST_BENCH(BM_vectorUInt32_Find);
KEL_LIST_BENCH(BM_kelListString_Add);
KEL_LIST_BENCH(BM_vectorString_Add);
KEL_LIST_BENCH(BM_kelListString_Sort);
KEL_LIST_BENCH(BM_vectorString_Sort);
KEL_LIST_BENCH(BM_kelListString_Find);
KEL_LIST_BENCH(BM_vectorString_Find);
