// split_edge.h: both pieces of an edge that is split.
#pragma once

#include "topology/shape_net.h"

struct edge_pieces {
    std::int32_t first = 0, second = 0; // in the edge's direction; 0: the edge wasn't split
};

// As ShapeNet::split_edge.
edge_pieces split_edge_at(ShapeNet* net, std::int32_t edge_id, std::int32_t node_id);
