// Whole runs of the plain network: what any triangulation must keep, and the words and counters of a run.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "tests/tin/play.h"

namespace
{

using plain::point;
using plain::triangle;
using tin_inputs::input;

struct ran {
    plain_side side;
    std::vector<point*> taken;
    std::string text;
    explicit ran(const input& in) { text = play(in, side, taken); }
    bool on_frame(const point* p) const
    {
        for (const point* f : side.net.frame)
            if (f == p)
                return true;
        return false;
    }
    // In the system of the run.
    point local(const point* p) const
    {
        point out = *p;
        if (!on_frame(p)) {
            out.x -= side.net.x_min;
            out.y -= side.net.y_min;
        }
        return out;
    }
    bool says(const char* words) const { return side.net.said.find(words) != std::string::npos; }
    bool joined(const point* a, const point* b) const
    {
        for (const triangle* t = side.net.triangles; t; t = t->next)
            for (int i = 0; i < 3; ++i)
                if ((t->corner[i] == a && t->corner[(i + 1) % 3] == b) ||
                    (t->corner[i] == b && t->corner[(i + 1) % 3] == a))
                    return true;
        return false;
    }
};

double area(const point& a, const point& b, const point& c)
{
    return ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
}

// Sides that name each other, corners that differ, empty buckets, and Euler's count. Empty: all is well.
std::string flaws(const ran& r)
{
    std::set<std::pair<const point*, const point*>> edges;
    std::set<const point*> corners;
    int faces = 0, on_hull = 0;
    for (const triangle* t = r.side.net.triangles; t; t = t->next, ++faces)
        for (int i = 0; i < 3; ++i) {
            const point *p = t->corner[i], *q = t->corner[(i + 1) % 3];
            corners.insert(p);
            if (p == q)
                return "a corner twice";
            if (!edges.insert({p, q}).second)
                return "two triangles on one side of an edge";
            const triangle* const n = t->side[i];
            on_hull += n == nullptr;
            bool named = n == nullptr;
            for (int k = 0; n && k < 3; ++k)
                named = named || (n->side[k] == t && n->corner[k] == q && n->corner[(k + 1) % 3] == p);
            if (!named)
                return "sides that do not name each other";
            if (t->bucket)
                return "a point left in a bucket";
        }
    const int edge_count = (3 * faces + on_hull) / 2;
    if (static_cast<int>(corners.size()) - edge_count + faces != 1)
        return "Euler's count";
    if (on_hull != 4)
        return "the frame is broken";
    for (const point* p : corners) {
        bool found = p->tri == nullptr && r.on_frame(p); // no triangle of this corner was ever touched
        for (int i = 0; p->tri && i < 3; ++i)
            found = found || p->tri->corner[i] == p;
        if (!found)
            return "a point that names a triangle without it";
    }
    return "";
}

double total_area(const ran& r, double* smallest)
{
    double total = 0;
    *smallest = 1e300;
    for (const triangle* t = r.side.net.triangles; t; t = t->next) {
        const double a = area(r.local(t->corner[0]), r.local(t->corner[1]), r.local(t->corner[2]));
        total += a;
        *smallest = a < *smallest ? a : *smallest;
    }
    return total;
}

TEST(PlainRun, ScatteredPointsGiveASoundNetworkOfCircles)
{
    for (unsigned seed = 1; seed <= 12; ++seed)
        for (bool survey : {false, true}) {
            auto points = tin_inputs::scatter(seed, 20 + static_cast<int>(seed) * 15, 1000);
            if (survey)
                points = tin_inputs::moved(points, 500000, 4000000);
            const ran r({"", points});
            ASSERT_EQ(flaws(r), "") << seed;
            EXPECT_EQ(r.side.net.said, "");
            const auto& n = r.side.net;
            double smallest;
            const double frame = 25 * (n.x_max - n.x_min) * (n.y_max - n.y_min);
            EXPECT_NEAR(total_area(r, &smallest), frame, 1e-9 * frame);
            EXPECT_GT(smallest, 0);
            for (const triangle* t = n.triangles; t; t = t->next)
                for (const point* p : r.taken) {
                    const point a = r.local(t->corner[0]), b = r.local(t->corner[1]), c = r.local(t->corner[2]);
                    if (p == t->corner[0] || p == t->corner[1] || p == t->corner[2])
                        continue;
                    // Relative to the size of the terms: half the digits are left to rounding.
                    EXPECT_LT(plain::determinant(n, a, b, c, r.local(p)), 1e-3 * area(a, b, c) + 10) << seed;
                }
        }
}

TEST(PlainRun, EveryInputWithoutBarriersStaysSound)
{
    std::vector<input> inputs;
    tin_inputs::add_plain_points(inputs);
    int checked = 0;
    for (const input& in : inputs) {
        // Points a millionth apart on one line make triangles that lie on each other; that ends in words.
        if (in.name == "doubles on a lattice") {
            EXPECT_EQ(ran(in).side.net.said, "\nError: identical points in swap test2.");
            continue;
        }
        if (in.name == "level run" || in.name == "upright run" || in.points.size() < 2 ||
            in.name == "one twice")
            continue;
        const ran r(in);
        EXPECT_EQ(flaws(r), "") << in.name;
        EXPECT_EQ(r.side.net.said, "") << in.name;
        int faces = 0;
        for (const triangle* t = r.side.net.triangles; t; t = t->next)
            ++faces;
        EXPECT_EQ(faces, 2 + 2 * r.side.net.point_count) << in.name;
        ++checked;
    }
    EXPECT_GT(checked, 20);
}

TEST(PlainRun, BarriersBecomeEdges)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const auto points = tin_inputs::scatter(500 + seed, 60, 300);
        // A few barriers that end nowhere near each other and don't cross.
        std::vector<tin_inputs::ends> links;
        for (const auto& e : tin_inputs::random_barriers(600 + seed, points.size(), 60)) {
            bool clear = true;
            const auto as_point = [&](int i) {
                point p;
                p.x = points[i].x;
                p.y = points[i].y;
                return p;
            };
            for (const auto& f : links)
                clear = clear &&
                        !plain::segments_cross(as_point(e[0]), as_point(e[1]), as_point(f[0]), as_point(f[1]));
            if (clear)
                links.push_back(e);
        }
        ASSERT_GT(links.size(), 3u);
        const ran r({"", points, links});
        EXPECT_EQ(flaws(r), "") << seed;
        ASSERT_EQ(r.side.net.said, "") << seed;
        for (const auto& e : links) {
            // As a whole, or in two halves that meet in its middle.
            const point *a = r.taken[e[0]], *b = r.taken[e[1]];
            bool whole = r.joined(a, b);
            for (const plain::link* l = a->partners; l && !whole; l = l->next)
                whole = plain::is_barrier(l->point, b) && r.joined(a, l->point) && r.joined(l->point, b);
            EXPECT_TRUE(whole) << seed << ": " << e[0] << " " << e[1];
        }
    }
}

