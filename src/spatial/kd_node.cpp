#include "spatial/kd_node.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"

namespace
{

constexpr int FIRST_ROOM = 4;
constexpr std::int32_t SHORT_RUN = 16; // is walked node by node
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr int MOST_ITEMS = std::numeric_limits<std::int16_t>::max();

} // namespace

// The nodes of a long run, from the top; each lies within the one before.
struct kd_run {
    kd_node** nodes;
    std::int32_t count, room;
};

namespace
{

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

bool add_to_run(kd_run* run, kd_node* node)
{
    if (run->count == run->room) {
        const std::int32_t room = std::max(2 * SHORT_RUN, 2 * run->room);
        auto** nodes = static_cast<kd_node**>(acad_malloc(static_cast<std::size_t>(room) * sizeof(kd_node*)));
        if (!nodes)
            return false;
        if (run->count > 0)
            std::memcpy(nodes, run->nodes, static_cast<std::size_t>(run->count) * sizeof(kd_node*));
        acad_free(run->nodes);
        run->nodes = nodes;
        run->room = room;
    }
    run->nodes[run->count++] = node;
    node->run = run;
    return true;
}

void free_run(kd_run* run)
{
    acad_free(run->nodes);
    acad_free(run);
}

// Writes down a run that has become long, from the top to `last`.
void note_run(kd_node* last)
{
    auto* run = static_cast<kd_run*>(acad_malloc(sizeof(kd_run)));
    if (!run)
        return;
    *run = {nullptr, 0, 0};
    kd_node* nodes[SHORT_RUN];
    kd_node* node = last;
    for (std::int32_t i = SHORT_RUN; i-- > 0; node = node->parent)
        nodes[i] = node;
    for (kd_node* member : nodes)
        if (!add_to_run(run, member)) { // the first one finds no memory, or none does
            free_run(run);
            return;
        }
}

// A leaf that has split goes on with its parent's run if it is the first to do so. Without memory a run just
// ends there, and another begins.
void join_run(kd_node* node)
{
    kd_node* parent = node->parent;
    node->run_length = 1;
    if (!parent || parent->is_continued)
        return;
    if (parent->run && !add_to_run(parent->run, node))
        return;
    parent->is_continued = 1;
    node->run_length = parent->run_length + 1;
    if (node->run_length == SHORT_RUN)
        note_run(node);
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
    // The plane may lie outside: a number that a look has left in the leaf can stand for any place.
    low->up_to[plane.dimension] = std::min(low->up_to[plane.dimension], plane.value);
    high->above[plane.dimension] = std::max(high->above[plane.dimension], plane.value);
    join_run(leaf);
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

// Whether the cube lies within a node's part of space, so that no other part of the tree meets it. False where
// there are no numbers, and for a radius below 0, of which there is no cube.
bool holds_cube(const kd_node* node, const double* position, double radius)
{
    if (!(radius >= 0.0))
        return false;
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d)
        if (!(position[d] - radius > node->above[d] && node->up_to[d] > position[d] + radius))
            return false;
    return true;
}

// The same for a position.
bool holds_position(const kd_node* node, const double* position)
{
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d)
        if (!(node->above[d] < position[d] && position[d] <= node->up_to[d]))
            return false;
    return true;
}

// The last node of the run from `top` for which `holds` is true; `top` where there is no other.
template <class Test>
kd_node* last_in_run(const kd_node* top, Test holds)
{
    const kd_run& run = *top->run;
    std::int32_t low = 0, high = run.count;
    while (high - low > 1) {
        const std::int32_t middle = low + (high - low) / 2;
        (holds(run.nodes[middle]) ? low : high) = middle;
    }
    return run.nodes[low];
}

bool is_long_run_top(const kd_node* node)
{
    return node->run && node->run->nodes[0] == node;
}

// The next node to go on with once all below `node` has been seen.
const kd_node* climb(const kd_node* node, const double* position, double radius)
{
    for (const kd_node* parent = node->parent; parent; node = parent, parent = node->parent) {
        if (holds_cube(node, position, radius))
            return nullptr;
        if (node == parent->low && high_meets(parent, position, radius))
            return parent->high;
    }
    return nullptr;
}

} // namespace

kd_node* kd_node_new(kd_node* parent)
{
    kd_node* node = static_cast<kd_node*>(acad_malloc(sizeof(kd_node)));
    if (!node)
        return nullptr;
    *node = {1, 0, 0.0, nullptr, nullptr, nullptr, 0, 0, parent, {}, {}, 0, 0, nullptr};
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d) {
        node->above[d] = parent ? parent->above[d] : -INF;
        node->up_to[d] = parent ? parent->up_to[d] : INF;
    }
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
        if (is_long_run_top(node)) // the others of its run have gone
            free_run(node->run);
        acad_free(node);
        node = parent;
    }
}

kd_node* kd_node_leaf(kd_node* root, const double* position)
{
    kd_node* node = root;
    while (!node->is_leaf) {
        if (is_long_run_top(node))
            node = last_in_run(node, [&](const kd_node* n) { return holds_position(n, position); });
        node = node->split_value < position[node->split_dimension] ? node->high : node->low;
    }
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
    const kd_node* node = root;
    while (node && !node->is_leaf) {
        if (is_long_run_top(node))
            node = last_in_run(node, [&](const kd_node* n) { return holds_cube(n, position, radius); });
        if (low_meets(node, position, radius))
            node = node->low;
        else if (high_meets(node, position, radius))
            node = node->high;
        else
            node = climb(node, position, radius);
    }
    return node;
}

const kd_node* kd_node_next_near(const kd_node* leaf, const double* position, double radius)
{
    return kd_node_first_near(climb(leaf, position, radius), position, radius);
}
