#include "polygon/offset.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "polygon/arcs.h"
#include "polygon/points.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr int RIGHT = 1, LEFT = 0, ROUNDED = 0, MITRED = 1;
const double QUARTER = std::tan(PI / 8);
constexpr double INF = std::numeric_limits<double>::infinity();

std::vector<spot> offset(const std::vector<spot>& chain, double distance, int side, int corner_mode = ROUNDED,
                         int remove_loops = 0)
{
    const int live_before = test_heap::live_blocks();
    std::vector<spot> result;
    {
        const chain_ptr in = make_chain(chain);
        const chain_ptr out(pg_offset(in.get(), distance, side, corner_mode, remove_loops));
        result = spots_of(out.get());
    }
    EXPECT_EQ(test_heap::live_blocks(), live_before);
    return result;
}

void expect_spots(const std::vector<spot>& result, const std::vector<spot>& expected, double tolerance = 1e-9)
{
    ASSERT_EQ(result.size(), expected.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(result[i].x, expected[i].x, tolerance);
        EXPECT_NEAR(result[i].y, expected[i].y, tolerance);
        EXPECT_NEAR(result[i].z, expected[i].z, tolerance);
        EXPECT_NEAR(result[i].bulge, expected[i].bulge, tolerance);
    }
}

// ---- straight segments and their corners

TEST(Offset, ChainOfTwoNodesGivesAParallelOfTwo)
{
    expect_spots(offset({{0, 0}, {10, 0}}, 2, RIGHT), {{0, -2}, {10, -2}});
    expect_spots(offset({{0, 0}, {10, 0}}, 2, LEFT), {{0, 2}, {10, 2}});
    expect_spots(offset({{0, 0}, {3, 4}}, 5, LEFT), {{-4, 3}, {-1, 7}});
}

TEST(Offset, AnySideButOneIsTheLeft)
{
    for (const int side : {-1, 0, 2})
        expect_spots(offset({{0, 0}, {10, 0}}, 2, side), {{0, 2}, {10, 2}});
}

TEST(Offset, AnyCornerModeButZeroMitres)
{
    for (const int mode : {-1, 1, 2})
        expect_spots(offset({{0, 0}, {10, 0}, {10, 10}}, 2, RIGHT, mode), {{0, -2}, {12, -2}, {12, 10}});
}

TEST(Offset, DistanceZeroGivesTheChain)
{
    const std::vector<spot> chain{{0, 0}, {10, 0}, {10, 10}};
    expect_spots(offset(chain, 0, RIGHT, MITRED), chain);
    expect_spots(offset(chain, 0, LEFT), chain);
}

TEST(Offset, InnerCornersMeetInBothModes)
{
    for (const int mode : {ROUNDED, MITRED}) {
        expect_spots(offset({{0, 0}, {10, 0}, {10, 10}}, 2, LEFT, mode), {{0, 2}, {8, 2}, {8, 10}});
        expect_spots(offset({{0, 0}, {10, 0}, {10, -10}}, 2, RIGHT, mode), {{0, -2}, {8, -2}, {8, -10}});
    }
}

TEST(Offset, RoundedCornersRunCounterClockwiseOnTheRightAndClockwiseOnTheLeft)
{
    expect_spots(offset({{0, 0}, {10, 0}, {10, 10}}, 2, RIGHT),
                 {{0, -2}, {10, -2, QUARTER}, {12, 0}, {12, 10}});
    expect_spots(offset({{0, 0}, {10, 0}, {10, -10}}, 2, LEFT),
                 {{0, 2}, {10, 2, -QUARTER}, {12, 0}, {12, -10}});
}

TEST(Offset, RoundedCornersAreArcsAboutTheVertex)
{
    for (double turn = 0.01; turn < 3.1; turn += 0.1)
        for (const int side : {RIGHT, LEFT}) {
            const double angle = side == RIGHT ? turn : -turn;
            const std::vector<spot> result =
                offset({{-9, 0}, {0, 0}, {9 * std::cos(angle), 9 * std::sin(angle)}}, 2, side);
            ASSERT_EQ(result.size(), 4u);
            const double e[3] = {result[1].x, result[1].y}, f[3] = {result[2].x, result[2].y}, q[3] = {};
            const double bulge = side == RIGHT ? -pg_arc_bulge(e, f, q) : pg_arc_bulge(f, e, q);
            EXPECT_NEAR(result[1].bulge, bulge, 1e-10);
        }
}

