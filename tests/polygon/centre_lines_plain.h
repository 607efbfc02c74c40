// centre_lines_plain.h: centre lines merged with lists that are walked from end to end, to judge those that
// find branches by trees and tables. The shape of a single branch is shared, so results are the same to the
// bit.
#pragma once

#include <algorithm>
#include <cmath>
#include <list>

#include "polygon/centre_branch.h"
#include "polygon/centre_lines.h"
#include "polygon/centre_network.h"
#include "polygon/centre_outline.h"
#include "polygon/points.h"

namespace plain
{

struct run {
    std::list<cl_item> items;
    std::list<cl_branch> branches;
};

struct crossing {
    double length = 98765432.1;
    cl_branch* hit = nullptr; // null: none, or the path is hidden from there on
    cl_point at{}, beyond{};
};

inline bool starts_at(const cl_branch& b, const cl_point& p)
{
    return std::fabs(b.chain[0][0] - p[0]) <= 1e-6 && std::fabs(b.chain[0][1] - p[1]) <= 1e-6;
}

// `before` is the branch that ended at the point, null at a corner where runs meet.
inline void retire_from(run& r, const cl_point& point, const cl_branch* before)
{
    for (cl_branch& b : r.branches) {
        if (b.state == CL_RETIRED || !starts_at(b, point))
            continue;
        const bool shares = before && (b.left_id == before->left_id || b.left_id == before->right_id ||
                                       b.right_id == before->left_id || b.right_id == before->right_id);
        if (before && !shares)
            continue;
        b.state = CL_RETIRED;
        const cl_point end = b.chain.back();
        retire_from(r, end, &b);
    }
}

inline void cut(run& r, cl_branch& b, const cl_point& point)
{
    b.state = CL_NETWORK;
    const cl_point old_end = b.chain.back();
    std::size_t at = 0;
    double least = 98765432.1;
    for (std::size_t i = 0; i + 1 < b.chain.size(); ++i) {
        const double off =
            std::fabs(pg_dist(b.chain[i].data(), point.data()) + pg_dist(point.data(), b.chain[i + 1].data()) -
                      pg_dist(b.chain[i].data(), b.chain[i + 1].data()));
        if (off < least) {
            least = off;
            at = i;
        }
        if (off <= 1e-6)
            break;
    }
    b.chain.resize(at + 2);
    b.chain.back() = point;
    retire_from(r, old_end, &b);
}

// Crossings may lie up to 5e-4 past the end of a segment; paths whose boxes are farther apart have none.
struct box {
    double x0 = 1e300, y0 = 1e300, x1 = -1e300, y1 = -1e300;
};

inline box box_of(const cl_path& path)
{
    box b;
    for (const cl_point& p : path)
        b = {std::min(b.x0, p[0] - 0.01), std::min(b.y0, p[1] - 0.01), std::max(b.x1, p[0] + 0.01),
             std::max(b.y1, p[1] + 0.01)};
    return b;
}

inline bool are_apart(const box& a, const box& b)
{
    return a.x0 > b.x1 || b.x0 > a.x1 || a.y0 > b.y1 || b.y0 > a.y1;
}

inline double left_of(const cl_point& a, const cl_point& b, const cl_point& c)
{
    return ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / pg_dist(a.data(), b.data());
}

// Whether any side stands between a place and the nearest place of an item of the branch.
inline bool is_hidden(const cl_outline& outline, const cl_branch& b, const cl_point& place)
{
    if (!outline.is_ring)
        return false;
    const double slack = 1e-9 * outline.reach;
    const auto apart = [&](double p, double q) { return std::min(p, q) < -slack && std::max(p, q) > slack; };
    const auto hidden = [&](std::int32_t id, std::int16_t relation) {
        const cl_item& i = outline.item(id);
        cl_point to = relation == CL_AS_TO ? i.to : i.from;
        if (relation == CL_AS_SIDE) {
            const double dx = i.to[0] - i.from[0], dy = i.to[1] - i.from[1];
            const double along = (place[0] - i.from[0]) * dx + (place[1] - i.from[1]) * dy;
            const double share = std::clamp(along / (dx * dx + dy * dy), 0.0, 1.0);
            to = {i.from[0] + share * dx, i.from[1] + share * dy, 0.0};
        }
        return pg_dist(place.data(), to.data()) > 1e-6 &&
               std::any_of(outline.items.begin(), outline.items.end(), [&](const cl_item& s) {
                   return s.kind == CL_SIDE && apart(left_of(place, to, s.from), left_of(place, to, s.to)) &&
                          apart(left_of(s.from, s.to, place), left_of(s.from, s.to, to));
               });
    };
    return hidden(b.left_id, b.left_relation) ||
           (b.left_id != b.right_id && hidden(b.right_id, b.right_relation));
}

inline void cross(const cl_outline& outline, const cl_branch& lead, cl_branch& other, crossing& best)
{
    const cl_path& path = lead.chain;
    double length = 0.0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        for (std::size_t j = 0; j + 1 < other.chain.size(); ++j) {
            cl_point at{};
            if (!cl_chords_meet(path[i], path[i + 1], other.chain[j], other.chain[j + 1], &at))
                continue;
            const double to_crossing = length + pg_dist(path[i].data(), at.data());
            if (to_crossing >= best.length)
                return;
            if (is_hidden(outline, lead, at)) {
                best = {to_crossing, nullptr, at, at};
                return;
            }
            if (is_hidden(outline, other, at))
                continue;
            best = {to_crossing,
                    &other,
                    at,
                    {at[0] + path[i + 1][0] - path[i][0], at[1] + path[i + 1][1] - path[i][1], 0.0}};
            return;
        }
        length += pg_dist(path[i].data(), path[i + 1].data());
    }
}

