// rotate_to_chain.h: texts and symbols are turned to run along a polyline.
#pragma once

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

// Straight first and last segments are drawn out by 1000, so that objects beyond the ends find the chain too.
// At the end it is the last vertex's own bulge that has to be 0, not that of the segment which ends there.
void draw_out_ends(pl_vertex* chain);

// Angle of an object along a direction (a unit vector), radians: turned by half a circle where it would stand
// on its head in a view with that twist.
double readable_angle(const double* direction, double view_angle);

// Values: entity name of a polyline, selection set, twist of the view in radians. Answers nil. RTNORM in all
// cases.
int rotate_to_chain(const resbuf* args);
