// pointer_angles.h: angles of the pointer tool. In degrees counter-clockwise from the x axis, unless said
// otherwise.
#pragma once

#include "drawing/vertex_chain.h"

constexpr double DEGREES_PER_RADIAN = 57.29577951308232;

// angle + delta, brought back once: above 360 it loses 360, then below 0 it gains 360. 360 itself stays.
double rotate_angle(double angle, double delta);

// A direction brought back once, with 360 as 0: what looks along the x axis goes exactly along it.
double direction_in_circle(double angle);

// Direction from a to b in the plan, in radians, 0 to two pi. 0.0 only for points with no distance at all: a
// segment of any length has a direction here, however short.
double point_angle(const pl_vertex& a, const pl_vertex& b);
double direction_degrees(const pl_vertex& a, const pl_vertex& b);

// The pointer's turn against a segment of direction `base` by the code and the decimal degrees of a bearing:
//   1 north-east, 2 south-east, 3 south-west, 4 north-west, 5 azimuth clockwise from north
//   6 from the backsight counter-clockwise, 7 clockwise; 8 deflection counter-clockwise, 9 clockwise
// Brought back once. Any other code counts as 5.
double bearing_turn(int code, double degrees, double base);