TEST(Offset, VerticesInLineGiveOneNode)
{
    for (const int mode : {ROUNDED, MITRED})
        for (const int side : {RIGHT, LEFT})
            EXPECT_EQ(offset({{0, 0}, {5, 0}, {10, 0}}, 2, side, mode).size(), 3u);
}

// A turn of `turn` radians, to that hand where it makes an outer corner.
std::vector<spot> slight_outer_turn(double turn, int side)
{
    const double angle = side == RIGHT ? turn : -turn;
    return {{-10, 0}, {0, 0}, {10 * std::cos(angle), 10 * std::sin(angle)}};
}

TEST(Offset, SmallTurnsGetTheirArcOnTheLeftOnly)
{
    EXPECT_EQ(offset(slight_outer_turn(9e-7, RIGHT), 10, RIGHT).size(), 3u);
    EXPECT_EQ(offset(slight_outer_turn(1.1e-6, RIGHT), 10, RIGHT).size(), 4u);
    const std::vector<spot> left = offset(slight_outer_turn(9e-7, LEFT), 10, LEFT);
    ASSERT_EQ(left.size(), 4u);
    EXPECT_NEAR(left[1].bulge, -9e-7 / 4, 1e-12);
    EXPECT_EQ(offset(slight_outer_turn(1e-12, LEFT), 10, LEFT).size(), 4u);
}

TEST(Offset, VerticesInLineFarFromTheOriginAreNoWholeCircles)
{
    int doubled = 0;
    for (int i = 1; i < 200; ++i) {
        const double dx = 10 * std::cos(i), dy = 10 * std::sin(i);
        const std::vector<spot> result = offset({{640000, 5120000},
                                                 {640000 + dx, 5120000 + dy},
                                                 {640000 + 2 * dx, 5120000 + 2 * dy},
                                                 {640000 + 3 * dx, 5120000 + 3 * dy}},
                                                2, LEFT, ROUNDED, 1);
        doubled += result.size() > 4;
        for (const spot& s : result)
            EXPECT_LT(std::fabs(s.bulge), 1e-8);
    }
    EXPECT_GT(doubled, 20); // the left side's nodes are there
}

TEST(Offset, MitreOutOfReachLeavesTheCornerOut)
{
    // The sides would meet 1 / tan(half of the angle) distances past the vertex; they are drawn out 100.
    const auto tip = [](double angle) {
        return offset({{0, 0}, {1000, 0}, {1000 - 1000 * std::cos(angle), 1000 * std::sin(angle)}}, 1, RIGHT,
                      MITRED);
    };
    ASSERT_EQ(tip(0.021).size(), 3u);
    EXPECT_NEAR(tip(0.021)[1].x, 1000 + 1 / std::tan(0.0105), 1e-6);
    EXPECT_EQ(tip(0.019).size(), 2u);
}

TEST(Offset, MitreOfSidesThatOverlapInLineLeavesTheCornerOut)
{
    EXPECT_EQ(offset(slight_outer_turn(1e-9, RIGHT), 1, RIGHT, MITRED).size(), 2u);
    EXPECT_EQ(offset(slight_outer_turn(1e-9, LEFT), 1, LEFT, MITRED).size(), 2u);
    EXPECT_EQ(offset(slight_outer_turn(1e-6, LEFT), 1, LEFT, MITRED).size(), 3u);
}

TEST(Offset, NextSegmentStartsAtTheCarriedCornerEvenBeyondItsOwnEnd)
{
    // Inner at (10, 0), and carried 3 down a leg of 1. The outer corner behind it lies 1 + 3 tan(15 degrees)
    // down, before the carried point: the sides don't meet.
    const double c = std::cos(PI / 3), s = std::sin(PI / 3);
    const std::vector<spot> chain{{0, 0}, {10, 0}, {10, -1}, {10 + 20 * c, -1 - 20 * s}};
    const std::vector<spot> mitred = offset(chain, 3, RIGHT, MITRED);
    ASSERT_EQ(mitred.size(), 3u);
    expect_spots({mitred[0], mitred[1]}, {{0, -3}, {7, -3}});
    // A longer leg has the corner ahead.
    const std::vector<spot> longer{{0, 0}, {10, 0}, {10, -5}, {10 + 20 * c, -5 - 20 * s}};
    const std::vector<spot> met = offset(longer, 3, RIGHT, MITRED);
    ASSERT_EQ(met.size(), 4u);
    expect_spots({met[1], met[2]}, {{7, -3}, {7, -5 - 3 * std::tan(PI / 12)}});
}

