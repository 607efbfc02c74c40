// What must hold of a triangulation whatever the points are, on thousands of small sets: the sides, the count
// of corners, edges and triangles, the area, and empty circles. Places are whole multiples of 2^-17, so that
// what is checked is checked without rounding.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/tin/survey.h"

namespace
{

__extension__ using wide = __int128;

constexpr double PER_UNIT = 131072;

double uniform(std::mt19937& chance, double size)
{
    return std::floor(double(chance()) / 4294967296.0 * size * PER_UNIT) / PER_UNIT;
}

// Whole coordinates in the run's own system, in which the frame stays.
struct whole_place {
    wide x, y;
};

class whole_places
{
public:
    explicit whole_places(const tin_network& n) : network(n) {}
    whole_place of(const tin_point* p) const
    {
        const bool on_frame = is_frame(p);
        return {whole(p->x - (on_frame ? 0 : network.x_min)), whole(p->y - (on_frame ? 0 : network.y_min))};
    }
    bool is_frame(const tin_point* p) const
    {
        return std::find(network.frame, network.frame + 4, p) != network.frame + 4;
    }

private:
    const tin_network& network;
    static wide whole(double v) { return static_cast<wide>(std::llround(v * PER_UNIT)); }
};

wide twice_area(whole_place a, whole_place b, whole_place c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Above 0: d lies inside the circle through a, b and c, which are counter-clockwise.
wide in_circle(whole_place a, whole_place b, whole_place c, whole_place d)
{
    const whole_place p[3] = {{a.x - d.x, a.y - d.y}, {b.x - d.x, b.y - d.y}, {c.x - d.x, c.y - d.y}};
    wide sum = 0;
    for (int i = 0; i < 3; ++i) {
        const whole_place &q = p[(i + 1) % 3], &r = p[(i + 2) % 3];
        sum += (p[i].x * p[i].x + p[i].y * p[i].y) * (q.x * r.y - q.y * r.x);
    }
    return sum;
}

// What is wrong with the graph of the triangles; "" when nothing is.
std::string graph_faults(const survey& s)
{
    const tin_network& n = s.network;
    std::map<std::pair<const tin_point*, const tin_point*>, const tin_triangle*> edges;
    std::set<const tin_point*> corners;
    int triangles = 0, on_frame = 0;
    for (const tin_triangle* t = n.triangles; t; t = t->next, ++triangles)
        for (int i = 0; i < 3; ++i) {
            const tin_point *p = t->corner[i], *q = t->corner[(i + 1) % 3];
            corners.insert(p);
            on_frame += !t->side[i];
            if (!edges.insert({{p, q}, t}).second)
                return "two triangles on one side of an edge";
        }
    for (const auto& [edge, t] : edges) {
        const auto back = edges.find({edge.second, edge.first});
        const int at = int(std::find(t->corner, t->corner + 3, edge.first) - t->corner);
        if (t->side[at] != (back == edges.end() ? nullptr : back->second))
            return "a side isn't the triangle across the edge";
    }
    if (on_frame != 4)
        return "the border isn't the frame";
    if (int(corners.size()) != n.point_count + 4)
        return "points are missing";
    if (2 * int(corners.size()) - (3 * triangles + on_frame) + 2 * triangles != 2)
        return "Euler's count";
    return "";
}

// Nothing is turned round, and together the triangles are the frame.
std::string area_faults(const survey& s)
{
    const whole_places places(s.network);
    wide sum = 0;
    for (const tin_triangle* t = s.network.triangles; t; t = t->next) {
        const wide area = twice_area(places.of(t->corner[0]), places.of(t->corner[1]), places.of(t->corner[2]));
        if (area < 0)
            return "a triangle is clockwise";
        sum += area;
    }
    const tin_point* const* f = s.network.frame;
    const wide frame = twice_area(places.of(f[3]), places.of(f[2]), places.of(f[1])) +
                       twice_area(places.of(f[1]), places.of(f[0]), places.of(f[3]));
    return sum == frame ? "" : "the areas don't add up to the frame";
}

// d lies inside the circle, and by more than makes four places count as being on one circle.
bool spoils(whole_place a, whole_place b, whole_place c, whole_place d)
{
    const wide within = in_circle(a, b, c, d);
    if (within <= 0)
        return false;
    double sum = 0;
    for (const whole_place& p : {a, b, c, d})
        sum += std::pow(double(p.x) / PER_UNIT, 2) + std::pow(double(p.y) / PER_UNIT, 2);
    return std::pow(double(within) / std::pow(PER_UNIT, 4), 2) >= std::sqrt(sum);
}

// Triangles with a point of the network inside their circle, the frame's corners included.
int spoilt_circles(const survey& s)
{
    const whole_places places(s.network);
    std::map<const tin_point*, whole_place> all;
    for (const tin_point* p : s.network.frame)
        all[p] = places.of(p);
    for (const tin_point* p : s.points)
        all[p] = places.of(p);
    int spoilt = 0;
    for (const tin_triangle* t = s.network.triangles; t; t = t->next) {
        const whole_place a = all.at(t->corner[0]), b = all.at(t->corner[1]), c = all.at(t->corner[2]);
        spoilt += std::any_of(all.begin(), all.end(),
                              [&](const auto& entry) { return spoils(a, b, c, entry.second); });
    }
    return spoilt;
}

std::vector<place> scattered(std::mt19937& chance, double size)
{
    std::vector<place> places;
    for (int i = 2 + int(chance() % 40); i > 0; --i) {
        const double x = uniform(chance, size);
        places.push_back({x, uniform(chance, size)});
    }
    return places;
}

// Far from each other for their place, so that circles decide and nothing else does.
TEST(TinProperties, ScatteredPointsHaveEmptyCircles)
{
    std::mt19937 chance(1);
    for (int round = 0; round < 4000; ++round) {
        survey s;
        std::vector<place> places = scattered(chance, 1000);
        for (place& p : places) {
            p.x += round % 2 ? 500000 : 0;
            p.y += round % 2 ? 4000000 : 0;
        }
        s.offer_all(places);
        s.run();
        ASSERT_EQ(printed(), "") << round;
        ASSERT_EQ(graph_faults(s), "") << round;
        ASSERT_EQ(area_faults(s), "") << round;
        ASSERT_EQ(spoilt_circles(s), 0) << round;
    }
}

TEST(TinProperties, ManyPointsHaveEmptyCircles)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        std::mt19937 chance(seed);
        std::vector<place> places;
        for (int i = 0; i < 500; ++i) {
            const double x = uniform(chance, 1000), y = uniform(chance, 1000);
            places.push_back({x, y});
        }
        if (seed % 2)
            std::sort(places.begin(), places.end(),
                      [](const place& a, const place& b) { return std::pair(a.x, a.y) < std::pair(b.x, b.y); });
        survey s;
        s.offer_all(places);
        s.run();
        ASSERT_EQ(graph_faults(s), "") << seed;
        ASSERT_EQ(area_faults(s), "") << seed;
        EXPECT_EQ(spoilt_circles(s), 0) << seed;
    }
}

