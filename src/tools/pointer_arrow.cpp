#include "tools/pointer_arrow.h"

#include <cmath>

#include "hostapi/ads.h"
#include "tools/pointer_angles.h"

namespace
{

constexpr double LENGTHS_PER_HALF_WIDTH = 2.7;
constexpr int COMPLEMENT_COLOR = -1;

void set_point(ads_point point, double x, double y, double z)
{
    point[0] = x;
    point[1] = y;
    point[2] = z;
}

} // namespace

void pointer_arrow_corners(const pl_vertex& cur, const pl_vertex& other, const pl_vertex& tip, double rel_angle,
                           double size, ads_point corners[3])
{
    const double direction = direction_in_circle(rel_angle + direction_degrees(other, cur));
    const double ahead = direction / DEGREES_PER_RADIAN;
    const double left = rotate_angle(direction, 90.0) / DEGREES_PER_RADIAN;
    const double base_x = tip.x - size * std::cos(ahead), base_y = tip.y - size * std::sin(ahead);
    const double half = size / LENGTHS_PER_HALF_WIDTH;
    const double side_x = half * std::cos(left), side_y = half * std::sin(left);
    set_point(corners[0], tip.x, tip.y, tip.z);
    set_point(corners[1], base_x + side_x, base_y + side_y, tip.z);
    set_point(corners[2], base_x - side_x, base_y - side_y, tip.z);
}

void draw_pointer_arrow(const pl_vertex& cur, const pl_vertex& other, const pl_vertex& tip, double rel_angle,
                        double size)
{
    ads_point corners[3];
    pointer_arrow_corners(cur, other, tip, rel_angle, size, corners);
    for (int i = 0; i < 3; ++i)
        acedGrDraw(corners[i], corners[(i + 1) % 3], COMPLEMENT_COLOR, 0);
}
