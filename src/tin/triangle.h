// triangle.h: corners and neighbours of one triangle.
#pragma once

#include "tin/network.h"

// Index of a corner; -1: it is none.
inline int corner_index(const tin_triangle* triangle, const tin_point* point)
{
    for (int i = 0; i < 3; ++i)
        if (triangle->corner[i] == point)
            return i;
    return -1;
}

// Index of the first corner that is neither p nor q; -1: there is none.
inline int apex_index(const tin_triangle* triangle, const tin_point* p, const tin_point* q)
{
    for (int i = 0; i < 3; ++i)
        if (triangle->corner[i] != p && triangle->corner[i] != q)
            return i;
    return -1;
}

// Each link of `triangle` (may be null) to `old` becomes one to `now`.
inline void replace_side(tin_triangle* triangle, const tin_triangle* old, tin_triangle* now)
{
    if (triangle)
        for (tin_triangle*& side : triangle->side)
            if (side == old)
                side = now;
}

inline void set_corners(tin_triangle* triangle, tin_point* a, tin_point* b, tin_point* c)
{
    triangle->corner[0] = a;
    triangle->corner[1] = b;
    triangle->corner[2] = c;
}

inline void set_sides(tin_triangle* triangle, tin_triangle* a, tin_triangle* b, tin_triangle* c)
{
    triangle->side[0] = a;
    triangle->side[1] = b;
    triangle->side[2] = c;
}

// What is known of the waiting points well inside a triangle.
enum class tin_content : std::uint8_t { unknown, some, none };

// A triangle as a run makes it. The list has the later ones first.
struct listed_triangle : tin_triangle {
    std::uint32_t number; // in the order in which they were put on the list
    tin_content content;
};

// A triangle with corners; the rest is null. Null when the heap is exhausted.
tin_triangle* triangle_new(tin_point* a, tin_point* b, tin_point* c);
// Puts a triangle at the head of the network's list.
void triangle_put_first(tin_network* network, tin_triangle* triangle);
