// heap.cpp: the module's heap. Each block has a head with its size and a mark, so that what is
// given back is known to be ours and the counts are true.
#include "host/core/heap.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "hostapi/ads.h"

namespace host
{

namespace
{

struct alignas(16) block_head {
    std::uint64_t mark;
    std::uint64_t size;
};
constexpr std::uint64_t live_mark = 0x6B636F6C62646573u;
constexpr std::uint64_t dead_mark = 0x6B636F6C42414544u;

std::size_t live_block_count = 0;
std::size_t live_byte_count = 0;
std::size_t live_view_count = 0;
long until_refused = 0; // requests, that one included; 0: none is refused

block_head* head_of(void* block)
{
    return static_cast<block_head*>(block) - 1;
}

// A block that isn't ours, or that was given back before, would ruin the heap silently.
void demand_live(const block_head* head, const char* where)
{
    if (head->mark != live_mark)
        acrx_abort("%s: not a live block of the host's heap", where);
}

} // namespace

std::size_t heap_live_blocks()
{
    return live_block_count;
}
std::size_t heap_live_bytes()
{
    return live_byte_count;
}
void* heap_take(std::size_t size)
{
    if (size > SIZE_MAX - sizeof(block_head))
        return nullptr;
    auto* head = static_cast<block_head*>(std::malloc(sizeof(block_head) + size));
    if (!head)
        return nullptr;
    *head = {live_mark, size};
    ++live_block_count;
    live_byte_count += size;
    return head + 1;
}
long heap_refuse(long nth)
{
    return std::exchange(until_refused, nth);
}
bool heap_refuses()
{
    return until_refused > 0 && --until_refused == 0;
}
std::size_t live_views()
{
    return live_view_count;
}
void count_view(int change)
{
    live_view_count += static_cast<std::size_t>(change);
}

} // namespace host

void* acad_malloc(std::size_t size)
{
    return host::heap_refuses() ? nullptr : host::heap_take(size);
}

void* acad_realloc(void* block, std::size_t size)
{
    using namespace host;
    if (!block)
        return acad_malloc(size);
    demand_live(head_of(block), "acad_realloc");
    if (size > SIZE_MAX - sizeof(block_head) || heap_refuses())
        return nullptr;
    const std::size_t old = head_of(block)->size;
    auto* head = static_cast<block_head*>(std::realloc(head_of(block), sizeof(block_head) + size));
    if (!head)
        return nullptr;
    head->size = size;
    live_byte_count += size - old;
    return head + 1;
}

void acad_free(void* block)
{
    using namespace host;
    if (!block)
        return;
    block_head* head = head_of(block);
    demand_live(head, "acad_free");
    head->mark = dead_mark;
    --live_block_count;
    live_byte_count -= head->size;
    std::free(head);
}
