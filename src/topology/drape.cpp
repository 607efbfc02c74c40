// Polylines laid on a surface.
#include "common/tolerances.h"
#include "common/user_break.h"
#include "topology/surface_net.h"
#include "topology/walk.h"

namespace
{

// The height of the surface there, if it has one.
void lay_on(SurfaceNet* ground, double* point)
{
    const std::int32_t id = ground->find_triangle(point);
    const double z = id > 0 ? ground->triangle_elevation(id, point) : NO_ELEVATION;
    if (z != NO_ELEVATION)
        point[2] = z;
}

void add_segment(SurfaceNet* ground, SurfaceNet* draped, const pg_node& from, const pg_node& to)
{
    double p[3] = {from.x, from.y, from.z}, q[3] = {to.x, to.y, to.z};
    lay_on(ground, p);
    lay_on(ground, q);
    const std::int32_t a = draped->intern_node(p), b = draped->intern_node(q);
    if (a != 0 && b != 0)
        draped->intern_edge(a, b, 0.0);
}

} // namespace

SurfaceNet* SurfaceNet::copy_edges() const
{
    auto* copy = new SurfaceNet;
    if (!copy)
        return nullptr;
    for (std::int32_t id = first_of(edges); id != 0; id = edges.next(id)) {
        const EdgeObj* of = edge(id);
        const NodeObj* ends[2] = {node(of->node1), node(of->node2)};
        if (!ends[0] || !ends[1])
            continue;
        std::int32_t ids[2];
        for (int i = 0; i < 2; ++i) {
            const double at[3] = {ends[i]->x, ends[i]->y, ends[i]->z};
            ids[i] = copy->intern_node(at);
            if (NodeObj* made = copy->node(ids[i]))
                made->mark = ends[i]->mark;
        }
        if (ids[0] != 0 && ids[1] != 0)
            copy->intern_edge(ids[0], ids[1], of->bulge);
    }
    return copy;
}

SurfaceNet* SurfaceNet::drape(const pg_ring* polylines)
{
    SurfaceNet* draped = copy_edges();
    if (!draped)
        return nullptr;
    const std::int32_t own_nodes = draped->nodes.count;
    for (const pg_ring* line = polylines; line; line = line->next)
        for (const pg_node* from = line->nodes; from && from->next; from = from->next)
            add_segment(this, draped, *from, *from->next);
    draped->cut_crossings();
    if (user_break() <= 0)
        draped->close_faces();
    for (std::int32_t id = own_nodes + 1; id <= draped->nodes.count; ++id)
        if (NodeObj* added = draped->node(id)) {
            double at[3] = {added->x, added->y, added->z};
            lay_on(this, at);
            added->z = at[2];
            draped->nodes.note_move(id);
        }
    return draped;
}
