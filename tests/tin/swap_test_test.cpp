// The swap test and the inside test by themselves.
#include "tin/swap_test.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>

#include "hostapi/ads.h"
#include "tests/tin/survey.h"
#include "tin/inside.h"

namespace
{

tin_point at(double x, double y)
{
    tin_point p{};
    p.x = x;
    p.y = y;
    return p;
}

// Quadrilateral with the diagonal a-c, and the triangle beyond it.
struct quad {
    tin_point a, b, c, d;
    tin_triangle far{};
    quad(tin_point pa, tin_point pb, tin_point pc, tin_point pd) : a(pa), b(pb), c(pc), d(pd)
    {
        far.corner[0] = &b;
        far.corner[1] = &c;
        far.corner[2] = &a;
    }
    int test()
    {
        const tin_network network;
        return tin_swap_test(&network, &a, &b, &c, &d, &far);
    }
    int cocircular()
    {
        const tin_network network;
        return tin_cocircular_test(&network, &a, &b, &c, &d, &far);
    }
};

TEST(TinSwapTest, CircleDecides)
{
    EXPECT_EQ(quad(at(0, 0), at(50, -10), at(100, 0), at(50, 12)).test(), 1);
    EXPECT_EQ(quad(at(0, 0), at(50, -90), at(100, 0), at(50, 95)).test(), 0);
}

TEST(TinSwapTest, NoSwapOfAReentrantQuadrilateral)
{
    EXPECT_EQ(quad(at(0, 0), at(120, -10), at(100, 0), at(90, 12)).test(), 0);
}

TEST(TinSwapTest, NoSwapWhereTheDiagonalsPassEachOther)
{
    const tin_point a = at(0, 0), b = at(50, -20), c = at(100, 0);
    EXPECT_EQ(quad(a, b, c, at(50, 5)).test(), 1);
    EXPECT_EQ(quad(a, b, c, at(50, -5)).test(), 0); // inside the circle as well
}

// The sums differ by the limit, and by a little less: the circle decides, and the slope.
TEST(TinSwapTest, SumsAreEqualBelowTheLimit)
{
    const tin_point b = at(1024, 0), c = at(1024, 1024), d = at(0, 1024);
    EXPECT_EQ(quad(at(-0.9e-6, 0), b, c, d).test(), 0); // by the slope
    EXPECT_EQ(quad(at(-1.1e-6, 0), b, c, d).test(), 1); // nearly on one circle: the shorter diagonal
}

TEST(TinSwapTest, EqualSumsGoBySlopes)
{
    // Unit square: of the two diagonals the one of the greater slope stays.
    EXPECT_EQ(quad(at(0, 1), at(0, 0), at(1, 0), at(1, 1)).test(), 1); // falling diagonal, slope -1
    EXPECT_EQ(quad(at(0, 0), at(1, 0), at(1, 1), at(0, 1)).test(), 0); // rising diagonal, slope 1
}

TEST(TinSwapTest, VerticalDiagonalHasTheSlopeOfItsSign)
{
    // Square on its tip: the diagonals are vertical and level.
    EXPECT_EQ(quad(at(1, 0), at(2, 1), at(1, 2), at(0, 1)).test(), 1); // slope -2/0
    EXPECT_EQ(quad(at(1, 2), at(0, 1), at(1, 0), at(2, 1)).test(), 0); // slope 2/0
}

TEST(TinSwapTest, MissingAndIdenticalCornersAreTold)
{
    const survey s;
    tin_point a = at(0, 0), b = at(1, 0), c = at(1, 1), d = at(0, 1);
    const tin_network n;
    EXPECT_EQ(tin_swap_test(&n, &a, nullptr, &c, &d, nullptr), 0);
    EXPECT_EQ(printed(), "Error: not NULL assertion failed.");
    for (const auto& [p, q, r] : {std::tuple{&a, &c, &d}, {&b, &a, &d}, {&b, &c, &a}}) {
        EXPECT_EQ(tin_swap_test(&n, &a, p, q, r, nullptr), 0);
        EXPECT_EQ(printed(), "\nError: identical points in swap test.");
    }
    for (const auto& [p, q, r] : {std::tuple{&b, &b, &d}, {&b, &c, &b}, {&b, &c, &c}}) {
        EXPECT_EQ(tin_swap_test(&n, &a, p, q, r, nullptr), 0);
        EXPECT_EQ(printed(), "\nError: identical points in swap test2.");
    }
    tin_point twin = at(0, 0);
    tin_swap_test(&n, &a, &twin, &c, &d, nullptr); // records are compared, not coordinates
    EXPECT_EQ(printed(), "");
}

TEST(TinCocircular, ShorterDiagonalWins)
{
    EXPECT_EQ(quad(at(-5, 0), at(0, -4.9), at(5, 0), at(0, 4.9)).cocircular(), 1);
    EXPECT_EQ(quad(at(-4.9, 0), at(0, -5), at(4.9, 0), at(0, 5)).cocircular(), 0);
}

TEST(TinCocircular, DiagonalsThatDontMeetStay)
{
    EXPECT_EQ(quad(at(0, 0), at(120, -10), at(100, 0), at(90, 12)).cocircular(), 0);
}

TEST(TinCocircular, FlatTrianglesGoFirst)
{
    // b or d all but on the diagonal: it is swapped although the other one is longer.
    EXPECT_EQ(quad(at(0, 0), at(10, -0.1), at(20, 0), at(10, 50)).cocircular(), 1);
    EXPECT_EQ(quad(at(0, 0), at(10, -50), at(20, 0), at(10, 0.1)).cocircular(), 1);
    // a or c all but on the other one: it stays although the other one is shorter.
    EXPECT_EQ(quad(at(-50, 0), at(0, -10), at(0.1, 0), at(0, 10)).cocircular(), 0);
    EXPECT_EQ(quad(at(-0.1, 0), at(0, -10), at(50, 0), at(0, 10)).cocircular(), 0);
}

TEST(TinCocircular, FlatMeansACosineAboveTheLimit)
{
    for (const auto& [cosine, expected] : {std::pair{0.99899997, 1}, {0.99899993, 0}}) {
        const double sine = std::sqrt(1 - cosine * cosine);
        const tin_point a = at(10, 0), c = at(0, 0), on = at(5 * cosine, -5 * sine), away = at(5, 50);
        EXPECT_EQ(quad(a, on, c, away).cocircular(), expected); // b, seen from c
        EXPECT_EQ(quad(a, away, c, on).cocircular(), expected); // d, seen from c
        // The other diagonal's ends: the longer one stays only where they are flat.
        const tin_point b = at(0, 0), d = at(10, 0);
        EXPECT_EQ(quad(away, b, on, d).cocircular(), 1 - expected); // c, seen from b
        EXPECT_EQ(quad(on, b, away, d).cocircular(), 1 - expected); // a, seen from b
    }
}

// A quadrilateral whose own swap loses (100 - 136), and a neighbour beyond b-c whose swap then gains 50.
struct look_ahead : quad {
    tin_point e = at(4.2, -0.9);
    tin_triangle beyond{};
    tin_link to_b{&b, nullptr}, to_c{&c, nullptr};
    look_ahead() : quad(at(-5, 0), at(-2, -5.5), at(5, 0), at(4, 4.5))
    {
        beyond.corner[0] = &c;
        beyond.corner[1] = &b;
        beyond.corner[2] = &e;
        far.side[0] = &beyond;
    }
};

TEST(TinCocircular, NextSwapMayPayForThisOne)
{
    look_ahead q;
    EXPECT_EQ(q.cocircular(), 1);
    q.far.side[0] = nullptr;
    EXPECT_EQ(q.cocircular(), 0);
}

TEST(TinCocircular, NextSwapMayBeAcrossTheOtherEdge)
{
    look_ahead q; // mirrored: a and c exchange their parts
    std::swap(q.a, q.c);
    q.beyond.corner[0] = &q.a;
    q.far.side[0] = nullptr;
    q.far.side[2] = &q.beyond;
    EXPECT_EQ(q.cocircular(), 1);
}

TEST(TinCocircular, NeighbourTooFarAwayIsNoGain)
{
    look_ahead q;
    q.e = at(1, -6);
    EXPECT_EQ(q.cocircular(), 0);
    q.e = at(9, 3); // e-d passes the edge by
    EXPECT_EQ(q.cocircular(), 0);
}

TEST(TinCocircular, BarrierBehindIsNoGain)
{
    look_ahead q;
    q.b.partners = &q.to_c;
    q.c.partners = &q.to_b;
    EXPECT_EQ(q.cocircular(), 0);
}

TEST(TinBarrierEdges, PartnersOfThePointAreBarriers)
{
    tin_point p{}, q{}, r{};
    tin_link second{&q, nullptr}, first{&r, &second};
    p.partners = &first;
    const tin_network n;
    EXPECT_EQ(tin_is_barrier(&n, &p, &q), 1);
    EXPECT_EQ(tin_is_barrier(&n, &p, &r), 1);
    EXPECT_EQ(tin_is_barrier(&n, &q, &p), 0); // only the first point's list is looked at
}

struct prepared_triangle {
    tin_network network;
    tin_point a, b, c;
    tin_triangle t{};
    prepared_triangle(tin_point pa, tin_point pb, tin_point pc) : a(pa), b(pb), c(pc)
    {
        t.corner[0] = &a;
        t.corner[1] = &b;
        t.corner[2] = &c;
        tin_load_edges_a(&network, &t);
        tin_load_edges_b(&network, &t);
    }
    int inside(double x, double y)
    {
        const tin_point p = at(x, y);
        const int answer = tin_inside_a(&network, &p);
        EXPECT_EQ(tin_inside_b(&network, &p), answer);
        return answer;
    }
};

TEST(TinInside, EdgesAreReadyWithTheirEnds)
{
    prepared_triangle p(at(0, 0), at(4, 0), at(4, 8));
    const tri_edge* edge = p.network.edges_a.edge;
    EXPECT_EQ(edge[0].slope, 0);
    EXPECT_EQ(edge[1].slope, 98765432.1);
    EXPECT_EQ(edge[2].slope, 2);
    EXPECT_EQ(edge[2].top_end->y, 8);
    EXPECT_EQ(edge[2].bottom_end->y, 0);
    EXPECT_EQ(edge[2].low_x_end->x, 0);
    EXPECT_EQ(edge[2].high_x_end->x, 4);
    EXPECT_EQ(edge[0].top_end->x, 0); // of two ends at one height the first is the top
    EXPECT_EQ(edge[0].bottom_end->x, 4);
    EXPECT_EQ(edge[1].high_x_end->y, 0); // and of two at one x the first is the right one
    EXPECT_EQ(edge[1].low_x_end->y, 8);
}

TEST(TinInside, PointsInsideOutsideAndOnEdges)
{
    prepared_triangle p(at(0, 0), at(10, 0), at(5, 10));
    EXPECT_EQ(p.inside(5, 5), 1);
    EXPECT_EQ(p.inside(1, 5), 0);
    EXPECT_EQ(p.inside(9, 5), 0);
    EXPECT_EQ(p.inside(2.5, 5), 1); // on the left edge
    EXPECT_EQ(p.inside(7.5, 5), 0); // on the right edge
    EXPECT_EQ(p.inside(5, 10), 0);  // top
    EXPECT_EQ(p.inside(5, 11), 0);
    EXPECT_EQ(p.inside(5, -1), 0);
}

TEST(TinInside, HorizontalEdgeDecidesAlone)
{
    prepared_triangle up(at(0, 0), at(10, 0), at(5, 10)), down(at(10, 0), at(0, 0), at(5, -10));
    for (const double x : {0.0, 3.0, 10.0}) {
        EXPECT_EQ(up.inside(x, 0), 1) << x;
        EXPECT_EQ(down.inside(x, 0), 1) << x;
    }
    for (const double x : {-1e-12, 10 + 1e-11}) {
        EXPECT_EQ(up.inside(x, 0), 0) << x;
        EXPECT_EQ(down.inside(x, 0), 0) << x;
    }
}

TEST(TinInside, PlaceThatIsNoNumberIsNowhere)
{
    const double none = std::nan("");
    prepared_triangle p(at(0, 0), at(10, 0), at(5, 10));
    for (const double x : {-20.0, 2.0, 5.0, 20.0})
        EXPECT_EQ(p.inside(x, none), 0) << x;
    for (const double y : {-1.0, 0.0, 5.0, 10.0, none})
        EXPECT_EQ(p.inside(none, y), 0) << y;
}

// Ends so far apart and so nearly level that the slope is zero: a crossing that is no number counts.
TEST(TinInside, CrossingThatIsNotGreaterCounts)
{
    prepared_triangle p(at(-1e300, 0), at(1e300, 1e-300), at(0, 1));
    EXPECT_EQ(p.network.edges_a.edge[0].slope, 0);
    EXPECT_EQ(p.inside(0, 0), 0); // the left edge counts as well
    EXPECT_EQ(p.inside(-1e300, 0), 0);
}

TEST(TinInside, VerticalEdgeHasTheMarkAsItsSlope)
{
    // Above the lower end the crossing then lies a little to the right of the edge.
    prepared_triangle p(at(0, 0), at(10, 0), at(0, 10));
    EXPECT_EQ(p.inside(0, 5), 0);
    EXPECT_EQ(p.inside(1e-12, 5), 1);
}

} // namespace