TEST(Offset, HeightsGoWithStraightSegments)
{
    expect_spots(offset({{0, 0, 0, 1}, {10, 0, 0, 2}, {10, 10, 0, 3}}, 2, LEFT),
                 {{0, 2, 0, 1}, {8, 2, 0, 2}, {8, 10, 0, 3}});
}

TEST(Offset, InputIsCleanedAndElseLeftAlone)
{
    const chain_ptr chain = make_chain({{0, 0, 0, 4}, {0, 0}, {10, 0, 0.5, 5}, {20, 0, 7}, {20, 0, 8}});
    chain->aux = 9;
    const std::vector<spot> cleaned{{0, 0, 0, 4}, {10, 0, 0.5, 5}, {20, 0, 7}};
    const chain_ptr result(pg_offset(chain.get(), 1, LEFT, ROUNDED, 1));
    EXPECT_EQ(spots_of(chain.get()), cleaned);
    EXPECT_EQ(chain->aux, 9);
    EXPECT_EQ(chain->next->prev, chain.get());
}

// ---- arcs

TEST(Offset, ArcsKeepTheirCentre)
{
    // Half circles of radius 5 about the origin.
    expect_spots(offset({{5, 0, 1}, {-5, 0}}, 2, RIGHT), {{7, 0, 1}, {-7, 0}});
    expect_spots(offset({{5, 0, 1}, {-5, 0}}, 2, LEFT), {{3, 0, 1}, {-3, 0}});
    expect_spots(offset({{5, 0, -1}, {-5, 0}}, 2, RIGHT), {{3, 0, -1}, {-3, 0}});
    expect_spots(offset({{5, 0, -1}, {-5, 0}}, 2, LEFT), {{7, 0, -1}, {-7, 0}});
    // Three quarters.
    const double most = std::tan(3 * PI / 8);
    expect_spots(offset({{5, 0, most}, {0, -5}}, 2, RIGHT), {{7, 0, most}, {0, -7}});
}

TEST(Offset, ArcNodesHaveNoHeight)
{
    expect_spots(offset({{5, 0, 1, 3}, {-5, 0, 0, 4}}, 2, RIGHT), {{7, 0, 1, 0}, {-7, 0, 0, 0}});
}

TEST(Offset, ArcInsideItsCentreComesOutOnTheOtherSide)
{
    expect_spots(offset({{5, 0, QUARTER}, {0, 5}}, 8, LEFT), {{-3, 0, QUARTER}, {0, -3}});
}

TEST(Offset, ArcInsideByItsRadiusIsOnePlaceWithoutABulge)
{
    // A fillet offset to its centre.
    expect_spots(offset({{-10, -5}, {0, -5, QUARTER}, {5, 0}, {5, 10}}, 5, LEFT),
                 {{-10, 0}, {0, 0}, {0, 0}, {0, 10}}, 1e-6);
    expect_spots(offset({{0, -5, QUARTER}, {5, 0}}, 5, LEFT), {{0, 0}, {0, 0}});
    // With arcs on both sides of it, the vertices' arcs have no length either.
    for (int heading = 0; heading < 16; ++heading) {
        std::vector<spot> chain;
        double x = 0, y = 0, direction = heading * PI / 8;
        const auto add = [&](double radius, double sweep) {
            const double chord = 2 * radius * std::sin(sweep / 2);
            chain.push_back({x, y, std::tan(sweep / 4)});
            x += chord * std::cos(direction + sweep / 2);
            y += chord * std::sin(direction + sweep / 2);
            direction += sweep;
        };
        add(5, PI / 8);
        add(2, PI / 4);
        add(5, 3 * PI / 8);
        chain.push_back({x, y});
        for (const spot& s : offset(chain, 2, LEFT))
            EXPECT_LT(std::fabs(s.bulge), 1);
    }
}

