// surface_fixture.h: an empty cache, a heap that is given back, and small surfaces.
#pragma once

#include <cmath>
#include <functional>
#include <initializer_list>

#include "common/user_break.h"
#include "polygon/points.h"
#include "tests/topology/collection.h"
#include "topology/surface_net.h"

class Surface : public Collection
{
protected:
    void SetUp() override
    {
        Collection::SetUp();
        triangle_cache = {};
        user_break_clear();
    }
};

struct place {
    double at[3];
};

inline std::int32_t add_line(SurfaceNet* net, place p, place q)
{
    const std::int32_t a = net->intern_node(p.at), b = net->intern_node(q.at);
    return net->intern_edge(a, b, 0);
}

// The edges from each place to the next, and back to the first.
inline void add_ring(SurfaceNet* net, std::initializer_list<place> places)
{
    const place* before = places.end() - 1;
    for (const place& p : places) {
        add_line(net, *before, p);
        before = &p;
    }
}

inline std::int32_t add_triangle(SurfaceNet* net, place a, place b, place c)
{
    return net->triangle_from_points(a.at, b.at, c.at);
}

// A square grid of n by n cells with sides of 1, each of two triangles, at the heights that are given.
inline void add_grid(SurfaceNet* net, int n, const std::function<double(double, double)>& z)
{
    const auto at = [&](int c, int r) {
        const double x = c, y = r;
        return place{{x, y, z(x, y)}};
    };
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            add_triangle(net, at(c, r), at(c + 1, r), at(c + 1, r + 1));
            add_triangle(net, at(c, r), at(c + 1, r + 1), at(c, r + 1));
        }
}

inline int live_count(const ObjectArray& array)
{
    int count = 0;
    for (std::int32_t id = 1; id <= array.count; ++id)
        count += array.get(id) != nullptr;
    return count;
}

// Of all triangles, those that run clockwise negative.
inline double whole_area(const SurfaceNet& net)
{
    double sum = 0;
    for (std::int32_t id = 1; id <= net.triangles.count; ++id) {
        std::int32_t a, b, c;
        if (!net.triangle(id) || !net.triangle_corners(id, &a, &b, &c))
            continue;
        const NodeObj *p = net.node(a), *q = net.node(b), *r = net.node(c);
        sum += pg_tri_area(p->x, p->y, q->x, q->y, r->x, r->y);
    }
    return sum;
}
