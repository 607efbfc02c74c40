// One barrier in a small network laid out by hand, among them networks that a run can hardly make. Each is
// tried in the plain network and in that of src/tin; both must answer as it stands here, and do the same to all
// records.
#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <string>
#include <vector>

#include "hostapi/ads.h"
#include "tests/tin/compare_host.h"
#include "tests/tin/plain_network.h"
#include "tin/barriers.h"
#include "tin/inside.h"

namespace
{

struct spot {
    double x, y;
};

struct three {
    int a, b, c;
};

// The barrier is to join points 0 and 1.
struct layout {
    std::vector<spot> points;
    std::vector<three> triangles;
    int start, end;              // triangles of its ends
    std::vector<spot> waiting{}; // one in the bucket of each triangle
};

struct outcome {
    int answer = 0, failed = 0;
    std::string words{};
    std::string records{}; // corners, sides and waiting points of each triangle, then a triangle of each point
    bool joined = false, sound = false;
};

// The records of a layout, in the one kind or in the other.
template <class Point, class Triangle>
struct made {
    std::deque<Point> points{}, waiting{};
    std::deque<Triangle> triangles{};

    explicit made(const layout& l)
    {
        place(points, l.points);
        place(waiting, l.waiting);
        for (const three& t : l.triangles) {
            Triangle& added = triangles.emplace_back();
            const int numbers[] = {t.a, t.b, t.c};
            for (int i = 0; i < 3; ++i) {
                added.corner[i] = &points[static_cast<std::size_t>(numbers[i])];
                added.corner[i]->tri = &added;
            }
        }
        for (Triangle& t : triangles)
            for (int i = 0; i < 3; ++i)
                t.side[i] = across(t, t.corner[i], t.corner[(i + 1) % 3]);
    }
    made(const made&) = delete;
    made& operator=(const made&) = delete;

    static void place(std::deque<Point>& to, const std::vector<spot>& spots)
    {
        for (const spot& s : spots) {
            Point& added = to.emplace_back();
            added.x = s.x;
            added.y = s.y;
        }
    }

    Triangle* across(const Triangle& t, const Point* from, const Point* to)
    {
        for (Triangle& other : triangles)
            for (int i = 0; i < 3; ++i)
                if (&other != &t && other.corner[i] == to && other.corner[(i + 1) % 3] == from)
                    return &other;
        return nullptr;
    }

    template <class Record>
    static std::string number(const std::deque<Record>& all, const Record* one)
    {
        for (std::size_t i = 0; i < all.size(); ++i)
            if (&all[i] == one)
                return std::to_string(i);
        return "-";
    }

    std::string text() const
    {
        std::string out;
        for (const Triangle& t : triangles) {
            for (const Point* p : t.corner)
                out += number(points, p) + " ";
            out += "|";
            for (const Triangle* s : t.side)
                out += " " + number<Triangle>(triangles, s);
            for (auto* link = t.bucket; link; link = link->next)
                out += " w" + number<Point>(waiting, link->point);
            out += "\n";
        }
        for (const Point& p : points)
            out += number<Triangle>(triangles, p.tri) + " ";
        return out;
    }

    static bool has(const Triangle* t, const Point* p)
    {
        return t && (t->corner[0] == p || t->corner[1] == p || t->corner[2] == p);
    }

    bool joined() const
    {
        for (const Triangle& t : triangles)
            if (has(&t, &points[0]) && has(&t, &points[1]))
                return true;
        return false;
    }

    static double turn(const Point& a, const Point& b, const Point& c)
    {
        return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    }