TEST(Offset, LinesThatTouchArcsStayInTouch)
{
    printed_text();
    const std::vector<spot> bend{{-10, -5}, {0, -5, QUARTER}, {5, 0}, {5, 10}};
    expect_spots(offset(bend, 2, RIGHT), {{-10, -7}, {0, -7, QUARTER}, {7, 0}, {7, 10}}, 1e-6);
    expect_spots(offset(bend, 2, LEFT), {{-10, -3}, {0, -3, QUARTER}, {3, 0}, {3, 10}}, 1e-6);
    const std::vector<spot> other{{-10, 5}, {0, 5, -QUARTER}, {5, 0}, {5, -10}};
    expect_spots(offset(other, 2, RIGHT), {{-10, 3}, {0, 3, -QUARTER}, {3, 0}, {3, -10}}, 1e-6);
    expect_spots(offset(other, 2, LEFT), {{-10, 7}, {0, 7, -QUARTER}, {7, 0}, {7, -10}}, 1e-6);
    EXPECT_EQ(printed_text(), "");
}

TEST(Offset, LineRunsOnToTheArcThatItCrosses)
{
    // The arc about the origin leaves the line at (3, -4), where it is past the direction of the line.
    printed_text();
    const std::vector<spot> chain{{-10, -4}, {3, -4, std::tan(std::atan2(4, 3) / 4)}, {5, 0}};
    const double x6 = std::sqrt(11), x4 = std::sqrt(7);
    expect_spots(offset(chain, 1, RIGHT), {{-10, -5}, {x6, -5, std::tan(std::atan2(5, x6) / 4)}, {6, 0}});
    expect_spots(offset(chain, 1, LEFT), {{-10, -3}, {x4, -3, std::tan(std::atan2(3, x4) / 4)}, {4, 0}});
    EXPECT_EQ(printed_text(), "");
    // The same mirrored and the other way round, from the arc into the line.
    const std::vector<spot> back{{5, 0, -std::tan(std::atan2(4, 3) / 4)}, {3, -4}, {-10, -4}};
    expect_spots(offset(back, 1, LEFT), {{6, 0, -std::tan(std::atan2(5, x6) / 4)}, {x6, -5}, {-10, -5}});
    expect_spots(offset(back, 1, RIGHT), {{4, 0, -std::tan(std::atan2(3, x4) / 4)}, {x4, -3}, {-10, -3}});
}

TEST(Offset, LineThatMeetsAnArcSharplyMissesIt)
{
    // The arc is looked at from where the line would touch it; this half circle stands square on the line's
    // end.
    printed_text();
    expect_spots(offset({{-10, 0}, {0, 0, -1}, {10, 0}}, 1, LEFT),
                 {{-10, 1}, {6, 1, -std::tan(3 * PI / 8)}, {11, 0}}, INF);
    EXPECT_EQ(printed_text(), "Did not intersect\n");
}

TEST(Offset, LineThatMissesTheArcSaysSoAndGoesToItsEnd)
{
    // Radius 5, parallel 8 inside it: the radius is -3, and the line goes on by 10 - 3.
    printed_text();
    const std::vector<spot> result = offset({{-10, -5}, {0, -5, QUARTER}, {5, 0}}, 8, LEFT);
    EXPECT_EQ(printed_text(), "Did not intersect\n");
    expect_spots(result, {{-10, 3}, {-3, 3, result[1].bulge}, {0 - 3, 0}});
}

TEST(Offset, ArcThatMissesTheLineEndsSquareToIt)
{
    printed_text();
    const std::vector<spot> result = offset({{0, -5, QUARTER}, {5, 0}, {5, 10}}, 8, LEFT);
    EXPECT_EQ(printed_text(), "");
    expect_spots(result, {{0, 3, QUARTER}, {-3, 0}, {-3, 10}});
}

TEST(Offset, SmoothArcsMeetInOnePoint)
{
    // An S of two quarters about (0, 0) and (10, 0).
    expect_spots(offset({{0, -5, QUARTER}, {5, 0, -QUARTER}, {10, 5}}, 2, RIGHT),
                 {{0, -7, QUARTER}, {7, 0, -QUARTER}, {10, 3}}, 1e-6);
    expect_spots(offset({{0, -5, QUARTER}, {5, 0, -QUARTER}, {10, 5}}, 2, LEFT),
                 {{0, -3, QUARTER}, {3, 0, -QUARTER}, {10, 7}}, 1e-6);
}

