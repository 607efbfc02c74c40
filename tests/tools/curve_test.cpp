// Curves through points, and the chain operations of the annotation tools.
#include "tools/curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "drawing/stroke.h"
#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/drawing/drawing_case.h"
#include "tests/growth.h"

namespace
{

constexpr double NEAR = 1e-9;
using corners = std::vector<corner>;

vertex_chain user_chain(const corners& points, double x = 0.0, double y = 0.0)
{
    vertex_chain chain = make_vertices(points, x, y);
    for (pl_vertex* v = chain.get(); v; v = v->next)
        v->type = USER_POINT;
    pl_link_back(chain.get());
    return chain;
}

std::vector<int> types_of(const pl_vertex* v)
{
    std::vector<int> types;
    for (; v; v = v->next)
        types.push_back(v->type);
    return types;
}

void expect_at(const pl_vertex* v, double x, double y, double z = 0.0)
{
    ASSERT_NE(v, nullptr);
    EXPECT_NEAR(v->x, x, NEAR);
    EXPECT_NEAR(v->y, y, NEAR);
    EXPECT_NEAR(v->z, z, NEAR);
}

const pl_vertex* at_index(const pl_vertex* v, int index)
{
    for (; v && index > 0; --index)
        v = v->next;
    return v;
}

// `prev` answers `next` all along the chain.
void expect_linked_back(const pl_vertex* head)
{
    EXPECT_EQ(head->prev, nullptr);
    for (const pl_vertex* v = head; v->next; v = v->next)
        EXPECT_EQ(v->next->prev, v);
}

TEST(CurveControls, LieOnTheEndsThemselvesAtBothEnds)
{
    for (const place& at : PLACES) {
        const auto chain = user_chain({{0, 0, 1}, {10, 0, 3}}, at.x, at.y);
        ASSERT_TRUE(curve_controls(chain.get(), 2.1));
        EXPECT_EQ(types_of(chain.get()), (std::vector<int>{2, 0, 0, 2}));
        const corners got = corners_of(chain.get());
        EXPECT_EQ(got[1], got[0]);
        EXPECT_EQ(got[2], got[3]);
    }
}

TEST(CurveControls, LieAlongTheDirectionOfBothNeighboursInSpace)
{
    // At the corner the tangent runs from (0,0,0) to (6,8,0), turned into space by z.
    const auto chain = user_chain({{0, 0, 0}, {6, 0, 0}, {6, 8, 0}});
    ASSERT_TRUE(curve_controls(chain.get(), 2.0));
    EXPECT_EQ(types_of(chain.get()), (std::vector<int>{2, 0, 0, 2, 0, 0, 2}));
    expect_at(at_index(chain.get(), 2), 6 - 3 * 0.6, 0 - 3 * 0.8); // a half of 6 back along (0.6, 0.8)
    expect_at(at_index(chain.get(), 4), 6 + 4 * 0.6, 0 + 4 * 0.8); // a half of 8 on
    expect_linked_back(chain.get());

    const auto spatial = user_chain({{0, 0, 0}, {0, 0, 5}, {0, 3, 9}});
    ASSERT_TRUE(curve_controls(spatial.get(), 1.0));
    const double turned = std::sqrt(90.0); // from (0,0,0) to (0,3,9)
    expect_at(at_index(spatial.get(), 2), 0, -5 * 3 / turned, 5 - 5 * 9 / turned);
    expect_at(at_index(spatial.get(), 4), 0, 5 * 3 / turned, 5 + 5 * 9 / turned);
}

TEST(CurveControls, VertexBetweenNeighboursInOnePlaceHasItsControlsOnItself)
{
    const auto chain = user_chain({{1, 2}, {5, 2}, {1, 2}});
    ASSERT_TRUE(curve_controls(chain.get(), 2.1));
    expect_at(at_index(chain.get(), 2), 5, 2);
    expect_at(at_index(chain.get(), 4), 5, 2);
}

TEST(CurveControls, ChainWithoutASegmentGetsNone)
{
    EXPECT_TRUE(curve_controls(nullptr, 2.1));
    const auto lone = user_chain({{1, 2}});
    EXPECT_TRUE(curve_controls(lone.get(), 2.1));
    EXPECT_EQ(corners_of(lone.get()).size(), 1u);
}

TEST(CurveControls, NewVerticesHaveNoBulge)
{
    const auto chain = user_chain({{0, 0, 0, 0.5}, {10, 0}});
    ASSERT_TRUE(curve_controls(chain.get(), 2.1));
    EXPECT_EQ(at_index(chain.get(), 0)->bulge, 0.5);
    EXPECT_EQ(at_index(chain.get(), 1)->bulge, 0.0);
    EXPECT_EQ(at_index(chain.get(), 2)->bulge, 0.0);
}

TEST(CurvePoints, StandAtEachStepBelowOne)
{
    struct step_case {
        double step;
        int inner;
    };
    const step_case cases[] = {{0.15, 6}, {0.08, 12}, {0.25, 3}, {0.5, 1}, {0.999, 1}, {1.0, 0}, {7.0, 0}};
    for (const step_case& c : cases) {
        const auto chain = user_chain({{0, 0}, {10, 0}});
        ASSERT_TRUE(curve_controls(chain.get(), 2.1));
        ASSERT_TRUE(curve_points(chain.get(), c.step));
        std::vector<int> expected(static_cast<std::size_t>(c.inner), 1);
        expected.insert(expected.begin(), 2);
        expected.push_back(2);
        EXPECT_EQ(types_of(chain.get()), expected) << c.step;
        expect_linked_back(chain.get());
    }
}

TEST(CurvePoints, FollowTheCubicOfTheirGroup)
{
    const auto chain = make_vertices({{0, 0, 0}, {0, 9, 3}, {9, 9, 6}, {9, 0, 9}});
    ASSERT_TRUE(curve_points(chain.get(), 0.25));
    ASSERT_EQ(corners_of(chain.get()).size(), 5u);
    for (int i = 1; i <= 3; ++i) {
        const double t = 0.25 * i, u = 1.0 - t;
        expect_at(at_index(chain.get(), i), 27 * t * t * u + 9 * t * t * t, 27 * t * u * u + 27 * t * t * u,
                  9 * t);
        EXPECT_EQ(at_index(chain.get(), i)->type, CURVE_POINT);
    }
}

TEST(CurvePoints, GroupsShareTheirEndAndAnIncompleteOneStays)
{
    const auto chain = make_vertices({{0, 0}, {1, 1}, {2, 1}, {3, 0}, {4, 1}, {5, 1}, {6, 0}, {7, 1}, {8, 1}});
    ASSERT_TRUE(curve_points(chain.get(), 0.5));
    const corners got = corners_of(chain.get());
    ASSERT_EQ(got.size(), 7u);
    EXPECT_EQ(got[0], (corner{0, 0}));
    EXPECT_EQ(got[2], (corner{3, 0}));
    EXPECT_EQ(got[4], (corner{6, 0}));
    EXPECT_EQ(got[5], (corner{7, 1}));
    EXPECT_EQ(got[6], (corner{8, 1}));
    EXPECT_TRUE(curve_points(nullptr, 0.5));
}

TEST(CurvePoints, StepThatNeverComesToOneLeavesTheChainAlone)
{
    for (const double step : {0.0, -0.1, 1e-300, std::numeric_limits<double>::quiet_NaN()}) {
        const auto chain = make_vertices({{0, 0}, {1, 1}, {2, 1}, {3, 0}});
        EXPECT_FALSE(curve_points(chain.get(), step)) << step;
        EXPECT_EQ(corners_of(chain.get()).size(), 4u);
    }
}

TEST(Curve, TouchesItsPointsAndLeavesThemAlongTheirTangents)
{
    for (const place& at : PLACES) {
        const corners points = {{0, 0}, {30, 20}, {60, -20}, {100, 0}};
        const auto chain = user_chain(points, at.x, at.y);
        ASSERT_TRUE(chain_curve(chain.get(), 2.1, 0.001));
        const pl_vertex* v = chain.get();
        for (std::size_t i = 0; i < points.size(); ++i, v = at_index(v, 1000)) {
            ASSERT_NE(v, nullptr);
            EXPECT_EQ(v->type, USER_POINT);
            EXPECT_DOUBLE_EQ(v->x, points[i].x + at.x);
            EXPECT_DOUBLE_EQ(v->y, points[i].y + at.y);
            if (i == 0 || i + 1 == points.size())
                continue;
            const double wanted =
                std::atan2(points[i + 1].y - points[i - 1].y, points[i + 1].x - points[i - 1].x);
            EXPECT_NEAR(std::atan2(v->next->y - v->y, v->next->x - v->x), wanted, 0.01);
            EXPECT_NEAR(std::atan2(v->y - v->prev->y, v->x - v->prev->x), wanted, 0.01);
        }
    }
}

TEST(Curve, PointsOfOneHeightStayAtItToTheLastBit)
{
    for (const double z : {5.0, 0.1, 101.37, 1e9 / 3.0}) {
        const auto chain = user_chain({{0, 0, z}, {30, 20, z}, {60, -20, z}});
        ASSERT_TRUE(chain_curve(chain.get(), 2.7, 0.08));
        for (const corner& c : corners_of(chain.get()))
            EXPECT_EQ(c.z, z);
    }
}

TEST(Curve, ReversedPointsGiveTheSameCurve)
{
    const auto chain = user_chain({{0, 0}, {30, 20}, {60, -20}});
    const auto back = user_chain({{60, -20}, {30, 20}, {0, 0}});
    ASSERT_TRUE(chain_curve(chain.get(), 2.1, 0.25));
    ASSERT_TRUE(chain_curve(back.get(), 2.1, 0.25));
    corners reversed = corners_of(back.get());
    std::reverse(reversed.begin(), reversed.end());
    const corners got = corners_of(chain.get());
    ASSERT_EQ(got.size(), reversed.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_NEAR(got[i].x, reversed[i].x, NEAR);
        EXPECT_NEAR(got[i].y, reversed[i].y, NEAR);
    }
}

TEST(Curve, GoesAgainAndLeavesTheUsersPoints)
{
    const corners points = {{0, 0}, {30, 20}, {60, -20}};
    const auto chain = user_chain(points);
    chain->next->type = 3; // the number of an intermediate point
    ASSERT_TRUE(chain_curve(chain.get(), 2.1, 0.15));
    chain_uncurve(chain.get());
    EXPECT_EQ(corners_of(chain.get()), points);
    EXPECT_EQ(types_of(chain.get()), (std::vector<int>{2, 3, 2}));
    expect_linked_back(chain.get());
    chain_uncurve(nullptr);
}

TEST(Curve, FirstVertexStaysWhateverItsRole)
{
    const auto chain = make_vertices({{0, 0}, {1, 0}, {2, 0}});
    chain_uncurve(chain.get());
    EXPECT_EQ(corners_of(chain.get()), (corners{{0, 0}}));
}

TEST(Curve, HeapThatGivesNoMoreLeavesTheUsersPointsAlone)
{
    const corners points = {{0, 0}, {30, 20}, {60, -20}};
    const auto chain = user_chain(points);
    const std::size_t blocks = host::heap_live_blocks();
    long requests = 0;
    for (bool refused = true; refused; ++requests) {
        host::heap_refuse(requests + 1);
        const bool done = chain_curve(chain.get(), 2.1, 0.15);
        refused = host::heap_refuse(0) == 0;
        EXPECT_EQ(done, !refused);
        if (refused) {
            EXPECT_EQ(corners_of(chain.get()), points) << requests;
            EXPECT_EQ(host::heap_live_blocks(), blocks) << requests;
            expect_linked_back(chain.get());
        }
    }
    EXPECT_EQ(requests, 4 + 12 + 1);
}

TEST(ChainOfPoints, TakesThemAsTheUsersPoints)
{
    const ads_point points[3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    const vertex_chain chain(chain_of_points(points, 3));
    EXPECT_EQ(corners_of(chain.get()), (corners{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
    EXPECT_EQ(types_of(chain.get()), (std::vector<int>{2, 2, 2}));
    expect_linked_back(chain.get());
    host::heap_refuse(2);
    const std::size_t blocks = host::heap_live_blocks();
    EXPECT_EQ(chain_of_points(points, 3), nullptr);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

TEST(ChainReverse, TurnsTheNextLinks)
{
    EXPECT_EQ(chain_reverse(nullptr), nullptr);
    pl_vertex* lone = pl_vertex_new(1, 2, 3);
    EXPECT_EQ(chain_reverse(lone), lone);
    EXPECT_EQ(lone->next, nullptr);
    pl_free_vertices(lone);
    const vertex_chain turned(chain_reverse(make_vertices({{0, 0}, {1, 0}, {2, 0}}).release()));
    EXPECT_EQ(corners_of(turned.get()), (corners{{2, 0}, {1, 0}, {0, 0}}));
}

TEST(ChainSplit, StandsAtItsPartOfThePlanLength)
{
    struct split_case {
        double fraction;
        int index;
        double x, y;
    };
    // Heights don't count: the chain is 20 long in plan.
    const split_case cases[] = {
        {0.0, 1, 0, 0}, {0.25, 1, 5, 0}, {0.5, 1, 10, 0}, {0.75, 2, 10, 5}, {1.0, 2, 10, 10}};
    for (const place& at : PLACES)
        for (const split_case& c : cases) {
            const auto chain = user_chain({{0, 0, 7}, {10, 0, 90}, {10, 10, 2}}, at.x, at.y);
            pl_vertex* v = chain_split_at(chain.get(), c.fraction);
            ASSERT_NE(v, nullptr) << c.fraction;
            EXPECT_EQ(v, at_index(chain.get(), c.index)) << c.fraction;
            expect_at(v, at.x + c.x, at.y + c.y);
            EXPECT_EQ(v->z, 0.0);
            EXPECT_EQ(v->type, 0);
            EXPECT_EQ(v->bulge, 0.0);
            EXPECT_EQ(corners_of(chain.get()).size(), 4u);
            expect_linked_back(chain.get());
        }
}

TEST(ChainSplit, ThereIsNoneBehindTheEnd)
{
    const auto chain = user_chain({{0, 0}, {10, 0}});
    EXPECT_EQ(chain_split_at(chain.get(), 1.001), nullptr);
    EXPECT_EQ(chain_split_at(chain.get(), std::numeric_limits<double>::quiet_NaN()), nullptr);
    EXPECT_EQ(chain_split_at(nullptr, 0.5), nullptr);
    const auto lone = user_chain({{0, 0}});
    EXPECT_EQ(chain_split_at(lone.get(), 0.5), nullptr);
    host::heap_refuse(1);
    EXPECT_EQ(chain_split_at(chain.get(), 0.5), nullptr);
    EXPECT_EQ(corners_of(chain.get()).size(), 2u);
}

TEST(ChainSplit, ChainWithoutLengthIsSplitAtItsHead)
{
    const auto chain = user_chain({{3, 4}, {3, 4}});
    expect_at(chain_split_at(chain.get(), 0.5), 3, 4);
}

TEST(ChainSplit, DashesStandWhereTheyAreWantedOneAfterTheOther)
{
    const auto chain = user_chain({{0, 0}, {80, 0}});
    const double wanted[] = {20, 30, 50, 60};
    const double fractions[] = {0.25, 0.375, 0.625, 0.75};
    for (int i = 0; i < 4; ++i)
        expect_at(chain_split_at(chain.get(), fractions[i]), wanted[i], 0);
}

TEST(ChainDistance, CountsHeights)
{
    const auto chain = user_chain({{1, 2, 3}, {3, 5, 9}});
    EXPECT_DOUBLE_EQ(chain_distance(*chain, *chain->next), 7.0);
}

struct PlainChain : drawing_case {
};

TEST_F(PlainChain, IsDrawnWithoutArcsOnTheCurrentLayer)
{
    auto chain = user_chain({{0, 0, 5, 1.0}, {10, 0, 5}, {0, 0, 5}});
    chain_write_plain(chain.get());
    ASSERT_EQ(types(), (std::vector<std::string>{"LWPOLYLINE"}));
    EXPECT_EQ(read(last()), (corners{{0, 0, 5}, {10, 0, 5}, {0, 0, 5}})) << "the last vertex is kept";
    chain->z = 6.0;
    chain_write_plain(chain.get());
    EXPECT_EQ(types().back(), "POLYLINE");
}

TEST_F(PlainChain, NothingIsDrawnFromNumbersThatNoDrawingHolds)
{
    for (const double bad : {HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
        auto chain = user_chain({{0, 0}, {10, 0}, {20, 0}});
        for (double pl_vertex::*field : {&pl_vertex::x, &pl_vertex::y, &pl_vertex::z}) {
            chain->next->*field = bad;
            chain_write_plain(chain.get());
            chain->next->*field = 0.0;
        }
    }
    chain_write_plain(nullptr);
    EXPECT_EQ(count(), 0);
}

TEST(Curve, ManyPointsTakeTimeInProportion)
{
    const auto work = [](int size) {
        corners points;
        for (int i = 0; i < size; ++i)
            points.push_back({10.0 * i, i % 2 ? 3.0 : -3.0});
        const auto chain = user_chain(points);
        EXPECT_TRUE(chain_curve(chain.get(), 2.1, 0.15));
        EXPECT_NE(chain_split_at(chain.get(), 0.5), nullptr);
        chain_thin(chain.get(), 0.01);
        chain_uncurve(chain.get());
    };
    EXPECT_TRUE(grows_in_proportion(work, 100000));
}

} // namespace
