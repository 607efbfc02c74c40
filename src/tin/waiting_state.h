// waiting_state.h: what a run knows of the waiting points, for the files that keep it.
#pragma once

#include "tin/corner_order.h"
#include "tin/waiting.h"

struct tin_waiting {
    point_tree* tree;
    double reach, thin;
    corner_order orders[4];
    double area;        // of the box of all points
    std::uint32_t left; // points that wait
    waiting_link* spare;
    tin_triangle* last; // the one of the last point taken
    tin_place last_place;
    std::uint32_t leaf;           // node of the last point taken
    int depth;                    // of that node
    tree_cell cells[32];          // of that node and those above it, by depth
    bool folded;                  // there was a clockwise triangle
    bool torn;                    // sides may name wrong neighbours
    const tin_point* not_in_fold; // a point of which it is known that no such one lies over it
};

inline tree_node& leaf_node(const tin_waiting* w, std::uint32_t place)
{
    return w->tree->nodes[w->tree->leaves + leaf_of(*w->tree, place)];
}

inline std::uint8_t leaf_bit(const tin_waiting* w, std::uint32_t place)
{
    return static_cast<std::uint8_t>(1u << (place - first_of_leaf(*w->tree, leaf_of(*w->tree, place))));
}

inline bool is_free(const tin_waiting* w, std::uint32_t place)
{
    return leaf_node(w, place).free & leaf_bit(w, place);
}

inline bool is_well_inside(const tin_waiting* w, const tin_point* const (&corner)[3], const tree_spot& spot)
{
    return is_well_inside(corner, spot.x, spot.y, w->reach / 2);
}

// The link of a point in the bucket of its triangle; null: there was no room for one.
waiting_link* link_of(const tin_point* point);
// Puts a point into the bucket of a triangle. Without room for its link the point is looked for in the whole
// network when its turn comes.
void waiting_bind(tin_waiting* w, std::uint32_t place, tin_triangle* triangle, bool for_good);
