#include "tin/barriers.h"

#include <utility>

#include "hostapi/ads.h"

namespace
{

constexpr double BAND = 1e-6; // along y, on either side of the barrier's line

// A barrier as the test of points wants it.
struct upright_segment {
    tin_point *top, *bottom;
    bool vertical;
    double slope, intercept_low, intercept_high;
};

upright_segment upright(const tin_barrier& barrier)
{
    upright_segment s{};
    const bool to_is_top = barrier.to->y > barrier.from->y;
    s.top = to_is_top ? barrier.to : barrier.from;
    s.bottom = to_is_top ? barrier.from : barrier.to;
    s.vertical = s.top->x == s.bottom->x;
    s.slope = (s.top->y - s.bottom->y) / (s.top->x - s.bottom->x); // of a vertical one it is not used
    s.intercept_high = s.top->y - s.slope * s.top->x + BAND;
    s.intercept_low = s.intercept_high - 2 * BAND;
    return s;
}

bool lies_on(const tin_point* r, const upright_segment& s)
{
    if (!(r->y >= s.bottom->y && r->y <= s.top->y) || r == s.top || r == s.bottom)
        return false;
    if (s.vertical) // at the place of an end it would be split there for ever
        return r->x == s.top->x && r->y > s.bottom->y && r->y < s.top->y;
    const double intercept = r->y - s.slope * r->x;
    if (!(intercept >= s.intercept_low && intercept <= s.intercept_high))
        return false;
    return (r->x > s.top->x && r->x < s.bottom->x) || (r->x < s.top->x && r->x > s.bottom->x);
}

tin_point* first_on(tin_point* points, const upright_segment& s)
{
    for (tin_point* r = points; r; r = r->next)
        if (lies_on(r, s))
            return r;
    return nullptr;
}

void lose_partner(tin_point* point, const tin_point* partner)
{
    for (tin_link** link = &point->partners; *link; link = &(*link)->next)
        if ((*link)->point == partner) {
            acad_free(std::exchange(*link, (*link)->next));
            return;
        }
}

// Takes `old` out of the list, its upper half going to the end and its lower half behind its predecessor, or
// behind its follower when it was the head. So the walk comes to the upper half again, and to the lower one
// only if the old one was the head.
void put_halves(tin_network* network, tin_barrier* old, tin_barrier* before, tin_barrier* upper,
                tin_barrier* lower, tin_barrier** last)
{
    (*last)->next = upper;
    *last = upper;
    if (before)
        before->next = old->next;
    else
        network->barriers = old->next;
    tin_barrier* place = before ? before : old->next;
    lower->next = place->next;
    place->next = lower;
    if (place == *last)
        *last = lower;
}

} // namespace

void tin_split_barriers(tin_network* network)
{
    if (!network->quiet)
        acutPrintf("\nFinding points on barriers ...");
    tin_barrier* last = network->barriers;
    while (last && last->next)
        last = last->next;
    tin_barrier* before = nullptr;
    for (tin_barrier *barrier = network->barriers, *next = nullptr; barrier; barrier = next) {
        const upright_segment segment = upright(*barrier);
        tin_point* r = first_on(network->points, segment);
        tin_barrier* upper = r ? barrier_new(segment.top, r) : nullptr;
        tin_barrier* lower = upper ? barrier_new(r, segment.bottom) : nullptr;
        if (!lower) { // nothing lies on it, or there is no room: it stays whole
            acad_free(upper);
            next = barrier->next;
            before = barrier;
            continue;
        }
        put_halves(network, barrier, before, upper, lower, &last);
        next = barrier->next;
        // The predecessor of the follower: the lower half came between the two, or the follower is the head.
        if (before)
            before = lower;
        tin_link_barrier(network, upper);
        tin_link_barrier(network, lower);
        lose_partner(segment.top, segment.bottom);
        lose_partner(segment.bottom, segment.top);
        acad_free(barrier);
    }
}
