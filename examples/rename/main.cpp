// rename: renames the files of one folder by a template or by replacing text, after showing
// each old name beside its new one. Built on kelFileRenamer.

#include <kelcore/files/kelFileCriteria.h>
#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/files/kelFiles.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <vector>

// Only to know whether a progress bar can be drawn.
#if defined(_WIN32)
#include <io.h>
#define KEL_STDOUT_IS_TERMINAL() (_isatty(_fileno(stdout)) != 0)
#else
#include <unistd.h>
#define KEL_STDOUT_IS_TERMINAL() (isatty(fileno(stdout)) != 0)
#endif

using namespace KELKIT;

namespace {

char const* const usageText =
    R"(Usage: rename (--pattern TEMPLATE | --replace FROM TO) [--dry-run] [--force] FOLDER [FILE...]

Renames files of FOLDER: the FILEs named, or all files of FOLDER in name order. Each old name
is shown beside its new one first.

  --pattern TEMPLATE  Build each new name from TEMPLATE, read from left to right while a
                      cursor moves through the old name:
                        ?    copies the character under the cursor and moves on
                        |    moves the cursor on without copying
                        #    a run of # writes a running number from 1, padded with
                             zeros to the count of # so far: ### gives 001, 002, ...
                        any other character is written as it is.
                      The rest of the old name is dropped, so TEMPLATE gives the whole
                      name, extension included: 'holiday_###.jpg'.
  --replace FROM TO   Replace each FROM in a name by TO. With the wildcards * (any text,
                      the longest first) and ? (one character), FROM must match the
                      whole name, and the wildcards of TO take, in order, what the
                      same wildcards of FROM matched: '*.jpeg' '*.jpg'. TO must use the
                      wildcards of FROM in the same order and number (it may leave out
                      the last kind). Names that do not match stay as they are.
  --dry-run           Only show what would be renamed.
  --force             Rename even when a new name is marked: the run stops at that file.
  --help              Show this text.

A new name that is taken by then is marked "taken", one that is no name in FOLDER is marked
"not a name". Then nothing is renamed, unless --force is given. Files are renamed one after
another, with no undo: when one fails, rename stops and says which were already renamed.
Exit status: 0 done, 1 refused or failed, 2 wrong arguments.
)";

int usageError(std::string const& message) {
    std::fprintf(stderr, "rename: %s (see rename --help)\n", message.c_str());
    return 2;
}

int failure(std::string const& message) {
    std::fprintf(stderr, "rename: %s\n", message.c_str());
    return 1;
}

// The library's paths use backslashes on every platform.
std::string libraryPath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

bool isNameInFolder(std::string const& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\") == std::string::npos;
}

struct FilesOnly : kelFileCriteria {
    bool accept(char const*, kelFileAttributes attributes) override {
        return attributes.isFlagsEnabled(kelFileAttributes::File);
    }
};

// Draws a bar on a terminal and remembers what was renamed, for the message of a failure.
struct Progress : kelFileRenamer::IProgressNotifier {
    bool drawing = KEL_STDOUT_IS_TERMINAL();
    UInt32 done = 0;
    std::vector<std::string> renamed;

    bool notifyProgress(char const* oldName, char const* newName, double progress) override {
        ++done;
        if (std::strcmp(oldName, newName) != 0) {
            renamed.push_back(std::string(oldName) + " -> " + newName);
        }
        if (drawing) {
            int const width = 40;
            int const filled = static_cast<int>(progress * width);
            std::printf("\r[%s%s] %3d%%", std::string(filled, '#').c_str(),
                        std::string(width - filled, ' ').c_str(), static_cast<int>(progress * 100));
            std::fflush(stdout);
        }
        return true;
    }
    void endLine() const {
        if (drawing && done > 0) {
            std::printf("\n");
        }
    }
};

struct Options {
    bool pattern = false;
    bool replace = false;
    std::string templateText;
    std::string from;
    std::string to;
    bool dryRun = false;
    bool force = false;
    std::vector<std::string> operands;
};

