#include "spatial/kd_node.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"
#include "spatial/kd_trail.h"

namespace
{

constexpr int FIRST_ROOM = 16; // a leaf of no more items gets all its room at once
constexpr int MOST_ITEMS = std::numeric_limits<std::int16_t>::max();
constexpr int LONG_WALK = 32; // steps from which a trail is laid; trees of scattered points are less deep

struct split_plane {
    std::int8_t dimension;
    double value;
};

std::int32_t* new_items(int room)
{
    return static_cast<std::int32_t*>(acad_malloc(static_cast<std::size_t>(room) * sizeof(std::int32_t)));
}

int leaf_capacity(const kd_points& points)
{
    return std::clamp<int>(points.leaf_capacity, 1, MOST_ITEMS);
}

// Room doubles up to the capacity, and beyond it for a leaf that can't split.
bool make_room(kd_node* leaf, int capacity)
{
    if (leaf->item_count < leaf->item_room)
        return true;
    if (leaf->item_room == MOST_ITEMS)
        return false;
    const int most = leaf->item_count < capacity ? capacity : MOST_ITEMS;
    const int room = std::min(std::max(FIRST_ROOM, 2 * leaf->item_room), most);
    std::int32_t* items = new_items(room);
    if (!items)
        return false;
    if (leaf->item_count > 0)
        std::memcpy(items, leaf->items, static_cast<std::size_t>(leaf->item_count) * sizeof(std::int32_t));
    acad_free(leaf->items);
    leaf->items = items;
    leaf->item_room = static_cast<std::int16_t>(room);
    return true;
}

void push(kd_node* leaf, std::int32_t item)
{
    leaf->items[leaf->item_count++] = item;
}

// With all ranges 0 the plane is 0 in the first dimension.
split_plane plane_of(const kd_node* leaf, const kd_points& points)
{
    split_plane plane{0, 0.0};
    double best = 0.0;
    for (std::int8_t d = 0; d < std::min(points.dimensions, KD_MOST_DIMENSIONS); ++d) {
        double least = std::numeric_limits<double>::infinity(), most = -least, sum = 0.0;
        for (int i = 0; i < leaf->item_count; ++i) {
            const double at = points.coordinate(points.store, leaf->items[i], d);
            least = at < least ? at : least;
            most = at > most ? at : most;
            sum += at;
        }
        if (most - least > best) {
            best = most - least;
            plane = {d, sum / leaf->item_count};
        }
    }
    return plane;
}

bool is_above(const split_plane& plane, std::int32_t item, const kd_points& points)
{
    return points.coordinate(points.store, item, plane.dimension) > plane.value;
}

int count_above(const split_plane& plane, const kd_node* leaf, std::int32_t item, const kd_points& points)
{
    int count = is_above(plane, item, points);
    for (int i = 0; i < leaf->item_count; ++i)
        count += is_above(plane, leaf->items[i], points);
    return count;
}

// What is no number goes low everywhere, like what is infinitely low.
double place(const kd_points& points, std::int32_t item, std::int8_t dimension)
{
    const double at = points.coordinate(points.store, item, dimension);
    return at != at ? -std::numeric_limits<double>::infinity() : at;
}

bool is_one_place(std::int32_t a, std::int32_t b, const kd_points& points)
{
    for (std::int8_t d = 0; d < std::min(points.dimensions, KD_MOST_DIMENSIONS); ++d)
        if (place(points, a, d) != place(points, b, d))
            return false;
    return true;
}

// The ends of what is to be parted, and what of it is finite.
struct spread {
    double least = std::numeric_limits<double>::infinity(), most = -least;
    double least_finite = least, most_finite = most;
};

spread spread_of(const kd_node* leaf, std::int32_t item, const kd_points& points, std::int8_t dimension)
{
    spread all;
    for (int i = 0; i <= leaf->item_count; ++i) {
        const double at = place(points, i < leaf->item_count ? leaf->items[i] : item, dimension);
        all.least = std::min(all.least, at);
        all.most = std::max(all.most, at);
        if (std::isfinite(at)) {
            all.least_finite = std::min(all.least_finite, at);
            all.most_finite = std::max(all.most_finite, at);
        }
    }
    return all;
}

// In the middle of what is finite, where that is below the greatest.
double plane_value(const spread& all)
{
    const double middle = all.least_finite / 2 + all.most_finite / 2;
    return middle >= all.least && middle < all.most ? middle : all.least;
}

// The plane of a leaf that its mean doesn't part; the new item counts too. Nothing is above it when all are at
// one place.
split_plane other_plane_of(const kd_node* leaf, std::int32_t item, const kd_points& points)
{
    split_plane plane{0, std::numeric_limits<double>::infinity()};
    double best = 0.0;
    for (std::int8_t d = 0; d < std::min(points.dimensions, KD_MOST_DIMENSIONS); ++d) {
        const spread all = spread_of(leaf, item, points, d);
        if (all.most - all.least > best) {
            best = all.most - all.least;
            plane = {d, plane_value(all)};
        }
    }
    return plane;
}

// The items above `plane`, with the new one; 0 when no plane parts them.
int find_plane(const kd_node* leaf, std::int32_t item, const kd_points& points, split_plane* plane)
{
    // A leaf that is too full already holds one place only.
    if (leaf->item_count > leaf_capacity(points) && is_one_place(leaf->items[0], item, points))
        return 0;
    *plane = plane_of(leaf, points);
    int count = count_above(*plane, leaf, item, points);
    if (count > 0 && count <= leaf->item_count)
        return count;
    *plane = other_plane_of(leaf, item, points);
    count = count_above(*plane, leaf, item, points);
    return count <= leaf->item_count ? count : 0;
}

// Both children stand in their final state before the leaf changes. The low one takes over the leaf's array:
// at least one of the items and the new one goes high, so there is room in it.
bool split(kd_node* leaf, std::int32_t item, const split_plane& plane, int high_count, const kd_points& points)
{
    kd_node* low = kd_node_new(leaf);
    kd_node* high = kd_node_new(leaf);
    const int high_room = std::max(std::min(FIRST_ROOM, leaf_capacity(points)), high_count);
    std::int32_t* high_items = new_items(high_room);
    if (!low || !high || !high_items) {
        acad_free(low);
        acad_free(high);
        acad_free(high_items);
        return false;
    }
    high->items = high_items;
    high->item_room = static_cast<std::int16_t>(high_room);
    low->items = leaf->items;
    low->item_room = leaf->item_room;
    const int count = leaf->item_count;
    for (int i = 0; i < count; ++i) {
        const std::int32_t old = leaf->items[i];
        push(is_above(plane, old, points) ? high : low, old);
    }
    push(is_above(plane, item, points) ? high : low, item);
    leaf->is_leaf = 0;
    leaf->split_dimension = plane.dimension;
    leaf->split_value = plane.value;
    leaf->low = low;
    leaf->high = high;
    leaf->trail = nullptr;
    leaf->item_count = leaf->item_room = 0;
    return true;
}

// The negations let what is no number go both ways.
bool low_meets(const kd_node* node, const double* position, double radius)
{
    return !(position[node->split_dimension] - radius > node->split_value);
}

bool high_meets(const kd_node* node, const double* position, double radius)
{
    return !(node->split_value > position[node->split_dimension] + radius);
}

// The next node to go on with once all below `node`, which lies below `top`, has been seen.
const kd_node* climb(const kd_node* top, const kd_node* node, const double* position, double radius)
{
    for (; node != top; node = node->parent)
        if (node == node->parent->low && high_meets(node->parent, position, radius))
            return node->parent->high;
    return nullptr;
}

// The first leaf to look at, from `node` on.
const kd_node* first_below(const kd_node* top, const kd_node* node, const double* position, double radius)
{
    while (node && !node->is_leaf)
        if (low_meets(node, position, radius))
            node = node->low;
        else if (high_meets(node, position, radius))
            node = node->high;
        else
            node = climb(top, node, position, radius);
    return node;
}

kd_node* step_down(const kd_node* node, const double* position)
{
    return node->split_value < position[node->split_dimension] ? node->high : node->low;
}

// The walk from `from` on has been long. `from` is the root, or where the walk left another trail.
void lay_trail(kd_node* from, kd_trail* left, const double* position)
{
    if (!left)
        kd_trail_lay(from, position);
    else if (kd_trail_last(left) == from)
        kd_trail_extend(left, position);
    else
        kd_trail_lay(step_down(from, position), position);
}

} // namespace

