// edge_arcs.h: the shape of an edge of a network.
#pragma once

#include "polygon/segment_pairs.h"
#include "topology/topo_net.h"

inline bool is_arc(const EdgeKey& edge)
{
    return edge.bulge != 0.0;
}

// Whether an arc strays from its chord by more than two places of one node may lie apart. Flatter ones meet
// others as their chords do: their centre lies so far away that places worked out from it would be off by more
// than that, and pieces cut there would cross again and again.
bool is_curved(const EdgeKey& edge);

// The ends of an edge, null where the edge has no network or its network no such node.
struct edge_ends {
    const NodeObj *first, *second;

    explicit operator bool() const { return first && second; }
};
edge_ends ends_of(const EdgeKey& edge);

// Works an arc out unless that was done; a straight edge is left alone. False where an end is missing.
bool make_arc_ready(ShapeEdge* edge);

// The edge as the kernel's segment, straight unless it is curved: its arc must be ready, and both ends must be
// there.
pg_segment segment_of(const ShapeEdge& edge);

// Of the piece of an arc edge from one of its places to a later one, as seen from the first.
double arc_piece_bulge(const ShapeEdge& edge, const NodeObj& from, const NodeObj& to);
