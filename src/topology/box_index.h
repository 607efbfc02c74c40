// box_index.h: which of many boxes in the plane meet a given one. Boxes are added one by one and numbered from
// 0; the answers come by rising number, so that who goes through them meets them in the order of a plain scan.
// Boxes that nobody will ask for again can be dropped, so that looks don't come upon them.
#pragma once

#include <cstdint>
#include <limits>

#include "polygon/segment_boxes.h"
#include "topology/heap_array.h"
#include "topology/host_heap.h"
#include "topology/packed_boxes.h"

constexpr pg_box box_of_all()
{
    constexpr double most = std::numeric_limits<double>::max();
    return {-most, -most, most, most};
}

constexpr pg_box box_of_none()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {infinity, infinity, -infinity, -infinity};
}

// Of two points; one that meets nothing if a coordinate isn't finite.
pg_box box_between(const double* a, const double* b);
pg_box widened_box(const pg_box& box, double by);

class BoxIndex : public HostHeap
{
public:
    BoxIndex() = default;
    BoxIndex(const BoxIndex&) = delete;
    BoxIndex& operator=(const BoxIndex&) = delete;
    ~BoxIndex();

    std::int32_t count() const { return boxes_.count; }
    const pg_box& box(std::int32_t i) const { return boxes_.items[i]; }
    // False, with nothing changed, when the heap is exhausted.
    bool add(const pg_box& box);
    // The box meets nothing from now on; its number stays taken. What was found stays too.
    void drop(std::int32_t i);
    // Looks for the numbers from `from` on whose boxes meet `box`, borders included; `found` has them until it
    // is asked again. False when the heap is exhausted.
    bool look(const pg_box& box, std::int32_t from);
    const HeapArray<std::int32_t>& found() const { return found_; }

private:
    struct keyed {
        std::uint64_t key;
        std::int32_t item;
    };
    // Boxes with numbers from `first` up to `end` in the order of their places. Those dropped before the block
    // was made are left out.
    struct block {
        std::int32_t first, end;
        std::int32_t count, kept; // at first, and not dropped since
        std::int32_t* order;      // the number of each
        packed_boxes tree;
    };
    HeapArray<pg_box> boxes_;
    HeapArray<std::int32_t> spots_; // of the boxes in blocks, their place in its order
    HeapArray<block> blocks_;
    HeapArray<std::int32_t> found_;
    std::int32_t settled_ = 0; // boxes in blocks; the few behind them are looked at one by one

    void settle();
    bool make_block(std::int32_t replaced, std::int32_t most);
    std::int32_t gather(std::int32_t replaced, keyed* keys) const;
    pg_box sort(keyed* keys, std::int32_t count) const;
    static void release_block(const block& b);
    bool look_into(const block& b, const pg_box& box, std::int32_t from);
};
