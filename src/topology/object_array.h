// object_array.h: a growing array of objects with ids from 1. Ids are never used again: an object that is taken
// out keeps its place and is passed over.
//
// An array owns its objects, also those taken out, and releases them when it goes.
#pragma once

#include <cstdint>

#include "topology/object.h"

class ObjectArray : public HostHeap
{
public:
    std::int32_t capacity = 0; // grows by 3, when it isn't above count + 1
    std::int32_t count = 0;    // places in use
    TopoObject** items = nullptr;
    std::int32_t room = 0; // places that `items` really has, never fewer than `capacity`

    ObjectArray() = default;
    ObjectArray(const ObjectArray&) = delete;
    ObjectArray& operator=(const ObjectArray&) = delete;

    // The operations of every array, in this order.
    // The next id above that is in use; 0 when there is none, a null entry comes first, or `at` is below 1 or
    // not below `count`. A walk starts with get(1).
    virtual std::int32_t next(std::int32_t at) const;
    // The next id below, in the same way: 0 also for the last id, from which a walk down can't start.
    virtual std::int32_t previous(std::int32_t at) const;
    // Null when out of range or taken out.
    virtual TopoObject* get(std::int32_t at) const;
    // The new count, which is the object's id here (its `id` is left to the caller); 0, with the object still
    // the caller's, when the heap is exhausted. A null object takes a place too.
    virtual std::int32_t add(TopoObject* object);
    virtual void remove(std::int32_t at);
    // The place of the first object in use whose `id` is `object_id`, or 0.
    virtual std::int32_t find(std::int32_t object_id) const;

    virtual ~ObjectArray();
};
