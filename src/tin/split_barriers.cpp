#include "tin/barriers.h"

#include <utility>

#include "hostapi/ads.h"
#include "tin/locate.h"

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

// The points by place, with their numbers in the order of the list; without a tree there are none.
struct points_by_place {
    tin_point* list;
    point_tree* tree;
    std::uint32_t* number; // of the point at a place
    std::uint32_t* least;  // in a node
};

void forget(points_by_place* points)
{
    point_tree_free(points->tree);
    acad_free(points->number);
    acad_free(points->least);
    *points = {points->list, nullptr, nullptr, nullptr};
}

void set_numbers(points_by_place* points)
{
    const point_tree& tree = *points->tree;
    std::uint32_t number = 0;
    for (tin_point* p = points->list; p; p = p->next) {
        points->number[tree_place(p)] = number++;
        p->tri = nullptr;
    }
    for (std::uint32_t node = 2 * tree.leaves - 1; node > 0; --node) {
        const bool is_leaf = node >= tree.leaves;
        std::uint32_t least = is_leaf ? number : std::min(points->least[2 * node], points->least[2 * node + 1]);
        if (is_leaf)
            for (std::uint32_t i = first_of_leaf(tree, node - tree.leaves);
                 i < first_of_leaf(tree, node - tree.leaves + 1); ++i)
                least = std::min(least, points->number[i]);
        points->least[node] = least;
    }
}

points_by_place by_place(tin_point* list)
{
    points_by_place points{list, point_tree_new(list), nullptr, nullptr};
    if (!points.tree)
        return points;
    const point_tree& tree = *points.tree;
    points.number = static_cast<std::uint32_t*>(acad_malloc(sizeof(std::uint32_t) * tree.count));
    points.least = static_cast<std::uint32_t*>(acad_malloc(sizeof(std::uint32_t) * 2 * tree.leaves));
    if (points.number && points.least) {
        set_numbers(&points);
        return points;
    }
    forget(&points);
    for (tin_point* p = list; p; p = p->next)
        p->tri = nullptr;
    return points;
}

// What lies in the band is as near to the segment as the band is wide along y; rounding adds what the
// coordinates have of it.
double reach_of(const point_tree& tree, const tin_place& a, const tin_place& b)
{
    double size = 0;
    for (double v : {tree.x0, tree.x1, tree.y0, tree.y1, a.x, a.y, b.x, b.y})
        size = std::max(size, std::fabs(v));
    return 1.1 * BAND + 1e-14 * size;
}

// The first point of the list that lies on the segment; null: none does.
tin_point* first_on(const points_by_place& points, const upright_segment& s)
{
    tin_point* found = nullptr;
    if (!points.tree) {
        for (tin_point* r = points.list; r && !found; r = r->next)
            if (lies_on(r, s))
                found = r;
        return found;
    }
    const point_tree& tree = *points.tree;
    const tin_place a = place_of(s.top), b = place_of(s.bottom);
    std::uint32_t before = tree.count;
    near_segment(
        tree, 1, a, b, reach_of(tree, a, b), [&](std::uint32_t node) { return points.least[node] < before; },
        [&](std::uint32_t leaf) {
            for (std::uint32_t i = first_of_leaf(tree, leaf); i < first_of_leaf(tree, leaf + 1); ++i)
                if (points.number[i] < before && lies_on(tree.spots[i].point, s)) {
                    before = points.number[i];
                    found = tree.spots[i].point;
                }
        });
    return found;
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
    if (!network->barriers)
        return;
    points_by_place points = by_place(network->points);
    tin_barrier* last = network->barriers;
    while (last && last->next)
        last = last->next;
    tin_barrier* before = nullptr;
    for (tin_barrier *barrier = network->barriers, *next = nullptr; barrier; barrier = next) {
        const upright_segment segment = upright(*barrier);
        tin_point* r = first_on(points, segment);
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
    forget(&points);
}
