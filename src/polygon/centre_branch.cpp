// Each item is taken as a surface that rises from it at `slope`: a plane from a side, a cone from a corner.
// A branch is the plan of the line in which two of them meet. With level sides that is the line at equal
// distance; else each distance counts with the elevation at its foot over the slope.
//
// Two sides meet in a straight line. Against a corner Q the line is a conic with its focus in Q. With r the
// distance from Q, u the unit vector of the direction from Q, and the other surface, over the slope and less
// the elevation of Q, written as K at Q and rising by G along the plan:
//   against a side:  r = K + r G.u                   so r = K / (1 - G.u)
//       K = distance from Q to the side's line + (elevation at the foot - elevation of Q) / slope
//       G = left normal of the side + (its grade / slope) its direction
//   against a corner O at distance D from Q, lower by k slope, e the unit vector from Q to O:
//       r + k = |r u - D e|, squared: 2 r k + k^2 = D^2 - 2 r D e.u     so again r = K / (1 - G.u) with
//       K = (D^2 - k^2) / 2k,  G = -(D / k) e
// the first a parabola when the side is level (|G| = 1), the second a hyperbola's branch about its higher
// point. r passes all bounds towards 1 = G.u.
#include "polygon/centre_branch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "polygon/centre_lines.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double STEP = PI / 100.0 / static_cast<double>(CL_FINE);
// A full turn. Half a turn is enough for most curves, but about the tip of a spike close before a side the far
// half of the parabola starts behind the tip.
constexpr int MOST_STEPS = 200 * static_cast<int>(CL_FINE);
constexpr double LEAST_FIRST_STEP = 0.0005; // of the distance from the corner
constexpr double ANGLE_TOL = 1e-6;
constexpr int MOST_ROUNDS = 10;
constexpr double SETTLED = 1e-14;     // of the reach: the last move of a crossing
constexpr double MOST_SETTLED = 0.25; // of the distance from the items: all moves together

double dot(const cl_point& a, const cl_point& b)
{
    return a[0] * b[0] + a[1] * b[1];
}

double cross(const cl_point& a, const cl_point& b)
{
    return a[0] * b[1] - a[1] * b[0];
}

cl_point minus(const cl_point& a, const cl_point& b)
{
    return {a[0] - b[0], a[1] - b[1], 0.0};
}

double grade_of(const cl_item& side)
{
    return (side.to[2] - side.from[2]) / pg_dist(side.from.data(), side.to.data());
}

cl_point unit(const cl_point& from, const cl_point& to)
{
    const double length = pg_dist(from.data(), to.data());
    return {(to[0] - from[0]) / length, (to[1] - from[1]) / length, 0.0};
}

cl_point polar(const cl_point& from, double direction, double distance)
{
    return {from[0] + distance * std::cos(direction), from[1] + distance * std::sin(direction), 0.0};
}

// Where an item is that counts as a point.
const cl_point& point_of(const cl_item& item, std::int16_t relation)
{
    return relation == CL_AS_TO ? item.to : item.from;
}

// ---- two sides

// Bounds for the angle at a corner of the outline. Between steep sides the planes may meet outside.
double bounded_at_corner(double b, double a, double g, double h, bool* guarded)
{
    const auto set = [&](double value) {
        b = value;
        *guarded = true;
    };
    if (std::fabs(g) < std::fabs(h) && b < 0.0)
        set(b + PI);
    if (std::fabs(h) <= std::fabs(g)) {
        if (a - b > PI / 2.0)
            set(a - PI / 2.0);
        if (b < 0.0 || b > PI)
            set(a / 2.0);
    } else {
        if (b > PI / 2.0)
            set(PI / 2.0);
        if (a < b)
            set(a / 2.0);
    }
    return b;
}

