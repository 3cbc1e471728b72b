#include <kelcore/files/kelFileRenamer.h>
#include <kelcore/internal/kelRenameEngine.h>

#include "support/kelMemoryRenameFolder.h"
#include "support/kelWatchdog.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

using namespace KELKIT;
using internal::kelRenameRule;

namespace {

// A folder in memory holding "." and "..", as a listing on disk does.
struct MemoryFolder : kelTest::MemoryRenameFolder {
    MemoryFolder() { names = {".", ".."}; }
};

using kelTest::listOf;

std::string joined(kelListString const& list) {
    std::string text;
    for (UInt32 i = 0; i < list.size(); ++i) {
        text += (i ? " " : "") + std::string(list[i].c_str());
    }
    return text;
}

// The new names of a preview in a folder holding the files, joined by spaces; "!" on failure,
// and a trailing " collision" when one was reported.
std::string preview(kelRenameRule const& rule, std::vector<std::string> const& files,
                    std::vector<std::string> const& others = {}) {
    MemoryFolder folder;
    folder.names.insert(files.begin(), files.end());
    folder.names.insert(others.begin(), others.end());
    kelListString names = listOf({"left over"});
    bool collision = false;
    UInt32 counter = 99;
    if (!internal::runRenameEngine(listOf(files), rule, counter, folder, &names, &collision,
                                   nullptr, false)) {
        return names.empty() ? "!" : "! not cleared";
    }
    return joined(names) + (collision ? " collision" : "");
}

kelRenameRule pattern(char const* text) {
    return {true, text, "", ""};
}
kelRenameRule replace(char const* from, char const* to) {
    return {false, "", from, to};
}

} // namespace

TEST(kelFileRenamer, PatternMode) {
    EXPECT_EQ("report.txt", preview(pattern("??????.txt"), {"report.doc"}));
    EXPECT_EQ("ab", preview(pattern("????"), {"ab"}));
    EXPECT_EQ("c", preview(pattern("||?"), {"abc"}));
    EXPECT_EQ("*a", preview(pattern("*?"), {"ab"}));
    EXPECT_EQ("photo_001 photo_002 photo_003", preview(pattern("photo_###"), {"a", "b", "c"}));
    EXPECT_EQ("1-02 3-04", preview(pattern("#-#"), {"a", "b"}));
    std::vector<std::string> thousand;
    for (int i = 0; i < 1000; ++i) {
        thousand.push_back("f" + std::to_string(i));
    }
    std::string const all = preview(pattern("photo_###"), thousand);
    EXPECT_EQ("photo_999 photo_1000", all.substr(all.size() - 20));
}

TEST(kelFileRenamer, ReplaceMode) {
    EXPECT_EQ("bbnbnb", preview(replace("a", "b"), {"banana"}));
    EXPECT_EQ("x.bak x.doc", preview(replace("*.txt", "*.bak"), {"x.txt", "x.doc"}));
    EXPECT_EQ("xbz", preview(replace("a?c", "x?z"), {"abc"}));
    EXPECT_EQ("x", preview(replace("*", "x"), {"p"}));
    EXPECT_EQ("x x collision", preview(replace("*", "x"), {"p", "q"}));
    EXPECT_EQ("a_b-c", preview(replace("*_*", "*-*"), {"a_b_c"}));
    EXPECT_EQ("xa [x][b]", preview(replace("*a*", "[*][*]"), {"xa", "xab"}));
    EXPECT_EQ("a*_b?", preview(replace("*-*", "*_*"), {"a*-b?"})); // POSIX names may hold them
    // to may drop a trailing kind, never reorder kinds, use one partly, or add wildcards.
    EXPECT_EQ("a.x ab", preview(replace("*.?", "*.x"), {"a.b", "ab"}));
    EXPECT_EQ("ab", preview(replace("*?*", "**"), {"abc"}));
    for (auto const& invalid : {replace("*?", "?*"), replace("a", "*"), replace("*?*", "*")}) {
        EXPECT_EQ("!", preview(invalid, {"abc"}));
    }
}

TEST(kelFileRenamer, CollisionsFollowTheNamesTheRunFreesAndTakes) {
    EXPECT_EQ("b collision", preview(replace("a", "b"), {"a"}, {"b"}));
    EXPECT_EQ("abb ab", preview(replace("a", "ab"), {"ab", "a"})); // "ab" has left by then
    EXPECT_EQ("ab abb collision", preview(replace("a", "ab"), {"a", "ab"}));
    EXPECT_EQ("A", preview(replace("a", "A"), {"a"}, {"b"})); // case matters
    EXPECT_EQ(". collision ../a",
              preview(replace("a", "."), {"a"}) + " " + preview(replace("*", "../*"), {"a"}));
}

