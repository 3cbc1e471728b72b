// The renamer's wildcard matcher next to std::regex running the same search: greedy groups,
// longest first, with a look-ahead for what each '*' keeps back. A failing match explores every
// split, the worst case; std::regex grows exponentially with the stars, the matcher polynomially.

#include <kelcore/internal/kelRenameEngine.h>

#include <benchmark/benchmark.h>

#include <regex>
#include <string>

using namespace KELKIT;

namespace {

// Stars each followed by 'a', then a final "*b" that never matches a text of only 'a'.
std::string failingPattern(int stars) {
    std::string pattern;
    for (int i = 0; i < stars; ++i) {
        pattern += "*a";
    }
    return pattern + "*b";
}

std::string failingExpression(int stars) {
    std::string expression;
    for (int i = 0; i < stars; ++i) {
        expression += "(.*)(?=.{2})a";
    }
    return expression + "(.*)(?=.{1})b";
}

void BM_kelRenamer_FailingMatch(benchmark::State& state) {
    std::string const pattern = failingPattern(static_cast<int>(state.range(0)));
    std::string const text(static_cast<std::size_t>(state.range(1)), 'a');
    kelListString captures;
    for (auto _ : state) {
        benchmark::DoNotOptimize(internal::matchWildcards(pattern.c_str(), text.c_str(), captures));
    }
}

void BM_stdRegex_FailingMatch(benchmark::State& state) {
    std::regex const expression(failingExpression(static_cast<int>(state.range(0))));
    std::string const text(static_cast<std::size_t>(state.range(1)), 'a');
    std::smatch groups;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::regex_match(text, groups, expression));
    }
}

// An everyday rename: '*_*.jpg' on a camera's file name.
void BM_kelRenamer_TypicalMatch(benchmark::State& state) {
    kelListString captures;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            internal::matchWildcards("*_*.jpg", "IMG_20240517_104512.jpg", captures));
    }
}

void BM_stdRegex_TypicalMatch(benchmark::State& state) {
    std::regex const expression("(.*)(?=.{1})_(.*)\\.jpg");
    std::string const text = "IMG_20240517_104512.jpg";
    std::smatch groups;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::regex_match(text, groups, expression));
    }
}

} // namespace

BENCHMARK(BM_kelRenamer_FailingMatch)
    ->ArgsProduct({{1, 2, 3, 4, 8, 16, 20, 32}, {200}})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_stdRegex_FailingMatch)->ArgsProduct({{1, 2, 3}, {200}})->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_kelRenamer_TypicalMatch);
BENCHMARK(BM_stdRegex_TypicalMatch);
