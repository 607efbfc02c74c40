// turn_angle.h: how far a walk turns at a node.
#pragma once

#include "topology/objects.h"

// Degrees counter-clockwise from the way back (at to before) to the way on (at to after), in x and y: 0 when
// both are the same, 90 a right turn, 180 straight on, 270 a left turn; 0 up to but not 360. Directions within
// 1e-6 of upright in x count as upright.
double turn_angle(const NodeObj& before, const NodeObj& at, const NodeObj& after);
// Its two parts: radians from -pi to pi, and the turn between two of them.
double direction_of_way(const NodeObj& from, const NodeObj& to);
double turn_between(double back, double on);
