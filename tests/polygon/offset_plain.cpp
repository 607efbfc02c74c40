#include "tests/polygon/offset_plain.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "hostapi/ads.h"
#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/points.h"

namespace plain
{

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double NO_VALUE = 98765432.1;

using xyz = std::array<double, 3>;

xyz at(const spot& s)
{
    return {s.x, s.y, s.z};
}

xyz polar(const xyz& from, double angle, double length)
{
    xyz out;
    acutPolar(from.data(), angle, length, out.data());
    return out;
}

double angle(const xyz& from, const xyz& to)
{
    return pg_angle(from.data(), to.data());
}

double dist(const xyz& a, const xyz& b)
{
    return pg_dist(a.data(), b.data());
}

double arc_bulge(const xyz& a, const xyz& b, const xyz& o)
{
    if (pg_dist(a.data(), b.data()) < 1e-6)
        return 0; // nothing is left of the arc
    return pg_arc_bulge(a.data(), b.data(), o.data());
}

struct arc {
    xyz o;
    double start, end, r, r2;
    int dir;
};

// ---- the parallel

struct walk {
    const std::vector<spot>& chain;
    double distance;
    bool right;
    bool round;
    std::vector<spot> emitted; // the last point first when it is done
    xyz carry{};
    bool have_carry = false;
    int messages = 0;
    bool rounded_with_arc = false; // at some corner of two lines

    void emit(const xyz& p, double bulge) { emitted.push_back({p[0], p[1], bulge, p[2]}); }

    xyz aside(const xyz& p, double theta) const
    {
        return polar(p, right ? theta - PI / 2 : theta + PI / 2, distance);
    }

    arc arc_at(const spot& from, const spot& to) const
    {
        arc a;
        const xyz p = at(from), q = at(to);
        pg_arc_from_bulge(p.data(), q.data(), from.bulge, a.o.data(), &a.start, &a.end, &a.r, &a.dir);
        if ((a.dir == -1 && right) || (a.dir == 1 && !right))
            a.r2 = a.r + distance;
        else
            a.r2 = a.r - distance;
        return a;
    }

    void emit_arc(const arc& a)
    {
        const xyz t1 = polar(a.o, a.start, a.r2), t2 = polar(a.o, a.end, a.r2);
        if (a.dir == -1)
            emit(t2, arc_bulge(t1, t2, a.o));
        else
            emit(t1, -arc_bulge(t1, t2, a.o));
    }

    void line(const spot& p, const spot& q, const spot* r, bool p_is_head, bool closed);
    void line_corner(const xyz& s, const xyz& p, const xyz& q, const xyz& r);
    void line_then_arc(const xyz& s, const spot& p, const spot& q, const spot& r);
    void curve(const spot& p, const spot& q, const spot* r, bool p_is_head);
    void arc_then_line(arc a, const xyz& q, const xyz& r);
    void arc_then_arc(arc a, const spot& q, const spot& r);

