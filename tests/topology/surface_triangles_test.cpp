#include <random>

#include "common/tolerances.h"
#include "tests/topology/surface_fixture.h"

namespace
{

struct volumes {
    double volume_above, area_above, volume_below, area_below;
};

volumes volumes_of(const SurfaceNet& net, std::int32_t id, double level)
{
    volumes v;
    net.triangle_volume(id, level, &v.volume_above, &v.area_above, &v.volume_below, &v.area_below);
    return v;
}

// All four ways in which the first two edges of a triangle can join.
TEST_F(Surface, CornersComeByHowTheFirstTwoEdgesJoin)
{
    const std::int32_t cases[4][4] = {{1, 2, 2, 3}, {1, 2, 3, 2}, {2, 1, 2, 3}, {2, 1, 3, 2}};
    for (const auto& ends : cases) {
        SurfaceNet net;
        for (const double x : {0.0, 1.0, 2.0}) {
            const double at[3] = {x, x * x, 0};
            net.intern_node(at);
        }
        const std::int32_t first = net.intern_edge(ends[0], ends[1], 0);
        const std::int32_t second = net.intern_edge(ends[2], ends[3], 0);
        ASSERT_EQ(net.new_triangle(first, second, net.intern_edge(1, 3, 0)), 1);
        std::int32_t a, b, c;
        EXPECT_EQ(net.triangle_corners(1, &a, &b, &c), 1);
        EXPECT_EQ(a, 1);
        EXPECT_EQ(b, 2);
        EXPECT_EQ(c, 3);
    }
    EXPECT_EQ(printed_text(), "");
}

TEST_F(Surface, MissingPiecesAreTold)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}});
    std::int32_t a, b, c;
    const double at[3] = {0.2, 0.2, 0};
    EXPECT_EQ(net.triangle_corners(2, &a, &b, &c), 0);
    EXPECT_EQ(printed_text(), "Null shape!!!\n");
    EXPECT_EQ(net.point_in_triangle(2, at), 0);
    EXPECT_EQ(printed_text(), "Null shape!!!\nNull nodes!!!\n");
    EXPECT_EQ(net.triangle_elevation(2, at), NO_ELEVATION);
    EXPECT_EQ(printed_text(), "Null shape!!!\nNull nodes!!!\n");
    EXPECT_EQ(net.find_triangle(at), 1);
    net.remove_node(3);
    EXPECT_EQ(net.triangle_corners(1, &a, &b, &c), 1);
    EXPECT_EQ(net.point_in_triangle(1, at), 0);
    EXPECT_EQ(net.triangle_elevation(1, at), NO_ELEVATION);
    EXPECT_EQ(printed_text(), "Null nodes!!!\nNull nodes!!!\n");
    net.remove_edge(2);
    EXPECT_EQ(net.triangle_corners(1, &a, &b, &c), 0);
    EXPECT_EQ(printed_text(), "Null edges!!!\n");
    // The cached id, and then the scan: the triangle is still there.
    EXPECT_EQ(net.find_triangle(at), -1);
    EXPECT_EQ(printed_text(), "Null edges!!!\nNull nodes!!!\nNull edges!!!\nNull nodes!!!\n");
    EXPECT_EQ(volumes_of(net, 1, 1).area_below, 0);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(Surface, ElevationIsThatOfThePlane)
{
    SurfaceNet net;
    const auto z = [](double x, double y) { return 3 + 0.25 * x - 0.5 * y; };
    add_grid(&net, 8, z);
    std::mt19937 random(1);
    std::uniform_real_distribution<> place(0, 8);
    for (int i = 0; i < 500; ++i) {
        const double at[3] = {place(random), place(random), 0};
        const std::int32_t id = net.find_triangle(at);
        ASSERT_GT(id, 0);
        EXPECT_NEAR(net.triangle_elevation(id, at), z(at[0], at[1]), 1e-13);
    }
    for (std::int32_t id = 1; id <= net.nodes.count; ++id) {
        const NodeObj* n = net.node(id);
        const double at[3] = {n->x, n->y, 0};
        EXPECT_EQ(net.triangle_elevation(net.find_triangle(at), at), n->z);
    }
}

