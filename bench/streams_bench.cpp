// Small dumps into memory next to std::vector appends, and copyStream of a large file next to
// the system's cp run as a process.

#include <kelcore/memory/kelFileInputStream.h>
#include <kelcore/memory/kelFileOutputStream.h>
#include <kelcore/memory/kelStreamUtils.h>
#include <kelcore/serialization/kelMemoryDumper.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

using namespace KELKIT;
namespace fs = std::filesystem;

namespace {

constexpr UInt32 DUMPS = 1000000;

void BM_kelMemoryDumper_Dump4Bytes(benchmark::State& state) {
    for (auto _ : state) {
        kelMemoryDumper dumper;
        for (UInt32 i = 0; i < DUMPS; ++i) {
            dumper.dump(i);
        }
        benchmark::DoNotOptimize(dumper.getBuffer().getBuffer());
    }
    state.SetBytesProcessed(state.iterations() * DUMPS * 4);
}

void BM_stdVector_Append4Bytes(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<unsigned char> v;
        for (UInt32 i = 0; i < DUMPS; ++i) {
            unsigned char bytes[4];
            std::memcpy(bytes, &i, 4);
            v.insert(v.end(), bytes, bytes + 4);
        }
        benchmark::DoNotOptimize(v.data());
    }
    state.SetBytesProcessed(state.iterations() * DUMPS * 4);
}

// A 256 MiB file of random bytes in the temporary folder, made once and removed at exit.
class LargeFile {
public:
    static LargeFile const& get() {
        static LargeFile const file;
        return file;
    }
    std::string source;
    std::string target;
    static constexpr long long SIZE = 256ll << 20;

private:
    LargeFile() {
        std::string const stem = "kelcore-bench-copy-" + std::to_string(std::random_device{}());
        source = (fs::temp_directory_path() / (stem + ".in")).string();
        target = (fs::temp_directory_path() / (stem + ".out")).string();
        std::mt19937_64 rng(1);
        std::vector<std::uint64_t> block(1 << 17);
        std::ofstream out(source, std::ios::binary);
        for (long long written = 0; written < SIZE; written += 1 << 20) {
            for (auto& word : block) {
                word = rng();
            }
            out.write(reinterpret_cast<char const*>(block.data()), 1 << 20);
        }
    }
    ~LargeFile() {
        std::error_code ignored;
        fs::remove(source, ignored);
        fs::remove(target, ignored);
    }
};

void copyBenchmark(benchmark::State& state, bool (*copy)(LargeFile const&)) {
    LargeFile const& file = LargeFile::get();
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(file.target);
        state.ResumeTiming();
        if (!copy(file) || fs::file_size(file.target) != LargeFile::SIZE) {
            state.SkipWithError("copy failed");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * LargeFile::SIZE);
}

void BM_kelStreamUtils_CopyFile256MiB(benchmark::State& state) {
    copyBenchmark(state, [](LargeFile const& file) {
        kelFileInputStream in(file.source.c_str());
        kelFileOutputStream out(file.target.c_str());
        return kelStreamUtils::copyStream(&in, &out); // the destructors flush and close
    });
}

void BM_cpProcess_CopyFile256MiB(benchmark::State& state) {
    copyBenchmark(state, [](LargeFile const& file) {
        std::string const command = "cp '" + file.source + "' '" + file.target + "'";
        return std::system(command.c_str()) == 0;
    });
}

} // namespace

BENCHMARK(BM_kelMemoryDumper_Dump4Bytes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_stdVector_Append4Bytes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelStreamUtils_CopyFile256MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_cpProcess_CopyFile256MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