    void step(const spot& p, const spot& q, const spot* r, bool p_is_head, bool closed)
    {
        if (p.bulge == 0)
            line(p, q, r, p_is_head, closed);
        else
            curve(p, q, r, p_is_head);
    }
};

void walk::line(const spot& p, const spot& q, const spot* r, bool p_is_head, bool closed)
{
    const double theta = angle(at(p), at(q));
    xyz s = aside(at(p), theta);
    if (have_carry) {
        s = carry;
        have_carry = false;
    }
    if (p_is_head && !closed)
        emit(s, 0);
    if (q.bulge == 0) {
        if (!r && closed)
            r = &chain[1];
        if (r)
            line_corner(s, at(p), at(q), at(*r));
        else
            emit(aside(at(q), theta), 0);
    } else if (r) {
        line_then_arc(s, p, q, *r);
    }
}

// The arc's bulge in closed form, from its angle; 0 where its ends differ in the last digits only.
double corner_bulge(const xyz& q, const xyz& e, const xyz& f, double distance, double sweep)
{
    const double size = std::fabs(q[0]) + std::fabs(q[1]) + std::fabs(distance);
    return dist(e, f) <= 64 * std::numeric_limits<double>::epsilon() * size ? 0.0 : std::tan(sweep / 4);
}

void walk::line_corner(const xyz& s, const xyz& p, const xyz& q, const xyz& r)
{
    const double theta = angle(p, q);
    const xyz e = aside(q, theta);
    const double a = pg_turn_angle(p.data(), q.data(), r.data()) * (PI / 180);
    const bool inner = right ? a <= PI : a >= PI;
    if (inner) {
        const double m = distance / std::cos((a - PI) / 2);
        carry = polar(q, right ? a / 2 + theta - PI : a / 2 + theta, m);
        have_carry = true;
        emit(carry, 0);
        return;
    }
    const xyz f = polar(q, right ? theta + a - 3 * PI / 2 : theta + a - PI / 2, distance);
    if (round) {
        emit(e, 0);
        if (!right || a - PI > 1e-6) {
            emit(f, -corner_bulge(q, e, f, distance, a - PI));
            rounded_with_arc = true;
        }
    } else {
        const xyz e2 = polar(s, theta, 100 * distance + dist(p, q));
        const xyz g = polar(f, angle(r, q), 100 * distance);
        xyz x, y;
        if (pg_seg_intersect(s.data(), e2.data(), f.data(), g.data(), x.data(), y.data()) == 1) {
            emit(x, 0);
            carry = x;
            have_carry = true;
        }
    }
}

void walk::line_then_arc(const xyz& s, const spot& p, const spot& q, const spot& r)
{
    const double theta = angle(at(p), at(q));
    const xyz e = aside(at(q), theta);
    arc a = arc_at(q, r);
    const xyz e2 = polar(s, theta, dist(s, e) + a.r2);
    if (a.dir == -1) {
        a.start = theta - PI / 2;
        a.end = angle(a.o, at(r));
    } else {
        a.start = angle(a.o, at(r));
        a.end = theta + PI / 2;
    }
    xyz x, y;
    if (pg_line_arc_intersect(s.data(), e2.data(), a.o.data(), a.r2, a.start, a.end, x.data(), y.data()) == 0) {
        ++messages;
        emit(e2, 0);
    } else {
        carry = x;
        have_carry = true;
        emit(x, 0);
    }
}

void walk::curve(const spot& p, const spot& q, const spot* r, bool p_is_head)
{
    xyz s = at(p);
    if (have_carry) {
        s = carry;
        have_carry = false;
    }
    arc a = arc_at(p, q);
    if (a.dir == -1)
        a.start = angle(a.o, s);
    else
        a.end = angle(a.o, s);
    if (p_is_head)
        emit(polar(a.o, angle(a.o, s), a.r2), 0);
    if (!r)
        emit_arc(a);
    else if (q.bulge == 0)
        arc_then_line(a, at(q), at(*r));
    else
        arc_then_arc(a, q, *r);
}

void walk::arc_then_line(arc a, const xyz& q, const xyz& r)
{
    const double theta2 = angle(q, r);
    const xyz g = aside(r, theta2);
    const xyz h = polar(g, theta2 - PI, dist(q, r) + a.r2);
    if (a.dir == -1)
        a.end = theta2 - PI / 2;
    else
        a.start = theta2 + PI / 2;
    xyz x, y;
    if (pg_line_arc_intersect(g.data(), h.data(), a.o.data(), a.r2, a.start, a.end, x.data(), y.data()) > 0) {
        carry = x;
        have_carry = true;
        if (a.dir == -1)
            a.end = angle(a.o, x);
        else
            a.start = angle(a.o, x);
    }
    emit_arc(a);
}

void walk::arc_then_arc(arc a, const spot& q, const spot& r)
{
    const xyz corner = at(q);
    arc b = arc_at(q, r);
    const auto end_of_first = [&] { return polar(a.o, a.dir == -1 ? a.end : a.start, a.r2); };
    const auto start_of_second = [&] { return polar(b.o, b.dir == -1 ? b.start : b.end, b.r2); };
    const auto set_end_of_first = [&](const xyz& to) { (a.dir == -1 ? a.end : a.start) = angle(a.o, to); };
    const auto set_start_of_second = [&](const xyz& to) { (b.dir == -1 ? b.start : b.end) = angle(b.o, to); };
    xyz t = start_of_second();
    if (!pg_arc_contains(a.o.data(), t.data(), a.start, a.end, NO_VALUE))
        set_end_of_first(t);
    t = end_of_first();
    if (!pg_arc_contains(b.o.data(), t.data(), b.start, b.end, NO_VALUE))
        set_start_of_second(t);
    xyz x, y;
    const int n = pg_arc_arc_intersect(a.o.data(), a.r2, a.start, a.end, b.o.data(), b.r2, b.start, b.end,
                                       x.data(), y.data());
    if (n == 0) {
        set_end_of_first(corner);
        emit_arc(a);
        set_start_of_second(corner);
        const xyz u = start_of_second();
        t = end_of_first();
        if (pg_tri_area(t[0], t[1], u[0], u[1], corner[0], corner[1]) >= 0)
            emit(u, arc_bulge(t, u, corner));
        else
            emit(u, -arc_bulge(u, t, corner));
        return;
    }
    carry = n == 1 || dist(x, corner) < dist(y, corner) ? x : y;
    have_carry = true;
    set_end_of_first(x);
    emit_arc(a);
}

// ---- loops

struct segment {
    xyz p, q;
    double bulge;
    xyz o{};
    double start = 0, end = 0, r = 0;
    int dir = 0;

