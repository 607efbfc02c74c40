// edge_arcs.h: the shape of an edge of a network.
#pragma once

#include "polygon/segment_pairs.h"
#include "topology/topo_net.h"

inline bool is_arc(const EdgeKey& edge)
{
    return edge.bulge != 0.0;
}

// The ends of an edge, null where the edge has no network or its network no such node.
struct edge_ends {
    const NodeObj *first, *second;

    explicit operator bool() const { return first && second; }
};
edge_ends ends_of(const EdgeKey& edge);

// Works an arc out unless that was done; a straight edge is left alone. False where an end is missing.
bool make_arc_ready(ShapeEdge* edge);

// The edge as the kernel's segment: its arc must be ready, and both ends must be there.
pg_segment segment_of(const ShapeEdge& edge);

// Of the piece of an arc edge from one of its places to a later one, as seen from the first.
double arc_piece_bulge(const ShapeEdge& edge, const NodeObj& from, const NodeObj& to);
