// Segments of a chain by a point, arcs among them.
#include "drawing/chain_queries.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "common/tolerances.h"
#include "tests/drawing/chains.h"
#include "tests/growth.h"

namespace
{

const double T8 = std::tan(std::acos(-1.0) / 8.0); // bulge of a quarter circle
constexpr double INF = std::numeric_limits<double>::infinity();

// Number of a vertex in its chain, -1 null.
int index_in(const pl_vertex* chain, const pl_vertex* wanted)
{
    if (!wanted)
        return -1;
    int at = 0;
    for (; chain && chain != wanted; chain = chain->next)
        ++at;
    return at;
}

int located(const std::vector<corner>& corners, double x, double y, const place& p = PLACES[0])
{
    const auto chain = make_vertices(corners, p.x, p.y);
    const ads_point pick = {x + p.x, y + p.y, 0.0};
    return index_in(chain.get(), chain_locate_pick(chain.get(), pick));
}

// ---- locating ------------------------------------------------------------------------------------------

struct located_case {
    const char* name;
    std::vector<corner> corners;
    double x, y;
    int expected;
};

const located_case LOCATED[] = {
    {"beside a straight segment", {{0, 0}, {10, 0}, {10, 10}}, 4, 1, 0},
    {"nearer to the second of two", {{0, 0}, {10, 0}, {10, 10}}, 9, 5, 1},
    {"equally far from two: the later", {{0, 0}, {10, 0}, {10, 10}}, 8, 2, 1},
    {"outside a corner", {{0, 0}, {10, 0}, {10, 10}}, 12, -2, -1},
    {"exactly on the first vertex", {{0, 0}, {10, 0}, {10, 10}}, 0, 0, 0},
    {"exactly on an inner vertex", {{0, 0}, {10, 0}, {10, 10}}, 10, 0, 1},
    {"exactly on the last vertex", {{0, 0}, {10, 0}, {10, 10}}, 10, 10, 2},
    {"on a vertex before a nearer later segment", {{0, 0}, {10, 0}, {0, 5}, {0, -5}}, 0, 0, 0},
    {"on the last vertex of an arc", {{0, 0, 0, 1}, {10, 0}}, 10, 0, 1},
    {"a hair before the end", {{0, 0}, {10, 0}}, -0.9e-6, 1, 0},
    {"too far before the end", {{0, 0}, {10, 0}}, -1.1e-6, 1, -1},
    {"a hair behind the end", {{0, 0}, {10, 0}}, 10 + 0.9e-6, -1, 0},
    {"too far behind the end", {{0, 0}, {10, 0}}, 10 + 1.1e-6, -1, -1},
    {"a hair below an upright", {{0, 0}, {0, 10}}, 1, -0.9e-6, 0},
    {"too far below an upright", {{0, 0}, {0, 10}}, 1, -1.1e-6, -1},
    {"a hair above an upright", {{0, 0}, {0, 10}}, 1, 10 + 0.9e-6, 0},
    {"too far above an upright", {{0, 0}, {0, 10}}, 1, 10 + 1.1e-6, -1},
    {"a very short segment is one", {{0, 0}, {0.00005, 0}}, 0.00002, 3, 0},
    {"a segment without length", {{0, 0}, {0, 0}}, 3, 4, 0},
    {"a segment without length against a nearer one", {{0, 5}, {0, 5}, {-9, 0}, {9, 0}}, 0, 1, 2},
    {"an arc without length has no circle", {{0, 0, 0, 1}, {0, 0}}, 3, 0, -1},
    // Bulge 1 from (0, 0) to (10, 0): the lower half circle about (5, 0).
    {"inside an arc", {{0, 0, 0, 1}, {10, 0}}, 5, -4, 0},
    {"outside an arc", {{0, 0, 0, 1}, {10, 0}}, 7, -60, 0},
    {"on the other half", {{0, 0, 0, 1}, {10, 0}}, 5, 4, -1},
    {"clockwise: the upper half", {{0, 0, 0, -1}, {10, 0}}, 5, 4, 0},
    {"clockwise: on the other half", {{0, 0, 0, -1}, {10, 0}}, 5, -4, -1},
    // Bulge 1 from (0, -5) to (0, 5): the right half circle, across angle 0.
    {"sweep across angle 0, above it", {{0, -5, 0, 1}, {0, 5}}, 4, 1, 0},
    {"sweep across angle 0, below it", {{0, -5, 0, 1}, {0, 5}}, 4, -1, 0},
    {"sweep across angle 0, on it", {{0, -5, 0, 1}, {0, 5}}, 4, 0, 0},
    {"first end of a sweep", {{0, -5, 0, 1}, {0, 5}}, 0, -9, 0},
    {"last end of a sweep", {{0, -5, 0, 1}, {0, 5}}, 0, 9, 0},
    {"arc equally far as a straight: the later", {{0, -5, 0, 1}, {0, 5}, {9, 5}, {9, -5}}, 7, 0, 2},
    {"straight equally far as an arc: the later", {{9, 5}, {9, -5}, {0, -5, 0, 1}, {0, 5}}, 7, 0, 2},
    {"sweep across angle 0, behind it", {{0, -5, 0, 1}, {0, 5}}, -4, 1, -1},
    {"clockwise across angle 0", {{0, 5, 0, -1}, {0, -5}}, 4, -1, 0},
    {"clockwise across angle 0, behind it", {{0, 5, 0, -1}, {0, -5}}, -4, -1, -1},
    // Three quarters of the circle about (0, 0) with radius 5, open in the first quadrant.
    {"more than half a circle", {{0, 5, 0, 1 / T8}, {5, 0}}, -3, -3, 0},
    {"more than half a circle, in its gap", {{0, 5, 0, 1 / T8}, {5, 0}}, 3, 3, -1},
    {"chord of an arc is no place", {{0, 0, 0, 1}, {10, 0}, {10, 9}}, 5, 0.5, 1},
    {"an arc against a nearer straight", {{0, 0, 0, 1}, {10, 0}, {10, -3}, {0, -3}}, 5, -3.5, 2},
    {"a straight against a nearer arc", {{0, 0, 0, 1}, {10, 0}, {10, -3}, {0, -3}}, 5, -4.5, 0},
    {"closing segment is not in the chain", {{0, 0}, {10, 0}, {10, 10}}, 4, 4.5, 0},
    {"one vertex", {{0, 0}}, 0, 0, -1},
    {"nothing that is a number", {{0, 0}, {10, 0}, {20, 0, 0, 1}, {30, 0}}, std::nan(""), 0, -1},
    {"at no finite place", {{0, 0}, {10, 0}, {20, 0, 0, 1}, {30, 0}}, INF, -INF, -1},
};

TEST(ChainLocatePick, Cases)
{
    for (const located_case& c : LOCATED)
        EXPECT_EQ(located(c.corners, c.x, c.y), c.expected) << c.name;
}

// At survey coordinates the widening by 1e-6 still holds, to the spacing of the numbers there.
TEST(ChainLocatePick, CasesFarFromTheOrigin)
{
    for (const located_case& c : LOCATED)
        EXPECT_EQ(located(c.corners, c.x, c.y, PLACES[1]), c.expected) << c.name;
}

TEST(ChainLocatePick, OfNothing)
{
    const ads_point pick = {0, 0, 0};
    EXPECT_EQ(chain_locate_pick(nullptr, pick), nullptr);
}

TEST(ChainLocatePick, HeightsDontCount)
{
    const auto chain = make_vertices({{0, 0, 900}, {10, 0, 800}});
    const ads_point pick = {5, 1, -700}, on_start = {0, 0, 5};
    EXPECT_EQ(chain_locate_pick(chain.get(), pick), chain.get());
    EXPECT_EQ(chain_locate_pick(chain.get(), on_start), chain.get());
}

TEST(ChainLocatePick, DistanceOfTheNoValueMarkIsTheLast)
{
    EXPECT_EQ(located({{0, 0}, {10, 0}}, 5, NO_VALUE), 0);
    EXPECT_EQ(located({{0, 0}, {10, 0}}, 5, NO_VALUE + 1), -1);
    EXPECT_EQ(located({{0, 0, 0, -1}, {10, 0}}, 5, NO_VALUE), 0);
    EXPECT_EQ(located({{0, 0, 0, -1}, {10, 0}}, 5, NO_VALUE + 10), -1);
}

// ---- against a plain search ---------------------------------------------------------------------------------

// A segment's own circle and sweep by another way: the centre from the bulge's own formula, the sweep by the
// side of the chord on which the point's foot lies.
struct plain_foot {
    bool there;
    double distance;
    double margin; // how far the foot is from being on the other side of what decides
};

plain_foot plain_foot_of(const corner& a, const corner& b, double x, double y)
{
    const double cx = b.x - a.x, cy = b.y - a.y, chord = std::hypot(cx, cy);
    if (a.bulge == 0.0) {
        const double along = ((x - a.x) * cx + (y - a.y) * cy) / chord;
        const double off = std::fabs((x - a.x) * cy - (y - a.y) * cx) / chord;
        const double margin = std::min(along, chord - along);
        return {margin >= 0.0, off, std::fabs(margin)};
    }
    const double q = (1.0 - a.bulge * a.bulge) / (4.0 * a.bulge);
    const double mx = (a.x + b.x) / 2.0 - cy * q, my = (a.y + b.y) / 2.0 + cx * q;
    const double radius = std::hypot(a.x - mx, a.y - my), far = std::hypot(x - mx, y - my);
    const double fx = mx + (x - mx) * radius / far, fy = my + (y - my) * radius / far;
    // Counter-clockwise arcs lie on the right of their chord.
    const double right = ((fx - a.x) * cy - (fy - a.y) * cx) / chord * (a.bulge > 0.0 ? 1.0 : -1.0);
    const double end = std::min(std::hypot(fx - a.x, fy - a.y), std::hypot(fx - b.x, fy - b.y));
    return {right >= 0.0, std::fabs(far - radius), std::min(std::fabs(right), end)};
}

struct random_chain {
    std::vector<corner> corners;
    explicit random_chain(std::mt19937& random)
    {
        std::uniform_real_distribution<double> any(-100, 100), size(-2, 2);
        const auto count = 2 + random() % 12;
        for (std::size_t i = 0; i < count; ++i) {
            const double bulge = std::pow(10.0, size(random)) * (random() % 2 ? 1 : -1);
            corners.push_back({any(random), any(random), any(random), random() % 2 ? bulge : 0.0});
        }
    }
};

// -1: no foot falls on any; -2: too close to call.
int plain_search(const std::vector<corner>& corners, double x, double y)
{
    constexpr double CLEAR = 1e-4;
    int best = -1;
    double best_distance = INF;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        const plain_foot foot = plain_foot_of(corners[i], corners[i + 1], x, y);
        if (foot.margin < CLEAR || (foot.there && std::fabs(foot.distance - best_distance) < CLEAR))
            return -2;
        if (foot.there && foot.distance < best_distance) {
            best_distance = foot.distance;
            best = static_cast<int>(i);
        }
    }
    return best;
}

