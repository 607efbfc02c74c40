#include "polygon/measures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "polygon/arcs.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"
#include "tests/polygon/random_segments.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();

struct closest_answer {
    double distance_sq, foot_sq = -7, out[3] = {-7, -7, -7};
};

closest_answer closest(const std::vector<spot>& chain, double x, double y)
{
    closest_answer r{};
    const double point[3] = {x, y, 0};
    r.distance_sq = pg_closest(point, make_chain(chain).get(), &r.foot_sq, r.out);
    return r;
}

double length(const std::vector<spot>& chain)
{
    return pg_length(make_chain(chain).get());
}

double along(const std::vector<spot>& chain, double x, double y)
{
    const double point[3] = {x, y, 0};
    return pg_distance_along(make_chain(chain).get(), point);
}

struct place_answer {
    int there;
    double out[3] = {-7, -7, -7}, direction = -7;
};

place_answer place_at(const std::vector<spot>& chain, double distance)
{
    place_answer r{};
    r.there = pg_point_at(make_chain(chain).get(), distance, r.out, &r.direction);
    return r;
}

TEST(Closest, OfNothingIsTheNoValueMark)
{
    const closest_answer r = closest({}, 1, 2);
    EXPECT_EQ(r.distance_sq, 98765432.1);
    EXPECT_EQ(r.foot_sq, -7);
    EXPECT_EQ(r.out[0], -7);
}

TEST(Closest, OfALoneNodeIsTheNode)
{
    const closest_answer r = closest({{3, 4}}, 0, 0);
    EXPECT_EQ(r.distance_sq, 25);
    EXPECT_EQ(r.out[0], 3);
    EXPECT_EQ(r.out[2], -7); // x and y only
    EXPECT_EQ(r.foot_sq, 98765432.1 * 98765432.1);
}

TEST(Closest, FootOnALineWinsOverItsEnds)
{
    const closest_answer r = closest({{0, 0}, {10, 0}}, 3, 2);
    EXPECT_EQ(r.distance_sq, 4);
    EXPECT_EQ(r.out[0], 3);
    EXPECT_EQ(r.foot_sq, 98765432.1 * 98765432.1);
}

TEST(Closest, FootBeyondALineLowersTheFootDistance)
{
    const closest_answer r = closest({{0, 0}, {10, 0}}, 13, 4);
    EXPECT_EQ(r.distance_sq, 25);
    EXPECT_EQ(r.foot_sq, 9);
    // So does a foot within a line that is no nearer than what was found.
    EXPECT_EQ(closest({{0, 0}, {10, 0}, {10, 5}, {0, 5}}, 4, 1).foot_sq,
              1); // of the second side, from its start
    const double point[3] = {3, 2, 0};
    double out[3];
    EXPECT_EQ(pg_closest(point, make_chain({{0, 0}, {10, 0}}).get(), nullptr, out), 4);
}

bool in_order(double a, double between, double b)
{
    return std::fmin(a, b) <= between && between <= std::fmax(a, b);
}

// The foot is within a segment when it is in the box of its ends. Square to an end of the segment the foot is
// that end, and wins: it lowers no foot distance.
TEST(Closest, FootOnAnEndIsWithinTheLine)
{
    std::mt19937 random(5);
    std::uniform_int_distribution<int> whole(-40, 40);
    for (const place& at : PLACES)
        for (int round = 0; round < 3000; ++round) {
            const double x = whole(random), y = whole(random), dx = whole(random),
                         dy = round % 4 ? whole(random) : 0;
            if (dx == 0 && dy == 0)
                continue;
            const double end = round % 2;
            const double from[3] = {at.x + (x + end * dx - dy) / 10.0, at.y + (y + end * dy + dx) / 10.0, 0};
            const chain_ptr chain =
                make_chain({{x / 10.0, y / 10.0}, {(x + dx) / 10.0, (y + dy) / 10.0}}, at.x, at.y);
            double foot_sq = -7, out[3];
            const double best = pg_closest(from, chain.get(), &foot_sq, out);
            const pg_node* foot = end ? chain->next : chain.get();
            ASSERT_NEAR(best, (dx * dx + dy * dy) / 100.0, 1e-6);
            ASSERT_NEAR(out[0], foot->x, 1e-8);
            ASSERT_NEAR(out[1], foot->y, 1e-8);
            const double* p = &chain->x;
            const double* q = &chain->next->x;
            const double lx = q[0] - p[0], ly = q[1] - p[1];
            const double t = ((from[0] - p[0]) * lx + (from[1] - p[1]) * ly) / (lx * lx + ly * ly);
            if (in_order(p[0], p[0] + t * lx, q[0]) && in_order(p[1], p[1] + t * ly, q[1])) {
                ASSERT_EQ(foot_sq, 98765432.1 * 98765432.1) << round;
            } else { // by a digit
                ASSERT_TRUE(foot_sq < 1e-15 || foot_sq == 98765432.1 * 98765432.1) << foot_sq;
            }
        }
}