    segment(const spot& from, const spot& to) : p(at(from)), q(at(to)), bulge(from.bulge)
    {
        if (bulge != 0)
            pg_arc_from_bulge(p.data(), q.data(), bulge, o.data(), &start, &end, &r, &dir);
    }
    double distance(const xyz& x) const
    {
        if (bulge == 0)
            return dist(p, x);
        return std::fabs(angle(o, x) - (dir == -1 ? start : end)) * r;
    }
    double part(const xyz& from, const xyz& to) const
    {
        return bulge >= 0 ? -arc_bulge(from, to, o) : arc_bulge(to, from, o);
    }
};

std::vector<xyz> meetings(const segment& a, const segment& b)
{
    xyz x{}, y{};
    int n;
    if (a.bulge == 0 && b.bulge == 0)
        n = std::min(1, pg_seg_intersect(a.p.data(), a.q.data(), b.p.data(), b.q.data(), x.data(), y.data()));
    else if (a.bulge == 0)
        n = std::min(1, pg_line_arc_intersect(a.p.data(), a.q.data(), b.o.data(), b.r, b.start, b.end, x.data(),
                                              y.data()));
    else if (b.bulge == 0)
        n = pg_line_arc_intersect(b.p.data(), b.q.data(), a.o.data(), a.r, a.start, a.end, x.data(), y.data());
    else
        n = pg_arc_arc_intersect(a.o.data(), a.r, a.start, a.end, b.o.data(), b.r, b.start, b.end, x.data(),
                                 y.data());
    std::vector<xyz> found{x, y};
    found.resize(static_cast<std::size_t>(n));
    return found;
}

} // namespace

parallel offset(const std::vector<spot>& chain, double distance, int side, int corner_mode, int remove_loops)
{
    if (chain.size() < 2)
        return {};
    const std::size_t last = chain.size() - 1;
    const bool closed =
        std::fabs(chain[last].x - chain[0].x) <= 1e-6 && std::fabs(chain[last].y - chain[0].y) <= 1e-6;
    walk w{chain, distance, side == 1, corner_mode == 0, {}};
    if (closed) {
        w.step(chain[last - 1], chain[0], &chain[1], last - 1 == 0, true);
        // Of a rounded corner at the head only the arc's end begins the result, which so is closed.
        if (w.rounded_with_arc)
            w.emitted.erase(w.emitted.begin());
    }
    for (std::size_t i = 0; i < last; ++i)
        w.step(chain[i], chain[i + 1], i + 2 <= last ? &chain[i + 2] : nullptr, i == 0, closed);
    std::vector<spot> result(w.emitted.rbegin(), w.emitted.rend());
    const std::vector<spot> copy = result;
    if (remove_loops != 0) {
        result = without_loops(result);
        if (result.size() < 2)
            result = copy;
    }
    // Turned round: each bulge goes to the node before it in the new direction, negated.
    std::reverse(result.begin(), result.end());
    if (result.size() > 1) {
        for (std::size_t i = 0; i + 1 < result.size(); ++i)
            result[i].bulge = -result[i + 1].bulge;
        result.back().bulge = -0.0;
    }
    return {result, w.messages};
}

std::vector<spot> without_loops(std::vector<spot> chain)
{
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const segment a(chain[i], chain[i + 1]);
        double best = NO_VALUE;
        xyz found{};
        std::size_t with = 0;
        for (std::size_t j = i + 1; j + 1 < chain.size(); ++j)
            for (const xyz& x : meetings(a, segment(chain[j], chain[j + 1])))
                if (const double d = a.distance(x); d < best && d > 1e-6 && dist(a.q, x) > 1e-6) {
                    best = d;
                    found = x;
                    with = j;
                }
        if (best == NO_VALUE)
            continue;
        const segment b(chain[with], chain[with + 1]);
        if (a.bulge != 0)
            chain[i].bulge = a.part(a.p, found);
        const spot meeting{found[0], found[1], b.bulge != 0 ? b.part(found, b.q) : 0.0, found[2]};
        chain.erase(chain.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                    chain.begin() + static_cast<std::ptrdiff_t>(with) + 1);
        chain.insert(chain.begin() + static_cast<std::ptrdiff_t>(i) + 1, meeting);
    }
    return chain;
}

} // namespace plain
