// segment_foot.h: where the perpendicular of a point meets a segment of a chain, in the plane.
#pragma once

#include "drawing/vertex_chain.h"

// What a point has of a segment: its distance, and what the distance is measured along: the foot on a straight
// segment, the centre of an arc.
struct segment_foot {
    double distance;
    double x, y;
    bool on_arc;
};

// False when no perpendicular of the segment from a to b goes through the point. The foot on a straight segment
// may lie off its box by 1e-6.
bool foot_on_segment(const pl_vertex& a, const pl_vertex& b, const ads_point point, segment_foot* foot);

// Direction of the segment beside the point, as chain_normal_at gives it.
void direction_at(const pl_vertex& a, const pl_vertex& b, const ads_point point, const segment_foot& foot,
                  double* normal);
