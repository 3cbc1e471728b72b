#include "kelFilesScratch.h"

#include "support/kelChildProcess.h"
#include "support/kelWatchdog.h"

#include <kelcore/events/kelCancelActionEvent.h>
#include <kelcore/events/kelEventPublisher.h>
#include <kelcore/files/kelFileCopyEvent.h>
#include <kelcore/files/kelFileDeleteEvent.h>
#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolderCopyEvent.h>
#include <kelcore/files/kelFolderDeleteEvent.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <regex>
#include <thread>

using namespace KELKIT;
using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

namespace {

std::string number(double progress) {
    char text[32];
    std::snprintf(text, sizeof text, "%.9f", progress);
    return text;
}

// The events of the model, written the way the recorder writes what it sees.
std::string fileDelete(std::string const& path, double p) {
    return "FD " + path + " " + number(p);
}
std::string folderDelete(std::string const& path, double p) {
    return "DD " + path + " " + number(p);
}
std::string fileCopy(std::string const& from, std::string const& to, double p) {
    return "FC " + from + " > " + to + " " + number(p);
}
std::string folderCopy(std::string const& from, std::string const& to, double p) {
    return "DC " + from + " > " + to + " " + number(p);
}

// Every event of the process while it lives, as text; hook runs after each is written down.
struct Recorder : kelEventNotifier {
    Recorder() { kelEventPublisher::getInstance().registerNotifier(this); }
    ~Recorder() override { kelEventPublisher::getInstance().unregisterNotifier(this); }
    void onEvent(kelEvent* event) override {
        switch (event->getType()) {
        case 0: {
            auto* e = static_cast<kelFileCopyEvent*>(event);
            seen.push_back(fileCopy(e->getSourcePath(), e->getTargetPath(), e->getProgress()));
            break;
        }
        case 1: {
            auto* e = static_cast<kelFolderCopyEvent*>(event);
            seen.push_back(folderCopy(e->getSourcePath(), e->getTargetPath(), e->getProgress()));
            break;
        }
        case 2: {
            auto* e = static_cast<kelFileDeleteEvent*>(event);
            seen.push_back(fileDelete(e->getPath(), e->getProgress()));
            break;
        }
        case 3: {
            auto* e = static_cast<kelFolderDeleteEvent*>(event);
            seen.push_back(folderDelete(e->getPath(), e->getProgress()));
            break;
        }
        default:
            seen.push_back(event->getType() == 5 ? "C" : "?");
        }
        if (hook) {
            hook(event);
        }
    }
    // Cancels the n-th cancel event from now on (1 is the first).
    void cancelAt(int n) {
        hook = [this, n](kelEvent* event) {
            if (event->getType() == 5 && ++cancels == n) {
                static_cast<kelCancelActionEvent*>(event)->cancelAction();
            }
        };
    }
    Texts seen;
    int cancels = 0;
    std::function<void(kelEvent*)> hook;
};

// deleteFile's events for a file of size bytes that is there and goes.
Texts deletion(std::string const& path, std::size_t size, bool overwrite) {
    Texts out{fileDelete(path, 0.0), "C"};
    for (std::size_t done = 10240; overwrite && done < size; done += 10240) {
        out.push_back(fileDelete(path, double(done) / double(size)));
    }
    out.push_back(fileDelete(path, 1.0));
    return out;
}

Texts copying(std::string const& from, std::string const& to, std::size_t size) {
    Texts out{fileCopy(from, to, 0.0)};
    for (std::size_t done = 10240; done < size; done += 10240) {
        out.push_back(fileCopy(from, to, double(done) / double(size)));
    }
    out.push_back(fileCopy(from, to, 1.0));
    return out;
}

std::string bytesOf(fs::path const& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string randomBytes(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& c : bytes) {
        c = static_cast<char>(random());
    }
    return bytes;
}

// The independent picture of a tree: each item by its relative path, a folder as "D", a link
// as its text and a file as its size and a hash of its bytes. Links are never followed.
std::map<std::string, std::string> treeOf(fs::path const& root) {
    std::map<std::string, std::string> tree;
    for (auto const& entry : fs::recursive_directory_iterator(root)) {
        std::string const relative = entry.path().lexically_relative(root).generic_string();
        if (entry.is_symlink()) {
            tree[relative] = "L " + fs::read_symlink(entry.path()).string();
        } else {
            std::string const bytes = entry.is_directory() ? "" : bytesOf(entry.path());
            tree[relative] = entry.is_directory()
                                 ? "D"
                                 : "F " + std::to_string(bytes.size()) + " " +
                                       std::to_string(std::hash<std::string>()(bytes));
        }
    }
    return tree;
}

#if !defined(_WIN32)
// deleteFile with overwrite as an unprivileged user (root opens read-only files for writing):
// the file must stay whole, with the three events of a removal that failed. 0 when it does.
KEL_CHILD_SCENARIO(filesOverwriteReadOnly) {
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
        return 2;
    }
    Recorder recorder;
    bool const result = kelFiles::deleteFile(argument.c_str(), true);
    Texts const expected{fileDelete(argument, 0.0), "C", fileDelete(argument, 1.0)};
    return !result && recorder.seen == expected && kelFiles::fileExists(argument.c_str()) ? 0 : 1;
}
#endif

} // namespace

