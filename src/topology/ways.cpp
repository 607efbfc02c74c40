#include "topology/ways.h"

#include <cmath>

#include "topology/turn_angle.h"

namespace
{

constexpr std::int32_t FEW_EXITS = 8; // that needn't be sorted
constexpr double FULL_TURN = 6.283185307179586;
constexpr double NEAR = 1e-9; // in which rounding can hide the order of turns; radians and degrees

// The exit chosen so far.
struct best_exit {
    double turn = 0.0;
    std::int32_t place = 0, way = 0;

    void offer(double t, std::int32_t at, std::int32_t w)
    {
        if (t > turn || (t == turn && turn > 0.0 && at < place)) {
            turn = t;
            place = at;
            way = w;
        }
    }
};

// How far it is clockwise from one direction to another.
double clockwise(double from, double to)
{
    return from >= to ? from - to : from - to + FULL_TURN;
}

} // namespace

bool Ways::gather_exits(const TopoNet& net, std::int32_t node)
{
    exits_.count = 0;
    const auto* here = static_cast<const NodeObj*>(net.nodes.get(node));
    for (std::int32_t i = 1; here && i <= here->edges.count; ++i) {
        const std::int32_t id = here->edges.get(i);
        const auto* edge = static_cast<const EdgeKey*>(net.edges.get(id));
        if (!edge || edge->node1 == edge->node2)
            continue;
        if (edge->node1 != node && edge->node2 != node)
            return false;
        const std::int32_t far = edge->node1 == node ? edge->node2 : edge->node1;
        const auto* after = static_cast<const NodeObj*>(net.nodes.get(far));
        if (after && !exits_.add({direction_of_way(*here, *after), i, way_of(id, node < far)}))
            return false;
    }
    return true;
}

// By direction, and of each direction the first in the node's list alone. Whether there are enough of them, and
// all are numbers.
bool Ways::sort_exits()
{
    if (exits_.count <= FEW_EXITS ||
        std::any_of(exits_.begin(), exits_.end(), [](const exit_way& e) { return std::isnan(e.direction); }))
        return false;
    std::sort(exits_.begin(), exits_.end(), [](const exit_way& a, const exit_way& b) {
        return a.direction != b.direction ? a.direction < b.direction : a.place < b.place;
    });
    const exit_way* end = std::unique(exits_.begin(), exits_.end(), [](const exit_way& a, const exit_way& b) {
        return a.direction == b.direction;
    });
    exits_.count = static_cast<std::int32_t>(end - exits_.items);
    return true;
}

std::int32_t Ways::turn_of_all(double back) const
{
    best_exit best;
    for (const exit_way& e : exits_)
        best.offer(turn_between(back, e.direction), e.place, e.way);
    return best.way;
}

// The greatest turn is that to the exit next clockwise. Rounding makes turns equal that aren't quite, and one
// back along the way that was come by a full one: what stands near is compared by its turn.
std::int32_t Ways::turn_of_sorted(double back) const
{
    const std::int32_t n = exits_.count;
    const exit_way* above = std::upper_bound(exits_.begin(), exits_.end(), back,
                                             [](double b, const exit_way& e) { return b < e.direction; });
    const auto first = static_cast<std::int32_t>(above - exits_.items);
    best_exit best;
    std::int32_t looked_at = 0;
    for (; looked_at < n; ++looked_at) {
        const exit_way& e = exits_.items[(first + looked_at) % n];
        if (clockwise(e.direction, back) > NEAR)
            break;
        best.offer(turn_between(back, e.direction), e.place, e.way);
    }
    for (std::int32_t i = 1; i <= n - looked_at; ++i) {
        const exit_way& e = exits_.items[(first - i + n) % n];
        const double turn = turn_between(back, e.direction);
        best.offer(turn, e.place, e.way);
        if (turn < best.turn - NEAR && clockwise(back, e.direction) > NEAR)
            break;
    }
    return best.way;
}

bool Ways::make(const TopoNet& net)
{
    const std::int32_t ways = 2 * (net.edges.count + 1);
    nodes_ = net.nodes.count + 1;
    if (!to_.fill_up(ways, 0) || !next_.fill_up(ways, 0))
        return false;
    for (std::int32_t id = 1; id <= net.edges.count; ++id) {
        const auto* edge = static_cast<const EdgeKey*>(net.edges.get(id));
        if (!edge || edge->node1 == edge->node2 || !net.nodes.get(edge->node1) || !net.nodes.get(edge->node2))
            continue;
        to_.items[way_of(id, true)] = std::max(edge->node1, edge->node2);
        to_.items[way_of(id, false)] = std::min(edge->node1, edge->node2);
    }
    HeapArray<std::int32_t> first_in, next_in; // the ways that lead to a node, in a row
    if (!first_in.fill_up(nodes_, 0) || !next_in.fill_up(ways, 0))
        return false;
    for (std::int32_t way = 2; way < ways; ++way)
        if (to(way) != 0) {
            next_in.items[way] = first_in.items[to(way)];
            first_in.items[to(way)] = way;
        }
    for (std::int32_t node = 1; node < nodes_; ++node) {
        if (!gather_exits(net, node))
            return false;
        const bool is_sorted = sort_exits();
        for (std::int32_t way = first_in.items[node]; way != 0; way = next_in.items[way]) {
            const double back = direction_of_way(*static_cast<const NodeObj*>(net.nodes.get(node)),
                                                 *static_cast<const NodeObj*>(net.nodes.get(from(way))));
            next_.items[way] = is_sorted && !std::isnan(back) ? turn_of_sorted(back) : turn_of_all(back);
        }
    }
    return true;
}
