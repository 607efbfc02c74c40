// measures.h: nearest point, length, and positions along a chain. Arcs are treated as arcs.
#pragma once

#include "polygon/node.h"

// The least squared distance from `point` to the chain. `out` gets the nearest point (x and y only), for a
// point beyond an arc's circle the arc's centre. `foot_sq`, when not null, gets the least squared distance
// from a foot on a segment's line to an end of that segment. An empty chain answers PG_NO_VALUE and writes
// nothing.
double pg_closest(const double* point, const pg_node* chain, double* foot_sq, double* out);

// Sum of the lengths of lines and arcs.
double pg_length(const pg_node* chain);

// Length along the chain from its head to `point`; the whole length when the point isn't on the chain.
// On an arc it is measured from the arc's `start`, so on a clockwise arc from its far end; to a node behind an
// arc, along the arc's chord.
double pg_distance_along(const pg_node* chain, const double* point);

// The point at a distance along the chain and the direction of the segment there, in radians; on an arc from
// its `start` again, as if it ran counter-clockwise, and without z. 0 when the chain is shorter, or only as
// long and ends in an arc; nothing is written then.
int pg_point_at(const pg_node* chain, double distance, double* out, double* direction);