TEST(kelFilesOperations, CreateFileAndFolderKeepWhatExistsAndTheRoot) {
    kelWatchdog const watchdog("create", 120s);
    kelScratch scratch("create");
    std::string const file = scratch.lib("made.bin");
    EXPECT_TRUE(kelFiles::createFile(file.c_str(), 103425));
    EXPECT_EQ(std::string(103425, '\0'), bytesOf(scratch.root / "made.bin"));
    EXPECT_TRUE(kelFiles::createFile(scratch.lib("empty").c_str(), 0));
    EXPECT_EQ(0u, fs::file_size(scratch.root / "empty"));
    scratch.write("kept", "kept");
    EXPECT_FALSE(kelFiles::createFile(scratch.lib("kept").c_str(), 3));
    EXPECT_EQ("kept", bytesOf(scratch.root / "kept"));
    EXPECT_FALSE(kelFiles::createFile(scratch.lib().c_str(), 0)); // a folder

    // Intermediate folders from an absolute path: with the working folder elsewhere, nothing
    // may appear there. Windows gets a path rooted on the current drive ("\users\...").
    fs::create_directory(scratch.root / "cwd");
    fs::path const before = fs::current_path();
    fs::current_path(scratch.root / "cwd");
    std::string deep = scratch.lib("x\\\\y\\z\\");
    if (deep.size() > 1 && deep[1] == ':') {
        deep.erase(0, 2);
    }
    bool const made = kelFiles::createFolder(deep.c_str());
    fs::current_path(before);
    EXPECT_TRUE(made);
    EXPECT_TRUE(fs::is_directory(scratch.root / "x" / "y" / "z"));
    EXPECT_TRUE(fs::is_empty(scratch.root / "cwd"));
    EXPECT_TRUE(kelFiles::createFolder(deep.c_str()));
    EXPECT_FALSE(kelFiles::createFolder("") || kelFiles::createFolder(nullptr));
    EXPECT_FALSE(kelFiles::createFolder(file.c_str())); // a file is in the way
#if !defined(_WIN32)
    fs::create_symlink(scratch.root / "nowhere", scratch.root / "dangling");
    EXPECT_FALSE(kelFiles::createFile(scratch.lib("dangling").c_str(), 5));
    EXPECT_FALSE(fs::exists(scratch.root / "nowhere"));
#endif
}

