// A ray and a chain: the first segment in the chain's order that it meets.
#include "tools/ray_hit_chain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/core/heap.h"
#include "tests/drawing/chains.h"

namespace
{

pl_vertex at(double x, double y, double z = 0.0)
{
    return {1, x, y, z, 0.0, nullptr, nullptr};
}

// Hit of the ray from `from` through `through`; none: an empty list.
std::vector<corner> hit(const pl_vertex& from, const pl_vertex& through, const std::vector<corner>& chain)
{
    const vertex_chain boundary = make_vertices(chain);
    const pl_vertex a = through;
    const vertex_chain found(ray_hit_chain(a, from, boundary.get()));
    EXPECT_TRUE(corners_of(boundary.get()) == chain);
    EXPECT_TRUE(a.x == through.x && a.y == through.y);
    return corners_of(found.get());
}

void expect_hit(const std::vector<corner>& found, double x, double y, double z, const char* name)
{
    ASSERT_EQ(found.size(), 1u) << name;
    EXPECT_NEAR(found[0].x, x, 1e-6) << name;
    EXPECT_NEAR(found[0].y, y, 1e-6) << name;
    EXPECT_NEAR(found[0].z, z, 1e-6) << name;
}

struct ray_case {
    const char* name;
    pl_vertex from, through;
    std::vector<corner> chain;
    corner expected;
};

TEST(RayHitChain, Hits)
{
    const ray_case cases[] = {
        {"slanting edge", at(0, 0), at(10, 0), {{20, -5}, {30, 5}}, {25, 0}},
        {"edge along y", at(0, 0), at(10, 5), {{20, 0}, {20, 50}}, {20, 10}},
        {"ray along y", at(3, 0), at(3, 1), {{0, 10}, {10, 20}}, {3, 13}},
        {"ray down", at(3, 0), at(3, -1), {{0, -10}, {10, -10}}, {3, -10}},
        {"ray backward", at(10, 0), at(0, 0), {{-20, -5}, {-20, 5}}, {-20, 0}},
        {"between the ray's own points", at(0, 0), at(10, 0), {{5, -5}, {6, 5}}, {5.5, 0}},
        {"start of the edge", at(0, 0), at(10, 0), {{20, 0}, {30, 10}}, {20, 0}},
        {"end of the edge", at(0, 0), at(10, 0), {{30, 10}, {20, 0}}, {20, 0}},
        {"the ray's start", at(0, 0), at(10, 0), {{0, -5}, {0, 5}}, {0, 0}},
        {"the first, not the nearest", at(0, 0), at(10, 0), {{50, -5}, {50, 5}, {20, 5}, {20, -5}}, {50, 0}},
        {"behind segments that are missed",
         at(0, 0),
         at(10, 0),
         {{50, 9}, {60, 9}, {60, 5}, {60, -5}},
         {60, 0}},
        {"height on the ray", at(0, 0, 5), at(10, 0, 6), {{20, -5, 99}, {20, 5, 99}}, {20, 0, 7}},
        {"height on a ray along y", at(0, 0, 5), at(0, 10, 6), {{-5, 30}, {5, 30}}, {0, 30, 8}},
        {"an arc's chord", at(0, 0), at(10, 0), {{20, -5, 0, 1.0}, {20, 5}}, {20, 0}},
    };
    for (const ray_case& c : cases)
        expect_hit(hit(c.from, c.through, c.chain), c.expected.x, c.expected.y, c.expected.z, c.name);
}

TEST(RayHitChain, Misses)
{
    const ray_case cases[] = {
        {"behind", at(0, 0), at(10, 0), {{-20, -5}, {-20, 5}}, {}},
        {"beside", at(0, 0), at(10, 0), {{20, 1}, {20, 5}}, {}},
        {"beside, slanting", at(0, 0), at(10, 0), {{20, 1}, {30, 5}}, {}},
        {"ray along y, beside", at(0, 0), at(0, 1), {{1, 5}, {9, 5}}, {}},
        {"ray along y, behind", at(0, 0), at(0, 1), {{-1, -5}, {1, -5}}, {}},
        {"two along y", at(0, 0), at(0, 1), {{0, 5}, {0, 9}}, {}},
        {"two along y, apart", at(0, -1), at(0, 1), {{5, -5}, {5, 9}}, {}},
        {"parallel", at(0, 0), at(10, 10), {{100, 0}, {200, 100}}, {}},
        {"one vertex", at(0, 0), at(10, 0), {{20, 0}}, {}},
        {"none", at(0, 0), at(10, 0), {}, {}},
        {"ray without length beside", at(1, 1), at(1, 1), {{5, 5}, {6, 7}}, {}},
    };
    for (const ray_case& c : cases)
        EXPECT_TRUE(hit(c.from, c.through, c.chain).empty()) << c.name;
}

TEST(RayHitChain, EqualSlopesMeetWhereTheirSmallDifferencePutsThem)
{
    // Both along x at the same height: the place is x = 0, if that lies on both.
    expect_hit(hit(at(-10, 3), at(-5, 3), {{-1, 3}, {8, 3}}), 0.0, 3.0, 0.0, "on both");
    EXPECT_TRUE(hit(at(1, 3), at(5, 3), {{10, 3}, {18, 3}}).empty());
}

TEST(RayHitChain, HitsFarOutStayNumbers)
{
    expect_hit(hit(at(-1e308, 0), at(1e308, 0), {{5, -5}, {6, 5}}), 5.5, 0.0, 0.0, "along x");
    expect_hit(hit(at(0, -1e308), at(0, 1e308), {{-9, 5}, {9, 5}}), 0.0, 5.0, 0.0, "along y");
}

TEST(RayHitChain, MissesGiveAllBlocksBack)
{
    const std::size_t blocks = host::heap_live_blocks();
    hit(at(0, 0), at(10, 0), {{20, -5}, {20, 5}});
    hit(at(0, 0), at(10, 0), {{-20, -5}, {-20, 5}});
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

// Far from the origin and in all directions: the hit lies on the ray and on a segment.
TEST(RayHitChain, HitsLieOnRayAndSegment)
{
    std::mt19937 random(20000);
    std::uniform_real_distribution<double> spread(-100.0, 100.0);
    int hits = 0;
    for (int round = 0; round < 2000; ++round) {
        const place origin = PLACES[round % 2];
        const auto some = [&] { return at(origin.x + spread(random), origin.y + spread(random)); };
        const pl_vertex from = some(), through = some(), s = some(), t = some();
        const std::vector<corner> found = hit(from, through, {{s.x, s.y}, {t.x, t.y}});
        const auto side = [](const pl_vertex& p, const pl_vertex& q, double x, double y) {
            return ((q.x - p.x) * (y - p.y) - (q.y - p.y) * (x - p.x)) / std::hypot(q.x - p.x, q.y - p.y);
        };
        const auto turned = [&](const pl_vertex& p) { return side(from, through, p.x, p.y); };
        if (found.empty())
            continue;
        ++hits;
        EXPECT_NEAR(side(s, t, found[0].x, found[0].y), 0.0, 1e-3);
        EXPECT_NEAR(side(from, through, found[0].x, found[0].y), 0.0, 1e-3);
        EXPECT_LE(turned(s) * turned(t), 1e-6);
        EXPECT_GE((found[0].x - from.x) * (through.x - from.x), -1e-6);
    }
    EXPECT_GT(hits, 200);
}

} // namespace
