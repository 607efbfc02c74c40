// Arcs into chords, and chains with fewer vertices.
#include "drawing/stroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "drawing/segment_arc.h"
#include "host/core/heap.h"
#include "tests/drawing/chains.h"
#include "tests/growth.h"

namespace
{

constexpr double PI = std::numbers::pi;
using corners = std::vector<corner>;

int count_of(const pl_vertex* chain)
{
    return static_cast<int>(corners_of(chain).size());
}

// Thinning as it is told: full passes with a triple that moves on by one after a removal.
corners thinned_by_full_passes(corners chain, double tolerance)
{
    if (chain.size() < 2)
        return chain;
    for (bool removed = true; removed;) {
        removed = false;
        for (std::size_t i = 0; i + 2 < chain.size(); ++i) {
            const corner &a = chain[i], &b = chain[i + 1], &c = chain[i + 2];
            const double ac[3] = {c.x - a.x, c.y - a.y, c.z - a.z}, ab[3] = {b.x - a.x, b.y - a.y, b.z - a.z};
            const double t = (ac[0] * ab[0] + ac[1] * ab[1] + ac[2] * ab[2]) /
                             (ac[0] * ac[0] + ac[1] * ac[1] + ac[2] * ac[2]);
            double off = 0;
            for (int k = 0; k < 3; ++k)
                off += (ab[k] - t * ac[k]) * (ab[k] - t * ac[k]);
            if (off < tolerance && b.bulge == 0.0) {
                chain.erase(chain.begin() + static_cast<long>(i) + 1);
                removed = true;
            }
        }
    }
    return chain;
}

TEST(StrokeArcs, ChainWithoutArcsIsLeftAlone)
{
    const corners straight = {{0, 0}, {1, 0}, {2, 0}, {3, 0}};
    const auto chain = make_vertices(straight);
    EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.1), 0);
    EXPECT_EQ(corners_of(chain.get()), straight);
    EXPECT_EQ(chain_stroke_arcs(nullptr, 0.1), 0);
}

TEST(StrokeArcs, HalfCircleGetsTwentyInnerPoints)
{
    for (const place& p : PLACES)
        for (const double bulge : {1.0, -1.0}) {
            const auto chain = make_vertices({{-10, 0, 0, bulge}, {10, 0, 42}}, p.x, p.y);
            EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.0), 1);
            const corners made = corners_of(chain.get());
            ASSERT_EQ(made.size(), 22u);
            for (std::size_t i = 0; i < made.size(); ++i) {
                const double f = static_cast<double>(i) / 21, angle = PI + (bulge > 0 ? f : -f) * PI;
                EXPECT_NEAR(made[i].x, p.x + 10 * std::cos(angle), 1e-8) << i;
                EXPECT_NEAR(made[i].y, p.y + 10 * std::sin(angle), 1e-8) << i;
                EXPECT_NEAR(made[i].z, 42 * f, 1e-12) << i;
                EXPECT_EQ(made[i].bulge, 0.0) << i;
            }
        }
}

TEST(StrokeArcs, PointsAreThoseOfTheCircle)
{
    std::mt19937 random(67);
    std::uniform_real_distribution<double> any(-100, 100), power(-2, 1);
    for (int round = 0; round < 500; ++round) {
        const double bulge = std::pow(10.0, power(random)) * (round % 2 ? 1 : -1);
        const corners ends = {{any(random), any(random), 0, bulge}, {any(random), any(random), 21}};
        const auto chain = make_vertices(ends);
        const segment_arc arc = arc_of_segment(*chain, *chain->next);
        chain_stroke_arcs(chain.get(), 0.0);
        const corners made = corners_of(chain.get());
        ASSERT_EQ(made.size(), 22u);
        for (int i = 1; i < 21; ++i) {
            const double sweep = arc.to - arc.from;
            const double angle = bulge > 0 ? arc.from + sweep * i / 21 : arc.to - sweep * i / 21;
            const double slack = 1e-10 * arc.radius;
            ASSERT_NEAR(made[i].x, arc.centre[0] + arc.radius * std::cos(angle), slack)
                << round << " " << bulge;
            ASSERT_NEAR(made[i].y, arc.centre[1] + arc.radius * std::sin(angle), slack)
                << round << " " << bulge;
            ASSERT_NEAR(made[i].z, i, 1e-12);
        }
    }
}