TEST(kelFilesOperations, DeleteFileEventsOverwriteAndCancel) {
    kelWatchdog const watchdog("deleteFile", 120s);
    kelScratch scratch("delete");
    Recorder recorder;
    std::string const missing = scratch.lib("missing");
    EXPECT_TRUE(kelFiles::deleteFile(missing.c_str()));
    EXPECT_EQ(deletion(missing, 0, false), recorder.seen);

    // The overwrite goes into the file itself: a second name of it shows the spaces.
    std::string const file = kelScratch::lib(scratch.write("f", std::string(25000, 'x')));
    fs::create_hard_link(scratch.root / "f", scratch.root / "second");
    recorder.seen.clear();
    EXPECT_TRUE(kelFiles::deleteFile(file.c_str(), true));
    EXPECT_EQ(deletion(file, 25000, true), recorder.seen);
    EXPECT_EQ(std::string(25000, ' '), bytesOf(scratch.root / "second"));
    EXPECT_FALSE(fs::exists(scratch.root / "f"));
    std::string const empty = kelScratch::lib(scratch.write("e", ""));
    recorder.seen.clear();
    EXPECT_TRUE(kelFiles::deleteFile(empty.c_str(), true));
    EXPECT_EQ(deletion(empty, 0, true), recorder.seen);

    // Cancelled at once: nothing changes and nothing more is published.
    std::string const kept = kelScratch::lib(scratch.write("k", "abc"));
    recorder.seen.clear();
    recorder.cancelAt(1);
    EXPECT_FALSE(kelFiles::deleteFile(kept.c_str(), true));
    EXPECT_EQ((Texts{fileDelete(kept, 0.0), "C"}), recorder.seen);
    EXPECT_EQ("abc", bytesOf(scratch.root / "k"));

    // Cancelled at the poll during the overwrite: a slow listener makes the second pass; the
    // file stays, overwritten exactly as far as the events went.
    std::string const original = randomBytes(10 * 10240, 5);
    std::string const slow = kelScratch::lib(scratch.write("slow", original));
    recorder.seen.clear();
    recorder.hook = [&recorder](kelEvent* event) {
        if (event->getType() == 5 && recorder.seen.size() > 2) {
            static_cast<kelCancelActionEvent*>(event)->cancelAction();
        } else if (event->getType() == 2) {
            std::this_thread::sleep_for(350ms);
        }
    };
    EXPECT_FALSE(kelFiles::deleteFile(slow.c_str(), true));
    ASSERT_GE(recorder.seen.size(), 4u);
    std::size_t const blocks = recorder.seen.size() - 3;
    Texts expected = deletion(slow, original.size(), true);
    expected.resize(2 + blocks);
    expected.push_back("C");
    EXPECT_EQ(expected, recorder.seen);
    EXPECT_EQ(std::string(blocks * 10240, ' ') + original.substr(blocks * 10240),
              bytesOf(scratch.root / "slow"));
    recorder.hook = nullptr;

    // Read-only: removed without overwrite (Windows clears the attribute for a second try).
    std::string const readOnly = kelScratch::lib(scratch.write("ro", "ro"));
    ASSERT_TRUE(kelFiles::setFileAttributes(readOnly.c_str(), kelFileAttributes::ReadOnly));
#if defined(_WIN32)
    recorder.seen.clear();
    EXPECT_FALSE(kelFiles::deleteFile(readOnly.c_str(), true)); // will not open for writing
    EXPECT_EQ((Texts{fileDelete(readOnly, 0.0), "C", fileDelete(readOnly, 1.0)}), recorder.seen);
    EXPECT_EQ("ro", bytesOf(scratch.root / "ro"));
#else
    fs::permissions(scratch.root, fs::perms::others_exec, fs::perm_options::add);
    kelChildProcess child("filesOverwriteReadOnly", readOnly);
    EXPECT_EQ(0, child.wait()) << "a read-only file is neither overwritten nor removed";
    EXPECT_EQ("ro", bytesOf(scratch.root / "ro"));
    // A link is removed itself; its target keeps its bytes.
    fs::create_symlink(scratch.root / "k", scratch.root / "link");
    EXPECT_TRUE(kelFiles::deleteFile(scratch.lib("link").c_str(), true));
    EXPECT_EQ("abc", bytesOf(scratch.root / "k"));
    EXPECT_FALSE(fs::is_symlink(scratch.root / "link"));
#endif
    EXPECT_TRUE(kelFiles::deleteFile(readOnly.c_str()));
    EXPECT_FALSE(fs::exists(scratch.root / "ro"));
}

