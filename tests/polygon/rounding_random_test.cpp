// Corners and joins of chance: the arc touches both sides at the radius.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "polygon/rounding.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/outlines.h"
#include "tests/polygon/rounding_judge.h"
#include "tests/polygon/rounding_plain.h"

namespace
{

using namespace rounding_judge;

constexpr double PI = std::numbers::pi;

struct random_corners {
    std::mt19937 random;
    double between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(random);
    }

    // From (0, 0) to about `direction`; `bend` is the greatest bulge.
    spots side(double direction, double bend)
    {
        const double length = between(60, 100);
        return {{0, 0, between(-bend, bend)}, {length * std::cos(direction), length * std::sin(direction)}};
    }
};

spots corner_of(const spots& first, const spots& second)
{
    spots chain = turned_round(first);
    chain.back() = second.front();
    chain.insert(chain.end(), second.begin() + 1, second.end());
    return chain;
}

spots with_another_segment(random_corners& r, spots side, double bend)
{
    side.back().bulge = r.between(-bend, bend);
    side.push_back({side[1].x + r.between(-40, 40), side[1].y + r.between(-40, 40)});
    return side;
}

enum class sides { straight, straight_and_arc, arcs };

// The worst of many; distances as shares of the radius.
struct tally {
    int none = 0;
    double radius = 0, to_sides = 0, kink = 0, off_sides = 0;
};

void take(tally& t, const faults& f, double radius)
{
    t.radius = std::max(t.radius, f.radius / radius);
    t.to_sides = std::max(t.to_sides, f.to_sides / radius);
    t.kink = std::max(t.kink, f.kink);
    t.off_sides = std::max(t.off_sides, f.off_sides);
    EXPECT_TRUE(f.turns_left);
}

// Sides that leave (0, 0) at an angle from `least_deg` to `most_deg` on the left of the second.
tally round_many(unsigned seed, sides kind, double least_deg, double most_deg, bool by_join)
{
    random_corners r{std::mt19937(seed)};
    tally t;
    for (int i = 0; i < 1000; ++i) {
        SCOPED_TRACE(testing::Message() << "corner " << i);
        const double direction = r.between(0, 2 * PI), inner = r.between(least_deg, most_deg) * PI / 180;
        const double bend = 0.1; // the directions in the corner change by up to 2 atan(0.1) each, 23 degrees
        const spots second = r.side(direction, kind == sides::arcs ? bend : 0.0);
        const spots first = r.side(direction + inner, kind == sides::straight ? 0.0 : bend);
        const double radius = r.between(0.5, 5);
        const spots chain = i % 2 == 0 ? corner_of(first, second) : corner_of(second, first);
        const int before = test_heap::live_blocks();
        const double corner[3] = {};
        spots answer;
        if (by_join) {
            pg_node* a = make_chain(i % 4 < 2 ? first : turned_round(first)).release();
            pg_node* b = make_chain(i % 3 == 0 ? second : turned_round(second)).release();
            if (i % 5 == 0)
                std::swap(a, b);
            pg_round_join(&a, &b, corner, radius);
            answer = b ? spots{} : spots_of(a);
            pl_free_nodes(a);
            pl_free_nodes(b);
        } else {
            pg_node* head = make_chain(chain).release();
            const chain_ptr rounded(pg_round_corner(&head, corner, radius));
            answer = spots_of(rounded.get());
            EXPECT_EQ(spots_of(head), chain);
            pl_free_nodes(head);
        }
        EXPECT_EQ(test_heap::live_blocks(), before);
        if (answer.empty()) {
            ++t.none;
            continue;
        }
        EXPECT_EQ(answer.size(), 4u);
        if (answer.size() != 4)
            continue;
        take(t, faults_of(answer, 1, first, second, radius), radius);
    }
    return t;
}

// What the search leaves, a tenth of the radius at most, is halved nine times across each side: next to nothing
// is left at obtuse corners, more the sharper they are. Straight sides need no search.
struct expectation {
    sides kind;
    double least_deg, most_deg;
    double off;  // share of the radius
    double kink; // radians
};
constexpr expectation EXPECTATIONS[] = {
    {sides::straight, 15, 90, 1e-12, 1e-11},
    {sides::straight, 90, 178, 1e-12, 1e-11},
    {sides::straight_and_arc, 30, 60, 0.06, 2e-5},
    {sides::straight_and_arc, 60, 120, 0.005, 0.005},
    {sides::straight_and_arc, 120, 155, 0.005, 0.03},
    {sides::arcs, 30, 60, 0.07, 2e-4},
    {sides::arcs, 60, 120, 0.01, 0.006},
    {sides::arcs, 120, 155, 0.01, 0.04},
};

TEST(RandomRounding, ArcsTouchBothSidesAtTheRadius)
{
    for (const expectation& e : EXPECTATIONS) {
        SCOPED_TRACE(testing::Message() << "kind " << int(e.kind) << " from " << e.least_deg << " degrees");
        const tally t = round_many(1, e.kind, e.least_deg, e.most_deg, false);
        EXPECT_EQ(t.none, 0);
        EXPECT_LE(t.radius, e.off);
        EXPECT_LE(t.to_sides, e.off);
        EXPECT_LE(t.kink, e.kink);
        EXPECT_LE(t.off_sides, 1e-9);
    }
}