TEST(PlainRun, TooFewPointsAreReported)
{
    EXPECT_EQ(ran({"", {}}).side.net.said, "Unable to find points.\n");
    EXPECT_EQ(ran({"", {{1, 2, 3}}}).side.net.said, "Too few points to triangulate.\n");
    input zeros{"", {{1, 2, 0}, {3, 4, 0}, {5, 6, 1}}};
    zeros.skip_zero = true;
    EXPECT_EQ(ran(zeros).side.net.said,
              "\nIgnored 2 points with zero elevation.\nToo few points to triangulate.\n");
}

TEST(PlainRun, TwoPointsAreEnough)
{
    const ran r({"", {{1, 2, 3.5}, {4, 7, 5.5}}});
    EXPECT_EQ(r.side.net.said, "");
    EXPECT_EQ(flaws(r), "");
    EXPECT_TRUE(r.joined(r.taken[0], r.taken[1]));
    EXPECT_EQ(r.taken[1]->x, 4);
    EXPECT_EQ(r.side.net.z_min, 3.5);
    EXPECT_EQ(r.side.net.z_max, 5.5);
    EXPECT_EQ(r.side.net.frame[0]->x, -6); // the frame stays in the system of the run
    EXPECT_EQ(r.side.net.frame[0]->y, 15);
}

TEST(PlainRun, AFrameWithoutWidthEndsAllTheSame)
{
    const ran r({"", tin_inputs::straight_run(6, 0, 5)});
    EXPECT_EQ(r.side.net.frame[1]->x, 0);
    EXPECT_NE(r.text.find("result 5100"), std::string::npos);
}

