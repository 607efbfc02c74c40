// measures_plain.h: the first crossing as a scan of all pairs, and thinning as passes over an array, written
// down step by step to judge those that save the work.
#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/points.h"
#include "tests/polygon/chains.h"

namespace plain
{

struct first_crossing {
    int found = 0;
    double distance = 0.0, sine = 0.0, point[3] = {};
};

struct worked_arc {
    double centre[3], start, end, radius;
    int dir;
};

inline double travel_at(const pg_node& n, const double* x)
{
    const double p[3] = {n.x, n.y, n.z}, q[3] = {n.next->x, n.next->y, n.next->z};
    if (n.bulge == 0.0)
        return pg_angle(x, q);
    worked_arc w;
    pg_arc_from_bulge(p, q, n.bulge, w.centre, &w.start, &w.end, &w.radius, &w.dir);
    return w.dir == -1 ? pg_angle(w.centre, x) + std::numbers::pi / 2
                       : pg_angle(w.centre, x) - std::numbers::pi / 2;
}

inline first_crossing scan_all_pairs(const pg_node* a, const pg_node* b, double tolerance)
{
    for (; a && a->next; a = a->next) {
        const double p[3] = {a->x, a->y, a->z}, q[3] = {a->next->x, a->next->y, a->next->z};
        worked_arc wa{};
        if (a->bulge != 0.0)
            pg_arc_from_bulge(p, q, a->bulge, wa.centre, &wa.start, &wa.end, &wa.radius, &wa.dir);
        double best = 98765432.1;
        const pg_node* best_b = nullptr;
        double best_point[3] = {};
        for (const pg_node* m = b; m && m->next; m = m->next) {
            const double b1[3] = {m->x, m->y, m->z}, b2[3] = {m->next->x, m->next->y, m->next->z};
            worked_arc wb{};
            if (m->bulge != 0.0)
                pg_arc_from_bulge(b1, b2, m->bulge, wb.centre, &wb.start, &wb.end, &wb.radius, &wb.dir);
            double x[2][3] = {};
            int count = 0;
            if (a->bulge == 0.0 && m->bulge == 0.0)
                count = pg_seg_intersect(p, q, b1, b2, x[0], x[1]) > 0 ? 1 : 0;
            else if (a->bulge == 0.0)
                count =
                    pg_line_arc_intersect(p, q, wb.centre, wb.radius, wb.start, wb.end, x[0], x[1]) > 0 ? 1 : 0;
            else if (m->bulge == 0.0)
                count = pg_line_arc_intersect(b1, b2, wa.centre, wa.radius, wa.start, wa.end, x[0], x[1]);
            else
                count = pg_arc_arc_intersect(wa.centre, wa.radius, wa.start, wa.end, wb.centre, wb.radius,
                                             wb.start, wb.end, x[0], x[1]);
            for (int i = 0; i < count; ++i) {
                double d = pg_dist(p, x[i]);
                if (a->bulge != 0.0)
                    d = std::fabs(pg_angle(wa.centre, x[i]) - (wa.dir == -1 ? wa.start : wa.end)) * wa.radius;
                if (d < best && d >= tolerance && pg_dist(q, x[i]) >= tolerance) {
                    best = d;
                    best_b = m;
                    std::copy(x[i], x[i] + 3, best_point);
                }
            }
        }
        if (best_b) {
            first_crossing answer{
                1, best, std::sin(travel_at(*a, best_point) - travel_at(*best_b, best_point)), {}};
            std::copy(best_point, best_point + 3, answer.point);
            return answer;
        }
    }
    return {};
}

inline double off_line_sq(const pg_node& a, const pg_node& b, const pg_node& c)
{
    const double l[3] = {c.x - a.x, c.y - a.y, c.z - a.z}, v[3] = {b.x - a.x, b.y - a.y, b.z - a.z};
    const double t = (v[0] * l[0] + v[1] * l[1] + v[2] * l[2]) / (l[0] * l[0] + l[1] * l[1] + l[2] * l[2]);
    const double o[3] = {v[0] - t * l[0], v[1] - t * l[1], v[2] - t * l[2]};
    return o[0] * o[0] + o[1] * o[1] + o[2] * o[2];
}

inline std::vector<spot> weeded(const pg_node* chain, double tolerance)
{
    std::vector<pg_node> nodes;
    for (; chain; chain = chain->next)
        nodes.push_back(*chain);
    for (bool removed = nodes.size() > 1; removed;) {
        removed = false;
        for (std::size_t a = 0; a + 2 < nodes.size(); ++a)
            if (off_line_sq(nodes[a], nodes[a + 1], nodes[a + 2]) < tolerance && nodes[a + 1].keep == 0 &&
                nodes[a].bulge == 0.0 && nodes[a + 1].bulge == 0.0) {
                nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(a) + 1);
                removed = true;
            }
    }
    std::vector<spot> spots;
    for (const pg_node& n : nodes)
        spots.push_back({n.x, n.y, n.bulge, n.z});
    return spots;
}

} // namespace plain
