#include "tin/barriers.h"

#include "common/user_break.h"
#include "hostapi/ads.h"
#include "tin/insert.h"
#include "tin/inside.h"
#include "tin/waiting.h"

namespace
{

tin_link* link_new(tin_point* point)
{
    auto* link = static_cast<tin_link*>(acad_malloc(sizeof(tin_link)));
    if (link)
        *link = tin_link{point, nullptr};
    return link;
}

void append(tin_point* point, tin_link* link)
{
    tin_link** end = &point->partners;
    while (*end)
        end = &(*end)->next;
    *end = link;
}

// The list of waiting points is linked backwards through `less` while barriers are inserted: their ends are
// taken out of the middle of it.
void link_backwards(tin_network* network)
{
    tin_point* before = nullptr;
    for (tin_point* p = network->points; p; p = p->next) {
        p->less = before;
        before = p;
    }
}

void unlink_backwards(tin_network* network)
{
    for (tin_point* p = network->points; p; p = p->next)
        p->less = nullptr;
}

bool is_waiting(const tin_network* network, const tin_point* point)
{
    return point == network->points || (point->less && point->less->next == point);
}

// Takes a point out of the waiting ones and inserts it. 1, or 0 when that failed.
int insert_end(tin_network* network, tin_point* point)
{
    if (point == network->points)
        network->points = point->next;
    else
        point->less->next = point->next;
    if (point->next)
        point->next->less = point->less;
    point->less = nullptr;
    point->next = nullptr;
    waiting_take(network, point);
    const int inserted = tin_insert_point(network, point);
    point->next = network->barrier_points;
    network->barrier_points = point;
    return inserted;
}

// A new barrier at the head of the list, where the walk doesn't come any more; connected as far as it goes.
int connect_half(tin_network* network, tin_point* from, tin_point* to)
{
    tin_barrier* half = barrier_new(from, to);
    if (!half) {
        ++network->failed_barriers;
        return 1;
    }
    half->next = network->barriers;
    network->barriers = half;
    tin_link_barrier(network, half);
    return connect_barrier_points(network, half, from->tri, to->tri, 0);
}

// Connects a barrier by way of a new point in its middle. The barrier itself stays in the lists.
int connect_by_middle(tin_network* network, const tin_barrier* barrier)
{
    const tin_point &p = *barrier->from, &q = *barrier->to;
    tin_point* middle = tin_point_new((p.x + q.x) / 2, (p.y + q.y) / 2, (p.z + q.z) / 2);
    if (!middle) {
        ++network->failed_barriers;
        return 0;
    }
    middle->next = network->barrier_points;
    network->barrier_points = middle;
    middle->tri = tin_first_holding(network, middle);
    if (!tin_insert_point(network, middle)) {
        ++network->failed_barriers;
        return 0;
    }
    connect_half(network, barrier->from, middle);
    return connect_half(network, middle, barrier->to);
}

// `connected` is what the barrier before left: an end that is in the network already leaves it alone.
int insert_barrier(tin_network* network, const tin_barrier* barrier, int connected)
{
    if (is_waiting(network, barrier->from))
        connected = insert_end(network, barrier->from);
    if (is_waiting(network, barrier->to)) {
        const int inserted = insert_end(network, barrier->to);
        if (connected)
            connected = inserted;
    }
    if (!barrier->from->tri || !barrier->to->tri) {
        acutPrintf("\nInternal error connecting barrier points.");
        return connected;
    }
    if (connected != 1)
        return connected;
    if (connect_barrier_points(network, barrier, barrier->from->tri, barrier->to->tri, 1))
        return 1;
    return connect_by_middle(network, barrier);
}

bool insert_all(tin_network* network)
{
    int connected = 0;
    for (tin_barrier* barrier = network->barriers; barrier; barrier = barrier->next) {
        if (network->tick == 100) {
            ++network->hundreds;
            network->tick = 0;
            if (!network->quiet)
                acutPrintf("\rInserting barriers ... %ld", network->hundreds * 100L);
            if (tin_cancelled())
                return false;
        }
        ++network->tick;
        connected = insert_barrier(network, barrier, connected);
    }
    return true;
}

} // namespace

tin_barrier* barrier_new(tin_point* from, tin_point* to)
{
    auto* barrier = static_cast<tin_barrier*>(acad_malloc(sizeof(tin_barrier)));
    if (barrier)
        *barrier = tin_barrier{from, to, nullptr};
    return barrier;
}

bool tin_add_barrier(tin_network* network, tin_point* from, tin_point* to)
{
    tin_barrier* barrier = barrier_new(from, to);
    if (!barrier)
        return false;
    barrier->next = network->barriers;
    network->barriers = barrier;
    tin_link_barrier(network, barrier);
    return true;
}

void tin_link_barrier(tin_network*, tin_barrier* barrier)
{
    tin_link* to = link_new(barrier->to);
    tin_link* from = link_new(barrier->from);
    if (!to || !from) { // half a protection would depend on which way an edge is looked at
        acad_free(to);
        acad_free(from);
        return;
    }
    append(barrier->from, to);
    append(barrier->to, from);
}

bool tin_cancelled()
{
    if (user_break() <= 0)
        return false;
    acutPrintf("\nFunction cancelled at user request.");
    return true;
}

bool tin_insert_barriers(tin_network* network)
{
    if (network->barriers && !network->quiet)
        acutPrintf("\nInserting barriers ... ");
    network->tick = 0;
    network->hundreds = 0;
    network->failed_barriers = 0;
    link_backwards(network);
    const bool done = insert_all(network);
    unlink_backwards(network);
    if (!done || !network->barriers)
        return done;
    if (!network->quiet)
        acutPrintf("\rInserting barriers %ld       \n", network->tick + network->hundreds * 100L);
    if (network->failed_barriers > 0)
        acutPrintf("Warning: unable to connect %d barrier segments\n", network->failed_barriers);
    return true;
}
