#include "tin/inside.h"

#include <utility>

#include "tin/triangle.h"
#include "tin/waiting.h"

namespace
{

void load_edges(tri_edges* edges, const tin_triangle* triangle)
{
    for (int i = 0; i < 3; ++i)
        edges->corner[i] = {triangle->corner[i]->x, triangle->corner[i]->y};
    for (int i = 0; i < 3; ++i) {
        tin_place* p = &edges->corner[i];
        tin_place* q = &edges->corner[(i + 1) % 3];
        tri_edge& edge = edges->edge[i];
        const bool q_higher = q->y > p->y, q_right = q->x > p->x;
        edge.top_end = q_higher ? q : p;
        edge.bottom_end = q_higher ? p : q;
        edge.high_x_end = q_right ? q : p;
        edge.low_x_end = q_right ? p : q;
        edge.slope = edge.top_end->x == edge.bottom_end->x
                         ? NO_VALUE
                         : (edge.top_end->y - edge.bottom_end->y) / (edge.top_end->x - edge.bottom_end->x);
    }
}

// Counts the edges that a ray from the point to the left crosses. An upper end doesn't belong to its edge, so
// a ray through a corner counts once; a point on a horizontal edge is settled by that edge alone.
int inside_prepared(tin_network* network, const tri_edges& edges, double x, double y)
{
    network->inside = 0;
    for (const tri_edge& edge : edges.edge) {
        const tin_place &top = *edge.top_end, &bottom = *edge.bottom_end;
        if (y < bottom.y)
            continue;
        if (!(y < top.y)) { // also where y is no number
            if (top.y != bottom.y || y != top.y)
                continue;
            network->inside = x >= edge.low_x_end->x && x <= edge.high_x_end->x;
            return network->inside;
        }
        if (x < edge.low_x_end->x)
            continue;
        if (x > edge.high_x_end->x || !((y - bottom.y) / edge.slope + bottom.x > x))
            network->inside = !network->inside;
    }
    return network->inside;
}

// The point is beside all three corners, where the inside test says no.
bool is_beside(const tin_triangle* t, const tin_point* p)
{
    const tin_point &a = *t->corner[0], &b = *t->corner[1], &c = *t->corner[2];
    return (p->y < a.y && p->y < b.y && p->y < c.y) || (p->y > a.y && p->y > b.y && p->y > c.y) ||
           (p->x < a.x && p->x < b.x && p->x < c.x) || (p->x > a.x && p->x > b.x && p->x > c.x);
}

// The first in the order of the list among some triangles.
tin_triangle* first_in_list_holding(tin_network* network, tin_triangle* const* triangles, int count,
                                    const tin_point* point)
{
    listed_triangle* best = nullptr;
    for (int i = 0; i < count; ++i) {
        auto* t = static_cast<listed_triangle*>(triangles[i]);
        if (best && t->number < best->number)
            continue;
        tin_load_edges_a(network, t);
        if (tin_inside_a(network, point))
            best = t;
    }
    return best;
}

} // namespace

void tin_load_edges_a(tin_network* network, const tin_triangle* triangle)
{
    load_edges(&network->edges_a, triangle);
}

void tin_load_edges_b(tin_network* network, const tin_triangle* triangle)
{
    load_edges(&network->edges_b, triangle);
}

int tin_inside_a(tin_network* network, const tin_point* point)
{
    return inside_prepared(network, network->edges_a, point->x, point->y);
}

int tin_inside_b(tin_network* network, const tin_point* point)
{
    return inside_prepared(network, network->edges_b, point->x, point->y);
}

void tin_put_in_bucket(tin_link* link, tin_triangle* triangle)
{
    link->next = triangle->bucket;
    triangle->bucket = link;
    link->point->tri = triangle;
}

void tin_sort_buckets(tin_network* network, tin_triangle* first, tin_triangle* second, tin_triangle* in,
                      tin_triangle* other)
{
    if (!first->bucket && !second->bucket)
        return;
    tin_link* lists[2] = {std::exchange(first->bucket, nullptr), std::exchange(second->bucket, nullptr)};
    tin_load_edges_a(network, in);
    for (tin_link* link : lists)
        while (link) {
            tin_link* next = link->next;
            tin_put_in_bucket(link, tin_inside_a(network, link->point) ? in : other);
            link = next;
        }
    waiting_settle(network, in);
    waiting_settle(network, other);
}

tin_triangle* tin_first_holding(tin_network* network, const tin_point* point)
{
    tin_triangle* near[NEAR_TRIANGLES];
    if (const int count = waiting_holders(network, point, near))
        return first_in_list_holding(network, near, count, point);
    for (tin_triangle* t = network->triangles; t; t = t->next) {
        if (is_beside(t, point))
            continue;
        tin_load_edges_a(network, t);
        if (tin_inside_a(network, point))
            return t;
    }
    return nullptr;
}
