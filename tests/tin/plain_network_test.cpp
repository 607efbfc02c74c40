// What the plain network itself must do: reading, the frame, insertion and the swap test, by numbers worked out
// by hand.
#include <gtest/gtest.h>

#include "tests/tin/plain_network.h"

namespace
{

using plain::at;
using plain::network;
using plain::point;
using plain::triangle;

point* offer(network& n, double x, double y, double z)
{
    return plain::add_point(n, plain::new_point(n, x, y, z));
}

TEST(PlainReading, NetworkStartsWithItsDefaults)
{
    const network n;
    EXPECT_EQ(n.contour_interval, 1.0);
    EXPECT_EQ(n.quiet, 1);
    EXPECT_EQ(n.x_min, 98765432.1);
    EXPECT_EQ(n.z_max, -98765432.1);
    EXPECT_EQ(n.split_on_barriers + n.skip_zero + n.zero_count + n.failed_barriers, 0);
}

TEST(PlainReading, CloseSecondPointGivesTheFirstBack)
{
    network n;
    point* const first = plain::new_point(n, 10, 20, 1.5);
    EXPECT_EQ(plain::add_point(n, first), nullptr);
    EXPECT_EQ(offer(n, 10 + 9e-7, 20 - 9e-7, 7.5), first);
    EXPECT_EQ(first->z, 1.5);
    EXPECT_EQ(n.point_count, 1);
    EXPECT_EQ(offer(n, 10 + 9e-7, 20 + 1.1e-6, 7.5), nullptr);
    EXPECT_EQ(n.point_count, 2);
    EXPECT_EQ(n.tick, 1);
}

TEST(PlainReading, PointsATolerancePartAreTwo)
{
    network n;
    EXPECT_EQ(offer(n, 0, 0, 0.5), nullptr);
    EXPECT_EQ(offer(n, 1e-6, 0, 0.5), nullptr);
    EXPECT_EQ(n.point_count, 2);
}

TEST(PlainReading, ADoubleBeyondAnAncestorIsMissed)
{
    network n;
    offer(n, 10, 0, 0.5);
    point* const low = plain::new_point(n, 10 - 2e-7, 5, 0.5);
    plain::add_point(n, low);
    EXPECT_EQ(offer(n, 10 + 2e-7, 5, 0.5), nullptr);
    EXPECT_EQ(offer(n, 10 - 1e-7, 5, 0.5), low);
}

TEST(PlainReading, ElevationsNearALevelAreNudged)
{
    network n;
    const auto read = [&n](double z) {
        point* const p = plain::new_point(n, n.point_count * 10.0, 0, z);
        plain::add_point(n, p);
        return p->z;
    };
    EXPECT_EQ(read(100.0), 100.0 + 1e-7);
    EXPECT_EQ(read(100.5), 100.5);
    EXPECT_EQ(read(-3.25), -3.25 + 1e-7);
    EXPECT_EQ(read(0.9999995), 0.9999995 + 1e-7);
    EXPECT_EQ(read(5.0000005), 5.0000005 + 1e-7);
    n.contour_interval = 0.25;
    EXPECT_EQ(read(100.5), 100.5 + 1e-7);
    n.contour_interval = 0;
    EXPECT_EQ(read(100.0), 100.0);
}

TEST(PlainReading, ZeroElevationsAreDroppedOnlyWhenAsked)
{
    network n;
    n.skip_zero = 1;
    for (double z : {0.0000005, 1e-6, -1e-6}) {
        point* const p = plain::new_point(n, 1, 1, z);
        EXPECT_EQ(plain::add_point(n, p), p);
        EXPECT_EQ(p->z, z);
    }
    EXPECT_EQ(n.zero_count, 3);
    EXPECT_EQ(offer(n, 1, 1, 1.1e-6), nullptr);
    EXPECT_EQ(n.point_count, 1);
    n.skip_zero = 0;
    EXPECT_EQ(offer(n, 5, 5, 0), nullptr);
}

TEST(PlainReading, ProgressComesWithTheHundredthPointBelowTheRoot)
{
    network n;
    n.quiet = 0;
    for (int i = 0; i < 100; ++i)
        offer(n, i, 0, 0.5);
    EXPECT_EQ(n.said, "");
    EXPECT_EQ(n.tick, 99);
    offer(n, 100, 0, 0.5);
    EXPECT_EQ(n.said, "\rReading points ... 100");
    EXPECT_EQ(n.tick, 0);
    EXPECT_EQ(n.hundreds, 1);
}

// The frame about a square of 100, whose diagonal runs along y = x.
struct framed : network {
    framed()
    {
        x_min = y_min = 0;
        x_max = y_max = 100;
        plain::build_frame(*this);
    }
    triangle* nth(int i) const
    {
        triangle* t = triangles;
        for (; i > 0; --i)
            t = t->next;
        return t;
    }
};

void expect_corners(const triangle* t, const point* a, const point* b, const point* c)
{
    EXPECT_EQ(t->corner[0], a);
    EXPECT_EQ(t->corner[1], b);
    EXPECT_EQ(t->corner[2], c);
}

TEST(PlainFrame, TwoTrianglesShareTheDiagonal)
{
    const framed n;
    EXPECT_EQ(n.frame[0]->x, -200);
    EXPECT_EQ(n.frame[0]->y, 300);
    EXPECT_EQ(n.frame[2]->x, 300);
    EXPECT_EQ(n.frame[2]->y, -200);
    const triangle *first = n.nth(0), *second = n.nth(1);
    expect_corners(first, n.frame[1], n.frame[0], n.frame[3]);
    expect_corners(second, n.frame[3], n.frame[2], n.frame[1]);
    EXPECT_EQ(first->side[2], second);
    EXPECT_EQ(second->side[2], first);
    EXPECT_EQ(second->next, nullptr);
}

TEST(PlainInside, EndsOfLevelEdgesCountAndTopsDoNot)
{
    network n;
    point a = at(0, 0), b = at(10, 0), c = at(5, 10);
    triangle t;
    t.corner[0] = &a, t.corner[1] = &b, t.corner[2] = &c;
    plain::load_edges(n.edges_a, t);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(5, 3)), 1);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(0, 0)), 1);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(10, 0)), 1);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(10.0000001, 0)), 0);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(5, 10)), 0);
    EXPECT_EQ(plain::inside(n, n.edges_a, at(2.5, 5)), 1); // on the left edge
    EXPECT_EQ(plain::inside(n, n.edges_a, at(7.5, 5)), 0); // on the right edge: both count
    EXPECT_EQ(plain::inside(n, n.edges_a, at(5, -1)), 0);
}