TEST(StrokeArcs, ArcTooFlatForItsCentreStaysOnItsChord)
{
    for (const double bulge : {1e-9, -1e-12, 1e-15, 1e-300}) {
        const auto chain = make_vertices({{0, 0, 0, bulge}, {2100, 0}});
        EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.0), 1);
        const corners made = corners_of(chain.get());
        for (std::size_t i = 0; i < made.size(); ++i) {
            EXPECT_NEAR(made[i].x, 100.0 * static_cast<double>(i), 1e-4) << bulge;
            EXPECT_NEAR(made[i].y, 0.0, 2100 * std::fabs(bulge)) << bulge;
        }
    }
}

TEST(StrokeArcs, ThinsTheWholeChainStraightPartsToo)
{
    const corners mixed = {{0, 0}, {5, 0}, {10, 0}, {20, 0, 0, 1}, {40, 0}, {45, 0}, {50, 0}};
    const auto chain = make_vertices(mixed), unthinned = make_vertices(mixed);
    chain_stroke_arcs(unthinned.get(), 0.0);
    EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.1), 1);
    EXPECT_EQ(corners_of(chain.get()), thinned_by_full_passes(corners_of(unthinned.get()), 0.1));
    EXPECT_EQ(chain->next->x, 20.0) << "the straight run goes";
}

TEST(StrokeArcs, HalfCircleThinnedByATenthOfASquareUnit)
{
    for (const double radius : {1.0, 10.0, 100.0, 1000.0}) {
        const auto chain = make_vertices({{-radius, 0, 0, 1}, {radius, 0}});
        const auto whole = make_vertices({{-radius, 0, 0, 1}, {radius, 0}});
        chain_stroke_arcs(whole.get(), 0.0);
        chain_stroke_arcs(chain.get(), 0.1);
        EXPECT_EQ(corners_of(chain.get()), thinned_by_full_passes(corners_of(whole.get()), 0.1)) << radius;
    }
    const auto large = make_vertices({{-100, 0, 0, 1}, {100, 0}});
    chain_stroke_arcs(large.get(), 0.1);
    EXPECT_EQ(count_of(large.get()), 22) << "each point is 1.1 off the line of its neighbours";
    const auto small = make_vertices({{-0.2, 0, 0, 1}, {0.2, 0}});
    chain_stroke_arcs(small.get(), 0.1);
    EXPECT_EQ(count_of(small.get()), 2) << "nothing of it is 0.3 off";
}

TEST(StrokeArcs, ArcOfAnySizeGetsTwentyInnerPoints)
{
    for (const double radius : {1e-6, 0.001, 0.1, 3.0, 7.7, 1e5, 1e9})
        for (const double bulge : {0.01, 0.3, -0.414, 0.999, -2.0, 30.0}) {
            const auto chain = make_vertices({{0, 0, 0, bulge}, {2 * radius, 0}});
            chain_stroke_arcs(chain.get(), 0.0);
            EXPECT_EQ(count_of(chain.get()), 22) << radius << " " << bulge;
        }
}

TEST(StrokeArcs, ChordBelowAMillionthVanishesWithItsEnd)
{
    const auto before = host::heap_live_blocks();
    {
        const auto chain = make_vertices({{0, 0, 0, 1}, {0.9e-6, 0, 0, 0.5}, {10, 0}});
        EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.1), 1);
        EXPECT_EQ(corners_of(chain.get()), (corners{{0, 0}, {10, 0}}));
        EXPECT_EQ(host::heap_live_blocks(), before + 2);
    }
    const auto longer = make_vertices({{0, 0, 0, 1}, {1.1e-6, 0}, {10, 0}});
    chain_stroke_arcs(longer.get(), 0.0);
    EXPECT_EQ(count_of(longer.get()), 23);
    const auto last = make_vertices({{0, 0, 0, 1}, {0, 0}});
    chain_stroke_arcs(last.get(), 0.1);
    EXPECT_EQ(corners_of(last.get()), (corners{{0, 0}}));
}

TEST(StrokeArcs, BulgeOfTheLastVertexCountsAsAnArcAndStays)
{
    // It is that of a closed polyline's last segment, which a chain doesn't hold.
    const auto chain = make_vertices({{0, 0}, {5, 0}, {10, 0, 0, 0.5}});
    EXPECT_EQ(chain_stroke_arcs(chain.get(), 0.1), 1);
    EXPECT_EQ(corners_of(chain.get()), (corners{{0, 0}, {10, 0, 0, 0.5}}));
}

