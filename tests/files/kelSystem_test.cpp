#include <kelcore/files/kelEnv.h>
#include <kelcore/files/kelListDrivePtr.h>
#include <kelcore/files/kelSystem.h>

#include "support/kelScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

using namespace KELKIT;
namespace fs = std::filesystem;

namespace {

using kelTest::ScratchFolder;

// Sets variables for one test and puts the previous values back.
struct EnvGuard {
    void set(char const* name, char const* value) {
        kelString old;
        saved.emplace_back(name, kelEnv::getEnvVar(name, old) ? old.c_str() : "");
        kelEnv::setEnvVar(name, value);
    }
    ~EnvGuard() {
        for (auto it = saved.rbegin(); it != saved.rend(); ++it) {
            kelEnv::setEnvVar(it->first.c_str(), it->second.c_str());
        }
    }
    std::vector<std::pair<std::string, std::string>> saved;
};

std::string get(char const* name) {
    kelString value("stale");
    return kelEnv::getEnvVar(name, value) ? value.c_str()
                                          : "<unset:" + std::string(value.c_str()) + '>';
}

// Where name stands in getAllVariables, -1 when it is not listed; its value in value.
int position(char const* name, std::string* value = nullptr) {
    kelListString names, values;
    kelEnv::getAllVariables(names, values);
    EXPECT_EQ(names.size(), values.size());
    for (UInt32 i = 0; i < names.size(); ++i) {
        if (names[i] == name) {
            if (value != nullptr) {
                *value = values[i].c_str();
            }
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace

TEST(kelDrive, ComparesLettersOnlyAsSignedCharacters) {
    kelDrive const c1('C', "system", kelDriveType::Fixed), c2('C', "other", kelDriveType::Remote);
    kelDrive high(static_cast<char>(0xE9), nullptr, kelDriveType::CdRom);
    EXPECT_TRUE(c1 == c2 && !(c1 != c2) && !(c1 < c2));
    EXPECT_TRUE(high < kelDrive() && kelDrive() < c1); // 0xE9 is negative as a signed character
    kelListDrive drives;
    drives.add(c1);
    drives.add(high);
    drives.add(kelDrive());
    drives.sort();
    EXPECT_EQ(std::string({static_cast<char>(0xE9), 'A', 'C'}),
              std::string({drives[0].getLetter(), drives[1].getLetter(), drives[2].getLetter()}));
    EXPECT_TRUE(drives.contains(c2)); // found by the letter alone
    kelDrive sameLetter = drives[2];
    kelListDrivePtr pointers;
    pointers.add(&drives[2]);
    EXPECT_FALSE(pointers.contains(&sameLetter)); // pointers compare as pointers
}

TEST(kelEnv, SetGetRemoveAndRefusedNames) {
    EnvGuard env;
    env.set("KELTEST_FOO", "bar");
    EXPECT_EQ("bar", get("KELTEST_FOO"));
    EXPECT_TRUE(kelEnv::setEnvVar("KELTEST_FOO", "")); // an empty value removes
    EXPECT_EQ("<unset:>", get("KELTEST_FOO"));         // and the output is cleared
    EXPECT_FALSE(kelEnv::setEnvVar("", "x"));
    EXPECT_FALSE(kelEnv::setEnvVar(nullptr, "x"));
    EXPECT_FALSE(kelEnv::setEnvVar("KELTEST_A=B", "c"));
    EXPECT_EQ("<unset:>", get("KELTEST_A"));
    EXPECT_EQ("<unset:>", get(nullptr));
}

TEST(kelEnv, ListedVariablesSplitAtEveryEqualsSign) {
    EnvGuard env;
    env.set("KELTEST_PLAIN", "plain");
    env.set("KELTEST_TWO", "b=c"); // three parts: left out
    env.set("KELTEST_LEAD", "=x"); // "KELTEST_LEAD==x": the empty part vanishes
    std::string value;
    EXPECT_GE(position("KELTEST_PLAIN", &value), 0);
    EXPECT_EQ("plain", value);
    EXPECT_EQ(-1, position("KELTEST_TWO"));
    EXPECT_GE(position("KELTEST_LEAD", &value), 0);
    EXPECT_EQ("x", value);
}

TEST(kelEnv, ExpandsReferencesAgainstAGeneratedModel) {
    EnvGuard env;
    char const* const names[] = {"KELTEST_E0", "KELTEST_E1", "KELTEST_E2"};
    char const* const values[] = {"zero", "one one", "2"};
    for (int i = 0; i < 3; ++i) {
        env.set(names[i], values[i]);
    }
    env.set("KELTEST_FOO", "bar");
    EXPECT_EQ("xbary", std::string(kelEnv::expand("x%KELTEST_FOO%y").c_str()));
    // Literal pieces without percent signs, known references, other spellings and unknown
    // names, in random order: only the known references change.
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string text, expected;
        for (int piece = static_cast<int>(random() % 6); piece > 0; --piece) {
            int const pick = static_cast<int>(random() % 6);
            std::string const literal[] = {"%keltest_e0%", "%KELTEST_NONE%", " text-", "%"};
            if (pick < 3) {
                text += '%' + std::string(names[pick]) + '%';
                expected += values[pick];
            } else {
                std::string const& l = literal[random() % 4];
                text += l;
                expected += l;
            }
        }
        ASSERT_EQ(expected, kelEnv::expand(text.c_str()).c_str()) << text;
    }
    // A reference that a value brings in is expanded only if its variable comes later.
    env.set("KELTEST_P", "<%KELTEST_Q%>");
    env.set("KELTEST_Q", "q");
    bool const later = position("KELTEST_P") < position("KELTEST_Q");
    EXPECT_EQ(later ? "<q>" : "<%KELTEST_Q%>", std::string(kelEnv::expand("%KELTEST_P%").c_str()));
}

TEST(kelSystem, TempFolderSeparatorsAndScreen) {
    EnvGuard env;
    env.set("TEMP", "\\scratch\\temp");
    EXPECT_EQ("\\scratch\\temp", std::string(kelSystem::getTempFolder().c_str()));
    env.set("TEMP", "");
    EXPECT_EQ("", std::string(kelSystem::getTempFolder().c_str())); // no fallback
    EXPECT_EQ("\\", std::string(kelSystem::getPathSeparator().c_str()));
    EXPECT_STREQ("\r\n", kelSystem::getLineSeparator());
    kelSize screen = kelSystem::getScreenResolution();
    EXPECT_EQ(screen.getWidth() == 0, screen.getHeight() == 0);
}

TEST(kelSystem, LastErrorAndMessages) {
    ScratchFolder scratch("last-error");
    // ENOENT on POSIX and ERROR_FILE_NOT_FOUND on Windows are both 2.
    EXPECT_EQ(nullptr, std::fopen((scratch.root / "missing.txt").string().c_str(), "rb"));
    EXPECT_EQ(2u, kelSystem::getLastError());
    std::string const message = kelSystem::getLastErrorMessage().c_str();
    EXPECT_EQ(message, kelSystem::getErrorMessage(2).c_str());
#ifdef _WIN32
    EXPECT_EQ("\r\n", message.substr(message.size() - 2)); // the system's own line end stays
#else
    EXPECT_EQ("No such file or directory", message);
#endif
    EXPECT_EQ("", std::string(kelSystem::getErrorMessage(0x7FFFFFF0u).c_str()));
}

TEST(kelSystem, DrivesAreLetteredInOrderFromC) {
    kelListDrive drives = kelSystem::getDrives();
    ASSERT_FALSE(drives.empty());
    std::string letters;
    for (UInt32 i = 0; i < drives.size(); ++i) {
        letters += drives[i].getLetter();
        EXPECT_LT(drives[i].getType().getValue(), 6);
    }
    EXPECT_TRUE(std::is_sorted(letters.begin(), letters.end()) &&
                std::adjacent_find(letters.begin(), letters.end()) == letters.end())
        << letters;
    EXPECT_NE(std::string::npos, letters.find('C'));
#ifndef _WIN32
    // Mount points as library paths: the root first, then consecutive letters.
    EXPECT_EQ(std::string("CDEFGHIJKLMNOPQRSTUVWXYZ").substr(0, letters.size()), letters);
    EXPECT_STREQ("\\", drives[0].getName());
    for (UInt32 i = 1; i < drives.size(); ++i) {
        std::string path = drives[i].getName();
        EXPECT_TRUE(path[0] == '\\' && path.find('/') == std::string::npos) << path;
        std::replace(path.begin(), path.end(), '\\', '/');
        EXPECT_TRUE(fs::is_directory(path)) << path;
    }
#endif
}

#ifdef _WIN32
TEST(kelSystem, KnownFoldersAreDistinctDrivePaths) {
    std::string const folders[] = {kelSystem::getUserRoamingFolder().c_str(),
                                   kelSystem::getUserSettingsFolder().c_str(),
                                   kelSystem::getUserDocumentsFolder().c_str(),
                                   kelSystem::getAllUsersDocumentsFolder().c_str()};
    for (std::string const& folder : folders) {
        EXPECT_EQ(":\\", folder.substr(1, 2)) << folder;
        EXPECT_EQ(1, std::count(std::begin(folders), std::end(folders), folder)) << folder;
    }
}
#else
TEST(kelSystem, KnownFoldersFollowTheXdgVariables) {
    ScratchFolder scratch("known-folders");
    std::string const root = scratch.root.string();
    auto library = [](std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    };
    auto folders = [] {
        return std::string(kelSystem::getUserRoamingFolder().c_str()) + '|' +
               kelSystem::getUserSettingsFolder().c_str() + '|' +
               kelSystem::getUserDocumentsFolder().c_str() + '|' +
               kelSystem::getAllUsersDocumentsFolder().c_str();
    };
    EnvGuard env;
    env.set("HOME", (root + "/home/").c_str());
    env.set("XDG_CONFIG_HOME", (root + "/config").c_str());
    env.set("XDG_DATA_HOME", (root + "/data").c_str());
    env.set("XDG_DOCUMENTS_DIR", "");
    fs::create_directories(root + "/config");
    std::ofstream(root + "/config/user-dirs.dirs")
        << "# written by the test\nXDG_DOCUMENTS_DIR=\"/elsewhere\"\n"
        << "  XDG_DOCUMENTS_DIR=\"$HOME/My \\\"Docs\\\"\"\n";
    std::string const home = library(root + "/home");
    EXPECT_EQ(library(root + "/config|" + root + "/data|") + home + "\\My \"Docs\"|\\usr\\share",
              folders());

    // Relative base folders are ignored; without a user-dirs file, the variable and then
    // ~/Documents stand in.
    env.set("XDG_CONFIG_HOME", "relative/config");
    env.set("XDG_DATA_HOME", "");
    env.set("XDG_DOCUMENTS_DIR", (root + "/docs").c_str());
    EXPECT_EQ(home + "\\.config|" + home + "\\.local\\share|" + library(root) +
                  "\\docs|\\usr\\share",
              folders());
    env.set("XDG_DOCUMENTS_DIR", "");
    EXPECT_EQ(home + "\\Documents", std::string(kelSystem::getUserDocumentsFolder().c_str()));
}
#endif
