#include "topology/turn_angle.h"

#include <cmath>

#include "common/tolerances.h"

static constexpr double PI = 3.141592653589793;

double direction_of_way(const NodeObj& from, const NodeObj& to)
{
    const double dx = to.x - from.x, dy = to.y - from.y;
    if (std::fabs(dx) < LENGTH_TOL)
        return dy < 0 ? -PI / 2 : PI / 2;
    return std::atan2(dy, dx);
}

double turn_between(double back, double on)
{
    if (back < on)
        back += 2 * PI;
    const double turn = 360.0 - (back - on) * 180.0 / PI;
    return turn >= 360.0 ? turn - 360.0 : turn < 0 ? turn + 360.0 : turn;
}

double turn_angle(const NodeObj& before, const NodeObj& at, const NodeObj& after)
{
    return turn_between(direction_of_way(at, before), direction_of_way(at, after));
}
