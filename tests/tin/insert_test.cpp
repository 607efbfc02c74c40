// Insertion of single points.
#include "tin/insert.h"

#include <gtest/gtest.h>

#include "hostapi/ads.h"
#include "tests/tin/survey.h"
#include "tin/inside.h"

namespace
{

// Two triangles over the unit square times ten.
struct square_network {
    survey s;
    tin_point p[4];
    tin_triangle *low, *high;
    square_network()
    {
        const double at[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
        for (int i = 0; i < 4; ++i) {
            p[i] = tin_point{};
            p[i].x = at[i][0];
            p[i].y = at[i][1];
        }
        low = make(p[0], p[1], p[2]);
        high = make(p[2], p[3], p[0]);
        low->side[2] = high;
        high->side[2] = low;
        low->next = high;
        s.network.triangles = low;
    }
    static tin_triangle* make(tin_point& a, tin_point& b, tin_point& c)
    {
        auto* t = static_cast<tin_triangle*>(acad_malloc(sizeof(tin_triangle)));
        *t = tin_triangle{{&a, &b, &c}, {}, nullptr, nullptr};
        return t;
    }
    static void wait(tin_point& point, tin_triangle* t)
    {
        auto* link = static_cast<tin_link*>(acad_malloc(sizeof(tin_link)));
        *link = tin_link{&point, nullptr};
        tin_put_in_bucket(link, t);
    }
    static tin_point at(double x, double y)
    {
        tin_point q{};
        q.x = x;
        q.y = y;
        return q;
    }
};

TEST(TinInsert, SplitPutsTwoTrianglesAtTheHeadAndKeepsTheThird)
{
    square_network n;
    tin_point q = n.at(9, 5);
    n.wait(q, n.low);
    n.p[0].partners = nullptr;
    ASSERT_EQ(tin_insert_point(&n.s.network, &q), 1);
    const tin_triangle* a = n.s.network.triangles;
    EXPECT_EQ(a->corner[0], &q);
    EXPECT_EQ(a->next->corner[0], &q);
    EXPECT_EQ(a->next->next, n.low);
    EXPECT_EQ(n.low->next, n.high);
    EXPECT_EQ(triangle_count(n.s.network), 4);
    EXPECT_EQ(q.tri, a);
    EXPECT_EQ(waiting_count(n.s.network), 0);
    EXPECT_EQ(faults_inside_run(n.s.network), "");
}

TEST(TinInsert, BarrierIsNotSwappedHoweverBadTheTriangles)
{
    square_network free, barred;
    tin_point q = free.at(6, 5.9), r = q;
    free.wait(q, free.low);
    barred.wait(r, barred.low);
    tin_link to_2{&barred.p[2], nullptr}, to_0{&barred.p[0], nullptr};
    barred.p[0].partners = &to_2;
    barred.p[2].partners = &to_0;
    tin_insert_point(&free.s.network, &q);
    tin_insert_point(&barred.s.network, &r);
    EXPECT_FALSE(has_edge(free.s.network, &free.p[0], &free.p[2]));
    EXPECT_TRUE(has_edge(barred.s.network, &barred.p[0], &barred.p[2]));
}

TEST(TinInsert, WaitingPointsFollowTheirTriangles)
{
    square_network n;
    std::vector<tin_point> waiting;
    for (const place& at : random_places(5, 40, 10))
        waiting.push_back(n.at(at.x, at.y));
    tin_load_edges_a(&n.s.network, n.low);
    for (tin_point& q : waiting)
        n.wait(q, tin_inside_a(&n.s.network, &q) ? n.low : n.high);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        ASSERT_EQ(tin_insert_point(&n.s.network, &waiting[i]), 1);
        ASSERT_EQ(faults_inside_run(n.s.network), "") << i;
        ASSERT_EQ(waiting_count(n.s.network), int(waiting.size() - i - 1));
        for (std::size_t k = i + 1; k < waiting.size(); ++k) {
            tin_load_edges_a(&n.s.network, waiting[k].tri);
            EXPECT_EQ(tin_inside_a(&n.s.network, &waiting[k]), 1);
        }
    }
}

TEST(TinInsert, PointWithoutATriangleIsRefused)
{
    square_network n;
    tin_point q = n.at(5, 5);
    EXPECT_EQ(tin_insert_point(&n.s.network, &q), 0);
    EXPECT_EQ(printed(), "\nPoint insertion ERROR");
    EXPECT_EQ(triangle_count(n.s.network), 2);
}

TEST(TinInsert, PointOutsideAllTrianglesIsRefused)
{
    square_network n;
    tin_point q = n.at(50, 5);
    q.tri = n.low;
    EXPECT_EQ(tin_insert_point(&n.s.network, &q), 0);
    EXPECT_EQ(printed(), "\nUnable to fix insertion ERROR");
    EXPECT_EQ(triangle_count(n.s.network), 2);
    EXPECT_EQ(q.tri, n.low);
}

TEST(TinInsert, PointInAnotherTriangleIsFoundAndLeavesItsLinkBehind)
{
    square_network n;
    tin_point q = n.at(2, 8);
    n.wait(q, n.low); // it lies in the other one
    EXPECT_EQ(tin_insert_point(&n.s.network, &q), 1);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(waiting_count(n.s.network), 1);
    EXPECT_EQ(triangle_count(n.s.network), 4);
}

TEST(TinSwapEdges, SpentBudgetLeavesTheEdge)
{
    square_network n;
    tin_point q = n.at(6, 5.9);
    tin_triangle* near = n.make(q, n.p[2], n.p[0]);
    n.high->next = near;
    n.s.network.swap_depth = 247;
    tin_swap_edges(&n.s.network, &n.p[2], &n.p[0], n.high, &q, near);
    EXPECT_EQ(printed(), "\nSwap test maxed out.");
    EXPECT_EQ(near->corner[2], &n.p[0]);
    n.s.network.swap_depth = 300; // nothing is given back, and more is not spent
    tin_swap_edges(&n.s.network, &n.p[2], &n.p[0], n.high, &q, near);
    EXPECT_EQ(printed(), "\nSwap test maxed out.");
}

TEST(TinSwapEdges, NeighbourWithoutAnApexIsTold)
{
    square_network n;
    tin_point q = n.at(6, 5.9);
    n.high->corner[1] = &n.p[0];
    tin_swap_edges(&n.s.network, &n.p[2], &n.p[0], n.high, &q, n.low);
    EXPECT_EQ(printed(), "Error: not NULL assertion failed.");
}

} // namespace
