// slots.h: the places of a growing array, for this folder's collections.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"

constexpr std::int32_t SLOT_STEP = 3; // by which an array is seen to grow

// Makes `capacity` greater than `count` + 1. Room is doubled behind the capacity, so that n entries are copied
// n times in all. False, with nothing changed, when the heap is exhausted.
template <class T>
bool make_slots(T** items, std::int32_t count, std::int32_t* capacity, std::int32_t* room)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max() / 2 - SLOT_STEP;
    if (*capacity > count + 1)
        return true;
    if (*capacity > most)
        return false;
    constexpr std::size_t size = sizeof(T); // NOLINT(bugprone-sizeof-expression): entries may be pointers
    const std::int32_t wanted = *capacity + SLOT_STEP;
    if (wanted > *room) {
        const std::int32_t more = std::max(wanted, 2 * *room);
        T* moved = static_cast<T*>(acad_malloc(static_cast<std::size_t>(more) * size));
        if (!moved)
            return false;
        if (count > 0)
            std::memcpy(moved, *items, static_cast<std::size_t>(count) * size);
        acad_free(*items);
        *items = moved;
        *room = more;
    }
    *capacity = wanted;
    return true;
}
