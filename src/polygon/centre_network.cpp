#include "polygon/centre_network.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "polygon/centre_lines.h"
#include "polygon/centre_outline.h"
#include "polygon/intersect.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

// ---- places

constexpr double CELL = 4.0 * PG_LENGTH_TOL;

std::uint64_t mixed(double cell_x, double cell_y)
{
    const std::uint64_t h = std::bit_cast<std::uint64_t>(cell_x + 0.0) * 0x9e3779b97f4a7c15u ^
                            std::bit_cast<std::uint64_t>(cell_y + 0.0) * 0xc2b2ae3d27d4eb4fu;
    return (h ^ h >> 29) * 0xbf58476d1ce4e5b9u >> 20;
}

std::size_t slot(const cl_places& p, double cell_x, double cell_y)
{
    return mixed(cell_x, cell_y) & (p.first.size() - 1);
}

bool is_near(const cl_point& a, const cl_point& b)
{
    return std::fabs(a[0] - b[0]) <= PG_LENGTH_TOL && std::fabs(a[1] - b[1]) <= PG_LENGTH_TOL;
}

// ---- boxes

cl_box box_of(const cl_path& path, double margin)
{
    cl_box box = cl_box_of(path.front(), path.front(), margin);
    for (const cl_point& p : path)
        cl_extend(box, cl_box_of(p, p, margin));
    return box;
}

// The chords of a stretch that may meet a box.
template <typename Seen>
bool any_chord_near(const cl_probe& probe, std::size_t stretch, const cl_box& box, Seen seen)
{
    const std::size_t first = stretch * cl_probe::STRETCH;
    const std::size_t end = std::min(first + cl_probe::STRETCH, probe.path.size() - 1);
    for (std::size_t i = first; i < end; ++i) {
        const cl_point &from = probe.path[i], &to = probe.path[i + 1];
        if (!cl_apart(cl_box_of(from, to, 0.0), box) && !cl_passes(from, to, box) && seen(i))
            return true;
    }
    return false;
}

bool path_misses(const cl_probe& probe, const cl_box& box)
{
    if (cl_apart(probe.box, box))
        return true;
    for (std::size_t s = 0; s < probe.stretches.size(); ++s)
        if (!cl_apart(probe.stretches[s], box) &&
            any_chord_near(probe, s, box, [](std::size_t) { return true; }))
            return false;
    return true;
}

// ---- ids

std::size_t leaf_of(const cl_id_tree& tree, std::int32_t id)
{
    return tree.leaves + static_cast<std::size_t>(id);
}

void init_tree(cl_id_tree& tree, std::int32_t last_id)
{
    tree.leaves = std::bit_ceil(static_cast<std::size_t>(last_id) + 1);
    tree.boxes.assign(2 * tree.leaves, CL_NO_BOX);
    tree.branches.resize(static_cast<std::size_t>(last_id) + 1);
}

void add_to(cl_id_tree& tree, std::int32_t id, std::int32_t branch, const cl_box& box)
{
    tree.branches[static_cast<std::size_t>(id)].push_back(branch);
    for (std::size_t i = leaf_of(tree, id); i > 0; i /= 2)
        cl_extend(tree.boxes[i], box);
}

// The boxes over an id again, from its branches that are not retired.
void renew(const cl_network& net, cl_id_tree& tree, std::int32_t id)
{
    auto& there = tree.branches[static_cast<std::size_t>(id)];
    std::erase_if(
        there, [&](std::int32_t b) { return net.branches[static_cast<std::size_t>(b)].state == CL_RETIRED; });
    cl_box box = CL_NO_BOX;
    for (std::int32_t b : there)
        cl_extend(box, net.boxes[static_cast<std::size_t>(b)]);
    std::size_t i = leaf_of(tree, id);
    tree.boxes[i] = box;
    for (i /= 2; i > 0; i /= 2) {
        tree.boxes[i] = tree.boxes[2 * i];
        cl_extend(tree.boxes[i], tree.boxes[2 * i + 1]);
    }
}

void renew(cl_network* net, std::int32_t number)
{
    const cl_branch& b = net->branches[static_cast<std::size_t>(number)];
    renew(*net, net->by_left, b.left_id);
    renew(*net, net->by_right, b.right_id);
}

// ---- the search

bool is_edge(const cl_branch& b)
{
    return b.left_id == b.right_id;
}

struct searching {
    const cl_network& net;
    const cl_id_tree& tree;
    const cl_probe& probe;
    std::int32_t low, high; // the ids that are looked at
    bool downward;
    std::int32_t with_edge; // the item whose edge counts, 0 none
    cl_hit best;

