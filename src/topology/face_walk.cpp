#include "topology/face_walk.h"

#include <algorithm>

#include "topology/turn_angle.h"

namespace
{

std::int32_t end_of(const EdgeObj& edge, std::int32_t from)
{
    return edge.node1 == from ? edge.node2 : edge.node1;
}

} // namespace

// An edge from a node to itself leads nowhere, and the last place of a node's list may name an edge that is
// gone.
face_step next_step(const SurfaceNet& surface, const face_step& step)
{
    const std::int32_t at = end_of(*surface.edge(step.edge), step.from);
    const NodeObj *before = surface.node(step.from), *here = surface.node(at);
    face_step best{0, at};
    double greatest = 0.0;
    for (std::int32_t i = 1; before && here && i <= here->edges.count; ++i) {
        const std::int32_t id = here->edges.get(i);
        const EdgeObj* way = id == step.edge ? nullptr : surface.edge(id);
        if (!way || way->node1 == way->node2)
            continue;
        const NodeObj* after = surface.node(end_of(*way, at));
        const double turn_deg = after ? turn_angle(*before, *here, *after) : 0.0;
        if (turn_deg > greatest) {
            greatest = turn_deg;
            best.edge = id;
        }
    }
    return best;
}

void walk_face(const SurfaceNet& surface, std::int32_t edge, bool forward, std::int64_t number, face_walk* walk)
{
    walk->steps.count = 0;
    walk->end = WalkEnd::NO_WAY_ON;
    const EdgeObj* first = surface.edge(edge);
    if (!first || first->node1 == first->node2)
        return;
    const std::int32_t low = std::min(first->node1, first->node2), high = std::max(first->node1, first->node2);
    const std::int32_t start = forward ? low : high;
    face_step step{edge, start};
    for (;;) {
        if (!walk->steps.add(step))
            return;
        EdgeObj* walked = surface.edge(step.edge);
        walked->walk = number;
        walk->last_node = end_of(*walked, step.from);
        step = next_step(surface, step);
        if (step.edge == 0)
            return;
        const EdgeObj* chosen = surface.edge(step.edge);
        if (end_of(*chosen, step.from) == start) {
            if (!walk->steps.add(step))
                return;
            walk->last_node = start;
            walk->end = WalkEnd::CLOSED;
            return;
        }
        if (chosen->walk == number) {
            walk->end = WalkEnd::CAUGHT;
            return;
        }
    }
}

ShapeObj* shape_of(const face_walk& walk)
{
    auto* shape = new ShapeObj;
    for (std::int32_t i = 0; shape && i < walk.steps.count; ++i) {
        shape->link(walk.steps.items[i].edge);
        if (shape->edges.count == i + 1)
            continue;
        delete shape; // no room for the edge
        shape = nullptr;
    }
    return shape;
}
