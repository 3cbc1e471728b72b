#include <kelcore/frame/kelPoint.h>
#include <kelcore/frame/kelSize.h>

#include <gtest/gtest.h>

using namespace KELKIT;

TEST(kelPointAndSize, HoldTwoFullWidthValues) {
    kelPoint origin;
    EXPECT_EQ(0u, origin.getX());
    EXPECT_EQ(0u, origin.getY());
    kelPoint p(7, 0xFFFFFFFFu);
    kelPoint copy(p);
    EXPECT_EQ(7u, copy.getX());
    EXPECT_EQ(0xFFFFFFFFu, copy.getY());
    origin = p;
    EXPECT_EQ(7u, origin.getX());

    kelSize none;
    EXPECT_EQ(0u, none.getWidth());
    EXPECT_EQ(0u, none.getHeight());
    kelSize s(640, 480);
    none = s;
    EXPECT_EQ(640u, none.getWidth());
    EXPECT_EQ(480u, none.getHeight());
}