kd_node* kd_node_new(kd_node* parent)
{
    kd_node* node = static_cast<kd_node*>(acad_malloc(sizeof(kd_node)));
    if (node)
        *node = {1, 0, 0.0, nullptr, nullptr, {nullptr}, 0, 0, parent};
    return node;
}

void kd_node_free(kd_node* root)
{
    for (kd_node* node = root; node;) {
        kd_node*& child = node->low ? node->low : node->high;
        if (child) {
            kd_node* below = child;
            child = nullptr;
            node = below;
            continue;
        }
        kd_node* parent = node->parent;
        if (node->is_leaf)
            acad_free(node->items);
        else
            kd_trail_free(node->trail);
        acad_free(node);
        node = parent;
    }
}

kd_node* kd_node_leaf(kd_node* root, const double* position)
{
    kd_node *node = root, *from = root;
    kd_trail* left = nullptr;
    int steps = 0;
    while (!node->is_leaf) {
        if (node->trail) {
            left = node->trail;
            from = node = kd_trail_follow(left, position);
            steps = 0;
            if (node->is_leaf)
                return node;
        }
        node = step_down(node, position);
        if (++steps == LONG_WALK)
            lay_trail(from, left, position);
    }
    return node;
}

bool kd_node_enter(kd_node* leaf, std::int32_t item, const kd_points& points)
{
    const int capacity = leaf_capacity(points);
    if (leaf->item_count >= capacity) {
        split_plane plane{};
        if (const int high_count = find_plane(leaf, item, points, &plane))
            return split(leaf, item, plane, high_count, points);
    }
    if (!make_room(leaf, capacity))
        return false;
    push(leaf, item);
    return true;
}

const kd_node* kd_node_around(const kd_node* root, const double* position, double radius)
{
    const kd_node* node = root;
    while (radius >= 0 && !node->is_leaf) {
        if (node->trail) {
            node = kd_trail_around(node->trail, position, radius);
            if (node->is_leaf)
                return node;
        }
        const bool low = low_meets(node, position, radius), high = high_meets(node, position, radius);
        if (low == high)
            return node;
        node = low ? node->low : node->high;
    }
    return node;
}

const kd_node* kd_node_first_near(const kd_node* top, const double* position, double radius)
{
    return first_below(top, top, position, radius);
}

const kd_node* kd_node_next_near(const kd_node* top, const kd_node* leaf, const double* position, double radius)
{
    return first_below(top, climb(top, leaf, position, radius), position, radius);
}
