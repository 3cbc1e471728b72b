#ifndef KELCORE_TESTS_KELFILESSCRATCH_H
#define KELCORE_TESTS_KELFILESSCRATCH_H

#include <kelcore/containers/kelLists.h>

#include "support/kelScratchFolder.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

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

using kelScratch = kelTest::ScratchFolder;

#endif
