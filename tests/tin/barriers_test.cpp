// Barriers forced into the network.
#include "tin/barriers.h"

#include <gtest/gtest.h>

#include "hostapi/ads.h"
#include "tests/tin/survey.h"
#include "tin/insert.h"

namespace
{

const std::vector<place> strip = {{0, 50}, {200, 51}, {40, 20}, {80, 85}, {120, 18}, {160, 83}, {100, 3}};

TEST(TinBarriers, EdgesOfBarriersAreThere)
{
    survey s;
    s.offer_all(strip);
    s.barrier(0, 1);
    s.barrier(2, 5);
    s.run();
    EXPECT_EQ(faults(s.network), "");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(s.network.failed_barriers, 0);
}

TEST(TinBarriers, BarrierInsertedAfterOthersIsForcedThroughThem)
{
    survey s;
    s.offer_all(strip);
    s.barrier(0, 1); // the head of the list comes first
    for (int i = 2; i < 7; ++i)
        s.barrier(i, i == 6 ? 2 : i + 1);
    s.barrier(3, 5);
    s.run();
    EXPECT_EQ(faults(s.network), "");
    EXPECT_TRUE(has_edge(s.network, s.points[3], s.points[5]));
}

// Inserts all points, then connects p-q in the finished network.
TEST(TinBarriers, ForcedEdgeThroughAFinishedNetworkKeepsTheStructure)
{
    int forced = 0, changed = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        survey s;
        s.offer_all(random_places(seed, 40, 100));
        s.run();
        const double before = total_area(s.network);
        tin_barrier b{s.points[seed % 40], s.points[(seed * 7 + 3) % 40], nullptr};
        if (b.from == b.to)
            continue;
        const bool there = has_edge(s.network, b.from, b.to);
        const int answer = connect_barrier_points(&s.network, &b, b.from->tri, b.to->tri, 1);
        EXPECT_EQ(faults(s.network), "") << seed;
        EXPECT_NEAR(total_area(s.network), before, 1e-6 * before);
        EXPECT_EQ(has_edge(s.network, b.from, b.to), answer == 1) << seed;
        EXPECT_EQ(printed(), "") << seed;
        forced += answer == 1;
        changed += !there;
    }
    EXPECT_GT(changed, 100);
    EXPECT_GT(forced, 100);
}

TEST(TinBarriers, EdgeThatIsThereIsLeftAlone)
{
    survey s;
    s.offer_all(strip);
    s.run();
    tin_barrier b{s.points[0], s.points[2], nullptr};
    ASSERT_TRUE(has_edge(s.network, b.from, b.to));
    const auto before = triangles_by_number(s);
    EXPECT_EQ(connect_barrier_points(&s.network, &b, b.from->tri, b.to->tri, 1), 1);
    EXPECT_EQ(triangles_by_number(s), before);
}

TEST(TinBarriers, TrianglesWithoutTheEndsAreTold)
{
    survey s;
    s.offer_all(strip);
    s.run();
    tin_barrier b{s.points[0], s.points[1], nullptr};
    EXPECT_EQ(connect_barrier_points(&s.network, &b, b.to->tri, b.to->tri, 1), 1);
    EXPECT_EQ(printed(), "\nError 11 connecting barrier segment.");
    EXPECT_EQ(connect_barrier_points(&s.network, &b, b.from->tri, b.from->tri, 1), 1);
    EXPECT_EQ(printed(), "\nError 12 connecting barrier segment.");
}

// The fans around both ends of a barrier, as connect_barrier_points meets them when they are broken.
TEST(TinBarriers, FanWithoutAnEndIsGivenUp)
{
    tin_point p{}, q{}, u{}, w{}, u2{}, w2{};
    q.x = 100;
    u.x = -10, u.y = 5;
    w.x = -10, w.y = -5;
    u2.x = 110, u2.y = -5;
    w2.x = 110, w2.y = 5;
    tin_triangle start{{&p, &u, &w}, {}, nullptr, nullptr}, end{{&q, &u2, &w2}, {}, nullptr, nullptr};
    tin_barrier b{&p, &q, nullptr};
    survey s;
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nWarning: error L1 in connect_barrier_points.");
    start.side[0] = &start; // a full turn
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nintersection error 1");
    u.x = w.x = 10;
    start.side[0] = nullptr;
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nWarning: error L2 in connect_barrier_points.");
    end.side[0] = &end;
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nintersection error 2");
    u2.x = w2.x = 90;
    end.side[0] = nullptr;
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nError 7 connecting barrier.");
    tin_triangle flat{{&u, &w, &u}, {}, nullptr, nullptr};
    start.side[1] = &flat;
    EXPECT_EQ(connect_barrier_points(&s.network, &b, &start, &end, 1), 1);
    EXPECT_EQ(printed(), "\nError: 11 inserting barrier.");
}

TEST(TinBarriers, BarriersThatShareAPointAreBothConnected)
{
    survey s;
    s.offer_all(strip);
    s.barrier(1, 6);
    s.barrier(0, 1);
    s.run();
    EXPECT_TRUE(has_edge(s.network, s.points[1], s.points[6]));
    EXPECT_TRUE(has_edge(s.network, s.points[0], s.points[1]));
    EXPECT_EQ(faults(s.network), "");
}

TEST(TinBarriers, EndWithoutATriangleIsTold)
{
    survey s;
    s.offer_all(strip);
    auto* stranger = tin_point_new(5, 5, 0);
    s.points.push_back(stranger);
    s.barrier(0, 7);
    s.run();
    EXPECT_EQ(printed(), "\nInternal error connecting barrier points.");
    while (tin_link* link = stranger->partners) {
        stranger->partners = link->next;
        acad_free(link);
    }
    acad_free(stranger);
}

TEST(TinBarriers, ProgressIsTold)
{
    survey s;
    s.offer_all(random_places(3, 130, 1000));
    for (int i = 0; i < 129; ++i)
        s.barrier(i, i + 1);
    s.network.quiet = 0;
    s.run();
    const std::string text = printed();
    EXPECT_EQ(text.find("\nInserting barriers ... \rInserting barriers ... 100"), 0u) << text;
    EXPECT_NE(text.find("\rInserting barriers 129       \n"), text.npos) << text;
}

TEST(TinBarriers, FailuresAreCountedAndToldEvenWhenQuiet)
{
    // Barriers that cross each other can't all stand; the structure does.
    int failed = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        survey s;
        s.offer_all(random_places(seed, 60, 100));
        for (int i = 0; i < 30; ++i)
            s.barrier(i, 59 - i);
        s.run();
        const std::string text = printed();
        failed += s.network.failed_barriers;
        const std::string words =
            "Warning: unable to connect " + std::to_string(s.network.failed_barriers) + " barrier segments\n";
        EXPECT_EQ(text.find(words) != text.npos, s.network.failed_barriers > 0) << text;
        EXPECT_EQ(faults(s.network, 1e9), "") << seed;
    }
    RecordProperty("failed", failed);
}

TEST(TinBarriers, BreakLeavesTheRunWhereItIs)
{
    survey s;
    s.offer_all(random_places(3, 150, 1000));
    for (int i = 0; i < 149; ++i)
        s.barrier(i, i + 1);
    s.network.quiet = 0;
    break_at_text("\rInserting barriers ... 100");
    s.run();
    const std::string text = printed();
    EXPECT_TRUE(text.ends_with("\rInserting barriers ... 100\nFunction cancelled at user request.")) << text;
    EXPECT_LT(s.points[0]->x, s.network.x_max - s.network.x_min);
    EXPECT_EQ(faults_inside_run(s.network, 1e-6), "");
}

} // namespace
