// The circle of an arc segment.
#include "drawing/segment_arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "tests/drawing/chains.h"

namespace
{

constexpr double PI = std::numbers::pi;

struct arc_case {
    const char* name;
    double bulge, centre_y, radius, from, to;
};

TEST(SegmentArc, Cases)
{
    const double t8 = std::tan(PI / 8), r2 = std::sqrt(2.0);
    const arc_case cases[] = {
        {"half circle", 1, 0, 1, PI, 2 * PI},
        {"half circle clockwise", -1, 0, 1, 0, PI},
        {"quarter", t8, 1, r2, 5 * PI / 4, 7 * PI / 4},
        {"quarter clockwise", -t8, -1, r2, PI / 4, 3 * PI / 4},
        {"three quarters", 1 / t8, -1, r2, 3 * PI / 4, 9 * PI / 4},
        {"three quarters clockwise", -1 / t8, 1, r2, 7 * PI / 4, 13 * PI / 4},
    };
    for (const place& p : PLACES)
        for (const arc_case& c : cases) {
            const auto chain = make_vertices({{-1, 0, 5, c.bulge}, {1, 0, 7}}, p.x, p.y);
            const segment_arc arc = arc_of_segment(*chain, *chain->next);
            // The normal of a chord along x is tilted by 1e-7 in 2.
            EXPECT_NEAR(arc.centre[0], p.x, 1e-7) << c.name;
            EXPECT_NEAR(arc.centre[1], p.y + c.centre_y, 1e-8) << c.name;
            EXPECT_NEAR(arc.radius, c.radius, 1e-12) << c.name;
            EXPECT_NEAR(std::remainder(arc.from - c.from, 2 * PI), 0, 1e-7) << c.name;
            EXPECT_NEAR(arc.to - arc.from, c.to - c.from, 1e-7) << c.name;
        }
}

TEST(SegmentArc, OfAnUprightChord)
{
    const double t8 = std::tan(PI / 8), r2 = std::sqrt(2.0);
    struct {
        double bulge, centre_x;
    } const cases[] = {{t8, -1}, {-t8, 1}, {1 / t8, 1}, {-1 / t8, -1}, {1, 0}, {-1, 0}};
    for (const auto& c : cases) {
        const auto chain = make_vertices({{0, -1, 0, c.bulge}, {0, 1}});
        const segment_arc arc = arc_of_segment(*chain, *chain->next);
        EXPECT_NEAR(arc.centre[0], c.centre_x, 1e-14) << c.bulge;
        EXPECT_NEAR(arc.centre[1], 0, 1e-14) << c.bulge;
        EXPECT_NEAR(arc.radius, c.centre_x == 0 ? 1 : r2, 1e-14) << c.bulge;
    }
}

TEST(SegmentArc, OfAChordAlongXHasTheTiltOfItsNormal)
{
    const double t8 = std::tan(PI / 8);
    const auto chain = make_vertices({{0, 0, 0, t8}, {2, 0}});
    const segment_arc right = arc_of_segment(*chain, *chain->next);
    EXPECT_NEAR(right.centre[0], 1 + 5e-8, 1e-14);
    const auto back = make_vertices({{2, 0, 0, t8}, {0, 0}});
    const segment_arc left = arc_of_segment(*back, *back->next);
    EXPECT_NEAR(left.centre[0], 1 - 5e-8, 1e-14);
}

TEST(SegmentArc, EndsLieOnTheCircleAndTheSweepIsFourTimesTheAngleOfTheBulge)
{
    std::mt19937 random(61);
    std::uniform_real_distribution<double> any(-100, 100), size(-6, 6);
    for (int i = 0; i < 5000; ++i) {
        const double bulge = std::pow(10.0, size(random) / 2) * (i % 2 ? 1 : -1);
        const auto chain = make_vertices({{any(random), any(random), 0, bulge}, {any(random), any(random)}});
        const pl_vertex &a = *chain, &b = *chain->next;
        const segment_arc arc = arc_of_segment(a, b);
        ASSERT_NEAR(std::hypot(a.x - arc.centre[0], a.y - arc.centre[1]), arc.radius, 1e-9 * arc.radius) << i;
        ASSERT_NEAR(std::hypot(b.x - arc.centre[0], b.y - arc.centre[1]), arc.radius, 1e-9 * arc.radius) << i;
        ASSERT_NEAR(arc.to - arc.from, 4 * std::atan(std::fabs(bulge)), 1e-6) << i;
        ASSERT_GE(arc.from, 0.0) << i;
        ASSERT_LE(arc.from, 2 * PI) << i;
    }
}

// The normal worked out by quadrants, as it is defined.
void normal_by_quadrants(double* d, double* normal)
{
    if (d[1] == 0.0)
        d[1] = d[0] <= 0.0 ? 1e-7 : -1e-7;
    double length = std::hypot(d[0], d[1]);
    if (length == 0.0)
        length = 1e-7;
    d[0] *= 5.0 / length;
    d[1] *= 5.0 / length;
    normal[0] = d[1] >= 0.0 ? 1.0 : -1.0;
    normal[1] = -d[0] / d[1];
    if ((d[0] > 0.0 && normal[1] > 0.0) || (d[0] < 0.0 && normal[1] < 0.0))
        normal[1] = -normal[1];
    const double size = std::hypot(normal[0], normal[1]);
    normal[0] /= size;
    normal[1] /= size;
}

TEST(ScaledNormal, IsTheRightHandUnitNormalInEachQuadrant)
{
    const double vectors[][2] = {{3, 4}, {3, -4}, {-3, -4}, {-3, 4},   {0, 2},      {0, -2},
                                 {5, 0}, {-5, 0}, {0, 0},   {1, 1e-9}, {-1, -1e-9}, {640000, 5120000}};
    for (const auto& v : vectors) {
        double d[2] = {v[0], v[1]}, e[2] = {v[0], v[1]}, normal[2], expected[2];
        scaled_normal(d, normal);
        normal_by_quadrants(e, expected);
        for (int i = 0; i < 2; ++i) {
            EXPECT_NEAR(normal[i], expected[i], 1e-12) << v[0] << "," << v[1];
            EXPECT_NEAR(d[i], e[i], 1e-12) << v[0] << "," << v[1];
        }
        EXPECT_NEAR(std::hypot(d[0], d[1]), 5.0, 1e-12);
        EXPECT_NEAR(std::hypot(normal[0], normal[1]), 1.0, 1e-12);
    }
}

TEST(ScaledNormal, VectorsAlongXLeanToADefiniteSide)
{
    double right[2] = {5, 0}, left[2] = {-5, 0}, normal[2];
    scaled_normal(right, normal);
    EXPECT_NEAR(normal[0], -2e-8, 1e-15);
    EXPECT_NEAR(normal[1], -1.0, 1e-12);
    scaled_normal(left, normal);
    EXPECT_NEAR(normal[0], 2e-8, 1e-15);
    EXPECT_NEAR(normal[1], 1.0, 1e-12);
}

} // namespace
