// Centre lines of shapes worked out by hand, and of outlines of chance judged by a raster.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "polygon/centre_lines.h"
#include "polygon/centre_merge.h"
#include "polygon/centre_outline.h"
#include "polygon/flatten.h"
#include "tests/polygon/outlines.h"

namespace
{

using outlines::spots;

struct free_rings {
    void operator()(pg_ring* head) const { pg_free_rings(&head); }
};
using rings_ptr = std::unique_ptr<pg_ring, free_rings>;

struct line {
    int kind;
    spots places;
};

std::vector<line> lines_of(const chain_ptr& chain, int with_touching = 0)
{
    const rings_ptr rings(pg_centre_lines(chain.get(), 1.0, 0, with_touching));
    std::vector<line> lines;
    for (const pg_ring* r = rings.get(); r; r = r->next)
        lines.push_back({r->kind, spots_of(r->nodes)});
    return lines;
}

void expect_lines(const std::vector<line>& found, const std::vector<line>& expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].kind, expected[i].kind) << i;
        ASSERT_EQ(found[i].places.size(), expected[i].places.size()) << i;
        for (std::size_t k = 0; k < found[i].places.size(); ++k) {
            EXPECT_NEAR(found[i].places[k].x, expected[i].places[k].x, 1e-9) << i << " " << k;
            EXPECT_NEAR(found[i].places[k].y, expected[i].places[k].y, 1e-9) << i << " " << k;
            EXPECT_NEAR(found[i].places[k].z, expected[i].places[k].z, 1e-9) << i << " " << k;
        }
    }
}

// ---- by hand

// Runs start at the second corner and meet in pairs: south-east, north-west, then the corner between the pairs,
// whose hip takes the ridge; the closing corner comes last and so stands first.
TEST(CentreLineShapes, RectangleLastMadeFirst)
{
    expect_lines(lines_of(outlines::closed({{0, 0}, {30, 0}, {30, 12}, {0, 12}}), 1),
                 {{CL_NETWORK, {{24, 6, 0, 6}, {30, 0, 0, 0}}},
                  {CL_NETWORK, {{0, 12, 0, 0}, {6, 6, 0, 6}}},
                  {CL_NETWORK, {{0, 0, 0, 0}, {6, 6, 0, 6}, {24, 6, 0, 6}}},
                  {CL_NETWORK, {{30, 12, 0, 0}, {24, 6, 0, 6}}}});
}

// Legs 12 and 9: the inscribed circle has the radius (12 + 9 - 15) / 2.
TEST(CentreLineShapes, TriangleMeetsInTheCentreOfItsInscribedCircle)
{
    expect_lines(lines_of(outlines::closed({{0, 0}, {12, 0}, {0, 9}}), 1),
                 {{CL_NETWORK, {{3, 3, 0, 3}, {12, 0, 0, 0}}},
                  {CL_NETWORK, {{0, 0, 0, 0}, {3, 3, 0, 3}}},
                  {CL_NETWORK, {{0, 9, 0, 0}, {3, 3, 0, 3}}}});
}

// The bisector of the corner; the lines square to both ends, which meet it at (0, 10); and from there the line
// between the end points, as long as the diagonal of the extents. That crossing is just a diagonal off, and
// counts.
TEST(CentreLineShapes, OpenAngleEndsBetweenItsEndPoints)
{
    for (const int with_touching : {0, 1})
        expect_lines(lines_of(make_chain({{0, 0}, {10, 0}, {10, 10}}), with_touching),
                     {{CL_NETWORK, {{10, 0, 0, 0}, {0, 10, 0, 10}}},
                      {CL_NETWORK, {{10, 10, 0, 0}, {0, 10, 0, 10}}},
                      {CL_NETWORK, {{0, 0, 0, 0}, {0, 10, 0, 10}, {-10, 20, 0, std::hypot(10, 20)}}}});
}

// What ends nowhere touches the outline where it starts: rays stay as long as the diagonal.
TEST(CentreLineShapes, OpenRightTurnHasRaysOfTheLengthOfTheDiagonal)
{
    const double r = std::hypot(20, 10), s = r * std::sqrt(0.5);
    expect_lines(lines_of(make_chain({{0, 0}, {10, 0}, {20, -10}}), 1),
                 {{CL_TOUCHING, {{20, -10, 0, 0}, {20 + s, -10 + s, 0, r}}},
                  {CL_TOUCHING, {{10, 0, 0, 0}, {10 + s, s, 0, r}}},
                  {CL_TOUCHING, {{10, 0, 0, 0}, {10, r, 0, r}}},
                  {CL_TOUCHING, {{0, 0, 0, 0}, {0, r, 0, r}}}});
}

