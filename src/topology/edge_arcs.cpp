#include "topology/edge_arcs.h"

#include <algorithm>
#include <cmath>

#include "common/tolerances.h"
#include "polygon/arcs.h"
#include "polygon/points.h"

namespace
{

struct place {
    double at[3];

    explicit place(const NodeObj& node) : at{node.x, node.y, node.z} {}
};

} // namespace

edge_ends ends_of(const EdgeKey& edge)
{
    if (!edge.owner)
        return {nullptr, nullptr};
    const KdSet& nodes = edge.owner->nodes;
    return {static_cast<const NodeObj*>(nodes.get(edge.node1)),
            static_cast<const NodeObj*>(nodes.get(edge.node2))};
}

bool is_curved(const EdgeKey& edge)
{
    const edge_ends ends = ends_of(edge);
    return ends &&
           std::fabs(edge.bulge) * pg_dist(place(*ends.first).at, place(*ends.second).at) / 2.0 > LENGTH_TOL;
}

bool make_arc_ready(ShapeEdge* edge)
{
    const edge_ends ends = ends_of(*edge);
    if (!ends)
        return false;
    if (edge->arc_ready || !is_arc(*edge))
        return true;
    int side = 0;
    pg_arc_from_bulge(place(*ends.first).at, place(*ends.second).at, edge->bulge, edge->center,
                      &edge->start_angle, &edge->end_angle, &edge->radius, &side);
    edge->arc_ready = 1;
    return true;
}

pg_segment segment_of(const ShapeEdge& edge)
{
    const edge_ends ends = ends_of(edge);
    const place p(*ends.first), q(*ends.second);
    pg_segment segment{};
    std::copy_n(p.at, 3, segment.p);
    std::copy_n(q.at, 3, segment.q);
    if (!is_curved(edge))
        return segment;
    segment.bulge = edge.bulge;
    std::copy_n(edge.center, 3, segment.centre);
    segment.start = edge.start_angle;
    segment.end = edge.end_angle;
    segment.radius = edge.radius;
    segment.dir = edge.bulge < 0 ? 1 : -1;
    return segment;
}

// With h half the chord and m the centre's distance from it the sagitta is r - m for a piece up to a half
// circle, and the bulge (r - m) / h = h / (r + m), which keeps its digits on flat arcs; beyond, it is r + m.
// The centre lies to the side to which the arc bends in the first case. The sign is the edge's: a piece keeps
// its side. One whose ends are one place in the plane is straight, or rounding would make a whole circle of it.
double arc_piece_bulge(const ShapeEdge& edge, const NodeObj& from, const NodeObj& to)
{
    const place a(from), b(to);
    const double h = pg_dist(a.at, b.at) / 2.0, r = edge.radius;
    if (!(2.0 * h >= LENGTH_TOL))
        return 0.0;
    const double m = h < r ? std::sqrt((r - h) * (r + h)) : 0.0;
    const double area = pg_tri_area(from.x, from.y, to.x, to.y, edge.center[0], edge.center[1]);
    const bool is_major = edge.bulge < 0 ? area > 0 : area < 0;
    return std::copysign(is_major ? (r + m) / h : h / (r + m), edge.bulge);
}
