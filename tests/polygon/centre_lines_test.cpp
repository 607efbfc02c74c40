// Centre lines of outlines.
#include "polygon/centre_lines.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

#include "polygon/centre_merge.h"
#include "polygon/centre_outline.h"
#include "polygon/points.h"
#include "tests/polygon/centre_lines_plain.h"
#include "tests/polygon/heap.h"
#include "tests/polygon/outlines.h"

namespace
{

using outlines::spots;

struct free_rings {
    void operator()(pg_ring* head) const { pg_free_rings(&head); }
};
using rings_ptr = std::unique_ptr<pg_ring, free_rings>;

rings_ptr centre_lines(const chain_ptr& chain, int with_touching = 0, int orientation = 0, double slope = 1.0)
{
    return rings_ptr(pg_centre_lines(chain.get(), slope, orientation, with_touching));
}

std::vector<spots> lines_of(const rings_ptr& rings)
{
    std::vector<spots> lines;
    for (const pg_ring* r = rings.get(); r; r = r->next)
        lines.push_back(spots_of(r->nodes));
    return lines;
}

bool is_at(const spot& s, double x, double y)
{
    return std::fabs(s.x - x) < 1e-6 && std::fabs(s.y - y) < 1e-6;
}

bool passes(const std::vector<spots>& lines, double x, double y)
{
    for (const spots& line : lines)
        for (const spot& s : line)
            if (is_at(s, x, y))
                return true;
    return false;
}

// The greatest lead of a nearest element over all nodes of the lines, and over the middles of their chords.
struct leads {
    double at_nodes = 0.0, at_middles = 0.0;
};

leads leads_of(const spots& outline, const rings_ptr& rings)
{
    leads worst;
    for (const spots& line : lines_of(rings))
        for (std::size_t i = 0; i < line.size(); ++i) {
            worst.at_nodes = std::max(worst.at_nodes, outlines::lead_of_nearest(outline, line[i].x, line[i].y));
            if (i > 0)
                worst.at_middles = std::max(
                    worst.at_middles, outlines::lead_of_nearest(outline, (line[i].x + line[i - 1].x) / 2.0,
                                                                (line[i].y + line[i - 1].y) / 2.0));
        }
    return worst;
}

const spots rectangle = {{0, 0}, {10, 0}, {10, 4}, {0, 4}};
const spots l_shape = {{0, 0}, {10, 0}, {10, 4}, {4, 4}, {4, 10}, {0, 10}};
const spots t_shape = {{0, 0}, {4, 0}, {4, 6}, {8, 6}, {8, 10}, {-4, 10}, {-4, 6}, {0, 6}};

spots comb(int teeth)
{
    spots v = {{0, 0}, {4.0 * teeth - 2.0, 0}};
    for (int i = teeth - 1; i >= 0; --i) {
        v.push_back({4.0 * i + 2.0, 10});
        v.push_back({4.0 * i, 10});
        if (i > 0) {
            v.push_back({4.0 * i, 3});
            v.push_back({4.0 * i - 2.0, 3});
        }
    }
    return v;
}

TEST(CentreLines, RectangleHasARidgeAndFourHips)
{
    for (const place& p : PLACES) {
        const auto lines = lines_of(centre_lines(outlines::closed(rectangle, p.x, p.y)));
        EXPECT_TRUE(passes(lines, p.x + 2, p.y + 2));
        EXPECT_TRUE(passes(lines, p.x + 8, p.y + 2));
        for (const spot& corner : rectangle)
            EXPECT_TRUE(passes(lines, p.x + corner.x, p.y + corner.y));
        double length = 0.0;
        for (const spots& line : lines)
            for (std::size_t i = 1; i < line.size(); ++i)
                length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
        EXPECT_NEAR(length, 6.0 + 4.0 * std::sqrt(8.0), 1e-6);
    }
}

TEST(CentreLines, ElevationIsThatOfTheRoof)
{
    for (const double slope : {1.0, 0.5}) {
        spots raised = rectangle;
        for (spot& s : raised)
            s.z = 7.0;
        for (const spots& line : lines_of(centre_lines(outlines::closed(raised), 0, 0, slope)))
            for (const spot& s : line)
                EXPECT_NEAR(s.z, 7.0 + slope * std::min({s.x, s.y, 10.0 - s.x, 4.0 - s.y}), 1e-9);
    }
}

TEST(CentreLines, ShapesKeepEqualDistance)
{
    for (const spots& shape : {rectangle, l_shape, t_shape, comb(2), comb(5), comb(12)})
        for (std::size_t start = 0; start < shape.size(); ++start) {
            spots turned = shape;
            std::rotate(turned.begin(), turned.begin() + static_cast<long>(start), turned.end());
            const rings_ptr rings = centre_lines(outlines::closed(turned));
            ASSERT_TRUE(rings);
            const leads worst = leads_of(turned, rings);
            EXPECT_LT(worst.at_nodes, 1e-9) << shape.size() << " from " << start;
            EXPECT_LT(worst.at_middles, 1e-3) << shape.size() << " from " << start;
            for (const spots& line : lines_of(rings))
                EXPECT_GE(line.size(), 2u);
        }
}

TEST(CentreLines, ConvexPolygonHasStraightBisectorsOnly)
{
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        const int count = 3 + static_cast<int>(seed % 40);
        const spots outline = outlines::convex(seed, count);
        const rings_ptr rings = centre_lines(outlines::closed(outline));
        const leads worst = leads_of(outline, rings);
        EXPECT_LT(worst.at_nodes, 1e-9) << seed;
        EXPECT_LT(worst.at_middles, 1e-9) << seed;
    }
}