TEST_F(Surface, ATriangleWithoutAreaHasNoElevation)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1, 0, 5}}, {{2, 0, 9}});
    const double at[3] = {0.5, 0, 0};
    EXPECT_EQ(net.find_triangle(at), 1);
    EXPECT_EQ(net.triangle_elevation(1, at), NO_ELEVATION);
}

TEST_F(Surface, PointsAreInsideByTheSumOfAreas)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{2, 0, 0}}, {{0, 2, 0}});
    const auto inside = [&](double x, double y) {
        const double at[3] = {x, y, 77};
        return net.point_in_triangle(1, at);
    };
    EXPECT_EQ(inside(0.5, 0.5), 1);
    EXPECT_EQ(inside(1, 1), 1);
    EXPECT_EQ(inside(0, 0), 1);
    EXPECT_EQ(inside(1, -4e-7), 1); // the base of 2 times it is 8e-7
    EXPECT_EQ(inside(1, -6e-7), 0);
    EXPECT_EQ(inside(3, 3), 0);
    EXPECT_EQ(inside(NAN, 0), 0);
    EXPECT_EQ(inside(INFINITY, 0), 0);
    EXPECT_EQ(printed_text(), "");
}

// Its areas are all nothing within its line, and nearly nothing beside it.
TEST_F(Surface, AThinTriangleReachesBeyondItsEdges)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{1e-3, 0, 0}}, {{0, 1e-3, 0}});
    for (int i = 0; i < 100; ++i) // so that there is an index
        add_triangle(&net, {{10.0 + i, 0, 0}}, {{11.0 + i, 0, 0}}, {{10.0 + i, 1, 0}});
    const double beside[3] = {5e-4, -9e-4, 0}, off[3] = {5e-4, -1.1e-3, 0};
    EXPECT_EQ(net.find_triangle(beside), 1);
    triangle_cache = {};
    EXPECT_EQ(net.find_triangle(off), -1);
    add_triangle(&net, {{500, 500, 0}}, {{501, 500, 0}}, {{502, 500, 0}}); // the last one, without area
    const double on_its_line[3] = {-3000, 500, 0}, far_out[3] = {1e7, 500, 0};
    EXPECT_EQ(net.find_triangle(on_its_line), 102);
    triangle_cache = {};
    EXPECT_EQ(net.find_triangle(far_out), 102);
}

TEST_F(Surface, TheFirstOfOverlappingTrianglesIsFound)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{4, 0, 0}}, {{0, 4, 0}});
    add_triangle(&net, {{0, 0, 5}}, {{4, 0, 5}}, {{0, 4, 5}});
    const double at[3] = {1, 1, 0};
    EXPECT_EQ(net.find_triangle(at), 1);
    net.remove_triangle(1);
    EXPECT_EQ(net.find_triangle(at), 2);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(Surface, TheCacheIsTriedFirst)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 0}}, {{4, 0, 0}}, {{0, 4, 0}});
    add_triangle(&net, {{0, 0, 5}}, {{4, 0, 5}}, {{0, 4, 5}});
    triangle_cache = {{2}, 1};
    const double at[3] = {1, 1, 0};
    EXPECT_EQ(net.find_triangle(at), 2);
    EXPECT_EQ(triangle_cache.count, 1); // a hit of the cache doesn't enter it
}

TEST_F(Surface, TheCacheHoldsTheLastTwenty)
{
    SurfaceNet net;
    for (int i = 0; i < 25; ++i)
        add_triangle(&net, {{10.0 * i, 0, 0}}, {{10.0 * i + 1, 0, 0}}, {{10.0 * i, 1, 0}});
    for (int i = 0; i < 25; ++i) {
        const double at[3] = {10.0 * i + 0.2, 0.2, 0};
        EXPECT_EQ(net.find_triangle(at), i + 1);
        EXPECT_EQ(triangle_cache.count, std::min(i + 1, 20));
        EXPECT_EQ(triangle_cache.ids[triangle_cache.count - 1], i + 1);
    }
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(triangle_cache.ids[i], i + 6);
    const double nowhere[3] = {5, 5, 0};
    EXPECT_EQ(net.find_triangle(nowhere), -1);
    EXPECT_EQ(triangle_cache.ids[19], 25);
}

