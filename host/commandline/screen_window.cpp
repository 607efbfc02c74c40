#include "host/commandline/screen_window.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/commandline/views.h"
#include "host/core/document.h"

namespace host::commandline
{

namespace
{

point3 turned(const point3& p, double sine, double cosine)
{
    return {cosine * p.x - sine * p.y, sine * p.x + cosine * p.y, p.z};
}

bool is_quarter_turn(double twist)
{
    constexpr double QUARTER = std::numbers::pi / 2, SLACK = 1e-12;
    return std::fabs(std::remainder(twist, QUARTER)) < SLACK;
}

} // namespace

double screen_turn(document& doc)
{
    const view now = view_of(doc);
    return now.is_plan() ? now.twist : 0.0;
}

bool is_to_the_left(document& doc, const point3& b, const point3& a)
{
    const double twist = screen_turn(doc);
    const double along = std::cos(twist) * (b.x - a.x) - std::sin(twist) * (b.y - a.y);
    // A sine that is no exact zero makes nothing of what stands straight above.
    constexpr double SLACK = 1e-12;
    return along < -SLACK * (std::fabs(b.x - a.x) + std::fabs(b.y - a.y));
}

// `low` and `high` in the drawing, for a window that isn't turned; else on the screen's plane.
void screen_window::set(double twist, const point3& low, const point3& high)
{
    low_[0] = low.x, low_[1] = low.y;
    high_[0] = high.x, high_[1] = high.y;
    if (twist == 0.0) {
        bounds_ = {{low.x, low.y, -HUGE_VAL}, {high.x, high.y, HUGE_VAL}};
        return;
    }
    sine_ = std::sin(twist);
    cosine_ = std::cos(twist);
    // A window from end to end of an object holds it, whatever the last digit of a sine is.
    constexpr double SLACK = 1e-12;
    for (int i = 0; i < 2; ++i) {
        const double slack = SLACK * (1 + std::fabs(low_[i]) + std::fabs(high_[i]));
        low_[i] -= slack;
        high_[i] += slack;
    }
    for (const auto& [x, y] : {std::pair{low_[0], low_[1]}, std::pair{high_[0], low_[1]},
                               std::pair{high_[0], high_[1]}, std::pair{low_[0], high_[1]}}) {
        const point3 corner = turned({x, y, 0.0}, -sine_, cosine_);
        corners_.emplace_back(corner.x, corner.y);
        bounds_.add(corner.x, corner.y, 0.0);
    }
    bounds_.low[2] = -HUGE_VAL;
    bounds_.high[2] = HUGE_VAL;
}

screen_window::screen_window(document& doc, const point3& a, const point3& b)
{
    double twist = screen_turn(doc);
    if (is_quarter_turn(twist))
        twist = 0.0; // the same rectangle
    const double sine = std::sin(twist), cosine = std::cos(twist);
    const point3 p = turned(a, sine, cosine), q = turned(b, sine, cosine);
    set(twist, {std::min(p.x, q.x), std::min(p.y, q.y), 0.0}, {std::max(p.x, q.x), std::max(p.y, q.y), 0.0});
}

screen_window screen_window::around(document& doc, const point3& middle, double reach)
{
    double twist = screen_turn(doc);
    if (is_quarter_turn(twist))
        twist = 0.0;
    const point3 p = turned(middle, std::sin(twist), std::cos(twist));
    screen_window made;
    made.set(twist, {p.x - reach, p.y - reach, 0.0}, {p.x + reach, p.y + reach, 0.0});
    return made;
}

bool screen_window::has_box_inside(const db::box& box) const
{
    if (box.is_empty())
        return false;
    for (const double x : {box.low[0], box.high[0]})
        for (const double y : {box.low[1], box.high[1]}) {
            const point3 p = turned({x, y, 0.0}, sine_, cosine_);
            if (!(p.x >= low_[0] && p.x <= high_[0] && p.y >= low_[1] && p.y <= high_[1]))
                return false;
        }
    return true;
}

bool screen_window::holds(const db::database& db, db::object_id id) const
{
    return corners_.empty() ? db::inside_window(db, id, bounds_) : db::inside_polygon(db, id, corners_);
}

bool screen_window::crosses(const db::database& db, db::object_id id) const
{
    if (corners_.empty())
        return db::crosses_window(db, id, bounds_);
    return has_box_inside(db::extents_of(db, id)) || db::crosses_polygon(db, id, corners_);
}

} // namespace host::commandline
