// Barriers in the network of src/tin against the plain one, and what must be true of both.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include "tests/tin/compare_host.h"
#include "tests/tin/library_side.h"
#include "tests/tin/play.h"
#include "tin/barriers.h"

namespace
{

using tin_inputs::input;

// An input played on both sides, which must come out alike.
struct both_sides {
    plain_side plain{};
    library_network owner{};
    library_side library{*owner.net};
    std::vector<plain::point*> plain_points{};
    std::vector<tin_point*> library_points{};

    explicit both_sides(const input& in)
    {
        const std::string expected = play(in, plain, plain_points);
        const std::string actual = play(in, library, library_points);
        EXPECT_TRUE(expected == actual) << in.name;
    }

    std::string written(bool by_library)
    {
        names ids;
        const auto name = [&ids](const auto& points, const auto& net) {
            for (std::size_t i = 0; i < points.size(); ++i)
                ids.give(points[i], std::to_string(i));
            for (int i = 0; i < 4; ++i)
                ids.give(net.frame[i], "f" + std::to_string(i));
            return write_down(net, ids);
        };
        return by_library ? name(library_points, *owner.net) : name(plain_points, plain.net);
    }
};

template <class Net, class Point>
bool has_edge(const Net& n, const Point* p, const Point* q)
{
    for (auto* t = n.triangles; t; t = t->next)
        if (std::find(t->corner, t->corner + 3, p) != t->corner + 3 &&
            std::find(t->corner, t->corner + 3, q) != t->corner + 3)
            return true;
    return false;
}

template <class Net, class Point>
std::vector<Point*> midpoints(const Net& n, const std::vector<Point*>& given)
{
    std::vector<Point*> found;
    for (Point* p = n.barrier_points; p; p = p->next)
        if (std::find(given.begin(), given.end(), p) == given.end())
            found.push_back(p);
    return found;
}

TEST(TinCompareBarriers, ThousandsOfBreaklinesGiveTheSameNetwork)
{
    std::map<std::string, int> met;
    const char* const words[] = {"Error 11 connecting barrier segment.",
                                 "Error 12 connecting barrier segment.",
                                 "Warning: error L1 in connect_barrier_points.",
                                 "Warning: error L2 in connect_barrier_points.",
                                 "Warning: error L3 in connect_barrier_points",
                                 "intersection error 1",
                                 "intersection error 2",
                                 "Error 7 connecting barrier.",
                                 "Error: 11 inserting barrier.",
                                 "Point insertion ERROR",
                                 "Warning: unable to connect 1 barrier segments",
                                 "Warning: unable to connect 2 barrier segments"};
    for (unsigned seed = 0; seed < 5000; ++seed) {
        const both_sides both(tin_inputs::breaklines(seed));
        for (const char* text : words)
            met[text] += both.plain.net.said.find(text) != std::string::npos;
        const bool split = !midpoints(both.plain.net, both.plain_points).empty();
        met["midpoint"] += split;
        met["midpoint and nothing failed"] += split && both.plain.net.failed_barriers == 0;
    }
    for (const auto& [text, count] : met)
        EXPECT_GT(count, 0) << text;
    EXPECT_GT(met["midpoint and nothing failed"], 300);
}

// Barriers forced into finished networks, one after another and some of them against others.
TEST(TinCompareBarriers, FinishedNetworksTakeBarriersAlike)
{
    int refused = 0, changed = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        input in{"finished " + std::to_string(seed),
                 tin_inputs::scatter(seed, 40 + 5 * static_cast<int>(seed), 90)};
        in.points[0].x = in.points[0].y = 0; // so the network's own coordinates are these
        in.points[1].x = in.points[2].y = 0;
        both_sides both(in);
        for (int i = 0; i < 60; ++i) {
            const std::size_t a = random() % in.points.size(), b = random() % in.points.size();
            const int retry = static_cast<int>(random() % 2);
            if (a == b)
                continue;
            plain::barrier one{both.plain_points[a], both.plain_points[b], nullptr};
            const tin_barrier other{both.library_points[a], both.library_points[b], nullptr};
            changed += !has_edge(both.plain.net, one.from, one.to);
            const int answer =
                plain::connect_barrier_points(both.plain.net, &one, one.from->tri, one.to->tri, retry);
            ASSERT_EQ(connect_barrier_points(both.owner.net, &other, other.from->tri, other.to->tri, retry),
                      answer);
            refused += answer == 0;
            if (i % 6 == 5) {
                ASSERT_EQ(both.written(true), both.written(false)) << in.name << " " << i;
            }
        }
    }
    EXPECT_GT(changed, 1500);
    EXPECT_GT(refused, 10);
}

