// What the tree of points, the orders about the frame's corners and the walk find, against looking at every
// point and every triangle.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "hostapi/ads.h"
#include "tests/tin/survey.h"
#include "tin/corner_order.h"
#include "tin/locate.h"

namespace
{

using places = std::set<std::uint32_t>;

// A list of points of chance, its tree, and what lies near a segment.
struct forest {
    tin_point* list = nullptr;
    point_tree* tree = nullptr;

    forest(unsigned seed, int count, int grid)
    {
        for (const place& p : random_places(seed, count, 100, grid)) {
            tin_point* point = tin_point_new(p.x, p.y, 0);
            point->next = list;
            list = point;
        }
        tree = point_tree_new(list);
    }
    forest(const forest&) = delete;
    forest& operator=(const forest&) = delete;
    ~forest()
    {
        point_tree_free(tree);
        while (tin_point* p = list) {
            list = p->next;
            acad_free(p);
        }
    }
    places near(const tin_place& a, const tin_place& b, double reach) const
    {
        places found;
        const double dx = b.x - a.x, dy = b.y - a.y;
        for (std::uint32_t i = 0; i < tree->count; ++i) {
            const tree_spot& s = tree->spots[i];
            const double along = ((s.x - a.x) * dx + (s.y - a.y) * dy) / (dx * dx + dy * dy);
            const double foot = std::clamp(along, 0.0, 1.0);
            if (std::hypot(s.x - a.x - foot * dx, s.y - a.y - foot * dy) <= reach)
                found.insert(i);
        }
        return found;
    }
};

TEST(TinTree, PointsKnowTheirPlaces)
{
    for (const int count : {1, 2, 7, 8, 9, 64, 65, 1000}) {
        const forest f(1, count, 0);
        ASSERT_NE(f.tree, nullptr);
        EXPECT_EQ(f.tree->count, static_cast<std::uint32_t>(count));
        for (const tin_point* p = f.list; p; p = p->next) {
            ASSERT_TRUE(has_tree_place(p));
            EXPECT_EQ(f.tree->spots[tree_place(p)].point, p);
            const std::uint32_t leaf = leaf_of(*f.tree, tree_place(p));
            EXPECT_GE(tree_place(p), first_of_leaf(*f.tree, leaf));
            EXPECT_LT(tree_place(p), first_of_leaf(*f.tree, leaf + 1));
            EXPECT_LE(first_of_leaf(*f.tree, leaf + 1) - first_of_leaf(*f.tree, leaf), LEAF_POINTS);
        }
    }
}

TEST(TinTree, FindsAllPointsNearASegment)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> anywhere(-40, 140);
    std::size_t all = 0;
    for (int i = 0; i < 600; ++i) {
        const forest f(static_cast<unsigned>(i % 6), 50 + i, i % 2 ? 12 : 0);
        tin_place a{anywhere(random), anywhere(random)}, b{anywhere(random), anywhere(random)};
        if (i % 5 == 0)
            b.x = a.x = f.tree->nodes[1].at; // along a line at which the tree is halved
        const double reach = i % 3 ? 1e-9 : 2;
        places found;
        near_segment(
            *f.tree, 1, a, b, reach, [](std::uint32_t) { return true; },
            [&](std::uint32_t leaf) {
                for (std::uint32_t k = first_of_leaf(*f.tree, leaf); k < first_of_leaf(*f.tree, leaf + 1); ++k)
                    if (is_near_segment(a, b, reach, f.tree->spots[k].x, f.tree->spots[k].y))
                        found.insert(k);
            });
        const places near = f.near(a, b, reach); // what is said to be near may be a little more
        EXPECT_TRUE(std::includes(found.begin(), found.end(), near.begin(), near.end())) << i;
        EXPECT_LE(found.size(), near.size() + 12) << i;
        all += near.size();
    }
    EXPECT_GT(all, 1000u);
}