// A tree of files, folders and (POSIX) links to things outside it, removed with the exact
// sequence of events; then cancelled at an inner and at the outer cancel event.
TEST(kelFilesOperations, DeleteFolderSequenceLinksAndCancel) {
    kelWatchdog const watchdog("deleteFolder", 120s);
    kelScratch scratch("deltree");
    std::map<std::string, std::size_t> files{{"a.txt", 25000}, {"sub\\b.txt", 0}, {"z", 1}};
    auto build = [&] {
        fs::create_directories(scratch.root / "r" / "sub" / "deeper");
        for (auto const& f : files) {
            if (f.first.find("link") != std::string::npos) {
                continue; // made below
            }
            std::string name = f.first;
            std::replace(name.begin(), name.end(), '\\', '/');
            scratch.write(("r/" + name).c_str(), std::string(f.second, 'q'));
        }
    };
    fs::create_directory(scratch.root / "outside");
    scratch.write("outside/keep", "keep");
#if !defined(_WIN32)
    files["link"] = 0;
    files["flink"] = 0;
#endif
    std::string const root = scratch.lib("r");
    // The model: every item in descending byte order, files through deleteFile.
    std::vector<std::string> items{root, root + "\\sub", root + "\\sub\\deeper"};
    for (auto const& f : files) {
        items.push_back(root + "\\" + f.first);
    }
    std::sort(items.begin(), items.end(), std::greater<std::string>());
    Texts model{"C", "C", folderDelete(root, 0.0)};
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::string const name = items[i].substr(std::min(items[i].size(), root.size() + 1));
        if (files.count(name) != 0) {
            model.push_back("C");
            Texts const one = deletion(items[i], files[name], true);
            model.insert(model.end(), one.begin(), one.end());
        } else {
            model.push_back(folderDelete(items[i], 0.0));
            model.push_back(folderDelete(items[i], 1.0));
        }
        if (i + 1 < items.size()) {
            model.push_back(folderDelete(root, double(i + 1) / double(items.size())));
        }
    }
    model.push_back(folderDelete(root, 1.0));

    for (int cancelled : {0, 4, 5}) {
        build();
#if !defined(_WIN32)
        fs::create_directory_symlink(scratch.root / "outside", scratch.root / "r" / "link");
        fs::create_symlink(scratch.root / "outside" / "keep", scratch.root / "r" / "flink");
#endif
        Recorder recorder;
        if (cancelled != 0) {
            recorder.cancelAt(cancelled);
        }
        bool const result = kelFiles::deleteFolder(root.c_str(), true);
        Texts expected = model;
        if (cancelled == 4) {
            // The inner cancel event of the first file: that file alone stays, so does its folder.
            expected.erase(expected.begin() + 6);
        } else if (cancelled == 5) {
            // The outer one before the second file: the call ends there.
            int seen = 0;
            auto const fifth =
                std::find_if(expected.begin(), expected.end(),
                             [&seen](std::string const& e) { return e == "C" && ++seen == 5; });
            expected.erase(fifth + 1, expected.end());
        }
        EXPECT_EQ(expected, recorder.seen) << "cancelled at " << cancelled;
        EXPECT_EQ(cancelled == 0, result);
        EXPECT_EQ(cancelled != 0, fs::exists(scratch.root / "r"));
        EXPECT_EQ(cancelled == 4, fs::exists(scratch.root / "r" / "z"));
        EXPECT_EQ(cancelled == 5, fs::exists(scratch.root / "r" / "sub" / "b.txt"));
        EXPECT_EQ("keep", bytesOf(scratch.root / "outside" / "keep"));
        EXPECT_EQ(1, std::distance(fs::directory_iterator(scratch.root / "outside"), {}));
        kelFiles::deleteFolder(root.c_str());
    }
    Recorder recorder;
    EXPECT_TRUE(kelFiles::deleteFolder(root.c_str()));
    EXPECT_TRUE(recorder.seen.empty());