TEST(Offset, ArcsThatDoNotMeetAreJoinedAboutTheVertex)
{
    // A quarter about the origin, then one about (5, 5), and their mirror image.
    expect_spots(offset({{0, -5, QUARTER}, {5, 0, QUARTER}, {10, 5}}, 2, LEFT),
                 {{0, -3, QUARTER}, {3, 0, -QUARTER}, {5, 2, QUARTER}, {8, 5}});
    expect_spots(offset({{0, 5, -QUARTER}, {5, 0, -QUARTER}, {10, -5}}, 2, RIGHT),
                 {{0, 3, -QUARTER}, {3, 0, QUARTER}, {5, -2, -QUARTER}, {8, -5}});
}

// Arcs of radius 5 about (-4, 0) and (4, 0) that go on at (0, -3), the first from (0, 3) on the long way round.
std::vector<spot> two_discs(double last_direction)
{
    const double at_vertex = std::atan2(3, 4);
    return {{0, 3, std::tan((PI - at_vertex) / 2)},
            {0, -3, std::tan((last_direction - PI - at_vertex) / 4)},
            {4 + 5 * std::cos(last_direction), 5 * std::sin(last_direction)}};
}

TEST(Offset, ArcsEndAtTheOnePointWhereTheyMeet)
{
    const double y = std::sqrt(5.5 * 5.5 - 16), first = std::atan2(3, 4), meeting = std::atan2(y, 4);
    expect_spots(offset(two_discs(2 * PI), 0.5, RIGHT), {{0.4, 3.3, std::tan((2 * PI - first - meeting) / 4)},
                                                         {0, -y, std::tan((PI - meeting) / 4)},
                                                         {9.5, 0}});
}

TEST(Offset, ArcEndsAtTheFirstOfTwoPointsThoughTheNextBeginsAtTheNearer)
{
    // The parallels meet at (0, y) and (0, -y), told in this order; the second one is the nearer to the vertex.
    const double y = std::sqrt(5.5 * 5.5 - 16), first = std::atan2(3, 4), meeting = std::atan2(y, 4);
    const double last = 2 * PI + 140 * PI / 180;
    expect_spots(offset(two_discs(last), 0.5, RIGHT), {{0.4, 3.3, std::tan((meeting - first) / 4)},
                                                       {0, y, std::tan((last - PI - meeting) / 4)},
                                                       {4 + 5.5 * std::cos(last), 5.5 * std::sin(last)}});
}

TEST(Offset, OfTwoPointsAsNearTheSecondIsTaken)
{
    // Two circles that touch at the origin, about (-25, 0) and (25, 0); the parallels meet above and below it.
    const double y = std::sqrt(100.0 * 100 - 25 * 25), meeting = std::atan2(y, 25), end = std::atan2(24, 7);
    expect_spots(offset({{-18, 24, 3}, {0, 0, 3}, {18, 24}}, 75, RIGHT),
                 {{3, 96, std::tan((meeting - end) / 4)},
                  {0, y, std::tan((2 * PI - end - meeting) / 4)}, // begins at (0, -y)
                  {-3, 96}});
}

// ---- closed chains

const std::vector<spot> SQUARE{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};

void expect_closed(const std::vector<spot>& result)
{
    ASSERT_GE(result.size(), 2u);
    EXPECT_NEAR(result.front().x, result.back().x, 1e-9);
    EXPECT_NEAR(result.front().y, result.back().y, 1e-9);
}

TEST(OffsetClosed, FirstStepMakesTheCornerAtTheHead)
{
    expect_spots(offset(SQUARE, 2, LEFT), {{2, 2}, {8, 2}, {8, 8}, {2, 8}, {2, 2}});
    expect_spots(offset(SQUARE, 2, RIGHT, MITRED), {{-2, -2}, {12, -2}, {12, 12}, {-2, 12}, {-2, -2}});
}

TEST(OffsetClosed, RoundedCornerAtTheHeadIsTheLast)
{
    expect_spots(offset(SQUARE, 2, RIGHT), {{0, -2},
                                            {10, -2, QUARTER},
                                            {12, 0},
                                            {12, 10, QUARTER},
                                            {10, 12},
                                            {0, 12, QUARTER},
                                            {-2, 10},
                                            {-2, 0, QUARTER},
                                            {0, -2}});
}

TEST(OffsetClosed, ClosingNodeMayLieALittleBesideTheHead)
{
    std::vector<spot> nearly = SQUARE;
    nearly.back() = {9e-7, 9e-7};
    EXPECT_EQ(offset(nearly, 2, LEFT).size(), 5u);
    nearly.back() = {0, 1.1e-6};
    EXPECT_NEAR(offset(nearly, 2, LEFT).front().x, 0, 1e-9); // an open chain starts beside its first node
}

