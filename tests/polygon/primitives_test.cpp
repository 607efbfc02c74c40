// The kernel's intersections against their plain forms: random, touching, tangent and in-line inputs.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/node.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"
#include "tests/polygon/chains.h"
#include "tests/polygon/primitives_plain.h"

namespace
{

constexpr double PI = std::numbers::pi;
using point = std::array<double, 3>;

// Offsets about the tolerance, none of them on it.
constexpr double HAIRS[] = {0, 0, 0.5e-6, -0.5e-6, 0.9e-6, -0.9e-6, 1.1e-6, -1.1e-6, 2e-6, -2e-6};

struct dice {
    std::mt19937 random;
    explicit dice(unsigned seed) : random(seed) {}
    double between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
    double hair() { return HAIRS[below(10)]; }
    double direction() { return below(3) == 0 ? below(8) * PI / 4 : between(0, 2 * PI); }
    point any(double size) { return {between(-size, size), between(-size, size), between(-size, size)}; }
    point on_grid() { return {double(below(7)), double(below(7)), double(below(7))}; }
};

point moved(const point& p, const place& by)
{
    return {p[0] + by.x, p[1] + by.y, p[2]};
}

plain::point wide(const point& p)
{
    return {p[0], p[1], p[2]};
}

struct round_arc {
    point centre;
    double radius, start, end;
    point at(double direction, double further = 0) const
    {
        return {centre[0] + (radius + further) * std::cos(direction),
                centre[1] + (radius + further) * std::sin(direction), 0};
    }
};

plain::arc wide(const round_arc& a)
{
    return {wide(a.centre), a.radius, a.start, a.end};
}

// How many cases of a run rounding left undecided, and how many points the decided ones gave.
struct tally {
    int cases = 0, undecided = 0, points[3] = {};

