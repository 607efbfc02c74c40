// The corner is two to three times the box away from each point, in x and in y. So the ratio of the two
// distances, each by its side of the box, lies between 2/3 and 3/2 and tells directions equally well
// everywhere.
#include "tin/corner_order.h"

#include <utility>

#include "hostapi/ads.h"

namespace
{

constexpr double LOWEST = 0.6, STEPS = 4294967296.0; // of a ratio of 1
constexpr int DIGITS = 11;                           // bits that are sorted by at a time

double ratio(const corner_order& order, double x, double y)
{
    return std::fabs(y - order.y) / order.h / (std::fabs(x - order.x) / order.w);
}

std::uint64_t step(double ratio)
{
    return static_cast<std::uint64_t>(std::clamp((ratio - LOWEST) * STEPS, 0.0, STEPS - 1));
}

void sort_by_digit(const std::uint64_t* from, std::uint64_t* to, std::uint32_t count, int shift)
{
    constexpr std::uint64_t mask = (1u << DIGITS) - 1;
    std::uint32_t first[(1u << DIGITS) + 1] = {};
    for (std::uint32_t i = 0; i < count; ++i)
        ++first[((from[i] >> shift) & mask) + 1];
    for (std::uint32_t d = 0; d < mask; ++d)
        first[d + 1] += first[d];
    for (std::uint32_t i = 0; i < count; ++i)
        to[first[(from[i] >> shift) & mask]++] = from[i];
}

} // namespace

void corner_order_begin(corner_order* order, const tin_point* corner, double w, double h)
{
    *order = {nullptr, corner->x, corner->y, w, h, 0, false};
}

bool corner_order_make(corner_order* order, const point_tree& tree)
{
    const std::size_t size = sizeof(std::uint64_t) * tree.count;
    auto* entries = static_cast<std::uint64_t*>(acad_malloc(size));
    auto* other = static_cast<std::uint64_t*>(acad_malloc(size));
    if (!entries || !other) {
        acad_free(entries);
        acad_free(other);
        order->given_up = true;
        return false;
    }
    for (std::uint32_t i = 0; i < tree.count; ++i)
        entries[i] = step(ratio(*order, tree.spots[i].x, tree.spots[i].y)) << 32 | i;
    for (int shift = 32; shift < 64; shift += DIGITS) {
        sort_by_digit(entries, other, tree.count, shift);
        std::swap(entries, other);
    }
    acad_free(other);
    order->entries = entries;
    return true;
}

order_piece corner_order_near(const corner_order& order, const point_tree& tree, const tin_place& through,
                              double reach)
{
    const double middle = ratio(order, through.x, through.y);
    const double spread = 2 * reach * (0.5 / order.h + 0.75 / order.w) + 1e-13;
    const std::uint64_t low = step(middle - spread) << 32, high = (step(middle + spread) + 1) << 32;
    const std::uint64_t *begin = order.entries, *end = begin + tree.count;
    const std::uint64_t* first = std::lower_bound(begin, end, low);
    const std::uint64_t* last = first;
    while (last != end && *last < high)
        ++last;
    return {first, last};
}
