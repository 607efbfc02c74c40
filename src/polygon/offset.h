// offset.h: the parallel of a chain, with true arcs.
#pragma once

#include "polygon/node.h"

// A new chain in the direction of the input at `distance` from it, on the right for `side` 1, else on the left.
// corner_mode 0 rounds outer corners about the vertex, any other mitres them. `remove_loops` non-zero cuts
// out the loops that an offset makes at tight bends. The input is cleaned (pg_clean), else left alone. Null
// when there is nothing to offset.
pg_node* pg_offset(pg_node* chain, double distance, int side, int corner_mode, int remove_loops);

// Cuts each loop out of a chain where it crosses itself, from the head on; the chain.
pg_node* pg_remove_loops(pg_node* chain);
