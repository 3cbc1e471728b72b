#include "kelFilesScratch.h"

#include "support/kelWatchdog.h"

#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <functional>
#include <random>
#include <sys/stat.h>

using namespace KELKIT;
using A = kelFileAttributes;

namespace {

// Attributes a listing compares: Archive and System are Windows' own. Wine also hides dot
// names, which Windows does not, so Hidden is compared on POSIX only.
#if defined(_WIN32)
int const kCompared = ~(A::Archive | A::System | A::Hidden);
#else
int const kCompared = ~(A::Archive | A::System);
#endif

using Rule = std::function<bool(std::string const& path, int flags)>;
struct Walk {
    std::vector<std::string> paths, names;
};

// The independent walk: opendir/readdir and lstat, "." and ".." at every level, a link a file.
void walk(std::string const& native, std::string const& lib, bool deep, Rule const& rule,
          Walk& out) {
    std::vector<std::string> entries;
    DIR* const dir = ::opendir(native.c_str());
    while (dirent* e = dir ? ::readdir(dir) : nullptr) {
        entries.push_back(e->d_name);
    }
    dir&& ::closedir(dir);
    for (std::string const& name : entries) {
        struct stat st;
#if defined(_WIN32)
        ::stat((native + "/" + name).c_str(), &st);
        bool const readOnly = (st.st_mode & S_IWRITE) == 0;
#else
        if (name.find('\\') != std::string::npos) {
            continue; // no library path can name it
        }
        ::lstat((native + "/" + name).c_str(), &st);
        bool const readOnly = !S_ISLNK(st.st_mode) && (st.st_mode & S_IWUSR) == 0;
#endif
        bool const dot = name == "." || name == "..", folder = S_ISDIR(st.st_mode);
        int const role = name == "." ? A::CurrentFolder : (name == ".." ? A::ParentFolder : 0);
        int const flags = A::None | (folder ? A::Folder : A::File) | (readOnly ? A::ReadOnly : 0) |
                          (name[0] == '.' && !dot ? A::Hidden : 0) | role;
        if (rule(lib + "\\" + name, flags)) {
            out.paths.push_back(lib + "\\" + name);
            out.names.push_back(name);
            if (deep && folder && !dot) {
                walk(native + "/" + name, lib + "\\" + name, deep, rule, out);
            }
        }
    }
}

std::vector<std::string> sorted(std::vector<std::string> items) {
    std::sort(items.begin(), items.end());
    return items;
}

// A criteria that answers by a rule and records what it was asked. With a root, it also
// counts the open descriptors beyond one per level below it at each file named "f0".
struct RuleCriteria : kelFileCriteria {
    RuleCriteria(Rule r, std::string const& root = "") : rule(std::move(r)), root(root) {}
    bool accept(char const* path, kelFileAttributes attributes) override {
        asked.push_back(std::string(path) + "|" +
                        std::to_string(attributes.getValue() & kCompared));
        if (!root.empty() && baseline >= 0 && std::strcmp(std::strrchr(path, '\\'), "\\f0") == 0) {
            int const depth =
                static_cast<int>(std::count(path + root.size(), path + std::strlen(path), '\\'));
            worst = std::max(worst, kelOpenDescriptors() - baseline - depth);
        }
        return rule(path, attributes.getValue());
    }
    Rule rule;
    std::string root;
    std::vector<std::string> asked;
    int baseline = kelOpenDescriptors(), worst = 0;
};

// Files (every tenth read-only), empty and hidden folders, and "p..." folders that a rule prunes.
void grow(fs::path const& folder, std::mt19937& random, int depth, int& budget) {
    for (int i = static_cast<int>(random() % 70); i > 0 && budget-- > 0;) {
        fs::path const file = folder / ((random() % 8 ? "f" : ".h") + std::to_string(--i));
        std::ofstream(file) << std::string(random() % 3000, 'x');
        fs::permissions(file, fs::perms(budget % 10 ? 0 : 0222), fs::perm_options::remove);
    }
    for (int i = depth < 6 ? static_cast<int>(random() % 5) : 0; i > 0 && budget-- > 0; --i) {
        char const* const prefix[] = {"d", "d", "p", ".hd"};
        fs::path const sub = folder / (prefix[random() % 4] + std::to_string(i));
        fs::create_directory(sub);
        grow(sub, random, depth + 1, budget);
    }
}

} // namespace

