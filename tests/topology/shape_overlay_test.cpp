// Overlays of closed polygons held against what must be true of them whoever works them out: Euler's formula,
// and areas that add up to those of the polygons' union, which slabs between all heights of corners and
// crossings give.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <set>

#include "tests/topology/shape_nets.h"
#include "topology/walk.h"

namespace
{

using ShapeOverlay = Collection;

// About a centre, with corners at rising angles and so without crossings of its own.
path polygon_of_chance(std::mt19937* random)
{
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(*random); };
    const int corners = std::uniform_int_distribution<int>(3, 9)(*random);
    const double x = real(0, 20), y = real(0, 20), size = real(2, 10), start = real(0, 6);
    path outline;
    for (int i = 0; i < corners; ++i) {
        const double angle = start + (i + real(0, 0.8)) * 2 * std::numbers::pi / corners,
                     r = size * real(0.4, 1);
        outline.push_back({x + r * std::cos(angle), y + r * std::sin(angle)});
    }
    return outline;
}

path rectangle_of_chance(std::mt19937* random)
{
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(*random); };
    const double x = whole(0, 9), y = whole(0, 9), w = whole(1, 6), h = whole(1, 6);
    return {{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
}

// ---- the union, by slabs

const vertex& after(const path& outline, std::size_t i)
{
    return outline[(i + 1) % outline.size()];
}

std::vector<double> heights_of(const std::vector<path>& outlines)
{
    struct side {
        vertex a, b;
    };
    std::vector<side> sides;
    std::vector<double> heights;
    for (const path& outline : outlines)
        for (std::size_t i = 0; i < outline.size(); ++i) {
            sides.push_back({outline[i], after(outline, i)});
            heights.push_back(outline[i].y);
        }
    for (const side& s : sides)
        for (const side& t : sides) {
            const double sx = s.b.x - s.a.x, sy = s.b.y - s.a.y, tx = t.b.x - t.a.x, ty = t.b.y - t.a.y;
            const double across = sx * ty - sy * tx;
            const double share = ((t.a.x - s.a.x) * ty - (t.a.y - s.a.y) * tx) / across;
            if (share > 0 && share < 1)
                heights.push_back(s.a.y + share * sy);
        }
    std::sort(heights.begin(), heights.end());
    return heights;
}

bool is_inside(const path& outline, double x, double y)
{
    bool inside = false;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const vertex &a = outline[i], &b = after(outline, i);
        if ((a.y > y) != (b.y > y) && a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x) < x)
            inside = !inside;
    }
    return inside;
}

bool is_covered(const std::vector<path>& outlines, double x, double y)
{
    return std::any_of(outlines.begin(), outlines.end(), [&](const path& p) { return is_inside(p, x, y); });
}

// How much of a level line the polygons cover.
double covered_length(const std::vector<path>& outlines, double y)
{
    std::vector<double> cuts;
    for (const path& outline : outlines)
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const vertex &a = outline[i], &b = after(outline, i);
            if ((a.y > y) != (b.y > y))
                cuts.push_back(a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x));
        }
    std::sort(cuts.begin(), cuts.end());
    double length = 0;
    for (std::size_t i = 1; i < cuts.size(); ++i)
        if (is_covered(outlines, (cuts[i - 1] + cuts[i]) / 2, y))
            length += cuts[i] - cuts[i - 1];
    return length;
}

double union_area(const std::vector<path>& outlines)
{
    const std::vector<double> heights = heights_of(outlines);
    double area = 0;
    for (std::size_t i = 1; i < heights.size(); ++i)
        area += (heights[i] - heights[i - 1]) * covered_length(outlines, (heights[i] + heights[i - 1]) / 2);
    return area;
}

// ---- the network

struct counts {
    int nodes = 0, edges = 0, components = 0;
};