// n leaves at the corners and, in general position, n - 2 places where three lines meet.
TEST(CentreLines, ConvexPolygonHasATreeFromCornerToCorner)
{
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        const int count = 3 + static_cast<int>(seed % 30);
        const spots outline = outlines::convex(seed, count);
        std::map<std::pair<long, long>, int> degree;
        int segments = 0;
        const auto key = [](const spot& s) {
            return std::pair(std::lround(s.x * 1e5), std::lround(s.y * 1e5));
        };
        for (const spots& line : lines_of(centre_lines(outlines::closed(outline))))
            for (std::size_t i = 1; i < line.size(); ++i) {
                ++segments;
                ++degree[key(line[i])];
                ++degree[key(line[i - 1])];
            }
        EXPECT_EQ(segments, static_cast<int>(degree.size()) - 1) << seed;
        int leaves = 0;
        for (const auto& [place, lines] : degree)
            leaves += lines == 1 ? 1 : 0;
        EXPECT_EQ(leaves, count) << seed;
        for (const spot& corner : outline)
            EXPECT_EQ(degree.count(key(corner)), 1u) << seed;
    }
}

// Places found by looking alone: on a raster, where the nearest element changes between neighbours, a line
// passes.
TEST(CentreLines, EveryChangeOfTheNearestSideHasALine)
{
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        const spots outline = outlines::convex(seed, 3 + static_cast<int>(seed % 8));
        const auto lines = lines_of(centre_lines(outlines::closed(outline)));
        const std::size_t n = outline.size();
        const auto nearest = [&](double x, double y) {
            std::size_t best = n;
            double least = 0.0;
            for (std::size_t i = 0; i < n; ++i) {
                const spot &a = outline[i], &b = outline[(i + 1) % n];
                const double d = outlines::area(a, b, {x, y}) / std::hypot(b.x - a.x, b.y - a.y);
                if (d < 0.0)
                    return n;
                if (best == n || d < least) {
                    best = i;
                    least = d;
                }
            }
            return best;
        };
        const double step = 2.0;
        for (double x = -100.0; x < 100.0; x += step)
            for (double y = -200.0; y < 200.0; y += step) {
                const std::size_t here = nearest(x, y), there = nearest(x + step, y);
                if (here == there || here == n || there == n)
                    continue;
                double closest = 1e9;
                for (const spots& line : lines)
                    for (std::size_t i = 1; i < line.size(); ++i) {
                        const double dx = line[i].x - line[i - 1].x, dy = line[i].y - line[i - 1].y;
                        const double px = x + step / 2.0 - line[i - 1].x, py = y - line[i - 1].y;
                        const double t = std::clamp((px * dx + py * dy) / (dx * dx + dy * dy), 0.0, 1.0);
                        closest = std::min(closest, std::hypot(px - t * dx, py - t * dy));
                    }
                EXPECT_LE(closest, step / 2.0 + 1e-9) << seed << " at " << x << "," << y;
            }
    }
}