TEST(RandomRounding, JoinsTouchWithinOneInAHundredOrAreRefused)
{
    for (const expectation& e : EXPECTATIONS) {
        SCOPED_TRACE(testing::Message() << "kind " << int(e.kind) << " from " << e.least_deg << " degrees");
        const tally t = round_many(1, e.kind, e.least_deg, e.most_deg, true);
        const bool is_sharp = e.kind != sides::straight && e.least_deg < 60;
        if (is_sharp)
            EXPECT_LE(t.none, 250);
        else
            EXPECT_EQ(t.none, 0);
        EXPECT_LE(t.radius, std::min(e.off, 0.01));
        EXPECT_LE(t.to_sides, std::min(e.off, 0.01));
        EXPECT_LE(t.kink, e.kink);
        EXPECT_LE(t.off_sides, 1e-9);
    }
}

// A side cut at its far end is left without length, and rounding decides whether the cut is on it at all.
bool is_cut_at_its_end(const spots& chain)
{
    for (std::size_t i = 0; i + 1 < chain.size(); ++i)
        if (apart(chain[i].x, chain[i].y, chain[i + 1].x, chain[i + 1].y) < 1e-6)
            return true;
    return false;
}

// Sides of two segments, strongly bent, so that the search takes more than one round.
TEST(RandomRounding, GoesStepByStepAsTold)
{
    random_corners r{std::mt19937(21)};
    int rounded_count = 0, joined_count = 0, cut_at_end_count = 0;
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE(testing::Message() << "corner " << i);
        const double direction = r.between(0, 2 * PI), inner = r.between(20, 170) * PI / 180,
                     bend = i % 5 * 0.1;
        const spots from_second = with_another_segment(r, r.side(direction, bend), bend),
                    from_first = with_another_segment(r, r.side(direction + inner, bend), bend);
        const double radius = r.between(1, 30);
        const spots first = turned_round(from_first), second = turned_round(from_second);
        const spots whole = corner_of(from_first, from_second);
        const double before_corner = direction_at_end(whole[1], whole[2]),
                     after_corner = direction_at_start(whole[2], whole[3]);
        if (in_half_turn(after_corner - before_corner) < 0.1)
            continue; // turns right after all

        const double corner[3] = {};
        pg_node* head = make_chain(whole).release();
        const chain_ptr answer(pg_round_corner(&head, corner, radius));
        pl_free_nodes(head);
        const spots expected = rounding_plain::round_off(whole, first, second, radius, false);
        // Whether the arc still reaches a side's far end is decided by the last digits, in either of the two.
        if (is_cut_at_its_end(expected) || is_cut_at_its_end(spots_of(answer.get()))) {
            ++cut_at_end_count;
            continue;
        }
        expect_near(spots_of(answer.get()), expected, 1e-9);
        rounded_count += !expected.empty();

        pg_node* a = make_chain(first).release();
        pg_node* b = make_chain(from_second).release();
        const chain_ptr joined(pg_round_join(&a, &b, corner, radius));
        if (!joined)
            pl_free_nodes(a);
        pl_free_nodes(b);
        const spots expected_joined = rounding_plain::round_off(whole, first, second, radius, true);
        expect_near(spots_of(joined.get()), expected_joined, 1e-9);
        joined_count += !expected_joined.empty();
    }
    EXPECT_GT(rounded_count, 500);
    EXPECT_GT(joined_count, 300);
    EXPECT_LT(cut_at_end_count, 20);
}

// Straight sides have a formula.
TEST(RandomRounding, StraightCornersAreRoundedIfAndOnlyIfTheArcEndsOnTheSides)
{
    random_corners r{std::mt19937(4)};
    int rounded_count = 0;
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(testing::Message() << "corner " << i);
        const double direction = r.between(0, 2 * PI), inner = r.between(2, 178) * PI / 180;
        const spots second = r.side(direction, 0), first = r.side(direction + inner, 0);
        const double radius = r.between(0.5, 80), along = radius / std::tan(inner / 2);
        const double room =
            std::min(apart(0, 0, first[1].x, first[1].y), apart(0, 0, second[1].x, second[1].y));
        if (std::fabs(along - room) < 1e-6)
            continue;
        pg_node* head = make_chain(i % 2 == 0 ? corner_of(first, second) : corner_of(second, first)).release();
        const double corner[3] = {};
        const chain_ptr answer(pg_round_corner(&head, corner, radius));
        pl_free_nodes(head);
        EXPECT_EQ(answer != nullptr, along < room) << along << " of " << room;
        if (!answer)
            continue;
        ++rounded_count;
        const spots got = spots_of(answer.get());
        ASSERT_EQ(got.size(), 4u);
        EXPECT_NEAR(apart(0, 0, got[1].x, got[1].y), along, 1e-9);
        EXPECT_NEAR(apart(0, 0, got[2].x, got[2].y), along, 1e-9);
        EXPECT_NEAR(got[1].bulge, std::tan((PI - inner) / 4), 1e-9);
    }
    EXPECT_GT(rounded_count, 1000);
}

