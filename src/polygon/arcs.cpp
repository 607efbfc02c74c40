#include "polygon/arcs.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double TURN = 2.0 * std::numbers::pi;
// Squared distance of a chord from its arc's centre, over the squared radius, below which the arc
// counts as near a half circle: there that distance as a root of a difference has no digits left.
constexpr double NEAR_HALF_CIRCLE = 1e-6;
constexpr double ROUNDING = 1e-15; // of a distance, relative to the coordinates

// A bulge so small that arc and chord have one length, to the last digit.
constexpr double FLAT = 1e-9;

double into_turn(double angle)
{
    if (angle < 0.0)
        angle += TURN;
    else if (angle > TURN)
        angle -= TURN;
    return angle;
}

// The smaller of the two ways round between two directions.
double gap_between(double a, double b)
{
    const double gap = std::fabs(a - b);
    return std::min(gap, TURN - gap);
}

} // namespace

void pg_arc_from_bulge(const double* a, const double* b, double bulge, double* centre, double* start,
                       double* end, double* radius, int* dir)
{
    const double c = pg_dist(a, b);
    double sagitta = bulge * c / 2.0;
    *dir = -1;
    if (sagitta < 0.0) {
        *dir = 1;
        sagitta = -sagitta;
    }
    *radius = (sagitta * sagitta + c * c / 4.0) / (2.0 * sagitta);
    pg_frame_point(a, b, c / 2.0, (sagitta - *radius) * *dir, centre);
    *start = pg_angle(centre, *dir == -1 ? a : b);
    *end = pg_angle(centre, *dir == -1 ? b : a);
}

// With h half the chord, r the radius and m the distance from the centre to the chord, the sagitta is
// r - m for an arc up to a half circle and r + m beyond, and the bulge is sagitta / h. The centre lies left
// of the chord in the first case. r - m is written as h * h / (r + m), which keeps its digits for flat
// arcs and goes over steadily into the second case at the half circle.
//
// b may lie a little off the circle that a gives, as where a chain is cut beside its arc: m is that of the
// circle then, and a chord longer than its diameter has a half circle.
double pg_arc_bulge(const double* a, const double* b, const double* centre)
{
    const double h = pg_dist(a, b) / 2.0;
    const double r = pg_dist(a, centre);
    const double area = pg_tri_area(a[0], a[1], b[0], b[1], centre[0], centre[1]);
    const double m_sq = r * r - h * h;
    const bool is_on_circle =
        std::fabs(pg_dist(b, centre) - r) <= ROUNDING * (r + std::fabs(centre[0]) + std::fabs(centre[1]));
    if (!is_on_circle && m_sq <= 0.0)
        return -1.0;
    const double m = !is_on_circle || m_sq > NEAR_HALF_CIRCLE * r * r ? std::sqrt(m_sq) : std::fabs(area / h);
    return area > 0.0 ? -h / (r + m) : -(r + m) / h;
}

double pg_arc_piece_bulge(const double* a, const double* b, const double* centre)
{
    return pg_dist(a, b) < PG_LENGTH_TOL ? 0.0 : pg_arc_bulge(a, b, centre);
}

double pg_arc_sweep(double bulge)
{
    return 4.0 * std::atan(std::fabs(bulge));
}

double pg_arc_length(const double* a, const double* b, double bulge)
{
    const double flatness = std::fabs(bulge), chord = pg_dist(a, b);
    // Radius times sweep, (t + 1 / t) / 4 times the chord and 4 atan t.
    return flatness < FLAT || chord == 0.0 ? chord : chord * (flatness + 1.0 / flatness) * std::atan(flatness);
}

// The chord to the place is the arc's chord, turned by half the angle that is left, times the ratio of the
// sines of half the angles; the sine of half the arc's is 2 t / (1 + t^2).
void pg_arc_place(const double* a, const double* b, double bulge, double share, double* out)
{
    const double sweep = pg_arc_sweep(bulge), flatness = std::fabs(bulge);
    const double ratio =
        flatness < FLAT ? share : std::sin(share * sweep / 2.0) * (flatness + 1.0 / flatness) / 2.0;
    const double turn = std::copysign((share - 1.0) * sweep / 2.0, (share - 1.0) * bulge);
    const double along = ratio * std::cos(turn), left = ratio * std::sin(turn);
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    const double x = a[0] + along * dx - left * dy, y = a[1] + along * dy + left * dx;
    out[0] = x;
    out[1] = y;
}

bool pg_arc_contains(const double* centre, const double* point, double start, double end, double radius)
{
    const double direction = pg_angle(centre, point);
    start = into_turn(start);
    end = into_turn(end);
    const bool exact = radius == PG_NO_VALUE;
    const double slack = exact ? 0.0 : -PG_LENGTH_TOL / radius;
    const bool behind_start = direction - start > slack;
    const bool before_end = end - direction > slack;
    if (start <= end ? behind_start && before_end : behind_start || before_end)
        return true;
    // A direction a rounding error off an end at angle 0 may come out on the other side of it.
    return !exact && (gap_between(direction, start) < -slack || gap_between(direction, end) < -slack);
}
