// spline.h: points on a curve given by control points and knots. Inner header.
#pragma once

#include <vector>

#include "host/database/transform.h"

namespace host::db
{

struct spline_curve {
    int degree = 3;
    std::vector<double> knots, weights; // weights empty: all 1
    std::vector<vec> controls;
};

// Points along the curve, close enough for looking and picking (16 a knot span); empty when the curve is not
// well formed.
std::vector<vec> spline_points(const spline_curve& curve);

} // namespace host::db
