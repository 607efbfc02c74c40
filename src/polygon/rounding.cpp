#include "polygon/rounding.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "polygon/arcs.h"
#include "polygon/centre_lines.h"
#include "polygon/crossing.h"
#include "polygon/flatten.h"
#include "polygon/measures.h"
#include "polygon/points.h"
#include "polygon/side_distances.h"
#include "polygon/tolerances.h"
#include "polygon/trim.h"

namespace
{

constexpr double CHORD_TOL = 0.1;      // squared distance of chords and thinned nodes from the line
constexpr double LEVEL_SLOPE = 1.0;    // of the centre lines
constexpr int MOST_ROUNDS = 10;        // of either search
constexpr double FIRST_ERROR = 1.0;    // in drawing units; what is farther off isn't polished
constexpr double SMALL_ERROR = 0.0001; // in drawing units; near enough
constexpr double SEARCH_TOL = 0.1;     // share of the radius; near enough to be polished
constexpr double TOUCH_TOL = 0.01;     // share of the radius; what a join takes for touching
constexpr double TANGENT_REACH = 1.5;  // in radii, from the centre across the side
constexpr double HALF_CIRCLE_BULGE = 1.0;
constexpr double LEAST_ARC_BULGE = 1e-6; // a flatter arc is none
constexpr double STRAIGHT_ON_DEG = 180.0;
constexpr double GAP = 0.001; // share of the last side by which a ring is opened

struct nodes_release {
    void operator()(pg_node* head) const { pl_free_nodes(head); }
};
using held_chain = std::unique_ptr<pg_node, nodes_release>;

// All of it or nothing: a copy with nodes left out is another chain.
held_chain copy_whole(const pg_node* chain)
{
    held_chain copy(pg_copy(chain));
    return pg_count(copy.get()) == pg_count(chain) ? std::move(copy) : nullptr;
}

void turn_round(held_chain& chain)
{
    chain.reset(pg_reverse(chain.release()));
}

double distance_sq(const pg_node& node, const double* place)
{
    const double at[3] = {node.x, node.y, node.z};
    return pg_dist_sq(at, place);
}

bool is_at(const pg_node& node, const double* place)
{
    return distance_sq(node, place) <= PG_LENGTH_SQ_TOL;
}

double distance_from(const pg_node* chain, const double* point, double* nearest)
{
    return std::sqrt(pg_closest(point, chain, nullptr, nearest));
}

double distance_from(const pg_node* chain, const double* point)
{
    double nearest[3] = {};
    return distance_from(chain, point, nearest);
}

void go_towards(const double* from, const double* to, double distance, double* out)
{
    const double direction = pg_angle(from, to);
    out[0] = from[0] + distance * std::cos(direction);
    out[1] = from[1] + distance * std::sin(direction);
    out[2] = 0.0;
}

// ---- the way to the centre

// Whether the chain was closed; its end no longer lies on its head then.
bool open_by_a_gap(pg_node* chain)
{
    if (!chain || !chain->next)
        return false;
    pg_node* before = chain;
    while (before->next->next)
        before = before->next;
    pg_node* last = before->next;
    if (!pg_same_place(*last, *chain))
        return false;
    last->x += GAP * (before->x - last->x);
    last->y += GAP * (before->y - last->y);
    return true;
}

// From the corner along the centre lines. Null when there are none.
held_chain path_from(pg_node* chords, const double* corner)
{
    pg_set_z(chords, 0.0); // sides that rise or fall would lean the lines away from the middle
    for (bool is_opened = false;; is_opened = true) {
        pg_ring* rings = pg_centre_lines(chords, LEVEL_SLOPE, 0, 1);
        pg_node* path = pg_follow_chains(&rings, corner);
        // A ring has no line from the corner where its network closes, if that line meets no other. An open
        // chain has them all.
        if (!path && !is_opened && open_by_a_gap(chords))
            continue;
        // Copied nodes count as vertices of an input, which thinning leaves: only a branch that was taken
        // backwards has any to give.
        return held_chain(pg_weed(path, CHORD_TOL));
    }
}

struct path_step {
    const pg_node* p;
    const pg_node* q;
    double p_distance, q_distance; // from the sides
};

// Goes along a path and finds the steps over which the distance from `sides` passes the radius. The distances
// are taken as they are needed.
struct path_walk {
    const pg_node* at;
    side_distances sides;
    double distance = 0.0; // of the node

