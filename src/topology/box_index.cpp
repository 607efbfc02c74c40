// Boxes stand in blocks. A block is a tree over groups of boxes that lie near each other: they are sorted by
// size, then along a curve that winds through the plane. New boxes wait at the end until there are enough for a
// block; it takes in the blocks before it that have not many more left, so that there are few blocks and each
// box is sorted a few times only.
#include "topology/box_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr std::int32_t FEW = 32; // that may wait
constexpr int PLACE_BITS = 26;   // of each coordinate in a key
constexpr double LARGE = 8.0;    // times the mean size
constexpr int MOST_CLASS = 11;   // of sizes
constexpr double MOST_SHARE = LARGE * (1 << (MOST_CLASS - 1));

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

double size_of(const pg_box& b)
{
    return std::max(b.x1 - b.x0, b.y1 - b.y0);
}

// What many boxes have in common.
struct common_measures {
    pg_box all;
    double extent, mean_size;
};

// Size first: a large box in a group of small ones would make them all look large. All others are one class:
// each class is one more tree to look through.
std::uint64_t key_of(const pg_box& b, const common_measures& of)
{
    const double share = size_of(b) / of.mean_size;
    const int size_class = !(share >= LARGE)    ? 0
                           : share < MOST_SHARE ? 1 + std::ilogb(share / LARGE)
                                                : MOST_CLASS;
    const std::uint64_t x = step_of(b.x0 / 2 + b.x1 / 2, of.all.x0, of.extent);
    const std::uint64_t y = step_of(b.y0 / 2 + b.y1 / 2, of.all.y0, of.extent);
    return static_cast<std::uint64_t>(size_class) << (2 * PLACE_BITS) | spread(x) << 1 | spread(y);
}

void widen(pg_box* all, const pg_box& b)
{
    all->x0 = std::min(all->x0, b.x0);
    all->y0 = std::min(all->y0, b.y0);
    all->x1 = std::max(all->x1, b.x1);
    all->y1 = std::max(all->y1, b.y1);
}

bool meets_nothing(const pg_box& b)
{
    return b.x0 > b.x1;
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
    for (const block& b : blocks_)
        release_block(b);
}

void BoxIndex::release_block(const block& b)
{
    acad_free(b.order);
    packed_boxes tree = b.tree;
    packed_boxes_free(&tree);
}

bool BoxIndex::add(const pg_box& box)
{
    return boxes_.add(box);
}

void BoxIndex::drop(std::int32_t i)
{
    if (meets_nothing(boxes_.items[i]))
        return;
    boxes_.items[i] = box_of_none();
    if (i >= settled_)
        return;
    block* b = blocks_.begin();
    while (b->end <= i)
        ++b;
    packed_boxes_remove(&b->tree, spots_.items[i]);
    --b->kept;
}

// The numbers that wait and those left in the blocks from `replaced` on, and how many they are.
std::int32_t BoxIndex::gather(std::int32_t replaced, keyed* keys) const
{
    std::int32_t count = 0;
    for (const block* b = blocks_.begin() + replaced; b != blocks_.end(); ++b)
        for (std::int32_t i = 0; i < b->count; ++i)
            if (!meets_nothing(boxes_.items[b->order[i]]))
                keys[count++].item = b->order[i];
    for (std::int32_t i = settled_; i < boxes_.count; ++i)
        if (!meets_nothing(boxes_.items[i]))
            keys[count++].item = i;
    return count;
}

// Puts them in the order of their places. The box that holds all that have bounds.
pg_box BoxIndex::sort(keyed* keys, std::int32_t count) const
{
    common_measures common{box_of_none(), 0.0, 0.0};
    for (std::int32_t i = 0; i < count; ++i)
        if (const pg_box& b = boxes_.items[keys[i].item]; b.x0 > box_of_all().x0) {
            widen(&common.all, b);
            common.mean_size += size_of(b) / count;
        }
    const pg_box& all = common.all;
    common.extent = std::max({all.x1 - all.x0, all.y1 - all.y0, std::numeric_limits<double>::min()});
    common.mean_size = std::max(common.mean_size, std::numeric_limits<double>::min());
    for (std::int32_t i = 0; i < count; ++i)
        keys[i].key = key_of(boxes_.items[keys[i].item], common);
    std::sort(keys, keys + count,
              [](const keyed& a, const keyed& b) { return a.key != b.key ? a.key < b.key : a.item < b.item; });
    return all;
}

// A block of the boxes that wait and of the blocks from `replaced` on, which have at most `most` boxes. It
// stands behind those that it replaces. False, with nothing changed, when the heap is exhausted.
bool BoxIndex::make_block(std::int32_t replaced, std::int32_t most)
{
    auto* keys = static_cast<keyed*>(acad_malloc(static_cast<std::size_t>(most) * sizeof(keyed)));
    if (!keys)
        return false;
    const std::int32_t count = gather(replaced, keys);
    const pg_box all = sort(keys, count);
    const auto size = static_cast<std::size_t>(std::max(count, 1));
    auto* order = static_cast<std::int32_t*>(acad_malloc(size * sizeof(std::int32_t)));
    const std::int32_t first = replaced < blocks_.count ? blocks_.items[replaced].first : settled_;
    block made{first, boxes_.count, count, count, order, packed_boxes_new(count, all.x0, all.y0)};
    if (!order || !made.tree.groups || !spots_.fill_up(boxes_.count, 0) || !blocks_.add(made)) {
        acad_free(keys);
        release_block(made);
        return false;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        order[i] = keys[i].item;
        spots_.items[order[i]] = i;
        packed_boxes_set(&made.tree, i, boxes_.items[order[i]]);
    }
    packed_boxes_close(&made.tree);
    acad_free(keys);
    return true;
}

void BoxIndex::settle()
{
    if (boxes_.count - settled_ <= FEW)
        return;
    std::int32_t replaced = blocks_.count, most = boxes_.count - settled_;
    while (replaced > 0 && blocks_.items[replaced - 1].kept <= 2 * most)
        most += blocks_.items[--replaced].kept;
    if (!make_block(replaced, most))
        return;
    for (std::int32_t i = replaced; i < blocks_.count - 1; ++i)
        release_block(blocks_.items[i]);
    blocks_.items[replaced] = blocks_.items[blocks_.count - 1];
    blocks_.count = replaced + 1;
    settled_ = boxes_.count;
}

bool BoxIndex::look_into(const block& b, const pg_box& box, std::int32_t from)
{
    std::int32_t kept = found_.count;
    if (!packed_boxes_find(b.tree, box, &found_))
        return false;
    for (std::int32_t i = kept; i < found_.count; ++i) {
        const std::int32_t item = b.order[found_.items[i]];
        if (item >= from && pg_boxes_meet(boxes_.items[item], box))
            found_.items[kept++] = item;
    }
    found_.count = kept;
    return true;
}

bool BoxIndex::look(const pg_box& box, std::int32_t from)
{
    settle();
    found_.count = 0;
    for (const block& b : blocks_)
        if (b.end > from && !look_into(b, box, from))
            return false;
    for (std::int32_t i = std::max(settled_, from); i < boxes_.count; ++i)
        if (pg_boxes_meet(boxes_.items[i], box) && !found_.add(i))
            return false;
    std::sort(found_.items, found_.items + found_.count);
    return true;
}
