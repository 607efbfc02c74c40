// Crossings of segments.
#include "tin/crossing.h"

#include <gtest/gtest.h>

#include "hostapi/ads.h"

namespace
{

struct segment_pair {
    const char* name;
    double ax, ay, bx, by, cx, cy, dx, dy;
    int meet;
};

tin_point at(double x, double y, double z = 0)
{
    tin_point p{};
    p.x = x;
    p.y = y;
    p.z = z;
    return p;
}

int meet(const segment_pair& s, double z = 0)
{
    const tin_network network;
    const tin_point a = at(s.ax, s.ay), b = at(s.bx, s.by), c = at(s.cx, s.cy, z), d = at(s.dx, s.dy, z);
    return tin_segments_cross(&network, &a, &b, &c, &d);
}

const segment_pair pairs[] = {
    {"through each other", 0, 0, 10, 10, 0, 10, 10, 0.5, 1},
    {"beside each other", 0, 0, 10, 10, 20, 0, 30, 5, 0},
    {"short of the other", 0, 0, 4, 4, 0, 10, 10, 0, 0},
    {"touching in the middle", 0, 0, 5, 5, 0, 10, 10, 0, 1},
    {"sharing an end", 0, 0, 10, 10, 10, 10, 20, 3, 1},
    {"within the slack of x", 0, 0, 5 - 5e-10, 5 - 5e-10, 0, 10, 10, 0, 1},
    {"beyond the slack of x", 0, 0, 5 - 5e-9, 5 - 5e-9, 0, 10, 10, 0, 0},
    {"vertical through the other", 5, -5, 5, 5, 0, 0, 10, 1, 1},
    {"the other is vertical", 0, 0, 10, 1, 5, -5, 5, 5, 1},
    {"vertical above the other", 5, 1, 5, 5, 0, 0, 10, 1, 0},
    {"vertical at an end within slack", 10 + 5e-9, -5, 10 + 5e-9, 5, 0, 0, 10, 1, 1},
    {"vertical at an end beyond slack", 10 + 5e-8, -5, 10 + 5e-8, 5, 0, 0, 10, 1, 0},
    {"both vertical, one on the other", 5, 0, 5, 10, 5, 5, 5, 15, 0},
    {"steep and level, the host decides", 0, 0, 1e-4, 10, -1, 5, 1, 5, 1},
    {"steep and level apart", 0, 0, 1e-4, 10, 1, 5, 2, 5, 0},
    {"parallel", 0, 0, 10, 1, 0, 1, 10, 2, 0},
    {"on one line, overlapping: the host finds no crossing", 0, 0, 10, 5, 5, 2.5, 20, 10, 0},
};

TEST(TinCrossing, SegmentsMeetOrNot)
{
    for (const segment_pair& s : pairs) {
        EXPECT_EQ(meet(s), s.meet) << s.name;
        EXPECT_EQ(meet({s.name, s.cx, s.cy, s.dx, s.dy, s.ax, s.ay, s.bx, s.by, 0}), s.meet)
            << s.name << ", exchanged";
        EXPECT_EQ(meet({s.name, s.bx, s.by, s.ax, s.ay, s.cx, s.cy, s.dx, s.dy, 0}), s.meet)
            << s.name << ", turned";
    }
}

TEST(TinCrossing, ElevationsHaveNoSay)
{
    for (const segment_pair& s : pairs)
        EXPECT_EQ(meet(s, 100), s.meet) << s.name;
}

TEST(TinCrossing, VerticalCrossGivesThePlace)
{
    const tin_point a = at(5, -5), b = at(5, 5), c = at(0, 0), d = at(10, 2), e = at(0, 7), f = at(10, 9);
    double out[2] = {};
    EXPECT_EQ(tin_vertical_cross(&a, &b, &c, &d, out), RTNORM);
    EXPECT_EQ(out[0], 5);
    EXPECT_EQ(out[1], 1);
    EXPECT_EQ(tin_vertical_cross(&a, &b, &e, &f, out), RTNONE);
    EXPECT_EQ(out[1], 8); // where the line would be met
    EXPECT_EQ(tin_vertical_cross(&c, &d, &e, &f, out), RTNONE);
    EXPECT_EQ(tin_vertical_cross(&a, &b, &a, &b, out), RTNONE);
}

TEST(TinCrossing, VerticalCrossHasSlackAlongY)
{
    const tin_point c = at(0, 0), d = at(10, 0);
    const tin_point low = at(5, -5), near = at(5, -5e-9), far = at(5, -5e-8);
    double out[2];
    EXPECT_EQ(tin_vertical_cross(&low, &near, &c, &d, out), RTNORM);
    EXPECT_EQ(tin_vertical_cross(&low, &far, &c, &d, out), RTNONE);
}

} // namespace
