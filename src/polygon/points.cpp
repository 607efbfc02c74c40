#include "polygon/points.h"

#include <cmath>
#include <numbers>

#include "polygon/tolerances.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double LEAST_NORMAL_PART = 1e-7; // keeps a normal's side definite

// Direction of a ray in radians, -pi to pi; upright rays by the sign of dy alone.
double ray_direction(const double* from, const double* to)
{
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    if (std::fabs(dx) < PG_LENGTH_TOL)
        return dy < 0.0 ? -PI / 2.0 : PI / 2.0;
    return std::atan2(dy, dx);
}

} // namespace

double pg_dist_sq(const double* a, const double* b)
{
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    return dx * dx + dy * dy;
}

double pg_dist_sq(const pg_node& a, const pg_node& b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    return dx * dx + dy * dy;
}

double pg_dist(const double* a, const double* b)
{
    return std::sqrt(pg_dist_sq(a, b));
}

bool pg_same_place(const pg_node& a, const pg_node& b)
{
    return std::fabs(a.x - b.x) <= PG_LENGTH_TOL && std::fabs(a.y - b.y) <= PG_LENGTH_TOL;
}

double pg_angle(const double* from, const double* to)
{
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    const double d = pg_dist(from, to);
    if (d == 0.0)
        return d;
    // The arc cosine of dx / d, without its loss of half the digits near the x axis.
    const double unsigned_angle = std::atan2(std::fabs(dy), dx);
    return dy < 0.0 ? 2.0 * PI - unsigned_angle : unsigned_angle;
}

double pg_tri_area(double x0, double y0, double x1, double y1, double x2, double y2)
{
    return ((x1 - x0) * (y2 - y0) - (y1 - y0) * (x2 - x0)) / 2.0;
}

void pg_frame_point(const double* a, const double* b, double along, double off, double* out)
{
    const double d = pg_dist(a, b);
    const double ux = (b[0] - a[0]) / d, uy = (b[1] - a[1]) / d;
    const double x = a[0] + ux * along - uy * off;
    const double y = a[1] + uy * along + ux * off;
    out[0] = x;
    out[1] = y;
    out[2] = 0.0;
}

void pg_right_normal(const double* vector, double* out)
{
    const double dx = vector[0];
    double dy = vector[1];
    if (dy == 0.0)
        dy = dx <= 0.0 ? LEAST_NORMAL_PART : -LEAST_NORMAL_PART;
    double length = std::sqrt(dx * dx + dy * dy);
    if (length == 0.0)
        length = LEAST_NORMAL_PART;
    out[0] = dy / length;
    out[1] = -dx / length;
    out[2] = 0.0;
}

double pg_turn_angle(const double* p0, const double* p1, const double* p2)
{
    double first = ray_direction(p1, p0);
    const double second = ray_direction(p1, p2);
    if (first < second)
        first += 2.0 * PI;
    double turn_deg = 360.0 - (first - second) * (180.0 / PI);
    if (turn_deg < 0.0)
        turn_deg += 360.0;
    if (turn_deg >= 360.0)
        turn_deg -= 360.0;
    return turn_deg;
}
