#include "topology/min_heap.h"

#include <utility>

namespace
{

bool is_before(const MinHeap& heap, std::int32_t a, std::int32_t b)
{
    return heap.items[a - 1]->id < heap.items[b - 1]->id;
}

void move_up(MinHeap* heap, std::int32_t at)
{
    for (; at > 1 && is_before(*heap, at, at / 2); at /= 2)
        std::swap(heap->items[at - 1], heap->items[at / 2 - 1]);
}

void move_down(MinHeap* heap, std::int32_t at)
{
    for (std::int32_t child = 2 * at; child <= heap->count; child = 2 * at) {
        if (child < heap->count && is_before(*heap, child + 1, child))
            ++child;
        if (!is_before(*heap, child, at))
            return;
        std::swap(heap->items[at - 1], heap->items[child - 1]);
        at = child;
    }
}

} // namespace

std::int32_t MinHeap::add(TopoObject* object)
{
    if (!object || !ObjectArray::add(object))
        return 0;
    move_up(this, count);
    return count;
}

void MinHeap::remove(std::int32_t at)
{
    if (at < 1 || at > count)
        return;
    items[at - 1] = items[count - 1];
    --count;
    if (at > count)
        return;
    move_up(this, at);
    move_down(this, at);
}
