#ifndef KELCORE_TESTS_KELSCRATCHFOLDER_H
#define KELCORE_TESTS_KELSCRATCHFOLDER_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

namespace kelTest {

// A folder of this process's own under the temporary folder (its name holds the pid), emptied
// at the start and removed with all it holds at the end, read-only items included; read and
// written by the standard library, independently of kelcore.
struct ScratchFolder {
    explicit ScratchFolder(char const* tag)
        : root(std::filesystem::temp_directory_path() /
               ("kelcore-" + std::string(tag) + '-' + std::to_string(processId()))) {
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(root);
    }
    ~ScratchFolder() {
        namespace fs = std::filesystem;
        std::error_code ignored;
        for (auto const& e : fs::recursive_directory_iterator(root, ignored)) {
            fs::permissions(e.path(), fs::perms::owner_all,
                            fs::perm_options::add | fs::perm_options::nofollow, ignored);
        }
        fs::remove_all(root, ignored);
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;

    static long long processId() {
#if defined(_WIN32)
        return ::_getpid();
#else
        return ::getpid();
#endif
    }
    // A path in the library's form: backslashes on every platform.
    static std::string lib(std::filesystem::path const& path) {
        std::string text = path.string();
        std::replace(text.begin(), text.end(), '/', '\\');
        return text;
    }
    std::string lib(char const* relative = nullptr) const {
        return lib(relative == nullptr ? root : root / relative);
    }
    std::filesystem::path write(char const* relative, std::string const& bytes) const {
        std::filesystem::path const path = root / relative;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    std::string read(char const* relative) const {
        std::ifstream in(root / relative, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    std::filesystem::path const root;
};

} // namespace kelTest

#endif
