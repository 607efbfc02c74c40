// plane.cpp: distances, directions and crossings for modules. Needs nothing of the rest of the host.
#include <cmath>
#include <numbers>

#include "hostapi/ads.h"

ads_real acutDistance(const ads_point a, const ads_point b)
{
    return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
}

ads_real acutAngle(const ads_point a, const ads_point b)
{
    const double angle = std::atan2(b[1] - a[1], b[0] - a[0]);
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

void acutPolar(const ads_point from, ads_real angle, ads_real distance, ads_point out)
{
    const double x = from[0] + distance * std::cos(angle), y = from[1] + distance * std::sin(angle),
                 z = from[2];
    out[0] = x;
    out[1] = y;
    out[2] = z;
}

int acdbInters(const ads_point a1, const ads_point a2, const ads_point b1, const ads_point b2, int on_segments,
               ads_point out)
{
    const double ax = a2[0] - a1[0], ay = a2[1] - a1[1], bx = b2[0] - b1[0], by = b2[1] - b1[1];
    const double cross = ax * by - ay * bx;
    const double size = std::hypot(ax, ay) * std::hypot(bx, by);
    if (size == 0 || std::fabs(cross) <= 1e-12 * size)
        return RTERROR;
    const double wx = b1[0] - a1[0], wy = b1[1] - a1[1];
    const double s = (wx * by - wy * bx) / cross, t = (wx * ay - wy * ax) / cross;
    constexpr double slack = 1e-10;
    if (on_segments && (s < -slack || s > 1 + slack || t < -slack || t > 1 + slack))
        return RTERROR;
    const double za = a1[2] + s * (a2[2] - a1[2]), zb = b1[2] + t * (b2[2] - b1[2]);
    if (std::fabs(za - zb) > 1e-8 * (1 + std::fabs(za)))
        return RTERROR; // lines in space that pass each other
    out[0] = a1[0] + s * ax;
    out[1] = a1[1] + s * ay;
    out[2] = za;
    return RTNORM;
}
