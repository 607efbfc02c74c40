// Runs are cut at convex corners: there the bisector of two sides starts, and merging two runs follows it.
// At a reflex corner nothing has to be merged: the corner is an item itself, and the rays square to its
// two sides part its region from theirs.
#include "polygon/centre_outline.h"

#include <cmath>
#include <memory>
#include <numbers>

#include "polygon/centre_lines.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double PI = std::numbers::pi;

struct free_nodes {
    void operator()(pg_node* head) const { pl_free_nodes(head); }
};
using chain_ptr = std::unique_ptr<pg_node, free_nodes>;

struct extents {
    cl_point low, high, last;
    bool is_finite = true;
};

extents extents_of(const pg_node* chain)
{
    extents e{{chain->x, chain->y, 0.0}, {chain->x, chain->y, 0.0}, {}, true};
    for (const pg_node* n = chain; n; n = n->next) {
        e.low = {std::fmin(e.low[0], n->x), std::fmin(e.low[1], n->y), 0.0};
        e.high = {std::fmax(e.high[0], n->x), std::fmax(e.high[1], n->y), 0.0};
        e.last = {n->x, n->y, n->z};
        e.is_finite = e.is_finite && std::isfinite(n->x) && std::isfinite(n->y) && std::isfinite(n->z);
    }
    return e;
}

// A copy turned as wanted and cleaned. Null also where there was no room for all of it.
chain_ptr prepared_copy(const pg_node* chain, int orientation)
{
    chain_ptr copy(pg_copy(chain));
    if (pg_count(copy.get()) != pg_count(chain))
        return nullptr;
    if (orientation != 0 && pg_orientation(copy.get()) != orientation)
        copy.reset(pg_reverse(copy.release()));
    pg_clean(copy.get());
    return copy;
}

// The angle on the left of the way p, q, r; radians.
double inner_angle(const cl_point& p, const cl_point& q, const cl_point& r)
{
    const double angle = pg_turn_angle(r.data(), q.data(), p.data()) * PI / 180.0;
    return angle > 2.0 * PI ? angle - 2.0 * PI : angle;
}

void append(cl_outline& outline, std::int16_t kind, const cl_point& from, const cl_point& to)
{
    const auto id = static_cast<std::int32_t>(outline.items.size() + 1);
    outline.items.push_back({kind, id, from, to});
    if (outline.runs.empty())
        outline.runs.push_back({id, id});
    outline.runs.back().last_id = id;
}

void begin_run(cl_outline& outline)
{
    const auto next_id = static_cast<std::int32_t>(outline.items.size() + 1);
    if (!outline.runs.empty())
        outline.runs.push_back({next_id, next_id - 1});
}

// The corner q, if it is reflex, and the side from q to r.
void append_vertex(cl_outline& outline, const cl_point& p, const cl_point& q, const cl_point& r)
{
    if (inner_angle(p, q, r) < PI)
        begin_run(outline);
    else
        append(outline, CL_CORNER, q, q);
    append(outline, CL_SIDE, q, r);
}

void take_ring(cl_outline& outline, const cl_path& v)
{
    const std::size_t n = v.size();
    const auto is_convex = [&](std::size_t i) {
        return inner_angle(v[(i + n - 1) % n], v[i % n], v[(i + 1) % n]) < PI;
    };
    std::size_t start = 1;
    while (start < n && !is_convex(start))
        ++start;
    // The head comes last; where no corner at all is convex, one run holds everything and has no junction.
    outline.is_ring = start < n || is_convex(0);
    for (std::size_t i = start; i < start + n; ++i)
        append_vertex(outline, v[(i + n - 1) % n], v[i % n], v[(i + 1) % n]);
}

// Beyond the ends of an open outline its end points are nearest, so they are corners.
void take_open(cl_outline& outline, const cl_path& v)
{
    append(outline, CL_CORNER, v[0], v[0]);
    append(outline, CL_SIDE, v[0], v[1]);
    for (std::size_t i = 1; i + 1 < v.size(); ++i)
        append_vertex(outline, v[i - 1], v[i], v[i + 1]);
    append(outline, CL_CORNER, v.back(), v.back());
}

} // namespace

cl_outline cl_take_outline(const pg_node* chain, int orientation)
{
    cl_outline outline;
    if (!chain)
        return outline;
    const extents e = extents_of(chain);
    outline.reach = pg_dist(e.low.data(), e.high.data());
    if (!e.is_finite || !std::isfinite(outline.reach))
        return outline;
    const cl_point first{chain->x, chain->y, chain->z};
    const bool is_closed = pg_dist(first.data(), e.last.data()) < PG_LENGTH_TOL;
    const chain_ptr copy = prepared_copy(chain, orientation);
    cl_path v;
    for (const pg_node* n = copy.get(); n; n = n->next)
        v.push_back({n->x, n->y, n->z});
    if (v.size() <= 2)
        return outline;
    if (!is_closed) {
        take_open(outline, v);
        return outline;
    }
    v.pop_back(); // lies on the first
    take_ring(outline, v);
    return outline;
}

void cl_starting_rays(const cl_outline& outline, std::vector<cl_branch>* found)
{
    const double reach = outline.reach;
    for (const cl_run& run : outline.runs) {
        for (std::int32_t id = run.first_id; id <= run.last_id; ++id) {
            const cl_item& side = outline.item(id);
            const double length = pg_dist(side.from.data(), side.to.data());
            if (side.kind != CL_SIDE || !(length > 0.0))
                continue;
            const double nx = (side.from[1] - side.to[1]) / length, ny = (side.to[0] - side.from[0]) / length;
            const auto relation = [&](std::int32_t i) { return i == id ? CL_AS_SIDE : CL_AS_CORNER; };
            const auto ray = [&](const cl_point& at, std::int32_t left, std::int32_t right) {
                const cl_point end{at[0] + nx * reach, at[1] + ny * reach, 0.0};
                found->push_back({left, right, CL_RAY, 0, {at, end}, relation(left), relation(right)});
            };
            const bool corner_before = id > run.first_id && outline.item(id - 1).kind == CL_CORNER;
            ray(side.from, corner_before ? id - 1 : id, id);
            // Sides of a run have a corner between them, so none follows directly.
            ray(side.to, id, id < run.last_id ? id + 1 : id);
        }
    }
}
