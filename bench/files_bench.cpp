// A recursive listing of a 100,000-entry tree (1,110 folders, 99,000 files) with full paths:
// kelFiles::getFiles without criteria, with the default criteria (both need only the entry
// types) and with a caller's criteria (which is given every attribute, so each entry is
// stat-ed), beside an nftw walk that stats each entry and collects the same paths.

#include <kelcore/files/kelFileCriteriaAll.h>
#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFiles.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <ftw.h>
#include <string>
#include <unistd.h>
#include <vector>

using namespace KELKIT;

namespace {

// Built at the first use, removed at exit; the pid keeps parallel runs apart.
struct Tree {
    Tree()
        : native(std::filesystem::temp_directory_path() /
                 ("kelcore-bench-files-" + std::to_string(::getpid()))) {
        std::filesystem::remove_all(native);
        for (int a = 0; a < 10; ++a) {
            for (int b = 0; b < 10; ++b) {
                for (int c = 0; c < 10; ++c) {
                    std::filesystem::path const leaf = native / ("a" + std::to_string(a)) /
                                                       ("b" + std::to_string(b)) /
                                                       ("c" + std::to_string(c));
                    std::filesystem::create_directories(leaf);
                    for (int f = 0; f < 99; ++f) {
                        std::string const file = (leaf / ("file" + std::to_string(f))).string();
                        ::close(::open(file.c_str(), O_CREAT | O_WRONLY, 0644));
                    }
                }
            }
        }
        library = native.string();
        for (char& ch : library) {
            ch = ch == '/' ? '\\' : ch;
        }
    }
    ~Tree() { std::filesystem::remove_all(native); }

    std::filesystem::path native;
    std::string library;
};

Tree const& tree() {
    static Tree const built;
    return built;
}

void listWith(benchmark::State& state, kelFileCriteria* criteria) {
    char const* const root = tree().library.c_str();
    for (auto _ : state) {
        kelListString files;
        kelFiles::getFiles(root, files, true, true, criteria);
        benchmark::DoNotOptimize(files.size());
    }
    state.SetItemsProcessed(state.iterations() * 100110);
}

void BM_kelFiles_getFilesRecursive_NoCriteria(benchmark::State& state) {
    listWith(state, nullptr);
}

void BM_kelFiles_getFilesRecursive_DefaultCriteria(benchmark::State& state) {
    kelFileCriteriaDefault criteria;
    listWith(state, &criteria);
}

void BM_kelFiles_getFilesRecursive_CallersCriteria(benchmark::State& state) {
    kelFileCriteriaAll criteria;
    listWith(state, &criteria);
}

std::vector<std::string>* collected = nullptr;

int collect(char const* path, struct stat const*, int, struct FTW*) {
    collected->emplace_back(path);
    return 0;
}

void BM_nftw_WalkCollectingPaths(benchmark::State& state) {
    char const* const root = tree().native.c_str();
    for (auto _ : state) {
        std::vector<std::string> paths;
        collected = &paths;
        ::nftw(root, collect, 64, FTW_PHYS);
        benchmark::DoNotOptimize(paths.size());
    }
    state.SetItemsProcessed(state.iterations() * 100110);
}

} // namespace

BENCHMARK(BM_nftw_WalkCollectingPaths)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelFiles_getFilesRecursive_NoCriteria)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelFiles_getFilesRecursive_DefaultCriteria)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_kelFiles_getFilesRecursive_CallersCriteria)->Unit(benchmark::kMillisecond);
