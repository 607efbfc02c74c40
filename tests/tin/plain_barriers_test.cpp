// What the plain network itself must do with barriers, by numbers worked out by hand.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tin/plain_network.h"

namespace
{

using plain::at;
using plain::network;
using plain::point;
using plain::triangle;

int crosses(point a, point b, point c, point d)
{
    return plain::segments_cross(a, b, c, d);
}

TEST(PlainCrossing, MeetingAndTouchingCount)
{
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(0, 4), at(4, 0)), 1);
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(0, 4), at(1.9, 2.1)), 0);
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(0, 4), at(2, 2)), 1);
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(4, 4), at(9, 0)), 1); // a shared end
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(4 + 5e-10, 4), at(9, 0)), 1);
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(4 + 5e-9, 4), at(9, 0)), 0);
}

TEST(PlainCrossing, NearParallelsAreLeftToTheHost)
{
    EXPECT_EQ(crosses(at(0, 0), at(4, 0), at(1, 0), at(9, 0)), 0); // collinear, overlapping
    EXPECT_EQ(crosses(at(0, 0), at(4, 0), at(0, 1), at(4, 1)), 0);
    EXPECT_EQ(crosses(at(0, 0), at(100, 0), at(0, -1e-4), at(100, 1e-4)), 1); // slopes 2e-6 apart
    EXPECT_EQ(crosses(at(0, 0), at(40, 0), at(0, -1e-4), at(100, 1e-4)), 0);
    // A steep one: slope 20000.
    EXPECT_EQ(crosses(at(1, 0), at(1.001, 20), at(0, 10), at(5, 10)), 1);
    EXPECT_EQ(crosses(at(1, 0), at(1.001, 20), at(0, 21), at(5, 21)), 0);
}

TEST(PlainCrossing, UprightSegmentsHaveTheirOwnTest)
{
    double result[2] = {};
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(0, 0), at(4, 4), result), 5100);
    EXPECT_EQ(result[0], 2);
    EXPECT_EQ(result[1], 2);
    EXPECT_EQ(plain::vertical_cross(at(0, 0), at(4, 4), at(2, 5), at(2, 0), result), 5100);
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(2, 1), at(2, 4), result), 5000); // both upright
    EXPECT_EQ(plain::vertical_cross(at(0, 0), at(1, 5), at(2, 1), at(3, 4), result), 5000); // neither
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(2 + 5e-9, 1), at(3, 1), result), 5100);
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(2 + 5e-8, 1), at(3, 1), result), 5000);
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(0, 5 + 5e-9), at(3, 5 + 5e-9), result), 5100);
    EXPECT_EQ(plain::vertical_cross(at(2, 0), at(2, 5), at(0, 5 + 5e-8), at(3, 5 + 5e-8), result), 5000);
    EXPECT_EQ(crosses(at(2, 0), at(2, 5), at(2, 1), at(2, 9)), 0); // upright, overlapping
    EXPECT_EQ(crosses(at(0, 0), at(4, 4), at(2, 5), at(2, 0)), 1);
}

// A pending list and barriers; points are named by letters in order.
struct scene : network {
    std::vector<point*> named;

    scene() { split_on_barriers = 1; }

    void add(double x, double y)
    {
        point* const p = plain::new_point(*this, x, y, 0);
        named.push_back(p);
        point** end = &points;
        while (*end)
            end = &(*end)->next;
        *end = p;
    }
    void bar(int from, int to) // at the end of the list
    {
        plain::barrier* const b = plain::new_barrier(*this, named[from], named[to]);
        plain::barrier** end = &barriers;
        while (*end)
            end = &(*end)->next;
        *end = b;
        plain::link_barrier(*this, b);
    }
    char letter(const point* p) const
    {
        for (std::size_t i = 0; i < named.size(); ++i)
            if (named[i] == p)
                return static_cast<char>('a' + i);
        return '?';
    }
    std::string list() const
    {
        std::string out;
        for (const plain::barrier* b = barriers; b; b = b->next)
            out += std::string(out.empty() ? "" : " ") + letter(b->from) + letter(b->to);
        return out;
    }
    std::string partners(int i) const
    {
        std::string out;
        for (const plain::link* l = named[i]->partners; l; l = l->next)
            out += letter(l->point);
        return out;
    }
};

