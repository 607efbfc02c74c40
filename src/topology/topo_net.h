// topo_net.h: what a network of shapes and one of triangles have in common.
#pragma once

#include "topology/kd_set.h"
#include "topology/objects.h"

constexpr std::int32_t TOPO_LEAF_CAPACITY = 10;

// Owns its nodes and edges, through its sets. Objects name their network by `owner`, which must not move.
struct TopoNet : HostHeap {
    KdSet nodes; // NodeObj
    KdSet edges; // ShapeEdge or EdgeObj, all of one kind

    explicit TopoNet(std::int32_t dimensions)
        : nodes(dimensions, TOPO_LEAF_CAPACITY), edges(dimensions, TOPO_LEAF_CAPACITY)
    {
    }

    NodeObj* node(std::int32_t id) const { return static_cast<NodeObj*>(nodes.get(id)); }

    // The new id, which the object gets; 0, with the object still the caller's, when the heap is exhausted.
    std::int32_t add_node(NodeObj* node);

protected:
    // The same for an edge, which is linked into its end nodes.
    std::int32_t take_edge(EdgeKey* edge);
    // The other way: out of its end nodes and out of the set.
    void let_edge_go(const EdgeKey& edge);
};
