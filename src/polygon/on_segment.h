// on_segment.h: whether a point lies on a segment of a chain, as positions along a chain and cuts take it.
#pragma once

#include "polygon/segment_pairs.h"

// Within 1e-6.
bool pg_is_at(const double* place, const double* point);

// An arc: between its ends, which are excluded, and less than 0.1 off its circle. A straight segment: seen from
// p in its direction within 1e-6 radians, and no farther than q. A point at p itself has the direction 0, and
// so lies on segments that run along x alone.
bool pg_is_on_segment(const pg_segment& s, const double* point);