TEST(TinTree, FindsAllPointsNearATriangle)
{
    std::mt19937 random(4);
    std::uniform_real_distribution<double> anywhere(-20, 120);
    for (int i = 0; i < 200; ++i) {
        const forest f(static_cast<unsigned>(i), 400, i % 2 ? 12 : 0);
        tin_place c[3];
        for (tin_place& p : c)
            p = {anywhere(random), anywhere(random)};
        places found;
        near_triangle(*f.tree, c, 1, &found,
                      [](void* to, std::uint32_t at) { static_cast<places*>(to)->insert(at); });
        const double sign = turn(c[0], c[1], c[2].x, c[2].y) < 0 ? -1 : 1;
        for (std::uint32_t k = 0; k < f.tree->count; ++k) {
            const tree_spot& s = f.tree->spots[k];
            bool in = true;
            for (int e = 0; e < 3; ++e)
                in = in && sign * turn(c[e], c[(e + 1) % 3], s.x, s.y) >= 0;
            EXPECT_TRUE(found.count(k) || !(in || is_near_segment(c[0], c[1], 0.9, s.x, s.y))) << i;
        }
        EXPECT_LT(found.size(), f.tree->count);
    }
}

TEST(TinTree, OrderAboutACornerFindsAllPointsNearALine)
{
    std::mt19937 random(5);
    for (int i = 0; i < 40; ++i) {
        const forest f(static_cast<unsigned>(i), 700, i % 2 ? 20 : 0);
        for (const tin_place& corner :
             {tin_place{-200, 300}, tin_place{300, 300}, tin_place{300, -200}, tin_place{-200, -200}}) {
            tin_point at{corner.x, corner.y, 0, {nullptr}, nullptr, nullptr, nullptr};
            corner_order order;
            corner_order_begin(&order, &at, 100, 100);
            ASSERT_TRUE(corner_order_make(&order, *f.tree));
            for (int k = 0; k < 20; ++k) {
                const tree_spot& to = f.tree->spots[random() % f.tree->count];
                const double reach = k % 2 ? 1e-10 : 1e-3;
                places found;
                const order_piece piece = corner_order_near(order, *f.tree, {to.x, to.y}, reach);
                for (const std::uint64_t* e = piece.first; e != piece.last; ++e)
                    found.insert(static_cast<std::uint32_t>(*e));
                for (const std::uint32_t near : f.near(corner, {to.x, to.y}, reach))
                    EXPECT_TRUE(found.count(near)) << i;
                EXPECT_LT(found.size(), 100u);
            }
            acad_free(order.entries);
        }
    }
}

TEST(TinTree, RefusesNothingAndPlacesThatAreNoNumbers)
{
    tin_point first{1, 2, 0, {nullptr}, nullptr, nullptr, nullptr};
    EXPECT_EQ(point_tree_new(nullptr), nullptr);
    first.x = std::nan("");
    EXPECT_EQ(point_tree_new(&first), nullptr);
    EXPECT_EQ(first.tri, nullptr);
}

TEST(TinLocate, FindsTheTriangleThatHoldsAPlace)
{
    survey s;
    s.offer_all(random_places(8, 400, 100));
    s.run();
    const tin_network& n = s.network;
    std::mt19937 random(6);
    for (tin_point* corner : n.frame) { // back to where the points are
        corner->x += n.x_min;
        corner->y += n.y_min;
    }
    std::vector<tin_triangle*> all;
    for (tin_triangle* t = n.triangles; t; t = t->next)
        all.push_back(t);
    for (int i = 0; i < 400; ++i) {
        const double x = static_cast<double>(random() % 100000) / 1000,
                     y = static_cast<double>(random() % 100000) / 1000;
        tin_triangle* const found = locate(&n, all[random() % all.size()], x, y, 1e-9);
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(is_well_inside(found->corner, x, y, 1e-9));
    }
    // Around a corner stand all its triangles.
    const tin_point* p = s.points[17];
    std::size_t around = 0;
    for (const tin_triangle* t : all)
        around += std::find(t->corner, t->corner + 3, p) != t->corner + 3;
    tin_triangle* near[NEAR_TRIANGLES];
    EXPECT_EQ(triangles_near(p->tri, p->x, p->y, 1e-9, near), static_cast<int>(around));
    EXPECT_EQ(triangles_near(s.points[18]->tri, p->x, p->y, 1e-9, near), 0);
}

} // namespace
