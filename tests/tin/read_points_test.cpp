// Reading of points: filters, duplicates and the nudge off contours.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/growth.h"
#include "tests/tin/survey.h"

namespace
{

TEST(TinReading, NetworkStartsWithItsDefaults)
{
    const tin_network n;
    EXPECT_EQ(n.triangles, nullptr);
    EXPECT_EQ(n.skip_zero, 0);
    EXPECT_EQ(n.zero_count, 0);
    EXPECT_EQ(n.failed_barriers, 0);
    EXPECT_EQ(n.contour_interval, 1.0);
    for (const tin_point* corner : n.frame)
        EXPECT_EQ(corner, nullptr);
    EXPECT_EQ(n.points, nullptr);
    EXPECT_EQ(n.tick, 0);
    EXPECT_EQ(n.hundreds, 0);
    EXPECT_EQ(n.point_count, 0);
    for (const double upper : {n.x_max, n.y_max, n.z_max})
        EXPECT_EQ(upper, -98765432.1);
    for (const double lower : {n.x_min, n.y_min, n.z_min})
        EXPECT_EQ(lower, 98765432.1);
    EXPECT_EQ(n.barriers, nullptr);
    EXPECT_EQ(n.split_on_barriers, 0);
    EXPECT_EQ(n.quiet, 1);
}

TEST(TinReading, SecondPointNearbyIsTheFirstOneAndLosesItsElevation)
{
    survey s;
    tin_point* first = s.offer(10, 20, 1.5);
    EXPECT_EQ(s.offer(10 + 5e-7, 20 - 5e-7, 7.5), first);
    EXPECT_EQ(first->z, 1.5);
    EXPECT_EQ(s.network.point_count, 1);
}

TEST(TinReading, DuplicateBoxIsOpen)
{
    survey s;
    tin_point* first = s.offer(0, 0);
    EXPECT_NE(s.offer(1e-6, 0), first);
    EXPECT_NE(s.offer(0, 1e-6), first);
    EXPECT_NE(s.offer(0, -1e-6), first);
    EXPECT_EQ(s.offer(0.99e-6, -0.99e-6), first);
    EXPECT_EQ(s.network.point_count, 4);
}

TEST(TinReading, NearPointBeyondAnAncestorIsNotFound)
{
    survey s;
    tin_point* root = s.offer(0, 0);
    tin_point* right = s.offer(5e-7, 100); // right of the root by x
    EXPECT_NE(s.offer(-2e-7, 100), right); // goes left of the root
    EXPECT_EQ(s.offer(2e-7, 100), right);
    EXPECT_NE(root, right);
}

TEST(TinReading, TreeIsHungByXWithEqualsOnTheLesserSide)
{
    survey s;
    tin_point* root = s.offer(5, 0);
    tin_point* right = s.offer(6, 0);
    tin_point* same = s.offer(5, 1);
    tin_point* below = s.offer(5, 2);
    EXPECT_EQ(s.network.points, root);
    EXPECT_EQ(root->greater, right);
    EXPECT_EQ(root->less, same);
    EXPECT_EQ(same->less, below);
}

TEST(TinReading, ElevationsOnContoursAreNudged)
{
    const struct {
        double z, interval, expected;
    } cases[] = {
        {100.0, 1.0, 100.0 + 1e-7},
        {100.5, 1.0, 100.5},
        {-3.25, 1.0, -3.25 + 1e-7},
        {100.0, 0.0, 100.0},
        {7.5, 2.5, 7.5 + 1e-7},
        {7.0, 2.5, 7.0},
        {3.0 - 5e-7, 1.0, 3.0 - 4e-7},
        {3.0 + 5e-7, 1.0, 3.0 + 6e-7},
        {3.0 - 2e-6, 1.0, 3.0 - 2e-6},
        {3.0 + 2e-6, 1.0, 3.0 + 2e-6},
        {0.0, 1.0, 1e-7},
        {1e-6, 1.0, 1e-6},
        {0.999999, 1.0, 0.999999},
        {-0.5, 0.0, -0.5},
    };
    for (const auto& c : cases) {
        survey s;
        s.network.contour_interval = c.interval;
        EXPECT_NEAR(s.offer(1, 1, c.z)->z, c.expected, 1e-12) << c.z << " at " << c.interval;
    }
}

TEST(TinReading, ZeroFilterCountsAndGivesThePointBack)
{
    survey s;
    s.network.skip_zero = 1;
    for (const double z : {0.0, 5e-7, -5e-7, 1e-6, -1e-6}) {
        tin_point* p = tin_point_new(1, 1, z);
        EXPECT_EQ(tin_add_point(&s.network, p), p);
        EXPECT_EQ(p->z, z);
        acad_free(p);
    }
    EXPECT_EQ(s.network.zero_count, 5);
    EXPECT_NE(s.offer(1, 1, 1.1e-6), nullptr);
    EXPECT_EQ(s.network.point_count, 1);
    s.network.skip_zero = 2; // only 1 drops them
    EXPECT_NE(s.offer(2, 2, 0), nullptr);
    EXPECT_EQ(s.network.zero_count, 5);
}

TEST(TinReading, ProgressIsToldEveryHundredPointsBehindTheRoot)
{
    survey s;
    s.network.quiet = 0;
    for (int i = 0; i < 100; ++i)
        s.offer(i * 37 % 101, i);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(s.network.tick, 99);
    s.offer(500, 500);
    EXPECT_EQ(printed(), "\rReading points ... 100");
    EXPECT_EQ(s.network.tick, 0);
    EXPECT_EQ(s.network.hundreds, 1);
    s.network.quiet = 1;
    for (int i = 0; i < 100; ++i)
        s.offer(600 + i, i);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(s.network.hundreds, 2);
    EXPECT_EQ(s.network.point_count, 201);
}

// What a walk from the root finds, which is the rule.
const tin_point* walked_to(const tin_point* root, double x, double y)
{
    for (const tin_point* n = root; n; n = x > n->x ? n->greater : n->less)
        if (n->x > x - 1e-6 && n->x < x + 1e-6 && n->y > y - 1e-6 && n->y < y + 1e-6)
            return n;
    return nullptr;
}

TEST(TinReading, IndexFindsWhatAWalkDownTheTreeFinds)
{
    std::mt19937 chance(4);
    int found = 0, missed = 0;
    for (int round = 0; round < 60; ++round) {
        survey s;
        const double scale = std::pow(10.0, round % 12), step = round % 3 == 0 ? 3e-7 : 1e-6 / (1 + round % 5);
        std::vector<const tin_point*> taken;
        for (int i = 0; i < 400; ++i) {
            const double x = scale + double(chance() % 40) * step, y = -scale + double(chance() % 6) * step;
            const tin_point* expected = walked_to(s.network.points, x, y);
            const bool near = std::any_of(taken.begin(), taken.end(), [&](const tin_point* p) {
                return p->x > x - 1e-6 && p->x < x + 1e-6 && p->y > y - 1e-6 && p->y < y + 1e-6;
            });
            const int before = s.network.point_count;
            const tin_point* answer = s.offer(x, y);
            if (expected) {
                ASSERT_EQ(answer, expected) << round << " " << i;
                ++found;
            } else {
                ASSERT_EQ(s.network.point_count, before + 1) << round << " " << i;
                missed += near;
                taken.push_back(answer);
            }
        }
    }
    EXPECT_GT(found, 1000);
    EXPECT_GT(missed, 50);
}

TEST(TinReading, PlacesThatAreNoNumbersAreHungByTheSameRule)
{
    survey s;
    const double none = std::nan("");
    tin_point* root = s.offer(0, 0);
    tin_point* odd = s.offer(none, 5);
    tin_point* right = s.offer(3, 5);
    tin_point* left = s.offer(-3, 5);
    EXPECT_EQ(root->less, odd);
    EXPECT_EQ(root->greater, right);
    EXPECT_EQ(odd->less, left);
    EXPECT_EQ(s.offer(3, 5), right);
}

// The tree by the rule alone: nothing in it but the walk.
class walked_tree
{
public:
    struct node {
        double x, y;
        int greater = -1, less = -1;
    };
    std::vector<node> nodes;

