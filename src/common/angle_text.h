// angle_text.h: directions of lines.
#pragma once

// Direction from `from` to `to`, both x and y at least: radians counter-clockwise from the x axis, 0 to
// two pi. 0.0 for points closer than 1e-6.
double point_angle(const double* from, const double* to);