TEST(OffsetClosed, ArcAtTheHeadHasItsFirstPointTwice)
{
    // A stadium that starts with an arc about (10, 5).
    const std::vector<spot> stadium{{10, 0, 1}, {10, 10}, {0, 10, 1}, {0, 0}, {10, 0}};
    const std::vector<spot> result = offset(stadium, 2, RIGHT);
    ASSERT_GE(result.size(), 2u);
    EXPECT_NEAR(result[0].x, 10, 1e-5);
    EXPECT_NEAR(result[0].y, -2, 1e-9);
    EXPECT_NEAR(result[1].x, result[0].x, 1e-9);
    EXPECT_NEAR(result[1].y, result[0].y, 1e-9);
    EXPECT_EQ(result[0].bulge, 0);
    EXPECT_NEAR(result[1].bulge, 1, 1e-6);
}

TEST(OffsetClosed, CircleOfFourArcsComesOutAsOne)
{
    const std::vector<spot> circle{
        {5, 0, QUARTER}, {0, 5, QUARTER}, {-5, 0, QUARTER}, {0, -5, QUARTER}, {5, 0}};
    expect_spots(offset(circle, 2, RIGHT),
                 {{7, 0}, {7, 0, QUARTER}, {0, 7, QUARTER}, {-7, 0, QUARTER}, {0, -7, QUARTER}, {7, 0}});
}

TEST(OffsetClosed, CircleOfTwoArcsIsASpikeToTheCleaning)
{
    EXPECT_TRUE(offset({{5, 0, 1}, {-5, 0, 1}, {5, 0}}, 2, RIGHT).empty());
}

TEST(OffsetClosed, LineBeforeAnArcAtTheHeadEndsAtTheCornerWithItsChord)
{
    // The last line runs along y = 0 and the chord of the head's arc is upright.
    const std::vector<spot> stadium{{10, 0, 1}, {10, 10}, {0, 10, 1}, {0, 0}, {10, 0}};
    const std::vector<spot> inside = offset(stadium, 2, LEFT);
    EXPECT_NEAR(inside.back().x, 8, 1e-9);
    EXPECT_NEAR(inside.back().y, 2, 1e-9);
}

TEST(OffsetClosed, ArcThatEndsTheChainEndsThere)
{
    const std::vector<spot> stadium{{0, 0}, {10, 0, 1}, {10, 10}, {0, 10, 1}, {0, 0}};
    for (const int side : {RIGHT, LEFT}) {
        const std::vector<spot> result = offset(stadium, 2, side);
        ASSERT_EQ(result.size(), 5u);
        EXPECT_NEAR(result.back().x, 0, 1e-9);
        EXPECT_NEAR(result.back().y, side == RIGHT ? -2 : 2, 1e-9);
        EXPECT_NEAR(result.front().x, 0, 1e-5); // the line's touching point, told within the tolerance
        EXPECT_NEAR(result.front().y, result.back().y, 1e-9);
    }
}

TEST(OffsetClosed, MitreOutOfReachAtTheHeadLeavesItOpen)
{
    const std::vector<spot> result = offset({{0, 0}, {1000, -9}, {1000, 9}, {0, 0}}, 1, RIGHT, MITRED);
    ASSERT_EQ(result.size(), 2u);
    EXPECT_NEAR(result[0].x, 1001, 1e-9);
    EXPECT_NEAR(result[1].x, 1001, 1e-9);
    EXPECT_NEAR(result[1].y, -result[0].y, 1e-9);
}

TEST(OffsetClosed, EveryCornerKindGivesAClosedResult)
{
    const std::vector<spot> outline{{0, 0}, {20, -3}, {40, 0}, {30, 10}, {45, 25}, {20, 20}, {5, 28}, {0, 0}};
    for (std::size_t head = 0; head + 1 < outline.size(); ++head) {
        std::vector<spot> turned(outline.begin() + static_cast<std::ptrdiff_t>(head), outline.end() - 1);
        turned.insert(turned.end(), outline.begin(), outline.begin() + static_cast<std::ptrdiff_t>(head) + 1);
        for (const int side : {RIGHT, LEFT})
            for (const int mode : {ROUNDED, MITRED})
                for (const int loops : {0, 1})
                    expect_closed(offset(turned, 1.5, side, mode, loops));
    }
}