TEST(Closest, PointBeyondAnArcsCircleGivesTheCentreWithTheTrueDistance)
{
    const closest_answer r = closest({{2, 0, 1}, {0, 0}}, 1, 3);
    EXPECT_NEAR(r.distance_sq, 4, 1e-12);
    EXPECT_NEAR(r.out[0], 1, 1e-12);
    EXPECT_NEAR(r.out[1], 0, 1e-12);
    const closest_answer inside = closest({{2, 0, 1}, {0, 0}}, 1, 0.75);
    EXPECT_NEAR(inside.distance_sq, 0.0625, 1e-12);
    EXPECT_NEAR(inside.out[1], 1, 1e-12);
}

TEST(Closest, OutOfAnArcsSectorItsEndsCompete)
{
    const closest_answer r = closest({{2, 0, 1}, {0, 0}}, 2, -1);
    EXPECT_NEAR(r.distance_sq, 1, 1e-12);
    EXPECT_NEAR(r.out[0], 2, 1e-12);
}

TEST(Closest, LaterOfEquallyNearPlacesDoesNotWin)
{
    const closest_answer r = closest({{0, 1}, {4, 1}, {4, -1}, {0, -1}}, 2, 0);
    EXPECT_EQ(r.out[1], 1);
}

TEST(Closest, FartherThanTheNoValueMarkWritesNothing)
{
    const closest_answer r = closest({{0, 0}, {1, 0}}, 2e8, 0);
    EXPECT_EQ(r.distance_sq, 98765432.1 * 98765432.1);
    EXPECT_EQ(r.out[0], -7);
}

TEST(Measures, SurviveSegmentsWithoutLengthAndNoNumbers)
{
    const std::vector<spot> chains[] = {{{1, 1}, {1, 1}, {1, 1}},
                                        {{1, 1, 0.5}, {1, 1, -1}, {1, 1}},
                                        {{1, 1}, {NAN_VALUE, 1}, {1, 1}},
                                        {{1, 1, NAN_VALUE}, {5, 1}},
                                        {{1, 1}, {9, 1}, {1, 1}}};
    for (const auto& chain : chains) {
        const closest_answer r = closest(chain, 1, 3);
        EXPECT_EQ(r.distance_sq, 4);
        EXPECT_EQ(r.out[0], 1);
        along(chain, 4, 4);
        length(chain);
        place_at(chain, 100);
        EXPECT_EQ(place_at(chain, NAN_VALUE).there, 0);
    }
    EXPECT_EQ(length(chains[0]), 0);
    EXPECT_EQ(length(chains[1]), 0);
    EXPECT_EQ(place_at(chains[0], 0).out[0], 1);
    EXPECT_EQ(place_at(chains[1], -1).there, 0);
    EXPECT_EQ(length(chains[4]), 16);
    EXPECT_EQ(length({}), 0);
    EXPECT_EQ(length({{1, 2, 1}}), 0);
    EXPECT_EQ(along({}, 1, 2), 0);
    EXPECT_EQ(place_at({}, 0).there, 0);
    EXPECT_EQ(place_at({{1, 2}}, 0).there, 0);
}

TEST(Length, AddsLinesAndArcs)
{
    EXPECT_NEAR(length({{0, 0}, {3, 4}, {5, 4, 1}, {3, 4, -1}, {5, 4}}), 5 + 2 + 2 * PI, 1e-12);
    EXPECT_NEAR(length({{0, 0, std::tan(1.5 * PI / 4)}, {std::sqrt(2), 0}}), 1.5 * PI, 1e-12);
}

TEST(Length, OfFlatAndNearlyFullArcsKeepsItsDigits)
{
    for (const double bulge : {1e-300, 1e-17, 1e-12, 1e-6})
        for (const double sign : {1.0, -1.0})
            EXPECT_NEAR(length({{0, 0, sign * bulge}, {3, 4}}), 5, 1e-10);
    for (const double bulge : {1e6, 1e8}) { // the sagitta is the circle's diameter, 0.5
        const double chord = 1 / bulge;
        EXPECT_NEAR(length({{0, 0, bulge}, {chord, 0}}) / (PI / 2), 1, 2 / bulge);
    }
}

TEST(DistanceAlong, FindsNodesLinesAndArcs)
{
    const std::vector<spot> chain{{0, 0}, {10, 0, 1}, {10, 2}, {0, 2}};
    EXPECT_EQ(along(chain, 5e-7, 0), 0);
    EXPECT_EQ(along(chain, 4, 0), 4);
    EXPECT_NEAR(along(chain, 11, 1), 10 + PI / 2, 1e-12);
    EXPECT_NEAR(along(chain, 7, 2), 10 + PI + 3, 1e-12);
    EXPECT_NEAR(along(chain, 50, 50), 20 + PI, 1e-12); // not on it: the whole length
    EXPECT_NEAR(along(chain, NAN_VALUE, 0), 20 + PI, 1e-12);
}

