// node.h: chains of nodes, whose segments are straight or arcs given by a bulge.
//
// A chain is a head; a null head is the empty chain. It is closed when its last node lies on its
// first within 1e-6 in x and in y, as a node of its own. Nodes come from the host's heap; a chain
// belongs to whoever holds its head and goes back with pl_free_nodes.
#pragma once

#include <cstdint>

struct pg_node {
    double x, y, z;
    std::int32_t mark; // 1 from pg_node_new, 0 from pg_node_push
    double bulge;      // of the segment that starts here: tangent of a quarter of its included angle,
                       // positive counter-clockwise, 0 straight; no meaning at the end of an open chain
    double aux;        // second value of the segment, carried along
    std::int32_t keep; // 1: a vertex of the input; 0: added by flattening an arc
    pg_node* next;
    pg_node* prev; // valid only straight after pg_clean
};

// One chain in a list of chains.
struct pg_ring {
    pg_node* nodes;
    std::int32_t clockwise; // 1 when pg_orientation gives 1; set by the list's user
    std::int32_t kind;      // for the list's user
    pg_ring* next;
};

// ---- making. Null when the heap is exhausted.
// A lone node at a point (x, y, z): bulge 0, mark 1, keep 1.
pg_node* pg_node_new(const double* point);
// A new node in front of `next`; the new head. On null `next` is still the caller's.
pg_node* pg_node_push(const double* point, pg_node* next, double bulge);
// A new chain with the same positions, marks, bulges and second values; keep is 1 throughout. A node
// for which there is no room is left out.
pg_node* pg_copy(const pg_node* chain);
// A ring with all fields clear.
pg_ring* pg_ring_new();

// ---- asking
int pg_count(const pg_node* chain);
// The last node of a chain that has one.
pg_node* pg_last(pg_node* chain);
const pg_node* pg_last(const pg_node* chain);
// The node behind `node`, going round to the head, or to the node behind the head when the last node
// lies on the head. A lone node is followed by itself.
pg_node* pg_next_wrapped(pg_node* node, pg_node* head);
const pg_node* pg_next_wrapped(const pg_node* node, const pg_node* head);
// -1 counter-clockwise, 1 clockwise, 0 when it can't be told; by the corner at the lowest node, the first
// of several. Bulges are ignored.
int pg_orientation(const pg_node* chain);
// 1 inside or within 1e-6 of the boundary along x, else 0. The outline is closed by its last edge;
// bulges are ignored. Horizontal edges don't count as boundary.
int pg_point_inside(const double* point, const pg_node* chain);

// ---- changing
void pg_set_z(pg_node* chain, double z);
// Turns a chain round, bulges with it; the new head.
pg_node* pg_reverse(pg_node* chain);
// Joins b behind a; the head. A first node of b that lies on the last of a is released.
pg_node* pg_join(pg_node* a, pg_node* b);
// Removes double nodes and spikes (out and straight back) until there are none, and sets `prev`.
// The head stays.
void pg_clean(pg_node* chain);

// ---- releasing
void pl_free_nodes(pg_node* head);
// Releases the rings with their chains; the head becomes null.
void pg_free_rings(pg_ring** head);