    // Counter-clockwise, neighbours of each other, and waiting points and corners at home.
    bool sound()
    {
        bool ok = true;
        for (Triangle& t : triangles) {
            ok = ok && turn(*t.corner[0], *t.corner[1], *t.corner[2]) > 0;
            for (int i = 0; i < 3; ++i) {
                ok = ok && t.side[i] == across(t, t.corner[i], t.corner[(i + 1) % 3]);
                for (auto* link = t.bucket; link; link = link->next)
                    ok = ok && link->point->tri == &t &&
                         turn(*t.corner[i], *t.corner[(i + 1) % 3], *link->point) > 0;
            }
        }
        for (const Point& p : points)
            ok = ok && has(p.tri, &p);
        return ok;
    }
};

outcome by_plain(const layout& l, int retry)
{
    made<plain::point, plain::triangle> m(l);
    plain::network n;
    for (std::size_t i = 0; i < m.waiting.size(); ++i) {
        plain::push(n, m.triangles[i].bucket, &m.waiting[i]);
        m.waiting[i].tri = &m.triangles[i];
    }
    plain::barrier b{&m.points[0], &m.points[1], nullptr};
    outcome o;
    o.answer = plain::connect_barrier_points(n, &b, &m.triangles[static_cast<std::size_t>(l.start)],
                                             &m.triangles[static_cast<std::size_t>(l.end)], retry);
    o.failed = n.failed_barriers;
    o.words = n.said;
    o.records = m.text();
    o.joined = m.joined();
    o.sound = m.sound();
    return o;
}

outcome by_library(const layout& l, int retry)
{
    made<tin_point, tin_triangle> m(l);
    tin_network n;
    for (std::size_t i = 0; i < m.waiting.size(); ++i)
        tin_put_in_bucket(new (acad_malloc(sizeof(tin_link))) tin_link{&m.waiting[i], nullptr},
                          &m.triangles[i]);
    const tin_barrier b{&m.points[0], &m.points[1], nullptr};
    outcome o;
    o.answer = connect_barrier_points(&n, &b, &m.triangles[static_cast<std::size_t>(l.start)],
                                      &m.triangles[static_cast<std::size_t>(l.end)], retry);
    o.failed = n.failed_barriers;
    o.words = compare_host::take_text();
    o.records = m.text();
    o.joined = m.joined();
    o.sound = m.sound();
    compare_host::give_all_back();
    return o;
}

outcome connect(const layout& l, int retry = 1)
{
    const outcome here = by_plain(l, retry), there = by_library(l, retry);
    EXPECT_EQ(there.answer, here.answer);
    EXPECT_EQ(there.failed, here.failed);
    EXPECT_EQ(there.words, here.words);
    EXPECT_EQ(there.records, here.records);
    return there;
}

void expect_forced(const layout& l)
{
    const outcome o = connect(l);
    EXPECT_EQ(o.answer, 1);
    EXPECT_EQ(o.words, "");
    EXPECT_EQ(o.failed, 0);
    EXPECT_TRUE(o.joined);
    EXPECT_TRUE(o.sound);
}

void expect_given_up(const layout& l, const std::string& words)
{
    for (int retry : {0, 1}) {
        const outcome o = connect(l, retry);
        EXPECT_EQ(o.answer, 1);
        EXPECT_EQ(o.failed, 0);
        EXPECT_EQ(o.words, words);
    }
}

// ---- The way around an end ----

// A fan around `hub`, whose far edge towards the other end is met after so many turns; one triangle is beyond.
layout fan(int turns, int hub)
{
    layout l{{{0, 0}, {100, 0}}, {}, 0, turns + 1};
    if (hub == 1)
        l = {{{100, 0}, {0, 0}}, {}, turns + 1, 0};
    for (int i = 0; i <= turns + 1; ++i) {
        const double angle = i > turns ? -0.01 : 0.01 + 0.035 * (turns - i);
        l.points.push_back({10 * std::cos(angle), 10 * std::sin(angle)});
    }
    for (int i = 0; i <= turns; ++i)
        l.triangles.push_back({hub, i + 3, i + 2});
    l.triangles.push_back({1 - hub, turns + 2, turns + 3});
    return l;
}

TEST(TinCorridor, AnEndIsTurnedAroundAHundredTimesAndNoMore)
{
    for (int hub : {0, 1}) {
        expect_forced(fan(1, hub));
        expect_forced(fan(100, hub));
    }
    expect_given_up(fan(101, 0), "\nWarning: error L1 in connect_barrier_points.");
    expect_given_up(fan(101, 1), "\nWarning: error L2 in connect_barrier_points.");
}

TEST(TinCorridor, FullTurnWithoutACrossingIsTold)
{
    // The other end lies inside the fan.
    const std::vector<spot> ring = {{10, 0}, {0, 10}, {-10, 0}, {0, -10}, {2.5, 1.2}, {2.5, 0.5}};
    layout l{{{0, 0}, {3, 1}}, {{0, 2, 3}, {0, 3, 4}, {0, 4, 5}, {0, 5, 2}, {1, 6, 7}}, 0, 4};
    l.points.insert(l.points.end(), ring.begin(), ring.end());
    expect_given_up(l, "\nintersection error 1");
    std::swap(l.points[0], l.points[1]);
    l.triangles = {{1, 2, 3}, {1, 3, 4}, {1, 4, 5}, {1, 5, 2}, {0, 6, 7}};
    std::swap(l.start, l.end);
    expect_given_up(l, "\nintersection error 2");
}

TEST(TinCorridor, EdgeMetOnTheWayAroundEndsTheWork)
{
    // The triangle with both ends is flat and upright, where no crossing is seen.
    const layout l{
        {{0, 0}, {0, 10}, {0, -5}, {5, 0}, {-5, 20}, {-5, 15}}, {{0, 2, 3}, {0, 1, 2}, {1, 4, 5}}, 0, 2};
    expect_given_up(l, "");
    const layout turned{
        {{0, 10}, {0, 0}, {0, -5}, {5, 0}, {-1, 5}, {1, 5}}, {{1, 2, 3}, {1, 0, 2}, {0, 4, 5}}, 2, 0};
    expect_given_up(turned, "");
}

TEST(TinCorridor, TrianglesWithoutTheEndsAreTold)
{
    layout l = fan(1, 0);
    std::swap(l.start, l.end);
    expect_given_up(l, "\nError 11 connecting barrier segment.");
    l.start = l.end = 0;
    expect_given_up(l, "\nError 12 connecting barrier segment.");
}

// ---- The corridor ----

// A strip between two rows of points; the barrier runs along it and crosses so many edges.
layout strip(int edges)
{
    layout l{{{-1, 0}, {edges + 1.0, 0}}, {}, 0, edges};
    for (int i = 0; i <= edges; ++i)
        l.points.push_back({static_cast<double>(i), i % 2 ? 1.0 : -1.0});
    l.triangles.push_back({0, 2, 3});
    for (int i = 2; i < edges + 1; ++i)
        l.triangles.push_back(i % 2 ? three{i, i + 1, i + 2} : three{i, i + 2, i + 1});
    l.triangles.push_back(edges % 2 ? three{1, edges + 2, edges + 1} : three{1, edges + 1, edges + 2});
    return l;
}

TEST(TinCorridor, TakesAHundredPassesAndNoMore)
{
    for (int edges : {1, 2, 3, 40, 101})
        expect_forced(strip(edges));
    expect_given_up(strip(102), "\nWarning: error L3 in connect_barrier_points");
    const outcome o = connect(strip(102));
    EXPECT_FALSE(o.joined);
    EXPECT_TRUE(o.sound); // the swaps done so far stay
}

// At the first end the way to the next corner passes by its edge, so work goes on at the far end.
const std::vector<spot> blocked = {{0, 0}, {10, 0}, {1, -1}, {1, 1}, {2, 5}};
const three blocked_end = {0, 2, 3}, blocked_next = {4, 3, 2};

layout with_blocked_end(const std::vector<spot>& points, const std::vector<three>& triangles, int end)
{
    layout l{blocked, {blocked_end, blocked_next}, 0, end};
    l.points.insert(l.points.end(), points.begin(), points.end());
    l.triangles.insert(l.triangles.end(), triangles.begin(), triangles.end());
    return l;
}

TEST(TinCorridor, FarEndIsWorkedOnWhereTheFirstIsBlocked)
{
    layout l = with_blocked_end({}, {{1, 4, 2}}, 2);
    l.waiting = {{0.7, 0.1}, {1.2, 1.5}, {5, 1}};
    expect_forced(l);
}

TEST(TinCorridor, TriangleAtTheFarEndIsRepairedForIt)
{
    // The corner across from the far end is hidden behind 7; a swap with the triangle beyond brings another.
    layout l = with_blocked_end({{8, 5}, {9, -1}, {9, 1}}, {{2, 6, 4}, {4, 6, 5}, {5, 6, 7}, {1, 7, 6}}, 5);
    l.waiting = {{0.7, 0.1}, {1.2, 1.5}, {5, 0.5}, {7, 4}, {8.9, 0.9}, {9.5, 0.1}};
    expect_forced(l);
    l.triangles[2] = {2, 6, 5};
    l.triangles[3] = {2, 5, 4};
    l.waiting[2] = {8, 1};
    l.waiting[3] = {2.5, 4.5};
    expect_forced(l);
}

// Both ends are blocked; what is beside the triangle across from the far one varies.
layout blocked_twice(const std::vector<spot>& points, const std::vector<three>& triangles)
{
    layout l = with_blocked_end({{8, -5}, {9, -1}, {9, 1}}, {{5, 6, 7}, {1, 7, 6}}, 3);
    l.points.insert(l.points.end(), points.begin(), points.end());
    l.triangles.insert(l.triangles.end(), triangles.begin(), triangles.end());
    return l;
}

void expect_not_to_be_forced(const layout& l)
{
    const outcome again = connect(l, 1), last = connect(l, 0);
    EXPECT_EQ(again.answer, 0);
    EXPECT_EQ(again.failed, 0);
    EXPECT_EQ(last.answer, 1);
    EXPECT_EQ(last.failed, 1);
    EXPECT_EQ(again.words + last.words, "");
    EXPECT_EQ(again.records, last.records);
    EXPECT_FALSE(last.joined);
}

TEST(TinCorridor, BlockedEndsAreReportedOrCounted)
{
    const std::vector<three> middle = {{2, 7, 4}, {2, 5, 7}};
    const layout nothing_beside = blocked_twice({}, middle);
    expect_not_to_be_forced(nothing_beside);
    EXPECT_TRUE(connect(nothing_beside).sound);
    const layout useless_beside = blocked_twice({{12, -5}}, {{2, 7, 4}, {2, 5, 7}, {8, 6, 5}});
    expect_not_to_be_forced(useless_beside);
    EXPECT_TRUE(connect(useless_beside).sound);
    expect_not_to_be_forced(blocked_twice({{12, -5}}, {{8, 6, 5}})); // only the first neighbour
}

// The second neighbour is treated as if it were the first. It comes to that where it is flat, and then the
// neighbours don't fit each other any more.
TEST(TinCorridor, SecondNeighbourIsTakenForTheFirst)
{
    const layout l =
        blocked_twice({{12, -5}, {7, -11}, {12, -11}, {2, -3}}, {{8, 6, 5}, {9, 5, 7}, {5, 9, 10}, {9, 7, 11}});
    expect_not_to_be_forced(l);
    EXPECT_EQ(connect(l).records, "0 2 3 | - 1 -\n"
                                  "4 3 2 | - 0 -\n"
                                  "5 9 7 | 7 5 4\n"
                                  "1 7 6 | - 5 -\n"
                                  "8 6 5 | - 2 -\n"
                                  "9 5 7 | 6 3 2\n"
                                  "5 9 10 | 5 - -\n"
                                  "9 7 11 | 2 - -\n"
                                  "0 3 1 1 1 5 4 7 4 7 6 7 ");
}

// ---- Networks that are broken ----

TEST(TinCorridor, OpenCorridorIsTold)
{
    layout l{{{0, 0}, {10, 0}, {1, -1}, {1, 1}, {9, 1}, {9, -1}}, {{0, 2, 3}, {1, 4, 5}}, 0, 1};
    expect_given_up(l, "\nError 7 connecting barrier.");
    expect_given_up(with_blocked_end({{9, 1}, {9, -1}}, {{1, 5, 6}}, 2), "\nError: 11 inserting barrier.");
}

TEST(TinCorridor, NeighbourWithoutAThirdCornerIsTold)
{
    const std::string words = "\nError: 11 inserting barrier.";
    // Across from the first end, then from the last.
    const std::vector<spot> apart = {{0, 0}, {10, 0}, {1, -1}, {1, 1}, {9, 1}, {9, -1}};
    expect_given_up({apart, {{0, 2, 3}, {3, 2, 3}, {1, 4, 5}}, 0, 2}, words);
    expect_given_up(with_blocked_end({{9, 1}, {9, -1}}, {{6, 5, 6}, {1, 5, 6}}, 3), words);
    // Beside the latter, on either side.
    expect_given_up(blocked_twice({}, {{6, 5, 6}}), words);
    expect_given_up(blocked_twice({{12, -5}}, {{8, 6, 5}, {5, 7, 5}}), words);
    // Left so by the swap beside it.
    expect_given_up(with_blocked_end({{9.5, 2}, {9, -1}, {9.25, 0.5}}, {{5, 6, 7}, {1, 7, 6}, {7, 6, 5}}, 3),
                    words);
}

} // namespace
