// segment_arc.h: the circle of a chain's arc segment.
#pragma once

#include "drawing/vertex_chain.h"

struct segment_arc {
    double centre[2];
    double radius;
    double from, to; // polar angles of the ends about the centre, counter-clockwise: `from` is that of
                     // the segment's start for a positive bulge and of its end for a negative one;
                     // from <= to < from + two pi
};

// The right-hand unit normal of d, both (x, y). d is stretched to length 5; one along x is tilted by
// 1e-7 first, which gives its normal a definite side.
void scaled_normal(double* d, double* normal);

// The arc of the segment from a to b. The bulge of a must not be 0, and a and b must be apart. The centre
// lies along the scaled normal of the chord, so that it is off by the tilt where the chord runs along x.
segment_arc arc_of_segment(const pl_vertex& a, const pl_vertex& b);