TEST(PlainInsert, FirstPointSwapsTheDiagonalAway)
{
    framed n;
    triangle *first = n.nth(0), *second = n.nth(1);
    point p = at(30, 60);
    p.tri = first;
    EXPECT_EQ(plain::insert_point(n, &p), 1);
    const triangle *a = n.nth(0), *b = n.nth(1);
    EXPECT_EQ(n.nth(2), first);
    EXPECT_EQ(n.nth(3), second);
    expect_corners(a, &p, n.frame[1], n.frame[0]);
    expect_corners(b, &p, n.frame[0], n.frame[3]);
    expect_corners(first, &p, n.frame[3], n.frame[2]);
    expect_corners(second, &p, n.frame[2], n.frame[1]);
    EXPECT_EQ(a->side[0], second);
    EXPECT_EQ(a->side[1], nullptr);
    EXPECT_EQ(a->side[2], b);
    EXPECT_EQ(first->side[2], second);
    EXPECT_EQ(second->side[2], a);
    EXPECT_EQ(p.tri, a);
    EXPECT_EQ(n.frame[3]->tri, first);
    EXPECT_EQ(n.frame[1]->tri, second);
    EXPECT_EQ(n.swap_depth, 1);
}

TEST(PlainInsert, APointWithoutATriangleIsRefused)
{
    framed n;
    point p = at(1, 1);
    EXPECT_EQ(plain::insert_point(n, &p), 0);
    EXPECT_EQ(n.said, "\nPoint insertion ERROR");
    p = at(1000, 1000);
    p.tri = n.triangles;
    EXPECT_EQ(plain::insert_point(n, &p), 0);
    EXPECT_EQ(n.said, "\nPoint insertion ERROR\nUnable to fix insertion ERROR");
    EXPECT_EQ(n.nth(1)->next, nullptr);
}