TEST(CentreLines, StarsKeepEqualDistance)
{
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        const spots outline = outlines::star(seed, 5 + static_cast<int>(seed % 60), 0.3);
        const rings_ptr rings = centre_lines(outlines::closed(outline));
        ASSERT_TRUE(rings);
        const leads worst = leads_of(outline, rings);
        EXPECT_LT(worst.at_nodes, 1e-6) << seed;
        EXPECT_LT(worst.at_middles, 0.05) << seed;
    }
}

TEST(CentreLines, TangledOutlinesKeepEqualDistance)
{
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        const spots outline = outlines::tangled(seed, 5 + static_cast<int>(seed % 16));
        const rings_ptr rings = centre_lines(outlines::closed(outline));
        ASSERT_TRUE(rings);
        const leads worst = leads_of(outline, rings);
        EXPECT_LT(worst.at_nodes, 1e-5) << seed;
        EXPECT_LT(worst.at_middles, 0.05) << seed;
    }
}

// ---- against lists that are walked

using facts = std::tuple<int, int, int, int, cl_path>;

facts facts_of(const cl_branch& b)
{
    return {b.left_id, b.right_id, b.state, b.flag, b.chain};
}

void expect_as_plain(const chain_ptr& chain, double slope, const std::string& name)
{
    std::vector<facts> plain, found;
    for (const cl_branch& b : plain::branches(chain.get(), slope, 0))
        if (b.state != CL_RETIRED)
            plain.push_back(facts_of(b));
    const cl_outline outline = cl_take_outline(chain.get(), 0);
    cl_network net;
    cl_network_init(&net, outline);
    ASSERT_TRUE(cl_merge_runs(outline, slope, &net));
    for (const cl_branch& b : net.branches)
        if (b.state != CL_RETIRED)
            found.push_back(facts_of(b));
    std::sort(plain.begin(), plain.end());
    std::sort(found.begin(), found.end());
    EXPECT_TRUE(plain == found) << name;
}

TEST(CentreLines, SearchFindsWhatWalkingAllBranchesFinds)
{
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        const int count = 4 + static_cast<int>(seed % 50);
        const std::string name = std::to_string(seed);
        expect_as_plain(outlines::closed(outlines::convex(seed, count)), 1.0, "convex " + name);
        expect_as_plain(outlines::closed(outlines::star(seed, count, 0.3)), 1.0, "star " + name);
        expect_as_plain(outlines::closed(outlines::tangled(seed, count)), 1.0, "tangled " + name);
        expect_as_plain(make_chain(outlines::star(seed, count, 0.5)), 1.0, "open " + name);
        spots crossed = outlines::tangled(seed, count);
        std::swap(crossed[1], crossed[3]);
        expect_as_plain(outlines::closed(crossed), 1.0, "crossed " + name);
        for (std::size_t i = 0; i < crossed.size(); ++i)
            crossed[i].z = static_cast<double>(i % 7);
        expect_as_plain(outlines::closed(crossed), 1.0, "sloped " + name);
    }
    for (const spots& shape : {rectangle, l_shape, t_shape, comb(6)})
        expect_as_plain(outlines::closed(shape), 1.0, "shape");
}

// ---- the outline

