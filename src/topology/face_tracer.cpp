#include "topology/face_tracer.h"

#include <algorithm>

#include "topology/turn_angle.h"

namespace
{

// Bits of an edge's mark. Each walk takes its own away again.
constexpr std::uint8_t IN_WALK = 1;
constexpr std::uint8_t DEAD_FORWARD = 2;
constexpr std::uint8_t DEAD_BACKWARD = 4;

std::uint8_t dead_bit(bool forward)
{
    return forward ? DEAD_FORWARD : DEAD_BACKWARD;
}

void set_bit(std::uint8_t* mark, std::uint8_t bit)
{
    *mark = static_cast<std::uint8_t>(*mark | bit);
}

void clear_bits(std::uint8_t* mark, std::uint8_t bits)
{
    *mark = static_cast<std::uint8_t>(*mark & ~bits);
}

// The side of an edge that a walk from one of its nodes to the other goes along.
std::int32_t* side_of(ShapeEdge* edge, std::int32_t from)
{
    return from == std::min(edge->node1, edge->node2) ? &edge->right_shape : &edge->left_shape;
}

} // namespace

FaceTracer::FaceTracer(ShapeNet* net, bool all_faces) : net_(net)
{
    if (all_faces && !arrivals_.fill_up(net->nodes.count + 1, 0))
        arrivals_.count = 0;
}

FaceTracer::~FaceTracer()
{
    for (std::int32_t i = 1; arrivals_.count > 0 && i <= net_->edges.count; ++i)
        if (ShapeEdge* edge = net_->edge(i))
            clear_bits(&edge->mark, DEAD_FORWARD | DEAD_BACKWARD);
}

bool FaceTracer::is_dead(const ShapeEdge& edge, bool forward) const
{
    return (edge.mark & dead_bit(forward)) != 0;
}

void FaceTracer::arrive(std::int32_t node)
{
    ++clock_;
    if (arrivals_.count > 0)
        arrivals_.items[node] = clock_;
}

bool FaceTracer::push(const step& s)
{
    if (!steps_.add(s))
        return false;
    set_bit(&net_->edge(s.edge)->mark, IN_WALK);
    return true;
}

// The way on with the greatest turn; without an edge where there is none. Edges from a node to itself lead
// nowhere. A node may name edges that are gone.
FaceTracer::step FaceTracer::outermost(const step& last) const
{
    const NodeObj& before = *net_->node(last.from);
    const NodeObj& at = *net_->node(last.to);
    step best{0, last.to, 0, clock_};
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
        clear_bits(&edge->mark, IN_WALK);
        if (last.edge == edge_id)
            return last.from != again.from;
    }
    return false;
}

// Goes on from the one step that stands until the walk is back at its start.
FaceTracer::ending FaceTracer::walk(std::int32_t face_id)
{
    const std::int32_t start = steps_.items[0].from;
    const std::int64_t most = clock_ + 4 * static_cast<std::int64_t>(net_->edges.count);
    for (step last = steps_.items[0]; clock_ <= most;) {
        arrive(last.to);
        const step next = outermost(last);
        if (next.edge == 0)
            return ending::NO_WAY;
        ShapeEdge* edge = net_->edge(next.edge);
        std::int32_t* side = side_of(edge, next.from);
        const bool is_back = next.to == start;
        if (is_back && steps_.count == 1 && next.edge == steps_.items[0].edge)
            return ending::LOST; // there and back: nothing is inside
        if (!is_back && (edge->mark & IN_WALK)) {
            if (!undo_to(next.edge, next) || steps_.count == 0)
                return ending::LOST;
        } else {
            if (*side != 0)
                return ending::NO_WAY;
            if (!push(next))
                return ending::LOST;
            *side = face_id;
            if (is_back)
                return ending::CLOSED;
        }
        last = next;
    }
    return ending::LOST;
}

// A walk that has come to its end without closing does so from each of its steps whose start it didn't meet
// again.
void FaceTracer::note_dead()
{
    for (std::int32_t i = 0; arrivals_.count > 0 && i < steps_.count; ++i) {
        const step& s = steps_.items[i];
        if (arrivals_.items[s.from] == s.arrival)
            set_bit(&net_->edge(s.edge)->mark, dead_bit(s.from < s.to));
    }
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
    arrive(forward ? low : high);
    if (!push({edge_id, forward ? low : high, forward ? high : low, clock_}))
        return nullptr;
    *side_of(edge, steps_.items[0].from) = face_id;
    const ending end = walk(face_id);
    ShapeObj* shape = end == ending::CLOSED ? shape_of_walk() : nullptr;
    if (end == ending::NO_WAY)
        note_dead();
    for (std::int32_t i = 0; i < steps_.count; ++i) {
        ShapeEdge* walked = net_->edge(steps_.items[i].edge);
        clear_bits(&walked->mark, IN_WALK);
        if (!shape)
            *side_of(walked, steps_.items[i].from) = 0;
    }
    return shape;
}
