#include "topology/face_tracer.h"

#include <algorithm>

#include "topology/turn_angle.h"

namespace
{

constexpr std::uint8_t IN_WALK = 1; // of an edge's mark; each walk takes its own away again

void clear_mark(ShapeEdge* edge)
{
    edge->mark = static_cast<std::uint8_t>(edge->mark & ~IN_WALK);
}

// The side of an edge that a walk from one of its nodes to the other goes along.
std::int32_t* side_of(ShapeEdge* edge, std::int32_t from)
{
    return from == std::min(edge->node1, edge->node2) ? &edge->right_shape : &edge->left_shape;
}

} // namespace

bool FaceTracer::push(const step& s)
{
    if (!steps_.add(s))
        return false;
    net_->edge(s.edge)->mark |= IN_WALK;
    return true;
}

// The way on with the greatest turn; without an edge where there is none. Edges from a node to itself lead
// nowhere. A node may name edges that are gone.
FaceTracer::step FaceTracer::outermost(const step& last) const
{
    const NodeObj& before = *net_->node(last.from);
    const NodeObj& at = *net_->node(last.to);
    step best{0, last.to, 0};
    double greatest = 0.0;
    for (std::int32_t i = 1; i <= at.edges.count; ++i) {
        const std::int32_t id = at.edges.get(i);
        const ShapeEdge* edge = net_->edge(id);
        if (!edge || id == last.edge || edge->node1 == edge->node2)
            continue;
        const std::int32_t far = edge->node1 == last.to ? edge->node2 : edge->node1;
        const NodeObj* after = net_->node(far);
        const double turn = after ? turn_angle(before, at, *after) : 0.0;
        if (turn > greatest) {
            greatest = turn;
            best.edge = id;
            best.to = far;
        }
    }
    return best;
}

// Takes the walk back over an edge that it meets again, and that edge with it: it has been walked there and
// back, and what hangs on it is no part of this face. False where it would be walked the same way once more.
bool FaceTracer::undo_to(std::int32_t edge_id, const step& again)
{
    while (steps_.count > 0) {
        const step& last = steps_.items[--steps_.count];
        ShapeEdge* edge = net_->edge(last.edge);
        *side_of(edge, last.from) = 0;
        clear_mark(edge);
        if (last.edge == edge_id)
            return last.from != again.from;
    }
    return false;
}

// Goes on from the one step that stands until the walk is back at its start. False where it doesn't come there.
bool FaceTracer::walk(std::int32_t face_id)
{
    const std::int32_t start = steps_.items[0].from;
    step last = steps_.items[0];
    for (std::int64_t left = 4 * static_cast<std::int64_t>(net_->edges.count); left >= 0; --left) {
        const step next = outermost(last);
        if (next.edge == 0)
            return false;
        ShapeEdge* edge = net_->edge(next.edge);
        std::int32_t* side = side_of(edge, next.from);
        const bool is_back = next.to == start;
        if (is_back && steps_.count == 1 && next.edge == steps_.items[0].edge)
            return false; // there and back: nothing is inside
        if (!is_back && (edge->mark & IN_WALK)) {
            if (!undo_to(next.edge, next) || steps_.count == 0)
                return false;
        } else {
            if (*side != 0 || !push(next))
                return false;
            *side = face_id;
            if (is_back)
                return true;
        }
        last = next;
    }
    return false;
}

ShapeObj* FaceTracer::shape_of_walk() const
{
    auto* shape = new ShapeObj;
    if (!shape)
        return nullptr;
    shape->closed = 1;
    for (std::int32_t i = 0; i < steps_.count; ++i) {
        shape->link(steps_.items[i].edge);
        if (shape->edges.count != i + 1) {
            delete shape;
            return nullptr;
        }
    }
    return shape;
}

ShapeObj* FaceTracer::trace(std::int32_t edge_id, std::int32_t face_id, bool forward)
{
    ShapeEdge* edge = net_->edge(edge_id);
    if (!edge || edge->node1 == edge->node2 || !net_->node(edge->node1) || !net_->node(edge->node2))
        return nullptr;
    const std::int32_t low = std::min(edge->node1, edge->node2), high = std::max(edge->node1, edge->node2);
    steps_.count = 0;
    if (!push({edge_id, forward ? low : high, forward ? high : low}))
        return nullptr;
    *side_of(edge, steps_.items[0].from) = face_id;
    ShapeObj* shape = walk(face_id) ? shape_of_walk() : nullptr;
    for (std::int32_t i = 0; i < steps_.count; ++i) {
        ShapeEdge* walked = net_->edge(steps_.items[i].edge);
        clear_mark(walked);
        if (!shape)
            *side_of(walked, steps_.items[i].from) = 0;
    }
    return shape;
}
