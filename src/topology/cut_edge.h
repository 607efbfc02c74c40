// cut_edge.h: the steps that cutting edges by edges and cutting them by a chain have in common.
#pragma once

#include "topology/box_index.h"
#include "topology/surface_net.h"

// Adds the box of the edge whose id comes next (boxes are numbered from 0). False when the heap is exhausted.
bool add_edge_box(const SurfaceNet& surface, BoxIndex* boxes);
// Cuts an edge at one node or at two, of which the first lies nearer to its low node; `second` 0: there is
// none. False if both are ends of it.
bool cut_at(SurfaceNet* surface, std::int32_t edge_id, std::int32_t first, std::int32_t second);
