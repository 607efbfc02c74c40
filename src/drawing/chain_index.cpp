// The nearest segment of a chain by a tree of boxes over runs of neighbouring segments.
//
// A box holds every foot that a point can have on its segments, as foot_on_segment works it out, rounding
// included. So no segment of a box is nearer than the box, and one that is farther than the best segment so far
// can be left out: the answer is that of a walk over all segments, to the last bit. Boxes as near as the best
// are looked into, since of equal distances the later segment wins.
#include "drawing/chain_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "common/tolerances.h"
#include "drawing/segment_arc.h"
#include "drawing/segment_foot.h"

namespace
{

constexpr std::size_t RUN = 8; // segments
constexpr double ENDLESS = std::numeric_limits<double>::infinity();
constexpr double ROUNDING = 1e-12; // far more than the calculations lose, as a part of their numbers
constexpr double QUARTER = std::numbers::pi / 2.0;

} // namespace

struct chain_index::search {
    const double* point;
    double best;
    std::size_t winner = 0; // number of the segment behind which best stands, from 1
    segment_foot foot{};
};

void chain_index::box::add(const box& other)
{
    for (int axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], other.low[axis]);
        high[axis] = std::max(high[axis], other.high[axis]);
    }
}

double chain_index::box::distance(const ads_point point) const
{
    double off[2];
    for (int axis = 0; axis < 2; ++axis)
        off[axis] = std::max({low[axis] - point[axis], point[axis] - high[axis], 0.0});
    return std::hypot(off[0], off[1]);
}

chain_index::box chain_index::box_of(const pl_vertex& a, const pl_vertex& b)
{
    box out{{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
    double slack = LENGTH_TOL;
    if (a.bulge != 0.0 && (a.x != b.x || a.y != b.y)) {
        // The circle as it was worked out, which the ends may lie off.
        const segment_arc arc = arc_of_segment(a, b);
        out = {{ENDLESS, ENDLESS}, {-ENDLESS, -ENDLESS}};
        const auto add = [&](double angle) {
            const double x = arc.centre[0] + arc.radius * std::cos(angle);
            const double y = arc.centre[1] + arc.radius * std::sin(angle);
            out.add({{x, y}, {x, y}});
        };
        add(arc.from);
        add(arc.to);
        for (int quarter = 0; quarter < 8; ++quarter)
            if (const double angle = quarter * QUARTER; angle >= arc.from && angle <= arc.to)
                add(angle);
        slack += ROUNDING * (std::fabs(arc.radius) + std::fabs(arc.centre[0]) + std::fabs(arc.centre[1]));
    }
    for (int axis = 0; axis < 2; ++axis) {
        out.low[axis] -= slack;
        out.high[axis] += slack;
        if (!std::isfinite(out.low[axis]) || !std::isfinite(out.high[axis]))
            return {{-ENDLESS, -ENDLESS}, {ENDLESS, ENDLESS}};
    }
    return out;
}

chain_index::chain_index(const pl_vertex* chain)
{
    for (const pl_vertex* a = chain; a && a->next; a = a->next)
        starts_.push_back(a);
    std::size_t runs = 1;
    while (runs * RUN < starts_.size())
        runs *= 2;
    first_run_ = runs - 1;
    boxes_.assign(first_run_ + runs, {{ENDLESS, ENDLESS}, {-ENDLESS, -ENDLESS}});
    for (std::size_t i = 0; i < starts_.size(); ++i)
        boxes_[first_run_ + i / RUN].add(box_of(*starts_[i], *starts_[i]->next));
    for (std::size_t node = first_run_; node-- > 0;) {
        boxes_[node].add(boxes_[2 * node + 1]);
        boxes_[node].add(boxes_[2 * node + 2]);
    }
}

void chain_index::scan(std::size_t run, search* now) const
{
    const std::size_t end = std::min((run + 1) * RUN, starts_.size());
    for (std::size_t i = run * RUN; i < end; ++i) {
        segment_foot foot;
        if (!foot_on_segment(*starts_[i], *starts_[i]->next, now->point, &foot))
            continue;
        if (foot.distance < now->best || (foot.distance == now->best && i + 1 > now->winner)) {
            now->best = foot.distance;
            now->winner = i + 1;
            now->foot = foot;
        }
    }
}

void chain_index::visit(std::size_t node, search* now) const
{
    if (node >= first_run_) {
        scan(node - first_run_, now);
        return;
    }
    std::size_t near = 2 * node + 1, far = 2 * node + 2;
    double near_distance = boxes_[near].distance(now->point), far_distance = boxes_[far].distance(now->point);
    if (far_distance < near_distance) {
        std::swap(near, far);
        std::swap(near_distance, far_distance);
    }
    const auto can_win = [&](double distance) { return !(distance > now->best * (1.0 + ROUNDING)); };
    if (can_win(near_distance))
        visit(near, now);
    if (can_win(far_distance))
        visit(far, now);
}

int chain_index::normal_at(const ads_point point, double tolerance, double* normal) const
{
    search now{point, tolerance};
    visit(0, &now);
    if (now.winner == 0 || now.best == tolerance)
        return 0;
    const pl_vertex& start = *starts_[now.winner - 1];
    direction_at(start, *start.next, point, now.foot, normal);
    return 1;
}
