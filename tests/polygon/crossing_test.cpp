#include "polygon/crossing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numbers>

#include "tests/polygon/heap.h"
#include "tests/polygon/measures_plain.h"
#include "tests/polygon/random_segments.h"

namespace
{

constexpr double PI = std::numbers::pi;

struct answer {
    int found = -1, side = 7;
    double distance = -7.0, point[3] = {-7, -7, -7};
};

answer first_crossing(const pg_node* a, const pg_node* b, double tolerance)
{
    answer r;
    r.found = pg_first_crossing(a, b, &r.distance, &r.side, r.point, tolerance);
    return r;
}

answer first_crossing(const std::vector<spot>& a, const std::vector<spot>& b, double tolerance = 1e-6)
{
    return first_crossing(make_chain(a).get(), make_chain(b).get(), tolerance);
}

TEST(FirstCrossing, IsTheFirstAlongAAndOnOneSegmentTheNearest)
{
    // b crosses a's second segment three times, the middle one first along b.
    const answer r = first_crossing({{0, 0}, {10, 0}, {20, 0}},
                                    {{16, -1}, {16, 1}, {12, 1}, {12, -1}, {18, -1}, {18, 1}, {5, 5}});
    EXPECT_EQ(r.found, 1);
    EXPECT_NEAR(r.distance, 2.0, 1e-12); // from the segment's start
    EXPECT_NEAR(r.point[0], 12.0, 1e-12);
    EXPECT_EQ(r.side, -1); // downwards: from left to right
}

TEST(FirstCrossing, WritesNothingWhenThereIsNone)
{
    const answer none;
    const answer r = first_crossing({{0, 0}, {10, 0}}, {{0, 1}, {10, 1}});
    EXPECT_EQ(r.found, 0);
    EXPECT_EQ(r.distance, none.distance);
    EXPECT_EQ(r.side, none.side);
    EXPECT_EQ(std::memcmp(r.point, none.point, sizeof r.point), 0);
}

TEST(FirstCrossing, OfEmptyChainsAndLoneNodesIsNone)
{
    const std::vector<spot> chains[] = {{}, {{5, 0}}, {{0, 0}, {10, 0}}};
    for (const auto& a : chains)
        for (const auto& b : chains)
            EXPECT_EQ(first_crossing(a, b, 0.0).found, a.size() == 2 && b.size() == 2 ? 1 : 0);
}

TEST(FirstCrossing, ToleranceKeepsOffBothEnds)
{
    const std::vector<spot> a{{0, 0}, {10, 0}};
    for (const double x : {0.0, 10.0}) {
        const std::vector<spot> b{{x, -1}, {x, 1}};
        EXPECT_EQ(first_crossing(a, b, 1e-6).found, 0);
        EXPECT_EQ(first_crossing(a, b, 0.0).found, 1);
    }
    const std::vector<spot> inside{{0.5, -1}, {0.5, 1}};
    EXPECT_EQ(first_crossing(a, inside, 0.5).found, 1); // at the tolerance
    EXPECT_EQ(first_crossing(a, inside, 0.50001).found, 0);
}

TEST(FirstCrossing, WithoutToleranceTakesASegmentsStart)
{
    const answer r = first_crossing({{0, 0}, {10, 0}}, {{0, -1}, {0, 1}}, 0.0);
    EXPECT_EQ(r.found, 1);
    EXPECT_EQ(r.distance, 0.0);
    EXPECT_EQ(r.side, 1); // upwards: from right to left
}

TEST(FirstCrossing, SideTellsFromWhereBComes)
{
    const std::vector<spot> line{{0, 0}, {10, 0}};
    EXPECT_EQ(first_crossing(line, {{5, 1}, {5, -1}}).side, -1);
    EXPECT_EQ(first_crossing(line, {{5, -1}, {5, 1}}).side, 1);
    // Arcs: the direction is the tangent at the point.
    EXPECT_EQ(first_crossing({{0, 0, -1}, {10, 0}}, {{5, 9}, {5, 1}}).side, -1);
    EXPECT_EQ(first_crossing({{10, 0, 1}, {0, 0}}, {{5, 9}, {5, 1}}).side, 1);
    EXPECT_EQ(first_crossing(line, {{4, 1, 1}, {6, 1}}).found, 1);
    EXPECT_EQ(first_crossing(line, {{3, 1, 1}, {7, 1}}).side, -1);
    EXPECT_EQ(first_crossing(line, {{7, 1, -1}, {3, 1}}).side, 1);
}

// b along a or straight against it comes from neither side, whatever the directions' last digits are.
TEST(FirstCrossing, OverlapCountsAsLeftToRightInBothDirections)
{
    for (int turn = 0; turn < 360; ++turn) {
        const double x = std::cos(turn * PI / 180), y = std::sin(turn * PI / 180);
        const std::vector<spot> a{{0, 0}, {10 * x, 10 * y}};
        EXPECT_EQ(first_crossing(a, {{4 * x, 4 * y}, {20 * x, 20 * y}}).side, -1) << turn;
        EXPECT_EQ(first_crossing(a, {{20 * x, 20 * y}, {4 * x, 4 * y}}, 0.1).found, 1) << turn;
    }
    EXPECT_EQ(first_crossing({{0, 0}, {10, 0}}, {{6, 0}, {-4, 0}}, 0.0).side, -1);
    EXPECT_EQ(first_crossing({{10, 0}, {0, 0}}, {{-4, 0}, {6, 0}}, 0.1).side, -1);
}

TEST(FirstCrossing, OfAStraightSegmentLooksAtTheFirstPointAlone)
{
    // The first point with the arc is a's start; the second isn't looked at.
    EXPECT_EQ(first_crossing({{0, 0}, {4, 0}}, {{0, 0, -1}, {2, 0}}, 1e-6).found, 0);
    const answer r = first_crossing({{0, 0, -1}, {2, 0}}, {{0, 0}, {4, 0}}, 1e-6);
    EXPECT_EQ(r.found, 0); // both are a's ends
    EXPECT_EQ(first_crossing({{-1, 1, 1}, {3, 1}}, {{0, 0}, {4, 0}}, 1e-6).found, 1);
    // Of two lines in line only where the overlap starts.
    EXPECT_EQ(first_crossing({{0, 0}, {4, 0}}, {{-1, 0}, {2, 0}}, 1e-6).found, 0);
}

TEST(FirstCrossing, DistanceOnAnArcIsNotBroughtIntoATurn)
{
    // A counter-clockwise half circle across angle 0; b crosses it 0.3 radians behind its start and 0.3 before
    // its end.
    const double c = std::cos(PI / 2 - 0.3), s = std::sin(PI / 2 - 0.3);
    const answer r = first_crossing({{0, -1, 1}, {0, 1}}, {{c, -2}, {c, 2}});
    EXPECT_EQ(r.found, 1);
    EXPECT_NEAR(r.point[1], -s, 1e-12); // both lie ahead of the start's angle, 3 pi / 2, as numbers
    EXPECT_NEAR(r.distance, 0.3, 1e-12);
    const answer beyond = first_crossing({{0, -1, 1}, {0, 1}}, {{-1, 0.5}, {2, 0.5}});
    EXPECT_NEAR(beyond.distance, 3 * PI / 2 - PI / 6, 1e-12);
}

TEST(FirstCrossing, OfEquallyNearPointsTheFirstOfBStays)
{
    // Both of b's segments pass through (5, 0), in different directions.
    EXPECT_EQ(first_crossing({{0, 0}, {10, 0}}, {{5, 1}, {5, -1}, {9, -1}, {9, -2}, {5, -2}, {5, 3}}).side, -1);
    EXPECT_EQ(first_crossing({{0, 0}, {10, 0}}, {{5, -2}, {5, 3}, {9, 3}, {9, 1}, {5, 1}, {5, -1}}).side, 1);
}

TEST(FirstCrossing, BeyondTheNoValueMarkDoesNotCount)
{
    EXPECT_EQ(first_crossing({{0, 0}, {2e8, 0}}, {{9.87e7, -1}, {9.87e7, 1}}).found, 1);
    EXPECT_EQ(first_crossing({{0, 0}, {2e8, 0}}, {{9.88e7, -1}, {9.88e7, 1}}).found, 0);
}

void expect_as_scanned(const pg_node* a, const pg_node* b, double tolerance, int* found)
{
    const plain::first_crossing told = plain::scan_all_pairs(a, b, tolerance);
    const answer r = first_crossing(a, b, tolerance);
    ASSERT_EQ(r.found, told.found);
    if (!told.found)
        return;
    ++*found;
    ASSERT_EQ(r.distance, told.distance);
    ASSERT_EQ(std::memcmp(r.point, told.point, sizeof told.point), 0);
    if (std::fabs(told.sine) > 1e-14) {
        ASSERT_EQ(r.side, told.sine >= 0.0 ? -1 : 1);
    }
}

// Bit for bit, at the origin and far from it, with all that chains may have.
TEST(FirstCrossing, IsThatOfAScanOfAllPairs)
{
    for (const place& at : PLACES) {
        int found = 0;
        for (unsigned seed = 1; seed <= 6000; ++seed) {
            SCOPED_TRACE(seed);
            std::mt19937 random(seed);
            const auto make = seed % 3 ? ordinary_chain : nasty_chain;
            auto a = make(random, 2 + static_cast<int>(random() % 12));
            const auto b = make(random, 2 + static_cast<int>(random() % 40));
            for (spot& s : a) // so that most segments of a miss
                s.x += static_cast<double>(seed % 4) * 3.0;
            const double tolerance = seed % 5 == 0 ? 0.0 : 1e-6;
            expect_as_scanned(make_chain(a, at.x, at.y).get(), make_chain(b, at.x, at.y).get(), tolerance,
                              &found);
            if (HasFatalFailure())
                return;
        }
        EXPECT_GT(found, 3000);
    }
}

TEST(FirstCrossing, GivesBackWhatItTookAndDoesWithoutMemory)
{
    const chain_ptr a = make_chain({{0, 0}, {10, 0}}), b = make_chain({{3, 3}, {5, 1, 0.5}, {5, -1}, {2, -2}});
    const answer whole = first_crossing(a.get(), b.get(), 1e-6);
    for (int n = 1; n <= 3; ++n) {
        const int live = test_heap::live_blocks();
        test_heap::fail_at(n);
        const answer r = first_crossing(a.get(), b.get(), 1e-6);
        test_heap::fail_at(0);
        EXPECT_EQ(test_heap::live_blocks(), live);
        EXPECT_EQ(r.found, 1);
        EXPECT_EQ(r.distance, whole.distance);
        EXPECT_EQ(r.side, whole.side);
    }
}

} // namespace