TEST(PlainInsert, APointInTheWrongBucketIsFoundByTheList)
{
    framed n;
    point p = at(60, 30); // below the diagonal
    p.tri = n.nth(0);
    triangle* const wrong = n.nth(0);
    plain::push(n, wrong->bucket, &p);
    EXPECT_EQ(plain::insert_point(n, &p), 1);
    EXPECT_EQ(n.said, "");
    EXPECT_EQ(p.tri->corner[0], &p);
}

TEST(PlainInsert, BucketsFollowTheSplit)
{
    framed n;
    point p = at(30, 60), left = at(-100, 70), high = at(40, 200), low = at(60, 65);
    for (point* q : {&p, &left, &high, &low}) {
        q->tri = n.nth(0);
        plain::push(n, n.nth(0)->bucket, q);
    }
    plain::insert_point(n, &p);
    for (point* q : {&left, &high, &low}) {
        int seen = 0;
        for (const triangle* t = n.triangles; t; t = t->next)
            for (const plain::link* l = t->bucket; l; l = l->next)
                seen += l->point == q && q->tri == t;
        EXPECT_EQ(seen, 1);
        plain::load_edges(n.edges_a, *q->tri);
        EXPECT_EQ(plain::inside(n, n.edges_a, *q), 1);
    }
    EXPECT_EQ(high.tri, n.nth(0));
    EXPECT_EQ(left.tri, n.nth(1));
    EXPECT_EQ(low.tri, n.nth(3));
}

TEST(PlainSwapTest, DeterminantIsPositiveInside)
{
    network n;
    const point a = at(0, 0), b = at(2, 0), c = at(0, 2);
    EXPECT_EQ(plain::determinant(n, a, b, c, at(1, 1)), 8);
    EXPECT_EQ(plain::determinant(n, a, b, c, at(2, 2)), 0);
    EXPECT_LT(plain::determinant(n, a, b, c, at(3, 3)), 0);
    n.backwards = true;
    EXPECT_EQ(plain::determinant(n, a, b, c, at(1, 1)), 8);
}

TEST(PlainSwapTest, SquareTakesTheSmallerSlope)
{
    network n;
    point a = at(0, 0), b = at(1, 0), c = at(1, 1), d = at(0, 1);
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &d, nullptr), 0);
    EXPECT_EQ(plain::swap_test(n, &b, &c, &d, &a, nullptr), 1);
    point far = at(3, 2), off = at(4, 3); // equal sums, diagonals apart
    EXPECT_EQ(plain::swap_test(n, &b, &far, &d, &off, nullptr), 0);
}

TEST(PlainSwapTest, OnlyAConvexQuadrilateralIsSwapped)
{
    network n;
    point a = at(0, 0), b = at(50, -20), c = at(100, 0), d = at(50, 20);
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &d, nullptr), 1);
    EXPECT_EQ(plain::swap_test(n, &b, &c, &d, &a, nullptr), 0);
    point same_side = at(50, -5); // inside the circle, yet the diagonals pass each other
    EXPECT_GT(plain::determinant(n, a, b, c, same_side), 0);
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &same_side, nullptr), 0);
    point outside = at(130, 60);
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &outside, nullptr), 0);
}

TEST(PlainSwapTest, MissingAndRepeatedCornersAreNamed)
{
    network n;
    point a = at(0, 0), b = at(1, 0), c = at(1, 1);
    EXPECT_EQ(plain::swap_test(n, &a, nullptr, &c, &b, nullptr), 0);
    EXPECT_EQ(n.said, "Error: not NULL assertion failed.");
    n.said.clear();
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &a, nullptr), 0);
    EXPECT_EQ(n.said, "\nError: identical points in swap test.");
    n.said.clear();
    EXPECT_EQ(plain::swap_test(n, &a, &b, &c, &c, nullptr), 0);
    EXPECT_EQ(plain::swap_test(n, &a, &b, &b, &c, nullptr), 0);
    EXPECT_EQ(n.said, "\nError: identical points in swap test2.\nError: identical points in swap test2.");
}

