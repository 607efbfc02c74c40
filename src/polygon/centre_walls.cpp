#include "polygon/centre_walls.h"

#include <bit>

#include "polygon/centre_lines.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double TOUCH = 1e-9; // of the reach: a way that comes this close to a side's end may pass

// How far c lies to the left of the way from a to b.
double left_of(const cl_point& a, const cl_point& b, const cl_point& c)
{
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    return (dx * (c[1] - a[1]) - dy * (c[0] - a[0])) / pg_dist(a.data(), b.data());
}

bool on_both_sides(double p, double q, double slack)
{
    return (p > slack && q < -slack) || (p < -slack && q > slack);
}

struct sight {
    const cl_walls& walls;
    cl_point from, to;
    cl_box box;

    bool is_cut(std::size_t node) const
    {
        if (cl_apart(box, walls.boxes[node]) || cl_passes(from, to, walls.boxes[node]))
            return false;
        if (node < walls.leaves)
            return is_cut(2 * node) || is_cut(2 * node + 1);
        const cl_item& side = walls.outline->item(static_cast<std::int32_t>(node - walls.leaves));
        const double slack = TOUCH * walls.outline->reach;
        return on_both_sides(left_of(from, to, side.from), left_of(from, to, side.to), slack) &&
               on_both_sides(left_of(side.from, side.to, from), left_of(side.from, side.to, to), slack);
    }
};

// The place of an item that is nearest to another place.
cl_point nearest_of(const cl_item& item, std::int16_t relation, const cl_point& place)
{
    if (relation != CL_AS_SIDE)
        return relation == CL_AS_TO ? item.to : item.from;
    cl_point foot;
    cl_foot(item.from.data(), item.to.data(), place.data(), foot.data());
    const double to_from = pg_dist(foot.data(), item.from.data()), to_to = pg_dist(foot.data(), item.to.data());
    const double length = pg_dist(item.from.data(), item.to.data());
    if (to_from <= length && to_to <= length)
        return foot;
    return to_from < to_to ? item.from : item.to;
}

bool is_hidden_from(const cl_walls& walls, std::int32_t id, std::int16_t relation, const cl_point& place)
{
    const cl_point to = nearest_of(walls.outline->item(id), relation, place);
    return pg_dist(place.data(), to.data()) > PG_LENGTH_TOL &&
           sight{walls, place, to, cl_box_of(place, to, 0.0)}.is_cut(1);
}

} // namespace

void cl_walls_init(cl_walls* walls, const cl_outline& outline)
{
    walls->outline = &outline;
    walls->leaves = std::bit_ceil(outline.items.size() + 1);
    walls->boxes.assign(2 * walls->leaves, CL_NO_BOX);
    for (const cl_item& item : outline.items)
        if (item.kind == CL_SIDE && pg_dist(item.from.data(), item.to.data()) > 0.0)
            walls->boxes[walls->leaves + static_cast<std::size_t>(item.id)] =
                cl_box_of(item.from, item.to, TOUCH * outline.reach);
    for (std::size_t i = walls->leaves - 1; i > 0; --i) {
        walls->boxes[i] = walls->boxes[2 * i];
        cl_extend(walls->boxes[i], walls->boxes[2 * i + 1]);
    }
}

bool cl_is_hidden(const cl_walls& walls, const cl_branch& branch, const cl_point& place)
{
    if (!walls.outline->is_ring)
        return false;
    return is_hidden_from(walls, branch.left_id, branch.left_relation, place) ||
           (branch.left_id != branch.right_id &&
            is_hidden_from(walls, branch.right_id, branch.right_relation, place));
}