TEST_F(Surface, TheCacheLivesOnFromOneSurfaceToAnother)
{
    const double at[3] = {0.2, 0.2, 0}, other_at[3] = {0.5, 50.5, 0};
    {
        SurfaceNet net;
        for (int i = 0; i < 30; ++i)
            add_triangle(&net, {{0, 10.0 * i, 0}}, {{1, 10.0 * i, 0}}, {{0, 10.0 * i + 1, 0}});
        EXPECT_EQ(net.find_triangle(at), 1);
        const double last[3] = {0.2, 290.2, 0};
        EXPECT_EQ(net.find_triangle(last), 30);
    }
    SurfaceNet small;
    add_triangle(&small, {{0, 50, 0}}, {{1, 50, 0}}, {{1, 51, 0}});
    add_triangle(&small, {{0, 0, 0}}, {{1, 0, 0}}, {{0, 1, 0}});
    EXPECT_EQ(small.find_triangle(at), 2);
    EXPECT_EQ(small.find_triangle(other_at), 1);
    EXPECT_EQ(triangle_cache.count, 3);
    EXPECT_EQ(printed_text(), "");
}

TEST_F(Surface, TrianglesThatComeAndGoAreFoundAndNot)
{
    SurfaceNet net;
    std::mt19937 random(7);
    std::uniform_real_distribution<> place(0, 100);
    for (int round = 0; round < 3000; ++round) {
        const double x = place(random), y = place(random);
        add_triangle(&net, {{x, y, 0}}, {{x + 3, y, 0}}, {{x, y + 3, 0}});
        if (round % 3 == 0)
            net.remove_triangle(std::uniform_int_distribution<>(1, net.triangles.count)(random));
        const double at[3] = {place(random), place(random), 0};
        triangle_cache = {};
        const std::int32_t found = net.find_triangle(at);
        std::int32_t scanned = -1;
        for (std::int32_t id = 1; id <= net.triangles.count && scanned < 0; ++id)
            if (net.triangle(id) && net.point_in_triangle(id, at))
                scanned = id;
        ASSERT_EQ(found, scanned) << "round " << round;
    }
    EXPECT_EQ(printed_text(), "");
}

struct volume_case {
    const char* name;
    double z[3];
    double level;
    volumes expected;
};

// A triangle with legs of 2 and so an area of 2.
const volume_case volume_cases[] = {
    {"level above all", {1, 2, 3}, 5, {0, 0, 6, 2}},
    {"level at the highest", {1, 2, 3}, 3, {0, 0, 2, 2}},
    {"level below all", {1, 2, 3}, 0, {4, 2, 0, 0}},
    {"level at the lowest", {1, 2, 3}, 1, {2, 2, 0, 0}},
    {"flat, above", {2, 2, 2}, 3, {0, 0, 2, 2}},
    {"flat, at it", {2, 2, 2}, 2, {0, 0, 0, 2}},
    {"flat, below", {2, 2, 2}, 1, {2, 2, 0, 0}},
    {"level at the middle", {0, 1, 2}, 1, {1.0 / 3, 1, 1.0 / 3, 1}},
    // A quarter of the side below: half the way to each of both high corners.
    {"one corner below", {0, 2, 2}, 1, {5.0 / 6, 1.5, 1.0 / 6, 0.5}},
    {"one corner above", {0, 0, 2}, 1, {1.0 / 6, 0.5, 5.0 / 6, 1.5}},
    {"two low ones level", {1, 1, 4}, 2, {16.0 / 27, 8.0 / 9, 16.0 / 27, 10.0 / 9}},
};

