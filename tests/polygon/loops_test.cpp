// The removal of loops by itself, and what it does to parallels.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "polygon/offset.h"
#include "polygon/points.h"
#include "polygon/segment_pairs.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr int RIGHT = 1, LEFT = 0, ROUNDED = 0, MITRED = 1;
const double QUARTER = std::tan(PI / 8);

std::vector<spot> without_loops(const std::vector<spot>& chain)
{
    const int live_before = test_heap::live_blocks();
    std::vector<spot> result;
    {
        const chain_ptr out(pg_remove_loops(make_chain(chain).release()));
        result = spots_of(out.get());
    }
    EXPECT_EQ(test_heap::live_blocks(), live_before);
    return result;
}

void expect_spots(const std::vector<spot>& result, const std::vector<spot>& expected)
{
    ASSERT_EQ(result.size(), expected.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(result[i].x, expected[i].x, 1e-9);
        EXPECT_NEAR(result[i].y, expected[i].y, 1e-9);
        EXPECT_NEAR(result[i].z, expected[i].z, 1e-9);
        EXPECT_NEAR(result[i].bulge, expected[i].bulge, 1e-9);
    }
}

// Pairs of segments that meet elsewhere than at the ends of the earlier one.
int self_crossings(const std::vector<spot>& spots)
{
    const chain_ptr chain = make_chain(spots);
    int count = 0;
    for (const pg_node* i = chain.get(); i && i->next; i = i->next) {
        const pg_segment a = pg_segment_at(*i);
        for (const pg_node* j = i->next; j->next; j = j->next) {
            double points[2][3];
            for (int k = pg_segment_points(a, pg_segment_at(*j), points) - 1; k >= 0; --k)
                count += pg_segment_distance(a, points[k]) > 1e-6 && pg_dist(a.q, points[k]) > 1e-6;
        }
    }
    return count;
}

TEST(Loops, ShortChainsStayAsTheyAre)
{
    EXPECT_EQ(pg_remove_loops(nullptr), nullptr);
    for (const std::vector<spot>& chain : {std::vector<spot>{{1, 2}},
                                           {{1, 2, 0.5}, {3, 4}},
                                           {{0, 0}, {10, 0}, {10, 10}},
                                           {{0, 0}, {1, 0}, {0, 0}}})
        EXPECT_EQ(without_loops(chain), chain);
}

TEST(Loops, ChainsThatTouchAtNodesStayAsTheyAre)
{
    // Back to the head; and to a vertex half way.
    for (const std::vector<spot>& chain : {std::vector<spot>{{0, 0}, {10, 0}, {10, 10}, {0, 0}},
                                           {{0, 0}, {10, 0}, {20, 0}, {20, 10}, {10, 0}, {0, 10}}})
        EXPECT_EQ(without_loops(chain), chain);
}

TEST(Loops, LoopIsCutOutAtItsCrossing)
{
    expect_spots(without_loops({{0, 0, 0, 2}, {10, 0, 0, 2}, {10, 5}, {4, 5}, {4, -5, 0, 7}}),
                 {{0, 0, 0, 2}, {4, 0, 0, 2}, {4, -5, 0, 7}}); // with the height of the first that crosses
}

TEST(Loops, NewNodesAreMarkedAsPlainNodes)
{
    const chain_ptr chain(pg_remove_loops(make_chain({{0, 0}, {10, 0}, {10, 5}, {4, 5}, {4, -5}}).release()));
    EXPECT_EQ(chain->next->mark, 1);
    EXPECT_EQ(chain->next->keep, 1);
}

TEST(Loops, NearestCrossingWinsWhateverTheOrder)
{
    // The last leg crosses at 2, the one before it at 6: all between is gone.
    expect_spots(without_loops({{0, 0}, {10, 0}, {6, 5}, {6, -5}, {2, -5}, {2, 5}}), {{0, 0}, {2, 0}, {2, 5}});
}

TEST(Loops, OfEquallyNearCrossingsTheFirstInOrderWins)
{
    const std::vector<spot> chain{{0, 0}, {10, 0}, {6, 5}, {6, -5}, {9, -9}, {1, -9}, {1, -5}, {11, 5}};
    expect_spots(without_loops(chain), {{0, 0}, {6, 0}, {6, -5}, {9, -9}, {1, -9}, {1, -5}, {11, 5}});
}