counts counts_of(const ShapeNet& net)
{
    std::vector<int> group(static_cast<std::size_t>(net.nodes.count) + 1);
    for (std::size_t i = 0; i < group.size(); ++i)
        group[i] = static_cast<int>(i);
    const auto at = [&](int id) -> int& { return group[static_cast<std::size_t>(id)]; };
    const auto top = [&](int id) {
        while (at(id) != id)
            id = at(id);
        return id;
    };
    std::set<int> nodes, tops;
    counts found;
    for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i)) {
        const ShapeEdge& e = *net.edge(i);
        nodes.insert({e.node1, e.node2});
        at(top(e.node1)) = top(e.node2);
        ++found.edges;
    }
    for (const int id : nodes)
        tops.insert(top(id));
    found.nodes = static_cast<int>(nodes.size());
    found.components = static_cast<int>(tops.size());
    return found;
}

double area_of(const pg_ring& ring)
{
    double twice = 0;
    for (const pg_node* n = ring.nodes; n->next; n = n->next)
        twice += n->x * n->next->y - n->next->x * n->y;
    return twice / 2;
}

// By a place just to the left of the middle of its longest edge.
bool lies_in(const pg_ring& face, const std::vector<path>& outlines)
{
    double longest = 0, x = 0, y = 0;
    for (const pg_node* n = face.nodes; n->next; n = n->next) {
        const double dx = n->next->x - n->x, dy = n->next->y - n->y, length = std::hypot(dx, dy);
        if (length <= longest)
            continue;
        longest = length;
        x = n->x + dx / 2 - dy / length * 1e-7;
        y = n->y + dy / 2 + dx / length * 1e-7;
    }
    return is_covered(outlines, x, y);
}

struct face_sums {
    int inner = 0, outer = 0;
    double inner_area = 0, outer_area = 0, covered_area = 0;
};

face_sums sums_of(ShapeNet* net, const std::vector<path>& outlines)
{
    face_sums sums;
    pg_ring* rings = net->trace_faces();
    for (const pg_ring* r = rings; r; r = r->next) {
        const double area = area_of(*r);
        EXPECT_EQ(r->clockwise, area < 0 ? 1 : 0);
        (area < 0 ? sums.outer : sums.inner) += 1;
        (area < 0 ? sums.outer_area : sums.inner_area) += std::fabs(area);
        sums.covered_area += area > 0 && lies_in(*r, outlines) ? area : 0;
    }
    pg_free_rings(&rings);
    return sums;
}

template <class Outline>
std::vector<path> overlay(ShapeNet* net, unsigned seed, Outline outline)
{
    std::mt19937 random(seed);
    std::vector<path> outlines;
    for (int k = std::uniform_int_distribution<int>(1, 9)(random); k > 0; --k) {
        outlines.push_back(outline(&random));
        if (k % 3 == 0)
            std::reverse(outlines.back().begin(), outlines.back().end());
        add_path(net, outlines.back(), true);
    }
    net->cut_crossings();
    net->cut_at_near_nodes();
    return outlines;
}

TEST_F(ShapeOverlay, FacesFollowEulersFormulaAndAddUpToTheUnion)
{
    int joined = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        ShapeNet net(3);
        const std::vector<path> outlines = overlay(&net, seed, polygon_of_chance);
        const counts all = counts_of(net);
        const face_sums sums = sums_of(&net, outlines);
        EXPECT_EQ(all.nodes - all.edges + sums.inner, all.components) << seed;
        EXPECT_EQ(sums.outer, all.components) << seed;
        EXPECT_NEAR(sums.inner_area, sums.outer_area, 1e-6) << seed;
        if (all.components == 1) { // parts inside faces of others would count twice
            EXPECT_NEAR(sums.covered_area, union_area(outlines), 1e-6) << seed;
            ++joined;
        }
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(joined, 100);
}

// With shared sides, doubles, and corners that touch. A walk closes where it comes to its first node again, so
// the outer face round polygons that touch in corners comes in parts, of which some find no way: outer ones
// aren't counted here.
TEST_F(ShapeOverlay, FacesOfRectanglesOnWholePlacesAddUpToo)
{
    int joined = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        ShapeNet net(3);
        const std::vector<path> outlines = overlay(&net, seed, rectangle_of_chance);
        const counts all = counts_of(net);
        const face_sums sums = sums_of(&net, outlines);
        EXPECT_EQ(all.nodes - all.edges + sums.inner, all.components) << seed;
        if (all.components == 1) {
            EXPECT_NEAR(sums.covered_area, union_area(outlines), 1e-6) << seed;
            ++joined;
        }
        ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(joined, 100);
}

} // namespace