#if !defined(_WIN32)
    // A folder swapped for a link to the outside after the listing is not followed.
    build();
    fs::create_directory(scratch.root / "outside" / "sub");
    scratch.write("outside/sub/b.txt", "outside");
    recorder.hook = [&](kelEvent*) {
        if (recorder.seen.size() == 1) {
            fs::rename(scratch.root / "r" / "sub", scratch.root / "moved");
            fs::create_directory_symlink(scratch.root / "outside" / "sub",
                                         scratch.root / "r" / "sub");
        }
    };
    EXPECT_TRUE(kelFiles::deleteFolder(root.c_str())); // the link goes, and so does the root
    EXPECT_EQ("outside", bytesOf(scratch.root / "outside" / "sub" / "b.txt"));
    EXPECT_TRUE(fs::exists(scratch.root / "moved" / "b.txt"));
#endif
}

TEST(kelFilesOperations, CopyFileEventsRefusalsAndAShrinkingSource) {
    kelWatchdog const watchdog("copyFile", 120s);
    kelScratch scratch("copy");
    Recorder recorder;
    for (std::size_t size : {0, 1, 10240, 10241, 25000, 3000000}) {
        std::string const bytes = randomBytes(size, static_cast<unsigned>(size));
        std::string const from = kelScratch::lib(scratch.write("from", bytes));
        std::string const to = scratch.lib("to");
        scratch.write("to", "old content, longer than one byte");
        recorder.seen.clear();
        EXPECT_TRUE(kelFiles::copyFile(from.c_str(), to.c_str()));
        EXPECT_EQ(copying(from, to, size), recorder.seen) << size;
        EXPECT_TRUE(bytesOf(scratch.root / "to") == bytes) << size;
    }
    // Refused before any event: the source itself (also under a second name), a folder, a
    // missing source; the source keeps its bytes.
    std::string const from = scratch.lib("from");
    fs::create_hard_link(scratch.root / "from", scratch.root / "alias");
    recorder.seen.clear();
    EXPECT_FALSE(kelFiles::copyFile(from.c_str(), from.c_str()) ||
                 kelFiles::copyFile(from.c_str(), scratch.lib("alias").c_str()) ||
                 kelFiles::copyFile(scratch.lib().c_str(), scratch.lib("x").c_str()) ||
                 kelFiles::copyFile(from.c_str(), scratch.lib().c_str()) ||
                 kelFiles::copyFile(scratch.lib("none").c_str(), scratch.lib("x").c_str()));
    EXPECT_TRUE(recorder.seen.empty());
    EXPECT_EQ(randomBytes(3000000, 3000000), bytesOf(scratch.root / "from"));
    EXPECT_FALSE(fs::exists(scratch.root / "x"));
#if !defined(_WIN32)
    fs::create_symlink(scratch.root / "victim", scratch.root / "link");
    scratch.write("victim", "victim");
    EXPECT_FALSE(kelFiles::copyFile(from.c_str(), scratch.lib("link").c_str()));
    EXPECT_EQ("victim", bytesOf(scratch.root / "victim"));
#endif

    // The source shrinks after the first block events: false, no final event, no target.
    recorder.hook = [&](kelEvent* event) {
        if (recorder.seen.size() == 2) {
            fs::resize_file(scratch.root / "from", 100);
        }
        (void)event;
    };
    std::string const to = scratch.lib("shrunk");
    EXPECT_FALSE(kelFiles::copyFile(from.c_str(), to.c_str()));
    recorder.hook = nullptr;
    ASSERT_GE(recorder.seen.size(), 2u);
    EXPECT_EQ(fileCopy(from, to, 0.0), recorder.seen[0]);
    EXPECT_NE(fileCopy(from, to, 1.0), recorder.seen.back());
    EXPECT_FALSE(fs::exists(scratch.root / "shrunk"));
}

