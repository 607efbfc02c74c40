#include "tests/tin/plain_network.h"

namespace
{

using plain::barrier;
using plain::network;
using plain::point;
using plain::triangle;

const char* const cancelled = "\nFunction cancelled at user request.";

// Takes a point off the pending list; false if it isn't on it.
bool unlink(network& n, point* p)
{
    for (point** at = &n.points; *at != nullptr; at = &(*at)->next)
        if (*at == p) {
            *at = p->next;
            return true;
        }
    return false;
}

void push_barrier_point(network& n, point* p)
{
    p->next = n.barrier_points;
    n.barrier_points = p;
}

int connect_half(network& n, point* from, point* to)
{
    barrier* const half = plain::new_barrier(n, from, to);
    half->next = n.barriers;
    n.barriers = half;
    plain::link_barrier(n, half);
    return plain::connect_barrier_points(n, half, from->tri, to->tri, 0);
}

void split_in_the_middle(network& n, barrier* b)
{
    point* const m = plain::new_point(n, (b->from->x + b->to->x) / 2, (b->from->y + b->to->y) / 2,
                                      (b->from->z + b->to->z) / 2);
    push_barrier_point(n, m);
    for (triangle* t = n.triangles; t != nullptr; t = t->next) {
        plain::load_edges(n.edges_a, *t);
        if (plain::inside(n, n.edges_a, *m)) {
            m->tri = t;
            break;
        }
    }
    n.connected = plain::insert_point(n, m);
    if (n.connected == 0) {
        n.failed_barriers += 1;
        return;
    }
    connect_half(n, b->from, m);
    n.connected = connect_half(n, m, b->to);
}

void place_barrier(network& n, barrier* b)
{
    if (unlink(n, b->from)) {
        n.connected = plain::insert_point(n, b->from);
        push_barrier_point(n, b->from);
    }
    if (unlink(n, b->to)) {
        const int result = plain::insert_point(n, b->to);
        push_barrier_point(n, b->to);
        if (n.connected != 0)
            n.connected = result;
    }
    if (b->from->tri == nullptr || b->to->tri == nullptr) {
        n.said += "\nInternal error connecting barrier points.";
        return;
    }
    if (n.connected != 1)
        return;
    n.connected = plain::connect_barrier_points(n, b, b->from->tri, b->to->tri, 1);
    if (n.connected != 1)
        split_in_the_middle(n, b);
}

void put_back(network& n, point* list, bool first_sets)
{
    bool first = first_sets;
    for (point* p = list; p != nullptr; p = p->next) {
        p->x += n.x_min;
        p->y += n.y_min;
        if (first) {
            n.z_min = p->z;
            n.z_max = p->z;
        } else {
            if (p->z < n.z_min)
                n.z_min = p->z;
            if (p->z > n.z_max)
                n.z_max = p->z;
        }
        first = false;
    }
}

// False when the user broke off, which was told.
bool point_phase(network& n)
{
    n.tick = 1;
    n.hundreds = 0;
    if (!n.quiet)
        n.said += "\nTriangulating points ...      ";
    while (n.points != nullptr) {
        insert_point(n, n.points);
        n.points = n.points->next;
        if (n.tick == 100) {
            n.hundreds += 1;
            n.tick = 0;
            if (!n.quiet)
                n.said += "\rTriangulating points ... " + std::to_string(n.hundreds * 100L);
            if (poll_break(n)) {
                n.said += cancelled;
                return false;
            }
        }
        n.tick += 1;
    }
    if (!n.quiet)
        n.said += "\rTriangulating points ... " + std::to_string(n.point_count) + "     ";
    if (poll_break(n)) {
        n.said += cancelled;
        return false;
    }
    return true;
}

} // namespace

bool plain::barrier_phase(network& n)
{
    const bool any = n.barriers != nullptr;
    if (any && !n.quiet)
        n.said += "\nInserting barriers ... ";
    n.tick = 0;
    n.hundreds = 0;
    n.failed_barriers = 0;
    n.barrier_points = nullptr;
    n.connected = 0;
    for (barrier* b = n.barriers; b != nullptr; b = b->next) {
        if (n.tick == 100) {
            n.hundreds += 1;
            n.tick = 0;
            if (!n.quiet)
                n.said += "\rInserting barriers ... " + std::to_string(n.hundreds * 100L);
            if (poll_break(n)) {
                n.said += cancelled;
                return false;
            }
        }
        n.tick += 1;
        place_barrier(n, b);
    }
    if (any) {
        if (!n.quiet)
            n.said += "\rInserting barriers " + std::to_string(n.tick + n.hundreds * 100L) + "       \n";
        if (n.failed_barriers > 0)
            n.said += "Warning: unable to connect " + std::to_string(n.failed_barriers) + " barrier segments\n";
    }
    return true;
}

int plain::triangulate(network& n)
{
    if (n.zero_count > 0)
        n.said += "\nIgnored " + std::to_string(n.zero_count) + " points with zero elevation.\n";
    if (n.points == nullptr) {
        n.said += "Unable to find points.\n";
        return norm;
    }
    if (n.points->next == nullptr) {
        n.said += "Too few points to triangulate.\n";
        return norm;
    }
    for (point* p = n.points; p != nullptr; p = p->next) {
        p->x -= n.x_min;
        p->y -= n.y_min;
        p->less = nullptr;
        p->more = nullptr;
        p->tri = nullptr;
    }
    split_barriers(n);
    build_frame(n);
    triangle* const first = n.triangles;
    load_edges(n.edges_a, *first);
    for (point* p = n.points; p != nullptr; p = p->next) {
        p->tri = inside(n, n.edges_a, *p) ? first : first->next;
        push(n, p->tri->bucket, p);
    }
    if (!barrier_phase(n))
        return norm;
    if (poll_break(n)) {
        n.said += cancelled;
        return norm;
    }
    point* const kept = n.points;
    if (!point_phase(n))
        return norm;
    n.points = kept;
    put_back(n, n.points, true);
    put_back(n, n.barrier_points, n.points == nullptr);
    return norm;
}
