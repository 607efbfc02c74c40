// pointer_arrow.h: the arrow that shows where the pointer stands and where it looks.
#pragma once

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

// Corners of the arrow: 0 its point, exactly on `tip`; 1 to the left of it, 2 to the right. `size` is its
// length.
void pointer_arrow_corners(const pl_vertex& cur, const pl_vertex& other, const pl_vertex& tip, double rel_angle,
                           double size, ads_point corners[3]);

// Draws it in the complement colour: drawn a second time at its place it vanishes.
void draw_pointer_arrow(const pl_vertex& cur, const pl_vertex& other, const pl_vertex& tip, double rel_angle,
                        double size);
