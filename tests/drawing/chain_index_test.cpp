// The index over a chain against the plain walk over all of its segments.
#include "drawing/chain_index.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "common/tolerances.h"
#include "drawing/chain_queries.h"
#include "tests/drawing/chains.h"

namespace
{

// What both say of a point; equal to the last bit.
void expect_same(const pl_vertex* chain, const chain_index& index, double x, double y, double tolerance,
                 int* found)
{
    const ads_point point = {x, y, 0.0};
    double plain[2] = {7.0, 7.0}, fast[2] = {7.0, 7.0};
    const int is_found = chain_normal_at(chain, point, tolerance, plain);
    ASSERT_EQ(index.normal_at(point, tolerance, fast), is_found) << x << ' ' << y;
    *found += is_found;
    if (!is_found)
        plain[0] = plain[1] = 7.0; // it says nothing then
    ASSERT_EQ(std::memcmp(plain, fast, sizeof plain), 0)
        << x << ' ' << y << ": " << plain[0] << ' ' << plain[1] << " and " << fast[0] << ' ' << fast[1];
}

struct chain_kind {
    const char* name;
    int vertices;
    bool on_grid; // whole coordinates, so that many distances are equal
    double arcs;  // part of the segments
    double step;  // from vertex to vertex; 0: anywhere
    double x = 0.0, y = 0.0;
};

class ChainIndex : public testing::TestWithParam<chain_kind>
{
protected:
    std::mt19937 random{20260712};
    double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(random); }
    double bulge()
    {
        static constexpr double BULGES[] = {1.0, -1.0, 0.5, -0.5, 1e-9, -1e-9, 30.0, -30.0, 1e-300, 1e300};
        return random() % 2 ? between(-3.0, 3.0) : BULGES[random() % std::size(BULGES)];
    }
    vertex_chain new_chain(const chain_kind& kind)
    {
        std::vector<corner> corners;
        double x = 0.0, y = 0.0;
        for (int i = 0; i < kind.vertices; ++i) {
            x = kind.step > 0.0 ? x + between(-kind.step, kind.step) : between(-50.0, 50.0);
            y = kind.step > 0.0 ? y + between(-kind.step, kind.step) : between(-50.0, 50.0);
            if (kind.on_grid) {
                x = std::round(x);
                y = std::round(y);
            }
            corners.push_back({x, y, 0.0, between(0.0, 1.0) < kind.arcs ? bulge() : 0.0});
            if (random() % 20 == 0)
                corners.push_back(corners.back()); // no length
            if (random() % 20 == 0 && i > 3)
                corners.push_back(corners[corners.size() - 3]); // there and back
        }
        return make_vertices(corners, kind.x, kind.y);
    }
};

TEST_P(ChainIndex, SaysTheSameAsTheWalk)
{
    const chain_kind& kind = GetParam();
    int found = 0;
    for (int round = 0; round < 12 && !HasFatalFailure(); ++round) {
        const vertex_chain chain = new_chain(kind);
        const chain_index index(chain.get());
        const double reach = round % 4 == 3 ? 5000.0 : 80.0;
        for (int i = 0; i < 200 && !HasFatalFailure(); ++i) {
            double x = between(-reach, reach), y = between(-reach, reach);
            if (kind.on_grid || i % 8 == 0) {
                x = std::round(x);
                y = std::round(y);
            }
            const double tolerance = i % 5 == 0 ? between(0.0, 20.0) : i % 7 == 0 ? std::round(y) : NO_VALUE;
            expect_same(chain.get(), index, kind.x + x, kind.y + y, tolerance, &found);
        }
        for (const pl_vertex* v = chain.get(); v && !HasFatalFailure(); v = v->next)
            expect_same(chain.get(), index, v->x, v->y, NO_VALUE, &found);
    }
    EXPECT_GT(found, kind.vertices > 1 ? 150 : -1);
}

const chain_kind KINDS[] = {
    {"One", 1, false, 0.0, 0.0},
    {"Two", 2, false, 0.5, 0.0},
    {"ARunAndOne", 9, false, 0.3, 0.0},
    {"Straight", 100, false, 0.0, 5.0},
    {"StraightOnTheGrid", 100, true, 0.0, 5.0},
    {"Mixed", 130, false, 0.4, 5.0},
    {"MixedOnTheGrid", 130, true, 0.4, 3.0},
    {"Arcs", 200, false, 1.0, 0.0},
    {"ArcsOnTheGrid", 70, true, 1.0, 4.0},
    {"Tangle", 300, true, 0.2, 0.0},
    {"Long", 1000, false, 0.2, 10.0},
    {"FarAway", 130, false, 0.4, 5.0, 640000.0, 5120000.0},
    {"FarAwayOnTheGrid", 130, true, 0.4, 3.0, 640000.0, 5120000.0},
    {"NearlyNothing", 60, false, 0.4, 1e-6},
};

INSTANTIATE_TEST_SUITE_P(Kinds, ChainIndex, testing::ValuesIn(KINDS),
                         [](const auto& each) { return each.param.name; });

TEST(ChainIndexAlone, OfNothingFindsNothing)
{
    double normal[2] = {7.0, 7.0};
    const ads_point point = {0.0, 0.0, 0.0};
    EXPECT_EQ(chain_index(nullptr).normal_at(point, NO_VALUE, normal), 0);
    const vertex_chain one = make_vertices({{0, 0}});
    EXPECT_EQ(chain_index(one.get()).normal_at(point, NO_VALUE, normal), 0);
    EXPECT_EQ(normal[0], 7.0);
}

// The foot lies 5e-7 beyond the end of the first run, nearer than a segment of the second run's.
TEST(ChainIndexAlone, FeetJustBeyondAnEndCount)
{
    std::vector<corner> corners;
    for (int i = 0; i <= 8; ++i)
        corners.push_back({i * 1.25, 0.0});
    corners.push_back({20.0, 50.0});
    corners.push_back({10.0 + 8e-7, 50.0});
    corners.push_back({10.0 + 8e-7, -50.0});
    const vertex_chain chain = make_vertices(corners);
    int found = 0;
    expect_same(chain.get(), chain_index(chain.get()), 10.0 + 5e-7, 0.0, NO_VALUE, &found);
    double normal[2];
    const ads_point point = {10.0 + 5e-7, 0.0, 0.0};
    EXPECT_EQ(chain_index(chain.get()).normal_at(point, NO_VALUE, normal), 1);
    EXPECT_EQ(normal[0], 1.0);
}

TEST(ChainIndexAlone, NumbersThatAreNoPlaceAreNoTrap)
{
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    std::vector<corner> corners;
    for (int i = 0; i < 40; ++i)
        corners.push_back({i * 10.0, i % 2 * 10.0, 0.0, i % 3 ? 0.0 : 0.5});
    const vertex_chain good = make_vertices(corners);
    corners[20].x = inf;
    corners[30].y = nan;
    corners[35].bulge = nan;
    const vertex_chain bad = make_vertices(corners);
    for (const vertex_chain* chain : {&good, &bad}) {
        const chain_index index(chain->get());
        int found = 0;
        for (const double x : {5.0, 203.0, 305.0, 355.0, inf, -inf, nan, 1e300})
            for (const double y : {5.0, 0.0, inf, nan, -1e300})
                expect_same(chain->get(), index, x, y, NO_VALUE, &found);
        EXPECT_GT(found, 0);
    }
}

} // namespace
