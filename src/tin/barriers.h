// barriers.h: segments that must become edges.
#pragma once

#include "tin/network.h"

// A barrier's record, not yet in a list; null when the heap is exhausted.
tin_barrier* barrier_new(tin_point* from, tin_point* to);
// Splits barriers at the waiting points that lie on them.
void tin_split_barriers(tin_network* network);
// Forces the barrier into the network by swapping the edges that it crosses. `start` has barrier->from as a
// corner, `end` has barrier->to. 0 only if `retry` is 1 and it can't be forced; else 1, also after a message
// that says why it was given up.
int connect_barrier_points(tin_network* network, const tin_barrier* barrier, tin_triangle* start,
                           tin_triangle* end, int retry);
// Inserts the ends of all barriers and connects them, with a point in the middle where that is not to be done
// otherwise. false: the user broke off.
bool tin_insert_barriers(tin_network* network);
// Polls the break key; true with a message once it was pressed.
bool tin_cancelled();
