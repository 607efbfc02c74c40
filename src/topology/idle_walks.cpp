#include "topology/idle_walks.h"

#include <cstdlib>
#include <initializer_list>
#include <limits>

#include "polygon/points.h"
#include "topology/turn_angle.h"

namespace
{

// The place of a step in the table; walked forward is from the lower node.
std::int32_t place_of(std::int32_t edge, bool forward)
{
    return 2 * edge + (forward ? 1 : 0);
}

bool is_forward(const SurfaceNet& surface, const face_step& step)
{
    const EdgeObj* edge = surface.edge(step.edge);
    return step.from == static_cast<std::int32_t>(edge->get(0));
}

pg_node corner_at(const SurfaceNet& surface, const face_step& step, pg_node* next)
{
    const NodeObj* at = surface.node(step.from);
    return {at->x, at->y, at->z, 0, 0.0, 0.0, 1, next, nullptr};
}

} // namespace

// The kernel tells the direction by the first lowest node. Of several any can be the first.
bool is_never_inner(const SurfaceNet& surface, const face_walk& walk)
{
    const std::int32_t count = walk.steps.count;
    const face_step* steps = walk.steps.items;
    double lowest = std::numeric_limits<double>::infinity();
    for (const face_step& step : walk.steps)
        lowest = surface.node(step.from)->y < lowest ? surface.node(step.from)->y : lowest;
    for (std::int32_t i = 0; i < count; ++i) {
        if (surface.node(steps[i].from)->y != lowest)
            continue;
        pg_node before = corner_at(surface, steps[(i + count - 1) % count], nullptr);
        pg_node after = corner_at(surface, steps[(i + 1) % count], &before);
        const pg_node at = corner_at(surface, steps[i], &after);
        // Where nodes stand above each other the kernel looks farther along the chain than is known here.
        if (pg_same_place(before, at) || pg_same_place(after, at) || pg_orientation(&at) == -1)
            return false;
    }
    return true;
}

bool IdleWalks::knows(std::int32_t edge, bool forward) const
{
    const std::int32_t place = place_of(edge, forward);
    const std::int32_t number = place < walk_of_.count ? walk_of_.items[place] : 0;
    return number > 0 && holds(number);
}

// A walk doesn't hold when one that it leads into doesn't.
bool IdleWalks::holds(std::int32_t number) const
{
    for (; number != 0; number = walks_.items[number - 1].leads_into)
        if (walks_.items[number - 1].is_void)
            return false;
    return true;
}

// A walk from the dead end of a line would be remembered for one edge only: goes back along the line that leads
// to the first step, as far as there is but one way.
void IdleWalks::add_ways_here(const SurfaceNet& surface, HeapArray<face_step>* steps)
{
    face_step first = steps->items[0];
    for (;;) {
        const NodeObj* at = surface.node(first.from);
        face_step before{0, 0};
        int ways = 0;
        for (std::int32_t i = 1; at && i <= at->edges.count; ++i) {
            const std::int32_t id = at->edges.get(i);
            const EdgeObj* edge = id == first.edge ? nullptr : surface.edge(id);
            if (!edge || edge->node1 == edge->node2)
                continue;
            ++ways;
            before = {id, edge->node1 == first.from ? edge->node2 : edge->node1};
        }
        if (ways != 1 || !surface.node(before.from) || visits_.items[before.from] > 0 || !steps->add(before))
            return;
        ++visits_.items[before.from];
        first = before;
    }
}