    path_walk(const pg_node* path, const pg_node* from_sides) : at(path), sides(from_sides)
    {
        if (path)
            distance = sides.from(path->x, path->y);
    }

    // A node at the very radius is passed by neither of its steps: a path that only reaches the radius, or has
    // a node just there, has no centre.
    bool next_passing(double radius, path_step* step)
    {
        while (at && at->next) {
            *step = {at, at->next, distance, sides.from(at->next->x, at->next->y)};
            at = step->q;
            distance = step->q_distance;
            if ((step->p_distance < radius && step->q_distance > radius) ||
                (step->p_distance > radius && step->q_distance < radius))
                return true;
        }
        return false;
    }
};

// A spot on the step at about the radius from `side`, by secants that all start at p. False when they lead
// nowhere.
bool search_on_step(const path_step& step, const pg_node* side, double radius, double* out)
{
    const double p[3] = {step.p->x, step.p->y, 0.0};
    const double q[3] = {step.q->x, step.q->y, 0.0};
    std::copy(q, q + 3, out);
    double end_distance = step.q_distance;
    for (int round = 0; round < MOST_ROUNDS; ++round) {
        const double along = (radius - step.p_distance) * pg_dist(p, out) / (end_distance - step.p_distance);
        pg_frame_point(p, q, along, 0.0, out);
        end_distance = distance_from(side, out);
        if (std::fabs(end_distance - radius) / radius <= SEARCH_TOL)
            break;
    }
    return std::isfinite(out[0]) && std::isfinite(out[1]);
}

// ---- the arc

// The first crossing along a side with the line from the centre in the direction of `towards`.
bool first_across(const pg_node* side, const double* centre, const double* towards, double length, double* out)
{
    double end[3];
    go_towards(centre, towards, length, end);
    pg_node line[2] = {};
    line[0].x = centre[0];
    line[0].y = centre[1];
    line[0].next = &line[1];
    line[1].x = end[0];
    line[1].y = end[1];
    double distance = 0.0;
    int side_of_line = 0;
    return pg_first_crossing(side, line, &distance, &side_of_line, out, 0.0) != 0;
}

// Where the circle touches a side.
bool tangent_point(const pg_node* side, const double* centre, double radius, double* out)
{
    double towards[3] = {centre[0], centre[1], 0.0};
    const double nearest = distance_from(side, centre, towards);
    if (!first_across(side, centre, towards, TANGENT_REACH * radius, out))
        return false;
    // A side that folds back behind the place, as that of a narrow strip, may be crossed there first.
    return pg_dist(centre, out) <= nearest + PG_LENGTH_TOL ||
           first_across(side, centre, towards, nearest + PG_LENGTH_TOL, out);
}

// Of the arc about `centre` that rounds the corner. False when it has no length: one that ends where it begins,
// as between sides that go straight on, would be told as a whole circle.
bool arc_between(const double* from, const double* to, const double* centre, double* bulge)
{
    *bulge = -pg_arc_bulge(from, to, centre);
    return std::isfinite(*bulge) &&
           (pg_dist(from, to) > PG_LENGTH_TOL || std::fabs(*bulge) < HALF_CIRCLE_BULGE);
}

// `first` ends where the arc begins. The chain along it, the arc to `to` and `second` backwards; null when the
// heap is exhausted.
pg_node* joined_by_arc(held_chain first, held_chain second, const double* to, double bulge)
{
    pg_node* end = pg_node_new(to);
    if (!end)
        return nullptr;
    pg_node* last = pg_last(first.get());
    last->next = end;
    last->bulge = bulge;
    return pg_join(first.release(), pg_reverse(second.release()));
}

// ---- the corner

enum class corner_turn { unknown, left, right };

// At the first node of the chords, other than their ends, that lies at the corner.
corner_turn turn_at(const pg_node* chords, const double* corner)
{
    for (const pg_node* before = chords; before && before->next; before = before->next) {
        const pg_node* node = before->next;
        if (!node->next || !is_at(*node, corner))
            continue;
        const double p0[3] = {before->x, before->y, 0.0}, p1[3] = {node->x, node->y, 0.0},
                     p2[3] = {node->next->x, node->next->y, 0.0};
        return pg_turn_angle(p0, p1, p2) < STRAIGHT_ON_DEG ? corner_turn::right : corner_turn::left;
    }
    return corner_turn::unknown;
}

// The chain begins and ends at `corner` and has three nodes or more. Its last node becomes the second node at
// the far place, so that nothing is taken from the heap.
pg_node* opened_on_far_side(pg_node* chain, const double* corner)
{
    pg_node* end = chain; // the node in front of the last
    pg_node* far = nullptr;
    double farthest = 0.0;
    for (pg_node* n = chain; n->next; n = n->next) {
        end = n;
        const double d = distance_sq(*n, corner);
        if (d > farthest) {
            farthest = d;
            far = n;
        }
    }
    if (!far)
        return chain;
    pg_node* head = end->next;
    *head = *far; // with the bulge and the second value of the segment that starts here
    end->next = chain;
    if (far == end)
        head->next = chain;
    far->next = nullptr;
    far->bulge = 0.0;
    return head;
}

} // namespace

