// kd_node.h: a tree of buckets over numbered points, for the owner of the points: point trees here, indexed
// sets of objects above. The tree holds the numbers; each bucket (leaf) answers for a box of space.
//
// Nothing here calls itself, so the depth of a tree costs no stack: nodes know their parents. Walks down deep
// trees take shortcuts.
#pragma once

#include <cstdint>

constexpr std::int32_t KD_MOST_DIMENSIONS = 3;

struct kd_trail; // kd_trail.h

struct kd_node {
    std::uint8_t is_leaf;        // 1 a leaf, 0 an inner node
    std::int8_t split_dimension; // 0, 1 or 2
    double split_value;          // points above it lie in `high`, all others in `low`
    kd_node *low, *high;         // of an inner node
    union {
        std::int32_t* items; // of a leaf: numbers of points
        kd_trail* trail;     // of an inner node: the trail that starts here, if any
    };
    std::int16_t item_count; // used entries
    std::int16_t item_room;  // entries that there is room for
    kd_node* parent;         // null at the root
};

// Where the points of a tree lie.
struct kd_points {
    std::int32_t dimensions;    // those from KD_MOST_DIMENSIONS on don't count
    std::int32_t leaf_capacity; // items that a leaf may hold before it splits; at least 1 is taken
    const void* store;
    double (*coordinate)(const void* store, std::int32_t item, std::int32_t dimension);
};

// An empty leaf, from the host's heap; null when that is exhausted.
kd_node* kd_node_new(kd_node* parent);
// Releases a whole tree; null is none.
void kd_node_free(kd_node* root);

// The leaf that answers for a position (KD_MOST_DIMENSIONS coordinates).
kd_node* kd_node_leaf(kd_node* root, const double* position);

// Enters `item` into `leaf`, which is the one that answers for it, and splits a full leaf: in the first
// dimension with the greatest range of its items, at their mean. Where that leaves all on one side (what is no
// number or infinite, numbers so large that their mean isn't between them, a single item) the leaf splits at
// any plane that parts them; what is all at one place stays in one leaf, beyond its capacity. False, with the
// tree as it was, when the heap is exhausted or the leaf holds all that it can count.
bool kd_node_enter(kd_node* leaf, std::int32_t item, const kd_points& points);

// The least part of the tree that the whole cube around a position lies in, `radius` to each side.
const kd_node* kd_node_around(const kd_node* root, const double* position, double radius);
// The leaves of that part (of `top`) that meet the cube, low ones first; null behind the last.
const kd_node* kd_node_first_near(const kd_node* top, const double* position, double radius);
const kd_node* kd_node_next_near(const kd_node* top, const kd_node* leaf, const double* position,
                                 double radius);
