// Splines by de Boor's scheme, rational ones in homogeneous coordinates.
#include "host/database/spline.h"

#include <algorithm>

namespace host::db
{

namespace
{

constexpr int PIECES = 16; // a knot span

struct weighted {
    vec p;
    double w;
};

bool is_well_formed(const spline_curve& curve)
{
    const std::size_t count = curve.controls.size();
    return curve.degree >= 1 && curve.degree <= 25 && count > static_cast<std::size_t>(curve.degree) &&
           curve.knots.size() == count + static_cast<std::size_t>(curve.degree) + 1 &&
           (curve.weights.empty() || curve.weights.size() == count) &&
           std::is_sorted(curve.knots.begin(), curve.knots.end());
}

// The point at `t` within the span that begins at knot `span`.
vec point_at(const spline_curve& curve, std::size_t span, double t)
{
    const std::size_t degree = static_cast<std::size_t>(curve.degree);
    std::vector<weighted> d;
    for (std::size_t i = span - degree; i <= span; ++i) {
        const double w = curve.weights.empty() ? 1.0 : curve.weights[i];
        d.push_back({curve.controls[i] * w, w});
    }
    for (std::size_t level = 1; level <= degree; ++level)
        for (std::size_t j = degree; j >= level; --j) {
            const double low = curve.knots[j + span - degree], high = curve.knots[j + 1 + span - level];
            const double part = high > low ? (t - low) / (high - low) : 0.0;
            d[j] = {d[j - 1].p * (1 - part) + d[j].p * part, d[j - 1].w * (1 - part) + d[j].w * part};
        }
    return d[degree].w != 0 ? d[degree].p * (1 / d[degree].w) : d[degree].p;
}

} // namespace

std::vector<vec> spline_points(const spline_curve& curve)
{
    std::vector<vec> points;
    if (!is_well_formed(curve))
        return points;
    const std::size_t degree = static_cast<std::size_t>(curve.degree);
    for (std::size_t span = degree; span < curve.controls.size(); ++span) {
        const double from = curve.knots[span], to = curve.knots[span + 1];
        if (!(to > from))
            continue;
        for (int i = points.empty() ? 0 : 1; i <= PIECES; ++i)
            points.push_back(point_at(curve, span, from + (to - from) * i / PIECES));
    }
    return points;
}

} // namespace host::db
