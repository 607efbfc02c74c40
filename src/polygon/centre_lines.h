// centre_lines.h: the lines inside an outline that keep equal distance from its sides.
#pragma once

#include "polygon/node.h"

// Kinds of a ring that pg_centre_lines answers.
constexpr std::int32_t CL_NETWORK = 0;  // a branch of the network
constexpr std::int32_t CL_RAY = 1;      // a starting ray
constexpr std::int32_t CL_TOUCHING = 2; // touches the outline, or its angle had to be guarded

// Centre lines of a chain of straight sides (bulges are ignored), closed or open, on its left. Sides at varying
// elevation lean the bisectors by their grades over `slope` (1.0: 45 degrees), which must not be 0.
// `orientation` 0 takes the chain as it is; else it is turned round when pg_orientation gives another value.
// `with_touching` 1 adds those of kind CL_TOUCHING. A new list of rings, the last made first (pg_free_rings); z
// is the height of the planes that rise from the sides at `slope`, so on a level outline a distance of d stands
// d slopes higher. Null when there is nothing, a coordinate is no number, the heap is exhausted or the user
// broke off (acedUsrBrk).
pg_ring* pg_centre_lines(const pg_node* chain, double slope, int orientation, int with_touching);

// Foot of the perpendicular from p on the infinite line from a to b, in the plane; z is 0. a where a and b are
// one.
void cl_foot(const double* a, const double* b, const double* p, double* out);
