// face_walk.h: the way round a face of a surface.
#pragma once

#include "topology/heap_array.h"
#include "topology/surface_net.h"

struct face_step {
    std::int32_t edge; // without sign
    std::int32_t from; // the node that the step leaves
};

enum class WalkEnd {
    CLOSED,    // back at the first node
    CAUGHT,    // at an edge that was already walked
    NO_WAY_ON, // also without memory
};

struct face_walk {
    HeapArray<face_step> steps;
    std::int32_t last_node = 0; // to which the last step leads
    WalkEnd end = WalkEnd::NO_WAY_ON;
};

// The step on that turns left most, coming to a node by a step; edge 0: there is none.
face_step next_step(const SurfaceNet& surface, const face_step& step);
// Walks from an edge. `number` is one of the surface's own walks, never used before.
void walk_face(const SurfaceNet& surface, std::int32_t edge, bool forward, std::int64_t number,
               face_walk* walk);
// The edges of a walk as a shape; null without memory.
ShapeObj* shape_of(const face_walk& walk);