// A generated tree: a few thousand entries, and a chain 50 folders deep with 200 files in each.
TEST(kelFilesListing, RecursiveListingsEqualAnIndependentWalk) {
    kelWatchdog watchdog("the listings of a tree with link cycles", std::chrono::seconds(240));
    kelScratch scratch("tree");
    fs::path const tree = scratch.root / "tree";
    fs::path level = tree;
    for (int depth = 0; depth < 50 && fs::create_directories(level /= "d"); ++depth) {
        for (int i = 0; i < 200; ++i) {
            std::ofstream(level / ("f" + std::to_string(i)));
        }
    }
    std::mt19937 random(5);
    for (int i = 0, budget = 3000; budget > 0; ++i) {
        fs::create_directory(tree / ("t" + std::to_string(i)));
        grow(tree / ("t" + std::to_string(i)), random, 0, budget);
    }
#if !defined(_WIN32)
    // Links lead out of the tree and round in loops; none may be entered.
    fs::create_directories(scratch.root / "outside" / "deep");
    scratch.write("outside/secret", "12345");
    fs::create_directory_symlink(scratch.root / "outside", tree / "toOutside");
    fs::create_symlink(scratch.root / "outside" / "secret", tree / "d" / "toSecret");
    fs::create_directory_symlink(tree, tree / "d" / "d" / "loop");
    fs::create_directory_symlink("../..", tree / "d" / "d" / "up");
    fs::create_symlink(scratch.root / "none", tree / "dangling");
    scratch.write("tree/d/back\\slash", "x");
#endif
    std::string const root = kelScratch::lib(tree), native = tree.string();
    Rule const all = [](std::string const&, int) { return true; };

    // No criteria: "." and ".." of every level, full paths.
    kelListString list;
    kelFiles::getFiles(root.c_str(), list, true, true, nullptr);
    Walk everything;
    walk(native, root, true, all, everything);
    std::vector<std::string> const listed = kelTexts(list);
    EXPECT_EQ(sorted(everything.paths), sorted(listed));
    // Depth first, each folder's content right after its line: every entry's folder is the
    // innermost one still open.
    std::vector<std::string> open{root};
    for (std::string const& path : listed) {
        while (!open.empty() && open.back() != path.substr(0, path.rfind('\\'))) {
            open.pop_back();
        }
        ASSERT_FALSE(open.empty()) << path;
        open.push_back(path);
    }

    // A rule that prunes "p..." entries with their content; the criteria is asked about every
    // entry met, with the attributes the walk finds. The listing holds one open folder per
    // level at most (POSIX counts descriptors; Windows has no such count to read).
    Rule const prune = [](std::string const& path, int) {
        return path[path.rfind('\\') + 1] != 'p';
    };
    RuleCriteria criteria(prune, root), recorder(prune);
    list.clear();
    kelFiles::getFiles(root.c_str(), list, true, false, &criteria);
    EXPECT_EQ(0, criteria.worst);
    Walk pruned;
    walk(
        native, root, true,
        [&](std::string const& path, int flags) { return recorder.accept(path.c_str(), A(flags)); },
        pruned);
    EXPECT_EQ(sorted(pruned.names), sorted(kelTexts(list)));
    EXPECT_EQ(sorted(recorder.asked), sorted(criteria.asked));

    // The default criteria, deep and then flat (added to the list); counts and sizes rest on
    // the same listing.
    Rule const byDefault = [](std::string const&, int flags) {
        return (flags & A::Folder) == 0 || (flags & (A::CurrentFolder | A::ParentFolder)) == 0;
    };
    kelFileCriteriaDefault defaults;
    Walk deep;
    walk(native, root, true, byDefault, deep);
    list.clear();
    kelFiles::getFiles(root.c_str(), list, true, true, &defaults);
    EXPECT_EQ(sorted(deep.paths), sorted(kelTexts(list)));
    EXPECT_EQ(deep.paths.size(), kelFiles::getNumFilesInFolder(root.c_str(), true));
    std::size_t const top =
        std::count_if(deep.paths.begin(), deep.paths.end(),
                      [&](std::string const& p) { return p.rfind('\\') == root.size(); });
    kelFiles::getFiles(root.c_str(), list, false, false, &defaults);
    EXPECT_EQ(deep.paths.size() + top, list.size());
    EXPECT_EQ(top, kelFiles::getNumFilesInFolder(root.c_str(), false));
    UInt32 size = 0; // what opens for reading counts, through links; folders do not
    for (std::string path : deep.paths) {
#if !defined(_WIN32)
        std::replace(path.begin(), path.end(), '\\', '/');
#endif
        std::error_code none;
        size += fs::is_regular_file(path, none) ? static_cast<UInt32>(fs::file_size(path)) : 0;
    }
    EXPECT_EQ(size, kelFiles::getFolderSize(root.c_str()));

    Walk flat;
    walk(native, root, false, all, flat);
    kelListString flatNames;
    kelFiles::getFiles(root.c_str(), list);
    kelFiles::getFiles("", list, true, true, nullptr); // not the working folder: adds nothing
    ASSERT_TRUE(kelFolder(root.c_str()).getFiles(flatNames));
    EXPECT_EQ(sorted(flat.names), sorted(kelTexts(list)));
    EXPECT_EQ(kelTexts(list), kelTexts(flatNames));
}