// With the lines' meeting as origin, at the angle b from the right side's direction and the distance 1 the
// planes have the heights g cos b + s sin b and h cos(a - b) + s sin(a - b); equal where tan b is as below.
void lead_between_sides(const cl_wish& wish, cl_path* path, bool* guarded)
{
    const cl_item &left = *wish.left, &right = *wish.right;
    const cl_point along = unit(right.from, right.to), back = unit(left.to, left.from);
    double a = std::atan2(cross(along, back), dot(along, back));
    if (a < 0.0)
        a += 2.0 * PI;
    const double direction = pg_angle(right.from.data(), right.to.data());
    double b = a / 2.0;
    if (std::fabs(a - PI) > ANGLE_TOL) {
        const double s = 1.0 / (1.0 / wish.slope);
        const double g = grade_of(right), h = -grade_of(left);
        const double over = (g / s) - std::cos(a) * h / s - std::sin(a);
        const double under = std::sin(a) * h / s - std::cos(a) - 1.0;
        if (PI - a > ANGLE_TOL && pg_dist(left.to.data(), right.from.data()) <= PG_LENGTH_TOL) {
            b = over == 0.0 && under == 0.0 ? a / 2.0 : std::atan(over / under);
            b = bounded_at_corner(b, a, g, h, guarded);
        } else {
            // Away from a corner only one way along the line keeps the left item on the left.
            b = std::atan2(-over, -under);
            *guarded = std::fabs(b) > PI / 2.0;
        }
    }
    path->push_back(polar(wish.from, direction + b, wish.reach));
}

// ---- a conic about a point

struct conic {
    cl_point focus;
    double k;   // K
    cl_point g; // G
};

// The distance at which the conic lies in a direction that is off G's by `off`; not positive where it doesn't.
double radius_at(const conic& c, double g_length, double off)
{
    const double s = std::sin(off / 2.0);
    return c.k / (1.0 - g_length + 2.0 * g_length * s * s);
}

// From path's last point on, counter-clockwise about the focus for `turn` 1, clockwise for -1, up to where the
// conic is `reach` from its focus. That end is computed, so no step can leap over the open side of the conic.
bool stroke(const conic& c, int turn, double reach, cl_path* path)
{
    const cl_point start = path->back();
    const double g_length = std::hypot(c.g[0], c.g[1]), g_direction = std::atan2(c.g[1], c.g[0]);
    const double end_cos = (1.0 - c.k / reach) / g_length;
    const double first = std::atan2(start[1] - c.focus[1], start[0] - c.focus[0]) - g_direction;
    const double first_radius = radius_at(c, g_length, first);
    if (!(std::fabs(end_cos) <= 1.0 && first_radius > 0.0 && first_radius <= reach))
        return false;
    // About G's direction lies what is out of reach; for a point above the plane, what is within.
    const double end = (c.k > 0.0 ? -turn : turn) * std::acos(end_cos);
    double sweep = std::fmod(turn * (end - first), 2.0 * PI);
    if (sweep < 0.0)
        sweep += 2.0 * PI;
    const auto add = [&](double off, double radius) {
        path->push_back(polar(c.focus, g_direction + off, radius));
    };
    int steps = 1;
    for (; steps <= MOST_STEPS && steps * STEP < sweep; ++steps) {
        const double off = first + turn * steps * STEP;
        add(off, radius_at(c, g_length, off));
    }
    if (steps <= MOST_STEPS)
        add(end, reach);
    const std::size_t whole_step = std::min(CL_FINE, path->size() - 1);
    const double first_step = pg_dist(start.data(), (*path)[whole_step].data());
    return first_step >= LEAST_FIRST_STEP * pg_dist(start.data(), c.focus.data());
}

// `turn` keeps the left item on the left: counter-clockwise about a left point, clockwise about a right one.
// The heading of the branch before doesn't tell: it may come towards the point or leave it on either side.
bool lead_about_point(const cl_wish& wish, const cl_item& side, const cl_point& point, int turn, cl_path* path)
{
    if (pg_dist(wish.from.data(), point.data()) <= PG_LENGTH_TOL)
        return false;
    const cl_point along = unit(side.from, side.to), normal{-along[1], along[0], 0.0};
    const cl_point out = minus(point, side.from);
    const double grade = grade_of(side);
    const double lift = (side.from[2] + grade * dot(out, along) - point[2]) / wish.slope;
    const double lean = grade / wish.slope;
    const conic c{
        point, dot(out, normal) + lift, {normal[0] + lean * along[0], normal[1] + lean * along[1], 0.0}};
    return stroke(c, turn, wish.reach, path);
}

