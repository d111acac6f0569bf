#include <WQGeneral/geometry/WQGeometry.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace wq;

TEST(Geometry, CornersWithTheYAxisGrowingUpwards)
{
    struct Case {
        WQRect rect;
        WQPoint topLeft, topRight, bottomLeft, bottomRight;
    };
    const Case cases[] = {
        {{10, 20, 30, 40}, {10, 60}, {40, 60}, {10, 20}, {40, 20}},
        {{-5.5, -2.25, 1.5, 0.75}, {-5.5, -1.5}, {-4, -1.5}, {-5.5, -2.25}, {-4, -2.25}},
        {{3, 4, 0, 0}, {3, 4}, {3, 4}, {3, 4}, {3, 4}},
        // Negative sizes are taken as they are, not normalised.
        {{0, 0, -2, -3}, {0, -3}, {-2, -3}, {0, 0}, {-2, 0}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RZTopLeftOfRect(c.rect), c.topLeft);
        EXPECT_EQ(RZTopRightOfRect(c.rect), c.topRight);
        EXPECT_EQ(RZBottomLeftOfRect(c.rect), c.bottomLeft);
        EXPECT_EQ(RZBottomRightOfRect(c.rect), c.bottomRight);
    }

    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RZTopRightOfRect({0, 0, inf, 1}).x, inf);
    EXPECT_TRUE(std::isnan(RZTopLeftOfRect({0, std::nan(""), 1, 1}).y));
}

TEST(Geometry, InsetShrinksEachSideAndMayGoNegative)
{
    EXPECT_EQ(WQInsetRect({0, 0, 100, 50}, 10, 5), (WQRect{10, 5, 80, 40}));
    EXPECT_EQ(WQInsetRect({0, 0, 10, 10}, -2, 0), (WQRect{-2, 0, 14, 10}));
    EXPECT_EQ(WQInsetRect({0, 0, 4, 4}, 3, 3), (WQRect{3, 3, -2, -2}));
}
