// Distances, directions and frames.
#include "polygon/points.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "polygon/tolerances.h"
#include "tests/polygon/chains.h"

namespace
{

constexpr double PI = std::numbers::pi;

TEST(Points, DistanceIsPlanar)
{
    const double a[3] = {1, 2, 100}, b[3] = {4, 6, -7};
    EXPECT_DOUBLE_EQ(pg_dist(a, b), 5.0);
    EXPECT_DOUBLE_EQ(pg_dist_sq(a, b), 25.0);
    const auto chain = make_chain({{1, 2}, {4, 6}});
    EXPECT_DOUBLE_EQ(pg_dist_sq(*chain, *chain->next), 25.0);
}

TEST(Points, SamePlaceTakesEachAxisByItself)
{
    const auto chain = make_chain({{0, 0}, {1e-6, -1e-6}, {1.1e-6, 0}, {0, 1.1e-6}});
    const pg_node* n = chain.get();
    EXPECT_TRUE(pg_same_place(*n, *n->next));
    EXPECT_FALSE(pg_same_place(*n, *n->next->next));
    EXPECT_FALSE(pg_same_place(*n, *n->next->next->next));
}

struct direction_case {
    double dx, dy, angle;
};

TEST(Points, AngleGoesRoundFromZeroToTwoPi)
{
    const direction_case cases[] = {
        {1, 0, 0},           {1, -0.0, 0},        {1, 1, PI / 4},      {0, 2, PI / 2},
        {-1, 1, 3 * PI / 4}, {-3, 0, PI},         {-3, -0.0, PI},      {-1, -1, 5 * PI / 4},
        {0, -1, 3 * PI / 2}, {1, -1, 7 * PI / 4}, {1, -1e-15, 2 * PI},
    };
    for (const direction_case& c : cases) {
        const double from[3] = {7, 8, 0}, to[3] = {7 + c.dx, 8 + c.dy, 0};
        if (c.dy > -1e-10 && c.dy < 0.0) // lost beside 8
            continue;
        EXPECT_NEAR(pg_angle(from, to), c.angle, 1e-12) << c.dx << "," << c.dy;
    }
    const double origin[3] = {}, right_down[3] = {1, -1e-15, 0};
    EXPECT_DOUBLE_EQ(pg_angle(origin, right_down), 2 * PI);
}

TEST(Points, AngleOfCoincidentPointsIsZero)
{
    const double a[3] = {640000, 5120000, 1}, b[3] = {640000, 5120000, 2};
    EXPECT_EQ(pg_angle(a, b), 0.0);
}

TEST(Points, AngleIsTheArcCosineOfDxOverD)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any(-1000, 1000);
    for (int i = 0; i < 2000; ++i) {
        const double from[3] = {any(random), any(random), 0}, to[3] = {any(random), any(random), 0};
        const double told = std::acos((to[0] - from[0]) / pg_dist(from, to));
        const double expected = to[1] - from[1] < 0 ? 2 * PI - told : told;
        ASSERT_NEAR(pg_angle(from, to), expected, 1e-7) << i;
    }
}

TEST(Points, AngleKeepsItsDigitsNearTheAxis)
{
    // An arc cosine would give 0 or 1.5e-8 here: half a metre on a radius of 30 km.
    const double from[3] = {}, to[3] = {1, 1e-9, 0};
    EXPECT_NEAR(pg_angle(from, to), 1e-9, 1e-20);
}

TEST(Points, TriangleAreaIsPositiveLeftOfTheLine)
{
    EXPECT_DOUBLE_EQ(pg_tri_area(0, 0, 4, 0, 0, 3), 6.0);
    EXPECT_DOUBLE_EQ(pg_tri_area(0, 0, 4, 0, 0, -3), -6.0);
    EXPECT_DOUBLE_EQ(pg_tri_area(0, 0, 4, 0, 9, 0), 0.0);
    EXPECT_DOUBLE_EQ(pg_tri_area(640000, 5120000, 640004, 5120000, 640000, 5120003), 6.0);
}

