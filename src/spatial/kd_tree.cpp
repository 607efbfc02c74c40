#include "spatial/kd_tree.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"
#include "spatial/tolerances.h"

namespace
{

constexpr std::int32_t STEP = 1000; // slots by which the store is seen to grow
constexpr std::int32_t FOUND = 1;   // value of a candidate in the answer to a radius

kd_point* new_points(std::int32_t room)
{
    return static_cast<kd_point*>(acad_malloc(static_cast<std::size_t>(room) * sizeof(kd_point)));
}

double coordinate(const kd_point& point, std::int32_t dimension)
{
    switch (dimension) {
    case 0:
        return point.x;
    case 1:
        return point.y;
    case 2:
        return point.z;
    default:
        return 0.0;
    }
}

double stored_coordinate(const void* points, std::int32_t index, std::int32_t dimension)
{
    return coordinate(static_cast<const kd_point*>(points)[index], dimension);
}

double distance_squared(const kd_point& a, const kd_point& b, std::int32_t dimensions)
{
    double sum = 0.0;
    if (dimensions > 0)
        sum += (a.x - b.x) * (a.x - b.x);
    if (dimensions > 1)
        sum += (a.y - b.y) * (a.y - b.y);
    if (dimensions > 2)
        sum += (a.z - b.z) * (a.z - b.z);
    return sum;
}

bool is_same_place(const kd_point& a, const kd_point& b, std::int32_t dimensions)
{
    for (std::int32_t d = 0; d < std::min(dimensions, KD_MOST_DIMENSIONS); ++d)
        if (!(std::fabs(coordinate(a, d) - coordinate(b, d)) <= KD_LENGTH_TOL))
            return false;
    return true;
}

// The capacity goes up by a step. Room is doubled behind it, so that n points are copied n times in all.
bool grow(kd_tree* tree)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max() - STEP;
    if (tree->point_capacity > most)
        return false;
    const std::int32_t capacity = tree->point_capacity + STEP;
    if (capacity > tree->point_room) {
        const std::int32_t room = tree->point_room > most / 2 ? capacity : 2 * tree->point_room;
        kd_point* points = new_points(room);
        if (!points)
            return false;
        std::memcpy(points, tree->points, static_cast<std::size_t>(tree->point_count + 1) * sizeof(kd_point));
        acad_free(tree->points);
        tree->points = points;
        tree->point_room = room;
    }
    tree->point_capacity = capacity;
    return true;
}

// The point of the leaf at the candidate's place, -1 when there is none. Only the nearest is looked at.
std::int32_t same_place_in(const kd_node* leaf, const kd_tree* tree)
{
    const kd_point& candidate = tree->points[tree->point_count];
    if (distance_squared(candidate, candidate, tree->dimensions) != 0.0)
        return -1; // no distance to it is a number below the mark
    std::int32_t nearest = -1;
    double best = KD_NO_VALUE;
    for (int i = 0; i < leaf->item_count; ++i) {
        const kd_point& other = tree->points[leaf->items[i]];
        const double distance = distance_squared(candidate, other, tree->dimensions);
        if (distance < best) {
            best = distance;
            nearest = leaf->items[i];
        }
    }
    const bool is_same = nearest >= 0 && is_same_place(candidate, tree->points[nearest], tree->dimensions);
    return is_same ? nearest : -1;
}

// The index reached by the candidate, which may be its own; -1 when there is no memory for that.
std::int32_t find_or_enter(kd_tree* tree)
{
    const kd_point& candidate = tree->points[tree->point_count];
    const double position[KD_MOST_DIMENSIONS] = {candidate.x, candidate.y, candidate.z};
    kd_node* leaf = kd_node_leaf(tree->root, position);
    const std::int32_t found = same_place_in(leaf, tree);
    if (found >= 0)
        return found;
    const kd_points points{tree->dimensions, tree->leaf_capacity, tree->points, stored_coordinate};
    return kd_node_enter(leaf, tree->point_count, points) ? tree->point_count : -1;
}

void release(kd_tree* tree)
{
    kd_node_free(tree->root);
    acad_free(tree->points);
    acad_free(tree);
}

