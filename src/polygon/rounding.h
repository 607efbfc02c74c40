// rounding.h: corners rounded by an arc that touches both sides, whatever the sides are.
#pragma once

#include "polygon/node.h"

// A new chain with the corner rounded, null when no circle of that radius touches both sides. The input is
// cleaned, and a closed chain rounded at its start is opened on its far side; else it is left alone.
pg_node* pg_round_corner(pg_node** chain, const double* corner, double radius);

// Rounds the corner at which two chains meet. On success the joined chain, which is *first then, and *second
// is null; else null.
pg_node* pg_round_join(pg_node** first, pg_node** second, const double* corner, double radius);

// Moves `point` towards the spot at `radius` from both chains.
void pg_centre_refine(double* point, double radius, const pg_node* a, const pg_node* b);

// Follows the chains of a list from `point`, each once; a new chain. The rings are released.
pg_node* pg_follow_chains(pg_ring** rings, const double* point);
