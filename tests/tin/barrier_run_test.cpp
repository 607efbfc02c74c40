// Runs with barriers whose ends can't be inserted, and on a heap that refuses.
#include <gtest/gtest.h>

#include "host/core/heap.h"
#include "hostapi/ads.h"
#include "tests/tin/survey.h"

namespace
{

// The barriers of a list in its order; survey hangs each new one at the head.
void barriers_in_order(survey& s, const std::vector<std::vector<int>>& ends)
{
    for (std::size_t i = ends.size(); i-- > 0;)
        s.barrier(ends[i][0], ends[i][1]);
}

// 0 lies outside the frame. 1-2 crosses the barrier 5-6, and 3-4 crosses 7-8: such an edge is there only if it
// was forced.
const std::vector<place> with_an_outlier = {{900, 50}, {0, 50},   {100, 50}, {0, 250}, {100, 250}, {50, 45},
                                            {50, 55},  {50, 245}, {50, 255}, {0, 0},   {100, 300}};

void run_in_100_by_300(survey& s, const std::vector<std::vector<int>>& ends)
{
    s.offer_all(with_an_outlier);
    s.network.x_max = 100; // without the outlier
    barriers_in_order(s, ends);
    barriers_in_order(s, {{5, 6}, {7, 8}});
    s.run();
}

TEST(TinBarrierRun, FailedEndLeavesBarriersUnconnectedUntilOneBeginsAnew)
{
    survey s;
    run_in_100_by_300(s, {{0, 1}, {1, 2}, {3, 4}});
    EXPECT_EQ(printed(), "\nUnable to fix insertion ERROR");
    EXPECT_EQ(s.network.failed_barriers, 0);
    EXPECT_FALSE(has_edge(s.network, s.points[1], s.points[2])); // its first end was in the network already
    EXPECT_TRUE(has_edge(s.network, s.points[3], s.points[4]));
    EXPECT_EQ(faults(s.network), "");
    EXPECT_EQ(s.points[0]->x, 900);
}

TEST(TinBarrierRun, FailedLastEndLeavesTheFollowingOnesUnconnectedToo)
{
    survey s;
    run_in_100_by_300(s, {{1, 0}, {1, 2}, {3, 4}});
    EXPECT_FALSE(has_edge(s.network, s.points[1], s.points[2]));
    EXPECT_TRUE(has_edge(s.network, s.points[3], s.points[4]));
}

TEST(TinBarrierRun, WithoutTheOutlierAllAreConnected)
{
    survey s;
    run_in_100_by_300(s, {{1, 2}, {3, 4}});
    EXPECT_TRUE(has_edge(s.network, s.points[1], s.points[2]));
    EXPECT_TRUE(has_edge(s.network, s.points[3], s.points[4]));
}

// A barrier to a point that was never inserted: its triangle doesn't have it.
TEST(TinBarrierRun, BarrierThatBeginsAnewToAnOutlierIsTold)
{
    survey s;
    run_in_100_by_300(s, {{0, 1}, {3, 0}});
    EXPECT_EQ(printed(), "\nUnable to fix insertion ERROR\nError 12 connecting barrier segment.");
}

struct barrier_case {
    const char* name;
    std::vector<place> points;
    std::vector<std::vector<int>> ends; // the last one comes first
    int split, midpoints, failed;
};

const std::vector<barrier_case> cases = {
    {"midpoint", {{84, 41}, {87, 60}, {53, 35}, {78, 3}}, {{3, 1}, {0, 1}}, 0, 1, 0},
    {"midpoint with a half that fails",
     {{42, 28}, {28, 56}, {1, 92}, {29, 6}, {92, 10}, {8, 39}, {74, 23}, {83, 68}, {85, 41}, {17, 15}},
     {{2, 4}, {0, 6}, {9, 3}, {5, 1}, {8, 7}},
     0,
     1,
     1},
    {"midpoint that can't be inserted",
     {{6, 0}, {3, 3}, {3, 1}, {2, 3}, {3, 4}},
     {{3, 0}, {2, 4}, {0, 1}},
     0,
     2,
     1},
    {"points on barriers",
     {{0, 0}, {90, 90}, {30, 30}, {60, 60}, {0, 90}, {90, 0}, {45, 45}, {10, 80}, {5, 40}},
     {{0, 1}, {4, 5}, {0, 4}},
     1,
     0,
     0},
};

// false: the heap did not even have room for the points.
bool run_case(const barrier_case& c, int* midpoints, int* failed)
{
    survey s;
    s.network.split_on_barriers = c.split;
    s.offer_all(c.points);
    if (s.points.size() != c.points.size())
        return false;
    for (const auto& e : c.ends)
        s.barrier(e[0], e[1]);
    s.run();
    int given = 0;
    *midpoints = 0;
    for (const tin_point* p = s.network.barrier_points; p; p = p->next) {
        given = 0;
        for (const tin_point* q : s.points)
            given += p == q;
        *midpoints += given == 0;
    }
    *failed = s.network.failed_barriers;
    return true;
}

TEST(TinBarrierRun, SurvivesEachRefusalOfTheHeap)
{
    for (const barrier_case& c : cases) {
        const std::size_t before = host::heap_live_blocks();
        int midpoints = 0, failed = 0;
        ASSERT_TRUE(run_case(c, &midpoints, &failed));
        EXPECT_EQ(midpoints, c.midpoints) << c.name;
        EXPECT_EQ(failed, c.failed) << c.name;
        EXPECT_EQ(host::heap_live_blocks(), before) << c.name;
        for (long nth = 1;; ++nth) {
            host::heap_refuse(nth);
            run_case(c, &midpoints, &failed);
            EXPECT_EQ(host::heap_live_blocks(), before) << c.name << " " << nth;
            if (host::heap_refuse(0) > 0)
                break;
            ASSERT_LT(nth, 1000);
        }
    }
}

} // namespace
