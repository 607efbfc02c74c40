// Where segments and arcs meet.
#include "polygon/intersect.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "polygon/arcs.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"
#include "tests/polygon/chains.h"

namespace
{

constexpr double PI = std::numbers::pi;
using point = std::array<double, 3>;

point moved(const point& p, const place& by)
{
    return {p[0] + by.x, p[1] + by.y, p[2]};
}

void expect_points(const std::vector<point>& found, const std::vector<point>& expected, const place& by,
                   double tolerance, const char* name)
{
    ASSERT_EQ(found.size(), expected.size()) << name << " at " << by.x;
    for (std::size_t i = 0; i < found.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_NEAR(found[i][k], moved(expected[i], by)[k], tolerance)
                << name << " point " << i << " at " << by.x;
}

std::vector<point> taken(int count, const point& p1, const point& p2)
{
    std::vector<point> points;
    if (count > 0)
        points.push_back(p1);
    if (count > 1)
        points.push_back(p2);
    return points;
}

// ---- two segments --------------------------------------------------------------------------------

std::vector<point> cross(const point& a1, const point& a2, const point& b1, const point& b2)
{
    point p1{7, 7, 7}, p2{7, 7, 7};
    const int count = pg_seg_intersect(a1.data(), a2.data(), b1.data(), b2.data(), p1.data(), p2.data());
    return taken(count, p1, p2);
}

struct segment_case {
    const char* name;
    point a1, a2, b1, b2;
    std::vector<point> expected;
};

TEST(SegmentIntersection, Cases)
{
    const segment_case cases[] = {
        {"crossing, z of the first", {0, 0, 10}, {10, 0, 20}, {4, -3, 99}, {4, 3, 99}, {{4, 0, 14}}},
        {"crossing aslant", {0, 0, 0}, {10, 10, 10}, {0, 10, 0}, {10, 0, 0}, {{5, 5, 5}}},
        {"apart by y, below", {0, 0, 0}, {10, 0, 0}, {0, -1, 0}, {10, -2, 0}, {}},
        {"apart by y, above", {0, 0, 0}, {10, 0, 0}, {0, 1, 0}, {10, 2, 0}, {}},
        {"crossing before the first's start", {0, 0, 0}, {10, 0, 0}, {-1, -1, 0}, {-1, 1, 0}, {}},
        {"crossing behind the first's end", {0, 0, 0}, {10, 0, 0}, {11, -1, 0}, {11, 1, 0}, {}},
        {"crossing beyond the second", {0, 0, 0}, {10, 10, 0}, {8, 2, 0}, {6, 4, 0}, {}},
        {"touching at a1 gives a1", {0, 0, 5}, {10, 0, 6}, {0, -1, 0}, {0, 1, 0}, {{0, 0, 5}}},
        {"touching at a2 gives a2 with its z", {0, 0, 5}, {10, 0, 6}, {10, -1, 0}, {10, 1, 0}, {{10, 0, 6}}},
        {"an end of the second on the first", {0, 0, 0}, {10, 0, 10}, {3, 0, 0}, {3, 5, 0}, {{3, 0, 3}}},
        {"parallel apart", {0, 0, 0}, {10, 10, 0}, {1, 0, 0}, {11, 10, 0}, {}},
        {"overlapping, clamped to the first",
         {0, 0, 0},
         {10, 0, 10},
         {4, 0, 0},
         {20, 0, 0},
         {{4, 0, 4}, {10, 0, 10}}},
        {"overlapping, the second turned",
         {0, 0, 0},
         {10, 0, 10},
         {20, 0, 0},
         {4, 0, 0},
         {{4, 0, 4}, {10, 0, 10}}},
        {"the second within the first", {0, 0, 0}, {10, 0, 10}, {2, 0, 0}, {3, 0, 0}, {{2, 0, 2}, {3, 0, 3}}},
        {"the first within the second", {0, 0, 1}, {10, 0, 2}, {-5, 0, 0}, {30, 0, 0}, {{0, 0, 1}, {10, 0, 2}}},
        {"end to end behind", {0, 0, 0}, {10, 0, 10}, {10, 0, 0}, {15, 0, 0}, {{10, 0, 10}}},
        {"end to end in front", {0, 0, 3}, {10, 0, 10}, {-5, 0, 0}, {0, 0, 0}, {{0, 0, 3}}},
        {"in line, behind", {0, 0, 0}, {10, 0, 0}, {11, 0, 0}, {15, 0, 0}, {}},
        {"in line, in front", {0, 0, 0}, {10, 0, 0}, {-15, 0, 0}, {-1, 0, 0}, {}},
        {"touching at the upper end", {0, 0, 0}, {5, 10, 10}, {5, 10, 0}, {9, 20, 0}, {{5, 10, 10}}},
        {"touching at the lower end", {0, 0, 4}, {5, 10, 10}, {0, 0, 0}, {9, -20, 0}, {{0, 0, 4}}},
        {"one end on a level with the first, crossing beyond it",
         {0, 0, 0},
         {10, 0, 0},
         {12, 0, 0},
         {15, 5, 0},
         {}},
        {"in line, upright", {0, 0, 0}, {0, 10, 10}, {0, 4, 0}, {0, 6, 0}, {{0, 4, 4}, {0, 6, 6}}},
    };
    for (const place& p : PLACES)
        for (const segment_case& c : cases)
            expect_points(cross(moved(c.a1, p), moved(c.a2, p), moved(c.b1, p), moved(c.b2, p)), c.expected, p,
                          p.x == 0 ? 1e-12 : 1e-8, c.name);
}

TEST(SegmentIntersection, TouchingEndIsTheEndItself)
{
    const point a1{0.1, 0.2, 1.3}, a2{7.7, 3.3, 9.9};
    EXPECT_EQ(cross(a1, a2, {7.7, 9, 0}, {7.7, -9, 0}).at(0), a2);
    EXPECT_EQ(cross(a1, a2, {0.1, 9, 0}, {0.1, -9, 0}).at(0), a1);
}

TEST(SegmentIntersection, ClearsZOfBothOutputsEvenWithoutAResult)
{
    const point a1{0, 0, 1}, a2{10, 0, 1}, b1{20, -1, 0}, b2{20, 1, 0};
    point p1{7, 7, 7}, p2{7, 7, 7};
    EXPECT_EQ(pg_seg_intersect(a1.data(), a2.data(), b1.data(), b2.data(), p1.data(), p2.data()), 0);
    EXPECT_EQ(p1, (point{7, 7, 0}));
    EXPECT_EQ(p2, (point{7, 7, 0}));
}

struct offset_case {
    double offset;
    std::size_t count;
};

TEST(SegmentIntersection, InLineWithinAMillionth)
{
    // Both ends of the second to the left by `offset`; the first is upright, so that no y rejects.
    for (const offset_case& c : {offset_case{0.9e-6, 2}, {1e-6, 0}, {1.1e-6, 0}, {-0.9e-6, 2}, {-1.1e-6, 0}})
        EXPECT_EQ(cross({0, 0, 0}, {0, 10, 0}, {c.offset, 2, 0}, {c.offset, 3, 0}).size(), c.count) << c.offset;
}

TEST(SegmentIntersection, EitherEndOnTheToleranceIsNotInLine)
{
    // Such a segment crosses nothing either.
    for (const double side : {1e-6, -1e-6}) {
        EXPECT_EQ(cross({0, 0, 0}, {0, 10, 0}, {side, 2, 0}, {0, 3, 0}).size(), 0u) << side;
        EXPECT_EQ(cross({0, 0, 0}, {0, 10, 0}, {0, 2, 0}, {side, 3, 0}).size(), 0u) << side;
    }
    EXPECT_EQ(cross({0, 0, 0}, {0, 10, 0}, {0.9e-6, 2, 0}, {0, 3, 0}).size(), 2u);
    EXPECT_EQ(cross({0, 0, 0}, {0, 10, 0}, {1.1e-6, 2, 0}, {0, 3, 0}).size(), 1u); // crossing
}

struct overlap_case {
    const char* name;
    double from, to; // of the second along x; the first goes from 0 to 10
    std::vector<double> expected;
};

TEST(SegmentIntersection, OverlapIsClampedAtItsLimits)
{
    const overlap_case cases[] = {
        {"up to the start", -5, 0, {0}},
        {"a hair short of the start", -5, -1e-9, {}},
        {"from the end", 10, 15, {10}},
        {"a hair behind the end", 10 + 1e-9, 15, {}},
        {"start snapped", 0.9e-6, 5, {0, 5}},
        {"start at the limit, not snapped", 1e-6, 5, {1e-6, 5}},
        {"end snapped", 5, 10 - 0.9e-6, {5, 10}},
        {"end not snapped", 5, 10 - 1.1e-6, {5, 10 - 1.1e-6}},
        {"both ends in one place", 4, 4 + 0.9e-6, {4}},
        {"both ends at the limit of one place", 0, 1e-6, {0}},
        {"both ends just apart", 4, 4 + 1.1e-6, {4, 4 + 1.1e-6}},
        {"a segment without length", 4, 4, {4}},
        {"a segment without length at the end", 10, 10, {10}},
        {"a segment without length beside the first", 11, 11, {}},
    };
    for (const overlap_case& c : cases)
        for (const bool turned : {false, true}) {
            const auto found = turned ? cross({0, 0, 0}, {10, 0, 10}, {c.to, 0, 7}, {c.from, 0, 7})
                                      : cross({0, 0, 0}, {10, 0, 10}, {c.from, 0, 7}, {c.to, 0, 7});
            ASSERT_EQ(found.size(), c.expected.size()) << c.name;
            for (std::size_t i = 0; i < found.size(); ++i) {
                EXPECT_NEAR(found[i][0], c.expected[i], 1e-14) << c.name;
                EXPECT_NEAR(found[i][2], c.expected[i], 1e-14) << c.name << ", z";
            }
        }
}

TEST(SegmentIntersection, CrossingMayLieAMillionthOutsideTheFirst)
{
    for (const offset_case& c : {offset_case{0.9e-6, 1}, {1.1e-6, 0}}) {
        EXPECT_EQ(cross({0, 0, 0}, {10, 0, 0}, {-c.offset, -1, 0}, {-c.offset, 1, 0}).size(), c.count);
        EXPECT_EQ(cross({0, 0, 0}, {10, 0, 0}, {10 + c.offset, -1, 0}, {10 + c.offset, 1, 0}).size(), c.count);
    }
}

TEST(SegmentIntersection, SnapsToAnEndWithinAMillionth)
{
    EXPECT_EQ(cross({0, 0, 0}, {10, 0, 0}, {0.9e-6, -1, 0}, {0.9e-6, 1, 0}).at(0)[0], 0.0);
    EXPECT_NEAR(cross({0, 0, 0}, {10, 0, 0}, {1.1e-6, -1, 0}, {1.1e-6, 1, 0}).at(0)[0], 1.1e-6, 1e-12);
    EXPECT_EQ(cross({0, 0, 0}, {10, 0, 0}, {1e-6, -1, 0}, {1e-6, 1, 0}).at(0)[0], 1e-6);
    EXPECT_EQ(cross({0, 0, 0}, {10, 0, 0}, {10 - 0.9e-6, -1, 0}, {10 - 0.9e-6, 1, 0}).at(0)[0], 10.0);
    EXPECT_NEAR(cross({0, 0, 0}, {10, 0, 0}, {10 - 1.1e-6, -1, 0}, {10 - 1.1e-6, 1, 0}).at(0)[0], 10 - 1.1e-6,
                1e-12);
}

TEST(SegmentIntersection, CrossingMayLieALittleBeyondTheSecond)
{
    // (e1 + e2)^2 - e^2 below 1e-6: with a length of 1, 2.5e-7 beyond its end.
    const auto beyond = [](double gap) {
        return cross({0, 0, 0}, {10, 10, 0}, {5 + gap, 5, 0}, {6 + gap, 5, 0}).size();
    };
    EXPECT_EQ(beyond(2.4e-7), 1u);
    EXPECT_EQ(beyond(2.6e-7), 0u);
}

TEST(SegmentIntersection, FindsTheCrossingOfVeryLongSegments)
{
    const double far = 3e6; // the difference of squared lengths has no digit left for 1e-6
    EXPECT_EQ(cross({-far, 0, 0}, {far, 1, 0}, {-7, -far, 0}, {13.3, far, 0}).size(), 1u);
}

TEST(SegmentIntersection, SameAnswerForTheSegmentsTurned)
{
    std::mt19937 random(23);
    std::uniform_real_distribution<double> any(-10, 10);
    int crossings = 0;
    for (const place& p : PLACES)
        for (int i = 0; i < 5000; ++i) {
            const auto one = [&] { return moved({any(random), any(random), 0}, p); };
            const point a1 = one(), a2 = one(), b1 = one(), b2 = one();
            const auto found = cross(a1, a2, b1, b2);
            crossings += static_cast<int>(found.size());
            const auto side = [](const point& u, const point& v, const point& w) {
                return pg_tri_area(u[0], u[1], v[0], v[1], w[0], w[1]) > 0;
            };
            const bool crossing = side(a1, a2, b1) != side(a1, a2, b2) && side(b1, b2, a1) != side(b1, b2, a2);
            ASSERT_EQ(found.size(), crossing ? 1u : 0u) << i;
            const auto turned = cross(a2, a1, b2, b1);
            ASSERT_EQ(turned.size(), found.size()) << i;
            if (crossing) {
                ASSERT_NEAR(found[0][0], turned[0][0], 1e-7) << i;
                ASSERT_NEAR(found[0][1], turned[0][1], 1e-7) << i;
            }
        }
    EXPECT_GT(crossings, 1000);
}

// ---- segment and arc ------------------------------------------------------------------------------

struct test_arc {
    point centre;
    double radius, start, end;
};

std::vector<point> cross(const point& a, const point& b, const test_arc& arc)
{
    point p1{7, 7, 7}, p2{7, 7, 7};
    const int count = pg_line_arc_intersect(a.data(), b.data(), arc.centre.data(), arc.radius, arc.start,
                                            arc.end, p1.data(), p2.data());
    return taken(count, p1, p2);
}

struct line_arc_case {
    const char* name;
    point a, b;
    double start, end;
    std::vector<point> expected;
};

TEST(LineArcIntersection, Cases)
{
    const double r2 = std::sqrt(0.5) * 10;
    const line_arc_case cases[] = {
        {"two points in the order of travel", {-20, 0, 5}, {20, 0, 5}, 0, 2 * PI, {{-10, 0, 0}, {10, 0, 0}}},
        {"turned", {20, 0, 5}, {-20, 0, 5}, 0, 2 * PI, {{10, 0, 0}, {-10, 0, 0}}},
        {"segment starts inside", {0, 0, 0}, {20, 0, 0}, PI, PI / 2, {{10, 0, 0}}},
        {"segment ends inside", {-20, 0, 0}, {0, 0, 0}, PI / 2, 3 * PI / 2, {{-10, 0, 0}}},
        {"segment inside", {-5, 0, 0}, {5, 0, 0}, 0, 2 * PI, {}},
        {"first point off the arc", {-20, 0, 0}, {20, 0, 0}, -PI / 2, PI / 2, {{10, 0, 0}}},
        {"second point off the arc", {-20, 0, 0}, {20, 0, 0}, PI / 2, 3 * PI / 2, {{-10, 0, 0}}},
        {"both off the arc", {-20, 0, 0}, {20, 0, 0}, 1, 2, {}},
        {"line past the circle", {-20, 11, 0}, {20, 11, 0}, 0, 2 * PI, {}},
        {"tangent", {-20, 10, 0}, {20, 10, 0}, 0, PI, {{0, 10, 0}}},
        {"tangent off the arc", {-20, 10, 0}, {20, 10, 0}, PI, 2 * PI, {}},
        {"tangent beyond the segment", {5, 10, 0}, {20, 10, 0}, 0, PI, {}},
        {"chord aslant", {r2 - 20, r2 - 20, 0}, {20, 20, 0}, 0, PI / 2, {{r2, r2, 0}}},
        {"segment ends on the arc", {0, -20, 0}, {0, -10, 0}, PI, 2 * PI, {{0, -10, 0}}},
        {"at both ends of the arc", {-20, 0, 0}, {20, 0, 0}, 0, PI, {{-10, 0, 0}, {10, 0, 0}}},
    };
    for (const place& p : PLACES)
        for (const line_arc_case& c : cases)
            expect_points(cross(moved(c.a, p), moved(c.b, p), {moved({0, 0, 0}, p), 10, c.start, c.end}),
                          c.expected, p, 1e-8, c.name);
}

TEST(LineArcIntersection, TangentWithinAMillionth)
{
    const test_arc upper{{0, 0, 0}, 10, 0, PI};
    for (const double y : {10 - 0.9e-6, 10 + 0.9e-6}) {
        const auto found = cross({-20, y, 0}, {20, y, 0}, upper);
        ASSERT_EQ(found.size(), 1u) << y;
        EXPECT_NEAR(found[0][0], 0, 1e-12);
        EXPECT_NEAR(found[0][1], y, 1e-12);
    }
    EXPECT_EQ(cross({-20, 10 - 1.1e-6, 0}, {20, 10 - 1.1e-6, 0}, upper).size(), 2u);
    EXPECT_EQ(cross({-20, 10 + 1.1e-6, 0}, {20, 10 + 1.1e-6, 0}, upper).size(), 0u);
}

TEST(LineArcIntersection, TangentOnTheTolerance)
{
    // Circles so small that their distances come out to the last bit.
    EXPECT_EQ(cross({-5, 0, 0}, {5, 0, 0}, {{0, 0, 0}, 1e-6, 0, 2 * PI}).size(), 1u);
    EXPECT_EQ(cross({-5, 2e-6, 0}, {5, 2e-6, 0}, {{0, 0, 0}, 1e-6, 0, 2 * PI}).size(), 1u);
    EXPECT_EQ(cross({-5, 0, 0}, {5, 0, 0}, {{0, 0, 0}, 1.1e-6, 0, 2 * PI}).size(), 2u);
}

TEST(LineArcIntersection, SecondPointAloneComesFirst)
{
    point p1{7, 7, 7}, p2{7, 7, 7};
    const point a{-20, 0, 0}, b{20, 0, 0}, centre{};
    EXPECT_EQ(
        pg_line_arc_intersect(a.data(), b.data(), centre.data(), 10, -PI / 2, PI / 2, p1.data(), p2.data()), 1);
    EXPECT_NEAR(p1[0], 10, 1e-12);
    EXPECT_EQ(p2, (point{7, 7, 7}));
}

TEST(LineArcIntersection, EndOfTheArcAtAngleZeroCountsFromBothSides)
{
    for (const double y : {-0.9e-6, -1e-9, 0.0, 1e-9}) {
        EXPECT_EQ(cross({5, y, 0}, {15, y, 0}, {{0, 0, 0}, 10, 0, PI / 2}).size(), 1u) << y;
        EXPECT_EQ(cross({5, -y, 0}, {15, -y, 0}, {{0, 0, 0}, 10, 3 * PI / 2, 2 * PI}).size(), 1u) << y;
        EXPECT_EQ(cross({5, -y, 0}, {15, -y, 0}, {{0, 0, 0}, 10, 3 * PI / 2, 0}).size(), 1u) << y;
    }
    EXPECT_EQ(cross({5, -1.1e-6, 0}, {15, -1.1e-6, 0}, {{0, 0, 0}, 10, 0, PI / 2}).size(), 0u);
    EXPECT_EQ(cross({5, 1.1e-6, 0}, {15, 1.1e-6, 0}, {{0, 0, 0}, 10, 3 * PI / 2, 2 * PI}).size(), 0u);
}

TEST(LineArcIntersection, SegmentMayFallShortByAMillionth)
{
    const test_arc whole{{0, 0, 0}, 10, 0, 2 * PI};
    EXPECT_EQ(cross({0, 0.5, 0}, {std::sqrt(99.75) - 0.9e-6, 0.5, 0}, whole).size(), 1u);
    EXPECT_EQ(cross({0, 0.5, 0}, {std::sqrt(99.75) - 1.1e-6, 0.5, 0}, whole).size(), 0u);
}

TEST(LineArcIntersection, ChordOfAVeryLargeCircleIsNumber)
{
    const double radius = 1e9;
    const auto found = cross({-1e6, radius - 2e-6, 0}, {1e6, radius - 2e-6, 0}, {{0, 0, 0}, radius, 0, PI});
    for (const point& p : found)
        EXPECT_TRUE(std::isfinite(p[0]) && std::isfinite(p[1]));
}

// ---- two arcs ---------------------------------------------------------------------------------------

std::vector<point> cross(const test_arc& a, const test_arc& b)
{
    point p1{7, 7, 7}, p2{7, 7, 7};
    const int count = pg_arc_arc_intersect(a.centre.data(), a.radius, a.start, a.end, b.centre.data(), b.radius,
                                           b.start, b.end, p1.data(), p2.data());
    return taken(count, p1, p2);
}

struct arc_arc_case {
    const char* name;
    test_arc a, b;
    std::vector<point> expected;
};

TEST(ArcArcIntersection, Cases)
{
    const double whole = 2 * PI;
    const arc_arc_case cases[] = {
        {"left of the line of centres first",
         {{0, 0, 0}, 5, 0, whole},
         {{8, 0, 0}, 5, 0, whole},
         {{4, 3, 0}, {4, -3, 0}}},
        {"left side off the first arc", {{0, 0, 0}, 5, PI, whole}, {{8, 0, 0}, 5, 0, whole}, {{4, -3, 0}}},
        {"left side off the second arc", {{0, 0, 0}, 5, 0, whole}, {{8, 0, 0}, 5, PI, whole}, {{4, -3, 0}}},
        {"each on one arc only", {{0, 0, 0}, 5, 0, PI}, {{8, 0, 0}, 5, PI, whole}, {}},
        {"apart", {{0, 0, 0}, 5, 0, whole}, {{11, 0, 0}, 5, 0, whole}, {}},
        {"one inside the other", {{0, 0, 0}, 5, 0, whole}, {{1, 0, 0}, 2, 0, whole}, {}},
        {"touching from outside", {{0, 0, 0}, 5, -1, 1}, {{8, 0, 0}, 3, 2, 4}, {{5, 0, 0}}},
        {"touching from inside", {{0, 0, 0}, 5, -1, 1}, {{2, 0, 0}, 3, -1, 1}, {{5, 0, 0}}},
        {"the larger second, touching", {{2, 0, 0}, 3, -1, 1}, {{0, 0, 0}, 5, -1, 1}, {{5, 0, 0}}},
        {"one circle, overlapping",
         {{0, 0, 0}, 5, 0, PI},
         {{0, 0, 0}, 5, PI / 2, 3 * PI / 2},
         {{-5, 0, 0}, {0, 5, 0}}},
        {"one circle, the second within",
         {{0, 0, 0}, 5, 0, PI},
         {{0, 0, 0}, 5, PI / 4, PI / 2},
         {{5 * std::sqrt(0.5), 5 * std::sqrt(0.5), 0}, {0, 5, 0}}},
        {"one circle, apart", {{0, 0, 0}, 5, 0, 1}, {{0, 0, 0}, 5, 2, 3}, {}},
        {"one circle, end to start",
         {{0, 0, 0}, 5, 0, PI / 2},
         {{0, 0, 0}, 5, PI / 2, PI},
         {{0, 5, 0}, {0, 5, 0}}},
        {"the same arc", {{0, 0, 0}, 5, 0, PI / 2}, {{0, 0, 0}, 5, 0, PI / 2}, {{5, 0, 0}, {0, 5, 0}}},
        {"one centre, two radii", {{0, 0, 0}, 5, 0, PI}, {{0, 0, 0}, 6, 0, PI}, {}},
    };
    for (const place& p : PLACES)
        for (const arc_arc_case& c : cases) {
            test_arc a = c.a, b = c.b;
            a.centre = moved(a.centre, p);
            b.centre = moved(b.centre, p);
            expect_points(cross(a, b), c.expected, p, 1e-8, c.name);
        }
}

TEST(ArcArcIntersection, TouchingWithinAMillionth)
{
    const auto outside = [](double gap) {
        return cross({{0, 0, 0}, 5, -1, 1}, {{8 + gap, 0, 0}, 3, 2, 4}).size();
    };
    EXPECT_EQ(outside(0.9e-6), 1u);
    EXPECT_EQ(outside(1.1e-6), 0u);
    EXPECT_EQ(outside(-0.9e-6), 1u);
    EXPECT_EQ(outside(-1e-4), 2u);
    const auto inside = [](double gap) {
        return cross({{0, 0, 0}, 5, -1, 1}, {{2 - gap, 0, 0}, 3, -1, 1}).size();
    };
    EXPECT_EQ(inside(1.1e-6), 0u);
    EXPECT_EQ(inside(-1e-4), 2u);
}

TEST(ArcArcIntersection, CentresAMillionthApartAreTwoCircles)
{
    const test_arc a{{0, 0, 0}, 5, 0, 2 * PI};
    const auto apart = cross(a, {{1e-6, 0, 0}, 5, 0, 2 * PI});
    expect_points(apart, {{0, 5, 0}, {0, -5, 0}}, PLACES[0], 1e-6, "apart");
    const auto as_one = cross(a, {{0.9e-6, 0, 0}, 5, 0, 2 * PI}); // the ends of the first
    expect_points(as_one, {{5, 0, 0}, {5, 0, 0}}, PLACES[0], 1e-6, "as one");
}

TEST(ArcArcIntersection, NearlyEqualCirclesGiveNumbersOrNothing)
{
    std::mt19937 random(29);
    std::uniform_real_distribution<double> step(-1, 1);
    for (int i = 0; i < 5000; ++i) {
        const double scale = std::pow(10.0, -2 - i % 6);
        const test_arc a{{0, 0, 0}, 10, 0, 2 * PI};
        const test_arc b{{scale * step(random), scale * step(random), 0}, 10 + scale * step(random), 0, 2 * PI};
        for (const point& p : cross(a, b)) {
            ASSERT_TRUE(std::isfinite(p[0]) && std::isfinite(p[1])) << i;
            ASSERT_NEAR(pg_dist(p.data(), a.centre.data()), 10, 1e-4) << i;
        }
    }
}

TEST(ArcArcIntersection, PointsLieOnBothCircles)
{
    std::mt19937 random(31);
    std::uniform_real_distribution<double> any(-10, 10), size(1, 10);
    int found_points = 0;
    for (const place& p : PLACES)
        for (int i = 0; i < 3000; ++i) {
            const test_arc a{moved({any(random), any(random), 0}, p), size(random), 0, 2 * PI};
            const test_arc b{moved({any(random), any(random), 0}, p), size(random), 0, 2 * PI};
            const auto found = cross(a, b);
            for (const point& q : found) {
                ASSERT_NEAR(pg_dist(q.data(), a.centre.data()), a.radius, 1e-5) << i;
                ASSERT_NEAR(pg_dist(q.data(), b.centre.data()), b.radius, 1e-5) << i;
            }
            ASSERT_EQ(cross(b, a).size(), found.size()) << i;
            found_points += static_cast<int>(found.size());
        }
    EXPECT_GT(found_points, 2000);
}

} // namespace