void pg_centre_refine(double* point, double radius, const pg_node* a, const pg_node* b)
{
    double error = FIRST_ERROR;
    double test[3] = {point[0], point[1], 0.0};
    for (int round = 0; round < MOST_ROUNDS && error > SMALL_ERROR; ++round) {
        double near_a[3] = {test[0], test[1], 0.0}, near_b[3] = {test[0], test[1], 0.0};
        const double off_a = distance_from(a, test, near_a) - radius;
        const double off_b = distance_from(b, test, near_b) - radius;
        if (!(std::fabs(off_a) < error && std::fabs(off_b) < error))
            return;
        error = std::max(std::fabs(off_a), std::fabs(off_b));
        point[0] = test[0];
        point[1] = test[1];
        // Both corrections at once, and half of that.
        double by_a[3], by_b[3];
        go_towards(test, near_a, off_a, by_a);
        go_towards(test, near_b, off_b, by_b);
        for (int i = 0; i < 2; ++i)
            test[i] = point[i] + ((by_a[i] - point[i]) + (by_b[i] - point[i])) / 2.0;
    }
}

pg_node* pg_round_corner(pg_node** chain, const double* corner, double radius)
{
    pg_clean(*chain);
    if (pg_count(*chain) < 3)
        return nullptr;
    if (is_at(*pg_last(*chain), corner) && is_at(**chain, corner))
        *chain = opened_on_far_side(*chain, corner);
    held_chain chords = copy_whole(*chain), forward = copy_whole(*chain), backward = copy_whole(*chain);
    if (!chords || !forward || !backward)
        return nullptr;
    turn_round(backward);
    double at[3] = {corner[0], corner[1], 0.0};
    if (!pg_trim_at_first(backward.get(), at) || !pg_trim_at_first(forward.get(), at))
        return nullptr;
    pg_flatten(chords.get(), CHORD_TOL);
    if (turn_at(chords.get(), corner) == corner_turn::right) {
        turn_round(chords);
        std::swap(forward, backward);
    }
    const held_chain path = path_from(chords.get(), corner);
    chords.reset();
    path_walk walk(path.get(), *chain);
    path_step step;
    double centre[3];
    if (!walk.next_passing(radius, &step) || !search_on_step(step, forward.get(), radius, centre))
        return nullptr;
    pg_centre_refine(centre, radius, forward.get(), backward.get());

    double from[3], to[3], bulge;
    if (!tangent_point(forward.get(), centre, radius, from) || !pg_trim_at_first(forward.get(), from) ||
        !tangent_point(backward.get(), centre, radius, to))
        return nullptr;
    if (!arc_between(from, to, centre, &bulge) || std::fabs(bulge) <= LEAST_ARC_BULGE)
        return nullptr;
    if (!pg_trim_at_first(backward.get(), to))
        return nullptr;
    return joined_by_arc(std::move(forward), std::move(backward), to, bulge);
}

// ---- two chains

