#include "kelFilesScratch.h"

#include "support/kelWatchdog.h"

#include <kelcore/files/kelFileCriteriaDefault.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
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

// The independent walk: opendir/readdir and lstat, "." and ".." at every level, a link a file.
void walk(std::string const& native, std::string const& lib, bool recursive, Rule const& rule,
          std::vector<std::string>& paths, std::vector<std::string>& names) {
    std::vector<std::string> entries;
    if (DIR* dir = ::opendir(native.c_str())) {
        while (dirent* e = ::readdir(dir)) {
            entries.push_back(e->d_name);
        }
        ::closedir(dir);
    }
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
        bool const dot = name == "." || name == "..";
        bool const folder = S_ISDIR(st.st_mode);
        int flags = A::None | (folder ? A::Folder : A::File) | (readOnly ? A::ReadOnly : 0) |
                    (name[0] == '.' && !dot ? A::Hidden : 0);
        flags |= name == "." ? A::CurrentFolder : (name == ".." ? A::ParentFolder : 0);
        std::string const path = lib + "\\" + name;
        if (!rule(path, flags)) {
            continue;
        }
        paths.push_back(path);
        names.push_back(name);
        if (recursive && folder && !dot) {
            walk(native + "/" + name, path, recursive, rule, paths, names);
        }
    }
}

std::vector<std::string> sorted(std::vector<std::string> items) {
    std::sort(items.begin(), items.end());
    return items;
}

std::vector<std::string> texts(kelListString const& list) {
    std::vector<std::string> out;
    for (UInt32 i = 0; i < list.size(); ++i) {
        out.push_back(list[i].c_str());
    }
    return out;
}

// A criteria that answers by a rule and records what it was asked.
struct RuleCriteria : kelFileCriteria {
    explicit RuleCriteria(Rule r) : rule(std::move(r)) {}
    bool accept(char const* path, kelFileAttributes attributes) override {
        asked.push_back(std::string(path) + "|" +
                        std::to_string(attributes.getValue() & kCompared));
        return rule(path, attributes.getValue());
    }
    Rule rule;
    std::vector<std::string> asked;
};

std::string nameOf(std::string const& path) {
    return path.substr(path.rfind('\\') + 1);
}

// Files, empty and hidden folders, read-only files, and folders named "p..." that a rule prunes.
void grow(fs::path const& folder, std::mt19937& random, int depth, int& budget) {
    int const files = static_cast<int>(random() % 70);
    for (int i = 0; i < files && budget > 0; ++i, --budget) {
        fs::path const file = folder / ((random() % 8 == 0 ? ".h" : "f") + std::to_string(i));
        std::ofstream(file) << std::string(random() % 3000, 'x');
        if (random() % 10 == 0) {
            fs::permissions(
                file, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                fs::perm_options::remove);
        }
    }
    int const folders = depth < 6 ? static_cast<int>(random() % 5) : 0;
    for (int i = 0; i < folders && budget > 0; ++i, --budget) {
        char const* const prefix[] = {"d", "d", "d", "p", ".hd"};
        fs::path const sub = folder / (prefix[random() % 5] + std::to_string(i));
        fs::create_directory(sub);
        grow(sub, random, depth + 1, budget);
    }
}

} // namespace

