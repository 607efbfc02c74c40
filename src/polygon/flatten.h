// flatten.h: arcs as short chords, and thinning them.
#pragma once

#include "polygon/node.h"

// Turns arcs into chords in place, at most 291 an arc, and thins them. An arc with a chord below 1e-6 goes with
// its end node. 1 when there was any arc. For want of memory arcs get fewer chords.
int pg_flatten(pg_node* chain, double tolerance);

// Removes points added by flattening (`keep` 0) whose squared distance from the line of their neighbours is
// below `tolerance`. The chain.
pg_node* pg_weed(pg_node* chain, double tolerance);