TEST(StrokeArcs, ArcBehindArc)
{
    const auto chain = make_vertices({{0, 0, 0, 0.5}, {10, 0, 0, -0.5}, {20, 0, 0, 0.5}, {30, 0}});
    chain_stroke_arcs(chain.get(), 0.0);
    EXPECT_EQ(count_of(chain.get()), 4 + 3 * 20);
    for (const corner& c : corners_of(chain.get()))
        EXPECT_EQ(c.bulge, 0.0);
}

struct thin_case {
    const char* name;
    corners chain, expected;
};

TEST(Thin, Cases)
{
    const thin_case cases[] = {
        {"one vertex", {{1, 1}}, {{1, 1}}},
        {"two vertices", {{1, 1}, {2, 2}}, {{1, 1}, {2, 2}}},
        {"in line", {{0, 0}, {1, 0}, {2, 0}}, {{0, 0}, {2, 0}}},
        {"a long line, pass by pass", {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}}, {{0, 0}, {5, 0}}},
        {"just inside: 0.316 squared is 0.0999", {{0, 0}, {5, 0.316}, {10, 0}}, {{0, 0}, {10, 0}}},
        {"just outside", {{0, 0}, {5, 0.317}, {10, 0}}, {{0, 0}, {5, 0.317}, {10, 0}}},
        {"off in z alone", {{0, 0}, {5, 0, 1}, {10, 0}}, {{0, 0}, {5, 0, 1}, {10, 0}}},
        {"in line in space", {{0, 0, 0}, {5, 0, 5}, {10, 0, 10}}, {{0, 0, 0}, {10, 0, 10}}},
        {"an arc begins at the middle", {{0, 0}, {5, 0, 0, 0.5}, {10, 0}}, {{0, 0}, {5, 0, 0, 0.5}, {10, 0}}},
        {"an arc ends at the middle", {{0, 0, 0, 0.5}, {5, 0}, {10, 0}}, {{0, 0, 0, 0.5}, {10, 0}}},
        {"back to the start", {{0, 0}, {5, 0}, {0, 0}}, {{0, 0}, {5, 0}, {0, 0}}},
        {"beyond the ends of the line", {{0, 0}, {50, 0}, {10, 0}}, {{0, 0}, {10, 0}}},
    };
    for (const thin_case& c : cases) {
        const auto before = host::heap_live_blocks();
        {
            const auto chain = make_vertices(c.chain);
            EXPECT_EQ(chain_thin(chain.get(), 0.1), chain.get()) << c.name;
            EXPECT_EQ(corners_of(chain.get()), c.expected) << c.name;
            EXPECT_EQ(host::heap_live_blocks(), before + c.expected.size()) << c.name;
        }
    }
    EXPECT_EQ(chain_thin(nullptr, 0.1), nullptr);
}

TEST(Thin, VertexBehindARemovedOneWaitsForTheNextPass)
{
    // Were the second and third looked at in one pass, the third would go; it waits, and by then the line
    // from the first to the fourth has moved away from it.
    std::mt19937 random(71);
    std::uniform_real_distribution<double> step(-1, 1);
    for (int round = 0; round < 3000; ++round) {
        corners made;
        for (int i = 0; i < 3 + round % 60; ++i)
            made.push_back({double(i) * 0.7, step(random) * (round % 5) * 0.3, step(random) * (round % 2) * 0.4,
                            random() % 10 == 0 ? 0.5 : 0.0});
        const auto chain = make_vertices(made);
        chain_thin(chain.get(), 0.1);
        ASSERT_EQ(corners_of(chain.get()), thinned_by_full_passes(made, 0.1)) << round;
    }
}

TEST(Thin, SetsPrev)
{
    const auto chain = make_vertices({{0, 0}, {1, 0}, {2, 5}, {3, 0}, {4, 0}, {5, 0}});
    chain_thin(chain.get(), 0.1);
    const pl_vertex* before = nullptr;
    for (const pl_vertex* v = chain.get(); v; v = v->next) {
        EXPECT_EQ(v->prev, before);
        before = v;
    }
}

TEST(Thin, LongChainTakesTimeInProportion)
{
    const auto work = [](int size) {
        corners made;
        for (int i = 0; i < size; ++i)
            made.push_back({double(i), std::sin(i * 1e-3)});
        const auto chain = make_vertices(made);
        chain_thin(chain.get(), 0.01);
        EXPECT_LT(count_of(chain.get()), size / 10);
    };
    EXPECT_TRUE(grows_in_proportion(work, 400000));
}

} // namespace