TEST(kelFileRenamer, RunsNeedAFolderAndFilesAndTakeEachNameOnce) {
    kelFileRenamer renamer;
    kelListString names = listOf({"kept"});
    bool collision = false;
    EXPECT_FALSE(renamer.preview(names, collision));
    renamer.setFiles("", listOf({"a"}));
    EXPECT_FALSE(renamer.preview(names, collision));
    EXPECT_EQ("kept", joined(names));
    renamer.setFiles("kelcore-no-such-folder", listOf({"b", "a b", "b"}));
    EXPECT_TRUE(renamer.preview(names, collision)); // " " to " " changes nothing
    EXPECT_EQ("b a b", joined(names));
    renamer.setPatternMode("#?");
    kelFileRenamer copy(renamer);
    for (kelFileRenamer* run : {&renamer, &renamer, &copy}) { // each run numbers from 1
        EXPECT_TRUE(run->preview(names, collision));
        EXPECT_EQ("1b 2a", joined(names));
    }
    EXPECT_FALSE(collision);
}

TEST(kelFileRenamer, RenameIsOnePassThatStopsAtTheFirstFailure) {
    MemoryFolder folder;
    folder.names.insert({"a1", "b", "x", "x3"});
    UInt32 counter = 0;
    // a1 keeps its name (numbered, notified, not renamed); x would take x3, which is there.
    EXPECT_FALSE(internal::runRenameEngine(listOf({"a1", "b", "x", "d"}), pattern("?#"), counter,
                                           folder, nullptr, nullptr, &folder, true));
    EXPECT_EQ("a1>a1@0.250000 b>b2@0.500000 ", folder.seen);
    EXPECT_EQ((std::set<std::string>{".", "..", "a1", "b2", "x", "x3"}), folder.names);
    EXPECT_EQ(3u, counter);
    // A new name that would leave the folder, or name it, is a failing rename.
    for (char const* to : {"sub/*", "sub\\*", "..", "."}) {
        EXPECT_FALSE(internal::runRenameEngine(listOf({"b2"}), replace("*", to), counter, folder,
                                               nullptr, nullptr, nullptr, true))
            << to;
    }
    EXPECT_TRUE(internal::runRenameEngine(listOf({"b2", "x"}), replace("?2", "?3"), counter, folder,
                                          nullptr, nullptr, nullptr, true));
    EXPECT_EQ((std::set<std::string>{".", "..", "a1", "b3", "x", "x3"}), folder.names);
    EXPECT_EQ(0u, counter);
}

namespace {

// The reference: the same search written as an ECMAScript regular expression, whose greedy
// backtracking tries the longest text for each '*' first; a look-ahead keeps back what the
// '*' reserves for the pattern behind it.
bool referenceMatch(std::string const& pattern, std::string const& text, kelListString& captures) {
    std::string expression;
    for (std::size_t p = 0; p < pattern.size(); ++p) {
        if (pattern[p] == '?') {
            expression += "(.)";
        } else if (pattern[p] == '*') {
            expression += "(.*)";
            std::size_t const next = pattern.find_first_of("*?", p + 1);
            if (p + 1 < pattern.size()) {
                std::size_t const reserve =
                    next != std::string::npos ? next - p : pattern.size() - 1 - p;
                expression += "(?=.{" + std::to_string(reserve) + "})";
            }
        } else {
            expression += pattern[p];
        }
    }
    std::smatch groups;
    if (!std::regex_match(text, groups, std::regex(expression))) {
        return false;
    }
    for (std::size_t g = 1, p = 0; g < groups.size(); ++g, ++p) {
        p = pattern.find_first_of("*?", p);
        captures.add((pattern[p] + groups[g].str()).c_str());
    }
    return true;
}

} // namespace

TEST(kelFileRenamer, MatcherAgreesWithAReferenceOverGeneratedCases) {
    std::mt19937 random(20240517);
    auto const draw = [&](char const* alphabet, int maxLength) {
        std::string text(random() % (maxLength + 1), ' ');
        for (char& c : text) {
            c = alphabet[random() % std::char_traits<char>::length(alphabet)];
        }
        return text;
    };
    int matched = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string const text = draw("ab", 9);
        std::string const pattern = draw("ab**?", 6);
        kelListString expected;
        kelListString captures;
        bool const reference = referenceMatch(pattern, text, expected);
        ASSERT_EQ(reference, internal::matchWildcards(pattern.c_str(), text.c_str(), captures))
            << pattern << " on " << text;
        EXPECT_EQ(joined(expected), joined(captures)) << pattern << " on " << text;
        matched += reference;
    }
    EXPECT_GT(matched, 400); // both outcomes are well represented
    EXPECT_LT(matched, 3600);
}

TEST(kelFileRenamer, ManyStarsOnALongNameTakePolynomialTime) {
    kelWatchdog const watchdog("twenty stars against 200 characters", std::chrono::seconds(60));
    // Longest first: the first star leaves just enough for the twenty letters.
    std::string pattern;
    std::string expected = "*" + std::string(180, 'a');
    for (int i = 0; i < 20; ++i) {
        pattern += "*a";
        expected += i > 0 ? " *" : "";
    }
    std::string const text(200, 'a');
    kelListString captures;
    EXPECT_FALSE(internal::matchWildcards((pattern + "*b").c_str(), text.c_str(), captures));
    ASSERT_TRUE(internal::matchWildcards(pattern.c_str(), text.c_str(), captures));
    EXPECT_EQ(expected, joined(captures));
}
