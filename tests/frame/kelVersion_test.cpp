#include <kelcore/frame/kelVersion.h>

#include <gtest/gtest.h>

#include <random>

using namespace KELKIT;

TEST(kelVersion, PrintsTheFlaggedPartsAndTrimsTrailingZeros) {
    EXPECT_STREQ("0", kelVersion().toString().c_str());
    EXPECT_STREQ("1.2", kelVersion(1, 2, 0, 0).toString().c_str());
    EXPECT_STREQ("2.0.0.437", kelVersion(2, 0, 0, 437).toString().c_str());
    EXPECT_STREQ("1.2.0.0", kelVersion(1, 2, 0, 0, kelVersion::Flags(7)).toString().c_str());
    EXPECT_STREQ("1", kelVersion(1, 0, 0, 0, kelVersion::Flags(0)).toString().c_str());
    EXPECT_STREQ("7.9", kelVersion(7, 8, 9, 0, kelVersion::Flags(2 | 8)).toString().c_str());
    EXPECT_STREQ("65535.65535.65535.65535",
                 kelVersion(65535, 65535, 65535, 65535).toString().c_str());
}

TEST(kelVersion, ComparesTheCellWithBuildMostSignificant) {
    EXPECT_GT(kelVersion(1, 0, 0, 2), kelVersion(2, 0, 0, 1));
    std::mt19937 generator(7);
    std::uniform_int_distribution<int> part(0, 3); // small parts make equal ones frequent
    for (int i = 0; i < 2000; ++i) {
        int a[4], b[4];
        for (int k = 0; k < 4; ++k) {
            a[k] = part(generator);
            b[k] = part(generator);
        }
        kelVersion const left(a[0], a[1], a[2], a[3]);
        kelVersion const right(b[0], b[1], b[2], b[3], kelVersion::Flags(3));
        // Oracle: lexicographic from build down to major.
        int order = 0;
        for (int k = 3; k >= 0 && order == 0; --k) {
            order = (a[k] > b[k]) - (a[k] < b[k]);
        }
        EXPECT_EQ(order == 0, left == right);
        EXPECT_EQ(order != 0, left != right);
        EXPECT_EQ(order < 0, left < right);
        EXPECT_EQ(order <= 0, left <= right);
        EXPECT_EQ(order > 0, left > right);
        EXPECT_EQ(order >= 0, left >= right);
    }
}

TEST(kelVersion, AssignmentKeepsTheFlagsAndAccessorsReachTheFields) {
    kelVersion target(9, 9, 9, 9);
    target = kelVersion(1, 0, 0, 0, kelVersion::Flags(0));
    EXPECT_EQ(15, target.getFlags().getValue());
    EXPECT_STREQ("1", target.toString().c_str());
    kelVersion copy(kelVersion(3, 4, 5, 6, kelVersion::Flags(1)));
    EXPECT_STREQ("3.4", copy.toString().c_str()); // a copy does take the flags
    copy.getBuild() = 8;                          // a reference to the field itself
    copy.setFlags(kelVersion::Flags(kelVersion::Flags::All));
    EXPECT_STREQ("3.4.5.8", copy.toString().c_str());
}