double turn(const tin_inputs::spot& a, const tin_inputs::spot& b, const tin_inputs::spot& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool apart(const std::vector<tin_inputs::spot>& p, const tin_inputs::ends& e, const tin_inputs::ends& f)
{
    const auto at = [&p](int i) { return p[static_cast<std::size_t>(i)]; };
    if (std::minmax(e[0], e[1]) == std::minmax(f[0], f[1]))
        return false;
    if (e[0] == f[0] || e[0] == f[1] || e[1] == f[0] || e[1] == f[1])
        return true;
    return turn(at(e[0]), at(e[1]), at(f[0])) * turn(at(e[0]), at(e[1]), at(f[1])) > 0 ||
           turn(at(f[0]), at(f[1]), at(e[0])) * turn(at(f[0]), at(f[1]), at(e[1])) > 0;
}

// Scattered points, and barriers that meet each other in their ends only.
input peaceful(unsigned seed, int points, int barriers)
{
    input in{"peaceful " + std::to_string(seed), tin_inputs::scatter(seed, points, 100)};
    for (const auto& e : tin_inputs::random_barriers(seed, in.points.size(), barriers))
        if (std::all_of(in.barriers.begin(), in.barriers.end(),
                        [&](const auto& f) { return apart(in.points, e, f); }))
            in.barriers.push_back(e);
    return in;
}

template <class Net>
double smallest_area(const Net& n)
{
    double smallest = 1e9;
    for (auto* t = n.triangles; t; t = t->next) {
        const auto place = [&](int i) {
            const bool frame = std::find(n.frame, n.frame + 4, t->corner[i]) != n.frame + 4;
            return tin_inputs::spot{t->corner[i]->x + (frame ? n.x_min : 0),
                                    t->corner[i]->y + (frame ? n.y_min : 0), 0};
        };
        smallest = std::min(smallest, turn(place(0), place(1), place(2)) / 2);
    }
    return smallest;
}

template <class Net>
double whole_area(const Net& n)
{
    double sum = 0;
    for (auto* t = n.triangles; t; t = t->next)
        for (int i = 0; i < 3; ++i) {
            const auto *p = t->corner[i], *q = t->corner[(i + 1) % 3];
            const auto moved = [&n](const auto* point) {
                const bool frame = std::find(n.frame, n.frame + 4, point) != n.frame + 4;
                return tin_inputs::spot{point->x - (frame ? 0 : n.x_min), point->y - (frame ? 0 : n.y_min), 0};
            };
            sum += turn({0, 0, 0}, moved(p), moved(q)) / 2;
        }
    return sum;
}

template <class Net>
bool sides_answer(const Net& n)
{
    for (auto* t = n.triangles; t; t = t->next)
        for (int i = 0; i < 3; ++i) {
            const auto* other = t->side[i];
            bool answers = !other;
            for (int k = 0; other && k < 3; ++k)
                answers = answers || (other->side[k] == t && other->corner[k] == t->corner[(i + 1) % 3] &&
                                      other->corner[(k + 1) % 3] == t->corner[i]);
            if (!answers)
                return false;
        }
    return true;
}

// A barrier that is no edge, whole or in halves, is counted, or was an edge until another barrier's end was
// repaired: that may swap it away, and nothing counts it then.
TEST(TinCompareBarriers, BarriersThatMeetNoOtherAreEdgesOrCounted)
{
    int barriers = 0, halved = 0, failed = 0, swapped_away = 0;
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        const input in = peaceful(seed, seed % 3 ? 25 : 120, seed % 3 ? 20 : 60);
        const both_sides both(in);
        const auto& net = *both.owner.net;
        int missing = 0;
        for (const auto& e : in.barriers) {
            const tin_point *p = both.library_points[static_cast<std::size_t>(e[0])],
                            *q = both.library_points[static_cast<std::size_t>(e[1])];
            const bool whole = has_edge(net, p, q);
            bool in_halves = false;
            for (const tin_point* m : midpoints(net, both.library_points))
                in_halves = in_halves || (has_edge(net, p, m) && has_edge(net, m, q) &&
                                          std::fabs(p->x + q->x - 2 * m->x) < 1e-9 &&
                                          std::fabs(p->y + q->y - 2 * m->y) < 1e-9);
            halved += !whole && in_halves;
            missing += !whole && !in_halves;
        }
        EXPECT_LE(missing, net.failed_barriers + both.plain.net.swapped_away) << in.name;
        EXPECT_TRUE(sides_answer(net)) << in.name;
        EXPECT_GT(smallest_area(net), -1e-9) << in.name;
        const double frame = 25 * (net.x_max - net.x_min) * (net.y_max - net.y_min);
        EXPECT_NEAR(whole_area(net), frame, 1e-9 * frame) << in.name;
        barriers += static_cast<int>(in.barriers.size());
        failed += net.failed_barriers;
        swapped_away += both.plain.net.swapped_away;
    }
    EXPECT_GT(barriers, 10000);
    EXPECT_GT(halved, 10);
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed + swapped_away, barriers / 100);
}