TEST(Points, FramePointCountsAlongAndToTheLeft)
{
    for (const place& p : PLACES) {
        const double a[3] = {p.x, p.y, 5}, b[3] = {p.x + 3, p.y + 4, 6};
        double out[3] = {9, 9, 9};
        pg_frame_point(a, b, 10, 0, out);
        EXPECT_NEAR(out[0], p.x + 6, 1e-8);
        EXPECT_NEAR(out[1], p.y + 8, 1e-8);
        EXPECT_EQ(out[2], 0.0);
        pg_frame_point(a, b, 0, 5, out);
        EXPECT_NEAR(out[0], p.x - 4, 1e-8);
        EXPECT_NEAR(out[1], p.y + 3, 1e-8);
        pg_frame_point(a, b, 5, -5, out);
        EXPECT_NEAR(out[0], p.x + 3 + 4, 1e-8);
        EXPECT_NEAR(out[1], p.y + 4 - 3, 1e-8);
    }
}

TEST(Points, RightNormalIsAUnitVectorToTheRight)
{
    const double up[3] = {0, 7, 0}, slanted[3] = {3, 4, 9};
    double n[3] = {9, 9, 9};
    pg_right_normal(up, n);
    EXPECT_DOUBLE_EQ(n[0], 1.0);
    EXPECT_DOUBLE_EQ(n[1], 0.0);
    EXPECT_EQ(n[2], 0.0);
    pg_right_normal(slanted, n);
    EXPECT_DOUBLE_EQ(n[0], 0.8);
    EXPECT_DOUBLE_EQ(n[1], -0.6);
}

TEST(Points, RightNormalTiltsVectorsAlongX)
{
    const double right[3] = {1, 0, 0}, left[3] = {-1, 0, 0}, none[3] = {};
    double n[3];
    pg_right_normal(right, n);
    EXPECT_NEAR(n[0], -1e-7, 1e-15);
    EXPECT_NEAR(n[1], -1.0, 1e-12);
    pg_right_normal(left, n);
    EXPECT_NEAR(n[0], 1e-7, 1e-15);
    EXPECT_NEAR(n[1], 1.0, 1e-12);
    pg_right_normal(none, n);
    EXPECT_DOUBLE_EQ(n[0], 1.0);
    EXPECT_DOUBLE_EQ(n[1], 0.0);
}

struct turn_case {
    const char* name;
    double p0[3], p1[3], p2[3];
    double turn_deg;
};

TEST(Points, TurnAngleIsCounterClockwiseInDegrees)
{
    const turn_case cases[] = {
        {"straight on", {-1, 0, 0}, {0, 0, 0}, {1, 0, 0}, 180},
        {"a quarter on", {1, 0, 0}, {0, 0, 0}, {0, 1, 0}, 90},
        {"a quarter back", {0, 1, 0}, {0, 0, 0}, {1, 0, 0}, 270},
        {"back on itself", {3, 4, 0}, {0, 0, 0}, {6, 8, 0}, 0},
        {"nearly upright counts as upright", {9e-7, 5, 0}, {0, 0, 0}, {-9e-7, 5, 0}, 0},
        {"just not upright", {1e-6, 1e-3, 0}, {0, 0, 0}, {0, 1, 0}, std::atan(1e-3) * 180 / PI},
        {"upright down", {0, -1, 0}, {0, 0, 0}, {1, 0, 0}, 90},
        {"across the seam", {-1, 1, 0}, {0, 0, 0}, {-1, -1, 0}, 90},
    };
    for (const turn_case& c : cases)
        EXPECT_NEAR(pg_turn_angle(c.p0, c.p1, c.p2), c.turn_deg, 1e-9) << c.name;
}

TEST(Points, TurnAngleStaysBelow360)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> any(-1, 1);
    for (int i = 0; i < 5000; ++i) {
        const double p1[3] = {any(random), any(random), 0};
        const double p0[3] = {p1[0] + any(random), p1[1] + any(random), 0};
        const double nearly[3] = {p0[0] + 1e-17, p0[1] - 1e-17, 0};
        const double p2[3] = {p1[0] + any(random), p1[1] + any(random), 0};
        for (const double* to : {p2, p0, nearly}) {
            const double turn_deg = pg_turn_angle(p0, p1, to);
            ASSERT_GE(turn_deg, 0.0) << i;
            ASSERT_LT(turn_deg, 360.0) << i;
        }
        const double sum = pg_turn_angle(p0, p1, p2) + pg_turn_angle(p2, p1, p0);
        ASSERT_NEAR(sum, 360.0, 1e-9) << i;
    }
}

} // namespace
