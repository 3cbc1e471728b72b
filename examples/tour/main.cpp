// tour: a walk through kelcore, one section per subsystem. Each section is a short piece of
// ordinary library use that prints what the library gives back. The sections live in the
// other files of this folder; this one picks them by name and runs them.

#include "tour.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

namespace tour {

namespace {

struct Section {
    char const* name;
    // The heading; --list shows it with the name, before the colon of the summary.
    char const* title;
    char const* summary;
    void (*run)();
};

Section const sections[] = {
    {"text", "Text", "trimming, case, finding, replacing, hashes", text},
    {"encodings", "Text encodings", "UTF-8 and Latin-1, UTF-16, XML escaping", encodings},
    {"conversions", "Conversions", "numbers to text and back", conversions},
    {"serialization", "Serialization round trip", "values to bytes and back", serialization},
    {"failure", "Failure", "a hostile length field meets a kelException", failure},
    {"streams", "Streams and dumpers", "raw bytes through memory, files and streams", streams},
    {"bits", "Bits and packers", "bit fields packed into bytes and read back", bits},
    {"identities", "Enumerations and identity values", "months, versions, identifiers", identities},
    {"variant", "Variant", "one value read as many types", variant},
    {"nodes", "Node trees and menus", "sorting and searching a tree, numbering a menu", nodes},
    {"schedules", "Schedules", "a monthly schedule and the dates it matches", schedules},
    {"locks", "Locks", "a re-entrant lock and a named mutex", locks},
    {"threads", "Threads, events and heartbeats", "an event thread and the event bus",
     threadsAndEvents},
    {"tasks", "Tasks and the state machine", "progress records and guarded state changes", tasks},
    {"shared-memory", "Shared memory", "two connections to one named block", sharedMemory},
    {"files", "Files and folders", "create, list, copy with progress events, delete", files},
    {"renamer", "Renamer", "previews of a pattern rename and a wildcard replace", renamer},
    {"environment", "Environment and system", "variables, separators, known folders, drives",
     environment},
    {"logging", "Logging", "a file logger and the file it wrote", logging},
};

char const* const usageText = R"(Usage: tour [SECTION...]
       tour --list | --help

Runs a walk through the kelcore library: each section uses one part of it and prints what the
library gives back. Without SECTION every section runs, in the order of --list; otherwise
the sections named, in the order given.

  --list   Show the sections, one line each.
  --help   Show this text.

A section whose operations fail says so in one line on standard error; the others still run.
Whatever the sections create (a scratch folder kelcore-tour-<pid> in the temporary folder that
TEMP names, else TMPDIR or /tmp; a named mutex; a shared memory block) is gone when the tour ends.
Exit status: 0 every section worked, 1 a section failed or its scratch folder stayed,
2 wrong arguments.
)";

Section const* findSection(std::string const& name) {
    for (Section const& section : sections) {
        if (name == section.name) {
            return &section;
        }
    }
    return nullptr;
}

kelString& scratchRoot() {
    static kelString root;
    return root;
}

// Runs one section; false when it failed, after one line on stderr saying why.
bool runSection(Section const& section) {
    std::printf("\n== %s ==\n", section.title);
    std::string why;
    try {
        section.run();
        return true;
    } catch (SectionFailed const& failed) {
        why = failed.what;
    } catch (kelException const& e) {
        // Deliberately not a std::exception.
        why = std::string("kelException: ") + e.getDescription();
    } catch (std::exception const& e) {
        why = e.what();
    }
    std::fflush(stdout);
    std::fprintf(stderr, "tour: section %s failed: %s\n", section.name, why.c_str());
    return false;
}

} // namespace

void require(bool ok, char const* what) {
    if (!ok) {
        throw SectionFailed{what};
    }
}

void hexDump(UInt8 const* bytes, UInt32 size) {
    for (UInt32 i = 0; i < size; ++i) {
        std::printf("%02X%s", bytes[i], (i % 16 == 15 || i + 1 == size) ? "\n" : " ");
    }
}

char const* yesNo(bool value) {
    return value ? "yes" : "no";
}

unsigned long long processId() {
#if defined(_WIN32)
    return static_cast<unsigned long long>(_getpid());
#else
    return static_cast<unsigned long long>(getpid());
#endif
}

kelString scratchFolder(char const* name) {
    kelString& root = scratchRoot();
    if (root.empty()) {
        // TEMP names the temporary folder on Windows; elsewhere it is usually unset.
        kelString temp = kelSystem::getTempFolder();
        if (temp.empty() && !kelEnv::getEnvVar("TMPDIR", temp)) {
            temp = "\\tmp";
        }
        temp.replace("/", "\\"); // the library's paths use backslashes everywhere
        root =
            kelFiles::concat(temp.c_str(), ("kelcore-tour-" + std::to_string(processId())).c_str());
    }
    // Fresh each time, so that a section named twice starts over.
    kelString const folder = kelFiles::concat(root.c_str(), name);
    require(kelFiles::deleteFolder(folder.c_str()) && kelFiles::createFolder(folder.c_str()),
            "could not make a fresh scratch folder");
    return folder;
}

bool removeScratchFolders() {
    kelString const& root = scratchRoot();
    if (root.empty()) {
        return true;
    }
    // Windows refuses to delete a read-only file, and a failed section may have left one.
    kelListString items;
    kelFileCriteriaDefault noDots;
    kelFiles::getFiles(root.c_str(), items, true, true, &noDots);
    for (UInt32 i = 0; i < items.size(); ++i) {
        if (kelFiles::getItemAttributes(items[i].c_str())
                .isFlagsEnabled(kelFileAttributes::ReadOnly)) {
            kelFiles::setFileAttributes(items[i].c_str(), kelFileAttributes());
        }
    }
    if (!kelFiles::deleteFolder(root.c_str())) {
        std::fprintf(stderr, "tour: could not remove %s\n", root.c_str());
        return false;
    }
    return true;
}

char const* shortPath(char const* path) {
    kelString const& root = scratchRoot();
    if (!root.empty() && std::strncmp(path, root.c_str(), root.size()) == 0 &&
        path[root.size()] == '\\') {
        return path + root.size() + 1;
    }
    return path;
}

} // namespace tour

int main(int argc, char** argv) {
    using namespace tour;
    // --help and --list win over anything else given with them.
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(usageText, stdout);
            return 0;
        }
    }
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--list") == 0) {
            for (Section const& section : sections) {
                std::printf("%-14s %s: %s\n", section.name, section.title, section.summary);
            }
            return 0;
        }
    }
    std::vector<Section const*> chosen;
    for (int i = 1; i < argc; ++i) {
        Section const* section = findSection(argv[i]);
        if (section == nullptr) {
            bool const option = argv[i][0] == '-';
            std::fprintf(stderr, "tour: unknown %s %s (see tour %s)\n",
                         option ? "option" : "section", argv[i], option ? "--help" : "--list");
            return 2;
        }
        chosen.push_back(section);
    }
    if (chosen.empty()) {
        for (Section const& section : sections) {
            chosen.push_back(&section);
        }
    }

    std::printf("kelcore tour\n");
    int failed = 0;
    for (Section const* section : chosen) {
        failed += runSection(*section) ? 0 : 1;
    }
    bool const removed = removeScratchFolders();
    return failed > 0 || !removed ? 1 : 0;
}
