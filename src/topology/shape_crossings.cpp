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

} // namespace

int ShapeNet::edge_crossings(ShapeEdge* edge, ShapeEdge* other, double* first, double* second)
{
    if (!edge || !other || !make_arc_ready(edge) || !make_arc_ready(other))
        return 0;
    const pg_segment a = segment_of(*edge), b = segment_of(*other);
    if (pg_is_arc(a))
        return pg_is_arc(b) ? pg_arc_arc_intersect(a.centre, a.radius, a.start, a.end, b.centre, b.radius,
                                                   b.start, b.end, first, second)
                            : line_and_arc(b, a, first, second);
    if (pg_is_arc(b))
        return line_and_arc(a, b, first, second);
    if (lies_beside(a, b, 1) || lies_beside(a, b, 0))
        return 0;
    return pg_seg_intersect(a.p, a.q, b.p, b.q, first, second);
}

double ShapeNet::edge_position(ShapeEdge* edge, const double* point, std::int32_t dimensions)
{
    const NodeObj* from = edge ? ends_of(*edge).first : nullptr;
    if (!from)
        return NO_VALUE;
    if (is_arc(*edge)) {
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
