// Three regimes: diagonals of equal coordinate sums go by slope, corners nearly on one circle by length with a
// look at the next swap, all else by the circle through three of them.
#include "tin/swap_test.h"

#include <algorithm>
#include <cmath>

#include "hostapi/ads.h"
#include "tin/crossing.h"
#include "tin/triangle.h"

namespace
{

constexpr double EQUAL_SUMS = 1e-6;
constexpr double SAME_DIRECTION = 0.99899995; // cosine
// A sum of 24 products of four roundings each, and one of six of differences.
constexpr double ROUNDING_OF_SUM = 1e-13;
constexpr double ROUNDING_OF_TURN = 1e-14;
constexpr double LARGEST_PRODUCT = 1e300; // beyond it a sum of them may be no number

double square_distance(const tin_point* p, const tin_point* q)
{
    const double dx = p->x - q->x, dy = p->y - q->y;
    return dx * dx + dy * dy;
}

// Cosine of the angle between p - q and r - s is above the limit. Not a number, and so no, for a length of 0.
bool same_direction(const tin_point* p, const tin_point* q, const tin_point* r, const tin_point* s)
{
    const double ux = p->x - q->x, uy = p->y - q->y, vx = r->x - s->x, vy = r->y - s->y;
    const double lengths = std::sqrt(ux * ux + uy * uy) * std::sqrt(vx * vx + vy * vy);
    return (ux * vx + uy * vy) / lengths > SAME_DIRECTION;
}

double coordinate_sum(const tin_point* p, const tin_point* q)
{
    return std::fabs(p->x - q->x) + std::fabs(p->y - q->y);
}

// Determinant of the rows (x, y, x^2 + y^2, 1), its 24 products in the order of the rows from which x, y and
// the square are taken. Positive when the last point lies inside the circle through the others,
// counter-clockwise.
double circle_determinant(const tin_point* const (&p)[4], const double (&square)[4])
{
    double total = 0;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            for (int k = 0; k < 4; ++k) {
                if (i == j || i == k || j == k)
                    continue;
                const int l = 6 - i - j - k;
                const int inversions = (i > j) + (i > k) + (i > l) + (j > k) + (j > l) + (k > l);
                const double product = p[i]->x * p[j]->y * square[k];
                total += inversions % 2 ? -product : product;
            }
    return total;
}

// The sign of the determinant where neither rounding nor the limit for cocircular corners can matter, else 0.
// The same sum is taken about the last point, by which it is far more exact; the other one's error is at most
// what its largest products can give.
int certain_side(const tin_point* const (&p)[4], const double (&square)[4], double sum)
{
    double x[3], y[3], q[3], far_x = std::fabs(p[3]->x), far_y = std::fabs(p[3]->y), far_square = square[3];
    for (int i = 0; i < 3; ++i) {
        x[i] = p[i]->x - p[3]->x;
        y[i] = p[i]->y - p[3]->y;
        q[i] = x[i] * x[i] + y[i] * y[i];
        far_x = std::max(far_x, std::fabs(p[i]->x));
        far_y = std::max(far_y, std::fabs(p[i]->y));
        far_square = std::max(far_square, square[i]);
    }
    double total = 0, size = 0;
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3, k = (i + 2) % 3;
        const double one = x[i] * y[j], other = x[j] * y[i];
        total += (one - other) * q[k];
        size += (std::fabs(one) + std::fabs(other)) * q[k];
    }
    const double largest = far_x * far_y * far_square;
    const double sure = std::fabs(total) - ROUNDING_OF_SUM * largest - ROUNDING_OF_TURN * size;
    // Both are of the fourth degree; with the sum's root on the other side the limit needs no root here.
    if (!(largest < LARGEST_PRODUCT) || !(sure > 0) || !(sure * sure * (sure * sure) > sum * 1.000001))
        return 0;
    return total > 0 ? 1 : -1;
}

bool corners_are_told_apart(const tin_point* a, const tin_point* b, const tin_point* c, const tin_point* d)
{
    if (!a || !b || !c || !d) {
        acutPrintf("Error: not NULL assertion failed.");
        return false;
    }
    if (a == b || a == c || a == d) {
        acutPrintf("\nError: identical points in swap test.");
        return false;
    }
    if (b == c || b == d || c == d) {
        acutPrintf("\nError: identical points in swap test2.");
        return false;
    }
    return true;
}

// What the next swap, of the edge from b to `end`, would gain once b-d is there; 0 when there is none.
double gain_behind(const tin_network* network, const tin_triangle* neighbour, const tin_point* end,
                   const tin_point* b, const tin_point* d)
{
    if (!neighbour)
        return 0;
    const int apex = apex_index(neighbour, b, end);
    if (apex < 0)
        return 0;
    const tin_point* e = neighbour->corner[apex];
    if (!tin_segments_cross(network, end, b, d, e) || tin_is_barrier(network, end, b))
        return 0;
    return square_distance(b, end) - square_distance(e, d);
}

} // namespace

int tin_is_barrier(const tin_network*, const tin_point* p, const tin_point* q)
{
    for (const tin_link* link = p->partners; link; link = link->next)
        if (link->point == q)
            return 1;
    return 0;
}

int tin_cocircular_test(const tin_network* network, const tin_point* a, const tin_point* b, const tin_point* c,
                        const tin_point* d, const tin_triangle* far)
{
    if (!tin_segments_cross(network, a, c, b, d))
        return 0;
    if (same_direction(b, c, a, c) || same_direction(d, c, a, c))
        return 1;
    if (same_direction(d, b, c, b) || same_direction(d, b, a, b))
        return 0;
    const double gain = square_distance(a, c) - square_distance(b, d);
    if (gain > 0)
        return 1;
    const int at = corner_index(far, b);
    if (at < 0)
        return 0;
    const double behind_c = gain_behind(network, far->side[at], c, b, d);
    const double behind_a = gain_behind(network, far->side[(at + 2) % 3], a, b, d);
    return gain + std::max(behind_c, behind_a) > 0;
}

int tin_swap_test(const tin_network* network, const tin_point* a, const tin_point* b, const tin_point* c,
                  const tin_point* d, const tin_triangle* far)
{
    if (!corners_are_told_apart(a, b, c, d))
        return 0;
    if (std::fabs(coordinate_sum(a, c) - coordinate_sum(b, d)) < EQUAL_SUMS) {
        if (!tin_segments_cross(network, a, c, b, d))
            return 0;
        // A vertical diagonal has an infinite slope; which sign it has decides, and gridded input relies on it.
        return !((a->y - c->y) / (a->x - c->x) > (b->y - d->y) / (b->x - d->x));
    }
    const tin_point* const p[4] = {a, b, c, d};
    double square[4], sum = 0;
    for (int i = 0; i < 4; ++i) {
        square[i] = p[i]->x * p[i]->x + p[i]->y * p[i]->y;
        sum += square[i];
    }
    if (const int side = certain_side(p, square, sum))
        return side > 0 && tin_segments_cross(network, a, c, b, d);
    const double determinant = circle_determinant(p, square);
    // The limit grows with the coordinates; it is the square of the determinant that is held against it.
    if (determinant * determinant < std::sqrt(sum))
        return tin_cocircular_test(network, a, b, c, d, far);
    return determinant > 0 && tin_segments_cross(network, a, c, b, d);
}
