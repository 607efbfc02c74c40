// chain_queries.h: which segment of a chain lies at a point, arc segments included. In the plane; the
// closing segment of a closed polyline isn't in its chain and is not found.
#pragma once

#include "drawing/vertex_chain.h"

// The vertex at which the picked segment starts, null when the pick's foot falls on none. Of equal distances
// the later segment wins. A pick exactly on a vertex gives that vertex, so the last one too, which has no
// segment behind it.
pl_vertex* chain_locate_pick(pl_vertex* chain, const ads_point pick);

// The direction of the chain beside a point, as a unit vector (x, y), from the nearest segment; of equal
// distances from the later one. A straight segment's has the point on its left; a point within 0.0001 of the
// segment gets the direction from start to end, (0, 0) of a segment without length. An arc's runs clockwise.
// 1 when a segment is nearer than `tolerance`, else 0 and `normal` says nothing.
int chain_normal_at(const pl_vertex* chain, const ads_point point, double tolerance, double* normal);
