// Angles of the pointer tool: turns, directions, bearings by their codes.
#include "tools/pointer_angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{

constexpr double PI = std::numbers::pi;

pl_vertex at(double x, double y)
{
    return {1, x, y, 0.0, 0.0, nullptr, nullptr};
}

TEST(RotateAngle, IsBroughtBackOnce)
{
    struct {
        double angle, delta, expected;
    } const cases[] = {
        {0.0, 90.0, 90.0},   {0.0, -90.0, 270.0}, {270.0, 90.0, 360.0}, // a full turn stays one
        {271.0, 90.0, 1.0},  {90.0, -90.0, 0.0},  {45.0, -720.0, -315.0}, {45.0, 720.0, 405.0},
        {0.0, 360.0, 360.0}, {0.0, 0.0, 0.0},     {10.0, -0.5, 9.5},      {10.0, -10.5, 359.5},
    };
    for (const auto& c : cases)
        EXPECT_EQ(rotate_angle(c.angle, c.delta), c.expected) << c.angle << " + " << c.delta;
}

TEST(DirectionInCircle, FullTurnIsNone)
{
    const double cases[][2] = {{0, 0},    {90, 90},  {359.5, 359.5}, {360, 0},   {360.5, 0.5},
                               {-1, 359}, {-360, 0}, {720, 360},     {-400, -40}};
    for (const auto& c : cases)
        EXPECT_EQ(direction_in_circle(c[0]), c[1]) << c[0];
}

TEST(PointerDirection, GoesRoundFromTheXAxis)
{
    struct {
        double x, y, expected;
    } const cases[] = {
        {1.0, 0.0, 0.0}, {1.0, 1.0, PI / 4},       {0.0, 2.0, PI / 2},    {-3.0, 3.0, 3 * PI / 4},
        {-1.0, 0.0, PI}, {-1.0, -1.0, 5 * PI / 4}, {0.0, -1.0, 1.5 * PI}, {1.0, -1.0, 7 * PI / 4},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(point_angle(at(0, 0), at(c.x, c.y)), c.expected, 1e-15) << c.x << "," << c.y;
        EXPECT_NEAR(point_angle(at(640000, 5120000), at(640000 + c.x, 5120000 + c.y)), c.expected, 1e-15);
        EXPECT_NEAR(direction_degrees(at(0, 0), at(c.x, c.y)), c.expected * 180.0 / PI, 1e-12);
    }
}

TEST(PointerDirection, HeightDoesntCount)
{
    pl_vertex high = at(0.0, 5.0);
    high.z = 100.0;
    EXPECT_DOUBLE_EQ(point_angle(at(0, 0), high), PI / 2);
}

TEST(PointerDirection, OnlyNoDistanceAtAllIsZero)
{
    EXPECT_EQ(point_angle(at(3, 4), at(3, 4)), 0.0);
    for (const double tiny : {1e-7, 1e-9, 1e-15, 1e-150})
        EXPECT_NEAR(point_angle(at(0, 0), at(0, tiny)), PI / 2, 1e-12) << tiny;
    // Squares that vanish leave no distance; those that nearly do a rough direction, but no wrong one.
    EXPECT_EQ(point_angle(at(0, 0), at(0, 1e-200)), 0.0);
    for (double tiny = 1e-150; tiny > 1e-161; tiny /= 3.0)
        EXPECT_NEAR(point_angle(at(0, 0), at(-tiny, 0)), PI, 0.5) << tiny;
}

TEST(BearingTurn, CodesAgainstTheSegment)
{
    struct {
        int code;
        double degrees, base, expected;
    } const cases[] = {
        {1, 30.0, 0.0, 60.0},     {1, 30.0, 100.0, 320.0}, {2, 30.0, 0.0, 300.0},
        {2, 30.0, 310.0, 350.0},  {3, 30.0, 0.0, 240.0},   {3, 30.0, 250.0, 350.0},
        {4, 30.0, 0.0, 120.0},    {4, 30.0, 90.0, 30.0},   {5, 30.0, 0.0, 60.0},
        {5, 200.0, 0.0, 250.0},   {5, 350.0, 45.0, 55.0},  {5, 90.0, 350.0, 10.0},
        {6, 30.0, 123.0, 210.0},  {6, 200.0, 123.0, 20.0}, {7, 30.0, 123.0, 150.0},
        {7, 200.0, 123.0, -20.0}, // brought back once only
        {8, 30.0, 123.0, 30.0},   {8, 370.0, 0.0, 10.0},   {9, 30.0, 123.0, 330.0},
        {9, 0.0, 123.0, 0.0},     {2, 90.0, 0.0, 360.0}, // a full turn stays one
        {0, 30.0, 0.0, 60.0},     {10, 30.0, 0.0, 60.0},   {-1, 30.0, 0.0, 60.0},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(bearing_turn(c.code, c.degrees, c.base), c.expected)
            << c.code << " " << c.degrees << " against " << c.base;
}

TEST(BearingTurn, QuadrantsLookWhereTheySay)
{
    // Whatever the segment's direction, turn and segment together give the bearing's direction.
    const double expected[] = {60.0, 300.0, 240.0, 120.0, 60.0};
    for (int code = 1; code <= 5; ++code)
        for (double base = 0.0; base < 360.0; base += 7.3) {
            const double all = bearing_turn(code, 30.0, base) + base;
            EXPECT_NEAR(std::fmod(all + 360.0, 360.0), expected[code - 1], 1e-9) << code << " " << base;
        }
}

} // namespace
