// Boxes stand in blocks. A block is a tree over groups of boxes that lie near each other: they are sorted by
// size, then along a curve that winds through the plane. New boxes wait at the end until there are enough for a
// block; it takes in the blocks before it that are not much larger, so that there are few blocks and each box
// is sorted a few times only.
#include "topology/box_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr std::int32_t GROUP = 8;
constexpr std::int32_t FEW = 32; // that may wait
constexpr int PLACE_BITS = 26;   // of each coordinate in a key
constexpr int SIZE_CLASSES = 16;

struct keyed {
    std::uint64_t key;
    std::int32_t item;
};

// Puts a zero behind each of the low 32 bits.
std::uint64_t spread(std::uint64_t v)
{
    v = (v | v << 16) & 0x0000FFFF0000FFFFu;
    v = (v | v << 8) & 0x00FF00FF00FF00FFu;
    v = (v | v << 4) & 0x0F0F0F0F0F0F0F0Fu;
    v = (v | v << 2) & 0x3333333333333333u;
    return (v | v << 1) & 0x5555555555555555u;
}

std::uint64_t step_of(double at, double low, double extent)
{
    constexpr double most = (1 << PLACE_BITS) - 1;
    const double share = (at - low) / extent * most;
    return share > 0.0 ? static_cast<std::uint64_t>(std::min(share, most)) : 0; // no number counts as 0
}

// Size first: a large box in a group of small ones would make them all look large.
std::uint64_t key_of(const pg_box& b, const pg_box& all, double extent)
{
    const double size = std::max(b.x1 - b.x0, b.y1 - b.y0);
    const int halvings = size > 0.0 && size < extent ? std::ilogb(extent / size)
                         : size > 0.0                ? 0
                                                     : SIZE_CLASSES;
    const auto size_class = static_cast<std::uint64_t>(std::min(halvings, SIZE_CLASSES - 1));
    const std::uint64_t x = step_of(b.x0 / 2 + b.x1 / 2, all.x0, extent);
    const std::uint64_t y = step_of(b.y0 / 2 + b.y1 / 2, all.y0, extent);
    return size_class << (2 * PLACE_BITS) | spread(x) << 1 | spread(y);
}

void widen(pg_box* all, const pg_box& b)
{
    all->x0 = std::min(all->x0, b.x0);
    all->y0 = std::min(all->y0, b.y0);
    all->x1 = std::max(all->x1, b.x1);
    all->y1 = std::max(all->y1, b.y1);
}

} // namespace

pg_box box_between(const double* a, const double* b)
{
    if (!std::isfinite(a[0]) || !std::isfinite(a[1]) || !std::isfinite(b[0]) || !std::isfinite(b[1]))
        return box_of_none();
    return {std::min(a[0], b[0]), std::min(a[1], b[1]), std::max(a[0], b[0]), std::max(a[1], b[1])};
}

pg_box widened_box(const pg_box& box, double by)
{
    return {box.x0 - by, box.y0 - by, box.x1 + by, box.y1 + by};
}

BoxIndex::~BoxIndex()
{
    for (block& b : blocks_) {
        acad_free(b.order);
        pg_boxes_free(&b.tree);
    }
}

bool BoxIndex::add(const pg_box& box)
{
    return boxes_.add(box);
}

// False, with nothing changed, when the heap is exhausted.
bool BoxIndex::make_block(std::int32_t first, std::int32_t count)
{
    const auto size = static_cast<std::size_t>(count);
    auto* keys = static_cast<keyed*>(acad_malloc(size * sizeof(keyed)));
    auto* order = static_cast<placed*>(acad_malloc(size * sizeof(placed)));
    const std::int32_t groups = (count + GROUP - 1) / GROUP;
    pg_box_tree tree = pg_boxes_new(groups);
    if (!keys || !order || !tree.nodes || !blocks_.add({first, count, order, tree})) {
        acad_free(keys);
        acad_free(order);
        pg_boxes_free(&tree);
        return false;
    }
    pg_box all = box_of_none();
    for (std::int32_t i = first; i < first + count; ++i)
        if (boxes_.items[i].x0 > box_of_all().x0)
            widen(&all, boxes_.items[i]);
    const double extent = std::max({all.x1 - all.x0, all.y1 - all.y0, std::numeric_limits<double>::min()});
    for (std::int32_t i = 0; i < count; ++i)
        keys[i] = {key_of(boxes_.items[first + i], all, extent), first + i};
    std::sort(keys, keys + count,
              [](const keyed& a, const keyed& b) { return a.key != b.key ? a.key < b.key : a.item < b.item; });
    for (std::int32_t g = 0; g < groups; ++g) {
        pg_box box = box_of_none();
        for (std::int32_t i = g * GROUP; i < std::min(count, (g + 1) * GROUP); ++i) {
            order[i] = {boxes_.items[keys[i].item], keys[i].item};
            widen(&box, order[i].box);
        }
        pg_boxes_set(&tree, g, box);
    }
    acad_free(keys);
    return true;
}

void BoxIndex::settle()
{
    if (boxes_.count - settled_ <= FEW)
        return;
    std::int32_t kept = blocks_.count, first = settled_;
    while (kept > 0 && blocks_.items[kept - 1].count <= 2 * (boxes_.count - first))
        first = blocks_.items[--kept].first;
    if (!make_block(first, boxes_.count - first))
        return;
    for (std::int32_t i = kept; i < blocks_.count - 1; ++i) {
        acad_free(blocks_.items[i].order);
        pg_boxes_free(&blocks_.items[i].tree);
    }
    blocks_.items[kept] = blocks_.items[blocks_.count - 1];
    blocks_.count = kept + 1;
    settled_ = boxes_.count;
}

bool BoxIndex::look_into(const block& b, const pg_box& box, std::int32_t from)
{
    for (int g = pg_boxes_next(b.tree, box, 0); g >= 0; g = pg_boxes_next(b.tree, box, g + 1))
        for (std::int32_t i = g * GROUP; i < std::min(b.count, (g + 1) * GROUP); ++i) {
            const placed& p = b.order[i];
            if (p.item >= from && pg_boxes_meet(p.box, box) && !found_.add(p.item))
                return false;
        }
    return true;
}

bool BoxIndex::look(const pg_box& box, std::int32_t from)
{
    settle();
    found_.count = 0;
    for (const block& b : blocks_)
        if (b.first + b.count > from && !look_into(b, box, from))
            return false;
    for (std::int32_t i = std::max(settled_, from); i < boxes_.count; ++i)
        if (pg_boxes_meet(boxes_.items[i], box) && !found_.add(i))
            return false;
    std::sort(found_.items, found_.items + found_.count);
    return true;
}