// The edges that stand when all barriers are done are there at the end of the run.
TEST(TinCompareBarriers, EdgesOfBarriersStayWhenTheRestIsInserted)
{
    int stayed = 0;
    for (unsigned seed = 0; seed < 600; ++seed) {
        input in = tin_inputs::breaklines(seed);
        const auto more = tin_inputs::scatter(seed + 1, 30, 9);
        in.points.insert(in.points.end(), more.begin(), more.end());
        const both_sides whole(in);
        in.break_at = 1; // the first poll is the one behind the barriers
        const both_sides broken(in);
        if (!sides_answer(*broken.owner.net)) // barriers on one line; a swap may then take another edge
            continue;
        const tin_barrier* then = broken.owner.net->barriers;
        for (const tin_barrier* now = whole.owner.net->barriers; now; now = now->next, then = then->next) {
            ASSERT_NE(then, nullptr);
            const bool stood = has_edge(*broken.owner.net, then->from, then->to);
            EXPECT_TRUE(!stood || has_edge(*whole.owner.net, now->from, now->to)) << in.name;
            stayed += stood;
        }
        EXPECT_EQ(then, nullptr);
    }
    EXPECT_GT(stayed, 2000);
}

TEST(TinCompareBarriers, EachPollOfTheBreakKeyEndsTheRun)
{
    const std::string cancelled = "\nFunction cancelled at user request.";
    for (bool quiet : {true, false}) {
        const auto points = tin_inputs::scatter(11, 480, 900);
        input in{"polls", points, tin_inputs::chain(0, 250, false)};
        in.quiet = quiet;
        in.break_at = 1000;
        int polls;
        {
            const both_sides both(in);
            polls = 1000 - both.plain.net.break_at;
            EXPECT_EQ(both.plain.net.said.find(cancelled), std::string::npos);
        }
        EXPECT_EQ(polls, 2 + 1 + 2 + 1); // 250 barriers, 229 other points
        for (in.break_at = 1; in.break_at <= polls; ++in.break_at) {
            const both_sides both(in);
            const std::string& said = both.plain.net.said;
            EXPECT_TRUE(said.ends_with(cancelled)) << in.break_at;
            EXPECT_EQ(said.find(cancelled), said.size() - cancelled.size());
            EXPECT_EQ(both.owner.net->z_max, -plain::missing); // nothing was moved back
        }
    }
}