TEST(DistanceAlong, TakesTheChordToAnArcsEnd)
{
    EXPECT_EQ(along({{0, 0}, {10, 0, 1}, {10, 2}, {0, 2}}, 10, 2), 12);
}

TEST(DistanceAlong, MeasuresAClockwiseArcFromItsFarEnd)
{
    const double x = 1 - std::cos(0.4), y = std::sin(0.4);
    EXPECT_NEAR(along({{0, 0, -1}, {2, 0}}, x, y), PI - 0.4, 1e-12);
    EXPECT_NEAR(along({{2, 0, 1}, {0, 0}}, x, y), PI - 0.4, 1e-12);
}

TEST(DistanceAlong, CrossesAngleZeroOnAnArc)
{
    EXPECT_NEAR(along({{0, -1, 1}, {0, 1}}, std::cos(0.4), std::sin(0.4)), PI / 2 + 0.4, 1e-12);
}

TEST(DistanceAlong, TakesPointsATenthOffACircle)
{
    const std::vector<spot> half{{2, 0, 1}, {0, 0}};
    EXPECT_NEAR(along(half, 1, 1.0999), PI / 2, 1e-9);
    EXPECT_NEAR(along(half, 1, 0.9001), PI / 2, 1e-9);
    EXPECT_NEAR(along({{2, 0, 1}, {0, 0}, {-3, 0}}, 1, 1.1001), PI + 3, 1e-9);
}

TEST(DistanceAlong, TakesPointsSeenAlongALineWithinAMillionth)
{
    EXPECT_NEAR(along({{0, 0}, {10, 0}}, 5, 4e-6), 5, 1e-9);
    EXPECT_EQ(along({{0, 0}, {10, 0}}, 5, 6e-6), 10);
    EXPECT_NEAR(along({{0, 0}, {10, 0}}, 5, -4e-6), 5, 1e-9); // across direction 0
    EXPECT_EQ(along({{0, 0}, {10, 0}}, 11, 0), 10);
    EXPECT_EQ(along({{0, 0}, {10, 0}}, -2, 0), 10);
}

TEST(PointAt, InterpolatesALineWithItsHeight)
{
    const place_answer r = place_at({{0, 0, 0, 1}, {3, 4, 0, 11}, {3, 9}}, 2.5);
    EXPECT_EQ(r.there, 1);
    EXPECT_NEAR(r.out[0], 1.5, 1e-12);
    EXPECT_NEAR(r.out[1], 2, 1e-12);
    EXPECT_NEAR(r.out[2], 6, 1e-12);
    EXPECT_NEAR(r.direction, std::atan2(4, 3), 1e-12);
    EXPECT_NEAR(place_at({{0, 0}, {10, 0}}, -2).out[0], -2, 1e-12);
}

TEST(PointAt, CountsFromAnArcsStartWhicheverWayItIsTravelled)
{
    const place_answer ccw = place_at({{2, 0, 1}, {0, 0}}, 0.4);
    EXPECT_NEAR(ccw.out[0], 1 + std::cos(0.4), 1e-12);
    EXPECT_NEAR(ccw.out[1], std::sin(0.4), 1e-12);
    EXPECT_EQ(ccw.out[2], -7);
    EXPECT_NEAR(ccw.direction, PI / 2 + 0.4, 1e-12);
    const place_answer cw = place_at({{0, 0, -1}, {2, 0}}, 0.4); // the same arc, the same answer
    EXPECT_NEAR(cw.out[0], ccw.out[0], 1e-12);
    EXPECT_NEAR(cw.out[1], ccw.out[1], 1e-12);
    EXPECT_NEAR(cw.direction, ccw.direction, 1e-12);
}

// The whole length is the last node of a line and beyond an arc, also where adding up rounds.
TEST(PointAt, TheWholeLengthIsOnALineButNotOnAnArc)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(-9, 9);
    for (int round = 0; round < 3000; ++round) {
        std::vector<spot> chain;
        for (int i = 0; i < 8; ++i)
            chain.push_back({place(random), place(random), i % 2 ? 0.0 : place(random) / 9});
        place_answer r = place_at(chain, length(chain)); // ends in an arc
        ASSERT_EQ(r.there, 0);
        chain.push_back({place(random), place(random)});
        r = place_at(chain, length(chain));
        ASSERT_EQ(r.there, 1);
        ASSERT_NEAR(r.out[0], chain.back().x, 1e-9);
        ASSERT_EQ(place_at(chain, length(chain) + 9e-7).there, 1);
        ASSERT_EQ(place_at(chain, length(chain) + 1.1e-6).there, 0);
    }
}

