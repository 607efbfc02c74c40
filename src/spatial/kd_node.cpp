#include "spatial/kd_node.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"

namespace
{

constexpr int FIRST_ROOM = 4;
constexpr std::int32_t LONG_WAY = 16; // worth remembering where it led
constexpr int MOST_ITEMS = std::numeric_limits<std::int16_t>::max();

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
    int room = std::max(FIRST_ROOM, 2 * leaf->item_room);
    room = std::min(room, leaf->item_count < capacity ? capacity : MOST_ITEMS);
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

int count_above(const split_plane& plane, const kd_node* leaf, const kd_points& points)
{
    int count = 0;
    for (int i = 0; i < leaf->item_count; ++i)
        count += is_above(plane, leaf->items[i], points);
    return count;
}

// The plane may lie beyond what comes here: of an item that was only looked for the place changes later on.
void narrow(kd_node* low, kd_node* high, const split_plane& plane)
{
    double& up_to = low->up_to[plane.dimension];
    double& above = high->above[plane.dimension];
    up_to = plane.value < up_to ? plane.value : up_to;
    above = plane.value <= above ? above : plane.value;
    if (plane.value != plane.value) // nothing is above no number
        above = std::numeric_limits<double>::infinity();
}

// Both children stand in their final state before the leaf changes. The low one takes over the leaf's array:
// at least one of the items and the new one goes high, so there is room in it.
bool split(kd_node* leaf, std::int32_t item, const split_plane& plane, int high_count, const kd_points& points)
{
    kd_node* low = kd_node_new(leaf);
    kd_node* high = kd_node_new(leaf);
    const int high_room = std::max(FIRST_ROOM, high_count);
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
    leaf->items = nullptr;
    leaf->item_count = leaf->item_room = 0;
    narrow(low, high, plane);
    kd_node* root = leaf;
    while (root->parent)
        root = root->jump;
    if (low->depth > root->deepest->depth || root->deepest == leaf)
        root->deepest = high; // where points go on that come in order
    return true;
}

// Of a finite position; its cube with a radius above 0.
bool holds(const kd_node* node, const double* position, double radius)
{
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d) {
        if (!(node->above[d] < position[d] - radius))
            return false;
        if (node->up_to[d] < position[d] + radius)
            return false;
    }
    return true;
}

bool is_finite(const double* position)
{
    return std::isfinite(position[0]) && std::isfinite(position[1]) && std::isfinite(position[2]);
}

// The lowest node above `node`, or itself, that holds the position.
kd_node* lowest_holding(kd_node* node, const double* position, double radius)
{
    while (node->parent && !holds(node, position, radius))
        node = holds(node->jump, position, radius) ? node->parent : node->jump;
    return node;
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

// The next node to go on with below `top` (null: in the tree) once all below `node` has been seen.
const kd_node* climb(const kd_node* top, const kd_node* node, const double* position, double radius)
{
    for (const kd_node* parent = node->parent; parent && node != top; node = parent, parent = node->parent)
        if (node == parent->low && high_meets(parent, position, radius))
            return parent->high;
    return nullptr;
}

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

} // namespace

kd_node* kd_node_new(kd_node* parent)
{
    kd_node* node = static_cast<kd_node*>(acad_malloc(sizeof(kd_node)));
    if (!node)
        return nullptr;
    constexpr double most = std::numeric_limits<double>::infinity();
    *node = {1,
             0,
             0.0,
             nullptr,
             nullptr,
             nullptr,
             0,
             0,
             parent,
             node,
             0,
             {-most, -most, -most},
             {most, most, most},
             node,
             {node, node, node, node},
             0};
    if (!parent)
        return node;
    node->depth = parent->depth + 1;
    // Two jumps of one length are followed by one over both.
    const kd_node* over = parent->jump;
    node->jump = parent->depth - over->depth == over->depth - over->jump->depth ? over->jump : parent;
    std::copy_n(parent->above, KD_MOST_DIMENSIONS, node->above);
    std::copy_n(parent->up_to, KD_MOST_DIMENSIONS, node->up_to);
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
        acad_free(node->items);
        acad_free(node);
        node = parent;
    }
}

kd_node* kd_node_leaf(kd_node* root, const double* position)
{
    kd_node* node = root;
    std::int32_t slot = -1;
    if (is_finite(position)) {
        node = lowest_holding(root->deepest, position, 0.0);
        for (std::int32_t i = 0; i < KD_RECENT_NODES && !node->is_leaf; ++i)
            if (root->recent[i]->depth > node->depth && holds(root->recent[i], position, 0.0)) {
                node = root->recent[i];
                slot = i;
            }
    }
    const std::int32_t start_depth = node->depth;
    while (!node->is_leaf)
        node = node->split_value < position[node->split_dimension] ? node->high : node->low;
    if (slot < 0 && node->depth - start_depth > LONG_WAY) {
        slot = root->oldest;
        root->oldest = (slot + 1) % KD_RECENT_NODES;
    }
    if (slot >= 0)
        root->recent[slot] = node;
    return node;
}

bool kd_node_enter(kd_node* leaf, std::int32_t item, const kd_points& points)
{
    const int capacity = leaf_capacity(points);
    if (leaf->item_count >= capacity) {
        const split_plane plane = plane_of(leaf, points);
        const int high_count = count_above(plane, leaf, points) + is_above(plane, item, points);
        if (high_count > 0 && high_count <= leaf->item_count)
            return split(leaf, item, plane, high_count, points);
    }
    if (!make_room(leaf, capacity))
        return false;
    push(leaf, item);
    return true;
}

const kd_node* kd_node_first_near(const kd_node* root, const double* position, double radius)
{
    return first_below(nullptr, root, position, radius);
}

const kd_node* kd_node_next_near(const kd_node* leaf, const double* position, double radius)
{
    return kd_node_next_below(nullptr, leaf, position, radius);
}

const kd_node* kd_node_around(kd_node* root, const double* position, double radius)
{
    return is_finite(position) ? lowest_holding(kd_node_leaf(root, position), position, radius) : root;
}

const kd_node* kd_node_next_below(const kd_node* top, const kd_node* leaf, const double* position,
                                  double radius)
{
    return first_below(top, climb(top, leaf, position, radius), position, radius);
}
