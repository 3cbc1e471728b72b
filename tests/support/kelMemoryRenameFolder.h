#ifndef KELCORE_TESTS_KELMEMORYRENAMEFOLDER_H
#define KELCORE_TESTS_KELMEMORYRENAMEFOLDER_H

// A folder in memory for the renamer's engine, shared by the tests and the fuzz target. As on
// disk, a rename never replaces a name. It also notes each progress call as
// "old>new@progress" and a separator.

#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/internal/kelRenameEngine.h>

#include <set>
#include <string>
#include <vector>

namespace kelTest {

struct MemoryRenameFolder : KELKIT::internal::kelRenameFolder,
                            KELKIT::kelFileRenamer::IProgressNotifier {
    std::set<std::string> names;
    std::string seen;
    char separator = ' ';
    // What each progress call answers; the engine goes on either way.
    bool answer = false;

    void listNames(KELKIT::kelListString& out) override {
        for (std::string const& name : names) {
            out.add(name.c_str());
        }
    }
    bool renameEntry(char const* from, char const* to) override {
        if (names.count(from) == 0 || !names.insert(to).second) {
            return false;
        }
        names.erase(from);
        return true;
    }
    bool notifyProgress(char const* oldName, char const* newName, double progress) override {
        seen += std::string(oldName) + ">" + newName + "@" + std::to_string(progress) + separator;
        return answer;
    }
};

inline KELKIT::kelListString listOf(std::vector<std::string> const& names) {
    KELKIT::kelListString list;
    for (std::string const& name : names) {
        list.add(name.c_str());
    }
    return list;
}

} // namespace kelTest

#endif