// A generated tree (files around the block size, empty folders, names that repeat the source's
// name, POSIX links leading outside) copied by copyFolder, against an independent picture.
TEST(kelFilesOperations, CopyFolderCopiesTreesAsTheyWere) {
    kelWatchdog const watchdog("copyFolder", 300s);
    kelScratch scratch("copytree");
    Recorder recorder;
    // The order of events on a small tree, with the doubled backslash after the root.
    fs::create_directories(scratch.root / "s" / "sub");
    fs::create_directory(scratch.root / "t");
    scratch.write("s/f", "abc");
    scratch.write("s/sub/g", "");
    std::string const s = scratch.lib("s"), t = scratch.lib("t"), r = t + "\\s";
    EXPECT_TRUE(kelFiles::copyFolder(s.c_str(), t.c_str()));
    Texts expected{folderCopy(s, t, 0.0)};
    for (Texts part :
         {copying(s + "\\f", r + "\\\\f", 3), Texts{folderCopy(s, t, 1 / 3.0)},
          Texts{folderCopy(s + "\\sub", r + "\\\\sub", 0.0),
                folderCopy(s + "\\sub", r + "\\\\sub", 1.0), folderCopy(s, t, 2 / 3.0)},
          copying(s + "\\sub\\g", r + "\\\\sub\\g", 0), Texts{folderCopy(s, t, 1.0)}}) {
        expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_EQ(expected, recorder.seen);
    EXPECT_EQ(treeOf(scratch.root / "s"), treeOf(scratch.root / "t" / "s"));
    recorder.seen.clear();
    EXPECT_FALSE(kelFiles::copyFolder(s.c_str(), scratch.lib("none").c_str()) ||
                 kelFiles::copyFolder(scratch.lib("none").c_str(), t.c_str()) ||
                 kelFiles::copyFolder("\\", t.c_str()));
    EXPECT_TRUE(recorder.seen.empty());

    // The generated tree, named relative to the working folder: "gen" recurs inside names.
    std::mt19937 random(11);
    fs::path const gen = scratch.root / "gen";
    std::vector<fs::path> folders{gen};
    fs::create_directory(gen);
    for (int i = 0; i < 60; ++i) {
        fs::path const parent = folders[random() % folders.size()];
        std::string const name =
            std::vector<std::string>{"gen", "agent", "a b", "x"}[i % 4] + std::to_string(i);
        if (i == 0 || random() % 3 == 0) {
            fs::create_directory(parent / name);
            folders.push_back(parent / name);
        } else {
            std::size_t const size = std::vector<std::size_t>{0, 10240, 10241, 70000}[random() % 4];
            std::ofstream(parent / name, std::ios::binary) << randomBytes(size, i);
        }
    }
#if !defined(_WIN32)
    fs::create_directory_symlink(scratch.root / "s", gen / "linkToFolder");
    fs::create_symlink(scratch.root / "s" / "f", folders.back() / "linkToFile");
#endif
    fs::create_directory(scratch.root / "copy");
    fs::copy(gen, scratch.root / "snapshot",
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    fs::path const before = fs::current_path();
    fs::current_path(scratch.root);
    bool const copied = kelFiles::copyFolder("gen", "copy");
    // Into a folder inside its own source: it ends, and copies the source as it was.
    bool const intoItself = kelFiles::copyFolder("gen", "gen\\gen0");
    fs::current_path(before);
    EXPECT_TRUE(copied && intoItself);
    auto const original = treeOf(scratch.root / "snapshot");
    EXPECT_EQ(original, treeOf(scratch.root / "copy" / "gen"));
    EXPECT_EQ(original, treeOf(gen / "gen0" / "gen"));
#if !defined(_WIN32)
    // A folder swapped for a link to the outside after the listing is neither read nor written.
    recorder.seen.clear();
    fs::create_directories(scratch.root / "secret" / "inner");
    scratch.write("secret/inner/f", "secret");
    recorder.hook = [&](kelEvent*) {
        if (recorder.seen.size() == 1) {
            fs::rename(scratch.root / "s" / "sub", scratch.root / "moved");
            fs::create_directory_symlink(scratch.root / "secret", scratch.root / "s" / "sub");
        }
    };
    fs::create_directory(scratch.root / "t2");
    EXPECT_FALSE(kelFiles::copyFolder(s.c_str(), scratch.lib("t2").c_str()));
    EXPECT_EQ(1, std::distance(fs::recursive_directory_iterator(scratch.root / "secret"), {}) - 1);
    EXPECT_FALSE(fs::exists(scratch.root / "t2" / "s" / "sub" / "g"));
#endif
}

TEST(kelFilesOperations, ShellOperationChecksListsAndActs) {
    kelWatchdog const watchdog("processFilesOperation", 300s);
    kelScratch scratch("shell");
    using T = kelFileOperationType;
    kelFileOperationFlag const quiet; // 0: no error dialog, no confirmation
    fs::create_directories(scratch.root / "d" / "inner");
    fs::create_directory(scratch.root / "into");
    scratch.write("a", "A");
    scratch.write("d/inner/b", "B");
    auto list = [&](std::initializer_list<char const*> names) {
        kelListString paths;
        for (char const* name : names) {
            paths.add(kelString(scratch.lib(name).c_str()));
        }
        return paths;
    };
    auto const picture = [&] { return treeOf(scratch.root); };
    auto const untouched = picture();
    kelListString const none, one = list({"into"}), two = list({"into", "d"});
    kelListString const* const noTargets = nullptr;

    // Every refusal of the lists, before anything is touched.
    EXPECT_FALSE(
        kelFiles::processFilesOperation(T::Delete, list({"a"}), &one, quiet) ||
        kelFiles::processFilesOperation(T::Delete, list({"a"}), "x", quiet) ||
        kelFiles::processFilesOperation(T::Copy, list({"a"}), &two, quiet) ||
        kelFiles::processFilesOperation(T::Copy, list({"a"}), &none, quiet) ||
        kelFiles::processFilesOperation(T::Copy, list({"a"}), static_cast<char*>(nullptr), quiet) ||
        kelFiles::processFilesOperation(T::Move, none, &one, quiet) ||
        kelFiles::processFilesOperation(T::Rename, list({"a", "d"}), &one, quiet) ||
        kelFiles::processFilesOperation(T::Rename, none, &none, quiet) ||
        kelFiles::processFilesOperation(T(9), list({"a"}), &one, quiet) ||
        kelFiles::processFilesOperation(T::Delete, none, noTargets, quiet)); // the shell's answer
    EXPECT_EQ(untouched, picture());

    // The four operations, on both platforms.
    ASSERT_TRUE(kelFiles::processFilesOperation(T::Copy, list({"a", "d"}), &one, quiet));
    EXPECT_EQ(treeOf(scratch.root / "d"), treeOf(scratch.root / "into" / "d"));
    EXPECT_EQ("A", bytesOf(scratch.root / "into" / "a"));
    ASSERT_TRUE(
        kelFiles::processFilesOperation(T::Move, list({"a"}), scratch.lib("d").c_str(), quiet));
    EXPECT_FALSE(fs::exists(scratch.root / "a"));
    EXPECT_EQ("A", bytesOf(scratch.root / "d" / "a"));
    ASSERT_TRUE(
        kelFiles::processFilesOperation(T::Rename, list({"d"}), scratch.lib("e").c_str(), quiet));
    kelListString const renamed = list({"f", "g"});
    ASSERT_TRUE(
        kelFiles::processFilesOperation(T::Rename, list({"e\\a", "e\\inner"}), &renamed, quiet));
    EXPECT_EQ("A", bytesOf(scratch.root / "f"));
    EXPECT_EQ("B", bytesOf(scratch.root / "g" / "b"));
    ASSERT_TRUE(
        kelFiles::processFilesOperation(T::Delete, list({"e", "f", "into"}), noTargets, quiet));
    EXPECT_EQ((std::vector<std::string>{"g"}), [&] {
        std::vector<std::string> names;
        for (auto const& e : fs::directory_iterator(scratch.root)) {
            names.push_back(e.path().filename().string());
        }
        return names;
    }());
#if !defined(_WIN32)
    // No dialog on POSIX: with confirmations asked for (2), a taken target is refused; without
    // (0) it is replaced. A folder never goes into itself; links go as links.
    scratch.write("h", "H");
    fs::create_symlink(scratch.root / "h", scratch.root / "g" / "link");
    kelFileOperationFlag const ask(2);
    auto const now = picture();
    EXPECT_FALSE(
        kelFiles::processFilesOperation(T::Copy, list({"h"}), scratch.lib("g\\b").c_str(), ask) ||
        kelFiles::processFilesOperation(T::Copy, list({"g"}), scratch.lib("g\\new").c_str(),
                                        quiet) ||
        kelFiles::processFilesOperation(T::Move, list({"g"}), scratch.lib("g").c_str(), quiet) ||
        kelFiles::processFilesOperation(T::Delete, list({"none", "h"}), noTargets, quiet));
    EXPECT_EQ(now, picture());
    EXPECT_TRUE(
        kelFiles::processFilesOperation(T::Copy, list({"h"}), scratch.lib("g\\b").c_str(), quiet));
    EXPECT_EQ("H", bytesOf(scratch.root / "g" / "b"));
    EXPECT_TRUE(
        kelFiles::processFilesOperation(T::Copy, list({"g\\*"}), scratch.lib("w").c_str(), quiet));
    EXPECT_EQ(treeOf(scratch.root / "g"), treeOf(scratch.root / "w"));

    // Recycle: into the trash under XDG_DATA_HOME, with a .trashinfo that leads back.
    fs::path const data = scratch.root / "data";
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
    scratch.write("100% a b", "T1");
    std::string const trashed = (scratch.root / "100% a b").string();
    bool const recycled = kelFiles::processFilesOperation(T::Delete, list({"100% a b"}), noTargets,
                                                          kelFileOperationFlag(3));
    scratch.write("100% a b", "T2");
    bool const again = kelFiles::processFilesOperation(T::Delete, list({"100% a b"}), noTargets,
                                                       kelFileOperationFlag(3));
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_TRUE(recycled && again);
    EXPECT_FALSE(fs::exists(scratch.root / "100% a b"));
    EXPECT_EQ("T1", bytesOf(data / "Trash" / "files" / "100% a b"));
    EXPECT_EQ("T2", bytesOf(data / "Trash" / "files" / "100% a b.2"));
    std::smatch match;
    std::string const info = bytesOf(data / "Trash" / "info" / "100% a b.trashinfo");
    ASSERT_TRUE(std::regex_match(info, match,
                                 std::regex("\\[Trash Info\\]\nPath=(.*)\nDeletionDate="
                                            "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\n")))
        << info;
    std::string decoded, path = match[1];
    ASSERT_EQ(std::string::npos, path.find(' '));
    for (std::size_t i = 0; i < path.size(); ++i) {
        decoded += path[i] == '%' ? static_cast<char>(std::stoi(path.substr(i + 1, 2), nullptr, 16))
                                  : path[i];
        i += path[i] == '%' ? 2 : 0;
    }
    EXPECT_EQ(fs::canonical(scratch.root).string() + "/100% a b", decoded);
#endif
}