// Whether a circle of that radius touches both sides at a corner and nothing else is nearer to its centre.
bool has_room(const spots& closed, std::size_t at, double radius)
{
    const spot& corner = closed[at];
    const spot& before = closed[at == 0 ? closed.size() - 2 : at - 1];
    const spot& after = closed[at + 1];
    const double in = apart(corner.x, corner.y, before.x, before.y),
                 out = apart(corner.x, corner.y, after.x, after.y);
    const double ux = (before.x - corner.x) / in, uy = (before.y - corner.y) / in;
    const double vx = (after.x - corner.x) / out, vy = (after.y - corner.y) / out;
    const double half = std::acos(ux * vx + uy * vy) / 2;
    if (radius / std::tan(half) > std::min(in, out))
        return false;
    const double length = std::hypot(ux + vx, uy + vy), along = radius / std::sin(half);
    const double x = corner.x + (ux + vx) / length * along, y = corner.y + (uy + vy) / length * along;
    return distance_to(closed, x, y) > radius * (1 - 1e-9);
}

// Every corner of closed outlines, convex and reflex: the arc touches the outline on both sides of the corner,
// and the rest of the outline stays.
TEST(RandomRounding, CornersOfOutlines)
{
    random_corners r{std::mt19937(7)};
    int rounded_count = 0, tried = 0;
    double worst = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        spots outline = outlines::star(seed, 12, 0.4);
        outline.push_back(outline.front());
        if (seed % 2 == 0)
            outline = turned_round(outline);
        for (std::size_t at = 0; at + 1 < outline.size(); ++at) {
            SCOPED_TRACE(testing::Message() << "outline " << seed << " corner " << at);
            const double corner[3] = {outline[at].x, outline[at].y, 0}, radius = r.between(0.5, 8);
            pg_node* head = make_chain(outline).release();
            const chain_ptr answer(pg_round_corner(&head, corner, radius));
            const spots input = spots_of(head), got = spots_of(answer.get());
            pl_free_nodes(head);
            ++tried;
            EXPECT_EQ(input.size(), outline.size());
            if (got.empty()) {
                EXPECT_FALSE(has_room(outline, at, radius));
                continue;
            }
            ++rounded_count;
            EXPECT_EQ(std::fabs(got.front().x - got.back().x) + std::fabs(got.front().y - got.back().y), 0);
            const auto arc = std::find_if(got.begin(), got.end(), [](const spot& s) { return s.bulge != 0; });
            ASSERT_NE(arc, got.end());
            EXPECT_GT(arc->bulge, 0);
            const auto here = std::find_if(input.begin() + 1, input.end(),
                                           [&](const spot& s) { return s.x == corner[0] && s.y == corner[1]; });
            ASSERT_NE(here, input.end());
            const spots one(input.begin(), here + 1), other(here, input.end());
            const circle o = circle_of(arc[0], arc[1]);
            worst = std::max({worst, std::fabs(o.radius - radius) / radius,
                              std::fabs(distance_to(one, o.x, o.y) - radius) / radius,
                              std::fabs(distance_to(other, o.x, o.y) - radius) / radius});
            for (const spot& s : got)
                EXPECT_LT(distance_to(outline, s.x, s.y), 1e-9);
        }
    }
    EXPECT_LT(worst, 1e-12);
    EXPECT_GT(rounded_count, tried * 9 / 10);
}

// The first side ends in a hook that leaves a gap beside the second one, and the path goes through the gap:
// where the circle in the corner isn't exact enough for a join, the one in the gap is taken.
TEST(RandomRounding, JoinGoesOnAlongThePath)
{
    random_corners r{std::mt19937(1)};
    int went_on = 0;
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(testing::Message() << "join " << i);
        const double inner = r.between(30, 60) * PI / 180, radius = r.between(3, 5);
        const spots second = r.side(0, 0), first = r.side(inner, 0.1);
        const spot hook{0.8 * second[1].x, r.between(0.5, 1.5) * radius};
        spots hooked = turned_round(first);
        hooked.insert(hooked.begin(), hook);
        const auto join = [&](const spots& chain) {
            pg_node* a = make_chain(chain).release();
            pg_node* b = make_chain(second).release();
            const double corner[3] = {};
            pg_round_join(&a, &b, corner, radius);
            const spots answer = b ? spots{} : spots_of(a);
            pl_free_nodes(a);
            pl_free_nodes(b);
            return answer;
        };
        if (!join(turned_round(first)).empty())
            continue;
        const spots answer = join(hooked);
        if (answer.empty())
            continue;
        ++went_on;
        const std::size_t arc = answer.size() - 3;
        const circle o = circle_of(answer[arc], answer[arc + 1]);
        EXPECT_NEAR(distance_to(hooked, o.x, o.y), radius, 0.011 * radius);
        EXPECT_NEAR(distance_to(second, o.x, o.y), radius, 0.011 * radius);
    }
    EXPECT_GT(went_on, 20);
}

} // namespace
