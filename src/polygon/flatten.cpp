// Arcs as chords. An arc becomes 291 chords whatever its size, and the thinning takes out those that
// don't show.
//
// Thinning is told as a run of passes over the chain until one removes nothing. Whether a node goes depends on
// its two neighbours alone, so after the first pass only nodes at the links that the pass before it made are
// looked at: the outcome is that of the full passes, node for node.
#include "polygon/flatten.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "hostapi/ads.h"
#include "polygon/arcs.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr int CHORDS = 291;

// Beyond these bulges the centre is too far off or the circle too large for the chord to keep its digits.
constexpr double LEAST_BULGE = 1e-6, MOST_BULGE = 1e6;

// Travel on a circle, from the angle `first` by `sweep`, which is negative when clockwise.
struct travel {
    double centre[3];
    double radius, first, sweep;
};

travel travel_of(const double* from, const double* to, double bulge)
{
    const double chord = pg_dist(from, to), sagitta = std::fabs(chord * bulge / 2.0);
    double to_chord = std::fabs(chord / (2.0 * std::tan(2.0 * std::atan(bulge)))); // from the centre
    if (chord / 2.0 < sagitta)
        to_chord = -to_chord; // a major arc
    const double vector[3] = {to[0] - from[0], to[1] - from[1], 0.0};
    double right[3];
    pg_right_normal(vector, right);
    const double off = bulge > 0.0 ? -to_chord : to_chord;
    travel t{{(from[0] + to[0]) / 2.0 + off * right[0], (from[1] + to[1]) / 2.0 + off * right[1], 0.0},
             sagitta + to_chord,
             0.0,
             0.0};
    double start = pg_angle(t.centre, from), end = pg_angle(t.centre, to);
    if (bulge < 0.0)
        std::swap(start, end);
    if (start > end)
        end += 2.0 * std::numbers::pi;
    t.first = bulge > 0.0 ? start : end;
    t.sweep = bulge > 0.0 ? end - start : start - end;
    return t;
}

void add_chords(pg_node* node)
{
    pg_node* const end = node->next;
    const double from[2] = {node->x, node->y}, to[2] = {end->x, end->y};
    const bool has_centre = std::fabs(node->bulge) >= LEAST_BULGE && std::fabs(node->bulge) <= MOST_BULGE;
    const travel t = has_centre ? travel_of(from, to, node->bulge) : travel{};
    pg_node* at = node;
    for (int i = 1; i < CHORDS; ++i) {
        const double share = static_cast<double>(i) / CHORDS;
        double place[3] = {0.0, 0.0, node->z + share * (end->z - node->z)};
        if (has_centre) {
            place[0] = t.centre[0] + t.radius * std::cos(t.first + share * t.sweep);
            place[1] = t.centre[1] + t.radius * std::sin(t.first + share * t.sweep);
        } else {
            pg_arc_place(from, to, node->bulge, share, place);
        }
        pg_node* added = pg_node_new(place);
        if (!added)
            continue; // a coarser arc
        added->keep = 0;
        added->next = end;
        at->next = added;
        at = added;
    }
}

void remove_next(pg_node* node)
{
    pg_node* gone = node->next;
    node->next = gone->next;
    if (gone->next)
        gone->next->prev = node;
    acad_free(gone);
}

// Whether b, between a and c, can go. On itself turned back (c on a) there is no line to lie on, and b stays.
bool is_spare(const pg_node& a, const pg_node& b, const pg_node& c, double tolerance)
{
    if (b.keep != 0 || a.bulge != 0.0 || b.bulge != 0.0)
        return false;
    const double line[3] = {c.x - a.x, c.y - a.y, c.z - a.z}, to[3] = {b.x - a.x, b.y - a.y, b.z - a.z};
    const double share = (to[0] * line[0] + to[1] * line[1] + to[2] * line[2]) /
                         (line[0] * line[0] + line[1] * line[1] + line[2] * line[2]);
    const double off[3] = {to[0] - share * line[0], to[1] - share * line[1], to[2] - share * line[2]};
    return off[0] * off[0] + off[1] * off[1] + off[2] * off[2] < tolerance;
}

// One pass over the whole chain; whether it removed anything. The node behind a removal is passed over.
bool weed_once(pg_node* chain, double tolerance)
{
    bool removed = false;
    for (pg_node* a = chain; a && a->next && a->next->next; a = a->next)
        if (is_spare(*a, *a->next, *a->next->next, tolerance)) {
            remove_next(a);
            removed = true;
        }
    return removed;
}

// Nodes in the order of the chain.
struct node_list {
    pg_node** nodes;
    int count;

    void add(pg_node* node)
    {
        if (count == 0 || nodes[count - 1] != node)
            nodes[count++] = node;
    }
};

// One pass over `asked`; `again` gets those that have another neighbour now.
void weed_at(const node_list& asked, node_list* again, double tolerance)
{
    const pg_node* passed_over = nullptr;
    again->count = 0;
    for (int i = 0; i < asked.count; ++i) {
        pg_node* b = asked.nodes[i];
        pg_node* a = b->prev;
        pg_node* c = b->next;
        if (!a || !c || b == passed_over || !is_spare(*a, *b, *c, tolerance))
            continue;
        remove_next(a);
        passed_over = c;
        again->add(a);
        again->add(c);
    }
}

node_list list_of(int room)
{
    return {static_cast<pg_node**>(acad_malloc(static_cast<std::size_t>(room) * sizeof(pg_node*))), 0};
}

} // namespace

int pg_flatten(pg_node* chain, double tolerance)
{
    int any_arc = 0;
    for (pg_node* node = chain; node; node = node->next) {
        if (node->bulge == 0.0)
            continue;
        any_arc = 1;
        pg_node* end = node->next;
        if (!end)
            break;
        const double chord = std::sqrt(pg_dist_sq(*node, *end));
        if (chord < PG_LENGTH_TOL)
            remove_next(node);
        else if (std::isfinite(chord * node->bulge))
            add_chords(node);
        node->bulge = 0.0;
    }
    if (any_arc)
        pg_weed(chain, tolerance);
    return any_arc;
}

pg_node* pg_weed(pg_node* chain, double tolerance)
{
    if (!chain || !chain->next)
        return chain;
    const int count = pg_count(chain);
    node_list asked = list_of(count), again = list_of(count);
    if (asked.nodes && again.nodes) {
        pg_node* before = nullptr;
        for (pg_node* n = chain; n; before = n, n = n->next) {
            n->prev = before;
            asked.add(n);
        }
        while (asked.count > 0) {
            weed_at(asked, &again, tolerance);
            std::swap(asked, again);
        }
    } else {
        while (weed_once(chain, tolerance))
            ;
    }
    acad_free(asked.nodes);
    acad_free(again.nodes);
    return chain;
}
