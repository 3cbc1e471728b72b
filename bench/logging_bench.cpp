// Lines per second into a file logger, beside the C runtime's fprintf and fputs writing the same
// bytes to a FILE* of their own.

#include <kelcore/logging/kelFileLogger.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#ifdef _WIN32
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

using namespace KELKIT;

namespace {

// A file of this process in the temporary folder, removed afterwards.
struct BenchFile {
    explicit BenchFile(char const* what)
        : path((std::filesystem::temp_directory_path() /
                ("kelcore-bench-" + std::string(what) + '-' + std::to_string(getpid()) + ".log"))
                   .string()) {}
    ~BenchFile() { std::filesystem::remove(path); }
    std::string const path;
};

// A fixed count keeps the files at a few tens of megabytes.
constexpr benchmark::IterationCount LINES = 1000000;

void BM_kelFileLogger_PrintArgs(benchmark::State& state) {
    BenchFile file("printargs");
    kelFileLogger log(file.path.c_str(), false);
    int i = 0;
    for (auto _ : state) {
        log.printArgs("line %d of the benchmark\n", ++i);
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_fprintf(benchmark::State& state) {
    BenchFile file("fprintf");
    std::FILE* out = std::fopen(file.path.c_str(), "wb");
    int i = 0;
    for (auto _ : state) {
        std::fprintf(out, "line %d of the benchmark\r\n", ++i);
    }
    std::fclose(out);
    state.SetItemsProcessed(state.iterations());
}

void BM_kelFileLogger_Print(benchmark::State& state) {
    BenchFile file("print");
    kelFileLogger log(file.path.c_str(), false);
    for (auto _ : state) {
        log.print("a constant line of the benchmark\n");
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_fputs(benchmark::State& state) {
    BenchFile file("fputs");
    std::FILE* out = std::fopen(file.path.c_str(), "wb");
    for (auto _ : state) {
        std::fputs("a constant line of the benchmark\r\n", out);
    }
    std::fclose(out);
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(BM_kelFileLogger_PrintArgs)->Iterations(LINES);
BENCHMARK(BM_fprintf)->Iterations(LINES);
BENCHMARK(BM_kelFileLogger_Print)->Iterations(LINES);
BENCHMARK(BM_fputs)->Iterations(LINES);