TEST(ChainLocatePick, FindsWhatAPlainSearchFinds)
{
    std::mt19937 random(54);
    std::uniform_real_distribution<double> any(-150, 150);
    int found = 0, none = 0, skipped = 0;
    for (int round = 0; round < 2000; ++round) {
        const random_chain chain(random);
        for (int i = 0; i < 10; ++i) {
            const double x = any(random), y = any(random);
            const int expected = plain_search(chain.corners, x, y);
            if (expected == -2) {
                ++skipped;
                continue;
            }
            ++(expected < 0 ? none : found);
            for (const place& p : PLACES)
                ASSERT_EQ(located(chain.corners, x, y, p), expected) << round << ": " << x << "," << y;
        }
    }
    EXPECT_GT(found, 10000);
    EXPECT_GT(none, 500);
    EXPECT_LT(skipped, 100);
}

// ---- directions
// ------------------------------------------------------------------------------------------------

struct direction {
    int found;
    double x, y;
};

direction direction_at(const std::vector<corner>& corners, double x, double y, double tolerance = NO_VALUE)
{
    const auto chain = make_vertices(corners);
    const ads_point point = {x, y, 77.0};
    double normal[2] = {9.0, 9.0};
    const int found = chain_normal_at(chain.get(), point, tolerance, normal);
    return {found, normal[0], normal[1]};
}

