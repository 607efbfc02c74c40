// Points wait in the bucket of the triangle in which they lie, so that none has to be searched for. A split and
// a swap share the buckets of the triangles that they change anew. New triangles have the new point as their
// first corner; the edge that may have to be swapped is then always side[1].
#include "tin/insert.h"

#include <utility>

#include "hostapi/ads.h"
#include "tin/inside.h"
#include "tin/swap_test.h"
#include "tin/triangle.h"
#include "tin/waiting.h"

namespace
{

constexpr int SWAP_BUDGET = 248; // calls that one side of a new point may cost

// The triangle to split for a point; null with a message when none holds it.
tin_triangle* triangle_for(tin_network* network, tin_point* point)
{
    if (!point->tri) {
        acutPrintf("\nPoint insertion ERROR");
        return nullptr;
    }
    tin_load_edges_a(network, point->tri);
    if (tin_inside_a(network, point))
        return point->tri;
    // The point's link stays behind in the bucket where it was, and goes on changing the point's `tri`.
    tin_triangle* holder = tin_first_holding(network, point);
    if (!holder) {
        acutPrintf("\nUnable to fix insertion ERROR");
        return nullptr;
    }
    point->tri = holder;
    return holder;
}

// Shares the links of a split triangle's bucket among its three parts; the point's own is dropped.
void share_bucket(tin_network* network, tin_link* link, const tin_point* point, tin_triangle* a,
                  tin_triangle* b, tin_triangle* rest)
{
    if (!link)
        return;
    tin_load_edges_a(network, a);
    tin_load_edges_b(network, b);
    while (link) {
        tin_link* next = link->next;
        if (link->point == point)
            acad_free(link);
        else if (tin_inside_a(network, link->point))
            tin_put_in_bucket(link, a);
        else
            tin_put_in_bucket(link, tin_inside_b(network, link->point) ? b : rest);
        link = next;
    }
    for (tin_triangle* part : {a, b, rest})
        waiting_settle(network, part);
}

void swap_around(tin_network* network, tin_point* point, tin_triangle* triangle)
{
    network->swap_depth = 0;
    if (triangle->side[1])
        tin_swap_edges(network, triangle->corner[1], triangle->corner[2], triangle->side[1], point, triangle);
}

} // namespace

void tin_swap_edges(tin_network* network, tin_point* p1, tin_point* p2, tin_triangle* far, tin_point* new_point,
                    tin_triangle* near)
{
    if (++network->swap_depth >= SWAP_BUDGET) {
        acutPrintf("\nSwap test maxed out.");
        return;
    }
    if (tin_is_barrier(network, p1, p2))
        return;
    const int at = apex_index(far, p1, p2);
    tin_point* apex = at < 0 ? nullptr : far->corner[at];
    if (!tin_swap_test(network, p1, apex, p2, new_point, far))
        return;
    tin_triangle* beside_p1 = far->side[(at + 2) % 3];
    tin_triangle* beside_p2 = far->side[at];
    tin_triangle* right = near->side[2];
    const swap_corners before = corners_of(near, far);
    const bool as_usual = near->corner[0] == new_point && near->corner[1] == p1 && near->corner[2] == p2 &&
                          far->corner[(at + 1) % 3] == p2 && far->corner[(at + 2) % 3] == p1;
    const bool none_in = waiting_none_in(network, near, far);
    set_corners(near, new_point, p1, apex);
    set_sides(near, near->side[0], beside_p1, far);
    set_corners(far, new_point, apex, p2);
    set_sides(far, near, beside_p2, right);
    p2->tri = far;
    p1->tri = near;
    replace_side(beside_p1, far, near);
    replace_side(right, near, far);
    if (as_usual)
        waiting_swapped(network, near, far, before, new_point, apex, none_in);
    else
        waiting_swapped(network, near, far, before);
    tin_sort_buckets(network, near, far, near, far);
    if (near->side[1])
        tin_swap_edges(network, p1, apex, near->side[1], new_point, near);
    if (far->side[1])
        tin_swap_edges(network, apex, p2, far->side[1], new_point, far);
}

int tin_insert_point(tin_network* network, tin_point* point)
{
    tin_triangle* t = triangle_for(network, point);
    if (!t)
        return 0;
    tin_point *c0 = t->corner[0], *c1 = t->corner[1], *c2 = t->corner[2];
    tin_triangle* a = triangle_new(point, c0, c1);
    tin_triangle* b = triangle_new(point, c1, c2);
    if (!a || !b) {
        acad_free(a);
        acad_free(b);
        return 0;
    }
    waiting_split(network, point, t, a, b);
    c0->tri = a;
    c1->tri = b;
    c2->tri = t;
    tin_link* waiting = std::exchange(t->bucket, nullptr);
    // Taken before they are told: barriers on one line can leave a triangle that is its own neighbour.
    tin_triangle *s0 = t->side[0], *s1 = t->side[1], *s2 = t->side[2];
    replace_side(s0, t, a);
    replace_side(s1, t, b);
    set_sides(a, t, s0, b);
    set_sides(b, a, s1, t);
    set_corners(t, point, c2, c0);
    set_sides(t, b, s2, a);
    triangle_put_first(network, b);
    triangle_put_first(network, a);
    share_bucket(network, waiting, point, a, b, t);
    point->tri = a;
    for (tin_triangle* part : {a, b, t})
        swap_around(network, point, part);
    return 1;
}
