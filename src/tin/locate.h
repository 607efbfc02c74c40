// locate.h: triangles by place.
#pragma once

#include "tin/point_tree.h"

inline tin_place place_of(const tin_point* p)
{
    return {p->x, p->y};
}

// The triangle of three corners is counter-clockwise and the place inside it, farther from all edges than
// `reach`.
bool is_well_inside(const tin_point* const (&corner)[3], double x, double y, double reach);
// Walks from a triangle towards a place, over the edges that have it on their other side, to the triangle that
// has it inside or on an edge. Null: it leads out of the network, or nowhere in `steps`.
tin_triangle* walk_towards(tin_triangle* start, double x, double y, std::uint32_t steps);
// The only triangle that has the place well inside, where edges are as they should be; null: none has it.
tin_triangle* locate(const tin_network* network, tin_triangle* start, double x, double y, double reach);

constexpr int NEAR_TRIANGLES = 64;
// The triangles as near to a place as `reach`, by way of each other from one of them. Their number; 0: there
// are more than NEAR_TRIANGLES, or `start` isn't one.
int triangles_near(tin_triangle* start, double x, double y, double reach, tin_triangle* (&out)[NEAR_TRIANGLES]);
