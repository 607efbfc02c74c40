#include "grid/fill_items.h"

#include <utility>

#include "hostapi/ads.h"

namespace
{
constexpr int BLOCK_ITEMS = 500;
}

struct fill_items::block {
    block* next;
    grid_fill_item items[BLOCK_ITEMS];
};

fill_items::~fill_items()
{
    while (blocks_)
        acad_free(std::exchange(blocks_, blocks_->next));
}

bool fill_items::more_room()
{
    block* const room = static_cast<block*>(acad_malloc(sizeof(block)));
    if (!room)
        return false;
    room->next = blocks_;
    blocks_ = room;
    for (int k = BLOCK_ITEMS; k-- > 0;)
        release(&room->items[k]);
    return true;
}

bool fill_items::add(double z, char mark, std::int32_t index, bool borders_on_null)
{
    if (!unused_ && !more_room())
        return false;
    grid_fill_item* const item = unused_;
    unused_ = item->next;
    *item = {z, mark, borders_on_null, index, head_};
    head_ = item;
    return true;
}

grid_fill_item* fill_items::take()
{
    return std::exchange(head_, nullptr);
}

void fill_items::release(grid_fill_item* item)
{
    item->next = unused_;
    unused_ = item;
}
