// Corners rounded by an arc.
#include "polygon/rounding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/rounding_judge.h"

namespace
{

using namespace rounding_judge;

constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double NO_END = std::numeric_limits<double>::infinity();
const double QUARTER = std::tan(std::numbers::pi / 8);

// The heap must be as it was when a test ends.
class Rounding : public testing::Test
{
protected:
    const int before = test_heap::live_blocks();
    void TearDown() override
    {
        test_heap::fail_at(0);
        EXPECT_EQ(test_heap::live_blocks(), before);
    }
};

// Rounds a chain that may get a new head.
chain_ptr round_corner(chain_ptr& chain, double x, double y, double radius)
{
    const double corner[3] = {x, y, 3};
    pg_node* head = chain.release();
    const int before = test_heap::live_blocks();
    const int nodes = pg_count(head);
    chain_ptr rounded(pg_round_corner(&head, corner, radius));
    chain.reset(head);
    EXPECT_EQ(test_heap::live_blocks() - before, pg_count(rounded.get()) + pg_count(head) - nodes);
    return rounded;
}

spots rounded(const spots& chain, double x, double y, double radius)
{
    auto input = make_chain(chain);
    const auto answer = round_corner(input, x, y, radius);
    return spots_of(answer.get());
}

struct two_chains {
    chain_ptr first, second;
    pg_node* answer = nullptr;
};

two_chains join(const spots& first, const spots& second, double x, double y, double radius)
{
    pg_node* a = make_chain(first).release();
    pg_node* b = make_chain(second).release();
    const double corner[3] = {x, y, 3};
    pg_node* answer = pg_round_join(&a, &b, corner, radius);
    return {chain_ptr(a), chain_ptr(b), answer};
}

// ---- one chain

TEST_F(Rounding, SquareCornerIsTouchedAtTheRadiusFromIt)
{
    expect_near(rounded({{0, 40}, {50, 40}, {50, 90}}, 50, 40, 6),
                {{0, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}}, 1e-9);
}

TEST_F(Rounding, SquareCornerFarFromTheOrigin)
{
    const double x = 640000, y = 5120000;
    expect_near(rounded({{x, y + 40}, {x + 50, y + 40}, {x + 50, y + 90}}, x + 50, y + 40, 6),
                {{x, y + 40}, {x + 44, y + 40, QUARTER}, {x + 50, y + 46}, {x + 50, y + 90}}, 1e-7);
}

TEST_F(Rounding, CornerToTheRightComesBackTurnedRound)
{
    expect_near(rounded({{50, 90}, {50, 40}, {0, 40}}, 50, 40, 6),
                {{0, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}}, 1e-9);
}

TEST_F(Rounding, CornersOfAllAngles)
{
    for (int deg = 10; deg <= 350; deg += 10) {
        if (deg == 180)
            continue;
        SCOPED_TRACE(deg);
        const double a = deg * std::numbers::pi / 180;
        const spots chain{{100, 0}, {0, 0}, {100 * std::cos(a), 100 * std::sin(a)}};
        const double inner = deg < 180 ? a : 2 * std::numbers::pi - a; // between the sides
        const double from_corner = 5 / std::tan(inner / 2), sweep = std::numbers::pi - inner;
        const spot on_x{from_corner, 0};
        const spot on_other{from_corner * std::cos(a), from_corner * std::sin(a)};
        const spots answer = rounded(chain, 0, 0, 5);
        spots expected{chain.front(), on_x, on_other, chain.back()};
        if (deg < 180) // coming along x the corner is to the right
            expected = {chain.back(), on_other, on_x, chain.front()};
        expected[1].bulge = std::tan(sweep / 4);
        expect_near(answer, expected, 1e-7);
    }
}

TEST_F(Rounding, OtherCornersOfTheChainStay)
{
    expect_near(rounded({{-20, 90}, {0, 40}, {50, 40}, {50, 90}, {20, 95}}, 50, 40, 6),
                {{-20, 90}, {0, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}, {20, 95}}, 1e-9);
}

TEST_F(Rounding, TangentPointMayLieBehindOtherCorners)
{
    // The first leg is shorter than the radius and bends by a little.
    const spots chain{{0, 38}, {46, 40}, {50, 40}, {50, 90}};
    const spots answer = rounded(chain, 50, 40, 8);
    ASSERT_EQ(answer.size(), 4u);
    const faults f = faults_of(answer, 1, {chain[0], chain[1], chain[2]}, {chain[3], chain[2]}, 8);
    EXPECT_LT(f.to_sides, 2e-3);
    EXPECT_LT(answer[1].x, 46);
}

TEST_F(Rounding, TouchingPointsLieAtHeightZero)
{
    const auto answer = spots_of([] {
        auto input = make_chain({{0, 40, 0, 7}, {50, 40, 0, 8}, {50, 90, 0, 9}});
        return round_corner(input, 50, 40, 6);
    }()
                                     .get());
    ASSERT_EQ(answer.size(), 4u);
    EXPECT_EQ(answer[0].z, 7);
    EXPECT_EQ(answer[1].z, 0);
    EXPECT_EQ(answer[2].z, 0);
    EXPECT_EQ(answer[3].z, 9);
}

TEST_F(Rounding, SlopesDontCount)
{
    auto input = make_chain({{0, 40, 0, 25}, {50, 40, 0, 0}, {50, 90, 0, 6}});
    const auto answer = round_corner(input, 50, 40, 20);
    expect_near(spots_of(answer.get()), {{0, 40}, {30, 40, QUARTER}, {50, 60}, {50, 90}}, 1e-9);
    EXPECT_EQ(input->z, 25);
}

TEST_F(Rounding, InputIsCleanedAndElseLeftAlone)
{
    auto input = make_chain({{0, 40, 0, 7}, {0, 40}, {50, 40, 0, 8}, {60, 40}, {50, 40}, {50, 90, 0.5, 9}});
    const pg_node* head = input.get();
    const auto answer = round_corner(input, 50, 40, 6);
    EXPECT_NE(answer, nullptr);
    EXPECT_EQ(input.get(), head);
    EXPECT_EQ(spots_of(input.get()), (spots{{0, 40, 0, 7}, {50, 40, 0, 8}, {50, 90, 0.5, 9}}));
}

TEST_F(Rounding, ArcsOfTheSidesStayArcs)
{
    // A quarter circle about (0, 50) from below into the corner.
    const spots chain{{-50, 50, QUARTER}, {0, 0}, {0, 60}};
    const spots answer = rounded(chain, 0, 0, 4);
    ASSERT_EQ(answer.size(), 4u);
    const faults f = faults_of(answer, 1, {chain[0], chain[1]}, {chain[2], chain[1]}, 4);
    EXPECT_LT(f.to_sides, 5e-3);
    EXPECT_LT(f.off_sides, 1e-6);
    EXPECT_LT(f.kink, 5e-3);
    EXPECT_GT(answer[0].bulge, 0.3);
    EXPECT_LT(answer[0].bulge, QUARTER);
}

// ---- closed chains

const spots RECTANGLE{{0, 0}, {30, 0}, {30, 12}, {0, 12}, {0, 0}};

TEST_F(Rounding, ClosedRectangleAtItsFirstVertexIsOpenedAtTheFarCorner)
{
    auto input = make_chain(RECTANGLE);
    const auto answer = round_corner(input, 0, 0, 5);
    expect_near(spots_of(answer.get()), {{30, 12}, {0, 12}, {0, 5, QUARTER}, {5, 0}, {30, 0}, {30, 12}}, 1e-9);
    EXPECT_EQ(spots_of(input.get()), (spots{{30, 12}, {0, 12}, {0, 0}, {30, 0}, {30, 12}}));
}

TEST_F(Rounding, ClosedRectangleTheOtherWayRound)
{
    auto input = make_chain(turned_round(RECTANGLE));
    const auto answer = round_corner(input, 0, 0, 5);
    expect_near(spots_of(answer.get()), {{30, 12}, {0, 12}, {0, 5, QUARTER}, {5, 0}, {30, 0}, {30, 12}}, 1e-9);
    EXPECT_EQ(spots_of(input.get()), (spots{{30, 12}, {30, 0}, {0, 0}, {0, 12}, {30, 12}}));
}

TEST_F(Rounding, ClosedRectangleAtAnotherVertexStaysClosed)
{
    auto input = make_chain(RECTANGLE);
    const auto answer = round_corner(input, 30, 0, 5);
    expect_near(spots_of(answer.get()), {{0, 0}, {25, 0, QUARTER}, {30, 5}, {30, 12}, {0, 12}, {0, 0}}, 1e-9);
    EXPECT_EQ(spots_of(input.get()), RECTANGLE);
}

TEST_F(Rounding, OpeningTakesBulgesAndSecondValuesAlong)
{
    auto input = make_chain({{0, 0, 0.1}, {30, 0, 0.2}, {30, 12, 0.3}, {0, 12, 0.4}, {0, 0, 0.5}});
    double aux = 10;
    for (pg_node* n = input.get(); n; n = n->next)
        n->aux = aux++;
    round_corner(input, 0, 0, 1e9); // no such circle: opened all the same
    EXPECT_EQ(spots_of(input.get()),
              (spots{{30, 12, 0.3}, {0, 12, 0.4}, {0, 0, 0.1}, {30, 0, 0.2}, {30, 12, 0}}));
    EXPECT_EQ(input->aux, 12);
    EXPECT_EQ(input->next->aux, 13);
    EXPECT_EQ(input->next->next->aux, 10);
    EXPECT_EQ(input->next->next->next->aux, 11);
}

TEST_F(Rounding, OpensAtTheFirstOfTheFarthestNodes)
{
    auto input = make_chain({{0, 0}, {10, 0}, {0, 10}, {0, 0}});
    round_corner(input, 0, 0, 1e9);
    EXPECT_EQ(spots_of(input.get()), (spots{{10, 0}, {0, 10}, {0, 0}, {10, 0}}));
    input = make_chain({{0, 0}, {5, -5}, {10, 10}, {0, 0}});
    round_corner(input, 0, 0, 1e9);
    EXPECT_EQ(spots_of(input.get()), (spots{{10, 10}, {0, 0}, {5, -5}, {10, 10}}));
}

TEST_F(Rounding, OpenChainBeginningAtTheCornerIsNotOpened)
{
    auto input = make_chain({{0, 0}, {30, 0}, {30, 12}, {2e-6, 0}});
    EXPECT_EQ(round_corner(input, 0, 0, 1e9), nullptr);
    EXPECT_EQ(input->x, 0);
}

TEST_F(Rounding, RectangleTakesCirclesUpToItsWidth)
{
    EXPECT_FALSE(rounded(RECTANGLE, 30, 0, 5.99).empty());
    EXPECT_TRUE(rounded(RECTANGLE, 30, 0, 6.01).empty());
    EXPECT_TRUE(rounded(RECTANGLE, 0, 0, 6.01).empty());
}

TEST_F(Rounding, APathThatOnlyReachesTheRadiusHasNoCentre)
{
    // The middle line of the rectangle lies at 6 from both long sides, and no path passes that.
    EXPECT_TRUE(rounded(RECTANGLE, 30, 0, 6).empty());
}

TEST_F(Rounding, ReflexCornerOfAnOutlineIsRoundedOutside)
{
    const spots outline{{0, 0}, {60, 0}, {60, 60}, {30, 60}, {30, 30}, {0, 30}, {0, 0}};
    const spots answer = rounded(outline, 30, 30, 5);
    ASSERT_EQ(answer.size(), 8u);
    double least = NO_END;
    for (const spot& s : answer)
        least = std::min(least, apart(s.x, s.y, 30, 30));
    EXPECT_NEAR(least, 5, 1e-7);
    expect_near(answer, {{0, 0}, {0, 30}, {25, 30, QUARTER}, {30, 35}, {30, 60}, {60, 60}, {60, 0}, {0, 0}},
                1e-7);
}

TEST_F(Rounding, CornerWhereTheNetworkOfARingClosesIsRoundedToo)
{
    // The only corner that turns to the outside, so blunt that its line meets nothing within reach.
    const spots outline{{0, 0}, {0, 50}, {50, 45}, {100, 50}, {100, 0}, {0, 0}};
    const double out = std::hypot(50, 5), along = 20 * 5 / 50.0; // radius times the tangent of half the turn
    const double dx = along * 50 / out, dy = along * 5 / out, bulge = std::tan(std::atan2(5, 50) / 2);
    const spots expected{{0, 0},   {0, 50}, {50 - dx, 45 + dy, bulge}, {50 + dx, 45 + dy}, {100, 50},
                         {100, 0}, {0, 0}};
    expect_near(rounded(outline, 50, 45, 20), expected, 1e-9);
    expect_near(rounded(turned_round(outline), 50, 45, 20), expected, 1e-9);
    EXPECT_TRUE(rounded(outline, 50, 45, 600).empty());
}

TEST_F(Rounding, JoinWhereTheNetworkOfARingClosesIsRoundedToo)
{
    const spots in{{100, 0}, {100, 50}, {50, 45}}, out{{50, 45}, {0, 50}, {0, 0}, {100, 0}};
    const auto made = join(in, out, 50, 45, 20);
    const spots got = spots_of(made.answer);
    ASSERT_EQ(got.size(), 7u);
    const auto arc = std::find_if(got.begin(), got.end(), [](const spot& s) { return s.bulge != 0; });
    ASSERT_NE(arc, got.end());
    const circle o = circle_of(arc[0], arc[1]);
    EXPECT_NEAR(o.x, 50, 1e-9);
    EXPECT_NEAR(o.y, 45 + 20 * std::hypot(50, 5) / 50, 1e-9);
}

// ---- sides that fold back behind the tangent point

TEST_F(Rounding, TangentPointIsNotLookedForFarBehindTheSide)
{
    expect_near(rounded({{60, 34}, {-10, 34}, {-10, 40}, {50, 40}, {50, 90}}, 50, 40, 6),
                {{60, 34}, {-10, 34}, {-10, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}}, 1e-9);
}

TEST_F(Rounding, NarrowStripIsCutAtTheNearSide)
{
    // Thinner than half the radius, so that a line across the near side reaches the far one.
    const spots strip{{0, 0}, {50, 0}, {50, 50}, {48, 50}, {48, 2}, {0, 2}, {0, 0}};
    expect_near(rounded(strip, 48, 2, 6),
                {{0, 0}, {0, 2}, {42, 2, QUARTER}, {48, 8}, {48, 50}, {50, 50}, {50, 0}, {0, 0}}, 1e-9);
}

TEST_F(Rounding, JoinOfASideThatFoldsBackIsCutAtTheNearSide)
{
    const auto made = join({{60, 38}, {-10, 38}, {-10, 40}, {50, 40}}, {{50, 40}, {50, 90}}, 50, 40, 6);
    expect_near(spots_of(made.answer), {{60, 38}, {-10, 38}, {-10, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}},
                1e-9);
}

// ---- null

TEST_F(Rounding, TooFewNodesGiveNull)
{
    EXPECT_TRUE(rounded({}, 0, 0, 1).empty());
    EXPECT_TRUE(rounded({{0, 0}}, 0, 0, 1).empty());
    EXPECT_TRUE(rounded({{0, 0}, {9, 0}}, 9, 0, 1).empty());
    EXPECT_TRUE(rounded({{0, 0}, {9, 0}, {9, 0}}, 9, 0, 1).empty()); // after cleaning
    EXPECT_TRUE(rounded({{0, 0}, {9, 0}, {0, 0}}, 0, 0, 1).empty());
}

TEST_F(Rounding, CornerThatIsNoCornerGivesNull)
{
    const spots chain{{0, 40}, {50, 40}, {50, 90}};
    EXPECT_TRUE(rounded(chain, 7, 7, 6).empty());   // not on the chain
    EXPECT_TRUE(rounded(chain, 20, 40, 6).empty()); // in the middle of a side
    EXPECT_TRUE(rounded(chain, 0, 40, 6).empty());  // an end
    EXPECT_TRUE(rounded(chain, 50, 90, 6).empty());
    EXPECT_TRUE(rounded({{0, 40}, {50, 40}, {90, 40}}, 50, 40, 6).empty()); // straight on
}

TEST_F(Rounding, RadiusWithoutACircleGivesNull)
{
    const spots chain{{0, 40}, {50, 40}, {50, 90}};
    for (const double radius : {0.0, -0.0, -6.0, 1000.0, 1e300, NO_END, -NO_END, NO_NUMBER})
        EXPECT_TRUE(rounded(chain, 50, 40, radius).empty()) << radius;
}

TEST_F(Rounding, NumbersThatAreNoneGiveNoCrash)
{
    for (const double odd : {NO_NUMBER, NO_END, -NO_END, 1e308, 1e160, 1e-160}) {
        const spots chain{{0, 40}, {50, 40}, {50, 90}};
        rounded(chain, odd, 40, 6);
        rounded(chain, 50, odd, 6);
        for (std::size_t i = 0; i < chain.size(); ++i) {
            spots nasty = chain;
            nasty[i].x = odd;
            rounded(nasty, 50, 40, 6);
            nasty = chain;
            nasty[i].y = odd;
            rounded(nasty, 50, 40, 6);
            nasty = chain;
            nasty[i].bulge = odd;
            rounded(nasty, 50, 40, 6);
        }
        spots closed = RECTANGLE;
        closed[2].x = odd;
        rounded(closed, 0, 0, 5);
        closed[1] = closed[2] = closed[3] = {odd, odd};
        rounded(closed, 0, 0, 5);
    }
}

TEST_F(Rounding, WholeOrNullWheneverTheHeapIsExhausted)
{
    const spots whole = rounded(RECTANGLE, 0, 0, 5);
    ASSERT_EQ(whole.size(), 6u);
    int n = 1;
    for (int refused = 0; n < 1000 && refused < 3; ++n) {
        auto input = make_chain(RECTANGLE);
        const double corner[3] = {};
        pg_node* head = input.release();
        test_heap::fail_at(n);
        const chain_ptr answer(pg_round_corner(&head, corner, 5));
        test_heap::fail_at(0);
        input.reset(head);
        EXPECT_EQ(pg_count(head), 5);
        if (answer) {
            expect_near(spots_of(answer.get()), whole, 0);
            ++refused;
        }
    }
    EXPECT_GT(n, 15);
}

// ---- two chains

const spots INTO{{0, 40}, {50, 40}}, OUT_OF{{50, 40}, {50, 90}};
const spots JOINED{{0, 40}, {44, 40, QUARTER}, {50, 46}, {50, 90}};

TEST_F(Rounding, JoinsTwoChainsWhicheverWayTheyRun)
{
    for (const spots& a : {INTO, turned_round(INTO)})
        for (const spots& b : {OUT_OF, turned_round(OUT_OF)})
            for (const bool exchanged : {false, true}) {
                SCOPED_TRACE(testing::Message() << a[0].x << ' ' << b[0].y << ' ' << exchanged);
                const auto made = exchanged ? join(b, a, 50, 40, 6) : join(a, b, 50, 40, 6);
                ASSERT_NE(made.answer, nullptr);
                EXPECT_EQ(made.answer, made.first.get());
                EXPECT_EQ(made.second, nullptr);
                expect_near(spots_of(made.answer), JOINED, 1e-9);
            }
}

TEST_F(Rounding, JoinOfTwoNodesOfAllAngles)
{
    for (int deg = 10; deg < 180; deg += 10) {
        SCOPED_TRACE(deg);
        const double a = deg * std::numbers::pi / 180, along = 5 / std::tan(a / 2);
        const spots in{{100 * std::cos(a), 100 * std::sin(a)}, {0, 0}};
        const auto made = join(in, {{0, 0}, {100, 0}}, 0, 0, 5);
        expect_near(spots_of(made.answer),
                    {in[0],
                     {along * std::cos(a), along * std::sin(a), std::tan((std::numbers::pi - a) / 4)},
                     {along, 0},
                     {100, 0}},
                    1e-7);
    }
}

TEST_F(Rounding, JoinKeepsWhatItDoesNotCut)
{
    pg_node* a =
        make_chain({{0, 70, 0.2, 5}, {0, 40, 0, 6}, {50, 40, 9}}).release(); // the last bulge has no meaning
    pg_node* b = make_chain(OUT_OF).release();
    a->keep = 0;
    a->aux = 4.5;
    const double corner[3] = {50, 40, 0};
    const chain_ptr answer(pg_round_join(&a, &b, corner, 6));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(answer->keep, 0);
    EXPECT_EQ(answer->aux, 4.5);
    const spots got = spots_of(answer.get());
    EXPECT_EQ(got[0], (spot{0, 70, 0.2, 5}));
    EXPECT_EQ(got[1], (spot{0, 40, 0, 6}));
    expect_near({got.begin() + 1, got.end()}, JOINED, 1e-9);
}

TEST_F(Rounding, StraightOnIsNoCornerOfAJoinEither)
{
    EXPECT_EQ(join({{0, 40}, {50, 40}}, {{50, 40}, {90, 40}}, 50, 40, 6).answer, nullptr);
    EXPECT_EQ(join({{90, 40}, {50, 40}}, {{50, 40}, {0, 40}}, 50, 40, 6).answer, nullptr);
}

TEST_F(Rounding, ASmallArcIsNoneOnAChainButJoins)
{
    // The sides turn by 3e-6, and bulges are a quarter of that.
    const double rise = 40 * 3e-6;
    const spots in{{-40, 0}, {0, 0}}, out{{0, 0}, {40, rise}};
    EXPECT_TRUE(rounded({in[0], in[1], out[1]}, 0, 0, 10).empty());
    const auto made = join(in, out, 0, 0, 10);
    ASSERT_NE(made.answer, nullptr);
    EXPECT_NEAR(spots_of(made.answer)[1].bulge, 0.75e-6, 1e-8);
}

TEST_F(Rounding, TheLeastArcOfAChainHasABulgeOfAMillionth)
{
    const auto turning_by = [](double turn) { return rounded({{-40, 0}, {0, 0}, {40, 40 * turn}}, 0, 0, 10); };
    EXPECT_TRUE(turning_by(3.9e-6).empty());
    EXPECT_EQ(turning_by(4.1e-6).size(), 4u);
}

TEST_F(Rounding, FailedJoinOfACornerToTheLeftTurnsTheSecondRound)
{
    const auto made = join(INTO, OUT_OF, 50, 40, 1000);
    EXPECT_EQ(made.answer, nullptr);
    EXPECT_EQ(spots_of(made.first.get()), INTO);
    EXPECT_EQ(spots_of(made.second.get()), turned_round(OUT_OF));
}

TEST_F(Rounding, FailedJoinOfACornerToTheRightExchangesTheChains)
{
    const auto made = join(turned_round(OUT_OF), turned_round(INTO), 50, 40, 1000);
    EXPECT_EQ(made.answer, nullptr);
    EXPECT_EQ(spots_of(made.first.get()), INTO);
    EXPECT_EQ(spots_of(made.second.get()), turned_round(OUT_OF));
}

TEST_F(Rounding, FailedJoinPutsChainsBackThatRanTheOtherWay)
{
    auto made = join(turned_round(INTO), OUT_OF, 50, 40, 1000);
    EXPECT_EQ(spots_of(made.first.get()), turned_round(INTO));
    EXPECT_EQ(spots_of(made.second.get()), turned_round(OUT_OF));
    made = join(INTO, turned_round(OUT_OF), 50, 40, 1000);
    EXPECT_EQ(spots_of(made.first.get()), INTO);
    EXPECT_EQ(spots_of(made.second.get()), OUT_OF);
}

TEST_F(Rounding, JoinAwayFromTheCornerLeavesTheChains)
{
    for (const double radius : {6.0, 0.0, -1.0, NO_NUMBER}) {
        const auto made = join(INTO, OUT_OF, 7, 7, radius);
        EXPECT_EQ(made.answer, nullptr);
        EXPECT_EQ(spots_of(made.first.get()), INTO);
        EXPECT_EQ(spots_of(made.second.get()), OUT_OF);
    }
}

TEST_F(Rounding, JoinWithoutTwoChainsGivesNull)
{
    for (const auto& [a, b] : {std::pair<spots, spots>{{}, {}}, {INTO, {}}, {{}, OUT_OF}}) {
        const auto made = join(a, b, 50, 40, 6);
        EXPECT_EQ(made.answer, nullptr);
        EXPECT_EQ(spots_of(made.first.get()), a);
        EXPECT_EQ(spots_of(made.second.get()), b);
    }
    auto chain = make_chain(INTO);
    pg_node* a = chain.get();
    pg_node* b = chain.get();
    const double corner[3] = {50, 40, 0};
    EXPECT_EQ(pg_round_join(&a, &b, corner, 6), nullptr); // one chain twice
    EXPECT_EQ(spots_of(chain.get()), INTO);
}

TEST_F(Rounding, JoinOfDegenerateChainsGivesNoCrash)
{
    for (const double odd : {NO_NUMBER, NO_END, -NO_END, 1e308, 1e160, 1e-160, 50.0}) {
        join({{50, 40}}, OUT_OF, 50, 40, odd);
        join({{50, 40}}, {{50, 40}}, 50, 40, 6);
        join({{50, 40}, {50, 40}}, OUT_OF, 50, 40, 6);
        join({{odd, 40}, {50, 40}}, OUT_OF, 50, 40, 6);
        join({{0, 40, odd}, {50, 40}}, OUT_OF, 50, 40, 6);
        join(INTO, {{50, 40}, {odd, 90, odd}, {odd, odd}}, 50, 40, 6);
        join(INTO, OUT_OF, odd, odd, 6);
        join(INTO, turned_round(INTO), 50, 40, 6); // there and back
        join(INTO, INTO, 50, 40, 6);
        join(RECTANGLE, OUT_OF, 50, 40, 6);
        join(RECTANGLE, RECTANGLE, 0, 0, 5);
    }
}

TEST_F(Rounding, JoinIsWholeOrNullWheneverTheHeapIsExhausted)
{
    int n = 1;
    for (int refused = 0; n < 1000 && refused < 3; ++n) {
        pg_node* a = make_chain(INTO).release();
        pg_node* b = make_chain(OUT_OF).release();
        const double corner[3] = {50, 40, 0};
        test_heap::fail_at(n);
        const pg_node* answer = pg_round_join(&a, &b, corner, 6);
        test_heap::fail_at(0);
        if (answer) {
            EXPECT_EQ(answer, a);
            EXPECT_EQ(b, nullptr);
            expect_near(spots_of(answer), JOINED, 1e-9);
            ++refused;
        } else {
            EXPECT_EQ(spots_of(a), INTO);
            EXPECT_EQ(pg_count(b), 2);
        }
        pl_free_nodes(a);
        pl_free_nodes(b);
    }
    EXPECT_GT(n, 15);
}

// ---- the centre

TEST_F(Rounding, RefinedCentreMovesToTheRadiusFromBoth)
{
    const auto a = make_chain({{0, 0}, {100, 0}}), b = make_chain({{0, 0}, {0, 100}});
    double point[3] = {5.3, 4.8, 42};
    pg_centre_refine(point, 5, a.get(), b.get());
    EXPECT_NEAR(point[0], 5, 6e-4); // 0.3 halved nine times
    EXPECT_NEAR(point[1], 5, 6e-4);
    EXPECT_EQ(point[2], 42);
}

TEST_F(Rounding, RefiningTakesHalfOfBothCorrectionsTenTimesAtMost)
{
    const auto a = make_chain({{0, 0}, {100, 0}}), b = make_chain({{0, 0}, {0, 100}});
    double point[3] = {5.75, 5, 0};
    pg_centre_refine(point, 5, a.get(), b.get());
    EXPECT_NEAR(point[0] - 5, 0.75 / 512, 1e-12); // still above 0.0001
    EXPECT_NEAR(point[1], 5, 1e-12);
}

TEST_F(Rounding, RefiningEndsWhenItIsNearEnough)
{
    const auto a = make_chain({{0, 0}, {100, 0}}), b = make_chain({{0, 0}, {0, 100}});
    double point[3] = {5.00009, 5, 0};
    pg_centre_refine(point, 5, a.get(), b.get());
    EXPECT_EQ(point[0], 5.00009);
    double further[3] = {5.00011, 5, 0};
    pg_centre_refine(further, 5, a.get(), b.get());
    EXPECT_NEAR(further[0], 5.000055, 1e-12);
}

TEST_F(Rounding, CentreOneUnitOffIsNotRefined)
{
    const auto a = make_chain({{0, 0}, {100, 0}}), b = make_chain({{0, 0}, {0, 100}});
    for (const double x : {6.0, 7.5, 4.0, -3.0, NO_NUMBER, NO_END}) {
        double point[3] = {x, 5, 0};
        pg_centre_refine(point, 5, a.get(), b.get());
        EXPECT_EQ(std::isnan(point[0]), std::isnan(x));
        if (!std::isnan(x)) {
            EXPECT_EQ(point[0], x);
        }
        EXPECT_EQ(point[1], 5);
    }
}

TEST_F(Rounding, RefiningKeepsTheLastPointThatWasBetter)
{
    // Between parallels 10 apart nothing is at 4.8 from both; the middle is best.
    const auto a = make_chain({{0, 0}, {100, 0}}), b = make_chain({{0, 10}, {100, 10}});
    double point[3] = {50, 4.9, 0};
    pg_centre_refine(point, 4.8, a.get(), b.get());
    EXPECT_NEAR(point[1], 5, 1e-12);
}

TEST_F(Rounding, RefiningWithoutAChainLeavesThePoint)
{
    const auto a = make_chain({{0, 0}, {100, 0}});
    double point[3] = {50, 4.9, 0};
    pg_centre_refine(point, 5, a.get(), nullptr);
    pg_centre_refine(point, 5, nullptr, a.get());
    EXPECT_EQ(point[0], 50);
    EXPECT_EQ(point[1], 4.9);
}

TEST_F(Rounding, RefiningOutsideAnArcGoesTowardsItsCircle)
{
    // A half circle of radius 10 about the origin, seen from outside, and the line x = 0 above it.
    const auto a = make_chain({{10, 0, 1}, {-10, 0}}), b = make_chain({{0, 10}, {0, 60}});
    const double y = std::sqrt(13.0 * 13.0 - 9.0);
    double point[3] = {3.2, y + 0.2, 0};
    pg_centre_refine(point, 3, a.get(), b.get());
    EXPECT_NEAR(std::hypot(point[0], point[1]), 13, 2e-3);
    EXPECT_NEAR(point[0], 3, 2e-3);
}

} // namespace
