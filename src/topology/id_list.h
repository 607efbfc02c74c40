// id_list.h: a growing list of ids, places from 1. A place whose id is taken away holds 0 and is passed over.
#pragma once

#include <cstdint>

#include "topology/host_heap.h"

class IdList : public HostHeap
{
public:
    std::int32_t capacity = 0; // grows by 3, when it isn't above count + 1
    std::int32_t count = 0;    // places in use
    std::int32_t* items = nullptr;
    std::int32_t room = 0; // places that `items` really has, never fewer than `capacity`

    IdList() = default;
    IdList(const IdList&) = delete;
    IdList& operator=(const IdList&) = delete;

    // The operations of every list, in this order; `next` and `previous` as those of ObjectArray.
    virtual std::int32_t next(std::int32_t at) const;
    virtual std::int32_t previous(std::int32_t at) const;
    // 0 when out of range or taken away.
    virtual std::int32_t get(std::int32_t at) const;
    // The new count; 0 when the heap is exhausted.
    virtual std::int32_t add(std::int32_t value);
    // The last place keeps its id. Who walks a list must therefore pass over ids of objects that are gone.
    virtual void remove(std::int32_t at);
    // The first place that holds the id, or 0.
    virtual std::int32_t find(std::int32_t value) const;
    // Places that hold an id.
    virtual std::int32_t live_count() const;

    virtual ~IdList();
};
