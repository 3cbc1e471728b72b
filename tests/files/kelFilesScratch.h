#ifndef KELCORE_TESTS_KELFILESSCRATCH_H
#define KELCORE_TESTS_KELFILESSCRATCH_H

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#if defined(_WIN32)
#include <process.h>
#define KEL_TEST_PID _getpid()
#else
#include <unistd.h>
#define KEL_TEST_PID ::getpid()
#endif

namespace fs = std::filesystem;

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
        for (char& c : text) {
            if (c == '/') {
                c = '\\';
            }
        }
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
