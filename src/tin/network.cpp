#include "tin/network.h"

#include <algorithm>

#include "hostapi/ads.h"
#include "tin/reading_index.h"
#include "tin/triangle.h"

namespace
{

template <class record>
void free_list(record* head)
{
    while (head) {
        record* next = head->next;
        acad_free(head);
        head = next;
    }
}

void free_points(tin_point* head)
{
    for (tin_point* p = head; p; p = p->next)
        free_list(p->partners);
    free_list(head);
}

} // namespace

tin_point* tin_point_new(double x, double y, double z)
{
    auto* point = static_cast<tin_point*>(acad_malloc(sizeof(tin_point)));
    if (point)
        *point = tin_point{x, y, z, {nullptr}, nullptr, nullptr, nullptr};
    return point;
}

void tin_keep_point(tin_network* network, tin_point* point, tin_point** list)
{
    point->next = *list;
    *list = point;
    network->x_min = std::min(network->x_min, point->x);
    network->x_max = std::max(network->x_max, point->x);
    network->y_min = std::min(network->y_min, point->y);
    network->y_max = std::max(network->y_max, point->y);
}

tin_network::~tin_network()
{
    reading_index_free(this);
    free_list(barriers);
    free_points(kept_points ? kept_points : points);
    free_points(barrier_points);
    for (tin_point* corner : frame)
        acad_free(corner);
    for (tin_triangle* t = triangles; t; t = t->next)
        free_list(t->bucket);
    free_list(triangles);
}

tin_triangle* triangle_new(tin_point* a, tin_point* b, tin_point* c)
{
    auto* triangle = static_cast<listed_triangle*>(acad_malloc(sizeof(listed_triangle)));
    if (triangle)
        *triangle = listed_triangle{
            {{a, b, c}, {nullptr, nullptr, nullptr}, nullptr, nullptr}, 0, tin_content::unknown};
    return triangle;
}

void triangle_put_first(tin_network* network, tin_triangle* triangle)
{
    static_cast<listed_triangle*>(triangle)->number = network->listed++;
    triangle->next = network->triangles;
    network->triangles = triangle;
}
