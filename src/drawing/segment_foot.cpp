#include "drawing/segment_foot.h"

#include <algorithm>
#include <cmath>

#include "common/angle_text.h"
#include "common/tolerances.h"
#include "drawing/segment_arc.h"

namespace
{

constexpr double NO_CHORD_SQ = 1e-6;  // stands for the squared length of a chord without length
constexpr double ON_SEGMENT = 0.0001; // nearer than this a foot gives no direction

bool foot_on_line(const pl_vertex& a, const pl_vertex& b, const ads_point point, segment_foot* foot)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    double chord_sq = dx * dx + dy * dy;
    if (chord_sq == 0.0)
        chord_sq = NO_CHORD_SQ;
    const double t = (dx * (point[0] - a.x) + dy * (point[1] - a.y)) / chord_sq;
    const double x = a.x + t * dx, y = a.y + t * dy;
    if (!(x >= std::min(a.x, b.x) - LENGTH_TOL && x <= std::max(a.x, b.x) + LENGTH_TOL &&
          y >= std::min(a.y, b.y) - LENGTH_TOL && y <= std::max(a.y, b.y) + LENGTH_TOL))
        return false;
    *foot = {std::hypot(x - point[0], y - point[1]), x, y, false};
    return true;
}

bool foot_on_arc(const pl_vertex& a, const pl_vertex& b, const ads_point point, segment_foot* foot)
{
    if (a.x == b.x && a.y == b.y)
        return false; // no circle
    const segment_arc arc = arc_of_segment(a, b);
    const double dx = point[0] - arc.centre[0], dy = point[1] - arc.centre[1];
    double angle = std::atan2(dy, dx);
    if (angle < 0.0)
        angle += TWO_PI;
    const auto in_sweep = [&](double at) { return at >= arc.from && at <= arc.to; };
    if (!in_sweep(angle) && !in_sweep(angle + TWO_PI))
        return false;
    *foot = {std::fabs(std::hypot(dx, dy) - arc.radius), arc.centre[0], arc.centre[1], true};
    return true;
}

} // namespace

bool foot_on_segment(const pl_vertex& a, const pl_vertex& b, const ads_point point, segment_foot* foot)
{
    return a.bulge == 0.0 ? foot_on_line(a, b, point, foot) : foot_on_arc(a, b, point, foot);
}

void direction_at(const pl_vertex& a, const pl_vertex& b, const ads_point point, const segment_foot& foot,
                  double* normal)
{
    if (foot.on_arc || foot.distance >= ON_SEGMENT) {
        double across[2] = {point[0] - foot.x, point[1] - foot.y};
        scaled_normal(across, normal);
        return;
    }
    normal[0] = b.x - a.x;
    normal[1] = b.y - a.y;
    if (const double length = std::hypot(normal[0], normal[1]); length != 0.0) {
        normal[0] /= length;
        normal[1] /= length;
    }
}
