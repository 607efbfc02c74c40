// An arc and an ellipse, where one of them is not round. In a frame in which the ellipse is the unit circle the
// arc is q(t) = centre + u cos t + v sin t, and they meet where f(t) = |q|^2 - 1 is 0. How fast f and its first
// two derivatives can change is known from u, v and the centre, so that an interval is put aside when f cannot
// be 0 in it, or f' or f'' cannot: then one zero of f, or of f', is found by halving. So no pair of near zeros
// is missed between samples, and where f only comes near 0 they touch.
#include "host/database/piece_meetings.h"

#include <algorithm>
#include <numbers>

namespace host::db
{

namespace
{

constexpr double TURN = 2 * std::numbers::pi;

struct squares {
    double cx, cy, ux, uy, vx, vy; // in the ellipse's frame
    double slope_most, bend_most, third_most;

    squares(const curve_piece& a, const curve_piece& b)
    {
        const vec &bu = b.arc.u, &bv = b.arc.v;
        const double turn = bu.x * bv.y - bu.y * bv.x;
        const auto set = [&](const vec& p, double& x, double& y) {
            x = (p.x * bv.y - p.y * bv.x) / turn;
            y = (bu.x * p.y - bu.y * p.x) / turn;
        };
        set(a.arc.centre - b.arc.centre, cx, cy);
        set(a.arc.u, ux, uy);
        set(a.arc.v, vx, vy);
        const double wave = 2 * std::hypot(cx * ux + cy * uy, cx * vx + cy * vy);
        const double twice = std::hypot((ux * ux + uy * uy - vx * vx - vy * vy) / 2, ux * vx + uy * vy);
        slope_most = wave + 2 * twice;
        bend_most = wave + 4 * twice;
        third_most = wave + 8 * twice;
    }
    struct values {
        double f, slope, bend;
    };
    values at(double t) const
    {
        const double c = std::cos(t), s = std::sin(t);
        const double x = cx + ux * c + vx * s, y = cy + uy * c + vy * s;
        const double dx = vx * c - ux * s, dy = vy * c - uy * s, ddx = cx - x, ddy = cy - y;
        const double r = std::hypot(x, y);
        return {(r - 1) * (r + 1), 2 * (x * dx + y * dy), 2 * (dx * dx + dy * dy + x * ddx + y * ddy)};
    }
};

template <class Value>
double zero_by_halving(double low, double high, Value value)
{
    const bool rises = value(low) < 0 || value(high) > 0;
    for (int i = 0; i < 64 && low < high; ++i) {
        const double middle = low + (high - low) / 2;
        if (middle == low || middle == high)
            break;
        ((value(middle) < 0) == rises ? low : high) = middle;
    }
    return low + (high - low) / 2;
}

class search
{
public:
    search(const curve_piece& a, const curve_piece& b, double tolerance)
        : a_(a), b_(b), f_(a, b), tolerance_(tolerance)
    {
        // Within the tolerance of the ellipse |q| differs from 1 by no more than this.
        const double small_axis = std::fabs(b.arc.u.x * b.arc.v.y - b.arc.u.y * b.arc.v.x) /
                                  std::max(std::hypot(b.arc.u.x, b.arc.u.y), std::hypot(b.arc.v.x, b.arc.v.y)) /
                                  2;
        near_ = std::min(1.0, 3 * tolerance / small_axis);
    }
    std::vector<double> all()
    {
        double low = std::min(a_.arc.start, a_.arc.end), high = std::max(a_.arc.start, a_.arc.end);
        if (a_.is_whole) { // from where it is far from the other, so that no meeting lies on the seam
            low = far_angle();
            high = low + TURN;
        }
        constexpr int PARTS = 8;
        for (int i = 0; i < PARTS; ++i)
            look(low + (high - low) * i / PARTS, low + (high - low) * (i + 1) / PARTS);
        std::vector<double> parts;
        for (const double each : joined())
            parts.push_back(a_.part_of_angle(each));
        return parts;
    }

private:
    // Where the arc stays within the tolerance from one place found to the next, both are one touch.
    std::vector<double> joined()
    {
        std::sort(found_.begin(), found_.end());
        std::vector<double> out;
        for (std::size_t i = 0, behind = 0; i < found_.size(); i = behind) {
            for (behind = i + 1; behind < found_.size() && stays_near(found_[behind - 1], found_[behind]);
                 ++behind)
                ;
            out.push_back(behind == i + 1 ? found_[i] : nearest_between(found_[i], found_[behind - 1]));
        }
        return out;
    }
    double far_angle() const
    {
        constexpr int PLACES = 8;
        double best = 0;
        for (int i = 1; i < PLACES; ++i)
            if (std::fabs(f_.at(TURN * i / PLACES).f) > std::fabs(f_.at(best).f))
                best = TURN * i / PLACES;
        return best;
    }
    double nearest_between(double low, double high) const
    {
        const auto slope = [&](double t) { return f_.at(t).slope; };
        if ((slope(low) < 0) != (slope(high) < 0))
            return zero_by_halving(low, high, slope);
        return std::fabs(slope(low)) <= std::fabs(slope(high)) ? low : high;
    }
    bool stays_near(double from, double to) const
    {
        constexpr double ONE_TOUCH = 0.1; // radians
        return to - from < ONE_TOUCH && touches(from) && touches(from + (to - from) / 4) &&
               touches(from + (to - from) / 2) && touches(from + (to - from) * 3 / 4) && touches(to);
    }
    void look(double low, double high)
    {
        const double middle = low + (high - low) / 2, half = (high - low) / 2;
        const squares::values v = f_.at(middle);
        if (std::fabs(v.f) > f_.slope_most * half + near_)
            return;
        if (std::fabs(v.slope) > f_.bend_most * half) {
            one_way(low, high);
            return;
        }
        constexpr double SHORTEST = 1e-7, SHORT = 1e-3;
        if (half < SHORT && touches(low) && stays_near(low, high)) {
            found_.insert(found_.end(), {low, high}); // they bend alike
            return;
        }
        if (std::fabs(v.bend) > f_.third_most * half) {
            const auto slope = [&](double t) { return f_.at(t).slope; };
            if ((slope(low) < 0) == (slope(high) < 0)) {
                one_way(low, high);
                return;
            }
            const double extreme = zero_by_halving(low, high, slope);
            if (touches(extreme)) {
                found_.push_back(extreme);
                return;
            }
            one_way(low, extreme);
            one_way(extreme, high);
        } else if (half > SHORTEST && middle > low && middle < high) {
            look(low, middle);
            look(middle, high);
        } else if (touches(middle)) {
            found_.push_back(middle);
        } else {
            one_way(low, high);
        }
    }
    void one_way(double low, double high)
    {
        const auto f = [&](double t) { return f_.at(t).f; };
        const double at_low = f(low), at_high = f(high);
        if ((at_low <= 0 && at_high >= 0) || (at_low >= 0 && at_high <= 0))
            found_.push_back(zero_by_halving(low, high, f));
    }
    bool touches(double t) const
    {
        const vec p = a_.arc.at(t);
        return b_.distance_from_ellipse(p.x, p.y) <= tolerance_;
    }

    const curve_piece &a_, &b_;
    squares f_;
    double tolerance_;
    double near_ = 0;
    std::vector<double> found_;
};

} // namespace

std::vector<double> parts_on_ellipse(const curve_piece& a, const curve_piece& b, double tolerance)
{
    return search(a, b, tolerance).all();
}

} // namespace host::db
