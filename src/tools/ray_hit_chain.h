// ray_hit_chain.h: where a ray meets a chain of vertices.
#pragma once

#include "drawing/vertex_chain.h"

// A new vertex (pl_free_vertices) at the hit of the ray from b through a with the chain, its height on the
// ray. Null when nothing is hit or the heap is exhausted. The first segment in the chain's order that is hit
// counts, not the nearest one. Segments are chords; bulges are ignored.
pl_vertex* ray_hit_chain(const pl_vertex& a, const pl_vertex& b, const pl_vertex* chain);