TEST(TinProperties, DoublesDontCountTwice)
{
    std::mt19937 chance(2);
    for (int round = 0; round < 1000; ++round) {
        survey s;
        const std::vector<place> places = scattered(chance, 1000);
        s.offer_all(places);
        for (const place& p : places)
            s.offer(p.x, p.y, 99);
        s.run();
        ASSERT_EQ(s.network.point_count, int(places.size()));
        ASSERT_EQ(graph_faults(s), "") << round;
        ASSERT_EQ(area_faults(s), "") << round;
        ASSERT_EQ(spoilt_circles(s), 0) << round;
    }
}

// Rows of places at equal distances, each row forwards or to and fro.
TEST(TinProperties, WholeGridsByRowsAreSound)
{
    for (int columns = 2; columns <= 14; ++columns)
        for (int rows = 2; rows <= 14; ++rows)
            for (const double step : {0.25, 1.0, 12.5}) {
                survey s;
                for (int j = 0; j < rows; ++j)
                    for (int i = 0; i < columns; ++i)
                        s.offer((j % 2 && step == 1 ? columns - 1 - i : i) * step, j * step);
                s.run();
                ASSERT_EQ(printed(), "");
                ASSERT_EQ(graph_faults(s), "") << columns << " by " << rows;
                ASSERT_EQ(area_faults(s), "") << columns << " by " << rows;
            }
}

TEST(TinProperties, CirclesAreSound)
{
    std::mt19937 chance(3);
    for (int round = 0; round < 2000; ++round) {
        std::vector<place> places;
        const int count = 3 + int(chance() % 40);
        const double radius = 1 + uniform(chance, 100);
        for (int i = 0; i < count; ++i) {
            const double angle = i * 2 * std::numbers::pi / count;
            places.push_back({std::round(radius * std::cos(angle) * PER_UNIT) / PER_UNIT,
                              std::round(radius * std::sin(angle) * PER_UNIT) / PER_UNIT});
        }
        for (std::size_t i = places.size(); i > 1; --i)
            std::swap(places[i - 1], places[chance() % i]);
        if (round % 3 == 0)
            places.push_back({0, 0});
        survey s;
        s.offer_all(places);
        s.run();
        ASSERT_EQ(printed(), "") << round;
        ASSERT_EQ(graph_faults(s), "") << round;
        ASSERT_EQ(area_faults(s), "") << round;
    }
}

