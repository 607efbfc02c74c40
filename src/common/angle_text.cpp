#include "common/angle_text.h"

#include <cmath>

namespace
{

constexpr double TWO_PI = 6.283185307179586;
constexpr double SAME_PLACE = 1e-6;

} // namespace

double point_angle(const double* from, const double* to)
{
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    const double distance = std::sqrt(dx * dx + dy * dy);
    if (distance < SAME_PLACE)
        return 0.0;
    const double angle = std::acos(dx / distance);
    return dy < 0.0 ? TWO_PI - angle : angle;
}
