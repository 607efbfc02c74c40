#include "polygon/segment_pairs.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/points.h"

pg_segment pg_segment_at(const pg_node& node)
{
    pg_segment s{
        {node.x, node.y, node.z}, {node.next->x, node.next->y, node.next->z}, node.bulge, {}, 0.0, 0.0, 0.0, 0};
    if (pg_is_arc(s))
        pg_arc_from_bulge(s.p, s.q, s.bulge, s.centre, &s.start, &s.end, &s.radius, &s.dir);
    return s;
}

int pg_segment_points(const pg_segment& a, const pg_segment& b, double points[2][3])
{
    double* out1 = points[0];
    double* out2 = points[1];
    if (pg_is_arc(a) && pg_is_arc(b))
        return pg_arc_arc_intersect(a.centre, a.radius, a.start, a.end, b.centre, b.radius, b.start, b.end,
                                    out1, out2);
    if (pg_is_arc(a))
        return pg_line_arc_intersect(b.p, b.q, a.centre, a.radius, a.start, a.end, out1, out2);
    const int count = pg_is_arc(b)
                          ? pg_line_arc_intersect(a.p, a.q, b.centre, b.radius, b.start, b.end, out1, out2)
                          : pg_seg_intersect(a.p, a.q, b.p, b.q, out1, out2);
    return std::min(count, 1);
}

double pg_segment_distance(const pg_segment& a, const double* x)
{
    if (!pg_is_arc(a))
        return pg_dist(a.p, x);
    return std::fabs(pg_angle(a.centre, x) - (a.dir == -1 ? a.start : a.end)) * a.radius;
}

double pg_segment_direction(const pg_segment& s, const double* x)
{
    if (!pg_is_arc(s))
        return pg_angle(x, s.q);
    return pg_angle(s.centre, x) - s.dir * (std::numbers::pi / 2.0);
}
