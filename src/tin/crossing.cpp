#include "tin/crossing.h"

#include <algorithm>

#include "hostapi/ads.h"

namespace
{

constexpr double STEEP = 9999.9;         // beyond this slope the formula is not trusted
constexpr double NEARLY_PARALLEL = 1e-5; // difference of slopes
constexpr double X_SLACK = 1e-9;
constexpr double VERTICAL_SLACK = 1e-8;

bool within_x(double x, const tin_point* a, const tin_point* b, double slack)
{
    return x >= std::min(a->x, b->x) - slack && x <= std::max(a->x, b->x) + slack;
}

// The host's answer; elevations stay out of it.
int host_says_crossing(const tin_point* a, const tin_point* b, const tin_point* c, const tin_point* d)
{
    const ads_point a1 = {a->x, a->y, 0}, a2 = {b->x, b->y, 0}, b1 = {c->x, c->y, 0}, b2 = {d->x, d->y, 0};
    ads_point out;
    return acdbInters(a1, a2, b1, b2, 1, out) == RTNORM;
}

} // namespace

int tin_vertical_cross(const tin_point* a, const tin_point* b, const tin_point* c, const tin_point* d,
                       double* result)
{
    const bool first_vertical = a->x == b->x, second_vertical = c->x == d->x;
    if (first_vertical == second_vertical)
        return RTNONE;
    if (!first_vertical) {
        std::swap(a, c);
        std::swap(b, d);
    }
    const double x = a->x;
    if (!within_x(x, c, d, VERTICAL_SLACK))
        return RTNONE;
    const double y = d->y + (d->y - c->y) / (d->x - c->x) * (x - d->x);
    result[0] = x;
    result[1] = y;
    const bool outside = y < std::min(a->y, b->y) - VERTICAL_SLACK || y > std::max(a->y, b->y) + VERTICAL_SLACK;
    return outside ? RTNONE : RTNORM;
}

int tin_segments_cross(const tin_network*, const tin_point* a, const tin_point* b, const tin_point* c,
                       const tin_point* d)
{
    if (a->x == b->x || c->x == d->x) {
        double at[2];
        return tin_vertical_cross(a, b, c, d, at) == RTNORM;
    }
    const double m1 = (b->y - a->y) / (b->x - a->x), k1 = b->y - m1 * b->x;
    const double m2 = (c->y - d->y) / (c->x - d->x), k2 = c->y - m2 * c->x;
    double dm = m1 - m2;
    if (m1 > STEEP || m1 < -STEEP || m2 > STEEP || m2 < -STEEP)
        dm = 0;
    if (dm > -NEARLY_PARALLEL && dm < NEARLY_PARALLEL)
        return host_says_crossing(a, b, c, d);
    const double x = (k2 - k1) / dm;
    return within_x(x, a, b, X_SLACK) && within_x(x, c, d, X_SLACK);
}
