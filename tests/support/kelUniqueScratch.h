#ifndef KELCORE_TESTS_KELUNIQUESCRATCH_H
#define KELCORE_TESTS_KELUNIQUESCRATCH_H

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace kelTest {

// A file in the temporary folder under a name no other process or test uses (a random token of
// the process, the clock, a counter), removed at the end; read and written by the standard
// library, independently of kelcore.
struct ScratchFile {
    explicit ScratchFile(char const* what) {
        static std::string const token = std::to_string(std::random_device{}());
        static unsigned counter = 0;
        auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
        name = (std::filesystem::temp_directory_path() /
                ("kelcore-" + std::string(what) + '-' + token + '-' + std::to_string(now) + '-' +
                 std::to_string(++counter)))
                   .string();
    }
    ~ScratchFile() { std::filesystem::remove(name, ignored); }
    char const* path() const { return name.c_str(); }
    std::vector<unsigned char> read() const {
        std::ifstream in(name, std::ios::binary);
        return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), {});
    }
    void write(std::vector<unsigned char> const& bytes, std::ios::openmode mode = {}) const {
        std::ofstream(name, std::ios::binary | mode)
            .write(reinterpret_cast<char const*>(bytes.data()), std::streamsize(bytes.size()));
    }
    std::string name;
    std::error_code ignored;
};

} // namespace kelTest

#endif
