// point_tree.h: the points of a run by place, halved down to a few, for questions about what lies near an edge.
//
// Nothing is added or taken out. Who asks keeps marks of his own in the nodes, by which he leaves parts out.
#pragma once

#include <algorithm>
#include <cmath>

#include "tin/network.h"

struct tree_spot {
    double x, y;
    tin_point* point;
};

// Node 1 is the root, the halves of node k are 2k and 2k+1; those from `leaves` on are leaves.
struct tree_node {
    double at; // of the lower half no coordinate is greater, of the upper one none is less
    tin_triangle* near;
    std::uint8_t by_x;          // the coordinate that was halved
    std::uint8_t free, waiting; // in leaves a bit for each point; else 0 when there is none below
};

// The ground of a node, its sides included.
struct tree_cell {
    double x0, x1, y0, y1;
};

struct point_tree {
    tree_spot* spots; // by leaf
    tree_node* nodes;
    std::uint32_t count, leaves;
    double x0, x1, y0, y1; // of all points
};

constexpr std::uint32_t LEAF_POINTS = 8;

// A tree of the points of a list, each of which then knows its place in it; null, the points as they were, when
// one has no place in an order or the heap is exhausted.
point_tree* point_tree_new(tin_point* list);
void point_tree_free(point_tree* tree);

// A point of a tree has, instead of a triangle, its place in the tree, with a mark that no triangle's address
// has.
inline void set_tree_place(tin_point* point, std::uint32_t place)
{
    point->place = std::uintptr_t{place} * 2 + 1;
}
inline bool has_tree_place(const tin_point* point)
{
    return point->place & 1;
}
inline std::uint32_t tree_place(const tin_point* point)
{
    return static_cast<std::uint32_t>(point->place / 2);
}

inline std::uint32_t first_of_leaf(const point_tree& tree, std::uint32_t leaf)
{
    return static_cast<std::uint32_t>(std::uint64_t{tree.count} * leaf / tree.leaves);
}
inline std::uint32_t leaf_of(const point_tree& tree, std::uint32_t place)
{
    return static_cast<std::uint32_t>(((std::uint64_t{place} + 1) * tree.leaves - 1) / tree.count);
}

// Twice the area of a triangle, negative when it is clockwise.
inline double turn(const tin_place& a, const tin_place& b, double x, double y)
{
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

// The place is as near to the segment as `reach`, a little more at its ends.
inline bool is_near_segment(const tin_place& a, const tin_place& b, double reach, double x, double y)
{
    const double dx = b.x - a.x, dy = b.y - a.y, length = std::sqrt(dx * dx + dy * dy);
    if (length <= reach)
        return std::fabs(x - a.x) <= 2 * reach && std::fabs(y - a.y) <= 2 * reach;
    if (std::fabs(turn(a, b, x, y)) > reach * length)
        return false;
    const double along = dx * (x - a.x) + dy * (y - a.y);
    return along >= -reach * length && along <= (length + reach) * length;
}

// The part of a segment on one side of a level, in x or in y.
inline void cut_segment(tin_place& inner, tin_place& outer, bool by_x, double level)
{
    const double from = by_x ? inner.x : inner.y, to = by_x ? outer.x : outer.y;
    const double part = (level - from) / (to - from);
    outer = {inner.x + part * (outer.x - inner.x), inner.y + part * (outer.y - inner.y)};
}

// Calls `leaf` with the numbers of all leaves that may have points as near to the segment a-b as `reach`, and
// of no part for which `enter` says no.
template <class enter_node, class visit_leaf>
void near_segment(const point_tree& tree, std::uint32_t node, tin_place a, tin_place b, double reach,
                  const enter_node& enter, const visit_leaf& leaf)
{
    while (enter(node)) {
        if (node >= tree.leaves) {
            leaf(node - tree.leaves);
            return;
        }
        const tree_node& n = tree.nodes[node];
        const double at_a = n.by_x ? a.x : a.y, at_b = n.by_x ? b.x : b.y;
        const double low = n.at - reach, high = n.at + reach;
        if (at_a < low && at_b < low) {
            node = 2 * node;
            continue;
        }
        if (at_a > high && at_b > high) {
            node = 2 * node + 1;
            continue;
        }
        tin_place low_a = a, low_b = b;
        if (at_a > high + reach && at_b <= high + reach)
            cut_segment(low_b, low_a, n.by_x, high + reach);
        else if (at_b > high + reach && at_a <= high + reach)
            cut_segment(low_a, low_b, n.by_x, high + reach);
        near_segment(tree, 2 * node, low_a, low_b, reach, enter, leaf);
        if (at_a < low - reach && at_b >= low - reach)
            cut_segment(b, a, n.by_x, low - reach);
        else if (at_b < low - reach && at_a >= low - reach)
            cut_segment(a, b, n.by_x, low - reach);
        node = 2 * node + 1;
    }
}

// Calls `leaf` with the numbers of leaves, those that may have points in a box among them, until it says no; of
// no part for which `enter` says no.
template <class enter_node, class visit_leaf>
bool near_box(const point_tree& tree, std::uint32_t node, const tin_place& low, const tin_place& high,
              const enter_node& enter, const visit_leaf& leaf)
{
    while (enter(node)) {
        if (node >= tree.leaves)
            return leaf(node - tree.leaves);
        const tree_node& n = tree.nodes[node];
        if ((n.by_x ? high.x : high.y) < n.at)
            node = 2 * node;
        else if ((n.by_x ? low.x : low.y) > n.at)
            node = 2 * node + 1;
        else if (!near_box(tree, 2 * node, low, high, enter, leaf))
            return false;
        else
            node = 2 * node + 1;
    }
    return true;
}

// Calls `visit` with the places of all points in a triangle or as near to it as `reach`, and some more at its
// corners.
void near_triangle(const point_tree& tree, const tin_place (&corner)[3], double reach, void* context,
                   void (*visit)(void* context, std::uint32_t place));
