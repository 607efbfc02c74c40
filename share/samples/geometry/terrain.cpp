// terrain.cpp: a triangulated surface of measured points with a breakline, its area and the volume above a
// level.
#include <algorithm>
#include <cstdio>
#include <iterator>

#include "hostapi/ads.h"
#include "tin/network.h"

namespace
{

struct measured {
    double x, y, z;
};

// The top of a bank runs through points 2, 5 and 8; the last point was measured twice.
constexpr measured POINTS[] = {
    {512003.10, 4204001.40, 101.35}, {512021.85, 4204003.20, 101.62}, {512012.40, 4204012.75, 104.10},
    {512001.30, 4204019.60, 101.48}, {512030.75, 4204014.10, 101.27}, {512019.20, 4204024.35, 104.32},
    {512008.65, 4204033.90, 101.71}, {512037.15, 4204029.85, 101.44}, {512027.45, 4204037.60, 104.21},
    {512015.90, 4204047.25, 101.66}, {512041.05, 4204044.70, 101.53}, {512041.05, 4204044.70, 101.93},
};
constexpr int BREAKLINE[] = {2, 5, 8};
constexpr int COUNT = int(std::size(POINTS));

// Offers all points; taken[i] is the record of point i, for a double that of the first one. The list of those
// that were taken, the last one in front; null when the heap is exhausted.
tin_point* offer_all(tin_network& network, tin_point* (&taken)[COUNT])
{
    tin_point* list = nullptr;
    for (int i = 0; i < COUNT; ++i) {
        tin_point* point = tin_point_new(POINTS[i].x, POINTS[i].y, POINTS[i].z);
        if (!point)
            break;
        tin_point* earlier = tin_add_point(&network, point);
        taken[i] = earlier ? earlier : point;
        if (earlier) {
            std::printf("point %d is a double of an earlier one\n", i);
            acad_free(point);
            continue;
        }
        tin_keep_point(&network, point, &list);
    }
    return list;
}

bool is_outside(const tin_network& network, const tin_triangle& triangle)
{
    return std::any_of(triangle.corner, triangle.corner + 3, [&](const tin_point* corner) {
        return std::find(network.frame, network.frame + 4, corner) != network.frame + 4;
    });
}

} // namespace

int main()
{
    tin_network network; // gives everything back at the end
    network.contour_interval = 0;
    tin_point* taken[COUNT] = {};
    tin_point* list = offer_all(network, taken);
    network.points = list;
    if (!taken[COUNT - 1])
        return 1;
    for (std::size_t i = 0; i + 1 < std::size(BREAKLINE); ++i)
        tin_add_barrier(&network, taken[BREAKLINE[i]], taken[BREAKLINE[i + 1]]);
    tin_triangulate(&network);

    int triangles = 0;
    double area = 0, volume = 0;
    for (const tin_triangle* t = network.triangles; t; t = t->next) {
        if (is_outside(network, *t))
            continue;
        const tin_point &a = *t->corner[0], &b = *t->corner[1], &c = *t->corner[2];
        const double part = ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2;
        ++triangles;
        area += part;
        volume += part * ((a.z + b.z + c.z) / 3 - 101);
    }
    std::printf("%d points from %.2f to %.2f\n", network.point_count, network.z_min, network.z_max);
    std::printf("%d triangles, area %.2f, volume above 101.00: %.2f\n", triangles, area, volume);
}
