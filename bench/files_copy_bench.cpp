// A 256 MiB copy: kelFiles::copyFile (with no notifier, and with one that reads every event)
// beside cp run as a process. The target is removed before each run, outside the timing, so
// every run writes a new file. Wall time: cp works in a process of its own.

#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/files/kelFileCopyEvent.h>
#include <kelcore/files/kelFiles.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

using namespace KELKIT;

namespace {

constexpr std::size_t kCopySize = 256u << 20;

// Made at the first use, removed at exit; the pid keeps parallel runs apart.
struct CopyFiles {
    CopyFiles()
        : source(std::filesystem::temp_directory_path() /
                 ("kelcore-bench-copy-" + std::to_string(::getpid()) + ".src")),
          target(std::filesystem::temp_directory_path() /
                 ("kelcore-bench-copy-" + std::to_string(::getpid()) + ".dst")) {
        std::mt19937_64 random(1);
        std::vector<std::uint64_t> block(1 << 17);
        std::ofstream out(source, std::ios::binary);
        for (std::size_t written = 0; written < kCopySize; written += block.size() * 8) {
            for (auto& word : block) {
                word = random();
            }
            out.write(reinterpret_cast<char const*>(block.data()), block.size() * 8);
        }
        librarySource = library(source);
        libraryTarget = library(target);
    }
    ~CopyFiles() {
        std::error_code ignored;
        std::filesystem::remove(source, ignored);
        std::filesystem::remove(target, ignored);
    }
    static std::string library(std::filesystem::path const& path) {
        std::string text = path.string();
        for (char& c : text) {
            c = c == '/' ? '\\' : c;
        }
        return text;
    }
    std::filesystem::path source, target;
    std::string librarySource, libraryTarget;
};

CopyFiles& copyFiles() {
    static CopyFiles files;
    return files;
}

struct Reader : kelEventNotifier {
    void onEvent(kelEvent* event) override {
        if (event->getType() == 0) {
            progress = static_cast<kelFileCopyEvent*>(event)->getProgress();
        }
    }
    double progress = 0.0;
};

template <class Copy>
void copyRuns(benchmark::State& state, Copy const& copy) {
    CopyFiles& files = copyFiles();
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove(files.target);
        state.ResumeTiming();
        if (!copy(files)) {
            state.SkipWithError("copy failed");
            break;
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kCopySize));
}

void BM_cp_Copy256MiB(benchmark::State& state) {
    copyRuns(state, [](CopyFiles const& files) {
        std::string const source = files.source.string(), target = files.target.string();
        char* const argv[] = {const_cast<char*>("cp"), const_cast<char*>(source.c_str()),
                              const_cast<char*>(target.c_str()), nullptr};
        pid_t child = 0;
        int status = 0;
        return ::posix_spawnp(&child, "cp", nullptr, nullptr, argv, environ) == 0 &&
               ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
               WEXITSTATUS(status) == 0;
    });
}

void BM_kelFiles_copyFile_256MiB(benchmark::State& state) {
    copyRuns(state, [](CopyFiles const& files) {
        return kelFiles::copyFile(files.librarySource.c_str(), files.libraryTarget.c_str());
    });
}

void BM_kelFiles_copyFile_256MiB_WithNotifier(benchmark::State& state) {
    Reader reader;
    kelEventPublisher::getInstance().registerNotifier(&reader);
    copyRuns(state, [](CopyFiles const& files) {
        return kelFiles::copyFile(files.librarySource.c_str(), files.libraryTarget.c_str());
    });
    kelEventPublisher::getInstance().unregisterNotifier(&reader);
    benchmark::DoNotOptimize(reader.progress);
}

} // namespace

BENCHMARK(BM_cp_Copy256MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_kelFiles_copyFile_256MiB)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_kelFiles_copyFile_256MiB_WithNotifier)->Unit(benchmark::kMillisecond)->UseRealTime();
