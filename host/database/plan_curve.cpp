// The pieces come from the paths of shapes.h, of which a curve's object has one (a second one is its copy at
// the other end of its thickness). A piece keeps the parameter of the object's own plane: what is found in the
// plan is then right in the object's own numbers however its plane stands.
#include "host/database/plan_curve.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numbers>

namespace host::db
{

namespace
{

constexpr double TURN = 2 * std::numbers::pi;
constexpr double INFINITE = std::numeric_limits<double>::infinity();

double flat_length(const vec& v)
{
    return std::hypot(v.x, v.y);
}

double flat_cross(const vec& a, const vec& b)
{
    return a.x * b.y - a.y * b.x;
}

double flat_dot(const vec& a, const vec& b)
{
    return a.x * b.x + a.y * b.y;
}

bool is_finite(const vec& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// The first path of an object.
struct path_sink : shape_sink {
    std::vector<curve_piece> pieces;
    std::size_t segments = 0;
    int paths = 0;
    vec here{};
    bool bad = false;

    void move(const vec& to) override
    {
        ++paths;
        here = to;
        bad = bad || !is_finite(to);
    }
    void line(const vec& to) override
    {
        if (paths > 1)
            return;
        curve_piece made;
        made.from = here;
        made.to = to;
        made.size = flat_length(to - here);
        here = to;
        bad = bad || !is_finite(to);
        take(made);
    }
    void arc(const arc_piece& piece) override
    {
        if (paths > 1)
            return;
        here = piece.at(piece.end);
        bad = bad || !is_finite(piece.centre) || !is_finite(piece.u) || !is_finite(piece.v) || !is_finite(here);
        const double u = flat_length(piece.u), v = flat_length(piece.v),
                     sweep = std::fabs(piece.end - piece.start);
        curve_piece made;
        // Seen from its edge it is a line there and back.
        constexpr double FLAT = 1e-9;
        made.is_flat = std::fabs(flat_cross(piece.u, piece.v)) <= FLAT * std::max(u, v) * std::max(u, v);
        if (made.is_flat) {
            made.from = piece.at(piece.start);
            made.to = here;
            spread_flat(piece, made);
        } else {
            made.is_arc = true;
            made.arc = piece;
            constexpr double ROUND = 1e-12;
            made.is_circle =
                std::fabs(u - v) <= ROUND * u && std::fabs(flat_dot(piece.u, piece.v)) <= ROUND * u * u;
            made.is_whole = sweep >= TURN - ROUND;
            made.size = sweep * std::sqrt(u * u + v * v);
            if (made.is_circle)
                made.size = sweep * u;
        }
        take(made);
    }

private:
    // The straight piece between the outermost places of a flat arc.
    static void spread_flat(const arc_piece& piece, curve_piece& made)
    {
        const vec along = flat_length(piece.u) >= flat_length(piece.v) ? piece.u : piece.v;
        const double top = std::atan2(flat_dot(piece.v, along), flat_dot(piece.u, along));
        double low = INFINITE, high = -INFINITE;
        const double first = std::min(piece.start, piece.end), final = std::max(piece.start, piece.end);
        std::vector<double> angles{first, final};
        for (const double each : {top, top + TURN / 2})
            if (const double on = each + TURN * std::ceil((first - each) / TURN); on <= final)
                angles.push_back(on);
        for (const double angle : angles) {
            const vec p = piece.at(angle);
            const double reach = flat_dot(p - piece.centre, along);
            if (reach < low)
                made.from = p;
            if (reach > high)
                made.to = p;
            low = std::min(low, reach);
            high = std::max(high, reach);
        }
        made.size = flat_length(made.to - made.from);
    }
    void take(curve_piece made)
    {
        made.segment = segments++;
        if (made.size > 0 && std::isfinite(made.size))
            pieces.push_back(made);
        bad = bad || !std::isfinite(made.size);
    }
};

curve_piece endless_piece(const database& db, object_id id)
{
    const group_list& groups = db.at(id).groups;
    const group* base = find(groups, 10);
    const group* along = find(groups, 11);
    curve_piece made;
    if (!base || !along)
        return made;
    made.from = {base->point[0], base->point[1], base->point[2]};
    made.to = made.from + vec{along->point[0], along->point[1], along->point[2]};
    made.size = is_finite(made.to) ? flat_length(made.to - made.from) : 0;
    made.low = db.is(id, "RAY") ? 0 : -INFINITE;
    made.high = INFINITE;
    return made;
}

bool is_mesh(const group_list& groups)
{
    return (int_of(groups, 70, 0) & (16 | 64)) != 0;
}

bool closes(const database& db, object_id id, const std::vector<curve_piece>& pieces)
{
    if (db.is(id, "LWPOLYLINE") || db.is(id, "POLYLINE"))
        return (int_of(db.at(id).groups, 70, 0) & 1) != 0;
    return pieces.size() == 1 && pieces[0].is_whole;
}

} // namespace

// ---- a piece

vec curve_piece::at(double part) const
{
    if (is_arc)
        return arc.at(angle(part));
    return part == 1 ? to : from + (to - from) * part;
}

bool curve_piece::is_endless() const
{
    return !std::isfinite(low) || !std::isfinite(high);
}

double curve_piece::part_of_angle(double given) const
{
    const double sweep = arc.end - arc.start;
    double on = std::fmod(sweep > 0 ? given - arc.start : arc.start - given, TURN);
    if (on < 0)
        on += TURN;
    const double whole = std::fabs(sweep);
    // In the gap between the ends: behind the end, or before the start.
    if (on > whole && TURN - on < on - whole)
        on -= TURN;
    return on / whole;
}

double curve_piece::angle_of(double x, double y) const
{
    const vec d{x - arc.centre.x, y - arc.centre.y, 0};
    const double turn = flat_cross(arc.u, arc.v);
    return std::atan2(flat_cross(arc.u, d) / turn, flat_cross(d, arc.v) / turn);
}

double curve_piece::distance_from_ellipse(double x, double y) const
{
    const vec d{x - arc.centre.x, y - arc.centre.y, 0};
    if (is_circle)
        return std::fabs(flat_length(d) - flat_length(arc.u));
    const double turn = flat_cross(arc.u, arc.v);
    const double a = flat_cross(d, arc.v) / turn, b = flat_cross(arc.u, d) / turn;
    const double f = (std::hypot(a, b) - 1) * (std::hypot(a, b) + 1);
    const double gx = 2 * (arc.v.y * a - arc.u.y * b) / turn, gy = 2 * (arc.u.x * b - arc.v.x * a) / turn;
    const double steep = std::hypot(gx, gy);
    return steep > 0 ? std::fabs(f) / steep : std::min(flat_length(arc.u), flat_length(arc.v));
}

box curve_piece::bounds(double from_part, double to_part) const
{
    box made = box::empty();
    const auto add = [&](const vec& p) { made.add(p.x, p.y, 0); };
    if (!is_arc) {
        for (const double part : {from_part, to_part}) {
            if (std::isfinite(part)) {
                add(at(part));
                continue;
            }
            const vec step = (to - from) * (part > 0 ? 1 : -1);
            const auto far = [](double base, double by) { return by == 0 ? base : by * INFINITE; };
            made.add(far(from.x, step.x), far(from.y, step.y), 0);
        }
        return made;
    }
    add(at(from_part));
    add(at(to_part));
    const double low_angle = std::min(angle(from_part), angle(to_part));
    const double high_angle = std::max(angle(from_part), angle(to_part));
    for (const double top : {std::atan2(arc.v.x, arc.u.x), std::atan2(arc.v.y, arc.u.y)})
        for (const double each : {top, top + TURN / 2})
            if (const double on = each + TURN * std::ceil((low_angle - each) / TURN); on <= high_angle)
                add(arc.at(on));
    return made;
}

// ---- a curve

double plan_curve::size() const
{
    return last() - first();
}

curve_place plan_curve::place_at(double along) const
{
    const auto behind = std::upper_bound(pieces.begin(), pieces.end(), along,
                                         [](double s, const curve_piece& piece) { return s < piece.before; });
    const std::size_t index =
        behind == pieces.begin() ? 0 : static_cast<std::size_t>(behind - pieces.begin()) - 1;
    const curve_piece& piece = pieces[index];
    return {index, std::clamp((along - piece.before) / piece.size, piece.low, piece.high)};
}

namespace
{

double nearest_part_of_line(const curve_piece& piece, double x, double y)
{
    const vec step = piece.to - piece.from;
    const double part =
        ((x - piece.from.x) * step.x + (y - piece.from.y) * step.y) / (step.x * step.x + step.y * step.y);
    return std::clamp(part, piece.low, piece.high);
}

// Between places where the distance falls and where it rises it has its least; halving finds it.
double nearest_part_of_ellipse(const curve_piece& piece, double x, double y)
{
    const auto slope = [&](double part) {
        const double t = piece.angle(part);
        const vec p = piece.arc.at(t), v = piece.arc.v * std::cos(t) - piece.arc.u * std::sin(t);
        return ((p.x - x) * v.x + (p.y - y) * v.y) * (piece.arc.end > piece.arc.start ? 1 : -1);
    };
    const auto distance = [&](double part) {
        const vec p = piece.at(part);
        return std::hypot(p.x - x, p.y - y);
    };
    constexpr int STEPS = 64; // the distance from an ellipse has at most two lowest places
    double best = distance(0) <= distance(1) ? 0 : 1;
    for (int i = 0; i < STEPS; ++i) {
        double low = static_cast<double>(i) / STEPS, high = static_cast<double>(i + 1) / STEPS;
        if (!(slope(low) <= 0 && slope(high) >= 0))
            continue;
        for (int halving = 0; halving < 60; ++halving) {
            const double middle = (low + high) / 2;
            (slope(middle) <= 0 ? low : high) = middle;
        }
        if (distance(low) < distance(best))
            best = low;
    }
    return best;
}

double nearest_part(const curve_piece& piece, double x, double y)
{
    if (!piece.is_arc)
        return nearest_part_of_line(piece, x, y);
    if (piece.is_circle)
        return std::clamp(piece.part_of_angle(piece.angle_of(x, y)), 0.0, 1.0);
    return nearest_part_of_ellipse(piece, x, y);
}

} // namespace

curve_place plan_curve::nearest(double x, double y) const
{
    curve_place best;
    double best_distance = INFINITE;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const double part = nearest_part(pieces[i], x, y);
        const vec p = pieces[i].at(part);
        const double distance = std::hypot(p.x - x, p.y - y);
        if (distance < best_distance) {
            best = {i, part};
            best_distance = distance;
        }
    }
    return best;
}

box plan_curve::bounds(double from, double to) const
{
    box made = box::empty();
    const curve_place a = place_at(from), b = place_at(to);
    for (std::size_t i = a.piece; i <= b.piece; ++i) {
        const box one =
            pieces[i].bounds(i == a.piece ? a.part : pieces[i].low, i == b.piece ? b.part : pieces[i].high);
        made.add(one.low[0], one.low[1], 0);
        made.add(one.high[0], one.high[1], 0);
    }
    return made;
}

// ---- of an object

bool is_plan_curve(const database& db, object_id id)
{
    constexpr std::array<std::string_view, 9> KINDS = {"ARC",      "CIRCLE", "ELLIPSE", "LINE", "LWPOLYLINE",
                                                       "POLYLINE", "RAY",    "SPLINE",  "XLINE"};
    if (!db.valid(id) || std::find(KINDS.begin(), KINDS.end(), db.type_of(id)) == KINDS.end())
        return false;
    return !db.is(id, "POLYLINE") || !is_mesh(db.at(id).groups);
}

std::optional<plan_curve> plan_curve_of(const database& db, object_id id)
{
    if (!is_plan_curve(db, id))
        return std::nullopt;
    plan_curve made;
    made.id = id;
    if (is_endless(db, id)) {
        if (const curve_piece piece = endless_piece(db, id); piece.size > 0)
            made.pieces.push_back(piece);
    } else {
        path_sink sink;
        trace_shape(db, id, sink);
        if (!sink.bad)
            made.pieces = std::move(sink.pieces);
    }
    if (made.pieces.empty())
        return std::nullopt;
    double before = 0;
    for (curve_piece& piece : made.pieces) {
        piece.before = before;
        before += piece.size;
    }
    if (!std::isfinite(before))
        return std::nullopt;
    made.is_closed = closes(db, id, made.pieces);
    return made;
}

plan_curve drawn_out(const database& db, plan_curve curve)
{
    if (curve.is_closed || db.is(curve.id, "SPLINE"))
        return curve;
    const auto whole = [](curve_piece& piece) {
        piece.arc.end = piece.arc.start + (piece.arc.end > piece.arc.start ? TURN : -TURN);
        piece.is_whole = true;
    };
    curve_piece &head = curve.pieces.front(), &tail = curve.pieces.back();
    if (head.is_arc)
        whole(head);
    else
        head.low = -INFINITE;
    if (tail.is_arc && !tail.is_whole)
        whole(tail);
    else if (!tail.is_arc)
        tail.high = INFINITE;
    return curve;
}

double place_tolerance(const plan_curve& curve)
{
    constexpr double OF_SIZE = 1e-9, ROUNDING = 64 * std::numeric_limits<double>::epsilon();
    box all = box::empty();
    for (const curve_piece& piece : curve.pieces) {
        const box one = piece.is_endless() ? piece.bounds(0, 1) : piece.bounds(piece.low, piece.high);
        all.add(one.low[0], one.low[1], 0);
        all.add(one.high[0], one.high[1], 0);
    }
    double farthest = 0;
    for (int i = 0; i < 2; ++i)
        farthest = std::max({farthest, std::fabs(all.low[i]), std::fabs(all.high[i])});
    const double size = std::max(all.high[0] - all.low[0], all.high[1] - all.low[1]);
    return OF_SIZE * size + ROUNDING * farthest;
}

} // namespace host::db
