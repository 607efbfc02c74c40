#include "tin/network.h"

#include <algorithm>
#include <utility>

#include "hostapi/ads.h"
#include "tin/barriers.h"
#include "tin/insert.h"
#include "tin/inside.h"
#include "tin/reading_index.h"
#include "tin/triangle.h"
#include "tin/waiting.h"

namespace
{

// Coordinates from the lower left of the points keep the squares of the swap test small.
void move_to_origin(tin_network* network)
{
    for (tin_point* p = network->points; p; p = p->next) {
        p->x -= network->x_min;
        p->y -= network->y_min;
        p->less = nullptr;
        p->tri = nullptr;
    }
}

void move_back(tin_network* network, tin_point* list, bool first)
{
    for (tin_point* p = list; p; p = p->next) {
        p->x += network->x_min;
        p->y += network->y_min;
        if (first || p->z < network->z_min)
            network->z_min = p->z;
        if (first || p->z > network->z_max)
            network->z_max = p->z;
        first = false;
    }
}

void move_all_back(tin_network* network)
{
    move_back(network, network->points, true);
    move_back(network, network->barrier_points, !network->points);
}

// Two triangles around all points. false: there is no room for them.
bool build_frame(tin_network* network)
{
    const double w = network->x_max - network->x_min, h = network->y_max - network->y_min;
    tin_point** frame = network->frame;
    frame[0] = tin_point_new(-2 * w, 3 * h, 0);
    frame[1] = tin_point_new(3 * w, 3 * h, 0);
    frame[2] = tin_point_new(3 * w, -2 * h, 0);
    frame[3] = tin_point_new(-2 * w, -2 * h, 0);
    tin_triangle* first = triangle_new(frame[1], frame[0], frame[3]);
    tin_triangle* second = triangle_new(frame[3], frame[2], frame[1]);
    if (!frame[0] || !frame[1] || !frame[2] || !frame[3] || !first || !second) {
        acad_free(first);
        acad_free(second);
        return false;
    }
    first->side[2] = second;
    second->side[2] = first;
    triangle_put_first(network, second);
    triangle_put_first(network, first);
    return true;
}

// A point for which there is no link is looked for in the whole network when its turn comes.
void fill_buckets(tin_network* network)
{
    if (waiting_begin(network))
        return;
    tin_triangle *first = network->triangles, *second = first->next;
    tin_load_edges_a(network, first);
    for (tin_point* p = network->points; p; p = p->next) {
        tin_triangle* holder = tin_inside_a(network, p) ? first : second;
        p->tri = holder;
        auto* link = static_cast<tin_link*>(acad_malloc(sizeof(tin_link)));
        if (!link)
            continue;
        *link = tin_link{p, nullptr};
        tin_put_in_bucket(link, holder);
    }
}

const tin_point* behind(const tin_point* point, int steps)
{
    for (; point && steps > 0; --steps)
        point = point->next;
    return point;
}

// false: the user broke off.
bool insert_waiting(tin_network* network)
{
    const tin_point *next = behind(network->points, 2), *soon = behind(next, 2), *later = behind(soon, 2);
    while (network->points) {
        waiting_call_for(network, next, soon, later);
        next = behind(next, 1), soon = behind(soon, 1), later = behind(later, 1);
        waiting_take(network, network->points);
        tin_insert_point(network, network->points);
        network->points = network->points->next;
        if (network->tick == 100) {
            ++network->hundreds;
            network->tick = 0;
            if (!network->quiet)
                acutPrintf("\rTriangulating points ... %ld", network->hundreds * 100L);
            if (tin_cancelled())
                return false;
        }
        ++network->tick;
    }
    return true;
}

// false: the user broke off.
bool insert_all(tin_network* network)
{
    if (!tin_insert_barriers(network) || tin_cancelled())
        return false;
    network->kept_points = network->points;
    network->tick = 1;
    network->hundreds = 0;
    if (!network->quiet)
        acutPrintf("\nTriangulating points ...      ");
    return insert_waiting(network);
}

} // namespace

int tin_triangulate(tin_network* network)
{
    if (network->zero_count > 0)
        acutPrintf("\nIgnored %d points with zero elevation.\n", network->zero_count);
    if (!network->points) {
        acutPrintf("Unable to find points.\n");
        return RTNORM;
    }
    if (!network->points->next) {
        acutPrintf("Too few points to triangulate.\n");
        return RTNORM;
    }
    reading_index_free(network);
    move_to_origin(network);
    if (network->split_on_barriers == 1)
        tin_split_barriers(network);
    if (!build_frame(network)) {
        move_all_back(network);
        return RTNORM;
    }
    fill_buckets(network);
    const bool done = insert_all(network);
    waiting_end(network);
    if (!done)
        return RTNORM;
    if (!network->quiet)
        acutPrintf("\rTriangulating points ... %d     ", network->point_count);
    if (tin_cancelled())
        return RTNORM;
    network->points = std::exchange(network->kept_points, nullptr);
    move_all_back(network);
    return RTNORM;
}
