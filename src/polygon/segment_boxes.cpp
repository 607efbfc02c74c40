// How far a box reaches beyond its segment.
//
// What the intersections answer lies on both segments within 1e-6, with these exceptions:
// - A crossing of straight segments may lie up to 5e-4 past an end of the second, the shorter it is.
// - Where an arc of a large radius touches a small circle, the single point is told on the line of the centres.
//   With h half the chord that the circles really share (h^2 below 2e-6 times the large radius) it lies in the
//   small circle by r - sqrt(r^2 - h^2), in the arc's sector. The last digits of the large radius have the same
//   effect, to either side.
// Rounding adds some units in the last place of the distances that take part. It is multiplied for short
// segments (a crossing 5e-4 past the end of a segment e long multiplies by 5e-4 / e), and the direction of an
// arc's ends is lost when the sweep is no more than the last digits of a direction: those are unbounded.
#include "polygon/segment_boxes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "hostapi/ads.h"
#include "polygon/points.h"

namespace
{

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr pg_box EMPTY{INF, INF, -INF, -INF};
constexpr double MOST = std::numeric_limits<double>::max(); // so that no box meets the empty one
constexpr pg_box UNBOUNDED{-MOST, -MOST, MOST, MOST};

constexpr double REACH = 2e-3;          // past the ends, with room for multiplied rounding
constexpr double ROUNDING = 1e-13;      // of a length, relative; well over what the formulas lose
constexpr double LEAST_SHARE = 1e-14;   // of the extents: shorter segments multiply their rounding too much
constexpr double LEAST_LENGTH = 1e-140; // below it squares lose their digits
constexpr double LARGEST = 1e100;       // above it squares overflow
constexpr double TOUCH = 8e-6;          // times the largest radius: h squared, with radii twice that
constexpr double LAST_DIGITS = 4e-14;   // times the largest radius squared: h squared lost by rounding

bool in_range(double v)
{
    return std::fabs(v) <= LARGEST; // false for no number too
}

bool in_range(const pg_segment& s)
{
    return in_range(s.p[0]) && in_range(s.p[1]) && in_range(s.q[0]) && in_range(s.q[1]) && in_range(s.bulge) &&
           in_range(s.radius) && in_range(s.centre[0]) && in_range(s.centre[1]);
}

pg_box united(const pg_box& a, const pg_box& b)
{
    return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

pg_box chord_box(const pg_segment& s)
{
    return {std::min(s.p[0], s.q[0]), std::min(s.p[1], s.q[1]), std::max(s.p[0], s.q[0]),
            std::max(s.p[1], s.q[1])};
}

pg_box widened(const pg_box& b, double by)
{
    return {b.x0 - by, b.y0 - by, b.x1 + by, b.y1 + by};
}

double extent(const pg_box& b)
{
    return (b.x1 - b.x0) + (b.y1 - b.y0);
}

// Of the coordinates that an arc is computed with.
double magnitude(const pg_segment& s)
{
    return std::max({std::fabs(s.p[0]), std::fabs(s.p[1]), std::fabs(s.q[0]), std::fabs(s.q[1]),
                     std::fabs(s.centre[0]), std::fabs(s.centre[1])});
}

// The arc's part of rounding, an arc length.
double arc_rounding(const pg_segment& s)
{
    return ROUNDING * (s.radius + magnitude(s));
}

// How far the root of r^2 and `error_sq` is off r.
double off_circle(double error_sq, double r)
{
    return std::min(std::sqrt(error_sq), error_sq / r);
}

// Whether rounding could turn the segment round or move its points away from it.
bool is_doubtful(const pg_segment& s, const pg_box_scale& scale)
{
    if (!in_range(s))
        return true;
    const double chord = pg_dist(s.p, s.q);
    if (pg_is_arc(s))
        return !(chord > arc_rounding(s)) || chord < LEAST_LENGTH;
    // A segment with no length at all has no crossings, only its point on others.
    const bool no_length = s.p[0] == s.q[0] && s.p[1] == s.q[1];
    return !no_length && chord < std::max(LEAST_LENGTH, LEAST_SHARE * extent(scale.extents));
}

} // namespace

void pg_scale_add(pg_box_scale* scale, const pg_segment& segment)
{
    if (!in_range(segment))
        return;
    const pg_box box = chord_box(segment);
    scale->extents = scale->any ? united(scale->extents, box) : box;
    scale->any = true;
    if (pg_is_arc(segment))
        scale->largest_radius = std::max(scale->largest_radius, segment.radius);
}

pg_box pg_segment_box(const pg_segment& s, const pg_box_scale& scale)
{
    if (is_doubtful(s, scale))
        return UNBOUNDED;
    double reach = REACH + ROUNDING * extent(scale.extents);
    if (pg_is_arc(s)) {
        // Nowhere is an arc farther from its chord, or a major arc from the chord's middle, than the sagitta.
        reach += std::fabs(s.bulge) * pg_dist(s.p, s.q) / 2.0 + arc_rounding(s);
        reach += std::min(s.radius, off_circle(TOUCH * scale.largest_radius, s.radius));
        reach += off_circle(LAST_DIGITS * scale.largest_radius * scale.largest_radius, s.radius);
    }
    return widened(chord_box(s), reach);
}

pg_box_tree pg_boxes_new(int count)
{
    pg_box_tree tree{count, 1, nullptr};
    while (tree.leaves < count)
        tree.leaves *= 2;
    const std::size_t nodes = 2 * static_cast<std::size_t>(tree.leaves);
    tree.nodes = static_cast<pg_box*>(acad_malloc(nodes * sizeof(pg_box)));
    if (tree.nodes)
        std::fill_n(tree.nodes, nodes, EMPTY);
    return tree;
}

void pg_boxes_free(pg_box_tree* tree)
{
    acad_free(tree->nodes);
    *tree = {};
}

void pg_boxes_set(pg_box_tree* tree, int index, const pg_box& box)
{
    pg_box* nodes = tree->nodes;
    std::size_t at = static_cast<std::size_t>(tree->leaves) + static_cast<std::size_t>(index);
    nodes[at] = box;
    for (at /= 2; at > 0; at /= 2)
        nodes[at] = united(nodes[2 * at], nodes[2 * at + 1]);
}

void pg_boxes_remove(pg_box_tree* tree, int index)
{
    pg_boxes_set(tree, index, EMPTY);
}

int pg_boxes_next(const pg_box_tree& tree, const pg_box& box, int from)
{
    if (!tree.nodes || from >= tree.count)
        return -1;
    const std::size_t leaves = static_cast<std::size_t>(tree.leaves);
    std::size_t at = leaves + static_cast<std::size_t>(from);
    for (;;) {
        if (pg_boxes_meet(tree.nodes[at], box)) {
            if (at >= leaves)
                return static_cast<int>(at - leaves);
            at *= 2;
            continue;
        }
        // What lies behind the whole of this node: its sibling, or that of the first parent that is a left one.
        while (at & 1)
            at /= 2;
        if (at == 0)
            return -1;
        ++at;
    }
}