inline const cl_item& item(const run& r, std::int32_t id)
{
    return *std::find_if(r.items.begin(), r.items.end(), [&](const cl_item& i) { return i.id == id; });
}

struct end {
    std::int32_t id;
    std::int16_t relation;
    bool past_edge;
};

// All branches of one id after the other, until an id gives a crossing.
inline crossing search(const cl_outline& outline, run& r, const end& from, int step, const cl_branch& lead)
{
    crossing best;
    const box around = box_of(lead.chain);
    const std::int32_t smallest = r.items.front().id, largest = r.items.back().id;
    for (std::int32_t id = from.id; id >= smallest && id <= largest && best.length == 98765432.1; id += step)
        for (cl_branch& b : r.branches) {
            const bool is_edge = b.left_id == b.right_id;
            if (b.state == CL_RETIRED || (step < 0 ? b.right_id : b.left_id) != id || b.left_id > b.right_id)
                continue;
            if (is_edge && (id != from.id || from.relation != CL_AS_SIDE || from.past_edge))
                continue;
            if (!are_apart(around, box_of(b.chain)))
                cross(outline, lead, b, best);
        }
    return best;
}

inline void merge(run& r, const cl_outline& outline, std::int32_t left_id, std::int32_t right_id, double slope,
                  bool is_closing)
{
    cl_point at = item(r, right_id).from;
    retire_from(r, at, nullptr);
    end left{left_id, CL_AS_SIDE, false}, right{right_id, CL_AS_SIDE, false};
    std::int16_t flag = 0;
    for (;;) {
        for (end* e : {&left, &right})
            if (!e->past_edge)
                e->relation = cl_relation(item(r, e->id), at);
        cl_branch lead;
        if (!cl_lead_branch({&item(r, left.id), &item(r, right.id), at, slope, outline.reach, left.relation,
                             right.relation},
                            &lead))
            return;
        lead.flag = lead.flag == 1 ? lead.flag : flag;
        crossing on_left = search(outline, r, left, -1, lead);
        crossing on_right = search(outline, r, right, 1, lead);
        if (on_left.length > outline.reach + 1e-6)
            on_left = {};
        if (on_right.length > outline.reach + 1e-6)
            on_right = {};
        const auto same = [&](const cl_branch& b) {
            return std::minmax(b.left_id, b.right_id) == std::minmax(left.id, right.id);
        };
        for (crossing* c : {&on_left, &on_right})
            if (c->hit && same(*c->hit))
                cl_settle_on_branch(outline, slope, lead, &c->at);
            else if (c->hit)
                c->length += cl_settle_crossing(outline, slope, lead, *c->hit, c->beyond, &c->at);
        const bool goes_left = on_left.length < on_right.length - CL_TIE * outline.reach;
        const crossing hit = goes_left ? on_left : on_right;
        r.branches.push_back(lead);
        cl_branch& made = r.branches.back();
        if (!hit.hit) {
            if (is_closing)
                made.state = CL_RETIRED;
            return;
        }
        flag = hit.hit->flag;
        const bool same_pair = same(*hit.hit);
        at = hit.at;
        cut(r, made, at);
        cut(r, *hit.hit, at);
        if (same_pair)
            return;
        end& moved = goes_left ? left : right;
        if (hit.hit->left_id == hit.hit->right_id)
            moved = {moved.id, hit.hit->chain.front() == item(r, moved.id).from ? CL_AS_FROM : CL_AS_TO, true};
        else
            moved = {goes_left ? hit.hit->left_id : hit.hit->right_id, 0, false};
    }
}

// The branches of the whole outline when all is merged, before they are sorted out.
inline std::list<cl_branch> branches(const pg_node* chain, double slope, int orientation)
{
    const cl_outline outline = cl_take_outline(chain, orientation);
    std::vector<cl_branch> rays;
    cl_starting_rays(outline, &rays);
    std::list<run> runs;
    for (const cl_run& r : outline.runs) {
        runs.emplace_back();
        for (std::int32_t id = r.first_id; id <= r.last_id; ++id)
            runs.back().items.push_back(outline.item(id));
        for (const cl_branch& ray : rays)
            if (ray.left_id >= r.first_id && ray.left_id <= r.last_id)
                runs.back().branches.push_back(ray);
    }
    if (runs.empty())
        return {};
    while (runs.size() > 1)
        for (auto first = runs.begin(); first != runs.end() && std::next(first) != runs.end(); ++first) {
            const auto second = std::next(first);
            const std::int32_t left = first->items.back().id, right = second->items.front().id;
            first->items.splice(first->items.end(), second->items);
            first->branches.splice(first->branches.end(), second->branches);
            runs.erase(second);
            merge(*first, outline, left, right, slope, false);
        }
    run& whole = runs.front();
    if (outline.is_ring)
        merge(whole, outline, whole.items.back().id, whole.items.front().id, slope, true);
    return whole.branches;
}

} // namespace plain