    // The number of the point that is met on the way down; -1: the new one has been hung.
    int offer(double x, double y)
    {
        int* link = &root;
        while (*link >= 0) {
            node& n = nodes[std::size_t(*link)];
            if (n.x > x - 1e-6 && n.x < x + 1e-6 && n.y > y - 1e-6 && n.y < y + 1e-6)
                return *link;
            link = x > n.x ? &n.greater : &n.less;
        }
        *link = int(nodes.size());
        nodes.push_back({x, y});
        return -1;
    }

private:
    int root = -1;
};

void expect_same_tree(const std::vector<place>& places, const std::string& what)
{
    survey s;
    walked_tree tree;
    std::vector<const tin_point*> taken;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const int before = s.network.point_count;
        const int expected = tree.offer(places[i].x, places[i].y);
        const tin_point* answer = s.offer(places[i].x, places[i].y);
        ASSERT_EQ(s.network.point_count, before + (expected < 0)) << what << ", point " << i;
        if (expected < 0)
            taken.push_back(answer);
        else
            ASSERT_EQ(answer, taken[std::size_t(expected)]) << what << ", point " << i;
    }
    const auto at = [&](int i) { return i < 0 ? nullptr : taken[std::size_t(i)]; };
    for (std::size_t i = 0; i < taken.size(); ++i) {
        ASSERT_EQ(taken[i]->greater, at(tree.nodes[i].greater)) << what << ", point " << i;
        ASSERT_EQ(taken[i]->less, at(tree.nodes[i].less)) << what << ", point " << i;
    }
}