TEST_F(Surface, VolumesOfEachCase)
{
    for (const volume_case& c : volume_cases) {
        SCOPED_TRACE(c.name);
        SurfaceNet net;
        add_triangle(&net, {{0, 0, c.z[0]}}, {{2, 0, c.z[1]}}, {{0, 2, c.z[2]}});
        const volumes v = volumes_of(net, 1, c.level);
        EXPECT_NEAR(v.volume_above, c.expected.volume_above, 1e-12);
        EXPECT_NEAR(v.area_above, c.expected.area_above, 1e-12);
        EXPECT_NEAR(v.volume_below, c.expected.volume_below, 1e-12);
        EXPECT_NEAR(v.area_below, c.expected.area_below, 1e-12);
    }
}

// What lies above less what lies below is the prism between the triangle and the level.
TEST_F(Surface, VolumesAddUpToThePrism)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<> number(-10, 10);
    for (int i = 0; i < 2000; ++i) {
        SurfaceNet net;
        place p[3];
        for (place& corner : p)
            corner = {{number(random), number(random), number(random)}};
        const double area = pg_tri_area(p[0].at[0], p[0].at[1], p[1].at[0], p[1].at[1], p[2].at[0], p[2].at[1]);
        if (area < 0)
            std::swap(p[0], p[1]);
        ASSERT_EQ(add_triangle(&net, p[0], p[1], p[2]), 1);
        const double level = number(random);
        const volumes v = volumes_of(net, 1, level);
        const double mean = (p[0].at[2] + p[1].at[2] + p[2].at[2]) / 3;
        EXPECT_NEAR(v.volume_above - v.volume_below, (mean - level) * std::fabs(area), 1e-10);
        EXPECT_NEAR(v.area_above + v.area_below, std::fabs(area), 1e-10);
        EXPECT_GE(v.volume_above, 0);
        EXPECT_GE(v.volume_below, 0);
    }
}

// The part above the level by a fine sum over the triangle.
TEST_F(Surface, VolumeAboveIsThatOfASum)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 1}}, {{1, 0, 4}}, {{0, 1, 2.5}});
    constexpr int FINE = 1000;
    for (const double level : {1.5, 2.5, 3.25}) {
        double sum = 0;
        for (int i = 0; i < FINE; ++i)
            for (int j = 0; i + j < FINE; ++j) {
                const double x = (i + 1.0 / 3) / FINE, y = (j + 1.0 / 3) / FINE;
                const double cells = i + j + 1 < FINE ? 1.0 : 0.5;
                sum += std::max(0.0, 1 + 3 * x + 1.5 * y - level) * cells / FINE / FINE;
            }
        EXPECT_NEAR(volumes_of(net, 1, level).volume_above, sum, 2e-3);
    }
}

TEST_F(Surface, AClockwiseTriangleHasNegativeVolumes)
{
    SurfaceNet net;
    add_triangle(&net, {{0, 0, 1}}, {{0, 2, 2}}, {{2, 0, 3}});
    EXPECT_NEAR(volumes_of(net, 1, 5).volume_below, -6, 1e-12);
    EXPECT_NEAR(volumes_of(net, 1, 5).area_below, -2, 1e-12);
    EXPECT_NEAR(volumes_of(net, 1, 0).volume_above, -4, 1e-12);
    EXPECT_EQ(volumes_of(net, 1, 2).volume_above, 0);
    EXPECT_EQ(volumes_of(net, 1, 2).volume_below, 0);
    EXPECT_NEAR(volumes_of(net, 1, 2).area_above, -1, 1e-12);
}

TEST_F(Surface, WhatIsNoTriangleHasNoVolume)
{
    const SurfaceNet net;
    const volumes v = volumes_of(net, 1, 0);
    EXPECT_EQ(v.volume_above, 0);
    EXPECT_EQ(v.area_above, 0);
    EXPECT_EQ(v.volume_below, 0);
    EXPECT_EQ(v.area_below, 0);
}

} // namespace
