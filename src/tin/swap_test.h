// swap_test.h: which diagonal a quadrilateral of two triangles shall have.
#pragma once

#include "tin/network.h"

// All three are about the quadrilateral a, b, c, d with the diagonal a-c; `far` is its triangle a, b, c.
// 1 if b-d shall take the place of a-c, else 0.
int tin_swap_test(const tin_network* network, const tin_point* a, const tin_point* b, const tin_point* c,
                  const tin_point* d, const tin_triangle* far);
// The same for corners that lie nearly on one circle.
int tin_cocircular_test(const tin_network* network, const tin_point* a, const tin_point* b, const tin_point* c,
                        const tin_point* d, const tin_triangle* far);
// 1 if q is a partner of p: the edge between them must not be swapped.
int tin_is_barrier(const tin_network* network, const tin_point* p, const tin_point* q);
