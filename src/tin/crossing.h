// crossing.h: whether two segments meet, by x and y.
#pragma once

#include "tin/network.h"

// 1 if the segments a-b and c-d meet, also if they merely touch, else 0.
int tin_segments_cross(const tin_network* network, const tin_point* a, const tin_point* b, const tin_point* c,
                       const tin_point* d);
// Of two segments of which just one is vertical: RTNORM and the place (x, y) where they meet within 1e-8,
// or RTNONE.
int tin_vertical_cross(const tin_point* a, const tin_point* b, const tin_point* c, const tin_point* d,
                       double* result);
