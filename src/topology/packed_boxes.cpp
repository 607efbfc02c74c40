// Differences to the origin, bounds and rounding keep the order of numbers: boxes that meet still do. All
// bounds are finite, but for boxes that meet nothing.
#include "topology/packed_boxes.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace
{

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr float MOST = std::numeric_limits<float>::max();

struct small_box {
    float x0, y0, x1, y1;
};
constexpr small_box EMPTY{INF, INF, -INF, -INF};

double bounded(double v)
{
    return std::clamp(v, static_cast<double>(-MOST), static_cast<double>(MOST));
}

float rounded_down(double v)
{
    const double exact = bounded(v);
    const float near = static_cast<float>(exact);
    return near > exact ? std::nextafter(near, -MOST) : near;
}

float rounded_up(double v)
{
    return -rounded_down(-v);
}

small_box rounded(const packed_boxes& boxes, const pg_box& b)
{
    const double x = boxes.origin[0], y = boxes.origin[1];
    return {rounded_down(b.x0 - x), rounded_down(b.y0 - y), rounded_up(b.x1 - x), rounded_up(b.y1 - y)};
}

void put(packed_group* group, std::int32_t k, const small_box& b)
{
    group->x0[k] = b.x0;
    group->y0[k] = b.y0;
    group->x1[k] = b.x1;
    group->y1[k] = b.y1;
}

small_box box_around(const packed_group& g)
{
    small_box all = EMPTY;
    for (std::int32_t k = 0; k < PACKED_GROUP; ++k)
        all = {std::min(all.x0, g.x0[k]), std::min(all.y0, g.y0[k]), std::max(all.x1, g.x1[k]),
               std::max(all.y1, g.y1[k])};
    return all;
}

// Without branches: which boxes meet can't be foretold.
unsigned which_meet(const packed_group& g, const small_box& b)
{
    constexpr std::int32_t BIT[PACKED_GROUP] = {1, 2, 4, 8, 16, 32, 64, 128};
    std::int32_t bits = 0;
    for (std::int32_t k = 0; k < PACKED_GROUP; ++k) {
        const bool in_x = (g.x0[k] <= b.x1) & (b.x0 <= g.x1[k]), in_y = (g.y0[k] <= b.y1) & (b.y0 <= g.y1[k]);
        bits |= in_x & in_y ? BIT[k] : 0;
    }
    return static_cast<unsigned>(bits);
}

} // namespace

packed_boxes packed_boxes_new(std::int32_t count, double origin_x, double origin_y)
{
    packed_boxes boxes{
        {std::isfinite(origin_x) ? origin_x : 0, std::isfinite(origin_y) ? origin_y : 0}, 0, {}, nullptr};
    std::int32_t groups = 0, at_level = count;
    do {
        at_level = at_level / PACKED_GROUP + (at_level % PACKED_GROUP != 0 || at_level == 0);
        boxes.first[boxes.levels++] = groups;
        groups += at_level;
    } while (at_level > 1);
    const auto size = static_cast<std::size_t>(groups);
    boxes.groups = static_cast<packed_group*>(acad_malloc(size * sizeof(packed_group)));
    for (std::int32_t g = 0; boxes.groups && g < groups; ++g)
        for (std::int32_t k = 0; k < PACKED_GROUP; ++k)
            put(&boxes.groups[g], k, EMPTY);
    return boxes;
}

void packed_boxes_free(packed_boxes* boxes)
{
    acad_free(boxes->groups);
    *boxes = {};
}

void packed_boxes_set(packed_boxes* boxes, std::int32_t i, const pg_box& box)
{
    put(&boxes->groups[i / PACKED_GROUP], i % PACKED_GROUP, rounded(*boxes, box));
}

void packed_boxes_close(packed_boxes* boxes)
{
    for (std::int32_t level = 1; level < boxes->levels; ++level) {
        const packed_group* below = boxes->groups + boxes->first[level - 1];
        packed_group* here = boxes->groups + boxes->first[level];
        for (std::int32_t i = 0; below + i < here; ++i)
            put(&here[i / PACKED_GROUP], i % PACKED_GROUP, box_around(below[i]));
    }
}

void packed_boxes_remove(packed_boxes* boxes, std::int32_t i)
{
    small_box box = EMPTY;
    for (std::int32_t level = 0; level < boxes->levels; ++level, i /= PACKED_GROUP) {
        packed_group* group = boxes->groups + boxes->first[level] + i / PACKED_GROUP;
        put(group, i % PACKED_GROUP, box);
        box = box_around(*group);
    }
}

bool packed_boxes_find(const packed_boxes& boxes, const pg_box& box, HeapArray<std::int32_t>* found)
{
    const small_box wanted = rounded(boxes, box);
    struct place {
        std::int32_t level, group;
    };
    place open[PACKED_LEVELS * PACKED_GROUP];
    int open_count = 0;
    open[open_count++] = {boxes.levels - 1, 0};
    while (open_count > 0) {
        const place at = open[--open_count];
        const std::int32_t first = at.group * PACKED_GROUP;
        unsigned bits = which_meet(boxes.groups[boxes.first[at.level] + at.group], wanted);
        for (; bits != 0; bits &= bits - 1) {
            const std::int32_t i = first + std::countr_zero(bits);
            if (at.level > 0)
                open[open_count++] = {at.level - 1, i};
            else if (!found->add(i))
                return false;
        }
    }
    return true;
}