TEST(CentreLines, TwoVerticesGiveNothing)
{
    EXPECT_FALSE(centre_lines(make_chain({{0, 0}, {1, 0}}), 1));
    EXPECT_FALSE(centre_lines(make_chain({{0, 0}, {1, 0}, {1, 0}}), 1));
    EXPECT_FALSE(centre_lines(make_chain({{0, 0}, {1, 0}, {0, 0}}), 1));
    EXPECT_FALSE(centre_lines(make_chain({{0, 0}}), 1));
    EXPECT_FALSE(centre_lines(chain_ptr(), 1));
}

TEST(CentreLines, OrientationTurnsTheOutlineRound)
{
    spots clockwise = l_shape;
    std::reverse(clockwise.begin(), clockwise.end());
    const chain_ptr chain = outlines::closed(clockwise);
    const spots before = spots_of(chain.get());
    const rings_ptr rings = centre_lines(chain, 0, -1);
    ASSERT_TRUE(rings);
    EXPECT_LT(leads_of(l_shape, rings).at_nodes, 1e-9);
    EXPECT_EQ(spots_of(chain.get()), before);
    EXPECT_FALSE(centre_lines(outlines::closed(rectangle), 0, 1)); // outside a rectangle there is nothing
}

TEST(CentreLines, OpenOutlineKeepsItsEndsAsCorners)
{
    const cl_outline outline = cl_take_outline(make_chain({{0, 0}, {10, 0}, {10, 10}}).get(), 0);
    ASSERT_EQ(outline.items.size(), 4u);
    EXPECT_EQ(outline.items.front().kind, CL_CORNER);
    EXPECT_EQ(outline.items.back().kind, CL_CORNER);
    EXPECT_FALSE(outline.is_ring);
    const auto lines = lines_of(centre_lines(make_chain({{0, 0}, {10, 0}, {10, 10}})));
    // The bisector of the corner, and beyond the far ends of both sides that of the end points.
    EXPECT_TRUE(passes(lines, 10, 0));
    EXPECT_TRUE(passes(lines, 0, 10));
}

TEST(CentreLines, TouchingLinesOnlyOnDemand)
{
    const chain_ptr chain = make_chain({{0, 0}, {10, 0}, {20, -10}}); // turns right: no network, rays alone
    EXPECT_FALSE(centre_lines(chain, 0));
    const rings_ptr rays = centre_lines(chain, 1);
    ASSERT_TRUE(rays);
    for (const pg_ring* r = rays.get(); r; r = r->next) {
        EXPECT_EQ(r->kind, CL_TOUCHING);
        const spots ray = spots_of(r->nodes);
        EXPECT_NEAR(std::hypot(ray[1].x - ray[0].x, ray[1].y - ray[0].y), std::hypot(20.0, 10.0), 1e-9);
    }
}

// ---- single branches

double height(const cl_item& item, double slope, const cl_point& p)
{
    if (item.kind == CL_CORNER)
        return item.from[2] + slope * pg_dist(item.from.data(), p.data());
    double foot[3];
    cl_foot(item.from.data(), item.to.data(), p.data(), foot);
    const double length = pg_dist(item.from.data(), item.to.data());
    const double along = ((foot[0] - item.from[0]) * (item.to[0] - item.from[0]) +
                          (foot[1] - item.from[1]) * (item.to[1] - item.from[1])) /
                         length;
    return item.from[2] + along / length * (item.to[2] - item.from[2]) +
           slope * outlines::area({item.from[0], item.from[1]}, {item.to[0], item.to[1]}, {p[0], p[1]}) /
               length;
}

struct pair_case {
    const char* name;
    cl_item left, right;
    cl_point near_start; // moved along y until both are equally high
    double slope;
};