TEST(kelFilesListing, RecursiveListingsEqualAnIndependentWalk) {
    kelWatchdog watchdog("the listing of a tree with link cycles", std::chrono::seconds(240));
    kelScratch scratch("tree");
    fs::path const tree = scratch.root / "tree";
    fs::create_directories(tree / "d0" / "d1");
    std::mt19937 random(5);
    int budget = 3000;
    grow(tree, random, 0, budget);
    for (int i = 0; budget > 0; ++i) {
        fs::create_directory(tree / ("t" + std::to_string(i)));
        grow(tree / ("t" + std::to_string(i)), random, 0, budget);
    }
#if !defined(_WIN32)
    // Links lead out of the tree and round in a loop; none may be entered.
    fs::create_directories(scratch.root / "outside" / "deep");
    scratch.write("outside/secret", "12345");
    fs::create_directory_symlink(scratch.root / "outside", tree / "toOutside");
    fs::create_symlink(scratch.root / "outside" / "secret", tree / "d0" / "toSecret");
    fs::create_directory_symlink(tree, tree / "d0" / "d1" / "loop");
    fs::create_directory_symlink("../..", tree / "d0" / "d1" / "up");
    fs::create_symlink(scratch.root / "none", tree / "dangling");
    scratch.write("tree/d0/back\\slash", "x");
#endif
    std::string const root = kelScratch::lib(tree);
    std::string const native = tree.string();
    auto all = [](std::string const&, int) { return true; };

    // No criteria: "." and ".." of every level, full paths, nothing behind a link.
    kelListString list;
    list.add(kelString("kept"));
    kelFiles::getFiles(root.c_str(), list, true, true, nullptr);
    std::vector<std::string> paths, names;
    walk(native, root, true, all, paths, names);
    std::vector<std::string> listed = texts(list);
    ASSERT_EQ("kept", listed.front());
    listed.erase(listed.begin());
    EXPECT_GT(paths.size(), 2500u);
    EXPECT_EQ(sorted(paths), sorted(listed));
    // Depth first: each folder's content follows its line at once.
    for (std::size_t i = 0; i < listed.size(); ++i) {
        std::string const prefix = listed[i] + "\\";
        std::size_t const inside =
            std::count_if(listed.begin(), listed.end(), [&](std::string const& p) {
                return p.compare(0, prefix.size(), prefix) == 0;
            });
        for (std::size_t k = 1; k <= inside; ++k) {
            ASSERT_EQ(0, listed[i + k].compare(0, prefix.size(), prefix)) << listed[i + k];
        }
    }

    // A rule that prunes "p..." entries and their content; the criteria sees every entry met,
    // with the attributes of the walk.
    Rule const prune = [](std::string const& path, int) { return nameOf(path)[0] != 'p'; };
    std::vector<std::string> asked;
    Rule const recording = [&](std::string const& path, int flags) {
        asked.push_back(path + "|" + std::to_string(flags & kCompared));
        return prune(path, flags);
    };
    RuleCriteria criteria(prune);
    list.clear();
    kelFiles::getFiles(root.c_str(), list, true, false, &criteria);
    paths.clear();
    names.clear();
    walk(native, root, true, recording, paths, names);
    EXPECT_EQ(sorted(names), sorted(texts(list)));
    EXPECT_EQ(sorted(asked), sorted(criteria.asked));
    EXPECT_LT(paths.size() + 100, listed.size());

    // The default criteria, flat and deep; counts and sizes rest on the same listing.
    Rule const byDefault = [](std::string const&, int flags) {
        return (flags & A::Folder) ? (flags & (A::CurrentFolder | A::ParentFolder)) == 0 : true;
    };
    kelFileCriteriaDefault defaults;
    for (bool recursive : {false, true}) {
        list.clear();
        kelFiles::getFiles(root.c_str(), list, recursive, true, &defaults);
        paths.clear();
        walk(native, root, recursive, byDefault, paths, names);
        EXPECT_EQ(sorted(paths), sorted(texts(list)));
        EXPECT_EQ(paths.size(), kelFiles::getNumFilesInFolder(root.c_str(), recursive));
    }
    UInt32 size = 0; // what opens for reading counts, through links; folders do not
    for (std::string path : paths) {
#if !defined(_WIN32)
        std::replace(path.begin(), path.end(), '\\', '/');
#endif
        std::error_code none;
        size += fs::is_regular_file(path, none) ? static_cast<UInt32>(fs::file_size(path)) : 0;
    }
    EXPECT_EQ(size, kelFiles::getFolderSize(root.c_str()));

    kelFiles::getFiles(root.c_str(), list);
    paths.clear();
    names.clear();
    walk(native, root, false, all, paths, names);
    EXPECT_EQ(sorted(names), sorted(texts(list)));
    kelListString flat;
    ASSERT_TRUE(kelFolder(root.c_str()).getFiles(flat));
    EXPECT_EQ(texts(list), texts(flat));
    list.clear();
    kelFiles::getFiles("", list, true, true, nullptr);
    EXPECT_EQ(0u, list.size());
}

// 50 levels of 200 files: the listing holds one open folder per level at most (POSIX counts
// its descriptors; Windows has no such count to read).
TEST(kelFilesListing, DeepTreeHoldsOneOpenFolderPerLevel) {
    kelWatchdog watchdog("the listing of a deep tree", std::chrono::seconds(240));
    kelScratch scratch("deep");
    fs::path level = scratch.root / "d";
    for (int depth = 0; depth < 50; ++depth, level /= "d") {
        fs::create_directory(level);
        for (int i = 0; i < 200; ++i) {
            std::ofstream(level / ("f" + std::to_string(i)));
        }
    }
    std::string const root = scratch.lib("d");
    auto descriptors = [] {
        int count = 0;
#if !defined(_WIN32)
        for (auto it = fs::directory_iterator("/proc/self/fd"); it != fs::directory_iterator();
             ++it) {
            ++count;
        }
#endif
        return count;
    };
    int const baseline = descriptors();
    int worst = 0;
    RuleCriteria counting([&](std::string const& path, int) {
        if (nameOf(path) == "f0") {
            int const depth =
                static_cast<int>(std::count(path.begin() + root.size(), path.end(), '\\'));
            worst = std::max(worst, descriptors() - baseline - depth);
        }
        return nameOf(path) != "." && nameOf(path) != "..";
    });
    kelListString list;
    kelFiles::getFiles(root.c_str(), list, true, true, &counting);
    EXPECT_EQ(50u * 200u + 49u, list.size());
    EXPECT_LE(worst, 0);
    EXPECT_EQ(50u * 200u + 49u, kelFiles::getNumFilesInFolder(root.c_str(), true));
}
