// Points hang in a tree by x that nobody balances: which near points are found to be duplicates depends on the
// way down, and so on the order of reading. Sorted input makes it a list; the index then finds the same place.
#include "tin/reading_index.h"

#include <cmath>

#include "hostapi/ads.h"

namespace
{

// A point must not lie on a contour. The fraction of a negative elevation is negative and so below the limit:
// all of these are raised, and elevations read so far are.
double off_contour(double z, double interval)
{
    if (interval == 0)
        return z;
    double whole;
    const double fraction = std::modf(z / interval, &whole);
    return fraction < 1e-6 || fraction > 0.999999 ? z + 1e-7 : z;
}

void set_box(tin_network* network, const tin_point* point)
{
    network->box[0] = point->x - LENGTH_TOL;
    network->box[1] = point->x + LENGTH_TOL;
    network->box[2] = point->y - LENGTH_TOL;
    network->box[3] = point->y + LENGTH_TOL;
}

bool in_box(const double (&box)[4], const tin_point* point)
{
    return point->x > box[0] && point->x < box[1] && point->y > box[2] && point->y < box[3];
}

// Walks down the tree; the duplicate that it meets, or null with the link where the point belongs.
tin_point* walk_down(tin_network* network, const tin_point* point, tin_point*** place)
{
    tin_point** link = &network->points;
    for (tin_point* node = *link; node; node = *link) {
        if (in_box(network->box, node))
            return node;
        link = point->x > node->x ? &node->greater : &node->less;
    }
    *place = link;
    return nullptr;
}

} // namespace

tin_point* tin_add_point(tin_network* network, tin_point* point)
{
    if (network->skip_zero == 1 && point->z >= -1e-6 && point->z <= 1e-6) {
        ++network->zero_count;
        return point;
    }
    point->z = off_contour(point->z, network->contour_interval);
    point->next = nullptr;
    point->less = nullptr;
    point->greater = nullptr;
    if (!network->points) {
        network->points = point;
        ++network->point_count;
        reading_index_begin(network);
        return nullptr;
    }
    set_box(network, point);
    tin_point** place = nullptr;
    const bool indexed = reading_index_stands(network) && point->x == point->x;
    tin_point* duplicate =
        indexed ? reading_index_find(network, point, &place) : walk_down(network, point, &place);
    if (duplicate)
        return duplicate;
    *place = point;
    if (reading_index_stands(network))
        reading_index_add(network, point);
    ++network->point_count;
    ++network->tick;
    if (network->tick == 100) {
        ++network->hundreds;
        network->tick = 0;
        if (!network->quiet)
            acutPrintf("\rReading points ... %ld", network->hundreds * 100L);
    }
    return nullptr;
}
