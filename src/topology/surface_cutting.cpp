// Edges cut in two. Every edge is met with every edge behind it, as if all pairs were tried; tried are those
// whose boxes overlap, in the same order.
#include <algorithm>
#include <cstdlib>

#include "polygon/intersect.h"
#include "topology/box_index.h"
#include "topology/cut_edge.h"
#include "topology/polling.h"
#include "topology/surface_net.h"
#include "topology/walk.h"

namespace
{

struct ends {
    double low[3], high[3];
};

bool ends_of(const SurfaceNet& surface, const EdgeObj& edge, ends* out)
{
    const NodeObj* low = surface.node(std::min(edge.node1, edge.node2));
    const NodeObj* high = surface.node(std::max(edge.node1, edge.node2));
    if (!low || !high)
        return false;
    *out = {{low->x, low->y, low->z}, {high->x, high->y, high->z}};
    return true;
}

// The edge between two nodes, or 0.
std::int32_t edge_between(const SurfaceNet& surface, std::int32_t node1, std::int32_t node2)
{
    const EdgeKey wanted(node1, node2, 0.0);
    return surface.edges.look(&wanted);
}

// Cuts an edge at the one of two nodes that lies nearer to its low node, then the rest of it at the other.
void cut_from_low(SurfaceNet* surface, std::int32_t edge_id, std::int32_t first, std::int32_t second)
{
    const EdgeObj* edge = surface->edge(edge_id);
    if (!edge)
        return;
    const std::int32_t low = std::min(edge->node1, edge->node2), high = std::max(edge->node1, edge->node2);
    if (surface->nodes.squared_distance(low, second) < surface->nodes.squared_distance(low, first))
        std::swap(first, second);
    const bool is_cut = surface->split_edge(edge_id, first) != 0;
    surface->split_edge(is_cut ? edge_between(*surface, first, high) : edge_id, second);
}

// Meets edge i with edge j. True if i was cut, and so is no more.
bool cut_pair(SurfaceNet* surface, std::int32_t i, std::int32_t j)
{
    const EdgeObj *edge = surface->edge(i), *other = surface->edge(j);
    ends a, b;
    if (!edge || !other || !ends_of(*surface, *edge, &a) || !ends_of(*surface, *other, &b) ||
        !pg_boxes_meet(box_between(a.low, a.high), box_between(b.low, b.high)))
        return false;
    double points[2][3];
    const int count = pg_seg_intersect(a.low, a.high, b.low, b.high, points[0], points[1]);
    if (count == 0)
        return false;
    const std::int32_t first = surface->intern_node(points[0]);
    const std::int32_t second = count == 2 ? surface->intern_node(points[1]) : 0;
    const bool is_cut = cut_at(surface, i, first, second);
    if (second != 0)
        cut_from_low(surface, j, first, second);
    else
        surface->split_edge(j, first);
    return is_cut;
}

} // namespace

bool add_edge_box(const SurfaceNet& surface, BoxIndex* boxes)
{
    const EdgeObj* edge = surface.edge(boxes->count() + 1);
    ends e;
    return boxes->add(edge && ends_of(surface, *edge, &e) ? box_between(e.low, e.high) : box_of_none());
}

bool cut_at(SurfaceNet* surface, std::int32_t edge_id, std::int32_t first, std::int32_t second)
{
    const std::int32_t half = second != 0 ? surface->split_edge(edge_id, second) : 0;
    const std::int32_t rest = surface->split_edge(half != 0 ? half : edge_id, first);
    return half != 0 || rest != 0;
}

std::int32_t SurfaceNet::split_edge(std::int32_t edge_id, std::int32_t node_id)
{
    const EdgeObj* gone = edge(edge_id);
    if (!gone || node_id == gone->node1 || node_id == gone->node2 || !node(node_id))
        return 0;
    const std::int32_t low = std::min(gone->node1, gone->node2), high = std::max(gone->node1, gone->node2);
    for (const std::int32_t side : {gone->left, gone->right})
        if (side != 0)
            remove_triangle(std::abs(side));
    remove_edge(edge_id);
    const std::int32_t first = intern_edge(low, node_id, 0.0);
    intern_edge(node_id, high, 0.0);
    return first;
}

void SurfaceNet::cut_crossings()
{
    BoxIndex boxes;
    BreakPoll poll;
    for (std::int32_t i = first_of(edges); i != 0; i = edges.next(i)) {
        if (poll.is_cancelled())
            return;
        const std::int32_t last = edges.count; // edges made in this round wait for their own
        bool indexed = true;
        while (indexed && boxes.count() < last)
            indexed = add_edge_box(*this, &boxes);
        if (!indexed || !boxes.look(boxes.box(i - 1), i)) {
            for (std::int32_t j = i + 1; j <= last; ++j)
                if (cut_pair(this, i, j))
                    break;
            continue;
        }
        for (const std::int32_t other : boxes.found())
            if (cut_pair(this, i, other + 1))
                break;
    }
}
