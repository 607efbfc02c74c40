// leader_shape.cpp: see the header.
#include "host/commandline/leader_shape.h"

#include <cmath>
#include <numbers>

namespace host::commandline
{

namespace
{

constexpr double HOOK_FROM = 15.0 * std::numbers::pi / 180.0; // a flatter leader goes straight into its text
constexpr double HEAD_ROOM = 2.0;                             // least first segment, in heads
constexpr double HEAD_WIDTH = 1.0 / 3.0;                      // in lengths of the head

point3 along(const point3& from, double dx, double dy, double distance)
{
    return {from.x + dx * distance, from.y + dy * distance, from.z};
}

} // namespace

leader_shape shape_of_leader(const std::vector<point3>& points, const leader_sizes& sizes, bool has_text)
{
    leader_shape out;
    const point3& tip = points[0];
    const double first_x = points[1].x - tip.x, first_y = points[1].y - tip.y;
    const double first_length = std::hypot(first_x, first_y);
    out.has_head = sizes.arrow > 0.0 && first_length >= HEAD_ROOM * sizes.arrow;
    out.head_direction = std::atan2(tip.y - points[1].y, tip.x - points[1].x);
    point3 from = tip;
    if (out.has_head && !sizes.line_to_tip)
        from = along(tip, first_x / first_length, first_y / first_length, sizes.arrow);
    for (std::size_t i = 1; i < points.size(); ++i) {
        out.lines.emplace_back(from, points[i]);
        from = points[i];
    }
    const point3& before = points[points.size() - 2];
    const double last_x = from.x - before.x, last_y = from.y - before.y;
    out.text_runs_left = last_x < 0.0;
    const double side = out.text_runs_left ? -1.0 : 1.0;
    if (has_text && sizes.arrow > 0.0 && std::atan2(std::abs(last_y), std::abs(last_x)) > HOOK_FROM) {
        const point3 end = along(from, side, 0.0, sizes.arrow);
        out.lines.emplace_back(from, end);
        from = end;
    }
    out.text_middle = along(from, side, 0.0, sizes.text_gap);
    return out;
}

head_corners corners_of_head(const point3& tip, double direction, double length)
{
    const double dx = std::cos(direction), dy = std::sin(direction);
    const point3 back = along(tip, dx, dy, -length);
    const double half = length * HEAD_WIDTH / 2.0;
    return {along(back, -dy, dx, half), along(back, -dy, dx, -half), tip};
}

} // namespace host::commandline