struct direction_case {
    const char* name;
    std::vector<corner> corners;
    double x, y, tolerance;
    int found;
    double nx, ny;
};

TEST(ChainNormalAt, Cases)
{
    const double r2 = std::sqrt(0.5);
    const direction_case cases[] = {
        {"on the left: from start to end", {{0, 0}, {10, 0}}, 5, 2, NO_VALUE, 1, 1, 0},
        {"on the right: from end to start", {{0, 0}, {10, 0}}, 5, -2, NO_VALUE, 1, -1, 0},
        {"slanted, on the left", {{0, 0}, {10, 10}}, 4, 6, NO_VALUE, 1, r2, r2},
        {"upright, on the left", {{0, 0}, {0, 10}}, -3, 5, NO_VALUE, 1, 0, 1},
        {"on the segment", {{10, 0}, {0, 0}}, 5, 0, NO_VALUE, 1, -1, 0},
        {"a hair off: from start to end on either side", {{0, 0}, {10, 0}}, 5, -0.00009, NO_VALUE, 1, 1, 0},
        {"a hair off to the digit", {{0, 0}, {10, 0}}, 5, -0.0001, NO_VALUE, 1, -1, 0},
        {"more than a hair off", {{0, 0}, {10, 0}}, 5, -0.00011, NO_VALUE, 1, -1, 0},
        {"at a vertex the later", {{0, 0}, {10, 0}, {10, 10}}, 10, 0, NO_VALUE, 1, 0, 1},
        {"on a segment without length", {{3, 4}, {3, 4}}, 3, 4, NO_VALUE, 1, 0, 0},
        {"beside a segment without length", {{3, 4}, {3, 4}}, 3, 6, NO_VALUE, 1, 1, 0},
        {"outside an arc", {{0, 0, 0, 1}, {10, 0}}, 5, -9, NO_VALUE, 1, -1, 0},
        {"inside an arc", {{0, 0, 0, 1}, {10, 0}}, 5, -1, NO_VALUE, 1, -1, 0},
        {"on an arc", {{0, 0, 0, 1}, {10, 0}}, 5, -5, NO_VALUE, 1, -1, 0},
        {"a clockwise arc is no other", {{0, 0, 0, -1}, {10, 0}}, 5, 5, NO_VALUE, 1, 1, 0},
        {"within the tolerance", {{0, 0}, {10, 0}}, 5, 2, 2.5, 1, 1, 0},
        {"beyond it", {{0, 0}, {10, 0}}, 5, 3, 2.5, 0, 9, 9},
        {"arc within it", {{0, 0, 0, 1}, {10, 0}}, 5, -7, 2.5, 1, -1, 0},
        {"arc beyond it", {{0, 0, 0, 1}, {10, 0}}, 5, -8, 2.5, 0, 9, 9},
        {"beside nothing", {{0, 0}, {10, 0}}, 12, 3, NO_VALUE, 0, 9, 9},
        {"of equal distances the later", {{0, 0}, {10, 0}, {10, 10}}, 8, 2, NO_VALUE, 1, 0, 1},
        {"of one vertex", {{0, 0}}, 0, 0, NO_VALUE, 0, 9, 9},
    };
    for (const direction_case& c : cases) {
        const direction d = direction_at(c.corners, c.x, c.y, c.tolerance);
        EXPECT_EQ(d.found, c.found) << c.name;
        EXPECT_NEAR(d.x, c.nx, 1e-6) << c.name;
        EXPECT_NEAR(d.y, c.ny, 1e-6) << c.name;
    }
}