    // The part of the tree below a node, which holds the leaves from `first` on; whether there was a hit.
    bool look(std::size_t node, std::int32_t first, std::int32_t width)
    {
        if (first > high || first + width - 1 < low || path_misses(probe, tree.boxes[node]))
            return false;
        if (width == 1) {
            for (std::int32_t b : tree.branches[static_cast<std::size_t>(first)])
                if (first == with_edge || !is_edge(net.branches[static_cast<std::size_t>(b)]))
                    cl_cross_branch(net, probe, b, &best);
            return best.length < PG_NO_VALUE;
        }
        const std::int32_t half = width / 2;
        const std::size_t lower = 2 * node, upper = lower + 1;
        if (downward)
            return look(upper, first + half, half) || look(lower, first, half);
        return look(lower, first, half) || look(upper, first + half, half);
    }
};

cl_hit search(searching s)
{
    s.look(1, 0, static_cast<std::int32_t>(s.tree.leaves));
    return s.best;
}

} // namespace

void cl_places_init(cl_places* p, std::size_t expected)
{
    p->first.assign(std::bit_ceil(2 * expected + 1), -1);
}

void cl_places_add(cl_places* p, const cl_point& place)
{
    const std::size_t s = slot(*p, std::floor(place[0] / CELL), std::floor(place[1] / CELL));
    const auto number = static_cast<std::int32_t>(p->places.size());
    p->places.push_back(place);
    p->next.push_back(p->first[s]);
    p->first[s] = number;
}

void cl_places_near(const cl_places& p, const cl_point& place, std::vector<std::int32_t>* found)
{
    found->clear();
    const double low_x = std::floor((place[0] - CELL / 2.0) / CELL),
                 low_y = std::floor((place[1] - CELL / 2.0) / CELL);
    const double high_x = std::floor((place[0] + CELL / 2.0) / CELL);
    const double high_y = std::floor((place[1] + CELL / 2.0) / CELL);
    std::size_t seen[4];
    int count = 0;
    for (double cell_x : {low_x, high_x})
        for (double cell_y : {low_y, high_y}) {
            const std::size_t s = slot(p, cell_x, cell_y);
            if (std::find(seen, seen + count, s) != seen + count)
                continue;
            seen[count++] = s;
            for (std::int32_t i = p.first[s]; i >= 0; i = p.next[static_cast<std::size_t>(i)])
                if (is_near(p.places[static_cast<std::size_t>(i)], place))
                    found->push_back(i);
        }
    std::sort(found->begin(), found->end());
}

void cl_network_init(cl_network* net, const cl_outline& outline)
{
    const auto last_id = static_cast<std::int32_t>(outline.items.size());
    init_tree(net->by_left, last_id);
    init_tree(net->by_right, last_id);
    cl_walls_init(&net->walls, outline);
    cl_places_init(&net->starts, 4 * static_cast<std::size_t>(last_id));
    double size = outline.reach;
    for (const cl_item& item : outline.items)
        size = std::max({size, std::fabs(item.from[0]), std::fabs(item.from[1])});
    // A short segment is met up to 5e-4 beyond its ends; the rest is for rounding.
    net->margin = 1e-3 + 1e-9 * size;
    std::vector<cl_branch> rays;
    cl_starting_rays(outline, &rays);
    for (cl_branch& ray : rays)
        cl_add_branch(net, std::move(ray), true);
}

std::int32_t cl_add_branch(cl_network* net, cl_branch branch, bool searchable)
{
    const auto number = static_cast<std::int32_t>(net->branches.size());
    net->boxes.push_back(box_of(branch.chain, net->margin));
    cl_places_add(&net->starts, branch.chain.front());
    if (searchable) {
        add_to(net->by_left, branch.left_id, number, net->boxes.back());
        add_to(net->by_right, branch.right_id, number, net->boxes.back());
    }
    net->branches.push_back(std::move(branch));
    return number;
}

namespace
{

bool share_an_item(const cl_branch& a, const cl_branch& b)
{
    return a.left_id == b.left_id || a.left_id == b.right_id || a.right_id == b.left_id ||
           a.right_id == b.right_id;
}

// The end of a branch and the items that it parted there.
struct branch_end {
    cl_point place;
    std::int32_t branch; // -1: of none
};

void retire_onward(cl_network* net, const cl_run& run, const branch_end& from)
{
    std::vector<branch_end> ends{from};
    std::vector<std::int32_t> here;
    while (!ends.empty()) {
        const branch_end end = ends.back();
        ends.pop_back();
        cl_places_near(net->starts, end.place, &here);
        for (std::int32_t number : here) {
            cl_branch& b = net->branches[static_cast<std::size_t>(number)];
            if (b.state == CL_RETIRED || b.left_id < run.first_id || b.left_id > run.last_id)
                continue;
            const bool goes_on =
                end.branch < 0 || share_an_item(b, net->branches[static_cast<std::size_t>(end.branch)]);
            if (!goes_on)
                continue;
            b.state = CL_RETIRED;
            renew(net, number);
            ends.push_back({b.chain.back(), number});
        }
    }
}

} // namespace

void cl_retire_from(cl_network* net, const cl_run& run, const cl_point& point)
{
    retire_onward(net, run, {point, -1});
}

