#include "topology/turn_angle.h"

#include <cmath>

#include "common/tolerances.h"

namespace
{

constexpr double PI = 3.141592653589793;

double direction(const NodeObj& from, const NodeObj& to)
{
    const double dx = to.x - from.x, dy = to.y - from.y;
    if (std::fabs(dx) < LENGTH_TOL)
        return dy < 0 ? -PI / 2 : PI / 2;
    return std::atan2(dy, dx);
}

} // namespace

double turn_angle(const NodeObj& before, const NodeObj& at, const NodeObj& after)
{
    double back = direction(at, before);
    const double on = direction(at, after);
    if (back < on)
        back += 2 * PI;
    const double turn = 360.0 - (back - on) * 180.0 / PI;
    return turn >= 360.0 ? turn - 360.0 : turn < 0 ? turn + 360.0 : turn;
}