TEST(CentreLines, BranchesKeepEqualHeight)
{
    const cl_item level{CL_SIDE, 3, {100, 10, 0}, {-100, 10, 0}},
        sloped{CL_SIDE, 3, {100, 10, 0}, {-100, 10, 3}};
    const cl_item bottom{CL_SIDE, 1, {-100, 0, 0}, {100, 0, 0}}, rising{CL_SIDE, 1, {-100, 0, 5}, {100, 0, -9}};
    const cl_item corner{CL_CORNER, 1, {0, 0, 0}, {0, 0, 0}}, high{CL_CORNER, 1, {0, 0, 3}, {0, 0, 3}};
    const cl_item top{CL_CORNER, 3, {2, 10, 0}, {2, 10, 0}};
    const pair_case cases[] = {
        {"sides", bottom, level, {5, 0, 0}, 1.0},
        {"sloped sides", rising, sloped, {5, 0, 0}, 1.0},
        {"corner and side", corner, level, {5, 0, 0}, 1.0},
        {"corner and sloped side", corner, sloped, {5, 0, 0}, 1.0},
        {"high corner and steep planes", high, sloped, {5, 0, 0}, 4.0},
        {"side and corner", bottom, top, {5, 0, 0}, 1.0},
        {"sloped side and corner", rising, top, {5, 0, 0}, 0.5},
        {"corners", corner, top, {5, 0, 0}, 1.0},
        {"high corner on the left", high, top, {5, 0, 0}, 1.0},
        {"corner below the other", {CL_CORNER, 1, {0, 0, -3}, {0, 0, -3}}, top, {5, 0, 0}, 1.0}};
    for (const pair_case& c : cases) {
        double low = -40.0, up = 40.0;
        cl_point at = c.near_start;
        for (int i = 0; i < 100; ++i) {
            at[1] = (low + up) / 2.0;
            (height(c.left, c.slope, at) < height(c.right, c.slope, at) ? low : up) = at[1];
        }
        cl_branch made;
        ASSERT_TRUE(cl_lead_branch(
            {&c.left, &c.right, at, c.slope, 60.0, cl_relation(c.left, at), cl_relation(c.right, at)}, &made))
            << c.name;
        ASSERT_GE(made.chain.size(), 2u) << c.name;
        // The ray that closes a hyperbola goes on straight.
        const std::size_t checked =
            made.chain.size() > 2 && c.left.kind == CL_CORNER && c.right.kind == CL_CORNER
                ? made.chain.size() - 1
                : made.chain.size();
        for (std::size_t i = 0; i < checked; ++i)
            EXPECT_NEAR(height(c.left, c.slope, made.chain[i]), height(c.right, c.slope, made.chain[i]), 1e-9)
                << c.name << " node " << i;
    }
}

TEST(CentreLines, CurvesTurnByAHundredthOfAHalfTurnAStep)
{
    const cl_item corner{CL_CORNER, 1, {0, 0, 0}, {0, 0, 0}}, side{CL_SIDE, 3, {100, 10, 0}, {-100, 10, 0}};
    cl_branch made;
    ASSERT_TRUE(cl_lead_branch({&corner, &side, {0, 5, 0}, 1.0, 1000.0, CL_AS_CORNER, CL_AS_SIDE}, &made));
    cl_coarsen(&made);
    for (std::size_t i = 0; i + 2 < made.chain.size(); ++i)
        EXPECT_NEAR(
            std::atan2(made.chain[i][0] * made.chain[i + 1][1] - made.chain[i][1] * made.chain[i + 1][0],
                       made.chain[i][0] * made.chain[i + 1][0] + made.chain[i][1] * made.chain[i + 1][1]),
            0.031415926535897934, 1e-12);
    EXPECT_NEAR(std::hypot(made.chain.back()[0], made.chain.back()[1]), 1000.0, 1e-9);
    EXPECT_LE(made.chain.size(), 102u);
}

// The south wall rises to the east, the others are level: along the ridge the planes of both long walls are
// equally high, and every line lies where two of the four planes are.
TEST(CentreLines, SlopedRectangleKeepsEqualHeight)
{
    const spots walls = {{0, 0, 0, 0}, {20, 0, 0, 1}, {20, 6, 0, 1}, {0, 6, 0, 0}};
    const rings_ptr rings = centre_lines(outlines::closed(walls));
    ASSERT_TRUE(rings);
    const double long_wall = 1.0 / 20.0;
    int inner = 0;
    for (const spots& line : lines_of(rings))
        for (const spot& s : line) {
            const double south = long_wall * s.x + s.y, north = long_wall * s.x + 6.0 - s.y;
            std::vector<double> planes = {south, north, s.x, 1.0 + 20.0 - s.x};
            std::sort(planes.begin(), planes.end());
            EXPECT_NEAR(planes[0], planes[1], 1e-9) << s.x << "," << s.y;
            EXPECT_NEAR(s.z, planes[0], 1e-9) << s.x << "," << s.y;
            inner += s.x > 1.0 && s.x < 19.0 && s.y > 1.0 && s.y < 5.0 ? 1 : 0;
        }
    EXPECT_GE(inner, 2);
}

