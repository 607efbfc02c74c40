// A tree halves the waiting points by place, down to single ones. A triangle has the largest of its nodes that
// lie in it whole. Where an edge cuts through a node's box the node is taken apart, and put together again as
// soon as both halves are in one triangle. So a share costs as much as there are boxes on the edges, and not as
// there are points beside them; without that, sorted points cost the square of their number. The box test
// answers only where all points of the box get the very same answer.
#include "tin/waiting.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hostapi/ads.h"
#include "tin/inside.h"

struct tin_group {
    tin_box box;
    int count; // points that still wait
    tin_group* parent;
    tin_group* half[2];      // null: a single point
    tin_point* point;        // of a single one
    grouped_triangle* owner; // null: a part of a larger group, or in parts itself
    tin_group *next, *prev;  // of the owner's groups
};

struct tin_waiting {
    tin_group* groups; // two for each point, less one
    tin_group* free;   // the next one that is not used yet
};

namespace
{

void give(tin_group* group, grouped_triangle* to)
{
    group->owner = to;
    group->prev = nullptr;
    group->next = to->groups;
    if (group->next)
        group->next->prev = group;
    to->groups = group;
}

void take_away(tin_group* group)
{
    if (group->prev)
        group->prev->next = group->next;
    else
        group->owner->groups = group->next;
    if (group->next)
        group->next->prev = group->prev;
    group->owner = nullptr;
}

// Gives the group, or the larger one that it completes.
void give_whole(tin_group* group, grouped_triangle* to)
{
    while (tin_group* parent = group->parent) {
        tin_group* other = parent->half[group == parent->half[0]];
        if (other->count > 0) {
            if (other->owner != to)
                break;
            take_away(other);
        }
        group = parent;
    }
    give(group, to);
}

struct targets {
    tin_network* network;
    grouped_triangle *a, *b, *rest;
};

// The target of all of a group; null: it has to be taken apart.
grouped_triangle* target_of(const targets& to, const tin_group* group)
{
    const int in_a = tin_box_inside_a(to.network, group->box);
    if (in_a)
        return in_a == TIN_BOX_MIXED ? nullptr : to.a;
    if (!to.b)
        return to.rest;
    const int in_b = tin_box_inside_b(to.network, group->box);
    if (in_b)
        return in_b == TIN_BOX_MIXED ? nullptr : to.b;
    return to.rest;
}

void share(const targets& to, tin_group* group)
{
    if (group->count == 0)
        return;
    if (grouped_triangle* target = target_of(to, group)) {
        give_whole(group, target);
        return;
    }
    share(to, group->half[0]);
    share(to, group->half[1]);
}

// The groups of a triangle as a list without an owner, so that none is taken for one that was given already.
tin_group* detach(tin_triangle* triangle)
{
    if (!triangle)
        return nullptr;
    tin_group* list = std::exchange(static_cast<grouped_triangle*>(triangle)->groups, nullptr);
    for (tin_group* g = list; g; g = g->next)
        g->owner = nullptr;
    return list;
}

tin_group* build(tin_waiting* waiting, tin_point** points, int count, tin_group* parent)
{
    tin_group* group = waiting->free++;
    *group = tin_group{};
    group->count = count;
    group->parent = parent;
    tin_box& box = group->box;
    box = {points[0]->x, points[0]->x, points[0]->y, points[0]->y};
    for (int i = 1; i < count; ++i) {
        box.x0 = std::min(box.x0, points[i]->x);
        box.x1 = std::max(box.x1, points[i]->x);
        box.y0 = std::min(box.y0, points[i]->y);
        box.y1 = std::max(box.y1, points[i]->y);
    }
    if (count == 1) {
        group->point = points[0];
        group->point->group = group;
        return group;
    }
    const int middle = count / 2;
    if (box.x1 - box.x0 > box.y1 - box.y0)
        std::nth_element(points, points + middle, points + count,
                         [](const tin_point* p, const tin_point* q) { return p->x < q->x; });
    else
        std::nth_element(points, points + middle, points + count,
                         [](const tin_point* p, const tin_point* q) { return p->y < q->y; });
    group->half[0] = build(waiting, points, middle, group);
    group->half[1] = build(waiting, points + middle, count - middle, group);
    return group;
}

// The number of points; 0 if one has no place in an order.
int countable(const tin_point* points)
{
    int count = 0;
    for (const tin_point* p = points; p; p = p->next, ++count)
        if (!std::isfinite(p->x) || !std::isfinite(p->y) || count == 1 << 29)
            return 0;
    return count;
}

void put_in_buckets(tin_group* group, tin_triangle* triangle)
{
    if (group->count == 0)
        return;
    if (!group->point) {
        put_in_buckets(group->half[0], triangle);
        put_in_buckets(group->half[1], triangle);
        return;
    }
    group->point->tri = triangle;
    if (auto* link = static_cast<tin_link*>(acad_malloc(sizeof(tin_link)))) {
        link->point = group->point;
        tin_put_in_bucket(link, triangle);
    }
}

} // namespace

bool waiting_begin(tin_network* network)
{
    const int count = countable(network->points);
    if (count == 0)
        return false;
    auto* waiting = static_cast<tin_waiting*>(acad_malloc(sizeof(tin_waiting)));
    auto* groups = static_cast<tin_group*>(acad_malloc(sizeof(tin_group) * (2 * std::size_t(count) - 1)));
    auto** points = static_cast<tin_point**>(acad_malloc(sizeof(tin_point*) * std::size_t(count)));
    if (!waiting || !groups || !points) {
        acad_free(waiting);
        acad_free(groups);
        acad_free(points);
        return false;
    }
    *waiting = {groups, groups};
    int i = 0;
    for (tin_point* p = network->points; p; p = p->next)
        points[i++] = p;
    tin_group* all = build(waiting, points, count, nullptr);
    acad_free(points);
    network->waiting = waiting;
    auto* first = static_cast<grouped_triangle*>(network->triangles);
    tin_load_edges_a(network, first);
    share({network, first, nullptr, static_cast<grouped_triangle*>(first->next)}, all);
    return true;
}

void waiting_take(tin_network* network, tin_point* point)
{
    if (!network->waiting)
        return;
    tin_group* owned = point->group;
    for (tin_group* g = owned; g; g = g->parent) {
        --g->count;
        if (g->owner)
            owned = g;
    }
    grouped_triangle* triangle = owned->owner;
    if (owned->count == 0)
        take_away(owned);
    point->tri = triangle;
    if (auto* link = static_cast<tin_link*>(acad_malloc(sizeof(tin_link)))) {
        link->point = point;
        tin_put_in_bucket(link, triangle);
    }
}

void waiting_share(tin_network* network, tin_triangle* first, tin_triangle* second, tin_triangle* a,
                   tin_triangle* b, tin_triangle* rest)
{
    if (!network->waiting)
        return;
    tin_group* lists[2] = {detach(first), detach(second)};
    const targets to{network, static_cast<grouped_triangle*>(a), static_cast<grouped_triangle*>(b),
                     static_cast<grouped_triangle*>(rest)};
    for (tin_group* g : lists)
        while (g) {
            tin_group* next = g->next;
            share(to, g);
            g = next;
        }
}

void waiting_end(tin_network* network)
{
    if (!network->waiting)
        return;
    for (tin_triangle* t = network->triangles; t; t = t->next)
        for (const tin_group* g = static_cast<grouped_triangle*>(t)->groups; g; g = g->next)
            put_in_buckets(const_cast<tin_group*>(g), t);
    acad_free(network->waiting->groups);
    acad_free(network->waiting);
    network->waiting = nullptr;
}
