// packed_boxes.h: boxes that stand still, in a tree that is small in memory: eight boxes to a group, the boxes
// of eight groups in a group above them, in single precision.
//
// Boxes are rounded outwards, from an origin near them. What is found holds all that meet; a few may only touch
// after rounding.
#pragma once

#include "polygon/segment_boxes.h"
#include "topology/heap_array.h"

constexpr std::int32_t PACKED_GROUP = 8;
constexpr std::int32_t PACKED_LEVELS = 11; // enough for all numbers

struct packed_group {
    float x0[PACKED_GROUP], y0[PACKED_GROUP], x1[PACKED_GROUP], y1[PACKED_GROUP];
};

// From the host's heap; goes back with packed_boxes_free.
struct packed_boxes {
    double origin[2];
    std::int32_t levels;
    std::int32_t first[PACKED_LEVELS]; // group of each level; those of level 0 hold the boxes themselves
    packed_group* groups;
};

// Boxes that meet nothing. `groups` is null when the heap is exhausted. A coordinate of the origin that isn't
// finite counts as 0.
packed_boxes packed_boxes_new(std::int32_t count, double origin_x, double origin_y);
void packed_boxes_free(packed_boxes* boxes);
// Sets boxes from 0 up in level 0; to be found they must be closed.
void packed_boxes_set(packed_boxes* boxes, std::int32_t i, const pg_box& box);
void packed_boxes_close(packed_boxes* boxes);
// The box meets nothing from now on.
void packed_boxes_remove(packed_boxes* boxes, std::int32_t i);
// Adds the numbers of those that may meet `box`, in no order. False when the heap is exhausted.
bool packed_boxes_find(const packed_boxes& boxes, const pg_box& box, HeapArray<std::int32_t>* found);
