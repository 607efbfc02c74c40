// segment_boxes.h: which segments of a chain can meet a given one.
//
// Boxes stand in a tree over the order of the chain, so that answers come in that order. Chains run from
// place to place, and so neighbours in order are neighbours in the plane.
//
// A box holds all points that the intersections may answer for its segment, with their tolerances and their
// rounding; two segments whose boxes don't meet have no points. A segment that leaves this open (not finite,
// or with a length or sweep that rounding can turn round) has a box without bounds.
#pragma once

#include "polygon/segment_pairs.h"

struct pg_box {
    double x0, y0, x1, y1;
};

constexpr bool pg_boxes_meet(const pg_box& a, const pg_box& b)
{
    return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
}

// What boxes must allow for: the measures of all segments that are to be compared with one another. Starts
// clear ({}), takes them all, then serves pg_segment_box. Segments made later, within the same extents and with
// radii up to twice the largest, may use it as it is.
struct pg_box_scale {
    bool any;
    pg_box extents;
    double largest_radius;
};
void pg_scale_add(pg_box_scale* scale, const pg_segment& segment);
pg_box pg_segment_box(const pg_segment& segment, const pg_box_scale& scale);

// Boxes by index, 0 up to count. From the host's heap; goes back with pg_boxes_free.
struct pg_box_tree {
    int count;
    int leaves;    // a power of two
    pg_box* nodes; // 1 is the root, the children of n are 2n and 2n + 1, the leaves come last
};
// A tree whose boxes meet nothing. `nodes` is null when the heap is exhausted; asking that tree finds nothing.
pg_box_tree pg_boxes_new(int count);
void pg_boxes_free(pg_box_tree* tree);
void pg_boxes_set(pg_box_tree* tree, int index, const pg_box& box);
// The box at `index` meets nothing from now on.
void pg_boxes_remove(pg_box_tree* tree, int index);
// The least index from `from` on whose box meets `box`; -1 when there is none.
int pg_boxes_next(const pg_box_tree& tree, const pg_box& box, int from);
