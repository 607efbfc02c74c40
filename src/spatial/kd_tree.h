// kd_tree.h: points in one to three dimensions, each with a value of the caller. A point is known again by its
// place, and the points around a position are found without looking at all of them.
//
// A tree only grows. It comes from the host's heap and goes back with kd_free_list or kd_remove; callers keep
// trees in lists, through `next`.
#pragma once

#include <cstdint>

#include "spatial/kd_node.h"

struct kd_point {
    double x, y, z;
    std::int32_t data; // the caller's; 0: this point is only being looked for
};

struct kd_tree {
    std::int32_t leaf_capacity; // as in kd_points
    std::int32_t dimensions;    // 1, 2 or 3: how many coordinates count
    kd_point* points;           // the slot at `point_count` is the candidate of the operation at hand
    kd_node* root;
    std::int32_t point_count;
    std::int32_t point_capacity; // 1000 to begin with, grows by 1000
    kd_tree* next;
    std::int32_t id;         // the caller's key of this tree
    std::int32_t point_room; // slots that `points` really has, never fewer than `point_capacity`
};

// ---- making and releasing
// An empty tree; null when the heap is exhausted. Put it into a list by its `next`.
kd_tree* kd_create(std::int32_t id, std::int32_t dimensions, std::int32_t leaf_capacity);
// Releases the trees of a list; the head becomes null.
void kd_free_list(kd_tree** head);
// Takes the first tree with that id out of the list and releases it; without one nothing happens.
void kd_remove(kd_tree** head, std::int32_t id);

// ---- asking
// x, y or z (dimension 0, 1, 2) of a slot up to the candidate's; 0 for any other.
double kd_coordinate(const kd_tree* tree, std::int32_t index, std::int32_t dimension);
// Over the dimensions of the tree.
double kd_distance_squared(const kd_tree* tree, std::int32_t a, std::int32_t b);
// A new tree of the points nearer to a position than `radius`, with their values, the same dimensions and leaf
// capacity, and id 0. The caller's; null when the heap is exhausted. A candidate that stands in a leaf (see
// kd_add) takes part, at the position itself.
kd_tree* kd_radius(kd_tree* tree, double x, double y, double z, double radius);

// ---- adding and finding
// Reaches the point that stands at a place, within 1e-6 in each coordinate, or adds it. Only the nearest point
// of one leaf is looked at: two near points on the two sides of a split are two points. Answers the value of
// the point reached, and its index in `found_index` unless that is null. With `data` 0 a place that isn't known
// gives 0 and nothing is added. The candidate's number stays in the leaf, though, and stands for whichever
// point is added next. When the heap is exhausted the answer is 0. `found_index` is then -1 if there was no
// room to enter the point; otherwise the point may have been added, and a later look finds out.
std::int32_t kd_add(kd_tree* tree, double x, double y, double z, std::int32_t data, std::int32_t* found_index);