    void compare(const plain::judge& j, const std::vector<plain::point>& expected, int count,
                 const point (&found)[2], const char* kind, int i)
    {
        ++cases;
        ASSERT_TRUE(count >= 0 && count <= 2) << kind << i;
        if (!j.decided || j.at_seam) {
            ++undecided;
            return;
        }
        ASSERT_EQ(static_cast<std::size_t>(count), expected.size()) << kind << i;
        ++points[count];
        for (std::size_t n = 0; n < expected.size(); ++n)
            for (std::size_t k = 0; k < 3; ++k)
                ASSERT_NEAR(found[n][k], static_cast<double>(expected[n][k]), 1e-7)
                    << kind << i << " point " << n << " axis " << k;
    }
    void expect_counts(int none, int one, int two) const
    {
        EXPECT_GT(points[0], none);
        EXPECT_GT(points[1], one);
        EXPECT_GT(points[2], two);
        EXPECT_LT(undecided, cases / 4);
    }
};

// ---- two segments

struct segment_pair {
    point a1, a2, b1, b2;
    const char* kind;
};

point along(const point& a1, const point& a2, double s, double left)
{
    point p{};
    pg_frame_point(a1.data(), a2.data(), s, left, p.data());
    return p;
}

segment_pair any_segments(dice& d, int kind, const place& by)
{
    const point a1 = moved(d.any(50), by), a2 = moved(d.any(50), by);
    const double length = pg_dist(a1.data(), a2.data());
    const double ends[] = {0, length, d.between(-length, 2 * length), d.between(0, length)};
    const auto somewhere = [&] { return ends[d.below(4)] + d.hair(); };
    switch (kind) {
    case 0:
        return {a1, a2, moved(d.any(50), by), moved(d.any(50), by), "random "};
    case 1:
        return {moved(d.on_grid(), by), moved(d.on_grid(), by), moved(d.on_grid(), by), moved(d.on_grid(), by),
                "grid "};
    case 2:
        return {a1, a2, along(a1, a2, somewhere(), d.hair()), moved(d.any(50), by), "touching "};
    case 3:
        return {a1, a2, along(a1, a2, somewhere(), d.hair()), along(a1, a2, somewhere(), d.hair()), "in line "};
    default: {
        const point end = d.below(2) ? a1 : a2;
        return {a1, a2, moved(d.any(50), by), end, "sharing an end "};
    }
    }
}

TEST(PlainForm, SegmentsAgree)
{
    for (const place& by : PLACES) {
        dice d(101);
        tally t;
        for (int i = 0; i < 40000; ++i) {
            segment_pair s = any_segments(d, i % 5, by);
            if (s.a1[0] == s.a2[0] && s.a1[1] == s.a2[1])
                continue;
            if (d.below(2))
                std::swap(s.b1, s.b2);
            point found[2];
            const int count = pg_seg_intersect(s.a1.data(), s.a2.data(), s.b1.data(), s.b2.data(),
                                               found[0].data(), found[1].data());
            plain::judge j;
            const auto expected = plain::segments(j, wide(s.a1), wide(s.a2), wide(s.b1), wide(s.b2));
            t.compare(j, expected, count, found, s.kind, i);
            if (HasFatalFailure())
                return;
        }
        t.expect_counts(5000, 5000, 1000);
    }
}

TEST(PlainForm, SegmentsInLineThatShareAnEndMeetInIt)
{
    // Whole numbers in every direction: the length by its root and the place by its parts differ in
    // their last bits as often as not.
    for (const place& by : PLACES)
        for (int x = -9; x <= 9; ++x)
            for (int y = -9; y <= 9; ++y)
                for (int times = 1; times <= 4 && (x != 0 || y != 0); ++times) {
                    const point a1 = moved({0, 0, 5}, by), a2 = moved({double(x), double(y), 7}, by);
                    const point behind = moved({double(x + times * x), double(y + times * y), 0}, by);
                    const point before = moved({double(-times * x), double(-times * y), 0}, by);
                    point found[2];
                    const auto meet = [&](const point& b1, const point& b2) {
                        return pg_seg_intersect(a1.data(), a2.data(), b1.data(), b2.data(), found[0].data(),
                                                found[1].data());
                    };
                    const auto expect_at = [&](const point& end) {
                        for (std::size_t k = 0; k < 3; ++k)
                            EXPECT_NEAR(found[0][k], end[k], 1e-8) << x << "," << y << " times " << times;
                    };
                    ASSERT_EQ(meet(a2, behind), 1) << x << "," << y << " times " << times;
                    expect_at(a2);
                    ASSERT_EQ(meet(behind, a2), 1) << x << "," << y << " times " << times;
                    expect_at(a2);
                    ASSERT_EQ(meet(before, a1), 1) << x << "," << y << " times " << times;
                    expect_at(a1);
                    ASSERT_EQ(meet(a1, before), 1) << x << "," << y << " times " << times;
                    expect_at(a1);
                }
}

// ---- arcs

round_arc any_arc(dice& d, const place& by)
{
    const double from = d.direction();
    const double turn = d.below(4) == 0 ? (1 + d.below(7)) * PI / 4 : d.between(0.05, 2 * PI - 0.05);
    double start = from, end = from + turn;
    switch (d.below(4)) { // limits below 0 and above a turn are brought into it
    case 0:
        end -= 2 * PI;
        start -= 2 * PI;
        break;
    case 1:
        end = std::fmod(end, 2 * PI);
        break;
    default:
        break;
    }
    const bool on_grid = d.below(3) == 0;
    const point centre = on_grid ? d.on_grid() : d.any(20);
    const double radius = on_grid ? 1 + d.below(6) : d.between(0.5, 40);
    return {moved({centre[0], centre[1], 0}, by), radius, start, std::max(end, -2 * PI)};
}

TEST(PlainForm, ArcContainsAgrees)
{
    for (const place& by : PLACES) {
        dice d(103);
        int undecided = 0, inside = 0, cases = 0;
        for (int i = 0; i < 40000; ++i) {
            const round_arc a = any_arc(d, by);
            const double limit = d.below(2) ? a.start : a.end;
            const double direction = i % 2 ? d.direction() : limit + d.hair() / a.radius;
            const point at = a.at(direction, d.below(2) ? 0 : d.between(0, 5));
            for (const double radius : {a.radius, PG_NO_VALUE}) {
                plain::judge j;
                const bool expected = plain::arc_contains(j, wide(a), wide(at), radius);
                const bool found = pg_arc_contains(a.centre.data(), at.data(), a.start, a.end, radius);
                ++cases;
                if (!j.decided || j.at_seam) {
                    ++undecided;
                    continue;
                }
                inside += expected ? 1 : 0;
                ASSERT_EQ(found, expected) << i << " start " << a.start << " end " << a.end << " towards "
                                           << direction << " radius " << radius;
            }
        }
        EXPECT_LT(undecided, cases / 4);
        EXPECT_GT(inside, cases / 5);
        EXPECT_LT(inside, cases * 4 / 5);
    }
}

TEST(PlainForm, SegmentAndArcAgree)
{
    for (const place& by : PLACES) {
        dice d(107);
        tally t;
        for (int i = 0; i < 40000; ++i) {
            const round_arc a = any_arc(d, by);
            point p0 = moved(d.any(40), by), p1 = moved(d.any(40), by);
            const char* kind = "random ";
            const double towards = d.direction();
            const point foot = a.at(towards, d.hair()), side = a.at(towards + PI / 2);
            const double across[2] = {side[0] - a.centre[0], side[1] - a.centre[1]};
            const double before = d.between(-3, 1), behind = d.between(-1, 3);
            switch (i % 5) {
            case 1:
                kind = "tangent ";
                p0 = {foot[0] + before * across[0], foot[1] + before * across[1], 0};
                p1 = {foot[0] + behind * across[0], foot[1] + behind * across[1], 0};
                break;
            case 2:
                kind = "through an end of the arc ";
                p0 = a.at(d.below(2) ? a.start : a.end, d.hair());
                break;
            case 3:
                kind = "ending on the circle ";
                p1 = foot;
                break;
            case 4:
                kind = "through the centre ";
                p0 = a.centre;
                break;
            default:
                break;
            }
            if (pg_dist(p0.data(), p1.data()) < 1e-3)
                continue;
            if (d.below(2))
                std::swap(p0, p1);
            point found[2];
            const int count = pg_line_arc_intersect(p0.data(), p1.data(), a.centre.data(), a.radius, a.start,
                                                    a.end, found[0].data(), found[1].data());
            plain::judge j;
            const auto expected = plain::line_arc(j, wide(p0), wide(p1), wide(a));
            t.compare(j, expected, count, found, kind, i);
            if (HasFatalFailure())
                return;
        }
        t.expect_counts(5000, 5000, 1000);
    }
}

TEST(PlainForm, ArcsAgree)
{
    for (const place& by : PLACES) {
        dice d(109);
        tally t;
        for (int i = 0; i < 40000; ++i) {
            const round_arc a = any_arc(d, by);
            round_arc b = any_arc(d, by);
            const char* kind = "random ";
            const double towards = d.direction();
            switch (i % 5) {
            case 1:
                kind = "touching from outside ";
                b.centre = a.at(towards, b.radius + d.hair());
                break;
            case 2:
                kind = "touching from inside ";
                b.centre = a.at(towards, -b.radius + d.hair());
                break;
            case 3:
                kind = "one centre ";
                b.centre = a.centre;
                b.radius = a.radius + d.hair();
                if (d.below(2))
                    (d.below(2) ? b.start : b.end) = d.below(2) ? a.start : a.end;
                break;
            case 4: {
                kind = "end on end ";
                const point end = a.at(d.below(2) ? a.start : a.end, d.hair());
                const point reach = b.at(d.below(2) ? b.start : b.end);
                b.centre = {b.centre[0] + end[0] - reach[0], b.centre[1] + end[1] - reach[1], 0};
                break;
            }
            default:
                break;
            }
            point found[2];
            const int count = pg_arc_arc_intersect(a.centre.data(), a.radius, a.start, a.end, b.centre.data(),
                                                   b.radius, b.start, b.end, found[0].data(), found[1].data());
            plain::judge j;
            const auto expected = plain::arcs(j, wide(a), wide(b));
            t.compare(j, expected, count, found, kind, i);
            if (HasFatalFailure())
                return;
        }
        t.expect_counts(5000, 5000, 1000);
    }
}

// ---- chains

struct corner {
    int x, y;
};

chain_ptr chain_of(const std::vector<corner>& corners, const place& by)
{
    std::vector<spot> spots;
    for (const corner& c : corners)
        spots.push_back({double(c.x), double(c.y)});
    return make_chain(spots, by.x, by.y);
}

bool same(const corner& a, const corner& b)
{
    return a.x == b.x && a.y == b.y;
}

// By whole numbers, for chains whose lowest corner is no spike; `is_spike` tells.
int plain_orientation(const std::vector<corner>& c, bool* is_spike)
{
    *is_spike = false;
    const int n = static_cast<int>(c.size());
    if (n < 2)
        return 0;
    const auto at = [&](int i) { return c[static_cast<std::size_t>(i)]; };
    const auto wrapped = [&](int i) { return i + 1 < n ? i + 1 : same(at(i), at(0)) ? 1 : 0; };
    int low = 0;
    for (int i = 1; i < n; ++i)
        if (at(i).y < at(low).y)
            low = i;
    int before = low == 0 ? n - 1 : low - 1;
    if (same(at(before), at(low)))
        --before;
    if (before < 0 || before == low)
        return 0;
    int after = wrapped(low);
    if (same(at(after), at(low)))
        after = wrapped(after);
    const corner p{at(before).x - at(low).x, at(before).y - at(low).y};
    const corner q{at(after).x - at(low).x, at(after).y - at(low).y};
    const int turn = q.x * p.y - q.y * p.x; // of the previous node's ray against the next one's
    const auto is_left = [](const corner& r) { return r.y == 0 && r.x < 0; }; // at angle pi
    if (turn == 0 && is_left(p) == is_left(q)) {
        *is_spike = true;
        return 0;
    }
    return turn > 0 || (turn == 0 && is_left(p)) ? -1 : 1;
}

TEST(PlainForm, OrientationAgrees)
{
    dice d(113);
    int decided = 0;
    for (int i = 0; i < 40000; ++i) {
        std::vector<corner> corners;
        for (int k = 1 + d.below(8); k > 0; --k)
            corners.push_back({d.below(6), d.below(4)});
        if (d.below(3) == 0)
            corners.push_back(corners.front());
        if (d.below(4) == 0) {
            const int twin = d.below(static_cast<int>(corners.size()));
            corners.insert(corners.begin() + twin, corners[static_cast<std::size_t>(twin)]);
        }
        bool is_spike = false;
        const int expected = plain_orientation(corners, &is_spike);
        if (is_spike)
            continue;
        ++decided;
        ASSERT_EQ(pg_orientation(chain_of(corners, PLACES[i % 2]).get()), expected) << i;
    }
    EXPECT_GT(decided, 20000);
}

// By whole numbers.
int plain_inside(const corner& at, const std::vector<corner>& c)
{
    int inside = 0;
    for (std::size_t i = 0; i < c.size(); ++i) {
        const corner &from = c[i == 0 ? c.size() - 1 : i - 1], &to = c[i];
        if (!(at.y >= std::min(from.y, to.y) && at.y < std::max(from.y, to.y)))
            continue;
        const int rise = to.y - from.y;
        // x of the crossing less x of the point, times the rise
        const int gap = (from.x - at.x) * rise + (at.y - from.y) * (to.x - from.x);
        if (gap == 0)
            return 1;
        if ((gap < 0) == (rise > 0))
            inside = 1 - inside;
    }
    return inside;
}

TEST(PlainForm, PointInsideAgrees)
{
    dice d(127);
    int inside = 0;
    for (int i = 0; i < 40000; ++i) {
        std::vector<corner> corners;
        for (int k = 1 + d.below(9); k > 0; --k)
            corners.push_back({d.below(7), d.below(7)});
        if (d.below(3) == 0)
            corners.push_back(corners.front());
        const corner at{d.below(7), d.below(7)};
        const place by = PLACES[i % 2];
        const double place_of[3] = {at.x + by.x, at.y + by.y, 0};
        const int expected = plain_inside(at, corners);
        inside += expected;
        ASSERT_EQ(pg_point_inside(place_of, chain_of(corners, by).get()), expected) << i;
    }
    EXPECT_GT(inside, 5000);
}

// ---- what callers ought not to hand over

TEST(OddInput, GivesACountAndNothingWorse)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    const double numbers[] = {0, -0.0, 1, -2, 1e-200, 1e300, -1e300, endless, -endless, none};
    dice d(131);
    const auto number = [&] { return numbers[d.below(10)]; };
    const auto spot_of = [&] { return point{number(), number(), number()}; };
    for (int i = 0; i < 20000; ++i) {
        const point a = spot_of(), b = spot_of(), c = spot_of(), e = spot_of();
        point p{}, q{};
        const auto is_count = [](int n) { return n >= 0 && n <= 2; };
        ASSERT_TRUE(is_count(pg_seg_intersect(a.data(), b.data(), c.data(), e.data(), p.data(), q.data())));
        ASSERT_TRUE(is_count(pg_line_arc_intersect(a.data(), b.data(), c.data(), number(), number(), number(),
                                                   p.data(), q.data())));
        ASSERT_TRUE(is_count(pg_arc_arc_intersect(a.data(), number(), number(), number(), b.data(), number(),
                                                  number(), number(), p.data(), q.data())));
        const chain_ptr chain =
            make_chain({{a[0], a[1]}, {b[0], b[1]}, {c[0], c[1]}, {b[0], b[1]}, {e[0], e[1]}, {a[0], a[1]}});
        const int side = pg_orientation(chain.get()), inside = pg_point_inside(e.data(), chain.get());
        ASSERT_TRUE(side >= -1 && side <= 1);
        ASSERT_TRUE(inside == 0 || inside == 1);
        pg_clean(chain.get());
        ASSERT_TRUE(pg_count(chain.get()) >= 1 && pg_count(chain.get()) <= 6);
    }
}

TEST(OddInput, SegmentWithoutLengthMeetsNothing)
{
    const point a{3, 4, 5}, b1{3, 0, 0}, b2{3, 9, 0}, above{3, 4, 9};
    point p{}, q{};
    for (const point& a2 : {a, above}) {
        EXPECT_EQ(pg_seg_intersect(a.data(), a2.data(), b1.data(), b2.data(), p.data(), q.data()), 0);
        EXPECT_EQ(pg_line_arc_intersect(a.data(), a2.data(), a.data(), 1, 0, 6, p.data(), q.data()), 0);
    }
}

TEST(OddInput, PlacesThatAreNoNumbersAreLeftInAChain)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const chain_ptr chain = make_chain({{none, none}, {none, none}, {none, none}, {1, none}});
    pg_clean(chain.get());
    EXPECT_EQ(pg_count(chain.get()), 4);
    EXPECT_EQ(chain->next->prev, chain.get());
}

} // namespace
