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
};