TEST(PlainLinking, PartnersAreAppended)
{
    scene n;
    for (int i = 0; i < 3; ++i)
        n.add(i, i * i);
    n.bar(0, 1);
    n.bar(2, 0);
    EXPECT_EQ(n.partners(0), "bc");
    EXPECT_EQ(n.partners(1), "a");
    EXPECT_EQ(n.partners(2), "a");
    EXPECT_EQ(plain::is_barrier(n.named[0], n.named[2]), 1);
    EXPECT_EQ(plain::is_barrier(n.named[1], n.named[2]), 0);
}

TEST(PlainSplitting, RunsOnlyWhenAsked)
{
    scene n;
    for (int i = 0; i < 3; ++i)
        n.add(i, i);
    n.bar(0, 2);
    n.split_on_barriers = 0;
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "ac");
    n.quiet = 0;
    n.split_on_barriers = 1;
    plain::split_barriers(n);
    EXPECT_EQ(n.said, "\nFinding points on barriers ...");
    EXPECT_NE(n.list(), "ac");
}

// a at the top. The head is replaced: ca goes to the end, then its follower is that very record, behind which
// the second half goes; both halves are looked at again.
TEST(PlainSplitting, TheHeadsHalvesAreBothLookedAtAgain)
{
    scene n;
    n.add(0, 0); // a bottom
    n.add(1, 1); // b
    n.add(2, 2); // c
    n.add(3, 3); // d top
    n.bar(0, 3);
    plain::split_barriers(n);
    // ad: top d, r b: list db ba; walk on with db: r c: dc to the end; db was the head: place ba, then cb
    // behind.
    EXPECT_EQ(n.list(), "ba cb dc");
    EXPECT_EQ(n.partners(0), "b");
    EXPECT_EQ(n.partners(1), "ac");
    EXPECT_EQ(n.partners(2), "db");
    EXPECT_EQ(n.partners(3), "c");
}

TEST(PlainSplitting, TheSecondHalfOfALaterOneIsPassedOver)
{
    scene n;
    n.add(0, 0);                   // a
    n.add(1, 1);                   // b
    n.add(2, 2);                   // c
    n.add(3, 3);                   // d
    n.add(50, 0);                  // e
    n.add(50, 10);                 // f
    n.named[0]->next = n.named[2]; // c comes before b on the list
    n.named[2]->next = n.named[1];
    n.named[1]->next = n.named[3];
    n.named[3]->next = n.named[4];
    n.bar(4, 5);
    n.bar(0, 3);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "ef ca dc"); // b on ca is never noticed
    EXPECT_EQ(n.partners(0), "c");
    EXPECT_EQ(n.partners(2), "da");
}

TEST(PlainSplitting, UprightNeedsTheSameAbscissaAndLevelTheSameHeight)
{
    scene n;
    n.add(5, 0);         // a
    n.add(5, 10);        // b
    n.add(5 + 1e-9, 4);  // c beside
    n.add(5, 6);         // d
    n.add(20, 3);        // e
    n.add(30, 3);        // f
    n.add(25, 3 + 1e-9); // g beside
    n.bar(0, 1);
    n.bar(4, 5);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "ef da bd");
    n.add(26, 3);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "da hf bd eh");
}

TEST(PlainSplitting, SlantedOnesHaveATolerance)
{
    scene n;
    n.add(0, 0);
    n.add(10, 10);
    n.add(4, 4 + 1.5e-6);
    n.bar(0, 1);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "ab");
    n.add(4, 4 - 0.5e-6);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "bd da");
}

TEST(PlainSplitting, ARepeatedBarrierLosesOneEntryAtATime)
{
    scene n;
    n.add(0, 0);
    n.add(4, 4);
    n.add(2, 2);
    n.bar(0, 1);
    n.bar(0, 1);
    plain::split_barriers(n);
    EXPECT_EQ(n.list(), "ca ca bc bc");
    EXPECT_EQ(n.partners(0), "cc");
    EXPECT_EQ(n.partners(1), "cc");
}

