// loops.h: cutting the loops out of a chain, with word of the heap.
#pragma once

#include "polygon/node.h"

// pg_remove_loops; false when the heap was exhausted before all loops were out. The chain is whole then too,
// with the loops that it still has.
bool pg_cut_loops(pg_node* chain);