// Places along a segment by its centre, not by the chord.
std::vector<spot> sampled(const spot& from, const spot& to, int count)
{
    std::vector<spot> places;
    const double p[3] = {from.x, from.y, 0}, q[3] = {to.x, to.y, 0};
    double centre[3], start, end, radius;
    int dir;
    if (from.bulge != 0.0)
        pg_arc_from_bulge(p, q, from.bulge, centre, &start, &end, &radius, &dir);
    for (int i = 0; i <= count; ++i) {
        const double t = static_cast<double>(i) / count;
        if (from.bulge == 0.0) {
            places.push_back({p[0] + t * (q[0] - p[0]), p[1] + t * (q[1] - p[1])});
            continue;
        }
        const double angle = start + t * (end < start ? end - start + 2 * PI : end - start);
        places.push_back({centre[0] + radius * std::cos(angle), centre[1] + radius * std::sin(angle)});
    }
    return places;
}

TEST(Measures, AgreeWithDenseSamples)
{
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> place(-6, 6), bulge(-3, 3);
        std::vector<spot> chain;
        for (int i = 0; i < 6; ++i)
            chain.push_back({place(random), place(random), random() % 2 ? bulge(random) : 0.0});
        const double x = place(random), y = place(random);
        double least_sq = 1e18, sum = 0;
        const auto apart_sq = [](const spot& a, const spot& b) {
            return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
        };
        for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
            const auto places = sampled(chain[i], chain[i + 1], 3000);
            for (std::size_t k = 0; k < places.size(); ++k) {
                least_sq = std::min(least_sq, apart_sq(places[k], {x, y}));
                if (k > 0)
                    sum += std::sqrt(apart_sq(places[k], places[k - 1]));
            }
            // Each sample is found again at its place (an arc's from its start, sampled so too).
            if (i == 0) {
                const spot& s = places[1234];
                const double told = along({chain[0], chain[1]}, s.x, s.y);
                const place_answer back = place_at({chain[0], chain[1]}, told);
                ASSERT_NEAR(told, length({chain[0], chain[1]}) * 1234 / 3000, 1e-8);
                ASSERT_NEAR(back.out[0], s.x, 1e-8);
                ASSERT_NEAR(back.out[1], s.y, 1e-8);
            }
        }
        const closest_answer r = closest(chain, x, y);
        const double least = std::sqrt(least_sq);
        ASSERT_NEAR(std::sqrt(r.distance_sq), least, 0.03);
        ASSERT_LE(std::sqrt(r.distance_sq), least + 1e-9);
        ASSERT_NEAR(length(chain), sum, 1e-4 * sum);
    }
}

// Arcs of all sizes, in all directions, made from their angle.
TEST(Arcs, GiveTheirBulgeBackInAllDirectionsAndSizes)
{
    const double sweeps[] = {1e-7, 1e-4,       0.5,       PI / 2, PI - 1e-9,     PI - 1e-13,
                             PI,   PI + 1e-13, PI + 1e-9, 4.0,    2 * PI - 1e-4, 2 * PI - 1e-6};
    for (double size = 1e-4; size < 1e9; size *= 10)
        for (int turn = 0; turn < 48; ++turn)
            for (const double sweep : sweeps) {
                const double from = turn * PI / 24;
                const double chord = 2 * size * std::sin(sweep / 2);
                const double a[3] = {0, 0, 0}, b[3] = {chord * std::cos(from), chord * std::sin(from), 0};
                for (const double sign : {1.0, -1.0}) {
                    const double bulge = sign * std::tan(sweep / 4);
                    double centre[3], start, end, radius;
                    int dir;
                    pg_arc_from_bulge(a, b, bulge, centre, &start, &end, &radius, &dir);
                    const double back = dir == -1 ? -pg_arc_bulge(a, b, centre) : pg_arc_bulge(b, a, centre);
                    ASSERT_NEAR(back / bulge, 1, 1e-8) << size << ' ' << turn << ' ' << sweep << ' ' << sign;
                    ASSERT_NEAR(radius / size, 1, 1e-8);
                    ASSERT_NEAR(pg_arc_length(a, b, bulge) / (size * sweep), 1, 1e-8);
                    double middle[3];
                    pg_arc_place(a, b, bulge, 0.5, middle);
                    ASSERT_NEAR(pg_dist(middle, centre) / size, 1, 1e-8);
                    double ends[3];
                    pg_arc_place(a, b, bulge, 1.0, ends);
                    ASSERT_NEAR(pg_dist(ends, b), 0, 1e-12 * size);
                }
            }
}

} // namespace
