#include "tin/locate.h"

namespace
{

constexpr std::uint32_t WALK_LIMIT = 1u << 16; // beyond it going through the whole list is as good

bool is_near_edge(const tin_triangle* t, int edge, double x, double y, double reach)
{
    return is_near_segment(place_of(t->corner[edge]), place_of(t->corner[(edge + 1) % 3]), reach, x, y);
}

bool holds(tin_triangle* const* list, int count, const tin_triangle* t)
{
    return std::find(list, list + count, t) != list + count;
}

} // namespace

bool is_well_inside(const tin_point* const (&corner)[3], double x, double y, double reach)
{
    for (int i = 0; i < 3; ++i) {
        const tin_place a = place_of(corner[i]), b = place_of(corner[(i + 1) % 3]);
        const double area = turn(a, b, x, y), dx = b.x - a.x, dy = b.y - a.y;
        if (!(area > 0 && area * area > reach * reach * (dx * dx + dy * dy)))
            return false;
    }
    return true;
}

tin_triangle* walk_towards(tin_triangle* start, double x, double y, std::uint32_t steps)
{
    tin_triangle *t = start, *from = nullptr;
    for (std::uint32_t step = 0; step < steps; ++step) {
        // Among slivers a walk that always looks at the same edge first can go in circles.
        const int first = static_cast<int>(step % 3);
        tin_triangle* next = t;
        for (int k = 0; k < 3; ++k) {
            const int i = (first + k) % 3;
            if (t->side[i] && t->side[i] == from)
                continue;
            if (turn(place_of(t->corner[i]), place_of(t->corner[(i + 1) % 3]), x, y) < 0) {
                next = t->side[i];
                break;
            }
        }
        if (next == t)
            return t;
        if (!next)
            return nullptr;
        from = t;
        t = next;
    }
    return nullptr;
}

tin_triangle* locate(const tin_network* network, tin_triangle* start, double x, double y, double reach)
{
    tin_triangle* t = walk_towards(start, x, y, WALK_LIMIT);
    if (t && is_well_inside(t->corner, x, y, reach))
        return t;
    for (t = network->triangles; t; t = t->next)
        if (is_well_inside(t->corner, x, y, reach))
            return t;
    return nullptr;
}

int triangles_near(tin_triangle* start, double x, double y, double reach, tin_triangle* (&out)[NEAR_TRIANGLES])
{
    // A walk can end in a flat triangle on whose line the place lies, and far from it.
    if (!is_well_inside(start->corner, x, y, reach) && !is_near_edge(start, 0, x, y, reach) &&
        !is_near_edge(start, 1, x, y, reach) && !is_near_edge(start, 2, x, y, reach))
        return 0;
    out[0] = start;
    int count = 1;
    for (int at = 0; at < count; ++at)
        for (int i = 0; i < 3; ++i) {
            tin_triangle* next = out[at]->side[i];
            if (!next || holds(out, count, next) || !is_near_edge(out[at], i, x, y, reach))
                continue;
            if (count == NEAR_TRIANGLES)
                return 0;
            out[count++] = next;
        }
    return count;
}
