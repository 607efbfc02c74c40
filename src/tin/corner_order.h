// corner_order.h: the points of a run by direction from a corner of the frame.
//
// Edges to the frame's corners cross all the ground that no point has been inserted in yet; what lies near such
// an edge is a short piece of this order.
#pragma once

#include "tin/point_tree.h"

struct corner_order {
    std::uint64_t* entries; // the direction in the upper half, the place in the lower one; null: not made yet
    double x, y, w, h;      // the corner, and the size of the box of all points
    std::uint64_t work;     // nodes that were looked at for want of it
    bool given_up;
};

void corner_order_begin(corner_order* order, const tin_point* corner, double w, double h);
// Sorts the points by direction. false: there is no room for it.
bool corner_order_make(corner_order* order, const point_tree& tree);
// The entries of all points as near to the line from the corner through a place as `reach`, and some more.
struct order_piece {
    const std::uint64_t *first, *last;
};
order_piece corner_order_near(const corner_order& order, const point_tree& tree, const tin_place& through,
                              double reach);
