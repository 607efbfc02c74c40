// A face is triangulated by a network of its own; of that the edges inside the face are taken over.
//
// Places in the network are near those of the nodes but not the same: elevations are nudged off contours, and x
// and y are moved to an origin and back. Each point of the network therefore keeps the vertex that it came
// from, by whose place the node is looked up.
#include "topology/fill_face.h"

#include <algorithm>
#include <functional>

#include "common/user_break.h"
#include "hostapi/ads.h"
#include "tin/network.h"
#include "topology/heap_array.h"

namespace
{

struct point_node {
    const tin_point* point;
    std::int32_t node; // 0: the surface has none there
};

struct filling {
    SurfaceNet* surface;
    const pg_node* chain;
    tin_network network;
    tin_point* points = nullptr; // taken in by the network, the newest first
    HeapArray<point_node> nodes; // of the points; sorted by them once all are there
};

std::int32_t node_at(const SurfaceNet& surface, double x, double y, double z)
{
    const NodeObj wanted(x, y, z);
    return surface.nodes.look_around(&wanted);
}

// The point in the network at a vertex's place, which may be an earlier one. Null without memory.
tin_point* offer(filling* work, const pg_node& vertex)
{
    tin_point* point = tin_point_new(vertex.x, vertex.y, vertex.z);
    if (!point)
        return nullptr;
    tin_point* earlier = tin_add_point(&work->network, point);
    if (earlier) {
        acad_free(point);
        return earlier;
    }
    tin_keep_point(&work->network, point, &work->points);
    // Without memory the node is looked up by the point's own place later on.
    work->nodes.add({point, node_at(*work->surface, vertex.x, vertex.y, vertex.z)});
    return point;
}

void offer_chain(filling* work)
{
    const pg_node* first = work->chain;
    tin_point* before = first && first->next ? offer(work, *first) : nullptr;
    for (const pg_node* v = first ? first->next : nullptr; v; v = v->next) {
        tin_point* here = offer(work, *v);
        if (before && here && before != here)
            tin_add_barrier(&work->network, before, here);
        before = here;
    }
    std::sort(work->nodes.begin(), work->nodes.end(),
              [](const point_node& a, const point_node& b) { return std::less<>()(a.point, b.point); });
}

bool is_frame(const tin_network& network, const tin_point* point)
{
    return std::find(network.frame, network.frame + 4, point) != network.frame + 4;
}

std::int32_t node_of(const filling& work, const tin_point* point)
{
    // The frame lies outside, though where it lies in the network's own system there may well be a node.
    if (is_frame(work.network, point))
        return 0;
    const point_node* found =
        std::lower_bound(work.nodes.begin(), work.nodes.end(), point,
                         [](const point_node& a, const tin_point* p) { return std::less<>()(a.point, p); });
    if (found != work.nodes.end() && found->point == point)
        return found->node;
    return node_at(*work.surface, point->x, point->y, point->z);
}

void add_edge_if_inside(const filling& work, std::int32_t from, std::int32_t to)
{
    SurfaceNet* surface = work.surface;
    const NodeObj *a = surface->node(from), *b = surface->node(to);
    if (!a || !b || a == b)
        return;
    const EdgeObj wanted(from, to, 0.0);
    if (surface->edges.look(&wanted) != 0)
        return;
    const double middle[3] = {(a->x + b->x) / 2, (a->y + b->y) / 2, (a->z + b->z) / 2};
    if (pg_point_inside(middle, work.chain))
        surface->intern_edge(from, to, 0.0);
}

void take_edges(const filling& work)
{
    for (const tin_triangle* t = work.network.triangles; t; t = t->next) {
        if (!t->corner[0] || !t->corner[1] || !t->corner[2])
            continue;
        const std::int32_t nodes[3] = {node_of(work, t->corner[0]), node_of(work, t->corner[1]),
                                       node_of(work, t->corner[2])};
        for (int i = 0; i < 3; ++i)
            add_edge_if_inside(work, nodes[i], nodes[(i + 1) % 3]);
    }
}

} // namespace

bool fill_face(SurfaceNet* surface, const pg_node* chain)
{
    filling work{surface, chain, {}, nullptr, {}};
    offer_chain(&work);
    work.network.points = work.points;
    tin_triangulate(&work.network);
    // Broken off, the network is left half done and in a system of its own.
    if (user_break() > 0)
        return false;
    take_edges(work);
    return true;
}

void tin_fill_face(SurfaceNet* surface, const pg_node* chain)
{
    fill_face(surface, chain);
}