// One coordinate of the kind: where doubles are few, where the box is as wide as they are apart or has no
// width, and what is no place at all.
double odd_number(std::mt19937& chance, int kind)
{
    const double steps[] = {0, 1e-6, -1e-6, 4e-7, -4e-7, 2e-6, 4e-6, 1.5e-6};
    const double bases[] = {0, 2, 1, 4e-6 * double(chance() % 5), 500000.25, 1e9};
    const double far[] = {4294967296.0, 8589934592.0, 17179869184.0, 1e10, 1e13, 1e17, 1e300};
    const double none[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, 5e-324, -5e-324, 1.7e308, -0.0};
    const double base = bases[chance() % 6];
    switch (kind) {
    case 0: // on the very border of the box, and just beside it
        return base + steps[chance() % 8];
    case 1:
        return std::nextafter(base + steps[chance() % 8], chance() % 2 ? 1e20 : -1e20);
    case 2: {
        double x = far[chance() % 7];
        for (int i = int(chance() % 3); i > 0; --i)
            x = std::nextafter(x, chance() % 2 ? HUGE_VAL : 0);
        return chance() % 2 ? x : -x;
    }
    default:
        return chance() % 8 ? base + steps[chance() % 8] : none[chance() % 7];
    }
}

TEST(TinReading, TreeIsTheOneThatTheWalkBuilds)
{
    std::mt19937 chance(11);
    for (int round = 0; round < 400; ++round) {
        std::vector<place> places;
        for (int i = 0; i < 300; ++i) {
            const double x = odd_number(chance, round % 4);
            places.push_back({x, odd_number(chance, int(chance() % 4) ? round % 4 : 0)});
        }
        const std::string what = "round " + std::to_string(round);
        expect_same_tree(places, what);
        const auto by_x = [](const place& a, const place& b) { return a.x < b.x; };
        if (round % 4 == 3) // what is no number has no order
            continue;
        std::sort(places.begin(), places.end(), by_x);
        expect_same_tree(places, what + " sorted");
        std::reverse(places.begin(), places.end());
        expect_same_tree(places, what + " sorted down");
        for (place& p : places)
            p.x = places[0].x;
        expect_same_tree(places, what + " one x");
    }
    for (unsigned seed = 0; seed < 100; ++seed) {
        std::vector<place> places = random_places(seed, 400, 4e-5, seed % 2 ? 37 : 0);
        expect_same_tree(places, "crowd " + std::to_string(seed));
        for (place& p : places)
            p.x += 1e7 * (seed % 5);
        expect_same_tree(places, "crowd far out " + std::to_string(seed));
    }
}

TEST(TinReading, RefusalsOfTheHeapLeaveTheWalk)
{
    for (int nth = 1; nth < 8; ++nth) {
        survey s;
        std::vector<tin_point*> made;
        for (int i = 0; i < 3000; ++i)
            made.push_back(tin_point_new(i % 1500, i % 1500, 1));
        host::heap_refuse(nth);
        for (int i = 0; i < 3000; ++i) {
            tin_point* answer = tin_add_point(&s.network, made[std::size_t(i)]);
            ASSERT_EQ(answer, i < 1500 ? nullptr : made[std::size_t(i - 1500)]) << nth << " " << i;
        }
        host::heap_refuse(0);
        s.network.points = nullptr;
        for (tin_point* p : made)
            acad_free(p);
    }
}

TEST(TinReading, SortedPointsAndColumnsTakeTimeInProportion)
{
    const auto sorted = [](int count) {
        survey s;
        for (int i = 0; i < count; ++i)
            s.offer(i, i % 7);
    };
    const auto column = [](int count) {
        survey s;
        for (int i = 0; i < count; ++i)
            s.offer(5, i);
    };
    EXPECT_TRUE(grows_in_proportion(sorted, 64000));
    EXPECT_TRUE(grows_in_proportion(column, 64000));
}

} // namespace
