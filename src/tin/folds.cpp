#include "tin/folds.h"

#include <algorithm>
#include <cmath>

#include "tin/triangle.h"
#include "tin/waiting_state.h"

namespace
{

double longest_edge(const tin_point* const (&c)[3])
{
    double longest = 0;
    for (int i = 0; i < 3; ++i)
        longest = std::max(longest, std::hypot(c[i]->x - c[(i + 1) % 3]->x, c[i]->y - c[(i + 1) % 3]->y));
    return longest;
}

bool is_folded(const tin_waiting* w, const tin_triangle* t)
{
    const double area = turn(place_of(t->corner[0]), place_of(t->corner[1]), t->corner[2]->x, t->corner[2]->y);
    return area < 0 && -area > w->thin * longest_edge({t->corner[0], t->corner[1], t->corner[2]});
}

// The triangle that has a point well inside which was in neither of the two that were swapped.
tin_triangle* other_triangle(const fold& f, const tree_spot& spot)
{
    for (tin_triangle* t = f.network->triangles; t; t = t->next)
        if (t != f.first && t != f.second && is_well_inside(f.network->waiting, t->corner, spot))
            return t;
    return f.first;
}

void bind_for_good(void* context, std::uint32_t place)
{
    const fold& f = *static_cast<const fold*>(context);
    tin_waiting* w = f.network->waiting;
    if (!(leaf_node(w, place).waiting & leaf_bit(w, place)))
        return;
    const tree_spot& spot = w->tree->spots[place];
    if (!is_free(w, place)) {
        if (waiting_link* link = link_of(spot.point))
            link->for_good = true;
        return;
    }
    tin_triangle* home = nullptr;
    for (const auto& corner : f.before.corner)
        if (is_well_inside(w, corner, spot))
            home = f.first; // its bucket is shared with the other's in a moment
    waiting_bind(w, place, home ? home : other_triangle(f, spot), true);
}

// A triangle and its neighbour have more than one edge in common: the next link that is changed in one of them
// may be the wrong one.
bool has_double_side(const tin_triangle* t)
{
    const tin_triangle* const(&s)[3] = t->side;
    return (s[0] && (s[0] == s[1] || s[0] == s[2])) || (s[1] && s[1] == s[2]);
}

// How often two triangles have an edge, less how often they have it the other way.
int edge_count(const swap_corners& two, const tin_point* a, const tin_point* b)
{
    int count = 0;
    for (const auto& corner : two.corner)
        for (int i = 0; i < 3; ++i) {
            count += corner[i] == a && corner[(i + 1) % 3] == b;
            count -= corner[i] == b && corner[(i + 1) % 3] == a;
        }
    return count;
}

} // namespace

void bind_fold(const fold& f, tin_point* const (&corner)[3])
{
    tin_waiting* w = f.network->waiting;
    w->folded = true;
    if (!w->left)
        return;
    near_triangle(*w->tree, {place_of(corner[0]), place_of(corner[1]), place_of(corner[2])}, 2 * w->reach,
                  const_cast<fold*>(&f), bind_for_good);
}

void bind_folds(const fold& f)
{
    tin_waiting* w = f.network->waiting;
    w->torn = w->torn || has_double_side(f.first) || has_double_side(f.second);
    for (const tin_triangle* t : {f.first, f.second})
        if (is_folded(w, t))
            bind_fold(f, t->corner);
}

bool is_same_outline(const swap_corners& p, const swap_corners& q)
{
    for (const swap_corners* two : {&p, &q})
        for (const auto& corner : two->corner)
            for (int i = 0; i < 3; ++i) {
                const tin_point *a = corner[i], *b = corner[(i + 1) % 3];
                if (edge_count(p, a, b) != edge_count(q, a, b))
                    return false;
            }
    return true;
}
