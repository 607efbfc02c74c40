// Straight pieces, circles and ellipses by their own formulas; what lies on one another by the ends. A meeting
// is found on the whole lines and ellipses first and then held against where the pieces end. Ends are looked at
// by themselves too: where two pieces run nearly alike, an end can be near the other piece and far from the
// place in which their lines cross.
#include "host/database/piece_meetings.h"

#include <algorithm>
#include <limits>
#include <numbers>

namespace host::db
{

namespace
{

constexpr double TURN = 2 * std::numbers::pi;

struct flat {
    double x, y;
};

flat operator-(const flat& a, const flat& b)
{
    return {a.x - b.x, a.y - b.y};
}
flat flat_of(const vec& v)
{
    return {v.x, v.y};
}
double cross(const flat& a, const flat& b)
{
    return a.x * b.y - a.y * b.x;
}
double dot(const flat& a, const flat& b)
{
    return a.x * b.x + a.y * b.y;
}

flat direction(const curve_piece& line)
{
    return {(line.to.x - line.from.x) / line.size, (line.to.y - line.from.y) / line.size};
}

// Distance of a point along a line from its part 0.
double reach(const curve_piece& line, const flat& p)
{
    return dot(p - flat_of(line.from), direction(line));
}

double distance_from_line(const curve_piece& line, const flat& p)
{
    return std::fabs(cross(direction(line), p - flat_of(line.from)));
}

// Brings a part that is beyond an end by no more than the tolerance to the end. False: it is not on the piece.
bool fit(const curve_piece& piece, double tolerance, double& part)
{
    const double slack = tolerance / piece.size;
    if (piece.is_arc && piece.is_whole) {
        part = std::clamp(part, 0.0, 1.0);
        return true;
    }
    if (!(part >= piece.low - slack && part <= piece.high + slack))
        return false;
    part = std::clamp(part, piece.low, piece.high);
    return true;
}

void offer(const curve_piece& a, double on_a, const curve_piece& b, double on_b, double tolerance,
           piece_meetings& out)
{
    if (std::isfinite(on_a) && std::isfinite(on_b) && fit(a, tolerance, on_a) && fit(b, tolerance, on_b))
        out.places.push_back({on_a, on_b});
}

double part_near(const curve_piece& piece, const flat& p)
{
    return piece.is_arc ? piece.part_of_angle(piece.angle_of(p.x, p.y)) : reach(piece, p) / piece.size;
}

// ---- ends

struct piece_end {
    double part;
    flat at;
};

std::vector<piece_end> ends_of(const curve_piece& piece)
{
    std::vector<piece_end> ends;
    if (piece.is_arc && piece.is_whole)
        return ends;
    for (const double part : {piece.low, piece.high})
        if (std::isfinite(part))
            ends.push_back({part, flat_of(piece.at(part))});
    return ends;
}

bool lies_near(const curve_piece& piece, const flat& p, double tolerance)
{
    return (piece.is_arc ? piece.distance_from_ellipse(p.x, p.y) : distance_from_line(piece, p)) <= tolerance;
}

void meet_at_ends(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    for (const piece_end& end : ends_of(a))
        if (lies_near(b, end.at, tolerance))
            offer(a, end.part, b, part_near(b, end.at), tolerance, out);
    for (const piece_end& end : ends_of(b))
        if (lies_near(a, end.at, tolerance))
            offer(a, part_near(a, end.at), b, end.part, tolerance, out);
}

// ---- straight pieces

bool is_along(const curve_piece& part, const curve_piece& whole, double tolerance)
{
    return distance_from_line(whole, flat_of(part.from)) <= tolerance &&
           distance_from_line(whole, flat_of(part.to)) <= tolerance;
}

bool lines_share(const curve_piece& a, const curve_piece& b, double tolerance)
{
    if (a.is_endless() && b.is_endless()) {
        constexpr double PARALLEL = 1e-12;
        return std::fabs(cross(direction(a), direction(b))) <= PARALLEL && is_along(b, a, tolerance);
    }
    const bool b_is_part = !b.is_endless() && (a.is_endless() || b.size <= a.size);
    return b_is_part ? is_along(b, a, tolerance) : is_along(a, b, tolerance);
}

void share_line(const curve_piece& a, const curve_piece& b, piece_meetings& out)
{
    const double turn = dot(direction(a), direction(b)) < 0 ? -1 : 1;
    const double base = reach(a, flat_of(b.from)) / a.size, scale = turn * b.size / a.size;
    double from = base + b.low * scale, to = base + b.high * scale;
    if (from > to)
        std::swap(from, to);
    from = std::max(from, a.low);
    to = std::min(to, a.high);
    if (from < to)
        out.shared.push_back({from, to});
}

void meet_lines(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    if (lines_share(a, b, tolerance)) {
        share_line(a, b, out);
        return;
    }
    const flat da = direction(a), db = direction(b), between = flat_of(b.from) - flat_of(a.from);
    const double sine = cross(da, db);
    if (sine == 0)
        return;
    offer(a, cross(between, db) / sine / a.size, b, cross(between, da) / sine / b.size, tolerance, out);
}

// ---- a straight piece and an arc

// The ellipse's points over the line's normal are a cosine: centre + reach cos(t - top).
void meet_line_arc(const curve_piece& line, const curve_piece& arc, double tolerance, bool line_first,
                   piece_meetings& out)
{
    const flat d = direction(line), centre = flat_of(arc.arc.centre);
    const double u = cross(d, flat_of(arc.arc.u)), v = cross(d, flat_of(arc.arc.v));
    const double away = cross(d, flat_of(line.from) - centre), highest = std::hypot(u, v);
    const double beyond = std::fabs(away) - highest;
    if (beyond > tolerance || highest == 0)
        return;
    const double top = std::atan2(v, u);
    double turns[2] = {away >= 0 ? 0 : TURN / 2, 0};
    int count = 1;
    if (beyond < -tolerance) {
        turns[0] = std::atan2(std::sqrt((highest - away) * (highest + away)), away);
        turns[1] = -turns[0];
        count = 2;
    }
    for (int i = 0; i < count; ++i) {
        const double angle = top + turns[i];
        const double on_line = reach(line, flat_of(arc.arc.at(angle))) / line.size;
        const double on_arc = arc.part_of_angle(angle);
        if (line_first)
            offer(line, on_line, arc, on_arc, tolerance, out);
        else
            offer(arc, on_arc, line, on_line, tolerance, out);
    }
}

// ---- arcs

void offer_point(const curve_piece& a, const curve_piece& b, const flat& p, double tolerance,
                 piece_meetings& out)
{
    offer(a, part_near(a, p), b, part_near(b, p), tolerance, out);
}

void meet_circles(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    const flat centre = flat_of(a.arc.centre), between = flat_of(b.arc.centre) - centre;
    const double d = std::hypot(between.x, between.y);
    const double ra = std::hypot(a.arc.u.x, a.arc.u.y), rb = std::hypot(b.arc.u.x, b.arc.u.y);
    const double outside = d - (ra + rb), inside = std::fabs(ra - rb) - d;
    if (outside > tolerance || inside > tolerance || d == 0)
        return;
    const flat e{between.x / d, between.y / d};
    if (outside >= -tolerance || inside >= -tolerance) { // they touch
        const double side = outside >= -tolerance || ra >= rb ? ra : -ra;
        offer_point(a, b, {centre.x + e.x * side, centre.y + e.y * side}, tolerance, out);
        return;
    }
    const double along = (d + (ra - rb) * (ra + rb) / d) / 2;
    const double off = std::sqrt(std::max(0.0, (ra - along) * (ra + along)));
    for (const double h : {off, -off})
        offer_point(a, b, {centre.x + e.x * along - e.y * h, centre.y + e.y * along + e.x * h}, tolerance, out);
}

bool ellipses_share(const curve_piece& a, const curve_piece& b, double tolerance)
{
    // Two ellipses with more than four places in common are one.
    constexpr int PLACES = 8;
    for (int i = 0; i < PLACES; ++i) {
        const vec p = a.arc.at(TURN * i / PLACES);
        if (!(b.distance_from_ellipse(p.x, p.y) <= tolerance))
            return false;
    }
    return true;
}

void share_ellipse(const curve_piece& a, const curve_piece& b, piece_meetings& out)
{
    if (b.is_whole || a.is_whole) {
        if (b.is_whole)
            out.shared.push_back({0, 1});
        else { // from an end of b to the other, over the seam of a if need be
            const bool same_way = cross(flat_of(a.arc.u), flat_of(a.arc.v)) * (a.arc.end - a.arc.start) *
                                      cross(flat_of(b.arc.u), flat_of(b.arc.v)) * (b.arc.end - b.arc.start) >
                                  0;
            const double from = part_near(a, flat_of(b.at(same_way ? 0 : 1)));
            const double to = part_near(a, flat_of(b.at(same_way ? 1 : 0)));
            if (from <= to)
                out.shared.push_back({from, to});
            else
                out.shared.insert(out.shared.end(), {{0, to}, {from, 1}});
        }
        return;
    }
    // Between the places where either ends, the arcs lie on one another or not: the middle shows it.
    std::vector<double> parts{0, 1};
    for (const double end : {0.0, 1.0}) {
        const double part = part_near(a, flat_of(b.at(end)));
        if (part > 0 && part < 1)
            parts.push_back(part);
    }
    std::sort(parts.begin(), parts.end());
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const double middle = part_near(b, flat_of(a.at((parts[i - 1] + parts[i]) / 2)));
        if (middle >= 0 && middle <= 1 && parts[i] > parts[i - 1])
            out.shared.push_back({parts[i - 1], parts[i]});
    }
}

void meet_arcs(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    if (ellipses_share(a, b, tolerance)) {
        share_ellipse(a, b, out);
        return;
    }
    if (a.is_circle && b.is_circle) {
        meet_circles(a, b, tolerance, out);
        return;
    }
    for (const double part : parts_on_ellipse(a, b, tolerance)) {
        const flat p = flat_of(a.at(part));
        offer(a, part, b, part_near(b, p), tolerance, out);
    }
}

bool is_end(const curve_piece& piece, double part)
{
    return !piece.is_whole && (part == piece.low || part == piece.high);
}

// Where pieces touch, rounding finds two places for one. They are one where the first piece stays within the
// tolerance of the other between them; an end of a piece is the better known.
void join_touches(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    constexpr double ONE_TOUCH = 1e-3; // of the piece
    auto& places = out.places;
    std::sort(places.begin(), places.end(), [](const auto& p, const auto& q) { return p.a < q.a; });
    const auto stays_near = [&](double from, double to) {
        for (const double part : {0.25, 0.5, 0.75})
            if (!lies_near(b, flat_of(a.at(from + (to - from) * part)), tolerance))
                return false;
        return to - from <= ONE_TOUCH;
    };
    std::size_t kept = 0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        piece_meetings::place& last = places[kept];
        if (!stays_near(last.a, places[i].a))
            places[++kept] = places[i];
        else if (!is_end(a, last.a) && !is_end(b, last.b))
            last = places[i];
    }
    if (!places.empty())
        places.resize(kept + 1);
}

} // namespace

void find_meetings(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out)
{
    out.clear();
    meet_at_ends(a, b, tolerance, out);
    if (a.is_arc && b.is_arc)
        meet_arcs(a, b, tolerance, out);
    else if (a.is_arc)
        meet_line_arc(b, a, tolerance, false, out);
    else if (b.is_arc)
        meet_line_arc(a, b, tolerance, true, out);
    else
        meet_lines(a, b, tolerance, out);
    if ((a.is_arc || b.is_arc) && out.shared.empty())
        join_touches(a, b, tolerance, out);
}

} // namespace host::db