// Adds the points of a leaf within a distance of the candidate; false when the heap is exhausted. They are
// picked in one go and added afterwards, which lets the machine fetch far-off points side by side.
bool add_near(kd_tree* to, const kd_tree* from, const kd_node* leaf, double radius)
{
    constexpr int GROUP = 16;
    const kd_point candidate = from->points[from->point_count];
    for (int first = 0; first < leaf->item_count; first += GROUP) {
        const int end = std::min<int>(first + GROUP, leaf->item_count);
        std::int32_t near[GROUP];
        int count = 0;
        for (int i = first; i < end; ++i) {
            near[count] = leaf->items[i];
            count +=
                distance_squared(candidate, from->points[leaf->items[i]], from->dimensions) < radius * radius;
        }
        for (int i = 0; i < count; ++i) {
            const kd_point& p = from->points[near[i]];
            if (!kd_add(to, p.x, p.y, p.z, p.data, nullptr))
                return false;
        }
    }
    return true;
}

} // namespace

kd_tree* kd_create(std::int32_t id, std::int32_t dimensions, std::int32_t leaf_capacity)
{
    kd_tree* tree = static_cast<kd_tree*>(acad_malloc(sizeof(kd_tree)));
    if (!tree)
        return nullptr;
    *tree = {leaf_capacity, dimensions, new_points(STEP), kd_node_new(nullptr), 0, STEP, nullptr, id, STEP};
    if (!tree->points || !tree->root) {
        release(tree);
        return nullptr;
    }
    tree->points[0] = {};
    return tree;
}

void kd_free_list(kd_tree** head)
{
    while (kd_tree* tree = *head) {
        *head = tree->next;
        release(tree);
    }
}

void kd_remove(kd_tree** head, std::int32_t id)
{
    for (; *head; head = &(*head)->next)
        if ((*head)->id == id) {
            kd_tree* tree = *head;
            *head = tree->next;
            release(tree);
            return;
        }
}

double kd_coordinate(const kd_tree* tree, std::int32_t index, std::int32_t dimension)
{
    if (index < 0 || index > tree->point_count)
        return 0.0;
    return coordinate(tree->points[index], dimension);
}

double kd_distance_squared(const kd_tree* tree, std::int32_t a, std::int32_t b)
{
    double sum = 0.0;
    for (std::int32_t d = 0; d < std::min(tree->dimensions, KD_MOST_DIMENSIONS); ++d) {
        const double apart = kd_coordinate(tree, a, d) - kd_coordinate(tree, b, d);
        sum += apart * apart;
    }
    return sum;
}

kd_tree* kd_radius(kd_tree* tree, double x, double y, double z, double radius)
{
    kd_tree* near = kd_create(0, tree->dimensions, tree->leaf_capacity);
    if (!near)
        return nullptr;
    const double position[KD_MOST_DIMENSIONS] = {x, y, z};
    tree->points[tree->point_count] = {x, y, z, FOUND};
    const kd_node* top = kd_node_around(tree->root, position, radius);
    for (const kd_node* leaf = kd_node_first_near(top, position, radius); leaf;
         leaf = kd_node_next_near(top, leaf, position, radius))
        if (!add_near(near, tree, leaf, radius)) {
            kd_free_list(&near);
            return nullptr;
        }
    return near;
}

std::int32_t kd_add(kd_tree* tree, double x, double y, double z, std::int32_t data, std::int32_t* found_index)
{
    const std::int32_t candidate = tree->point_count;
    tree->points[candidate] = {x, y, z, data};
    const std::int32_t reached = find_or_enter(tree);
    if (found_index)
        *found_index = reached;
    if (reached < 0)
        return 0;
    if (reached != candidate)
        return tree->points[reached].data;
    if (data == 0)
        return 0;
    // The slot behind the new point must be there. It is, unless the store couldn't grow the last time.
    if (candidate + 1 == tree->point_capacity && !grow(tree))
        return 0;
    tree->points[candidate + 1] = {};
    ++tree->point_count;
    if (tree->point_count + 1 == tree->point_capacity && !grow(tree))
        return 0;
    return data;
}
