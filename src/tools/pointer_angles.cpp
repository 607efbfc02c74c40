#include "tools/pointer_angles.h"

#include <algorithm>
#include <cmath>

#include "common/angle_text.h"

namespace
{

enum bearing_code { AZIMUTH = 5, BACKSIGHT_LEFT, BACKSIGHT_RIGHT, DEFLECTION_LEFT, DEFLECTION_RIGHT };

} // namespace

double rotate_angle(double angle, double delta)
{
    double turned = angle + delta;
    if (turned > 360.0)
        turned -= 360.0;
    if (turned < 0.0)
        turned += 360.0;
    return turned;
}

double direction_in_circle(double angle)
{
    if (angle < 0.0)
        angle += 360.0;
    return angle >= 360.0 ? angle - 360.0 : angle;
}

double point_angle(const pl_vertex& a, const pl_vertex& b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (length == 0.0)
        return 0.0;
    // Where the squares nearly underflow dx can come out longer than the whole.
    const double angle = std::acos(std::clamp(dx / length, -1.0, 1.0));
    return dy < 0.0 ? TWO_PI - angle : angle;
}

double direction_degrees(const pl_vertex& a, const pl_vertex& b)
{
    return point_angle(a, b) * DEGREES_PER_RADIAN;
}

double bearing_turn(int code, double degrees, double base)
{
    switch (code) {
    case BACKSIGHT_LEFT:
        return rotate_angle(degrees, -180.0);
    case BACKSIGHT_RIGHT:
        return rotate_angle(-degrees, -180.0);
    case DEFLECTION_LEFT:
        return rotate_angle(degrees, 0.0);
    case DEFLECTION_RIGHT:
        return rotate_angle(-degrees, 0.0);
    default:
        const int quadrant = code >= 1 && code < AZIMUTH ? code : AZIMUTH;
        return rotate_angle(bearing_direction({quadrant, degrees}), -base);
    }
}
