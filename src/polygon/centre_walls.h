// centre_walls.h: what the sides of an outline hide from one another.
#pragma once

#include <cstddef>
#include <vector>

#include "polygon/centre_boxes.h"

// The sides of an outline below a tree of boxes over their ids.
struct cl_walls {
    const cl_outline* outline = nullptr;
    std::size_t leaves = 0;
    std::vector<cl_box> boxes; // heap order; the leaf of id i is leaves + i
};

void cl_walls_init(cl_walls* walls, const cl_outline& outline);

// Whether a side stands between a place and what is nearest to it of the left or of the right item of a branch.
// Such a place is no part of the diagram, and nothing of the branch is that comes after it: the way from the
// corner where a branch starts, its two items and the straight ways from the place to both enclose a part of
// the inside that no other side can enter. An open outline has no inside: it hides nothing, and lines beyond
// its ends go on as if its sides could be seen through from behind.
bool cl_is_hidden(const cl_walls& walls, const cl_branch& branch, const cl_point& place);
