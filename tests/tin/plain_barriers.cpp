#include <algorithm>
#include <cmath>

#include "tests/tin/plain_network.h"

// Whether two segments meet, as the host answers: parallel ones don't, also where they lie on one another.
int plain::inters(const point& a, const point& b, const point& c, const point& d)
{
    const double ux = b.x - a.x, uy = b.y - a.y, vx = d.x - c.x, vy = d.y - c.y;
    const double lengths = std::sqrt(ux * ux + uy * uy) * std::sqrt(vx * vx + vy * vy);
    const double turn = ux * vy - uy * vx;
    if (lengths == 0 || std::fabs(turn) <= 1e-12 * lengths)
        return -5001;
    const double along_first = ((c.x - a.x) * vy - (c.y - a.y) * vx) / turn;
    const double along_second = ((c.x - a.x) * uy - (c.y - a.y) * ux) / turn;
    const bool on_both = along_first >= -1e-10 && along_first <= 1 + 1e-10 && along_second >= -1e-10 &&
                         along_second <= 1 + 1e-10;
    return on_both ? norm : -5001;
}

int plain::segments_cross(const point& a, const point& b, const point& c, const point& d)
{
    if (a.x == b.x || c.x == d.x) {
        double result[2];
        return vertical_cross(a, b, c, d, result) == norm ? 1 : 0;
    }
    const double m1 = (b.y - a.y) / (b.x - a.x), k1 = b.y - m1 * b.x;
    const double m2 = (c.y - d.y) / (c.x - d.x), k2 = c.y - m2 * c.x;
    double dm = m1 - m2;
    if (m1 > 9999.9 || m1 < -9999.9 || m2 > 9999.9 || m2 < -9999.9)
        dm = 0;
    if (dm > -1e-5 && dm < 1e-5)
        return inters(a, b, c, d) == norm ? 1 : 0;
    const double x = (k2 - k1) / dm;
    const bool in_first = x >= std::min(a.x, b.x) - 1e-9 && x <= std::max(a.x, b.x) + 1e-9;
    const bool in_second = x >= std::min(c.x, d.x) - 1e-9 && x <= std::max(c.x, d.x) + 1e-9;
    return in_first && in_second ? 1 : 0;
}

int plain::vertical_cross(const point& a, const point& b, const point& c, const point& d, double* result)
{
    const double tolerance = 1e-8;
    const bool first = a.x == b.x, second = c.x == d.x;
    if (first == second)
        return none;
    const point& v1 = first ? a : c;
    const point& v2 = first ? b : d;
    const point& w1 = first ? c : a;
    const point& w2 = first ? d : b;
    const double x = v1.x;
    if (x < std::min(w1.x, w2.x) - tolerance || x > std::max(w1.x, w2.x) + tolerance)
        return none;
    const double slope = (w2.y - w1.y) / (w2.x - w1.x);
    const double y = w2.y + slope * (x - w2.x);
    result[0] = x;
    result[1] = y;
    if (y < std::min(v1.y, v2.y) - tolerance || y > std::max(v1.y, v2.y) + tolerance)
        return none;
    return norm;
}

namespace
{

using plain::barrier;
using plain::link;
using plain::network;
using plain::point;

void append_partner(network& n, point* p, point* partner)
{
    link** end = &p->partners;
    while (*end != nullptr)
        end = &(*end)->next;
    plain::push(n, *end, partner);
}

// One entry only, the first: overlapping barriers enter a partner twice.
void drop_partner(point* p, const point* partner)
{
    for (link** at = &p->partners; *at != nullptr; at = &(*at)->next)
        if ((*at)->point == partner) {
            *at = (*at)->next;
            return;
        }
}

bool lies_on(const point* r, const barrier* b, const point* top, const point* bottom)
{
    if (r == b->from || r == b->to || r->y < bottom->y || r->y > top->y)
        return false;
    if (top->x == bottom->x)
        return r->x == top->x && r->y > bottom->y &&
               r->y < top->y; // one on an end would be met again and again
    const double m = (top->y - bottom->y) / (top->x - bottom->x);
    const double c_high = top->y - m * top->x + 1e-6, c_low = c_high - 2e-6;
    const double c = r->y - m * r->x;
    return c >= c_low && c <= c_high && r->x > std::min(top->x, bottom->x) &&
           r->x < std::max(top->x, bottom->x);
}

} // namespace

void plain::link_barrier(network& n, barrier* b)
{
    append_partner(n, b->from, b->to);
    append_partner(n, b->to, b->from);
}

void plain::split_barriers(network& n)
{
    if (n.split_on_barriers != 1)
        return;
    if (!n.quiet)
        n.said += "\nFinding points on barriers ...";
    barrier* walk = n.barriers;
    while (walk != nullptr) {
        barrier* const old_one = walk;
        point* const top = !(old_one->to->y > old_one->from->y) ? old_one->from : old_one->to;
        point* const bottom = top == old_one->from ? old_one->to : old_one->from;
        point* r = n.points;
        while (r != nullptr && !lies_on(r, old_one, top, bottom))
            r = r->next;
        if (r == nullptr) {
            walk = walk->next;
            continue;
        }
        barrier* const first_half = new_barrier(n, top, r);
        barrier* last = n.barriers;
        while (last->next != nullptr)
            last = last->next;
        last->next = first_half;

        barrier* const follower = old_one->next;
        barrier* spot = nullptr;
        if (n.barriers == old_one) {
            n.barriers = follower;
            spot = follower;
        } else {
            spot = n.barriers;
            while (spot->next != old_one)
                spot = spot->next;
            spot->next = follower;
        }
        link_barrier(n, first_half);
        barrier* const second_half = new_barrier(n, r, bottom);
        second_half->next = spot->next;
        spot->next = second_half;
        link_barrier(n, second_half);
        drop_partner(old_one->from, old_one->to);
        drop_partner(old_one->to, old_one->from);
        walk = follower;
    }
}
