// min_heap.h: an array whose first object has the least `id`: a binary heap, the parent of place i at i / 2.
#pragma once

#include "topology/object_array.h"

class MinHeap : public ObjectArray
{
public:
    // The new count; 0 for a null object, or when the heap is exhausted: the object is still the caller's then.
    std::int32_t add(TopoObject* object) override;
    // Takes the object at a place out, the one with the least id at 1. It is the caller's from then on, so take
    // get(at) first. The last object comes into its place and moves to where it belongs; `count` drops by one.
    void remove(std::int32_t at) override;
};
