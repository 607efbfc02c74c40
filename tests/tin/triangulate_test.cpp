// Whole runs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/tin/survey.h"

namespace
{

TEST(TinRun, NeedsTwoPoints)
{
    survey none, one;
    none.run();
    EXPECT_EQ(printed(), "Unable to find points.\n");
    one.offer(1, 1);
    one.run();
    EXPECT_EQ(printed(), "Too few points to triangulate.\n");
    EXPECT_EQ(one.network.triangles, nullptr);
    EXPECT_EQ(one.points[0]->x, 1);
}

TEST(TinRun, TwoPointsAreInserted)
{
    survey s;
    s.offer_all({{10, 10, 5}, {20, 30, 7}});
    s.run();
    EXPECT_EQ(triangle_count(s.network), 6);
    EXPECT_EQ(faults(s.network), "");
    EXPECT_TRUE(has_edge(s.network, s.points[0], s.points[1]));
    EXPECT_EQ(s.network.z_min, 5 + 1e-7);
    EXPECT_EQ(s.network.z_max, 7 + 1e-7);
    EXPECT_EQ(s.points[0]->x, 10);
    EXPECT_EQ(s.network.frame[0]->x, -20); // the frame stays where the run put it
    EXPECT_EQ(s.network.frame[0]->y, 60);
    EXPECT_EQ(s.network.frame[2]->x, 30);
    EXPECT_EQ(s.network.frame[2]->y, -40);
}

TEST(TinRun, IgnoredPointsAreTold)
{
    survey s;
    s.network.skip_zero = 1;
    s.offer_all({{10, 10, 0}, {20, 30, 0}});
    s.run();
    EXPECT_EQ(printed(), "\nIgnored 2 points with zero elevation.\nUnable to find points.\n");
}

TEST(TinRun, PointsInAVerticalLineGiveNoTrianglesWorthTheName)
{
    survey s;
    s.offer_all({{5, 1}, {5, 2}, {5, 3}, {5, 4}});
    s.run();
    for (const tin_triangle* t = s.network.triangles; t; t = t->next)
        EXPECT_EQ(t->corner[0] && t->corner[1] && t->corner[2], true);
    EXPECT_EQ(s.network.frame[0]->x, 0);
    EXPECT_EQ(s.network.frame[1]->x, 0);
}

TEST(TinRun, UnitSquareHasTheRisingDiagonal)
{
    survey s;
    s.offer_all({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    s.run();
    EXPECT_TRUE(has_edge(s.network, s.points[0], s.points[2]));
    EXPECT_FALSE(has_edge(s.network, s.points[1], s.points[3]));
}

// v points and 4 of the frame: with all corners of the frame on the hull there are 2 v + 2 triangles.
void expect_sound(const survey& s, double sliver)
{
    const tin_network& n = s.network;
    EXPECT_EQ(triangle_count(n), 2 * n.point_count + 2);
    EXPECT_EQ(faults(n, sliver), "");
    const double w = n.x_max - n.x_min, h = n.y_max - n.y_min;
    EXPECT_NEAR(total_area(n), 25 * w * h, 1e-9 * 25 * w * h);
    EXPECT_EQ(waiting_count(n), 0);
}

TEST(TinRun, RandomPointsAreDelaunay)
{
    for (const double far : {0.0, 5120000.0}) {
        survey s;
        std::vector<place> places = random_places(17, 400, 1000);
        for (place& p : places)
            p = {p.x + far / 8, p.y + far, p.z};
        s.offer_all(places);
        s.run();
        expect_sound(s, 0);
        EXPECT_EQ(printed(), "");
        for (const tin_triangle* t = s.network.triangles; t; t = t->next) {
            const auto at = [&](int i) {
                const tin_point* p = t->corner[i];
                const bool frame = std::find(s.network.frame, s.network.frame + 4, p) != s.network.frame + 4;
                return place{p->x + (frame ? s.network.x_min : 0), p->y + (frame ? s.network.y_min : 0)};
            };
            const place a = at(0), b = at(1), c = at(2);
            for (const tin_point* p : s.points) {
                const double ax = a.x - p->x, ay = a.y - p->y, bx = b.x - p->x, by = b.y - p->y,
                             cx = c.x - p->x, cy = c.y - p->y;
                const double det = (ax * ax + ay * ay) * (bx * cy - cx * by) -
                                   (bx * bx + by * by) * (ax * cy - cx * ay) +
                                   (cx * cx + cy * cy) * (ax * by - bx * ay);
                ASSERT_LT(det, 1000) << "a point lies in the circle of a triangle";
            }
        }
    }
}

TEST(TinRun, GriddedCocircularAndCrowdedPointsKeepTheStructure)
{
    const auto run = [](const std::vector<place>& places) {
        survey s;
        s.offer_all(places);
        s.run();
        EXPECT_EQ(printed(), "");
        expect_sound(s, 1e-6);
    };
    run(random_places(2, 2000, 20, 20));
    std::vector<place> circle;
    for (int i = 0; i < 100; ++i)
        circle.push_back(
            {100 * std::cos(i * 2 * std::numbers::pi / 100), 100 * std::sin(i * 2 * std::numbers::pi / 100)});
    run(circle);
    std::vector<place> grid;
    for (int x = 0; x < 25; ++x)
        for (int y = 0; y < 25; ++y)
            grid.push_back({double(x), double(y)});
    run(grid);
}

TEST(TinRun, ProgressIsTold)
{
    survey s;
    s.offer_all(random_places(3, 250, 1000));
    s.network.quiet = 0;
    s.run();
    EXPECT_EQ(printed(),
              "\nTriangulating points ...      \rTriangulating points ... 100\rTriangulating points ... 200"
              "\rTriangulating points ... 250     ");
}

TEST(TinRun, BreakLeavesTheNetworkAsItIs)
{
    const std::size_t before = host::heap_live_blocks();
    {
        survey s;
        s.offer_all(random_places(3, 350, 1000));
        s.network.quiet = 0;
        break_at_text("\rTriangulating points ... 100");
        s.run();
        EXPECT_TRUE(printed().ends_with("... 100\nFunction cancelled at user request."));
        EXPECT_EQ(triangle_count(s.network), 2 * 100 + 2);
        EXPECT_EQ(waiting_count(s.network), 250);
        EXPECT_EQ(faults_inside_run(s.network), "");
        EXPECT_EQ(s.network.z_min, 98765432.1);
    }
    EXPECT_EQ(host::heap_live_blocks(), before);
}

TEST(TinRun, BreakIsPolledBehindTheBarriersAndAtTheEnd)
{
    for (const char* text : {"\nInserting barriers ... ", "\rTriangulating points ... 4     "}) {
        survey s;
        s.offer_all({{0, 0}, {9, 1}, {10, 11}, {1, 10}});
        s.barrier(0, 2);
        s.network.quiet = 0;
        break_at_text(text);
        s.run();
        EXPECT_TRUE(printed().ends_with("\nFunction cancelled at user request.")) << text;
    }
}

TEST(TinRun, SecondRunOverTheSamePointsGivesTheSame)
{
    const auto once = [] {
        survey s;
        s.offer_all(random_places(9, 300, 50, 40));
        s.barrier(0, 5);
        s.run();
        return triangles_by_number(s);
    };
    EXPECT_EQ(once(), once());
}

// The heap refuses the tree of the waiting points, and all of them are put into buckets.
std::vector<std::vector<int>> triangles_of(const std::vector<place>& places, bool with_tree, bool with_barriers)
{
    survey s;
    s.offer_all(places);
    if (with_barriers)
        for (int i = 0; i + 7 < int(places.size()); i += 7)
            if (s.points[std::size_t(i)] != s.points[std::size_t(i + 7)])
                s.barrier(i, i + 7);
    host::heap_refuse(with_tree ? 0 : 7 + 1); // four corners and two triangles come first, then the tree
    s.run();
    if (!with_tree) {
        EXPECT_EQ(host::heap_refuse(0), 0);
    }
    auto found = triangles_by_number(s);
    found.push_back({s.network.failed_barriers, s.network.swap_depth, s.network.tick, s.network.hundreds});
    return found;
}

TEST(TinRun, WaitingInNoBucketGivesTheTrianglesThatBucketsGive)
{
    std::vector<place> line, sorted = random_places(8, 600, 100);
    for (int i = 0; i < 300; ++i)
        line.push_back({i * 0.37, i * 0.11 + (i % 5 == 0)});
    std::sort(sorted.begin(), sorted.end(), [](const place& a, const place& b) { return a.x < b.x; });
    for (const bool barriers : {false, true})
        for (const auto& places : {line, sorted, random_places(5, 700, 30, 30), random_places(6, 700, 1000),
                                   random_places(7, 300, 4e-6, 9), std::vector<place>{{1, 1}, {2, 2}}})
            EXPECT_EQ(triangles_of(places, true, barriers), triangles_of(places, false, barriers));
}

void run_with_everything()
{
    survey s;
    s.network.split_on_barriers = 1;
    s.offer_all({{0, 50}, {200, 51}, {40, 20}, {80, 85}, {120, 18}, {160, 83}, {100, 3}, {100, 50.5}, {0, 50}});
    for (const tin_point* p : s.points)
        if (!p)
            return; // refused while points were made
    s.barrier(0, 1);
    s.barrier(2, 5);
    s.run();
    EXPECT_EQ(faults(s.network, 1e9), "");
}

TEST(TinRun, GivesBackEverything)
{
    const std::size_t before = host::heap_live_blocks();
    run_with_everything();
    EXPECT_EQ(host::heap_live_blocks(), before);
}

TEST(TinRun, SurvivesEachRefusalOfTheHeap)
{
    const std::size_t before = host::heap_live_blocks();
    for (long nth = 1;; ++nth) {
        host::heap_refuse(nth);
        run_with_everything();
        EXPECT_EQ(host::heap_live_blocks(), before) << nth;
        if (host::heap_refuse(0) > 0) {
            EXPECT_GT(nth, 40);
            break;
        }
        ASSERT_LT(nth, 1000);
    }
}

} // namespace
