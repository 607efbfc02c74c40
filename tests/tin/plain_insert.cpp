#include <algorithm>
#include <cmath>

#include "tests/tin/plain_network.h"

namespace
{

using plain::network;
using plain::point;
using plain::triangle;

double squared(const point& a, const point& b)
{
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

// Cosine of the angle between a1 - a0 and b1 - b0.
double cosine(const point& a1, const point& a0, const point& b1, const point& b0)
{
    const double ux = a1.x - a0.x, uy = a1.y - a0.y, vx = b1.x - b0.x, vy = b1.y - b0.y;
    return (ux * vx + uy * vy) / (std::sqrt(ux * ux + uy * uy) * std::sqrt(vx * vx + vy * vy));
}

point* third_corner(const triangle* t, const point* p, const point* q)
{
    for (point* c : t->corner)
        if (c != p && c != q)
            return c;
    return nullptr;
}

} // namespace

void plain::load_edges(tri_edges& edges, const triangle& t)
{
    for (int i = 0; i < 3; ++i) {
        const place p{t.corner[i]->x, t.corner[i]->y};
        const place q{t.corner[(i + 1) % 3]->x, t.corner[(i + 1) % 3]->y};
        prepared_edge& e = edges.edge[i];
        e.top_end = !(q.y > p.y) ? p : q;
        e.bottom_end = !(q.y > p.y) ? q : p;
        e.high_x_end = !(q.x > p.x) ? p : q;
        e.low_x_end = !(q.x > p.x) ? q : p;
        if (e.top_end.x == e.bottom_end.x)
            e.slope = missing;
        else
            e.slope = (e.top_end.y - e.bottom_end.y) / (e.top_end.x - e.bottom_end.x);
    }
}

int plain::inside(network& n, const tri_edges& edges, const point& p)
{
    n.inside = 0;
    for (const prepared_edge& e : edges.edge) {
        if (p.y < e.bottom_end.y)
            continue;
        if (p.y >= e.top_end.y) {
            if (e.top_end.y == e.bottom_end.y && p.y == e.top_end.y) {
                n.inside = p.x >= e.low_x_end.x && p.x <= e.high_x_end.x ? 1 : 0;
                return n.inside;
            }
            continue;
        }
        if (e.bottom_end.y > p.y || !(p.y < e.top_end.y))
            continue;
        if (p.x < e.low_x_end.x)
            continue;
        if (p.x > e.high_x_end.x) {
            n.inside = !n.inside;
            continue;
        }
        const double crossing = (p.y - e.bottom_end.y) / e.slope + e.bottom_end.x;
        if (!(crossing > p.x))
            n.inside = !n.inside;
    }
    return n.inside;
}

void plain::push(network& n, link*& head, point* p)
{
    link& l = n.own_links.emplace_back();
    l.point = p;
    l.next = head;
    head = &l;
}

void plain::replace_side(triangle* where, triangle* old_one, triangle* new_one)
{
    if (where == nullptr)
        return;
    for (triangle*& side : where->side)
        if (side == old_one)
            side = new_one;
}

void plain::sort_buckets(network& n, triangle* first, triangle* second, triangle* test)
{
    triangle* const other = test == first ? second : first;
    link* const lists[2] = {first->bucket, second->bucket};
    first->bucket = nullptr;
    second->bucket = nullptr;
    load_edges(n.edges_a, *test);
    for (link* list : lists)
        for (link* l = list; l != nullptr; l = l->next) {
            triangle* const home = inside(n, n.edges_a, *l->point) ? test : other;
            push(n, home->bucket, l->point);
            l->point->tri = home;
        }
}

int plain::insert_point(network& n, point* p)
{
    if (p->tri == nullptr) {
        n.said += "\nPoint insertion ERROR";
        return 0;
    }
    load_edges(n.edges_a, *p->tri);
    if (!inside(n, n.edges_a, *p)) {
        for (triangle* t = n.triangles; t != nullptr; t = t->next) {
            load_edges(n.edges_a, *t);
            if (inside(n, n.edges_a, *p)) {
                p->tri = t;
                break;
            }
        }
        load_edges(n.edges_a, *p->tri);
        if (!inside(n, n.edges_a, *p)) {
            n.said += "\nUnable to fix insertion ERROR";
            return 0;
        }
    }
    triangle* const t = p->tri;
    triangle* const a = &n.own_triangles.emplace_back();
    triangle* const b = &n.own_triangles.emplace_back();
    point* const c[3] = {t->corner[0], t->corner[1], t->corner[2]};
    triangle* const s[3] = {t->side[0], t->side[1], t->side[2]};
    c[0]->tri = a;
    c[1]->tri = b;
    c[2]->tri = t;
    link* const old_bucket = t->bucket;
    replace_side(s[0], t, a);
    replace_side(s[1], t, b);
    *a = {{p, c[0], c[1]}, {t, s[0], b}, nullptr, nullptr};
    *b = {{p, c[1], c[2]}, {a, s[1], t}, nullptr, nullptr};
    *t = {{p, c[2], c[0]}, {b, s[2], a}, nullptr, t->next};
    b->next = n.triangles;
    a->next = b;
    n.triangles = a;

    load_edges(n.edges_a, *a);
    load_edges(n.edges_b, *b);
    for (link* l = old_bucket; l != nullptr; l = l->next) {
        point* const q = l->point;
        if (q == p)
            continue;
        triangle* home = t;
        if (inside(n, n.edges_a, *q))
            home = a;
        else if (inside(n, n.edges_b, *q))
            home = b;
        push(n, home->bucket, q);
        q->tri = home;
    }
    p->tri = a;
    for (triangle* near : {a, b, t}) {
        n.swap_depth = 0;
        if (near->side[1] != nullptr)
            swap_edges(n, near->corner[1], near->corner[2], near->side[1], p, near);
    }
    return 1;
}

void plain::swap_edges(network& n, point* p1, point* p2, triangle* far, point* p, triangle* near)
{
    n.swap_depth += 1;
    if (n.swap_depth >= 248) {
        n.said += "\nSwap test maxed out.";
        return;
    }
    if (is_barrier(p1, p2) == 1)
        return;
    point* e = nullptr;
    triangle *s1 = nullptr, *s2 = nullptr;
    for (int i = 0; i < 3; ++i)
        if (far->corner[i] != p1 && far->corner[i] != p2) {
            e = far->corner[i];
            s1 = far->side[(i + 2) % 3];
            s2 = far->side[i];
            break;
        }
    if (swap_test(n, p1, e, p2, p, far) != 1)
        return;
    triangle* const r = near->side[2];
    *near = {{p, p1, e}, {near->side[0], s1, far}, near->bucket, near->next};
    *far = {{p, e, p2}, {near, s2, r}, far->bucket, far->next};
    p2->tri = far;
    p1->tri = near;
    replace_side(s1, far, near);
    replace_side(r, near, far);
    sort_buckets(n, near, far, near);
    if (near->side[1] != nullptr)
        swap_edges(n, p1, e, near->side[1], p, near);
    if (far->side[1] != nullptr)
        swap_edges(n, e, p2, far->side[1], p, far);
}

double plain::determinant(const network& n, const point& a, const point& b, const point& c, const point& d)
{
    const point* const rows[4] = {&a, &b, &c, &d};
    double m[4][4];
    for (int i = 0; i < 4; ++i) {
        m[i][0] = rows[i]->x;
        m[i][1] = rows[i]->y;
        m[i][2] = rows[i]->x * rows[i]->x + rows[i]->y * rows[i]->y;
        m[i][3] = 1;
    }
    double products[24];
    int k = 0;
    int order[4] = {0, 1, 2, 3};
    do {
        int inversions = 0;
        for (int i = 0; i < 4; ++i)
            for (int j = i + 1; j < 4; ++j)
                inversions += order[i] > order[j];
        const double product = m[0][order[0]] * m[1][order[1]] * m[2][order[2]] * m[3][order[3]];
        products[k++] = inversions % 2 == 0 ? product : -product;
    } while (std::next_permutation(order, order + 4));
    if (n.backwards)
        std::reverse(products, products + 24);
    double total = 0;
    for (double product : products)
        total += product;
    return total;
}

int plain::swap_test(network& n, point* a, point* b, point* c, point* d, triangle* far)
{
    if (!a || !b || !c || !d) {
        n.said += "Error: not NULL assertion failed.";
        return 0;
    }
    if (a == b || a == c || a == d) {
        n.said += "\nError: identical points in swap test.";
        return 0;
    }
    if (b == c || b == d || c == d) {
        n.said += "\nError: identical points in swap test2.";
        return 0;
    }
    const double m1 = std::fabs(a->x - c->x) + std::fabs(a->y - c->y);
    const double m2 = std::fabs(b->x - d->x) + std::fabs(b->y - d->y);
    if (std::fabs(m1 - m2) < 1e-6) {
        if (segments_cross(*a, *c, *b, *d) == 0)
            return 0;
        const double slope1 = (a->y - c->y) / (a->x - c->x);
        const double slope2 = (b->y - d->y) / (b->x - d->x);
        return slope1 > slope2 ? 0 : 1;
    }
    double sum = 0;
    for (const point* p : {a, b, c, d})
        sum += p->x * p->x + p->y * p->y;
    const double s = std::sqrt(sum);
    const double det = determinant(n, *a, *b, *c, *d);
    if (det * det < s) {
        const int r = cocircular_test(n, a, b, c, d, far);
        return segments_cross(*a, *c, *b, *d) != 0 ? r : 0;
    }
    if (!(det > 0))
        return 0;
    return segments_cross(*a, *c, *b, *d) != 0 ? 1 : 0;
}

int plain::cocircular_test(network&, point* a, point* b, point* c, point* d, triangle* far)
{
    const double limit = 0.99899995;
    if (segments_cross(*a, *c, *b, *d) == 0)
        return 0;
    if (cosine(*b, *c, *a, *c) > limit)
        return 1;
    if (cosine(*d, *c, *a, *c) > limit)
        return 1;
    if (cosine(*d, *b, *c, *b) > limit)
        return 0;
    if (cosine(*d, *b, *a, *b) > limit)
        return 0;
    const double gain = squared(*a, *c) - squared(*b, *d);
    if (gain > 0)
        return 1;
    triangle *nc = nullptr, *na = nullptr;
    for (int i = 0; i < 3; ++i)
        if (far->corner[i] == b) {
            nc = far->side[i];
            na = far->side[(i + 2) % 3];
            break;
        }
    point* ec = nc ? third_corner(nc, b, c) : nullptr;
    point* ea = na ? third_corner(na, b, a) : nullptr;
    if (ec && (segments_cross(*c, *b, *d, *ec) == 0 || is_barrier(c, b) == 1))
        ec = nullptr;
    if (ea && (segments_cross(*a, *b, *d, *ea) == 0 || is_barrier(a, b) == 1))
        ea = nullptr;
    const double rc = ec ? squared(*b, *c) - squared(*ec, *d) : 0;
    const double ra = ea ? squared(*b, *a) - squared(*ea, *d) : 0;
    return gain + std::max(rc, ra) > 0 ? 1 : 0;
}

int plain::is_barrier(const point* p, const point* q)
{
    for (const link* l = p->partners; l != nullptr; l = l->next)
        if (l->point == q)
            return 1;
    return 0;
}