TEST(PlainRun, WordsOfARunInTheirOrder)
{
    input in{"", tin_inputs::scatter(7, 250, 100), {{0, 1}}};
    in.quiet = false;
    in.split = true;
    in.interval = 0;
    const ran r(in);
    EXPECT_EQ(r.side.net.said, "\rReading points ... 100\rReading points ... 200"
                               "\nFinding points on barriers ...\nInserting barriers ... "
                               "\rInserting barriers 1       \n\nTriangulating points ...      "
                               "\rTriangulating points ... 100\rTriangulating points ... 200"
                               "\rTriangulating points ... 250     ");
}

TEST(PlainRun, ABreakAmongBarriersLeavesAllTranslated)
{
    input in{"", tin_inputs::scatter(8, 300, 900)};
    in.barriers = tin_inputs::short_barriers(in.points, 70, 1);
    ASSERT_GT(in.barriers.size(), 100u);
    in.break_at = 1;
    const ran r(in);
    EXPECT_TRUE(r.says("\nFunction cancelled at user request."));
    EXPECT_EQ(r.side.net.hundreds, 1);
    EXPECT_EQ(r.taken[5]->x, in.points[5].x - r.side.net.x_min);
    EXPECT_EQ(r.side.net.z_min, 98765432.1);
    EXPECT_NE(r.text.find("result 5100"), std::string::npos);
    EXPECT_FALSE(r.says("Inserting barriers")); // quiet, yet polled
}

TEST(PlainRun, ABreakAmongPointsStopsAtTheHundredth)
{
    input in{"", tin_inputs::scatter(9, 250, 900)};
    in.break_at = 2; // the first poll is before the points
    const ran r(in);
    EXPECT_EQ(r.side.net.said, "\nFunction cancelled at user request.");
    int faces = 0;
    for (const triangle* t = r.side.net.triangles; t; t = t->next)
        ++faces;
    EXPECT_EQ(faces, 2 + 2 * 100);
    in.break_at = 4; // after the 100th, the 200th and the last
    const ran last(in);
    EXPECT_EQ(last.side.net.said, "\nFunction cancelled at user request.");
    EXPECT_EQ(last.taken[0]->x, in.points[0].x - last.side.net.x_min);
    in.break_at = 5;
    EXPECT_EQ(ran(in).side.net.said, "");
}

TEST(PlainRun, SharedBarrierPointsAreInsertedOnce)
{
    const ran r({"", {{0, 0, 1.5}, {10, 1, 1.5}, {5, 9, 1.5}}, {{0, 1}, {1, 2}, {2, 0}}});
    EXPECT_EQ(flaws(r), "");
    EXPECT_EQ(r.side.net.points, nullptr);
    EXPECT_EQ(r.side.net.z_max, 1.5);
    EXPECT_TRUE(r.joined(r.taken[0], r.taken[1]) && r.joined(r.taken[1], r.taken[2]));
}

TEST(PlainRun, ABarrierEndOffTheListIsReported)
{
    plain_side side;
    auto& n = side.net;
    point* const a = side.make(0, 0, 1);
    point* const b = side.make(10, 10, 1);
    point* const stray = side.make(5, 5, 1);
    n.points = a;
    a->next = b;
    n.x_min = n.y_min = 0;
    n.x_max = n.y_max = 10;
    side.bar(a, stray);
    plain::triangulate(n);
    EXPECT_EQ(n.said, "\nInternal error connecting barrier points.");
}

// The inputs reach each kind of trouble; a comparison over them is worth little otherwise.
TEST(PlainRun, InputsReachTheRareWays)
{
    int midpoints = 0, failures = 0, order_matters = 0;
    const auto inputs = tin_inputs::all();
    for (const input& in : inputs) {
        const ran r(in);
        for (const point* p = r.side.net.barrier_points; p; p = p->next) {
            bool given = false;
            for (const point* t : r.taken)
                given = given || t == p;
            midpoints += !given;
        }
        failures += r.side.net.failed_barriers > 0;
        plain_side other;
        other.net.backwards = true;
        std::vector<point*> taken;
        order_matters += play(in, other, taken) != r.text;
    }
    RecordProperty("inputs", static_cast<int>(inputs.size()));
    RecordProperty("midpoints", midpoints);
    RecordProperty("failures", failures);
    RecordProperty("order_matters", order_matters);
    EXPECT_GT(midpoints, 0);
    EXPECT_LT(order_matters, static_cast<int>(inputs.size()) / 4);
}

} // namespace