bool lead_between_points(const cl_wish& wish, const cl_point& left, const cl_point& right, cl_path* path)
{
    const double apart = pg_dist(left.data(), right.data());
    if (apart <= PG_LENGTH_TOL)
        return false;
    if (std::fabs(left[2] - right[2]) <= PG_LENGTH_TOL) {
        const cl_point across = unit(left, right);
        path->push_back({wish.from[0] - across[1] * wish.reach, wish.from[1] + across[0] * wish.reach, 0.0});
        return true;
    }
    const bool left_is_higher = (left[2] - right[2]) / wish.slope > 0.0;
    const cl_point &near = left_is_higher ? left : right, &far = left_is_higher ? right : left;
    const double k = (near[2] - far[2]) / wish.slope;
    if (k >= apart)
        return false; // one cone lies below the other everywhere
    const cl_point e = unit(near, far);
    const conic c{near, (apart - k) * (apart + k) / (2.0 * k), {-apart / k * e[0], -apart / k * e[1], 0.0}};
    if (!stroke(c, left_is_higher ? 1 : -1, wish.reach, path))
        return false;
    const cl_point last = path->back();
    path->push_back(polar(last, pg_angle((*path)[path->size() - 2].data(), last.data()), wish.reach));
    return true;
}

} // namespace

std::int16_t cl_relation(const cl_item& item, const cl_point& place)
{
    if (item.kind == CL_CORNER)
        return CL_AS_CORNER;
    double foot[3];
    cl_foot(item.from.data(), item.to.data(), place.data(), foot);
    const double d1 = pg_dist(item.from.data(), foot), d2 = pg_dist(foot, item.to.data());
    const double length = pg_dist(item.from.data(), item.to.data());
    if (std::fabs(d1 + d2 - length) <= PG_LENGTH_TOL)
        return CL_AS_SIDE;
    return d1 <= d2 ? CL_AS_FROM : CL_AS_TO;
}

bool cl_lead_branch(const cl_wish& wish, cl_branch* made)
{
    const cl_item &left = *wish.left, &right = *wish.right;
    *made = {left.id, right.id, CL_RAY, 0, {wish.from}, wish.left_relation, wish.right_relation};
    const bool left_is_side = made->left_relation == CL_AS_SIDE,
               right_is_side = made->right_relation == CL_AS_SIDE;
    const cl_point& left_point = point_of(left, made->left_relation);
    const cl_point& right_point = point_of(right, made->right_relation);
    if (left_is_side && right_is_side) {
        bool guarded = false;
        lead_between_sides(wish, &made->chain, &guarded);
        made->flag = guarded ? 1 : 0;
        return true;
    }
    bool is_led = false;
    if (right_is_side)
        is_led = lead_about_point(wish, right, left_point, 1, &made->chain);
    else if (left_is_side)
        is_led = lead_about_point(wish, left, right_point, -1, &made->chain);
    else
        is_led = lead_between_points(wish, left_point, right_point, &made->chain);
    // The ray behind a hyperbola, and where it starts, stay.
    const bool has_ray = !left_is_side && !right_is_side;
    made->fine_count = made->chain.size() - std::min<std::size_t>(made->chain.size(), has_ray ? 2 : 0);
    return is_led;
}

void cl_coarsen(cl_branch* branch)
{
    cl_path& path = branch->chain;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < path.size(); ++i)
        if (i % CL_FINE == 0 || i >= branch->fine_count || i + 1 == path.size())
            path[kept++] = path[i];
    path.resize(kept);
}