// ---- chains that are hardly chains

TEST(OffsetDegenerate, NothingToOffsetGivesNull)
{
    EXPECT_EQ(pg_offset(nullptr, 1, RIGHT, ROUNDED, 1), nullptr);
    EXPECT_TRUE(offset({{3, 4}}, 1, RIGHT).empty());
    EXPECT_TRUE(offset({{3, 4}, {3, 4}, {3, 4}}, 1, RIGHT).empty());
    EXPECT_TRUE(offset({{0, 0}, {5, 5}, {0, 0}}, 1, RIGHT).empty()); // a spike, which cleaning takes
}

TEST(OffsetDegenerate, LastNodeWithABulgeLeavesTheCornerOut)
{
    // Loops or none, the one node stays: there is no other to put in its place.
    for (const int loops : {0, 1})
        expect_spots(offset({{0, 0}, {10, 0, 0.5}}, 2, RIGHT, ROUNDED, loops), {{0, -2}});
    expect_spots(offset({{0, 0}, {10, 0}, {10, 10, 0.5}}, 2, RIGHT, MITRED), {{0, -2}, {12, -2}});
}

TEST(OffsetDegenerate, FullTurnBacksGoFarButComeOut)
{
    for (const int side : {RIGHT, LEFT})
        for (const int mode : {ROUNDED, MITRED})
            for (const int loops : {0, 1}) {
                const std::vector<spot> result = offset({{0, 0}, {10, 0}, {3, 0}}, 2, side, mode, loops);
                ASSERT_GE(result.size(), 2u);
                EXPECT_NEAR(result.front().y, side == RIGHT ? -2 : 2, 1e-9);
            }
    // On the left the corner is an outer one, half a turn.
    expect_spots(offset({{0, 0}, {10, 0}, {3, 0}}, 2, LEFT), {{0, 2}, {10, 2, -1}, {10, -2}, {3, -2}});
}

TEST(OffsetDegenerate, HeadThatIsItsOwnSecondLastNode)
{
    // Closed by the measure of x and y, and still two places by that of the distance.
    for (const double bulge : {0.0, 0.5})
        EXPECT_LE(offset({{0, 0, bulge}, {9e-7, 9e-7}}, 2, RIGHT, ROUNDED, 1).size(), 6u);
}

TEST(OffsetDegenerate, NumbersThatAreNoneEndTheWalkAllTheSame)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {nan, INF, -INF, 1e308})
        for (int field = 0; field < 4; ++field)
            for (int at = 0; at < 4; ++at)
                for (const int side : {RIGHT, LEFT})
                    for (const int mode : {ROUNDED, MITRED}) {
                        std::vector<spot> chain{{0, 0}, {10, 0, 0.4}, {10, 10}, {0, 5}};
                        spot& s = chain[static_cast<std::size_t>(at)];
                        (field == 0 ? s.x : field == 1 ? s.y : field == 2 ? s.bulge : s.z) = bad;
                        EXPECT_LT(offset(chain, 2, side, mode, 1).size(), 20u);
                    }
    for (const double distance : {nan, INF, 1e308})
        EXPECT_LT(offset(SQUARE, distance, RIGHT, ROUNDED, 1).size(), 20u);
    printed_text();
}

TEST(OffsetDegenerate, ExhaustedHeapGivesNullAndAllBack)
{
    std::vector<spot> chain;
    for (int i = 0; i < 12; ++i)
        chain.push_back({i * 4.0, i % 2 * 10.0, i % 3 == 0 ? 0.4 : 0.0});
    const chain_ptr in = make_chain(chain);
    const int live_before = test_heap::live_blocks();
    int failures = 0;
    for (int n = 1;; ++n) {
        test_heap::fail_at(n);
        pg_node* result = pg_offset(in.get(), 3, RIGHT, ROUNDED, 1);
        test_heap::fail_at(0);
        const bool came_out = result != nullptr;
        pl_free_nodes(result);
        EXPECT_EQ(test_heap::live_blocks(), live_before);
        EXPECT_EQ(spots_of(in.get()), chain);
        if (came_out)
            break;
        ++failures;
    }
    EXPECT_GT(failures, 15);
    printed_text();
}

} // namespace