const spots l_shape = {{0, 0}, {10, 0}, {10, 4}, {4, 4}, {4, 10}, {0, 10}};

// Arms 4 wide: the ridges end where the rays square to the reflex corner meet them, between them the corner has
// the parabolas against both outer walls, which meet on the diagonal at x = y = sqrt(2) (4 - x).
TEST(CentreLineShapes, LShapeTurnsAboutItsReflexCorner)
{
    const std::vector<line> lines = lines_of(outlines::closed(l_shape));
    ASSERT_EQ(lines.size(), 7u);
    const double m = 4.0 * std::sqrt(2.0) / (1.0 + std::sqrt(2.0));
    const spots ends[][2] = {{{{8, 2}}, {{10, 0}}}, {{{0, 0}}, {{m, m}}},  {{{4, 10}}, {{2, 8}}},
                             {{{0, 10}}, {{2, 4}}}, {{{10, 4}}, {{8, 2}}}, {{{4, 4}}, {{4, 2}}},
                             {{{4, 4}}, {{8, 2}}}};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].kind, CL_NETWORK);
        const spots& places = lines[i].places;
        EXPECT_NEAR(places.front().x, ends[i][0][0].x, 1e-9) << i;
        EXPECT_NEAR(places.front().y, ends[i][0][0].y, 1e-9) << i;
        EXPECT_NEAR(places.back().x, ends[i][1][0].x, 1e-9) << i;
        EXPECT_NEAR(places.back().y, ends[i][1][0].y, 1e-9) << i;
    }
    // Each parabola turns by 45 degrees about the corner: 25 steps, the way to (2, 4) before them.
    EXPECT_EQ(lines[5].places.size(), 52u);
    EXPECT_NEAR(lines[5].places[1].x, 2.0, 1e-9);
    EXPECT_NEAR(lines[5].places[26].x, m, 1e-9);
}

// The second corner is the first convex one behind the head; ids run from there, and the head's side is last.
TEST(CentreLineShapes, LShapeIsTakenApartAtItsConvexCorners)
{
    spots turned = l_shape;
    std::rotate(turned.begin(), turned.begin() + 2, turned.end()); // the head is (10, 4), the next one reflex
    const cl_outline o = cl_take_outline(outlines::closed(turned).get(), 0);
    EXPECT_TRUE(o.is_ring);
    EXPECT_NEAR(o.reach, std::sqrt(200.0), 1e-12);
    struct expected_item {
        int kind;
        cl_point from, to;
    };
    const expected_item expected[] = {{CL_SIDE, {4, 10, 0}, {0, 10, 0}}, {CL_SIDE, {0, 10, 0}, {0, 0, 0}},
                                      {CL_SIDE, {0, 0, 0}, {10, 0, 0}},  {CL_SIDE, {10, 0, 0}, {10, 4, 0}},
                                      {CL_SIDE, {10, 4, 0}, {4, 4, 0}},  {CL_CORNER, {4, 4, 0}, {4, 4, 0}},
                                      {CL_SIDE, {4, 4, 0}, {4, 10, 0}}};
    ASSERT_EQ(o.items.size(), std::size(expected));
    for (std::size_t i = 0; i < o.items.size(); ++i) {
        EXPECT_EQ(o.items[i].id, static_cast<int>(i) + 1);
        EXPECT_EQ(o.items[i].kind, expected[i].kind);
        EXPECT_EQ(o.items[i].from, expected[i].from) << i;
        EXPECT_EQ(o.items[i].to, expected[i].to) << i;
    }
    const std::pair<int, int> runs[] = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 7}};
    ASSERT_EQ(o.runs.size(), std::size(runs));
    for (std::size_t i = 0; i < o.runs.size(); ++i)
        EXPECT_EQ(std::pair(o.runs[i].first_id, o.runs[i].last_id), runs[i]);
}

TEST(CentreLineShapes, RaysStandSquareOnBothEndsOfASide)
{
    std::vector<cl_branch> rays;
    cl_starting_rays(cl_take_outline(make_chain({{0, 0}, {3, 0}, {3, -4}}).get(), 0), &rays); // reach 5
    struct expected_ray {
        int left, right;
        cl_point from, to;
    };
    // Items: 1 the end (0, 0), 2 the level side, 3 the corner, 4 the other side, 5 the end (3, -4).
    const expected_ray expected[] = {{1, 2, {0, 0, 0}, {0, 5, 0}},
                                     {2, 3, {3, 0, 0}, {3, 5, 0}},
                                     {3, 4, {3, 0, 0}, {8, 0, 0}},
                                     {4, 5, {3, -4, 0}, {8, -4, 0}}};
    ASSERT_EQ(rays.size(), std::size(expected));
    for (std::size_t i = 0; i < rays.size(); ++i) {
        EXPECT_EQ(rays[i].left_id, expected[i].left);
        EXPECT_EQ(rays[i].right_id, expected[i].right);
        EXPECT_EQ(rays[i].state, CL_RAY);
        for (int k = 0; k < 2; ++k) {
            EXPECT_NEAR(rays[i].chain[0][static_cast<std::size_t>(k)],
                        expected[i].from[static_cast<std::size_t>(k)], 1e-12);
            EXPECT_NEAR(rays[i].chain[1][static_cast<std::size_t>(k)],
                        expected[i].to[static_cast<std::size_t>(k)], 1e-12);
        }
    }
}

