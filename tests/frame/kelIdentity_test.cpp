#include <kelcore/frame/kelGuid.h>
#include <kelcore/frame/kelNumbers.h>
#include <kelcore/frame/kelRandom.h>
#include <kelcore/internal/kelRandomSeeding.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <set>
#include <thread>
#include <vector>

using namespace KELKIT;

TEST(kelRandom, MatchesThePublishedReferenceOutput) {
    // The reference run of the algorithm's authors: array seed {0x123, 0x234, 0x345, 0x456}.
    UInt32 const key[4] = {0x123, 0x234, 0x345, 0x456};
    internal::seedRandomWithKey(key, 4);
    UInt32 const reference[5] = {1067595299u, 955945823u, 477289528u, 4107218783u, 4228976476u};
    for (UInt32 want : reference) {
        EXPECT_EQ(want, kelRandom::getUInt32());
    }
    // The single-seed initialisation must agree with std::mt19937 for every seed.
    for (UInt32 seed : {0u, 1u, 5489u, 0xDEADBEEFu, 0xFFFFFFFFu}) {
        internal::seedRandomWithValue(seed);
        std::mt19937 oracle(seed);
        for (int i = 0; i < 1500; ++i) { // crosses two twists of the state
            ASSERT_EQ(oracle(), kelRandom::getUInt32()) << seed;
        }
    }
}

TEST(kelRandom, RangesRejectInsteadOfFolding) {
    EXPECT_EQ(5u, kelRandom::getUInt32(5, 5));
    kelRandom::getUInt32(0, 0xFFFFFFFFu); // the full mask must not loop
    // The range draw is the masked raw draw, redrawn while above the span (never folded).
    internal::seedRandomWithValue(3);
    std::mt19937 oracle(3);
    for (int i = 0; i < 200; ++i) {
        UInt32 r;
        do {
            r = oracle() & 7u;
        } while (r > 4);
        ASSERT_EQ(100 + r, kelRandom::getUInt32(100, 104));
    }
}

TEST(kelRandom, DoublesAndNames) {
    for (int i = 0; i < 1000; ++i) {
        double const r = kelRandom::getDouble(-2.0, 3.0);
        ASSERT_TRUE(r >= -2.0 && r <= 3.0) << r;
    }
    kelString name("old");
    kelRandom::getName(name, 64, "xy");
    EXPECT_EQ(64u, name.size());
    EXPECT_EQ(std::string::npos, std::string(name.c_str()).find_first_not_of("xy"));
    kelRandom::getName(name, 5, "");
    EXPECT_TRUE(name.empty());
    kelRandom::getName(name, 12);
    EXPECT_EQ(std::string::npos,
              std::string(name.c_str()).find_first_not_of("abcdefghijklmnopqrstuvwxyz"));
}

TEST(kelGuid, VersionBitsTextFormAndParsing) {
    kelGuid g;
    EXPECT_FALSE(g.isNull());
    std::string const text = g.toString().c_str();
    ASSERT_EQ(36u, text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool const hyphen = (i == 8 || i == 13 || i == 18 || i == 23);
        EXPECT_EQ(hyphen, text[i] == '-') << text;
        EXPECT_TRUE(hyphen || std::isxdigit(static_cast<unsigned char>(text[i]))) << text;
    }
    EXPECT_EQ('4', text[14]);                                         // version 4
    EXPECT_NE(std::string::npos, std::string("89ab").find(text[19])); // variant 10xx

    kelGuid copy;
    copy.fromString(text.c_str());
    EXPECT_TRUE(copy == g);
    std::string upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
    copy.fromString(upper.c_str());
    EXPECT_TRUE(copy == g);
    copy.fromString(text.substr(1).c_str()); // 35 characters
    EXPECT_TRUE(copy.isNull());

    copy.fromString("00112233x4455y6677z8899_aabbccddeeff"); // separators are skipped, not checked
    EXPECT_STREQ("00112233-4455-6677-8899-aabbccddeeff", copy.toString().c_str());
    copy.fromString("zz112233-4455-6677-8899-aabbccddeeff"); // not hexadecimal: strtol gives 0
    EXPECT_STREQ("00112233-4455-6677-8899-aabbccddeeff", copy.toString().c_str());

    std::set<std::string> distinct;
    for (int i = 0; i < 1000; ++i) {
        distinct.insert(kelGuid().toString().c_str());
    }
    EXPECT_EQ(1000u, distinct.size());
}

TEST(kelNumbers, SequenceNumbersAreUniqueAndIncreasingAcrossThreads) {
    kelNumbers& numbers = kelNumbers::getInstance();
    std::vector<std::vector<UInt64>> drawn(4);
    std::vector<std::thread> threads;
    for (auto& mine : drawn) {
        threads.emplace_back([&numbers, &mine] {
            for (int i = 0; i < 5000; ++i) {
                mine.push_back(numbers.getNextSequenceNumber());
            }
        });
    }
    for (std::thread& t : threads) {
        t.join();
    }
    std::vector<UInt64> all;
    for (auto const& mine : drawn) {
        EXPECT_TRUE(std::is_sorted(mine.begin(), mine.end()));
        all.insert(all.end(), mine.begin(), mine.end());
    }
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all.end(), std::adjacent_find(all.begin(), all.end()));
    kelNumbers copy(numbers); // copies share the counter
    EXPECT_GT(copy.getNextSequenceNumber(), all.back());
}

TEST(kelNumbers, NumericTextStreamAndStrict) {
    kelNumbers& n = kelNumbers::getInstance();
    EXPECT_TRUE(n.isNumeric("12abc"));
    EXPECT_TRUE(n.isNumeric("  -1.5e3"));
    EXPECT_FALSE(n.isNumeric(""));
    EXPECT_FALSE(n.isNumeric(nullptr));
    EXPECT_TRUE(n.isNumeric("-5", false, false, false)); // unsigned extraction takes a sign
    EXPECT_TRUE(n.isNumeric("7.9", false, true, false)); // reads 7, ignores the rest
    EXPECT_FALSE(n.isNumeric("99999999999999999999", false, true, false)); // beyond 64 bits

    // Strict: a sign, digits and one point, nothing else; the empty text passes.
    for (char const* yes : {"", ".", "+", "-12.5"}) {
        EXPECT_TRUE(n.isNumeric(yes, true, true, true)) << yes;
    }
    for (char const* no : {"1.2.3", "1-2", "1e5", " 1"}) {
        EXPECT_FALSE(n.isNumeric(no, true, true, true)) << no;
    }
    EXPECT_FALSE(n.isNumeric("1.5", false, true, true));
    EXPECT_FALSE(n.isNumeric("-1", true, false, true));

    UInt32 v = 0x11223344u;
    n.swapEndian(v);
    EXPECT_EQ(0x44332211u, v);
}
