#ifndef KELCORE_TESTS_KELFILESSCRATCH_H
#define KELCORE_TESTS_KELFILESSCRATCH_H

#include <kelcore/containers/kelLists.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#if defined(_WIN32)
#include <process.h>
#define KEL_TEST_PID _getpid()
#else
#include <unistd.h>
#define KEL_TEST_PID ::getpid()
#endif

namespace fs = std::filesystem;

inline std::vector<std::string> kelTexts(KELKIT::kelListString const& list) {
    std::vector<std::string> out;
    for (KELKIT::UInt32 i = 0; i < list.size(); ++i) {
        out.push_back(list[i].c_str());
    }
    return out;
}

// Open descriptors of this process, less the one that counts them; -1 on Windows.
inline int kelOpenDescriptors() {
#if defined(_WIN32)
    return -1;
#else
    auto const all = std::distance(fs::directory_iterator("/proc/self/fd"), {});
    return static_cast<int>(all) - 1;
#endif
}

// A folder of this process's own (its name holds the pid), removed with all it holds.
struct kelScratch {
    explicit kelScratch(char const* tag)
        : root(fs::temp_directory_path() /
               ("kelcore-files-" + std::to_string(KEL_TEST_PID) + "-" + tag)) {
        fs::remove_all(root);
        fs::create_directories(root);
    }
    ~kelScratch() {
        std::error_code ignored;
        for (auto const& e : fs::recursive_directory_iterator(root, ignored)) {
            fs::permissions(e.path(), fs::perms::owner_all,
                            fs::perm_options::add | fs::perm_options::nofollow, ignored);
        }
        fs::remove_all(root, ignored);
    }
    // A path in the library's form: backslashes on every platform.
    static std::string lib(fs::path const& path) {
        std::string text = path.string();
        std::replace(text.begin(), text.end(), '/', '\\');
        return text;
    }
    std::string lib(char const* relative = nullptr) const {
        return lib(relative == nullptr ? root : root / relative);
    }
    fs::path write(char const* relative, std::string const& bytes) const {
        fs::path const path = root / relative;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    fs::path const root;
};

#endif
