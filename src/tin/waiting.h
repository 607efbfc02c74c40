// waiting.h: the points that wait for their insertion, kept in groups so that buckets are shared by the group.
//
// While a run has groups, a waiting point is in no bucket; its group belongs to a triangle. A point is taken
// out just before its insertion, and from then on is the bucket's matter.
#pragma once

#include "tin/network.h"

// A triangle of a run, with the groups that wait in it.
struct tin_group;
struct grouped_triangle : tin_triangle {
    tin_group* groups;
};

// Puts all of `points` into the two triangles of the frame. false: no groups were made, the buckets are to do.
bool waiting_begin(tin_network* network);
// The point's own bucket link, in the triangle in which it waited.
void waiting_take(tin_network* network, tin_point* point);
// Shares the groups of `first` and `second` (may be null): to `a` what lies inside edges_a, to `b` (may be
// null: no such test) what lies inside edges_b, to `rest` what is left.
void waiting_share(tin_network* network, tin_triangle* first, tin_triangle* second, tin_triangle* a,
                   tin_triangle* b, tin_triangle* rest);
// All that still waits goes into the buckets; there are no groups any more.
void waiting_end(tin_network* network);