// A barrier with a midpoint, in numbers.
TEST(TinCompareBarriers, MidpointsStandInTheListsBesideTheWholeBarrier)
{
    input in{"midpoint", {{84, 41, 1.5}, {87, 60, 4.5}, {53, 35, 1.5}, {78, 3, 7.5}}, {{3, 1}, {0, 1}}};
    const both_sides both(in);
    const auto& net = *both.owner.net;
    EXPECT_EQ(both.plain.net.said, "");
    EXPECT_EQ(net.failed_barriers, 0);
    const auto& p = both.library_points;
    const auto found = midpoints(net, p);
    ASSERT_EQ(found.size(), 1u);
    const tin_point* m = found[0];
    const tin_point* from = net.barriers->next->from;
    const tin_point* to = net.barriers->to;
    EXPECT_EQ(m->x, (from->x + to->x) / 2);
    EXPECT_EQ(m->y, (from->y + to->y) / 2);
    EXPECT_EQ(m->z, (from->z + to->z) / 2);
    std::vector<std::pair<const tin_point*, const tin_point*>> list;
    for (const tin_barrier* b = net.barriers; b; b = b->next)
        list.push_back({b->from, b->to});
    const std::vector<std::pair<const tin_point*, const tin_point*>> expected = {
        {m, to}, {from, m}, {p[0], p[1]}, {p[3], p[1]}};
    EXPECT_EQ(list, expected);
    EXPECT_TRUE(has_edge(net, from, m));
    EXPECT_TRUE(has_edge(net, m, to));
    EXPECT_EQ(m->partners->point, from);
    EXPECT_EQ(m->partners->next->point, to);
    EXPECT_EQ(m->partners->next->next, nullptr);
}

TEST(TinCompareBarriers, MidpointThatCannotBeInsertedIsCountedAndHasNoHalves)
{
    const both_sides both({"midpoint outside",
                           {{6, 0, 3.5}, {3, 3, 6.5}, {3, 1, 3.5}, {2, 3, 1.5}, {3, 4, 2.5}},
                           {{3, 0}, {2, 4}, {0, 1}}});
    EXPECT_NE(
        both.plain.net.said.find("\nPoint insertion ERRORWarning: unable to connect 1 barrier segments\n"),
        std::string::npos)
        << both.plain.net.said;
    EXPECT_EQ(both.owner.net->failed_barriers, 1);
    int barriers = 0;
    for (const tin_barrier* b = both.owner.net->barriers; b; b = b->next)
        ++barriers;
    EXPECT_EQ(midpoints(*both.owner.net, both.library_points).size(), 2u);
    EXPECT_EQ(barriers, 3 + 2); // the halves are those of the other midpoint
}

TEST(TinCompareBarriers, HalfThatFailsIsCounted)
{
    const both_sides both({"failing half",
                           {{42, 28, 3.5},
                            {28, 56, 0.5},
                            {1, 92, 2.5},
                            {29, 6, 1.5},
                            {92, 10, 4.5},
                            {8, 39, 0.5},
                            {74, 23, 3.5},
                            {83, 68, 8.5},
                            {85, 41, 8.5},
                            {17, 15, 3.5}},
                           {{2, 4}, {0, 6}, {9, 3}, {5, 1}, {8, 7}}});
    EXPECT_EQ(both.plain.net.said, "Warning: unable to connect 1 barrier segments\n");
    const auto& net = *both.owner.net;
    const auto found = midpoints(net, both.library_points);
    ASSERT_EQ(found.size(), 1u);
    const tin_point *m = found[0], *from = net.barriers->next->from, *to = net.barriers->to;
    EXPECT_NE(has_edge(net, from, m), has_edge(net, m, to));
    EXPECT_EQ(net.failed_barriers, 1);
}

} // namespace
