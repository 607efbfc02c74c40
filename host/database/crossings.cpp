// The boxes of the curve's pieces stand in a tree over their order, which is good enough, since pieces that
// follow each other lie near each other: an edge's piece is held only against those whose box it meets.
#include "host/database/crossings.h"

#include <algorithm>

#include "host/database/piece_meetings.h"

namespace host::db
{

namespace
{

constexpr std::size_t LEAF = 4; // pieces under the lowest boxes

box widened(box of, double by)
{
    for (int i = 0; i < 2; ++i) {
        of.low[i] -= by;
        of.high[i] += by;
    }
    return of;
}

bool boxes_meet(const box& a, const box& b)
{
    return a.low[0] <= b.high[0] && a.high[0] >= b.low[0] && a.low[1] <= b.high[1] && a.high[1] >= b.low[1];
}

box whole_bounds(const curve_piece& piece)
{
    return piece.bounds(piece.low, piece.high);
}

// Stretches of the curve that the edge shares, by their distances along the curve, joined where they meet.
using stretches = std::vector<std::pair<double, double>>;

stretches joined(stretches all, double tolerance)
{
    std::sort(all.begin(), all.end());
    stretches out;
    for (const auto& [from, to] : all)
        if (!out.empty() && from <= out.back().second + tolerance)
            out.back().second = std::max(out.back().second, to);
        else
            out.emplace_back(from, to);
    return out;
}

bool is_inside(const stretches& shared, double along, double tolerance)
{
    if (shared.empty())
        return false;
    const auto behind = std::upper_bound(shared.begin(), shared.end(), along,
                                         [](double value, const auto& each) { return value < each.first; });
    return behind != shared.begin() && along > std::prev(behind)->first + tolerance &&
           along < std::prev(behind)->second - tolerance;
}

bool is_at_end(const curve_piece& piece, double part, double tolerance)
{
    const double slack = tolerance / piece.size;
    return part <= piece.low + slack || part >= piece.high - slack;
}

} // namespace

crossing_finder::crossing_finder(const plan_curve& curve) : curve_(curve), tolerance_(place_tolerance(curve))
{
    std::size_t size = 1;
    for (std::size_t held = LEAF; held < curve.pieces.size(); held *= 2)
        size = 2 * size + 1;
    boxes_.assign(size, box::empty());
    build(0, 0, curve.pieces.size());
}

void crossing_finder::build(std::size_t at, std::size_t from, std::size_t to)
{
    if (2 * at + 2 < boxes_.size()) {
        const std::size_t middle = from + (to - from) / 2;
        build(2 * at + 1, from, middle);
        build(2 * at + 2, middle, to);
        for (const std::size_t child : {2 * at + 1, 2 * at + 2}) {
            boxes_[at].add(boxes_[child].low[0], boxes_[child].low[1], 0);
            boxes_[at].add(boxes_[child].high[0], boxes_[child].high[1], 0);
        }
        return;
    }
    for (std::size_t i = from; i < to; ++i) {
        const box one = whole_bounds(curve_.pieces[i]);
        boxes_[at].add(one.low[0], one.low[1], 0);
        boxes_[at].add(one.high[0], one.high[1], 0);
    }
}

template <class Visit>
void crossing_finder::visit(std::size_t at, std::size_t from, std::size_t to, const box& window,
                            const Visit& take) const
{
    if (!boxes_meet(boxes_[at], window))
        return;
    if (2 * at + 2 < boxes_.size()) {
        const std::size_t middle = from + (to - from) / 2;
        visit(2 * at + 1, from, middle, window, take);
        visit(2 * at + 2, middle, to, window, take);
        return;
    }
    for (std::size_t i = from; i < to; ++i)
        if (boxes_meet(whole_bounds(curve_.pieces[i]), window))
            take(i);
}

// Whether two pieces of the curve meet only where the one goes on as the other. Next to a joint that is meant
// to be smooth they may seem to cross once more, so a little is allowed on both sides.
bool crossing_finder::is_own_joint(std::size_t i, std::size_t j, double on_i, double on_j) const
{
    constexpr double BESIDE = 1e-6;
    const curve_piece &a = curve_.pieces[i], &b = curve_.pieces[j];
    const double reach = std::max(tolerance_, BESIDE * std::min(a.size, b.size));
    const auto joins = [&](const curve_piece& from, double on_from, const curve_piece& to, double on_to) {
        return (from.high - on_from) * from.size <= reach && (on_to - to.low) * to.size <= reach;
    };
    const std::size_t count = curve_.pieces.size();
    const auto follows = [&](std::size_t next, std::size_t before) {
        return next == before + 1 || (curve_.is_closed && next == 0 && before + 1 == count);
    };
    return (follows(j, i) && joins(a, on_i, b, on_j)) || (follows(i, j) && joins(b, on_j, a, on_i));
}

std::vector<crossing> crossing_finder::with(const plan_curve& edge) const
{
    const bool is_self = edge.id == curve_.id;
    std::vector<crossing> found;
    stretches shared;
    piece_meetings meetings;
    for (std::size_t j = 0; j < edge.pieces.size(); ++j) {
        const curve_piece& other = edge.pieces[j];
        visit(0, 0, curve_.pieces.size(), widened(whole_bounds(other), tolerance_), [&](std::size_t i) {
            if (is_self && i == j)
                return;
            const curve_piece& own = curve_.pieces[i];
            find_meetings(own, other, tolerance_, meetings);
            for (const piece_meetings::stretch& each : meetings.shared)
                shared.emplace_back(own.before + each.from * own.size, own.before + each.to * own.size);
            for (const piece_meetings::place& each : meetings.places)
                if (!is_self || !is_own_joint(i, j, each.a, each.b))
                    found.push_back({{i, each.a}, {j, each.b}, own.before + each.a * own.size});
        });
    }
    shared = joined(std::move(shared), tolerance_);
    const double first = curve_.first(), last = curve_.last();
    const bool over_seam = curve_.is_closed && !shared.empty() && shared.front().first <= first + tolerance_ &&
                           shared.back().second >= last - tolerance_;
    if (over_seam) {
        shared.front().first = first - 1e3 * tolerance_;
        shared.back().second = last + 1e3 * tolerance_;
    }
    std::erase_if(found, [&](const crossing& each) {
        return is_inside(shared, each.along, tolerance_) &&
               (is_at_end(curve_.pieces[each.on.piece], each.on.part, tolerance_) ||
                is_at_end(edge.pieces[each.edge.piece], each.edge.part, tolerance_));
    });
    std::sort(found.begin(), found.end(),
              [](const crossing& a, const crossing& b) { return a.along < b.along; });
    return found;
}

part_between part_around(const plan_curve& curve, const std::vector<crossing>& crossings, const curve_place& at,
                         double tolerance)
{
    const double first = curve.first(), last = curve.last();
    // Where two edges touch the curve in one place, they are found less alike than where they cross it.
    const double apart = 10 * tolerance;
    std::vector<crossing> bounds;
    for (const crossing& each : crossings) {
        const bool at_end = each.along <= first + tolerance || each.along >= last - tolerance;
        if ((curve.is_closed || !at_end) && (bounds.empty() || each.along > bounds.back().along + apart))
            bounds.push_back(each);
    }
    if (curve.is_closed && bounds.size() > 1 &&
        bounds.back().along + apart >= bounds.front().along + last - first)
        bounds.pop_back();
    part_between out;
    if (bounds.empty() || (curve.is_closed && bounds.size() < 2)) {
        out.count = static_cast<int>(bounds.size());
        return out;
    }
    double along = curve.along(at);
    if (curve.is_closed && along + tolerance >= bounds.front().along + last - first)
        along = bounds.front().along;
    const auto next = std::upper_bound(bounds.begin(), bounds.end(), along + tolerance,
                                       [](double value, const crossing& each) { return value < each.along; });
    out.is_start = !curve.is_closed && next == bounds.begin();
    out.is_end = !curve.is_closed && next == bounds.end();
    out.count = 2 - (out.is_start ? 1 : 0) - (out.is_end ? 1 : 0);
    out.from = out.is_start             ? curve_place{0, curve.pieces.front().low}
               : next == bounds.begin() ? bounds.back().on
                                        : std::prev(next)->on;
    out.to = out.is_end             ? curve_place{curve.pieces.size() - 1, curve.pieces.back().high}
             : next == bounds.end() ? bounds.front().on
                                    : next->on;
    return out;
}

} // namespace host::db
