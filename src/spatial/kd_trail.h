// kd_trail.h: a shortcut down a deep, narrow part of a tree. Points that come in order (along a line, numbered
// edges) make trees as deep as they have leaves, in which every walk from the root would be that long. A trail
// is one such walk written down: the boxes of its nodes lie in each other, so the last node whose box holds a
// position is found by halving. The tree itself stays as it is.
//
// Nodes on a trail may be split and grow on; a trail leads to where it ended when it was laid.
#pragma once

#include <cstdint>

#include "spatial/kd_node.h"

// A node, and the planes between the trail's top and it: it is reached by positions above `above`, and not
// above `upto`, in each dimension.
struct kd_stone {
    kd_node* node;
    double above[KD_MOST_DIMENSIONS]; // no number where there is none
    double upto[KD_MOST_DIMENSIONS];  // infinite where there is none
};

struct kd_trail {
    kd_stone* stones; // the top first
    std::int32_t count, room;
};

// From `top`, an inner node without a trail, along `position` down to a leaf. When the heap is exhausted there
// is none, or a shorter one.
void kd_trail_lay(kd_node* top, const double* position);
// Further down from the trail's last node.
void kd_trail_extend(kd_trail* trail, const double* position);
void kd_trail_free(kd_trail* trail);

kd_node* kd_trail_last(const kd_trail* trail);
// The last node that a walk from the top to a position comes to.
kd_node* kd_trail_follow(const kd_trail* trail, const double* position);
// The last node down to which nothing beside the trail meets the cube around a position, `radius` (not below 0)
// to each side.
kd_node* kd_trail_around(const kd_trail* trail, const double* position, double radius);
