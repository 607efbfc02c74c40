// curve.h: smooth curves through the points of a chain, and what else the annotation tools do with chains.
//
// A vertex's `type` is its role:
//   0         control point of a curve, or a point of the user's that was taken back
//   1         point worked out on the curve
//   2         a point of the user's: start or end (or a fixed point of a line)
//   3 and up  a point that the user gave between them; later ones have greater numbers
#pragma once

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

constexpr int CONTROL_POINT = 0;
constexpr int CURVE_POINT = 1;
constexpr int USER_POINT = 2;

// New chain of user's points, the caller's (pl_free_vertices). Null when the heap is exhausted.
pl_vertex* chain_of_points(const ads_point* points, int count);

// Puts two Bezier control points between each pair of neighbours. They lie along the tangents, at a `k`-th
// of the distance of the two; that of the first and of the last vertex on the vertex itself. Sets `prev`.
// False, with the vertices as they were, when the heap is exhausted.
bool curve_controls(pl_vertex* head, double k);

// Replaces each two control points by the points at step, 2 step, ... below 1 of the curve between their
// neighbours, up to the first group of four vertices that isn't complete. Sets `prev`. False, with the
// vertices as they were, for a step below a millionth and when the heap is exhausted.
bool curve_points(pl_vertex* head, double step);

// Both together; when that fails only the user's points are left.
bool chain_curve(pl_vertex* head, double k, double step);
// Releases all vertices behind the first that aren't the user's. Sets `prev`.
void chain_uncurve(pl_vertex* head);

// Reverses the next links (not `prev`) and answers the new head.
pl_vertex* chain_reverse(pl_vertex* head);

// New vertex at `fraction` of the plan length, in x and y on its segment, z and type 0; linked in with
// `prev`. Null when the chain ends before, or the heap is exhausted.
pl_vertex* chain_split_at(pl_vertex* head, double fraction);

double chain_distance(const pl_vertex& a, const pl_vertex& b); // with z

bool point_is_finite(const double* point);
// Draws the chain on the current layer without arcs; nothing when a coordinate isn't finite.
void chain_write_plain(pl_vertex* head);
