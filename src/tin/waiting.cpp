// A point is near an edge when it is as near as `reach`, far more than what the inside test can be wrong by;
// what is not is well inside a triangle, by half of that at the very least where its distance is computed in
// another way. As long as all triangles are counter-clockwise, or as thin as rounding, there is only one that
// has a given point well inside; the inside test would have left the point in its bucket. A swap by force can
// make a triangle that is clockwise. The points over which it lies stay in buckets from then on.
#include "tin/waiting.h"

#include <bit>
#include <limits>
#include <utility>

#include "hostapi/ads.h"
#include "tin/folds.h"
#include "tin/inside.h"
#include "tin/triangle.h"
#include "tin/waiting_state.h"

namespace
{

constexpr double REACH = 4e-12;     // of the size of the box of all points; rounding is a thousandth of it
constexpr double THIN = REACH / 64; // height of a triangle that may be clockwise
constexpr double SLIMMEST = 1e-7;   // shape of the box of all points
// Sizes whose fourth powers are numbers with all their digits.
constexpr double SMALLEST = 1e-60, LARGEST = 1e60;
constexpr std::uint64_t WORK_FOR_ORDER = 4;
constexpr double LITTLE = 4; // points in a triangle, by its area
constexpr int MANY_LEAVES = 100;

void set_bound(tin_waiting* w, std::uint32_t place)
{
    tree_node* nodes = w->tree->nodes;
    std::uint32_t node = w->tree->leaves + leaf_of(*w->tree, place);
    nodes[node].free &= static_cast<std::uint8_t>(~leaf_bit(w, place));
    for (; node > 1 && !nodes[node].free; node /= 2)
        nodes[node / 2].free = nodes[node].free || nodes[node ^ 1].free;
}

void set_free(tin_waiting* w, std::uint32_t place)
{
    tree_node* nodes = w->tree->nodes;
    std::uint32_t node = w->tree->leaves + leaf_of(*w->tree, place);
    nodes[node].free |= leaf_bit(w, place);
    for (node /= 2; node && !nodes[node].free; node /= 2)
        nodes[node].free = 1;
}

// The lowest of the nodes of the last point taken that has all points near a box. What is asked for is mostly
// about that point.
std::uint32_t start_node(const tin_waiting* w, const tin_place& low, const tin_place& high)
{
    std::uint32_t node = w->leaf;
    for (int depth = w->depth; depth > 0; --depth, node /= 2) {
        const tree_cell& c = w->cells[depth];
        if (low.x - w->reach > c.x0 && high.x + w->reach < c.x1 && low.y - w->reach > c.y0 &&
            high.y + w->reach < c.y1)
            break;
    }
    return node;
}

void set_start(tin_waiting* w, std::uint32_t place)
{
    w->leaf = w->tree->leaves + leaf_of(*w->tree, place);
    w->depth = std::bit_width(w->leaf) - 1;
    constexpr double far = std::numeric_limits<double>::infinity();
    w->cells[0] = {-far, far, -far, far};
    for (int depth = 0; depth < w->depth; ++depth) {
        const tree_node& n = w->tree->nodes[w->leaf >> (w->depth - depth)];
        const bool upper = w->leaf >> (w->depth - depth - 1) & 1;
        tree_cell& c = w->cells[depth + 1];
        c = w->cells[depth];
        (n.by_x ? upper ? c.x0 : c.x1 : upper ? c.y0 : c.y1) = n.at;
    }
}

int frame_index(const tin_network* network, const tin_point* point)
{
    for (int i = 0; i < 4; ++i)
        if (network->frame[i] == point)
            return i;
    return -1;
}

// An edge from a to b, made where two triangles were or, if both are the same, inside one.
struct edge_query {
    tin_place a, b;
    double limit;              // length times reach
    const swap_corners* where; // null: there was nothing
    tin_triangle* into;
};

// Puts a point that is near the edge into the bucket of a triangle. Beyond the ends of the edge there can be
// some that are in other triangles.
void bind_if_near(tin_waiting* w, const edge_query& q, std::uint32_t place)
{
    const tree_spot& spot = w->tree->spots[place];
    if (std::fabs(turn(q.a, q.b, spot.x, spot.y)) <= q.limit &&
        is_near_segment(q.a, q.b, w->reach, spot.x, spot.y) &&
        (!q.where || is_well_inside(w, q.where->corner[0], spot) ||
         is_well_inside(w, q.where->corner[1], spot)))
        waiting_bind(w, place, q.into, false);
}

void bind_near_by_order(tin_waiting* w, const corner_order& order, const edge_query& q)
{
    const order_piece piece = corner_order_near(order, *w->tree, q.a, w->reach);
    for (const std::uint64_t* entry = piece.first; entry != piece.last; ++entry) {
        const auto place = static_cast<std::uint32_t>(*entry);
        if (is_free(w, place))
            bind_if_near(w, q, place);
    }
}

// Puts the points near a new edge into the bucket of a triangle.
void bind_near(tin_network* network, const tin_point* from, const tin_point* to, const swap_corners* where,
               tin_triangle* into)
{
    tin_waiting* w = network->waiting;
    const point_tree& tree = *w->tree;
    if (!tree.nodes[1].free)
        return;
    int corner = frame_index(network, from);
    if (corner >= 0)
        std::swap(from, to);
    else
        corner = frame_index(network, to);
    const tin_place a = place_of(from), b = place_of(to);
    const edge_query q{a, b, 1.001 * w->reach * std::hypot(b.x - a.x, b.y - a.y), where, into};
    corner_order* order = corner >= 0 && frame_index(network, from) < 0 ? &w->orders[corner] : nullptr;
    if (order && !order->entries && !order->given_up && order->work > WORK_FOR_ORDER * tree.count)
        corner_order_make(order, tree);
    if (order && order->entries) {
        bind_near_by_order(w, *order, q);
        return;
    }
    std::uint64_t work = 0;
    near_segment(
        tree, start_node(w, {std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}),
        a, b, w->reach,
        [&](std::uint32_t node) {
            ++work;
            return tree.nodes[node].free != 0;
        },
        [&](std::uint32_t leaf) {
            const std::uint32_t first = first_of_leaf(tree, leaf);
            for (unsigned left = tree.nodes[tree.leaves + leaf].free; left; left &= left - 1)
                bind_if_near(w, q, first + static_cast<std::uint32_t>(std::countr_zero(left)));
        });
    if (order)
        order->work += work;
}

// ---- triangles with nothing in them ----

tin_content& content_of(tin_triangle* t)
{
    return static_cast<listed_triangle*>(t)->content;
}

// Looks into a triangle, when there is little in it and so little to look at.
tin_content look_into(const tin_waiting* w, const tin_triangle* t)
{
    const point_tree& tree = *w->tree;
    const tin_place a = place_of(t->corner[0]), b = place_of(t->corner[1]), c = place_of(t->corner[2]);
    const double area = turn(a, b, c.x, c.y);
    if (!(area >= 0) || area * w->left > LITTLE * w->area)
        return tin_content::some;
    const tin_place low{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
    const tin_place high{std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
    int work = 0;
    const bool empty = near_box(
        tree, start_node(w, low, high), low, high,
        [&](std::uint32_t node) {
            work += node >= tree.leaves;
            return tree.nodes[node].free != 0;
        },
        [&](std::uint32_t leaf) {
            const std::uint32_t first = first_of_leaf(tree, leaf);
            for (unsigned left = tree.nodes[tree.leaves + leaf].free; left; left &= left - 1) {
                const tree_spot& s = tree.spots[first + static_cast<std::uint32_t>(std::countr_zero(left))];
                if (turn(a, b, s.x, s.y) > 0 && turn(b, c, s.x, s.y) > 0 && turn(c, a, s.x, s.y) > 0)
                    return false;
            }
            return work < MANY_LEAVES;
        });
    return empty ? tin_content::none : tin_content::some;
}

bool is_empty(const tin_waiting* w, tin_triangle* t)
{
    tin_content& content = content_of(t);
    if (content == tin_content::unknown)
        content = look_into(w, t);
    return content == tin_content::none;
}

bool is_new_edge(const swap_corners& before, const tin_point* a, const tin_point* b)
{
    for (const auto& corner : before.corner)
        for (int i = 0; i < 3; ++i) {
            const tin_point *p = corner[i], *q = corner[(i + 1) % 3];
            if ((p == a && q == b) || (p == b && q == a))
                return false;
        }
    return true;
}

// ---- the run ----

// Some triangle near a point.
tin_triangle* start_for(const tin_network* network, std::uint32_t place)
{
    const tin_waiting* w = network->waiting;
    const tree_node* nodes = w->tree->nodes;
    std::uint32_t node = w->tree->leaves + leaf_of(*w->tree, place);
    while (node && !nodes[node].near)
        node /= 2;
    if (!node)
        return w->last ? w->last : network->triangles;
    tin_triangle* near = nodes[node].near;
    const tree_spot& spot = w->tree->spots[place];
    const tin_point* corner = near->corner[0];
    const double to_near = std::fabs(corner->x - spot.x) + std::fabs(corner->y - spot.y);
    const double to_last = std::fabs(w->last_place.x - spot.x) + std::fabs(w->last_place.y - spot.y);
    return to_last < to_near ? w->last : near;
}

tin_triangle* triangle_of(const tin_network* network, tin_triangle* start, const tin_point* point)
{
    tin_triangle* t = locate(network, start, point->x, point->y, network->waiting->reach / 2);
    return t ? t : network->triangles; // where the insertion finds that it isn't so
}

void note_triangle(tin_waiting* w, std::uint32_t place, tin_triangle* triangle)
{
    const tree_spot& spot = w->tree->spots[place];
    w->last = triangle;
    w->last_place = {spot.x, spot.y};
    tree_node* nodes = w->tree->nodes;
    std::uint32_t node = w->tree->leaves + leaf_of(*w->tree, place);
    nodes[node].near = triangle;
    for (node /= 2; node && !nodes[node].near; node /= 2)
        nodes[node].near = triangle;
}

void mark_all_free(tin_waiting* w)
{
    point_tree& tree = *w->tree;
    for (std::uint32_t node = 1; node < tree.leaves; ++node)
        tree.nodes[node].free = 1;
    for (std::uint32_t leaf = 0; leaf < tree.leaves; ++leaf) {
        const unsigned count = first_of_leaf(tree, leaf + 1) - first_of_leaf(tree, leaf);
        tree_node& node = tree.nodes[tree.leaves + leaf];
        node.free = node.waiting = static_cast<std::uint8_t>((1u << count) - 1);
    }
}

// The box is large enough for what is said above, and has all points.
bool is_fit(const tin_network* network, const point_tree& tree, double* w, double* h)
{
    *w = network->x_max - network->x_min;
    *h = network->y_max - network->y_min;
    const double size = std::max(*w, *h);
    return size > SMALLEST && size < LARGEST && std::min(*w, *h) > SLIMMEST * size && tree.x0 >= 0 &&
           tree.x1 <= *w && tree.y0 >= 0 && tree.y1 <= *h;
}

void forget_places(tin_network* network)
{
    for (tin_point* p = network->points; p; p = p->next)
        p->tri = nullptr;
}

} // namespace

waiting_link* link_of(const tin_point* point)
{
    for (tin_link* link = point->tri->bucket; link; link = link->next)
        if (link->point == point)
            return static_cast<waiting_link*>(link);
    return nullptr;
}

void waiting_bind(tin_waiting* w, std::uint32_t place, tin_triangle* triangle, bool for_good)
{
    set_bound(w, place);
    tin_point* point = w->tree->spots[place].point;
    point->tri = triangle;
    waiting_link* link = w->spare;
    if (link)
        w->spare = static_cast<waiting_link*>(link->next);
    else
        link = static_cast<waiting_link*>(acad_malloc(sizeof(waiting_link)));
    if (!link)
        return;
    *link = {{point, nullptr}, place, for_good};
    tin_put_in_bucket(link, triangle);
}

bool waiting_begin(tin_network* network)
{
    point_tree* tree = point_tree_new(network->points);
    double width = 0, height = 0;
    auto* w = tree && is_fit(network, *tree, &width, &height)
                  ? static_cast<tin_waiting*>(acad_malloc(sizeof(tin_waiting)))
                  : nullptr;
    if (!w) {
        point_tree_free(tree);
        forget_places(network);
        return false;
    }
    *w = {};
    w->tree = tree;
    w->reach = REACH * std::max(width, height);
    w->thin = THIN * std::max(width, height);
    w->area = width * height;
    w->left = tree->count;
    w->leaf = 1;
    for (int i = 0; i < 4; ++i)
        corner_order_begin(&w->orders[i], network->frame[i], width, height);
    mark_all_free(w);
    network->waiting = w;
    tin_triangle *first = network->triangles, *second = first->next;
    bind_near(network, network->frame[1], network->frame[3], nullptr, first);
    tin_sort_buckets(network, first, second, first, second);
    return true;
}

void waiting_call_for(const tin_network* network, const tin_point* next, const tin_point* soon,
                      const tin_point* later)
{
    const tin_waiting* w = network->waiting;
    if (!w)
        return;
    if (later && has_tree_place(later)) {
        __builtin_prefetch(&leaf_node(w, tree_place(later)));
        __builtin_prefetch(w->tree->spots + tree_place(later));
    }
    const tin_triangle* near = soon && has_tree_place(soon) ? leaf_node(w, tree_place(soon)).near : nullptr;
    if (near)
        __builtin_prefetch(near);
    near = next && has_tree_place(next) ? leaf_node(w, tree_place(next)).near : nullptr;
    for (int i = 0; near && i < 3; ++i) {
        __builtin_prefetch(near->corner[i]);
        __builtin_prefetch(near->side[i]);
    }
}

void waiting_take(tin_network* network, tin_point* point)
{
    tin_waiting* w = network->waiting;
    if (!w)
        return;
    --w->left;
    std::uint32_t place;
    if (has_tree_place(point)) {
        place = tree_place(point);
        set_bound(w, place);
        w->not_in_fold = point;
        point->tri = triangle_of(network, start_for(network, place), point);
    } else {
        waiting_link* link = link_of(point);
        w->not_in_fold = link && !link->for_good ? point : nullptr;
        if (!link)
            return;
        link->for_good = true; // if it is inserted elsewhere the link stays
        place = link->place;
    }
    set_start(w, place);
    leaf_node(w, place).waiting &= static_cast<std::uint8_t>(~leaf_bit(w, place));
    note_triangle(w, place, point->tri);
    content_of(point->tri) = tin_content::unknown;
}

void waiting_split(tin_network* network, const tin_point* point, tin_triangle* triangle, tin_triangle* a,
                   tin_triangle* b)
{
    if (!network->waiting)
        return;
    if (!is_empty(network->waiting, triangle)) {
        const swap_corners before = corners_of(triangle, triangle);
        for (const tin_point* corner : triangle->corner)
            bind_near(network, point, corner, &before, triangle);
        content_of(triangle) = tin_content::unknown;
    }
    content_of(a) = content_of(b) = content_of(triangle);
}

bool waiting_none_in(const tin_network* network, tin_triangle* first, tin_triangle* second)
{
    const tin_waiting* w = network->waiting;
    return !w || !w->left || (is_empty(w, first) && is_empty(w, second));
}

void waiting_swapped(tin_network* network, tin_triangle* first, tin_triangle* second,
                     const swap_corners& before, const tin_point* from, const tin_point* to, bool none_in)
{
    if (!network->waiting)
        return;
    bind_folds({network, first, second, before});
    if (none_in)
        return;
    content_of(first) = content_of(second) = tin_content::unknown;
    bind_near(network, from, to, &before, first);
}

void waiting_swapped(tin_network* network, tin_triangle* first, tin_triangle* second,
                     const swap_corners& before)
{
    if (!network->waiting)
        return;
    content_of(first) = content_of(second) = tin_content::unknown;
    const fold f{network, first, second, before};
    const swap_corners now = corners_of(first, second);
    if (!is_same_outline(now, before)) {
        network->waiting->torn = true;
        for (const swap_corners* two : {&before, &now})
            for (const auto& corner : two->corner)
                bind_fold(f, corner);
    } else {
        bind_folds(f);
    }
    for (const auto& corner : now.corner)
        for (int i = 0; i < 3; ++i)
            if (is_new_edge(before, corner[i], corner[(i + 1) % 3]))
                bind_near(network, corner[i], corner[(i + 1) % 3], &before, first);
}

void waiting_settle(tin_network* network, tin_triangle* triangle)
{
    tin_waiting* w = network->waiting;
    if (!w)
        return;
    for (tin_link** at = &triangle->bucket; *at;) {
        auto* link = static_cast<waiting_link*>(*at);
        if (link->for_good || !is_well_inside(triangle->corner, link->point->x, link->point->y, w->reach)) {
            at = &link->next;
            continue;
        }
        *at = link->next;
        set_tree_place(link->point, link->place);
        set_free(w, link->place);
        content_of(triangle) = tin_content::some;
        link->next = w->spare;
        w->spare = link;
    }
}

int waiting_holders(const tin_network* network, const tin_point* point, tin_triangle* (&out)[NEAR_TRIANGLES])
{
    const tin_waiting* w = network->waiting;
    if (!w || w->torn || (w->folded && w->not_in_fold != point))
        return 0;
    tin_triangle* start = point->tri ? point->tri : w->last ? w->last : network->triangles;
    start = walk_towards(start, point->x, point->y, w->tree->count);
    return start ? triangles_near(start, point->x, point->y, 2 * w->reach, out) : 0;
}

void waiting_end(tin_network* network)
{
    tin_waiting* w = network->waiting;
    if (!w)
        return;
    point_tree* tree = w->tree;
    for (std::uint32_t place = 0; place < tree->count; ++place) {
        if (!is_free(w, place))
            continue;
        tin_triangle* home = triangle_of(network, start_for(network, place), tree->spots[place].point);
        note_triangle(w, place, home);
        waiting_bind(w, place, home, true);
    }
    while (waiting_link* link = w->spare) {
        w->spare = static_cast<waiting_link*>(link->next);
        acad_free(link);
    }
    for (const corner_order& order : w->orders)
        acad_free(order.entries);
    point_tree_free(tree);
    acad_free(w);
    network->waiting = nullptr;
}
