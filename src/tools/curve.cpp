// curve.cpp: each curve is worked out over vertices taken beforehand, so that a heap that gives no more
// leaves the chain as it was and never half a curve.
#include "tools/curve.h"

#include <cmath>

#include "drawing/write.h"
#include "hostapi/ads.h"

namespace
{

constexpr double LEAST_STEP = 1e-6; // a million points between two vertices are enough

struct vector3 {
    double x, y, z;
};

double length_of(const vector3& v)
{
    return std::hypot(v.x, v.y, v.z);
}

vector3 difference(const pl_vertex& a, const pl_vertex& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

void link(pl_vertex* a, pl_vertex* b)
{
    a->next = b;
    b->prev = a;
}

std::size_t count_of(const pl_vertex* head)
{
    std::size_t count = 0;
    for (; head; head = head->next)
        ++count;
    return count;
}

// A chain of vertices to be filled; null also when the heap hasn't as many.
pl_vertex* spare_vertices(std::size_t count, int type)
{
    pl_vertex* spare = nullptr;
    for (; count > 0; --count) {
        pl_vertex* vertex = pl_vertex_new(0.0, 0.0, 0.0);
        if (!vertex) {
            pl_free_vertices(spare);
            return nullptr;
        }
        vertex->type = type;
        vertex->next = spare;
        spare = vertex;
    }
    return spare;
}

pl_vertex* take(pl_vertex** spare)
{
    pl_vertex* vertex = *spare;
    *spare = vertex->next;
    return vertex;
}

void place(pl_vertex* v, const vector3& at)
{
    v->x = at.x;
    v->y = at.y;
    v->z = at.z;
}

// From p along the direction of its neighbours, by `reach`.
vector3 along_tangent(const pl_vertex& p, const pl_vertex& before, const pl_vertex& behind, double reach)
{
    const vector3 d = difference(behind, before);
    const double length = length_of(d);
    const double f = length == 0.0 ? 0.0 : reach / length;
    return {p.x + f * d.x, p.y + f * d.y, p.z + f * d.z};
}

// The cubic's point at t, from p0 on: so points in a plane of one height stay in it to the last bit, and a
// flat line is drawn as one.
vector3 bezier(const pl_vertex& p0, const pl_vertex& p1, const pl_vertex& p2, const pl_vertex& p3, double t)
{
    const double u = 1.0 - t;
    const double f1 = 3.0 * t * u * u, f2 = 3.0 * t * t * u, f3 = t * t * t;
    const vector3 d1 = difference(p1, p0), d2 = difference(p2, p0), d3 = difference(p3, p0);
    return {p0.x + f1 * d1.x + f2 * d2.x + f3 * d3.x, p0.y + f1 * d1.y + f2 * d2.y + f3 * d3.y,
            p0.z + f1 * d1.z + f2 * d2.z + f3 * d3.z};
}

// The last vertex of the group of four that begins at p0, null when it isn't complete.
pl_vertex* group_end(pl_vertex* p0)
{
    pl_vertex* v = p0;
    for (int i = 0; i < 3 && v; ++i)
        v = v->next;
    return v;
}

} // namespace

pl_vertex* chain_of_points(const ads_point* points, int count)
{
    pl_vertex* head = spare_vertices(static_cast<std::size_t>(count), USER_POINT);
    for (pl_vertex* v = head; v; v = v->next, ++points)
        place(v, {(*points)[0], (*points)[1], (*points)[2]});
    pl_link_back(head);
    return head;
}

bool curve_controls(pl_vertex* head, double k)
{
    if (!head || !head->next)
        return true;
    pl_vertex* spare = spare_vertices(2 * (count_of(head) - 1), CONTROL_POINT);
    if (!spare)
        return false;
    const pl_vertex* before = head;
    for (pl_vertex* p = head; p->next;) {
        pl_vertex* next = p->next;
        const double reach = chain_distance(*p, *next) / k;
        pl_vertex* a = take(&spare);
        place(a, p == head ? vector3{p->x, p->y, p->z} : along_tangent(*p, *before, *next, reach));
        pl_vertex* b = take(&spare);
        place(b,
              !next->next ? vector3{next->x, next->y, next->z} : along_tangent(*next, *p, *next->next, -reach));
        link(p, a);
        link(a, b);
        link(b, next);
        before = p;
        p = next;
    }
    return true;
}

bool curve_points(pl_vertex* head, double step)
{
    if (!(step >= LEAST_STEP))
        return false;
    std::size_t groups = 0, inner = 0;
    for (pl_vertex* p = head; p && (p = group_end(p));)
        ++groups;
    while (static_cast<double>(inner + 1) * step < 1.0)
        ++inner;
    pl_vertex* spare = spare_vertices(groups * inner, CURVE_POINT);
    if (!spare && groups * inner > 0)
        return false;
    for (pl_vertex* p0 = head; groups > 0; --groups) {
        pl_vertex* p1 = p0->next;
        pl_vertex* p2 = p1->next;
        pl_vertex* p3 = p2->next;
        pl_vertex* last = p0;
        for (std::size_t i = 1; i <= inner; ++i) {
            pl_vertex* v = take(&spare);
            place(v, bezier(*p0, *p1, *p2, *p3, static_cast<double>(i) * step));
            link(last, v);
            last = v;
        }
        link(last, p3);
        acad_free(p1);
        acad_free(p2);
        p0 = p3;
    }
    pl_link_back(head);
    return true;
}

bool chain_curve(pl_vertex* head, double k, double step)
{
    if (curve_controls(head, k) && curve_points(head, step))
        return true;
    chain_uncurve(head);
    return false;
}

void chain_uncurve(pl_vertex* head)
{
    pl_vertex* last = head;
    for (pl_vertex *v = head ? head->next : nullptr, *next = nullptr; v; v = next) {
        next = v->next;
        if (v->type < USER_POINT) {
            acad_free(v);
        } else {
            link(last, v);
            last = v;
        }
    }
    if (last)
        last->next = nullptr;
}

pl_vertex* chain_reverse(pl_vertex* head)
{
    pl_vertex* reversed = nullptr;
    while (head) {
        pl_vertex* next = head->next;
        head->next = reversed;
        reversed = head;
        head = next;
    }
    return reversed;
}

pl_vertex* chain_split_at(pl_vertex* head, double fraction)
{
    double total = 0.0;
    for (const pl_vertex* v = head; v && v->next; v = v->next)
        total += pl_plan_distance(*v, *v->next);
    const double target = total * fraction;
    double sum = 0.0;
    for (pl_vertex* a = head; a && a->next; a = a->next) {
        pl_vertex* b = a->next;
        const double length = pl_plan_distance(*a, *b);
        if (!(sum + length >= target)) {
            sum += length;
            continue;
        }
        const double f = length == 0.0 ? 0.0 : (target - sum) / length;
        pl_vertex* v = pl_vertex_new(a->x + f * (b->x - a->x), a->y + f * (b->y - a->y), 0.0);
        if (!v)
            return nullptr;
        v->type = CONTROL_POINT;
        link(a, v);
        link(v, b);
        return v;
    }
    return nullptr;
}

double chain_distance(const pl_vertex& a, const pl_vertex& b)
{
    return length_of(difference(a, b));
}

bool point_is_finite(const double* point)
{
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

void chain_write_plain(pl_vertex* head)
{
    for (const pl_vertex* v = head; v; v = v->next)
        if (const double at[3] = {v->x, v->y, v->z}; !point_is_finite(at))
            return;
    pl_write_simple(head, nullptr, 0, -1, 0);
}
