// way_forest.h: where walks go on the ways of a network, without walking.
//
// Each way has one next way, so the ways form trees that hang on a dead end, or on a circle. A circle is cut
// open at one of its ways, the root of its tree: a walk goes up the tree to the root, and from there once more
// up from the root's next way, which is the foot of the circle. What lies on a walk is then a question about
// ancestors.
#pragma once

#include "topology/ways.h"

class WayForest
{
public:
    // False when the heap is exhausted.
    bool make(const Ways& ways);

    // The first way on a walk from `way` that leads back to the node where it starts; 0: never.
    std::int32_t home(std::int32_t way) const { return home_.items[way]; }
    // How many steps a walk takes from one way to another; -1: it never comes there.
    std::int32_t steps(std::int32_t way, std::int32_t to) const;
    // Marks a way for good.
    void mark(std::int32_t way);
    // The first marked way on a walk from an unmarked one; 0: none.
    std::int32_t first_marked(std::int32_t way) const;

private:
    HeapArray<std::int32_t> root_, depth_, home_;
    HeapArray<std::int32_t> begin_, end_; // the numbers that a way and the tree below it have
    HeapArray<std::int32_t> foot_;        // by root: the foot of the circle, 0 for a dead end
    HeapArray<std::int32_t> marks_; // by number, in a tree of ranges: the deepest marked way that covers it
    struct climb;

    void make_tree(const Ways& ways, std::int32_t root, climb* work);
    void enter(const Ways& ways, std::int32_t way, climb* work);
    bool is_above(std::int32_t way, std::int32_t low) const;
    std::int32_t marked_above(std::int32_t way) const;
    std::int32_t deeper(std::int32_t a, std::int32_t b) const;
};
