#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "hostapi/ads.h"

namespace
{

constexpr double pi = std::numbers::pi;

TEST(Utilities, AngleIsBetweenZeroAndTwoPi)
{
    const ads_point o = {0, 0, 0}, e = {1, 0, 5}, n = {0, 2, 0}, w = {-1, 0, 0}, s = {0, -1, 0};
    EXPECT_EQ(acutAngle(o, e), 0);
    EXPECT_DOUBLE_EQ(acutAngle(o, n), pi / 2);
    EXPECT_DOUBLE_EQ(acutAngle(o, w), pi);
    EXPECT_DOUBLE_EQ(acutAngle(o, s), 3 * pi / 2);
}

TEST(Utilities, PolarKeepsElevationAndMayWriteOnItsInput)
{
    ads_point p = {1, 2, 7};
    acutPolar(p, pi / 2, 3, p);
    EXPECT_NEAR(p[0], 1, 1e-15);
    EXPECT_DOUBLE_EQ(p[1], 5);
    EXPECT_EQ(p[2], 7);
}

TEST(Utilities, CrossingOfLinesAndSegments)
{
    const ads_point a = {0, 0, 0}, b = {10, 10, 0}, c = {0, 10, 0}, d = {10, 0, 0}, e = {20, 0, 0},
                    f = {20, 5, 0};
    ads_point out;
    ASSERT_EQ(acdbInters(a, b, c, d, 1, out), RTNORM);
    EXPECT_DOUBLE_EQ(out[0], 5);
    EXPECT_DOUBLE_EQ(out[1], 5);
    EXPECT_EQ(acdbInters(a, b, e, f, 1, out), RTERROR);
    ASSERT_EQ(acdbInters(a, b, e, f, 0, out), RTNORM);
    EXPECT_DOUBLE_EQ(out[0], 20);
    EXPECT_DOUBLE_EQ(out[1], 20);
    const ads_point g = {1, 0, 0}, h = {11, 10, 0};
    EXPECT_EQ(acdbInters(a, b, g, h, 0, out), RTERROR);
    const ads_point c5 = {0, 10, 5}, d5 = {10, 0, 5};
    EXPECT_EQ(acdbInters(a, b, c5, d5, 0, out), RTERROR);
}

} // namespace