TEST(Loops, WalkGoesOnAlongTheSegmentThatWasCrossed)
{
    // The rest of the leg at x 4 is crossed in its turn.
    expect_spots(without_loops({{0, 0}, {10, 0}, {4, 5}, {4, -10}, {8, -10}, {8, -4}, {0, -4}}),
                 {{0, 0}, {4, 0}, {4, -4}, {0, -4}});
}

TEST(Loops, NeighbourThatTurnsBackIsTestedToo)
{
    // An arc about (8, -1) that goes round clockwise and back through the line before it.
    const double r = std::sqrt(5), from = std::atan2(1, 2), again = std::atan2(1, -2);
    expect_spots(without_loops({{0, 0}, {10, 0, -std::tan((3 * PI / 2 + from) / 4)}, {8, r - 1}}),
                 {{0, 0}, {6, 0, -std::tan((again - PI / 2) / 4)}, {8, r - 1}});
}

TEST(Loops, LineKnowsOnlyItsFirstPointOnAnArc)
{
    // It crosses the half circle at (-4, 3) and (4, 3).
    const std::vector<spot> result = without_loops({{-10, 3}, {10, 3}, {10, 0}, {5, 0, 1}, {-5, 0}});
    expect_spots(result, {{-10, 3}, {-4, 3, std::tan((PI - std::atan2(3, -4)) / 4)}, {-5, 0}});
}

TEST(Loops, ArcsAreCutWithTheirCentreAndSense)
{
    for (const double sense : {1.0, -1.0}) {
        // A half circle of radius 5 about the origin, crossed at (3, 4) by a line, and by an arc.
        expect_spots(without_loops({{5, 0, sense}, {-5, 0}, {-5, sense * 20}, {3, sense * 20}, {3, 0}}),
                     {{5, 0, sense * std::tan(std::atan2(4, 3) / 4)}, {3, sense * 4}, {3, 0}});
        const std::vector<spot> both =
            without_loops({{5, 0, sense}, {-5, 0}, {-5, sense * 20}, {6, sense * 13, sense}, {6, -sense * 5}});
        ASSERT_EQ(both.size(), 3u);
        // The second has its centre at (6, 4) and radius 9, and reaches the first where that is nearest to it.
        const double from_second = std::hypot(both[1].x - 6, both[1].y - sense * 4);
        EXPECT_NEAR(std::hypot(both[1].x, both[1].y), 5, 1e-9);
        EXPECT_NEAR(from_second, 9, 1e-9);
        EXPECT_GT(both[0].bulge * sense, 0);
    }
}

TEST(Loops, ArcCrossedAtItsEndLeavesNoArc)
{
    // Clockwise about (7, 4) to (4, 0), where the first line passes.
    const double sweep = PI + std::atan2(3, 4) - PI / 2;
    expect_spots(without_loops({{0, 0}, {20, 0}, {20, 4}, {12, 4, -std::tan(sweep / 4)}, {4, 0}, {4, -9}}),
                 {{0, 0}, {4, 0}, {4, 0}, {4, -9}});
    // An arc from the direction 0, crossed at its start from the other side of angle 0: a turn away by the
    // measure of arcs, and no whole circle.
    for (const spot& s : without_loops({{5, 0, QUARTER}, {0, 5}, {0, 20}, {9, 20}, {9, -8e-7}, {0, -8e-7}}))
        EXPECT_LT(std::fabs(s.bulge), 1);
}

TEST(Loops, ArcAcrossAngleZeroTakesItsLaterCrossing)
{
    // From direction -60 to 60 degrees, crossed at -30 and at 30 degrees by verticals. Distances on an arc are
    // not brought into a turn: that to 30 degrees is told as 270 degrees long, to -30 as 30.
    const auto at = [](double degrees, double radius, double bulge = 0) {
        return spot{radius * std::cos(degrees * PI / 180), radius * std::sin(degrees * PI / 180), bulge};
    };
    const std::vector<spot> plain = without_loops(
        {at(-60, 10, std::tan(PI / 6)), at(60, 10), {0, 20}, at(30, 20), at(30, 5), at(-30, 5), at(-30, 20)});
    ASSERT_EQ(plain.size(), 3u);
    EXPECT_NEAR(plain[1].y, -5, 1e-9);
    // Clockwise it starts at 60: 30 is 30 off, and -30 is told as 270 off.
    const std::vector<spot> clockwise = without_loops({at(60, 10, -std::tan(PI / 6)),
                                                       at(-60, 10),
                                                       {0, -20},
                                                       at(-30, 20),
                                                       at(-30, 5),
                                                       at(20, 5),
                                                       at(-10, 20)});
    // Behind angle 0 there are only -30 and the last leg's place; the nearest by the wrong measure is the
    // farther.
    ASSERT_GE(clockwise.size(), 3u);
    EXPECT_NEAR(std::hypot(clockwise[1].x, clockwise[1].y), 10, 1e-9);
    EXPECT_NEAR(clockwise[1].y, -5, 1e-9);
}

