// rounding.h: corners rounded by an arc that touches both sides, whatever the sides are.
//
// There is no formula for the centre of such an arc when the sides are polylines with arcs. It is looked for
// along the centre lines on the inner side of the corner, from the corner to where the distance from the sides
// passes the radius, and then moved to the radius from both.
#pragma once

#include "polygon/node.h"

// A new chain with the corner rounded. It runs in the direction in which the corner turns left, so against
// *chain at a corner to the right. Null when *chain doesn't pass through `corner`, when no circle of that
// radius fits (the largest that does is one of them), or when the heap is exhausted.
//
// Whatever the answer, *chain is cleaned (pg_clean), and if it is closed and begins at `corner` it is opened on
// its far side: the same outline with as many nodes, turned so that it begins and ends at the node farthest
// from `corner`. *chain is the new head then; this takes no memory and can't fail. Else *chain stays.
pg_node* pg_round_corner(pg_node** chain, const double* corner, double radius);

// Rounds the corner at which two chains meet, each with either end. On success the joined chain, which is
// *first then, and *second is null; it too runs in the direction in which the corner turns left. Null else: the
// chains are whole then, but the second is turned round if the way from the first to the second turns left, and
// if it turns right they have changed places and it is the old second that is turned round.
pg_node* pg_round_join(pg_node** first, pg_node** second, const double* corner, double radius);

// Moves `point` (x and y) towards the spot at `radius` from both chains, in at most 10 steps. It ends with the
// last step that brought it nearer; a point 1 or more off the radius from either stays.
void pg_centre_refine(double* point, double radius, const pg_node* a, const pg_node* b);

// Follows the chains of a list from `point`: the first one with a node there that has a next, from that node
// on, then from its last point the same, each chain once. If there is none at `point`, one that ends there is
// taken backwards. A new chain, cleaned; null when there is none at all. The rings are released.
pg_node* pg_follow_chains(pg_ring** rings, const double* point);
