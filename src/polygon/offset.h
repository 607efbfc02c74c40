// offset.h: the parallel of a chain, with true arcs.
#pragma once

#include "polygon/node.h"

// A new chain in the direction of the input at `distance` from it, on the right for `side` 1, else on the left.
// It belongs to the caller (pl_free_nodes). The input is cleaned (pg_clean), else left alone.
//   corner_mode   0 rounds the outer corners of lines about the vertex, any other value mitres them; where the
//                 sides meet more than 100 distances away there is no corner then
//   remove_loops  non-zero cuts out the loops that an offset makes at tight bends
// Arcs keep their centre. A closed chain of lines gives a closed one. Nodes on arcs have z 0, others that of
// the vertex. A line that misses the arc behind it is printed as "Did not intersect", and the shape is bad
// there. Null for fewer than two nodes, and when the heap is exhausted.
pg_node* pg_offset(pg_node* chain, double distance, int side, int corner_mode, int remove_loops);

// Cuts each loop out of a chain where it crosses itself, from the head on, in place; the chain. When the heap
// is exhausted it keeps the loops that are left. A hundred thousand nodes of an ordinary chain take parts of a
// second.
pg_node* pg_remove_loops(pg_node* chain);