void cl_cut_branch(cl_network* net, const cl_run& run, std::int32_t number, const cl_point& point)
{
    cl_branch& b = net->branches[static_cast<std::size_t>(number)];
    b.state = CL_NETWORK;
    const cl_point old_end = b.chain.back();
    // The first segment that holds the point; a point of the curve itself may lie off all of its chords.
    std::size_t at = 0;
    double least = PG_NO_VALUE;
    for (std::size_t i = 0; i + 1 < b.chain.size() && least > PG_LENGTH_TOL; ++i) {
        const double* from = b.chain[i].data();
        const double* to = b.chain[i + 1].data();
        const double off =
            std::fabs(pg_dist(from, point.data()) + pg_dist(point.data(), to) - pg_dist(from, to));
        if (off < least) {
            least = off;
            at = i;
        }
    }
    b.chain.resize(at + 2);
    b.chain[at + 1] = point;
    net->boxes[static_cast<std::size_t>(number)] = box_of(b.chain, net->margin);
    renew(net, number);
    retire_onward(net, run, {old_end, number});
}

namespace
{

std::vector<cl_box> stretches_of(const cl_path& path)
{
    std::vector<cl_box> stretches;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        if (i % cl_probe::STRETCH == 0)
            stretches.push_back(CL_NO_BOX);
        cl_extend(stretches.back(), cl_box_of(path[i], path[i + 1], 0.0));
    }
    return stretches;
}

} // namespace

cl_probe cl_make_probe(const cl_branch& lead)
{
    const cl_path& path = lead.chain;
    cl_probe probe{lead, path, {0.0}, stretches_of(path), box_of(path, 0.0)};
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        probe.lengths.push_back(probe.lengths.back() + pg_dist(path[i].data(), path[i + 1].data()));
    return probe;
}

// pg_seg_intersect takes a chord that ends on a level one a last digit above or below it for apart. With x and
// y exchanged it doesn't, and then it is upright chords that are missed.
bool cl_chords_meet(const cl_point& a1, const cl_point& a2, const cl_point& b1, const cl_point& b2,
                    cl_point* at)
{
    cl_point second{};
    if (pg_seg_intersect(a1.data(), a2.data(), b1.data(), b2.data(), at->data(), second.data()) > 0)
        return true;
    const auto turned = [](const cl_point& p) { return cl_point{p[1], p[0], p[2]}; };
    const cl_point c1 = turned(a1), c2 = turned(a2), d1 = turned(b1), d2 = turned(b2);
    const bool meet =
        pg_seg_intersect(c1.data(), c2.data(), d1.data(), d2.data(), at->data(), second.data()) > 0;
    *at = turned(*at);
    return meet;
}

void cl_cross_branch(const cl_network& net, const cl_probe& probe, std::int32_t other, cl_hit* best)
{
    const cl_path& chain = net.branches[static_cast<std::size_t>(other)].chain;
    const cl_box& chain_box = net.boxes[static_cast<std::size_t>(other)];
    if (cl_apart(probe.box, chain_box))
        return;
    const std::vector<cl_box> stretches = stretches_of(chain);
    const auto meets = [&](std::size_t i) {
        const cl_point &from = probe.path[i], &to = probe.path[i + 1];
        const cl_box box = cl_box_of(from, to, net.margin);
        for (std::size_t j = 0; j + 1 < chain.size(); ++j) {
            if (j % cl_probe::STRETCH == 0 && cl_apart(box, stretches[j / cl_probe::STRETCH])) {
                j += cl_probe::STRETCH - 1;
                continue;
            }
            if (cl_apart(box, cl_box_of(chain[j], chain[j + 1], 0.0)))
                continue;
            cl_point at{};
            if (!cl_chords_meet(from, to, chain[j], chain[j + 1], &at))
                continue;
            const double length = probe.lengths[i] + pg_dist(from.data(), at.data());
            if (length >= best->length)
                return true;
            if (cl_is_hidden(net.walls, probe.lead, at))
                *best = {length, -1, at, at};
            else if (cl_is_hidden(net.walls, net.branches[static_cast<std::size_t>(other)], at))
                continue;
            else
                *best = {length, other, at, {at[0] + to[0] - from[0], at[1] + to[1] - from[1], 0.0}};
            return true;
        }
        return false;
    };
    for (std::size_t s = 0; s < probe.stretches.size(); ++s)
        if (!cl_apart(probe.stretches[s], chain_box) && any_chord_near(probe, s, chain_box, meets))
            return;
}

cl_hit cl_search_left(const cl_network& net, const cl_run& run, std::int32_t id, bool with_edge,
                      const cl_probe& probe)
{
    return search(
        {net, net.by_right, probe, run.first_id, id, true, with_edge ? id : 0, {PG_NO_VALUE, -1, {}, {}}});
}

cl_hit cl_search_right(const cl_network& net, const cl_run& run, std::int32_t id, bool with_edge,
                       const cl_probe& probe)
{
    return search(
        {net, net.by_left, probe, id, run.last_id, false, with_edge ? id : 0, {PG_NO_VALUE, -1, {}, {}}});
}