namespace
{

// The value of an expression over the plan, and how it rises there.
struct slant {
    double value;
    cl_point rise;
};

// Height of an item's surface over the slope.
slant slant_of(const cl_item& item, std::int16_t relation, double slope, const cl_point& place)
{
    if (relation != CL_AS_SIDE) {
        const cl_point& point = point_of(item, relation);
        return {point[2] / slope + pg_dist(point.data(), place.data()), unit(point, place)};
    }
    const cl_point along = unit(item.from, item.to), normal{-along[1], along[0], 0.0};
    const cl_point out = minus(place, item.from);
    const double lean = grade_of(item) / slope;
    return {item.from[2] / slope + dot(out, normal) + lean * dot(out, along),
            {normal[0] + lean * along[0], normal[1] + lean * along[1], 0.0}};
}

// Zero on a branch. A side and its own end are equally far all along the ray from there, and no further on
// one side of it than on the other: what counts is how far a place is off the ray.
slant slant_between(const cl_outline& outline, double slope, const cl_branch& b, const cl_point& place)
{
    const cl_item &left = outline.item(b.left_id), &right = outline.item(b.right_id);
    const bool left_is_side = b.left_relation == CL_AS_SIDE, right_is_side = b.right_relation == CL_AS_SIDE;
    if (b.left_id == b.right_id) {
        const cl_point along = unit(left.from, left.to);
        return {dot(minus(place, b.chain.front()), along), along};
    }
    if (left_is_side != right_is_side) {
        const cl_item& side = left_is_side ? left : right;
        const cl_point& point =
            left_is_side ? point_of(right, b.right_relation) : point_of(left, b.left_relation);
        if (point == side.from || point == side.to) {
            const cl_point along = unit(side.from, side.to);
            return {dot(minus(place, point), along), along};
        }
    }
    const slant on_left = slant_of(left, b.left_relation, slope, place);
    const slant on_right = slant_of(right, b.right_relation, slope, place);
    return {on_left.value - on_right.value, minus(on_left.rise, on_right.rise)};
}

double plan_distance(const cl_item& item, std::int16_t relation, const cl_point& place)
{
    if (relation != CL_AS_SIDE)
        return pg_dist(point_of(item, relation).data(), place.data());
    return std::fabs(cross(unit(item.from, item.to), minus(place, item.from)));
}

} // namespace

// Newton's method. The chords leave the curves by some ten thousandths of the distance; without this the
// branches of one pair of items that are led from both sides would lie beside each other and never meet.
double cl_settle_crossing(const cl_outline& outline, double slope, const cl_branch& made, const cl_branch& hit,
                          const cl_point& beyond, cl_point* at)
{
    const double bound = MOST_SETTLED * plan_distance(outline.item(made.left_id), made.left_relation, *at);
    cl_point place = *at;
    for (int round = 0; round < MOST_ROUNDS; ++round) {
        const slant s = slant_between(outline, slope, made, place);
        const slant t = slant_between(outline, slope, hit, place);
        const double det = cross(s.rise, t.rise);
        const cl_point move{(t.value * s.rise[1] - s.value * t.rise[1]) / det,
                            (s.value * t.rise[0] - t.value * s.rise[0]) / det, 0.0};
        place = {place[0] + move[0], place[1] + move[1], 0.0};
        if (!(pg_dist(place.data(), at->data()) <= bound))
            return 0.0;
        if (std::hypot(move[0], move[1]) <= SETTLED * outline.reach) {
            const double onward = dot(minus(place, *at), unit(*at, beyond));
            *at = place;
            return onward;
        }
    }
    return 0.0;
}

void cl_settle_on_branch(const cl_outline& outline, double slope, const cl_branch& b, cl_point* at)
{
    const double bound = MOST_SETTLED * plan_distance(outline.item(b.left_id), b.left_relation, *at);
    cl_point place = *at;
    for (int round = 0; round < MOST_ROUNDS; ++round) {
        const slant s = slant_between(outline, slope, b, place);
        const double share = s.value / dot(s.rise, s.rise);
        place = {place[0] - share * s.rise[0], place[1] - share * s.rise[1], 0.0};
    }
    if (pg_dist(place.data(), at->data()) <= bound)
        *at = place;
}

double cl_height(const cl_item& item, double slope, const double* place)
{
    const cl_point at{place[0], place[1], 0.0};
    return slope * slant_of(item, cl_relation(item, at), slope, at).value;
}
