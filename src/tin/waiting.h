// waiting.h: the points that wait for their insertion.
//
// A waiting point lies well inside one triangle, and that is all there is to know of it: it is in no bucket,
// and is looked for when its turn comes. Only near an edge, where rounding decides, it is in the bucket of a
// triangle and is shared out by the inside test at each change. So a change costs as much as there are points
// near its new edges, and not as there are points beside them; without that, sorted points cost the square of
// their number.
//   What is left of that cost: points all on the frame's diagonal, inserted along it (8000 take half a second).
// Each new edge there is near all the others, and on which side of it they come is rounding's answer for that
// edge alone; it doesn't follow from the answers of the edges before.
#pragma once

#include "tin/locate.h"

// A cell of a bucket during a run.
struct waiting_link : tin_link {
    std::uint32_t place;
    bool for_good; // it stays in buckets until its insertion
};

// Corners of the two triangles of a swap, as they were before it.
struct swap_corners {
    tin_point* corner[2][3];
};
inline swap_corners corners_of(const tin_triangle* first, const tin_triangle* second)
{
    return {{{first->corner[0], first->corner[1], first->corner[2]},
             {second->corner[0], second->corner[1], second->corner[2]}}};
}

// Finds out which of `points` lie near the diagonal of the frame; these go into the buckets of its two
// triangles. false: nothing is kept here, all points are to be put into buckets.
bool waiting_begin(tin_network* network);
// In a large network all of what a point needs is somewhere else. It is called for while the points before it
// are inserted, each step for a point when the step before has come in: for `later`, for `soon` and for `next`,
// the three in this order in time. Any may be null.
void waiting_call_for(const tin_network* network, const tin_point* next, const tin_point* soon,
                      const tin_point* later);
// The point's `tri` becomes the triangle in which it waits. It waits no more.
void waiting_take(tin_network* network, tin_point* point);
// To be called before a triangle is split at a point: what lies near its new edges goes into its bucket. Parts
// of the triangle have in them what it had.
void waiting_split(tin_network* network, const tin_point* point, tin_triangle* triangle, tin_triangle* a,
                   tin_triangle* b);
// Nothing waits well inside two triangles; not always found out.
bool waiting_none_in(const tin_network* network, tin_triangle* first, tin_triangle* second);
// To be called when two triangles have been swapped: what lies near the edge between them goes into the bucket
// of one of the two, to be shared again. The first form is for a swap of the diagonal of a quadrilateral, now
// from-to; `none_in` is the answer from before it.
void waiting_swapped(tin_network* network, tin_triangle* first, tin_triangle* second,
                     const swap_corners& before, const tin_point* from, const tin_point* to, bool none_in);
void waiting_swapped(tin_network* network, tin_triangle* first, tin_triangle* second,
                     const swap_corners& before);
// To be called for a triangle whose bucket is shared: points well inside leave the bucket.
void waiting_settle(tin_network* network, tin_triangle* triangle);
// The triangles that may hold a point, as triangles_near has them; 0: any may.
int waiting_holders(const tin_network* network, const tin_point* point, tin_triangle* (&out)[NEAR_TRIANGLES]);
// All that still waits goes into the buckets.
void waiting_end(tin_network* network);