// Two triangles p-u-w and q-w-u, the barrier p-q crossing u-w.
struct corridor : network {
    point p = at(0, 0), q = at(10, 0), u = at(5, -5), w = at(5, 5);
    triangle t, v;
    plain::barrier b{&p, &q, nullptr};
    corridor()
    {
        t.corner[0] = &u, t.corner[1] = &w, t.corner[2] = &p;
        v.corner[0] = &w, v.corner[1] = &u, v.corner[2] = &q;
        t.side[0] = &v;
        v.side[0] = &t;
    }
};

TEST(PlainConnecting, EndsMustBeCorners)
{
    corridor n;
    EXPECT_EQ(plain::connect_barrier_points(n, &n.b, &n.v, &n.t, 1), 1);
    EXPECT_EQ(n.said, "\nError 11 connecting barrier segment.");
    n.said.clear();
    EXPECT_EQ(plain::connect_barrier_points(n, &n.b, &n.t, &n.t, 1), 1);
    EXPECT_EQ(n.said, "\nError 12 connecting barrier segment.");
}

TEST(PlainConnecting, AnEdgeThatExistsIsTaken)
{
    corridor n;
    plain::barrier edge{&n.p, &n.u, nullptr};
    EXPECT_EQ(plain::connect_barrier_points(n, &edge, &n.t, &n.t, 1), 1);
    EXPECT_EQ(n.said, "");
    EXPECT_EQ(n.t.corner[0], &n.u); // not turned
}

// The triangles around an end must close; these two have the frame beside them.
TEST(PlainConnecting, AnOpenFanRunsIntoItsLimit)
{
    corridor n;
    plain::barrier up{&n.p, &n.q, nullptr};
    n.q = at(-10, 0); // behind p: nothing of T is crossed
    EXPECT_EQ(plain::connect_barrier_points(n, &up, &n.t, &n.v, 1), 1);
    EXPECT_EQ(n.said, "\nWarning: error L1 in connect_barrier_points.");
}

TEST(PlainConnecting, TheLastFlipJoinsTheEnds)
{
    corridor n;
    triangle pu, wp, qw, uq; // around, in the order of their edges
    n.t.side[1] = &wp, n.t.side[2] = &pu;
    n.v.side[1] = &uq, n.v.side[2] = &qw;
    pu.side[0] = wp.side[1] = &n.t;
    qw.side[2] = uq.side[0] = &n.v;
    EXPECT_EQ(plain::connect_barrier_points(n, &n.b, &n.t, &n.v, 1), 1);
    EXPECT_EQ(n.said, "");
    const point* const t_now[3] = {&n.p, &n.q, &n.w};
    const point* const v_now[3] = {&n.q, &n.p, &n.u};
    const triangle* const t_sides[3] = {&n.v, &qw, &wp};
    const triangle* const v_sides[3] = {&n.t, &pu, &uq};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(n.t.corner[i], t_now[i]);
        EXPECT_EQ(n.v.corner[i], v_now[i]);
        EXPECT_EQ(n.t.side[i], t_sides[i]);
        EXPECT_EQ(n.v.side[i], v_sides[i]);
    }
    EXPECT_EQ(qw.side[2], &n.t);
    EXPECT_EQ(pu.side[0], &n.v);
    EXPECT_EQ(wp.side[1], &n.t);
    EXPECT_EQ(uq.side[0], &n.v);
    EXPECT_EQ(n.w.tri, &n.t);
    EXPECT_EQ(n.u.tri, &n.v);
}

TEST(PlainConnecting, BucketsFollowTheLastFlip)
{
    corridor n;
    point above = at(3, 1), below = at(7, -1);
    plain::push(n, n.t.bucket, &above);
    plain::push(n, n.v.bucket, &below);
    plain::connect_barrier_points(n, &n.b, &n.t, &n.v, 1);
    EXPECT_EQ(above.tri, &n.t);
    EXPECT_EQ(below.tri, &n.v);
    EXPECT_EQ(n.t.bucket->point, &above);
    EXPECT_EQ(n.v.bucket->point, &below);
    EXPECT_EQ(n.t.bucket->next, nullptr);
}

} // namespace