// ---- of parallels

std::vector<spot> zig_zag(int count, double height)
{
    std::vector<spot> chain;
    for (int i = 0; i < count; ++i)
        chain.push_back({4.0 * i, i % 2 * height});
    return chain;
}

std::vector<spot> offset(const std::vector<spot>& chain, double distance, int side, int corner_mode, int loops)
{
    const chain_ptr in = make_chain(chain);
    const chain_ptr out(pg_offset(in.get(), distance, side, corner_mode, loops));
    return spots_of(out.get());
}

TEST(Loops, ZigZagWithAnOffsetWiderThanItsLegsKeepsThemOnlyWhenAsked)
{
    std::mt19937 random(5);
    std::vector<spot> chain = zig_zag(30, 6);
    for (spot& v : chain)
        v.y += std::uniform_real_distribution<double>(-3, 3)(random);
    // Mitred corners that are out of reach are left out, and most loops with them.
    for (const int side : {RIGHT, LEFT}) {
        EXPECT_GT(self_crossings(offset(chain, 8, side, ROUNDED, 0)), 5);
        for (const int mode : {ROUNDED, MITRED})
            EXPECT_EQ(self_crossings(offset(chain, 8, side, mode, 1)), 0);
    }
}

TEST(Loops, ParallelsOfRandomLinesHaveNoCrossingsLeft)
{
    int before = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> place(0, 100);
        std::vector<spot> chain;
        for (int i = 0; i < 12; ++i)
            chain.push_back({place(random), place(random)});
        before += self_crossings(offset(chain, 5, RIGHT, MITRED, 0));
        EXPECT_EQ(self_crossings(offset(chain, 5, RIGHT, MITRED, 1)), 0);
    }
    EXPECT_GT(before, 1000);
}

TEST(Loops, AreLookedForFromTheParallelsEnd)
{
    // The height of a crossing is that of the segment which is cut, and so tells which one came first: the
    // last, which rises from 1, the height that the corners carry along, to 9 at its end.
    const std::vector<spot> result = offset(
        {{0, 0, 0, 1}, {100, 0, 0, 1}, {100, 50, 0, 9}, {50, 50, 0, 9}, {50, -50, 0, 9}}, 1, RIGHT, MITRED, 1);
    ASSERT_EQ(result.size(), 3u);
    EXPECT_NEAR(result[1].x, 49, 1e-9);
    EXPECT_NEAR(result[1].y, -1, 1e-9);
    EXPECT_NEAR(result[1].z, 9 - 8 * 49.0 / 101, 1e-9);
}

TEST(Loops, ExhaustedHeapLeavesAWholeChain)
{
    const std::vector<spot> chain{{0, 0},   {10, 0},  {10, 5},  {4, 5}, {4, -5},
                                  {20, -5}, {20, -9}, {15, -9}, {15, 0}};
    const std::size_t cut = without_loops(chain).size();
    for (int n = 1;; ++n) {
        const int live_before = test_heap::live_blocks();
        pg_node* head = make_chain(chain).release();
        test_heap::fail_at(n);
        const chain_ptr result(pg_remove_loops(head));
        test_heap::fail_at(0);
        const std::vector<spot> left = spots_of(result.get());
        EXPECT_EQ(test_heap::live_blocks(), live_before + static_cast<int>(left.size()));
        EXPECT_EQ(left.front(), chain.front());
        EXPECT_EQ(left.back(), chain.back());
        if (left.size() == cut) {
            EXPECT_EQ(n, 5); // the segments, their boxes and a node for each of two loops
            break;
        }
    }
}

TEST(Loops, LongChainsWithArcsTakeNoTime)
{
    // A hundred thousand nodes; a scan of all pairs takes minutes.
    std::vector<spot> chain = zig_zag(100000, 9);
    for (std::size_t i = 0; i < chain.size(); i += 7)
        chain[i].bulge = i % 2 != 0 ? 0.3 : -0.3;
    const std::vector<spot> result = offset(chain, 3, LEFT, ROUNDED, 1);
    EXPECT_GT(result.size(), 50000u);
    printed_text();
}

} // namespace
