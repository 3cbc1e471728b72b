#include <kelcore/frame/kelPoint.h>
#include <kelcore/frame/kelSize.h>

#include <gtest/gtest.h>

using namespace KELKIT;

TEST(kelPointAndSize, HoldTwoFullWidthValues) {
    kelPoint p(7, 0xFFFFFFFFu);
    kelPoint copy(p);
    EXPECT_EQ(0xFFFFFFFFu, copy.getY());
    kelSize s(0xFFFFFFFFu, 480);
    kelSize none;
    none = s;
    EXPECT_EQ(0xFFFFFFFFu, none.getWidth());
}
