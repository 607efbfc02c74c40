// object.h: the base of the numbered objects of a network, which refer to each other by number.
#pragma once

#include <cstdint>

#include "topology/host_heap.h"

class TopoObject : public HostHeap
{
public:
    std::int32_t dimensions = 0; // how many values `get` serves
    std::int32_t id = 0;      // 1-based place in its collection; of a holder the number of what it stands for
    std::int16_t deleted = 0; // 1: taken out of its collection, where it keeps its place

    TopoObject() = default;
    explicit TopoObject(std::int32_t n) : dimensions(n) {}
    TopoObject(const TopoObject&) = delete;
    TopoObject& operator=(const TopoObject&) = delete;

    // The five operations of every class, in this order.
    virtual double get(std::int32_t i) const; // a value of the key; NO_VALUE where there is none
    virtual void set(std::int32_t i, double value);
    virtual void link(std::int32_t other);   // notes a reference to another object
    virtual void unlink(std::int32_t other); // takes it away
    virtual TopoObject* clone() const; // a new object with the same key, the caller's; null: heap exhausted

    virtual ~TopoObject() = default;

    // Over the first `n` values; NO_VALUE to a null object.
    double squared_distance(const TopoObject* other, std::int32_t n) const;
    // Whether all values differ by less than 1e-6; false for a null object.
    bool matches(const TopoObject* other) const;
};
