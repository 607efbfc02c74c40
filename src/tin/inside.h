// inside.h: whether a point lies in a triangle, and buckets sorted anew by that.
#pragma once

#include "tin/network.h"

// Makes a triangle ready for the inside test. There are two places for one, so that points can be tested
// against two triangles in turn.
void tin_load_edges_a(tin_network* network, const tin_triangle* triangle);
void tin_load_edges_b(tin_network* network, const tin_triangle* triangle);
// 1 if the point lies in the prepared triangle, else 0. Of two triangles at an edge mostly just one has a
// point on it; both have it on a horizontal edge.
int tin_inside_a(tin_network* network, const tin_point* point);
int tin_inside_b(tin_network* network, const tin_point* point);

// Moves a link to the head of the bucket of a triangle, which its point then names.
void tin_put_in_bucket(tin_link* link, tin_triangle* triangle);
// Shares the points of both buckets, those of `first` before those of `second`: to `in` what lies inside it,
// to `other` the rest. The four are two triangles.
void tin_sort_buckets(tin_network* network, tin_triangle* first, tin_triangle* second, tin_triangle* in,
                      tin_triangle* other);
// The first triangle of the network's list that holds the point; null: none does.
tin_triangle* tin_first_holding(tin_network* network, const tin_point* point);
