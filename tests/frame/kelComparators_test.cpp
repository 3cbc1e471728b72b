#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/strings/kelString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace KELKIT;

TEST(kelDefaultComparator, GivesMinusOneZeroOneAndZeroForNull) {
    kelDefaultComparator<kelString> cmp;
    kelString const a("apple"), z("zebra"), empty;
    EXPECT_EQ(-1, cmp.compare(&a, &z)); // not the byte difference
    EXPECT_EQ(1, cmp.compare(&z, &a));
    EXPECT_EQ(0, cmp.compare(nullptr, &a));
    EXPECT_EQ(0, cmp.compare(&a, nullptr));
    EXPECT_EQ(-1, cmp.compare(&empty, &a));
}

TEST(kelReverseComparator, NegatesTheWrappedOrder) {
    kelDefaultComparator<kelString> cmp;
    kelReverseComparator rev(cmp);
    kelString const a("a");
    EXPECT_EQ(0, rev.compare(nullptr, &a));

    // Used as a sort key it must give the exact reverse of the forward order.
    std::vector<kelString> words = {"pear", "fig", "apple", "kiwi", "date", "banana"};
    std::vector<kelString> forward = words;
    std::sort(forward.begin(), forward.end(),
              [&](kelString const& x, kelString const& y) { return cmp.compare(&x, &y) < 0; });
    std::sort(words.begin(), words.end(),
              [&](kelString const& x, kelString const& y) { return rev.compare(&x, &y) < 0; });
    std::reverse(forward.begin(), forward.end());
    EXPECT_EQ(forward, words);
}

TEST(kelReverseComparator, SurvivesTheMostNegativeResult) {
    struct Extreme : kelIComparator {
        int compare(void const*, void const*) const override { return INT_MIN; }
    } extreme;
    kelReverseComparator rev(extreme);
    EXPECT_GT(rev.compare(nullptr, nullptr), 0);
}
