// The pointer's arrow: where it stands and how it is wiped.
#include "tools/pointer_arrow.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

pl_vertex at(double x, double y, double z = 0.0)
{
    return {1, x, y, z, 0.0, nullptr, nullptr};
}

TEST(PointerArrow, StandsOnTheTipAndLooksAlongTheSegment)
{
    struct {
        pl_vertex cur, other, tip;
        double rel_angle, look_x, look_y; // where it looks
    } const cases[] = {
        {at(10, 0), at(0, 0), at(10, 0), 0.0, 1.0, 0.0},
        {at(10, 0), at(0, 0), at(10, 0), 270.0, 0.0, -1.0},
        {at(0, 0), at(10, 0), at(0, 0), 0.0, -1.0, 0.0},
        {at(0, 0), at(10, 0), at(0, 0), 360.0, -1.0, 0.0},
        {at(0, -10), at(0, 0), at(7, 3), 180.0, 0.0, 1.0},
        {at(5, 5), at(0, 0), at(5, 5), -20.0, std::cos(25 * 3.141592653589793 / 180),
         std::sin(25 * 3.141592653589793 / 180)},
        {at(4, 4), at(4, 4), at(4, 4), 90.0, 0.0, 1.0}, // a segment without length lies along x
    };
    for (const auto& c : cases) {
        ads_point p[3];
        pointer_arrow_corners(c.cur, c.other, c.tip, c.rel_angle, 5.4, p);
        EXPECT_EQ(p[0][0], c.tip.x);
        EXPECT_EQ(p[0][1], c.tip.y);
        const double base_x = c.tip.x - 5.4 * c.look_x, base_y = c.tip.y - 5.4 * c.look_y;
        EXPECT_NEAR(p[1][0], base_x - 2.0 * c.look_y, 1e-12);
        EXPECT_NEAR(p[1][1], base_y + 2.0 * c.look_x, 1e-12);
        EXPECT_NEAR(p[2][0], base_x + 2.0 * c.look_y, 1e-12);
        EXPECT_NEAR(p[2][1], base_y - 2.0 * c.look_x, 1e-12);
    }
}

TEST(PointerArrow, LiesAtTheHeightOfTheTip)
{
    ads_point p[3];
    pointer_arrow_corners(at(10, 0, 5), at(0, 0, 1), at(20, 0, 9), 0.0, 5.4, p);
    for (const ads_point& corner : p)
        EXPECT_EQ(corner[2], 9.0);
}

} // namespace
