// crossing.h: where one chain first crosses another.
#pragma once

#include "polygon/node.h"

// The first crossing along `a`; on one segment of `a` the one nearest to its start. Crossings nearer than
// `tolerance` to either end of a's segment don't count. Writes the distance from the start of that segment,
// the side (-1: b goes from left to right of a's direction there or along it, else 1) and the point.
// 0 when there is none; nothing is written then. On an arc the distance is told as by pg_segment_distance.
int pg_first_crossing(const pg_node* a, const pg_node* b, double* out_distance, int* out_side,
                      double* out_point, double tolerance);
