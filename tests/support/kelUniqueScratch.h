#ifndef KELCORE_TESTS_KELUNIQUESCRATCH_H
#define KELCORE_TESTS_KELUNIQUESCRATCH_H

// A file in the temporary folder under a name no other test process uses (a random token of
// this process, the clock and a counter), removed when the object goes; and an independent way
// to read it, by the standard library rather than by kelcore.

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace kelTest {

class ScratchFile {
public:
    explicit ScratchFile(char const* what) {
        static unsigned const processToken = std::random_device{}();
        static std::atomic<unsigned> counter{0};
        auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
        std::string const name = "kelcore-" + std::string(what) + '-' +
                                 std::to_string(processToken) + '-' + std::to_string(now) + '-' +
                                 std::to_string(++counter);
        mPath = (std::filesystem::temp_directory_path() / name).string();
    }
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(mPath, ignored);
    }
    ScratchFile(ScratchFile const&) = delete;
    ScratchFile& operator=(ScratchFile const&) = delete;

    char const* path() const { return mPath.c_str(); }

    std::vector<unsigned char> read() const {
        std::ifstream in(mPath, std::ios::binary);
        return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), {});
    }
    void write(std::vector<unsigned char> const& bytes, bool append = false) const {
        std::ofstream out(mPath, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
        out.write(reinterpret_cast<char const*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::string mPath;
};

} // namespace kelTest

#endif