void IdleWalks::remember(const SurfaceNet& surface, face_walk* remembered)
{
    face_walk& walk = *remembered;
    const face_step first = walk.steps.items[0];
    if (walk.end == WalkEnd::CLOSED) {
        // It may have been the first part of a longer one, which only from here closes early.
        const face_step on = next_step(surface, walk.steps.items[walk.steps.count - 1]);
        if (on.edge != first.edge || on.from != first.from)
            return;
    }
    if (!next_of_.fill_up(2 * (surface.edges.count + 1), 0) ||
        !walk_of_.fill_up(2 * (surface.edges.count + 1), 0) || !visits_.fill_up(surface.nodes.count + 1, 0) ||
        !walks_.add({0, false}))
        return;
    const std::int32_t own_steps = walk.steps.count;
    for (const face_step& step : walk.steps)
        ++visits_.items[step.from];
    if (walk.end == WalkEnd::NO_WAY_ON) {
        ++visits_.items[walk.last_node];
        add_ways_here(surface, &walk.steps);
    }
    enter(surface, walk, own_steps);
    for (const face_step& step : walk.steps)
        visits_.items[step.from] = 0;
    visits_.items[walk.last_node] = 0;
}

// A step belongs to the first walk that came by and still holds: that walk and the new one are the same from
// there on. The steps are the new walk's own and then those of ways to it, each of which leads to the one
// before it, and the first to the start.
void IdleWalks::enter(const SurfaceNet& surface, const face_walk& walk, std::int32_t own_steps)
{
    const HeapArray<face_step>& steps = walk.steps;
    const bool is_closed = walk.end == WalkEnd::CLOSED;
    const std::int32_t number = walks_.count;
    std::int32_t& leads_into = walks_.items[number - 1].leads_into;
    for (std::int32_t i = 0; i < steps.count; ++i) {
        const face_step& step = steps.items[i];
        const std::int32_t place = place_of(step.edge, is_forward(surface, step));
        std::int32_t& name = walk_of_.items[place];
        const bool is_own = i < own_steps;
        if (i == own_steps - 1)
            next_of_.items[place] = is_closed ? steps.items[0].edge : 0;
        else
            next_of_.items[place] = steps.items[is_own ? i + 1 : i == own_steps ? 0 : i - 1].edge;
        const bool is_known = (is_own && leads_into != 0) || (name != 0 && holds(std::abs(name)));
        if (is_own && is_known && leads_into == 0)
            leads_into = std::abs(name);
        const std::int32_t of = is_known ? std::abs(name) : number;
        if (!is_known || name < 0)
            name = visits_.items[step.from] == 1 ? of : -of;
    }
}

// Only what comes to the node can turn there; the new edge stands last in its list and so gives way to an equal
// turn.
void IdleWalks::forget_at(const SurfaceNet& surface, std::int32_t node, std::int32_t added)
{
    const NodeObj* at = surface.node(node);
    const auto turn_into = [&](const NodeObj& before, std::int32_t id) {
        const EdgeObj* edge = surface.edge(id);
        const NodeObj* after = edge ? surface.node(edge->node1 == node ? edge->node2 : edge->node1) : nullptr;
        return after ? turn_angle(before, *at, *after) : 0.0;
    };
    for (std::int32_t i = 1; at && i <= at->edges.count; ++i) {
        const std::int32_t id = at->edges.get(i);
        const EdgeObj* edge = id == added ? nullptr : surface.edge(id);
        if (!edge || edge->node1 == edge->node2)
            continue;
        const face_step arriving{id, edge->node1 == node ? edge->node2 : edge->node1};
        const std::int32_t place = place_of(id, is_forward(surface, arriving));
        const std::int32_t walk = place < walk_of_.count ? std::abs(walk_of_.items[place]) : 0;
        const NodeObj* before = surface.node(arriving.from);
        if (walk == 0 || walks_.items[walk - 1].is_void)
            continue;
        const std::int32_t next = next_of_.items[place];
        if (!before || turn_into(*before, added) > (next != 0 ? turn_into(*before, next) : 0.0))
            walks_.items[walk - 1].is_void = true;
    }
}

void IdleWalks::forget_for(const SurfaceNet& surface, std::int32_t added)
{
    if (const EdgeObj* edge = surface.edge(added))
        for (const std::int32_t node : {edge->node1, edge->node2})
            forget_at(surface, node, added);
}
