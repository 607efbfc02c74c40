// insert.h: a point becomes a corner of the network.
#pragma once

#include "tin/network.h"

// Splits the triangle that holds the point, which its `tri` names, and swaps edges around it until the swap
// test is content. 1; or 0 with a message, the network unchanged, when no triangle holds the point.
int tin_insert_point(tin_network* network, tin_point* point);
// One step of that: the edge p1-p2 between `near`, which has the new point as its first corner, and its
// neighbour `far`, and if it is swapped the two edges behind it.
void tin_swap_edges(tin_network* network, tin_point* p1, tin_point* p2, tin_triangle* far, tin_point* new_point,
                    tin_triangle* near);