// ---- bad input, and what is given back

TEST(CentreLines, NastyOutlinesEnd)
{
    const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
    const spots nasty[] = {{{0, 0}, {0, 0}, {0, 0}, {0, 0}},
                           {{0, 0}, {5, 0}, {2, 0}, {8, 0}, {1, 0}},
                           {{0, 0}, {5, 0}, {10, 0}, {5, 0}, {5, 5}},
                           {{0, 0}, {10, 10}, {10, 0}, {0, 10}},
                           {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}, {0, 10}},
                           {{0, 0}, {5, 0}, {10, 0}, {10, 5}, {10, 10}, {5, 10}, {0, 10}, {0, 5}},
                           {{0, 0}, {1e-5, 0}, {10, 1e-5}, {0, 1e-5}},
                           {{0, 0}, {1e150, 0}, {1e150, 1e150}},
                           {{0, 0}, {1e300, 0}, {1e300, 1e300}},
                           {{nan, 0}, {1, 0}, {1, 1}},
                           {{0, 0}, {inf, 0}, {1, 1}},
                           {{0, 0, 0, nan}, {1, 0}, {1, 1}},
                           {{0, 0, 0, 1e300}, {1, 0}, {1, 1}}};
    const int before = test_heap::live_blocks();
    for (const spots& shape : nasty)
        for (const bool close : {false, true})
            for (const int orientation : {0, -1, 1})
                for (const double slope : {1.0, 0.0, -1.0, 1e-300, nan})
                    centre_lines(close ? outlines::closed(shape) : make_chain(shape), 1, orientation, slope);
    EXPECT_EQ(test_heap::live_blocks(), before);
}

TEST(CentreLines, BreakGivesNothingAndKeepsNothing)
{
    const chain_ptr chain = outlines::closed(outlines::star(3, 20, 0.5));
    const int before = test_heap::live_blocks();
    for (int n = 1;; ++n) {
        test_heap::break_at(n);
        const bool broken = !centre_lines(chain);
        EXPECT_EQ(test_heap::live_blocks(), before);
        if (!broken) {
            EXPECT_GT(n, 20);
            break;
        }
    }
    test_heap::break_at(0);
}

TEST(CentreLines, EveryFailureOfTheHeapGivesNothingAndKeepsNothing)
{
    const chain_ptr chain = outlines::closed(l_shape);
    const int before = test_heap::live_blocks();
    int n = 1;
    for (bool failed = true; failed; ++n) {
        test_heap::fail_at(n);
        failed = !centre_lines(chain, 1);
        EXPECT_EQ(test_heap::live_blocks(), before) << n;
    }
    test_heap::fail_at(0);
    EXPECT_GT(n, 20);
}

TEST(CentreLines, FootIsSquareToTheLine)
{
    const double a[3] = {1, 1, 5}, b[3] = {5, 3, 9}, p[3] = {0, 8, 2};
    double foot[3];
    cl_foot(a, b, p, foot);
    EXPECT_NEAR((p[0] - foot[0]) * 4 + (p[1] - foot[1]) * 2, 0.0, 1e-12);
    EXPECT_NEAR((foot[0] - a[0]) * 2 - (foot[1] - a[1]) * 4, 0.0, 1e-12);
    EXPECT_EQ(foot[2], 0.0);
    cl_foot(a, a, p, foot);
    EXPECT_EQ(foot[0], 1.0);
}

} // namespace