TEST(PlainCocircular, FlatCornersDecideBeforeLengths)
{
    network n;
    point a = at(0, 0), c = at(100, 0), b = at(50, -1), d = at(50, 200);
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, nullptr), 1); // b lies along c-a
    point b3 = at(50, -200), d3 = at(50, 1);
    EXPECT_EQ(plain::cocircular_test(n, &a, &b3, &c, &d3, nullptr), 1); // d lies along c-a
    point b4 = at(0, 0), d4 = at(100, 0), c4 = at(50, 1), a4 = at(50, -200);
    EXPECT_EQ(plain::cocircular_test(n, &a4, &b4, &c4, &d4, nullptr), 0); // c lies along b-d
    point a5 = at(50, -1), c5 = at(50, 200);
    EXPECT_EQ(plain::cocircular_test(n, &a5, &b4, &c5, &d4, nullptr), 0); // a lies along b-d
    point apart = at(50, 5);
    EXPECT_EQ(plain::cocircular_test(n, &a, &apart, &c, &d, nullptr), 0);
}

TEST(PlainCocircular, LooksOneSwapAheadUnlessABarrierStands)
{
    network n;
    point d = at(0, 0), b = at(10, 0), a = at(5, -5), c = at(4, 4.9), ec = at(4.2, 4.9);
    triangle far, nc;
    far.corner[0] = &b, far.corner[1] = &c, far.corner[2] = &a;
    triangle none_there = far;
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &none_there), 0); // the diagonal would grow by 0.99
    far.side[0] = &nc;
    nc.corner[0] = &b, nc.corner[1] = &ec, nc.corner[2] = &c;
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 1); // and then shrink by 18.36
    for (int turn = 0; turn < 2; ++turn) {                         // b at each of the three corners
        far = {{far.corner[2], far.corner[0], far.corner[1]}, {far.side[2], far.side[0], far.side[1]}, {}, {}};
        EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 1);
    }
    plain::push(n, c.partners, &b);
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 0);
}

TEST(PlainCocircular, LooksAheadOnTheOtherSideToo)
{
    network n;
    point d = at(0, 0), b = at(10, 0), c = at(5, 5), a = at(4, -4.9), ea = at(4.2, -4.9);
    triangle far, na;
    far.corner[0] = &b, far.corner[1] = &c, far.corner[2] = &a;
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 0);
    far.side[2] = &na;
    na.corner[0] = &a, na.corner[1] = &ea, na.corner[2] = &b;
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 1);
    plain::push(n, a.partners, &b);
    EXPECT_EQ(plain::cocircular_test(n, &a, &b, &c, &d, &far), 0);
}

// near = (p, p1, p2) and far beyond p1-p2, an edge that the circle says to swap.
struct pair_of_triangles : network {
    point p = at(50, 20), p1 = at(0, 0), p2 = at(100, 0), e = at(50, -20);
    triangle near, far;
    pair_of_triangles()
    {
        near.corner[0] = &p, near.corner[1] = &p1, near.corner[2] = &p2;
        far.corner[0] = &e, far.corner[1] = &p2, far.corner[2] = &p1;
        near.side[1] = &far;
        far.side[1] = &near;
    }
};

TEST(PlainSwap, TheBudgetStopsIt)
{
    pair_of_triangles n;
    n.swap_depth = 247;
    plain::swap_edges(n, &n.p1, &n.p2, &n.far, &n.p, &n.near);
    EXPECT_EQ(n.said, "\nSwap test maxed out.");
    EXPECT_EQ(n.near.corner[2], &n.p2);
    plain::swap_edges(n, &n.p1, &n.p2, &n.far, &n.p, &n.near);
    EXPECT_EQ(n.said, "\nSwap test maxed out.\nSwap test maxed out.");
    n.swap_depth = 246;
    plain::swap_edges(n, &n.p1, &n.p2, &n.far, &n.p, &n.near);
    expect_corners(&n.near, &n.p, &n.p1, &n.e);
    expect_corners(&n.far, &n.p, &n.e, &n.p2);
}

TEST(PlainSwap, ABarrierIsNeverSwapped)
{
    pair_of_triangles n;
    plain::push(n, n.p1.partners, &n.p2);
    plain::swap_edges(n, &n.p1, &n.p2, &n.far, &n.p, &n.near);
    EXPECT_EQ(n.near.corner[2], &n.p2);
    EXPECT_EQ(n.said, "");
}

TEST(PlainSwap, ANeighbourWithoutApexIsNamed)
{
    pair_of_triangles n;
    n.far.corner[0] = &n.p1;
    plain::swap_edges(n, &n.p1, &n.p2, &n.far, &n.p, &n.near);
    EXPECT_EQ(n.said, "Error: not NULL assertion failed.");
}

} // namespace