// Which way is then chance.
TEST(ChainNormalAt, AtAnArcsCentreIsAUnitVector)
{
    for (const double bulge : {1.0, T8, 1 / T8, -0.3}) {
        const double q = (1.0 - bulge * bulge) / (4.0 * bulge);
        const direction d = direction_at({{0, -5, 0, bulge}, {0, 5}, {9, 9}}, -10 * q, 0);
        if (d.found) {
            EXPECT_NEAR(std::hypot(d.x, d.y), 1.0, 1e-12) << bulge;
        }
    }
}

TEST(ChainNormalAt, OfNothing)
{
    const ads_point point = {0, 0, 0};
    double normal[2];
    EXPECT_EQ(chain_normal_at(nullptr, point, NO_VALUE, normal), 0);
}

// A segment exactly as far as the tolerance doesn't lie within it.
TEST(ChainNormalAt, DistanceOfTheToleranceIsNotFound)
{
    EXPECT_EQ(direction_at({{0, 0}, {10, 0}}, 5, 2, 2.0).found, 0);
    EXPECT_EQ(direction_at({{0, 0}, {10, 0}}, 5, 2, std::nextafter(2.0, 3.0)).found, 1);
}

TEST(ChainNormalAt, AVertexIsNoShortcut)
{
    // The vertex of the first segment is the point; the second's foot is there too, and it comes later.
    const direction d = direction_at({{0, 0}, {10, 0}, {10, 10}, {-10, -10}}, 10, 10);
    EXPECT_EQ(d.found, 1);
    EXPECT_NEAR(d.x, -std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(d.y, -std::sqrt(0.5), 1e-12);
}

TEST(ChainNormalAt, IsAUnitVectorAlongTheNearestSegment)
{
    std::mt19937 random(55);
    std::uniform_real_distribution<double> any(-150, 150);
    int tried = 0;
    for (int round = 0; round < 2000; ++round) {
        const random_chain chain(random);
        const double x = any(random), y = any(random);
        const int at = plain_search(chain.corners, x, y);
        if (at < 0)
            continue;
        ++tried;
        const corner &a = chain.corners[static_cast<std::size_t>(at)],
                     &b = chain.corners[static_cast<std::size_t>(at) + 1];
        const direction d = direction_at(chain.corners, x, y);
        ASSERT_EQ(d.found, 1) << round;
        ASSERT_NEAR(std::hypot(d.x, d.y), 1.0, 1e-12) << round;
        if (a.bulge == 0.0) {
            const double length = std::hypot(b.x - a.x, b.y - a.y);
            ASSERT_NEAR((d.x * (b.y - a.y) - d.y * (b.x - a.x)) / length, 0.0, 1e-9) << round;
            ASSERT_GT(d.x * (y - a.y) - d.y * (x - a.x), 0.0) << round; // the point is on its left
        } else {
            const double q = (1.0 - a.bulge * a.bulge) / (4.0 * a.bulge);
            const double rx = x - ((a.x + b.x) / 2.0 - (b.y - a.y) * q),
                         ry = y - ((a.y + b.y) / 2.0 + (b.x - a.x) * q), far = std::hypot(rx, ry);
            ASSERT_NEAR((d.x * rx + d.y * ry) / far, 0.0, 1e-6) << round;
            ASSERT_LT((rx * d.y - ry * d.x) / far, -0.999) << round; // clockwise
        }
    }
    EXPECT_GT(tried, 1000);
}

// ---- size ---

TEST(ChainQueries, TakeTimeInProportionToTheChain)
{
    const auto work = [](int count) {
        std::vector<corner> corners;
        for (int i = 0; i <= count; ++i)
            corners.push_back({i * 1.0, i % 2 * 0.5, 0.0, i % 3 ? 0.3 : 0.0});
        const auto chain = make_vertices(corners);
        const ads_point pick = {0.5, 1.0, 0.0};
        double normal[2];
        EXPECT_EQ(index_in(chain.get(), chain_locate_pick(chain.get(), pick)), 0);
        EXPECT_EQ(chain_normal_at(chain.get(), pick, NO_VALUE, normal), 1);
    };
    EXPECT_TRUE(grows_in_proportion(work, 320000));
}

} // namespace