// A branch that is cut becomes one of the network, what went on from it is retired, edges of runs stay rays
// between an item and itself.
TEST(CentreLineShapes, StatesOfAnOpenAngle)
{
    const cl_outline o = cl_take_outline(make_chain({{0, 0}, {10, 0}, {10, 10}}).get(), 0);
    cl_network net;
    cl_network_init(&net, o);
    ASSERT_TRUE(cl_merge_runs(o, 1.0, &net));
    const std::tuple<int, int, int> expected[] = {
        {1, 2, CL_NETWORK}, {2, 2, CL_RETIRED}, {3, 3, CL_RETIRED}, {3, 4, CL_NETWORK}, {2, 3, CL_NETWORK}};
    ASSERT_GE(net.branches.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(std::tuple(net.branches[i].left_id, net.branches[i].right_id, net.branches[i].state),
                  expected[i])
            << i;
    EXPECT_EQ(net.branches.back().left_id, 1);
    EXPECT_EQ(net.branches.back().right_id, 4);
    EXPECT_EQ(net.branches.back().state, CL_RAY);
}

// The bounds that a corner sets to the angle would turn the ridge of this roof round: its grades are small, but
// that of the left wall is the greater and the walls' lines meet on the far side.
TEST(CentreLineShapes, AnglesAreBoundAtCornersOnly)
{
    const spots walls = {{77.128, 125.607, 0, 3.129},  {-15.893, 194.833, 0, 2.673},
                         {-40.056, 180.818, 0, 1.763}, {-68.689, 143.420, 0, 2.070},
                         {-99.088, 26.586, 0, 4.060},  {-92.959, -72.739, 0, 1.539},
                         {-14.553, -195.241, 0, 0.613}};
    bool has_ridge = false;
    for (const line& l : lines_of(outlines::closed(walls), 1)) {
        EXPECT_EQ(l.kind, CL_NETWORK);
        for (std::size_t i = 1; i < l.places.size(); ++i)
            has_ridge =
                has_ridge || (std::hypot(l.places[i - 1].x + 28.061, l.places[i - 1].y - 19.994) < 0.01 &&
                              std::hypot(l.places[i].x + 5.850, l.places[i].y - 97.689) < 0.01);
    }
    EXPECT_TRUE(has_ridge);
}

// ---- by a raster

// The element of a closed outline nearest to a place: 2 i for a side, 2 i + 1 for the reflex corner before it.
// -1 outside.
int nearest_element(const spots& v, double x, double y)
{
    const std::size_t n = v.size();
    int best = -1;
    double least = 1e99;
    bool inside = false;
    const auto take = [&](std::size_t id, double distance) {
        if (distance < least) {
            least = distance;
            best = static_cast<int>(id);
        }
    };
    for (std::size_t i = 0; i < n; ++i) {
        const spot &o = v[(i + n - 1) % n], &a = v[i], &b = v[(i + 1) % n];
        if ((a.y <= y) != (b.y <= y) && x < a.x + (y - a.y) * (b.x - a.x) / (b.y - a.y))
            inside = !inside;
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const double along = ((x - a.x) * (b.x - a.x) + (y - a.y) * (b.y - a.y)) / length;
        if (along >= 0.0 && along <= length)
            take(2 * i, std::fabs(outlines::area(a, b, {x, y})) / length);
        if (outlines::area(o, a, b) <= 0.0)
            take(2 * i + 1, std::hypot(x - a.x, y - a.y));
    }
    return inside ? best : -1;
}

bool crosses_a_side(const spots& v, const spot& p, const spot& q)
{
    for (std::size_t i = 0; i < v.size(); ++i) {
        const spot &a = v[i], &b = v[(i + 1) % v.size()];
        if (outlines::area(a, b, p) * outlines::area(a, b, q) <= 0.0 &&
            outlines::area(p, q, a) * outlines::area(p, q, b) <= 0.0)
            return true;
    }
    return false;
}

double distance_to(const std::vector<line>& lines, double x, double y)
{
    double least = 1e99;
    for (const line& l : lines)
        for (std::size_t i = 1; i < l.places.size(); ++i) {
            const spot &a = l.places[i - 1], &b = l.places[i];
            const double dx = b.x - a.x, dy = b.y - a.y;
            const double t = std::clamp(((x - a.x) * dx + (y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
            least = std::min(least, std::hypot(x - a.x - t * dx, y - a.y - t * dy));
        }
    return least;
}

// Where the nearest element changes between two neighbours on a raster, a line passes; and at every node two
// elements are nearest.
void expect_whole(const spots& v, const std::string& name)
{
    const std::vector<line> lines = lines_of(outlines::closed(v));
    double lead = 0.0;
    for (const line& l : lines)
        for (const spot& s : l.places)
            lead = std::max(lead, outlines::lead_of_nearest(v, s.x, s.y));
    EXPECT_LT(lead, 1e-4) << name;
    const auto [x0, x1] = std::minmax_element(v.begin(), v.end(), [](auto& a, auto& b) { return a.x < b.x; });
    const auto [y0, y1] = std::minmax_element(v.begin(), v.end(), [](auto& a, auto& b) { return a.y < b.y; });
    const double step = std::max(x1->x - x0->x, y1->y - y0->y) / 47.3;
    int missing = 0;
    for (double x = x0->x + step / 3.0; x < x1->x; x += step)
        for (double y = y0->y + step / 3.0; y < y1->y; y += step)
            for (const spot& next : {spot{x + step, y}, spot{x, y + step}}) {
                const int here = nearest_element(v, x, y), there = nearest_element(v, next.x, next.y);
                if (here == there || here < 0 || there < 0 || crosses_a_side(v, {x, y}, next))
                    continue;
                missing += distance_to(lines, (x + next.x) / 2.0, (y + next.y) / 2.0) > 0.52 * step ? 1 : 0;
            }
    EXPECT_EQ(missing, 0) << name;
}

// Columns of chance heights: level and upright sides only, with many places at equal distance from four
// elements.
spots columns(std::uint32_t seed)
{
    std::mt19937 random(seed);
    const int count = 2 + static_cast<int>(seed % 9);
    spots v = {{0, 0}, {2.0 * count, 0}};
    int last = -1;
    for (int i = count - 1; i >= 0; --i) {
        int h = 1 + static_cast<int>(random() % 8);
        if (h == last)
            h = h % 8 + 1;
        v.push_back({2.0 * i + 2.0, static_cast<double>(h)});
        v.push_back({2.0 * i, static_cast<double>(h)});
        last = h;
    }
    return v;
}

TEST(CentreLineShapes, OutlinesOfChanceMissNoLine)
{
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        const std::string name = std::to_string(seed);
        expect_whole(outlines::tangled(seed, 5 + static_cast<int>(seed % 16)), "tangled " + name);
        expect_whole(outlines::star(seed, 5 + static_cast<int>(seed % 30), 0.3), "star " + name);
    }
    expect_whole(l_shape, "L");
}

// Level chords that end on others in their last digit; without care for it 12, 16, 80, 98 lose lines.
TEST(CentreLineShapes, ColumnsMissNoLine)
{
    for (std::uint32_t seed = 1; seed <= 150; ++seed)
        expect_whole(columns(seed), "columns " + std::to_string(seed));
}

// A run of reflex corners that hooks round sees its own sides from behind. What lies there must not count.
TEST(CentreLineShapes, HookedRunsMissNoLine)
{
    for (const std::uint32_t seed : {317u, 355u, 534u, 809u, 948u, 1171u, 1219u, 1386u, 1686u})
        expect_whole(outlines::tangled(seed, 20), "hooked " + std::to_string(seed));
}

// An angle between two bent legs, the first of which hooks back before the second: rays from the near half of
// the second still end on lines.
TEST(CentreLineShapes, OpenOutlineHidesNothing)
{
    const chain_ptr chain = make_chain({{-1.85, -23.03, -0.27},
                                        {26.58, -53.96, -0.105},
                                        {0, 0, -0.18},
                                        {-73.49, -22.14, -0.16},
                                        {-102.32, -16.61}});
    pg_flatten(chain.get(), 0.1);
    int of_second = 0;
    for (const line& l : lines_of(chain, 1)) {
        const spot& start = l.places.front();
        const bool is_of_half = start.x > -60.0 && start.x < -5.0;
        of_second += is_of_half ? 1 : 0;
        EXPECT_FALSE(l.kind == CL_TOUCHING && is_of_half) << start.x << "," << start.y;
    }
    EXPECT_GT(of_second, 10);
}

// A spike just before a side: the parabola between its tip and the side sweeps more than half a turn.
TEST(CentreLineShapes, CurvesMaySweepMoreThanHalfATurn)
{
    expect_whole(outlines::tangled(771, 60), "spike");
}

} // namespace