// Places in line, parts of grids, and neighbours a few millionths apart: triangles may come to lie on each
// other. What holds all the same is that each insertion brings two triangles, that their sides are triangles
// of the list, and that all is given back.
TEST(TinProperties, DegeneratePointsEndInTrianglesOfTheList)
{
    using maker = std::function<place(std::mt19937&, int)>;
    const auto one_of = [](std::mt19937& c, unsigned count) { return double(c() % count); };
    const double steps[] = {0, 4e-7, 1e-6, -1.5e-6, 1e-5};
    const maker makers[] = {
        [](std::mt19937&, int i) {
            return place{i * 3.0, i * 2.0};
        },
        [&](std::mt19937& c, int) {
            const double at = one_of(c, 9);
            return place{at * 1.5, at * -0.7};
        },
        [&](std::mt19937& c, int) {
            const double x = one_of(c, 8);
            return place{x, one_of(c, 8)};
        },
        [&](std::mt19937& c, int) {
            const double x = one_of(c, 6) + steps[c() % 5];
            return place{x, one_of(c, 6) + steps[c() % 5]};
        },
        [&](std::mt19937& c, int) {
            return place{7, one_of(c, 50)};
        },
        [&](std::mt19937& c, int) {
            return place{one_of(c, 50), 7};
        },
    };
    std::mt19937 chance(4);
    for (const maker& make : makers)
        for (int round = 0; round < 700; ++round) {
            survey s;
            for (int i = 2 + int(chance() % 40); i > 0; --i) {
                const place p = make(chance, i);
                s.offer(p.x, p.y);
            }
            if (s.network.point_count < 2)
                continue;
            s.run();
            std::set<const tin_triangle*> all;
            for (const tin_triangle* t = s.network.triangles; t; t = t->next)
                ASSERT_TRUE(all.insert(t).second);
            for (const tin_triangle* t : all)
                for (int i = 0; i < 3; ++i) {
                    ASSERT_TRUE(!t->side[i] || all.count(t->side[i]));
                    ASSERT_NE(t->corner[i], t->corner[(i + 1) % 3]);
                }
            if (printed().find("Unable to fix insertion ERROR") == std::string::npos) {
                ASSERT_EQ(int(all.size()), 2 * s.network.point_count + 2) << round;
            }
        }
}

// A hub among so many rim points that a side's swaps outrun their budget.
TEST(TinProperties, SpentBudgetLeavesASoundNetwork)
{
    constexpr int RIM = 700;
    survey s;
    s.offer(0, 0); // read first, inserted last
    for (int i = 0; i < RIM; ++i) {
        const double angle = i * 2 * std::numbers::pi / RIM;
        s.offer(std::round(900 * std::cos(angle) * PER_UNIT) / PER_UNIT,
                std::round(900 * std::sin(angle) * PER_UNIT) / PER_UNIT);
    }
    s.run();
    EXPECT_TRUE(printed().starts_with("\nSwap test maxed out."));
    EXPECT_EQ(graph_faults(s), "");
    EXPECT_EQ(area_faults(s), "");
    EXPECT_GT(spoilt_circles(s), 0);
}

// On the way from the frame's first corner to its third lies the frame's diagonal.
TEST(TinProperties, FirstPointSplitsOneTriangleAndSwapsTheDiagonal)
{
    for (const double y : {30.0, 50.0, 70.0}) { // below the diagonal, on it, above it
        survey s;
        s.offer(0, 0);
        s.offer(100, 100);
        s.offer(50, y);
        s.run();
        EXPECT_EQ(graph_faults(s), "") << y;
        EXPECT_FALSE(has_edge(s.network, s.network.frame[1], s.network.frame[3])) << y;
    }
}

TEST(TinProperties, PlacesThatAreNoNumbersAreLeftOut)
{
    for (const bool other : {false, true}) {
        survey s;
        const double none = std::nan("");
        s.offer_all({{0, 0}, {100, 0}, {40, 90}});
        other ? s.offer(none, 30) : s.offer(120, none);
        s.network.x_max = 100;
        s.run();
        EXPECT_EQ(printed(), "\nUnable to fix insertion ERROR");
        EXPECT_EQ(triangle_count(s.network), 2 * 3 + 2);
        EXPECT_EQ(faults(s.network), "");
    }
}

} // namespace
