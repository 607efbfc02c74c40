// stroke.h: chains with straight pieces in place of arcs, and with fewer vertices.
#pragma once

#include "drawing/vertex_chain.h"

// Replaces each arc by 21 chords and then thins the chain with `tolerance` (as chain_thin). 1 when the
// chain had arcs, else 0 and the chain is as it was. An arc whose chord is below 1e-6 vanishes with its
// end vertex. Sets `prev` when it thins.
int chain_stroke_arcs(pl_vertex* head, double tolerance);

// Releases inner vertices that lie off the line of their neighbours by less than the root of
// `tolerance`, a squared length, in passes until one removes nothing. Vertices that begin an arc stay.
// Answers the head; sets `prev`.
pl_vertex* chain_thin(pl_vertex* head, double tolerance);
