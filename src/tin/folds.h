// folds.h: triangles that were made clockwise by force, and lie on others. The points under them stay in
// buckets until their insertion.
#pragma once

#include "tin/waiting.h"

// Two triangles, as they are after a swap and as they were.
struct fold {
    tin_network* network;
    tin_triangle *first, *second;
    const swap_corners& before;
};

// What lies under a triangle of the three corners goes into a bucket for good.
void bind_fold(const fold& f, tin_point* const (&corner)[3]);
// The same for each of the two that is clockwise.
void bind_folds(const fold& f);
// The same edges are around both pairs of triangles, each the same way.
bool is_same_outline(const swap_corners& p, const swap_corners& q);
