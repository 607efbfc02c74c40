// Where two edges of a shape network meet in the plane, and where a place lies on one.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/tolerances.h"
#include "polygon/intersect.h"
#include "polygon/points.h"
#include "topology/edge_arcs.h"
#include "topology/shape_net.h"

namespace
{

// Whether both ends of b lie strictly to one side of a, in one coordinate.
bool lies_beside(const pg_segment& a, const pg_segment& b, int coordinate)
{
    const double low = std::min(a.p[coordinate], a.q[coordinate]);
    const double high = std::max(a.p[coordinate], a.q[coordinate]);
    return (b.p[coordinate] < low && b.q[coordinate] < low) ||
           (b.p[coordinate] > high && b.q[coordinate] > high);
}

int line_and_arc(const pg_segment& line, const pg_segment& arc, double* first, double* second)
{
    return pg_line_arc_intersect(line.p, line.q, arc.centre, arc.radius, arc.start, arc.end, first, second);
}

// How far a place on an arc lies from the arc's start, as a share of the whole; next to the start it may come
// out as a whole turn.
double share_of_arc(const pg_segment& arc, const double* point)
{
    constexpr double WHOLE = 2.0 * std::numbers::pi;
    const auto turn_to = [&](double angle) {
        return angle < arc.start ? angle - arc.start + WHOLE : angle - arc.start;
    };
    const double sweep = turn_to(arc.end), turn = turn_to(pg_angle(arc.centre, point));
    if (turn <= sweep)
        return turn / sweep;
    return turn - sweep < WHOLE - turn ? 1.0 : 0.0;
}

// Of an edge above or below a place on it.
double height_at(const pg_segment& edge, const double* point)
{
    if (edge.p[2] == edge.q[2])
        return edge.p[2];
    double share = 0.0;
    if (!pg_is_arc(edge))
        share = std::min(pg_dist(edge.p, point) / pg_dist(edge.p, edge.q), 1.0);
    else
        share = edge.bulge < 0 ? 1.0 - share_of_arc(edge, point) : share_of_arc(edge, point);
    return edge.p[2] + share * (edge.q[2] - edge.p[2]);
}

int crossings(const pg_segment& a, const pg_segment& b, double* first, double* second)
{
    if (pg_is_arc(a) && pg_is_arc(b))
        return pg_arc_arc_intersect(a.centre, a.radius, a.start, a.end, b.centre, b.radius, b.start, b.end,
                                    first, second);
    return pg_is_arc(a) ? line_and_arc(b, a, first, second) : line_and_arc(a, b, first, second);
}

} // namespace

// Two lines cross at the height of the first one. The kernel works arcs out in the plane alone, and so what
// meets them gets its height here.
int ShapeNet::edge_crossings(ShapeEdge* edge, ShapeEdge* other, double* first, double* second)
{
    if (!edge || !other || !make_arc_ready(edge) || !make_arc_ready(other))
        return 0;
    const pg_segment a = segment_of(*edge), b = segment_of(*other);
    if (pg_is_arc(a) || pg_is_arc(b)) {
        const int count = crossings(a, b, first, second);
        if (count > 0)
            first[2] = height_at(a, first);
        if (count > 1)
            second[2] = height_at(a, second);
        return count;
    }
    if (lies_beside(a, b, 1) || lies_beside(a, b, 0))
        return 0;
    return pg_seg_intersect(a.p, a.q, b.p, b.q, first, second);
}

double ShapeNet::edge_position(ShapeEdge* edge, const double* point, std::int32_t dimensions)
{
    const NodeObj* from = edge ? ends_of(*edge).first : nullptr;
    if (!from)
        return NO_VALUE;
    if (is_curved(*edge)) {
        if (!make_arc_ready(edge))
            return NO_VALUE;
        double turn = pg_angle(edge->center, point) - edge->start_angle;
        if (turn < 0.0)
            turn += 2.0 * std::numbers::pi;
        return turn * edge->radius;
    }
    const double dx = point[0] - from->x, dy = point[1] - from->y;
    const double dz = point[2] - (dimensions == 2 ? 0.0 : from->z);
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}
