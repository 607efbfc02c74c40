// ways.h: the edges of a network as ways, one in each direction, and which way leads on from which.
#pragma once

#include <algorithm>

#include "topology/heap_array.h"
#include "topology/topo_net.h"

// Twice the edge's id, and one more where it is walked from its lower node; 0 is no way.
constexpr std::int32_t way_of(std::int32_t edge, bool forward)
{
    return 2 * edge + (forward ? 1 : 0);
}

constexpr std::int32_t edge_of_way(std::int32_t way)
{
    return way / 2;
}

constexpr std::int32_t way_back(std::int32_t way)
{
    return way ^ 1;
}

// The ways of a network as it stands. A walk that turns as far to the left as it can at each node goes on from
// a way in the same manner however it came there.
class Ways
{
public:
    // False where they can't be had: the heap is exhausted, or a node lists an edge that ends elsewhere.
    bool make(const TopoNet& net);

    std::int32_t count() const { return next_.count; } // ways are below it
    std::int32_t node_count() const { return nodes_; } // nodes are below it
    // Where a way leads to; 0 for an edge that is gone, lacks a node or leads nowhere.
    std::int32_t to(std::int32_t way) const { return to_.items[way]; }
    std::int32_t from(std::int32_t way) const { return to_.items[way_back(way)]; }
    // With the greatest turn, of several that of the edge that stands first at the node; 0 where all lead back.
    std::int32_t next(std::int32_t way) const { return next_.items[way]; }

private:
    struct exit_way {
        double direction;
        std::int32_t place, way; // `place` in the list of the node
    };
    HeapArray<std::int32_t> to_, next_;
    HeapArray<exit_way> exits_; // of the node at hand
    std::int32_t nodes_ = 0;

    bool gather_exits(const TopoNet& net, std::int32_t node);
    bool sort_exits();
    std::int32_t turn_of_all(double back) const;
    std::int32_t turn_of_sorted(double back) const;
};
