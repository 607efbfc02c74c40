// points.h: distances, directions and frames in the plane.
//
// A point or vector is three doubles x, y, z; only x and y are looked at. Angles are radians unless
// a name says otherwise.
#pragma once

#include "polygon/node.h"

double pg_dist(const double* a, const double* b);
double pg_dist_sq(const double* a, const double* b);
double pg_dist_sq(const pg_node& a, const pg_node& b);

// Whether two places are one within the length tolerance, in x and in y each.
bool pg_same_place(const pg_node& a, const pg_node& b);

// Direction from one point to another, 0 to two pi. Coincident points: 0.
double pg_angle(const double* from, const double* to);

// Area of a triangle, positive when its third point lies left of the line from the first to the second.
double pg_tri_area(double x0, double y0, double x1, double y1, double x2, double y2);

// The point `along` from a in the direction of b and `off` to the left of it; z is 0. a and b must
// be apart.
void pg_frame_point(const double* a, const double* b, double along, double off, double* out);

// Unit normal to the right of a vector; z is 0. A vector along x is tilted by 1e-7 first.
void pg_right_normal(const double* vector, double* out);

// Counter-clockwise angle from the ray p1-p0 to the ray p1-p2, in degrees, 0 up to but not 360.
double pg_turn_angle(const double* p0, const double* p1, const double* p2);