// Empty when the arguments are fine, else what is wrong with them.
std::string parse(int argc, char** argv, Options& options) {
    bool onlyOperands = false;
    for (int i = 1; i < argc; ++i) {
        std::string const argument = argv[i];
        if (onlyOperands || argument.size() < 2 || argument.compare(0, 2, "--") != 0) {
            options.operands.push_back(argument);
        } else if (argument == "--") {
            onlyOperands = true;
        } else if (argument == "--pattern" && i + 1 < argc) {
            options.pattern = true;
            options.templateText = argv[++i];
        } else if (argument == "--replace" && i + 2 < argc) {
            options.replace = true;
            options.from = argv[++i];
            options.to = argv[++i];
        } else if (argument == "--dry-run") {
            options.dryRun = true;
        } else if (argument == "--force") {
            options.force = true;
        } else if (argument == "--pattern" || argument == "--replace") {
            return argument + " needs " + (argument == "--pattern" ? "a TEMPLATE" : "FROM and TO");
        } else {
            return "unknown option " + argument;
        }
    }
    if (options.pattern == options.replace) {
        return "give either --pattern TEMPLATE or --replace FROM TO";
    }
    if (options.operands.empty()) {
        return "give the FOLDER";
    }
    return "";
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(usageText, stdout);
            return 0;
        }
    }
    Options options;
    std::string const wrong = parse(argc, argv, options);
    if (!wrong.empty()) {
        return usageError(wrong);
    }
    if (options.pattern && options.templateText.empty()) {
        return failure("bad template: an empty TEMPLATE gives empty names");
    }
    std::string const folder = libraryPath(options.operands[0]);
    if (!kelFiles::folderExists(folder.c_str())) {
        return failure("no such folder: " + options.operands[0]);
    }

    kelListString files;
    for (std::size_t i = 1; i < options.operands.size(); ++i) {
        std::string const& name = options.operands[i];
        if (!isNameInFolder(name) ||
            !kelFiles::fileExists(kelFiles::concat(folder.c_str(), name.c_str()).c_str())) {
            return failure("no such file in " + options.operands[0] + ": " + name);
        }
        files.add(name.c_str());
    }
    if (options.operands.size() == 1) {
        FilesOnly filesOnly;
        kelFiles::getFiles(folder.c_str(), files, false, false, &filesOnly);
        files.sort();
    }
    files.unique(); // as the renamer does, so that its new names line up with these
    if (files.empty()) {
        std::printf("No files to rename in %s.\n", options.operands[0].c_str());
        return 0;
    }

    kelFileRenamer renamer;
    renamer.setFiles(folder.c_str(), files);
    if (options.pattern) {
        renamer.setPatternMode(options.templateText.c_str());
    } else {
        renamer.setReplaceMode(options.from.c_str(), options.to.c_str());
    }
    kelListString newNames;
    bool collisions = false;
    if (!renamer.preview(newNames, collisions)) {
        return failure("bad replacement: TO must use the wildcards of FROM in the same order and "
                       "number");
    }

    // The same walk as the renamer's check, to say which names collide.
    kelListString present;
    kelFiles::getFiles(folder.c_str(), present, false, false, nullptr);
    std::set<std::string> taken;
    for (UInt32 i = 0; i < present.size(); ++i) {
        taken.insert(present[i].c_str());
    }
    std::size_t width = 0;
    for (UInt32 i = 0; i < files.size(); ++i) {
        width = std::max<std::size_t>(width, files[i].size());
    }
    UInt32 changes = 0;
    UInt32 takenCount = 0;
    UInt32 strayCount = 0;
    for (UInt32 i = 0; i < files.size(); ++i) {
        std::string const oldName = files[i].c_str();
        std::string const newName = newNames[i].c_str();
        char const* mark = "";
        if (newName != oldName) {
            ++changes;
            taken.erase(oldName);
            if (!isNameInFolder(newName)) {
                mark = "   <- not a name";
                ++strayCount;
            } else if (taken.count(newName) != 0) {
                mark = "   <- taken";
                ++takenCount;
            }
            taken.insert(newName);
        }
        std::printf("%-*s  ->  %s%s\n", static_cast<int>(width), oldName.c_str(), newName.c_str(),
                    mark);
    }

    if ((collisions || takenCount > 0 || strayCount > 0) && !options.force) {
        std::string problem;
        if (strayCount > 0) {
            problem = "bad template: " + std::to_string(strayCount) +
                      " new name(s) not a file name in the folder";
        }
        if (takenCount > 0 || collisions) {
            problem += std::string(problem.empty() ? "" : "; ") + std::to_string(takenCount) +
                       " new name(s) taken";
        }
        return failure(problem + "; nothing renamed" +
                       (options.dryRun ? "" : " (--force renames up to the first failure)"));
    }
    if (options.dryRun || changes == 0) {
        std::printf(changes == 0 ? "Nothing to rename.\n" : "Dry run: nothing renamed.\n");
        return 0;
    }
    Progress progress;
    bool const done = renamer.rename(&progress);
    progress.endLine();
    if (!done) {
        std::string message = "could not rename " + std::string(files[progress.done].c_str()) +
                              " to " + newNames[progress.done].c_str() + "; ";
        if (progress.renamed.empty()) {
            message += "nothing was renamed";
        } else {
            message += "already renamed: ";
            for (std::size_t i = 0; i < progress.renamed.size(); ++i) {
                message += (i ? ", " : "") + progress.renamed[i];
            }
        }
        return failure(message);
    }
    std::printf("Renamed %u file(s).\n", static_cast<unsigned>(changes));
    return 0;
}