namespace
{

bool touches(const pg_node* side, const double* centre, double radius)
{
    return std::fabs(distance_from(side, centre) - radius) / radius <= TOUCH_TOL;
}

// Copies count as vertices of an input; what is joined keeps its nodes as they are.
held_chain copy_to_trim(const pg_node* chain)
{
    held_chain copy = copy_whole(chain);
    for (pg_node* n = copy.get(); n; n = n->next, chain = chain->next)
        n->keep = chain->keep;
    return copy;
}

// The joined chain; null when the circle doesn't touch both chains, which are left alone.
pg_node* joined_about(const pg_node* first, const pg_node* second, const double* centre, double radius)
{
    double from[3], to[3], bulge;
    if (!touches(first, centre, radius) || !touches(second, centre, radius) ||
        !tangent_point(first, centre, radius, from) || !tangent_point(second, centre, radius, to) ||
        !arc_between(from, to, centre, &bulge))
        return nullptr;
    held_chain to_arc = copy_to_trim(first), from_arc = copy_to_trim(second);
    if (!to_arc || !from_arc || !pg_trim_at_first(to_arc.get(), from) || !pg_trim_at_first(from_arc.get(), to))
        return nullptr;
    return joined_by_arc(std::move(to_arc), std::move(from_arc), to, bulge);
}

// `first` ends at the corner and `second` begins there. The bulge of an open chain's last node has no meaning
// and must get none by the other chain.
held_chain both_chains(const pg_node* first, const pg_node* second)
{
    held_chain a = copy_whole(first), b = copy_whole(second);
    if (!a || !b)
        return nullptr;
    pg_last(a.get())->bulge = 0.0;
    held_chain whole(pg_join(a.release(), b.release()));
    pg_clean(whole.get());
    return whole;
}

// `exchanged` is set when the chains have changed places.
pg_node* round_where_they_meet(pg_node** first, pg_node** second, const double* corner, double radius,
                               bool* exchanged)
{
    held_chain whole = both_chains(*first, *second);
    held_chain chords = copy_whole(whole.get());
    if (!chords)
        return nullptr;
    pg_flatten(chords.get(), CHORD_TOL);
    // Afterwards both end at the corner, and the way from *first to *second turns left.
    const corner_turn turn = turn_at(chords.get(), corner);
    if (turn == corner_turn::left) {
        *second = pg_reverse(*second);
    } else if (turn == corner_turn::right) {
        turn_round(whole);
        turn_round(chords);
        *second = pg_reverse(*second);
        std::swap(*first, *second);
        *exchanged = true;
    }
    const held_chain path = path_from(chords.get(), corner);
    path_walk walk(path.get(), whole.get());
    path_step step;
    while (walk.next_passing(radius, &step)) {
        double centre[3];
        if (!search_on_step(step, whole.get(), radius, centre))
            continue;
        pg_centre_refine(centre, radius, *first, *second);
        if (pg_node* joined = joined_about(*first, *second, centre, radius))
            return joined;
    }
    return nullptr;
}

// Turns a chain round so that its last or its first node lies at `corner`, if only the other one does.
bool turn_to(pg_node** chain, const double* corner, bool with_last)
{
    const bool begins = is_at(**chain, corner), ends = is_at(*pg_last(*chain), corner);
    if (begins == ends || ends == with_last)
        return false;
    *chain = pg_reverse(*chain);
    return true;
}

} // namespace

pg_node* pg_round_join(pg_node** first, pg_node** second, const double* corner, double radius)
{
    if (!*first || !*second || *first == *second)
        return nullptr;
    const bool first_turned = turn_to(first, corner, true);
    const bool second_turned = turn_to(second, corner, false);
    bool exchanged = false;
    pg_node* joined = round_where_they_meet(first, second, corner, radius, &exchanged);
    if (joined) {
        pl_free_nodes(*first);
        pl_free_nodes(*second);
        *first = joined;
        *second = nullptr;
        return joined;
    }
    pg_node** was_first = exchanged ? second : first;
    pg_node** was_second = exchanged ? first : second;
    if (first_turned)
        *was_first = pg_reverse(*was_first);
    if (second_turned)
        *was_second = pg_reverse(*was_second);
    return nullptr;
}
