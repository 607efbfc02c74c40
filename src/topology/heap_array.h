// heap_array.h: a growing array of plain values on the host's heap, for this folder.
#pragma once

#include "topology/slots.h"

template <class T>
struct HeapArray {
    T* items = nullptr;
    std::int32_t count = 0;
    std::int32_t capacity = 0; // as make_slots keeps it
    std::int32_t room = 0;

    HeapArray() = default;
    HeapArray(const HeapArray&) = delete;
    HeapArray& operator=(const HeapArray&) = delete;
    ~HeapArray() { acad_free(items); }

    // False, with nothing changed, when the heap is exhausted.
    bool add(const T& value)
    {
        if (!make_slots(&items, count, &capacity, &room))
            return false;
        items[count++] = value;
        return true;
    }
    // Up to `wanted` entries, new ones with the value.
    bool fill_up(std::int32_t wanted, const T& value)
    {
        while (count < wanted)
            if (!add(value))
                return false;
        return true;
    }
    T* begin() { return items; }
    T* end() { return items + count; }
    const T* begin() const { return items; }
    const T* end() const { return items + count; }
};
