#include "polygon/segment_pairs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/polygon/chains.h"

namespace
{

constexpr double PI = std::numbers::pi;

pg_segment segment(const spot& from, const spot& to)
{
    const chain_ptr chain = make_chain({from, to});
    return pg_segment_at(*chain);
}

TEST(SegmentPairs, WorksOutAnArc)
{
    const pg_segment s = segment({0, 0, -1, 5}, {2, 0, 0, 6});
    EXPECT_TRUE(pg_is_arc(s));
    EXPECT_EQ(s.p[2], 5.0);
    EXPECT_EQ(s.q[2], 6.0);
    EXPECT_NEAR(s.centre[0], 1.0, 1e-12);
    EXPECT_NEAR(s.radius, 1.0, 1e-12);
    EXPECT_EQ(s.dir, 1);
    EXPECT_FALSE(pg_is_arc(segment({0, 0}, {2, 0, 1})));
}

TEST(SegmentPairs, AStraightSegmentHasOnePointAnArcTwo)
{
    const pg_segment line = segment({-1, 0.5}, {3, 0.5}), half = segment({2, 0, 1}, {0, 0});
    double points[2][3];
    ASSERT_EQ(pg_segment_points(line, half, points), 1);
    EXPECT_NEAR(points[0][0], 1.0 - std::sqrt(0.75), 1e-12);
    ASSERT_EQ(pg_segment_points(half, line, points), 2); // along the line here too
    EXPECT_NEAR(points[0][0], 1.0 - std::sqrt(0.75), 1e-12);
    EXPECT_NEAR(points[1][0], 1.0 + std::sqrt(0.75), 1e-12);
    EXPECT_EQ(pg_segment_points(line, segment({0, 0.5}, {2, 0.5}), points), 1); // lies on it
    EXPECT_EQ(pg_segment_points(half, segment({0, 0.5, 1}, {2, 0.5}), points), 2);
    EXPECT_EQ(pg_segment_points(line, segment({0, 1.5}, {2, 1.5}), points), 0);
}

TEST(SegmentPairs, SegmentsWithoutLengthMeetNothing)
{
    double points[2][3];
    const pg_segment line = segment({-1, 0}, {3, 0}), half = segment({2, 0, 1}, {0, 0});
    for (const double bulge : {0.0, 0.5, -1.0}) {
        const pg_segment none = segment({2, 0, bulge}, {2, 0});
        EXPECT_EQ(pg_segment_points(none, line, points), 0);
        EXPECT_EQ(pg_segment_points(none, half, points), 0);
        EXPECT_EQ(pg_segment_points(half, none, points), 0);
        EXPECT_EQ(pg_segment_points(none, none, points), 0);
        EXPECT_EQ(pg_segment_points(line, none, points), bulge == 0.0 ? 1 : 0);
    }
}

TEST(SegmentPairs, DistanceOnAnArcIsFromItsNodeAndNotBroughtIntoATurn)
{
    const double top[3] = {1, 1, 0};
    EXPECT_NEAR(pg_segment_distance(segment({2, 0, 1}, {0, 0}), top), PI / 2, 1e-12);
    const double bottom[3] = {1, -1, 0};
    EXPECT_NEAR(pg_segment_distance(segment({0, 0, 1}, {2, 0}), bottom), PI / 2, 1e-12);
    // Clockwise from angle 0: its places have angles beyond the node's, not before it.
    EXPECT_NEAR(pg_segment_distance(segment({2, 0, -1}, {0, 0}), bottom), 3 * PI / 2, 1e-12);
    // Counter-clockwise across angle 0: measured the other way round.
    const double place[3] = {1 + std::cos(0.3), std::sin(0.3), 0};
    EXPECT_NEAR(pg_segment_distance(segment({1, -1, 1}, {1, 1}), place), 3 * PI / 2 - 0.3, 1e-12);
    EXPECT_NEAR(pg_segment_distance(segment({0, 0}, {3, 4}), place), std::hypot(place[0], place[1]), 1e-12);
}

TEST(SegmentPairs, DirectionFollowsTravel)
{
    const double top[3] = {1, 1, 0};
    EXPECT_NEAR(pg_segment_direction(segment({2, 0, 1}, {0, 0}), top), PI, 1e-12);
    EXPECT_NEAR(pg_segment_direction(segment({0, 0, -1}, {2, 0}), top), 0.0, 1e-12);
    EXPECT_NEAR(pg_segment_direction(segment({1, 0}, {1, 5}), top), PI / 2, 1e-12);
}

} // namespace
