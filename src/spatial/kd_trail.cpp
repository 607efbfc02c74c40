#include "spatial/kd_trail.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "hostapi/ads.h"

namespace
{

constexpr std::int32_t FIRST_ROOM = 64;

bool make_room(kd_trail* trail)
{
    if (trail->count < trail->room)
        return true;
    if (trail->room > std::numeric_limits<std::int32_t>::max() / 2)
        return false;
    const std::int32_t room = std::max(FIRST_ROOM, 2 * trail->room);
    auto* stones = static_cast<kd_stone*>(acad_malloc(static_cast<std::size_t>(room) * sizeof(kd_stone)));
    if (!stones)
        return false;
    if (trail->count > 0)
        std::memcpy(stones, trail->stones, static_cast<std::size_t>(trail->count) * sizeof(kd_stone));
    acad_free(trail->stones);
    trail->stones = stones;
    trail->room = room;
    return true;
}

kd_stone top_stone(kd_node* top)
{
    kd_stone stone{top, {}, {}};
    std::fill_n(stone.above, KD_MOST_DIMENSIONS, std::numeric_limits<double>::quiet_NaN());
    std::fill_n(stone.upto, KD_MOST_DIMENSIONS, std::numeric_limits<double>::infinity());
    return stone;
}

// One step down towards a position.
kd_stone stone_below(kd_stone stone, const double* position)
{
    const kd_node* node = stone.node;
    const int d = node->split_dimension;
    if (node->split_value < position[d]) {
        stone.node = node->high;
        if (!(node->split_value <= stone.above[d]))
            stone.above[d] = node->split_value;
    } else {
        stone.node = node->low;
        stone.upto[d] = std::min(stone.upto[d], node->split_value);
    }
    return stone;
}

// The same comparisons as on the way down, so that positions that are no numbers come to the same node.
bool holds(const kd_stone& stone, const double* position)
{
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d) {
        const double above = stone.above[d];
        if (!(above < position[d] || above != above) || stone.upto[d] < position[d])
            return false;
    }
    return true;
}

bool holds_cube(const kd_stone& stone, const double* position, double radius)
{
    for (int d = 0; d < KD_MOST_DIMENSIONS; ++d) {
        const double above = stone.above[d];
        if (!(above < position[d] - radius || above != above) || !(stone.upto[d] > position[d] + radius))
            return false;
    }
    return true;
}

// The last stone for which `test` is true; it is for the first ones up to that.
template <class Test>
kd_node* last_that(const kd_trail* trail, Test test)
{
    const kd_stone* end = std::partition_point(trail->stones + 1, trail->stones + trail->count, test);
    return (end - 1)->node;
}

} // namespace

void kd_trail_lay(kd_node* top, const double* position)
{
    kd_trail* trail = static_cast<kd_trail*>(acad_malloc(sizeof(kd_trail)));
    if (!trail)
        return;
    *trail = {nullptr, 0, 0};
    if (!make_room(trail)) {
        acad_free(trail);
        return;
    }
    trail->stones[trail->count++] = top_stone(top);
    top->trail = trail;
    kd_trail_extend(trail, position);
}

void kd_trail_extend(kd_trail* trail, const double* position)
{
    kd_stone stone = trail->stones[trail->count - 1];
    while (!stone.node->is_leaf) {
        stone = stone_below(stone, position);
        if (!make_room(trail))
            return;
        trail->stones[trail->count++] = stone;
    }
}

void kd_trail_free(kd_trail* trail)
{
    if (trail)
        acad_free(trail->stones);
    acad_free(trail);
}

kd_node* kd_trail_last(const kd_trail* trail)
{
    return trail->stones[trail->count - 1].node;
}

kd_node* kd_trail_follow(const kd_trail* trail, const double* position)
{
    return last_that(trail, [&](const kd_stone& stone) { return holds(stone, position); });
}

kd_node* kd_trail_around(const kd_trail* trail, const double* position, double radius)
{
    return last_that(trail, [&](const kd_stone& stone) { return holds_cube(stone, position, radius); });
}
