#include <kelcore/frame/kelDefaultComparator.h>
#include <kelcore/frame/kelReverseComparator.h>
#include <kelcore/strings/kelString.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace KELKIT;

TEST(kelDefaultComparator, GivesMinusOneZeroOneAndZeroForNull) {
    kelDefaultComparator<kelString> cmp;
    kelString const a("apple"), z("zebra");
    EXPECT_EQ(-1, cmp.compare(&a, &z)); // not the byte difference
    EXPECT_EQ(0, cmp.compare(nullptr, &a));
    EXPECT_EQ(0, cmp.compare(&a, nullptr));
}

TEST(kelReverseComparator, NegatesTheWrappedOrder) {
    kelDefaultComparator<kelString> cmp;
    kelReverseComparator rev(cmp);
    kelString const a("a");
    EXPECT_EQ(0, rev.compare(nullptr, &a));

    // Over all pairs: the sign of the byte order, and its negation.
    std::vector<std::string> const words = {"pear", "fig", "apple", "", "figs", "Fig"};
    for (std::string const& x : words) {
        for (std::string const& y : words) {
            kelString const kx(x.c_str()), ky(y.c_str());
            int const want = (x > y) - (x < y);
            EXPECT_EQ(want, cmp.compare(&kx, &ky)) << x << " " << y;
            EXPECT_EQ(-want, rev.compare(&kx, &ky)) << x << " " << y;
        }
    }
}

TEST(kelReverseComparator, SurvivesTheMostNegativeResult) {
    struct Extreme : kelIComparator {
        int compare(void const*, void const*) const override { return INT_MIN; }
    } extreme;
    kelReverseComparator rev(extreme);
    EXPECT_GT(rev.compare(nullptr, nullptr), 0);
}
