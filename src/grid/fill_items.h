// fill_items.h: the cells of a pass that wait for the next one, last in first out.
#pragma once

#include "grid/fill.h"

class fill_items
{
public:
    fill_items() = default;
    ~fill_items();
    fill_items(const fill_items&) = delete;
    fill_items& operator=(const fill_items&) = delete;

    // Puts one at the head. False when no memory can be had for it.
    bool add(double z, char mark, std::int32_t index, bool borders_on_null);
    bool empty() const { return !head_; }
    // The whole list; it starts anew. Each item goes back with release.
    grid_fill_item* take();
    void release(grid_fill_item* item);

private:
    struct block;
    bool more_room();

    grid_fill_item* head_ = nullptr;
    grid_fill_item* unused_ = nullptr;
    block* blocks_ = nullptr;
};
