// plain_curves.h: drawing objects read into straight pieces and ellipses straight from their groups, to judge
// what the geometry of the host finds by plain means: many points, and the nearest place by trying.
#pragma once

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "host/database/entities.h"

namespace host::db::plain
{

struct point {
    double x = 0, y = 0, z = 0;
};

inline double distance(const point& a, const point& b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

// at(s), s from 0 to 1: straight from a to b, or centre + u cos t + v sin t for t from t0 to t1.
struct piece {
    bool is_arc = false;
    point a, b;
    point centre, u, v;
    double t0 = 0, t1 = 0;

    point at(double s) const
    {
        if (!is_arc)
            return {a.x + (b.x - a.x) * s, a.y + (b.y - a.y) * s, a.z + (b.z - a.z) * s};
        const double t = t0 + (t1 - t0) * s, c = std::cos(t), n = std::sin(t);
        return {centre.x + u.x * c + v.x * n, centre.y + u.y * c + v.y * n, centre.z};
    }
    // By trying places ever closer to the best.
    double distance_to(const point& p) const
    {
        const bool is_whole =
            is_arc && std::fabs(t1 - t0) > 2 * std::numbers::pi - 1e-9; // it goes on over its seam
        double best = 0, step = 1.0 / 128;
        for (int i = 0; i <= 128; ++i)
            if (distance(at(i * step), p) < distance(at(best), p))
                best = i * step;
        for (int i = 0; i < 200; ++i) {
            double next = best;
            for (const double s : {best - step, best + step})
                if ((is_whole || (s >= 0 && s <= 1)) && distance(at(s), p) < distance(at(next), p))
                    next = s;
            if (next == best)
                step /= 2;
            best = next;
        }
        return distance(at(best), p);
    }
};

inline point point_of(const group_list& groups, int code)
{
    const group* g = find(groups, code);
    return g ? point{g->point[0], g->point[1], g->dimensions == 3 ? g->point[2] : 0} : point{};
}

inline piece bulged(const point& a, const point& b, double bulge)
{
    piece out;
    out.a = a;
    out.b = b;
    if (bulge == 0)
        return out;
    // Turned by the half of the angle that is not included, the chord points at the centre.
    const double angle = 4 * std::atan(bulge), radius = distance(a, b) / (2 * std::sin(angle / 2));
    const double toward = std::atan2(b.y - a.y, b.x - a.x) + std::numbers::pi / 2 - angle / 2;
    out.is_arc = true;
    out.centre = {a.x + radius * std::cos(toward), a.y + radius * std::sin(toward), a.z};
    const double r = std::fabs(radius);
    out.u = {r, 0, 0};
    out.v = {0, r, 0};
    out.t0 = std::atan2(a.y - out.centre.y, a.x - out.centre.x);
    out.t1 = out.t0 + angle;
    return out;
}

struct curve {
    std::vector<piece> pieces;
    bool is_closed = false;

    std::vector<point> samples(int per_piece) const
    {
        std::vector<point> out{pieces.front().at(0)};
        for (const piece& each : pieces)
            for (int i = 1; i <= per_piece; ++i)
                out.push_back(each.at(static_cast<double>(i) / per_piece));
        return out;
    }
    double length() const
    {
        double sum = 0;
        for (const piece& each : pieces)
            if (each.is_arc) {
                for (int i = 0; i < 2000; ++i)
                    sum += distance(each.at(i / 2000.0), each.at((i + 1) / 2000.0));
            } else {
                sum += distance(each.a, each.b);
            }
        return sum;
    }
    double distance_to(const point& p) const
    {
        double best = HUGE_VAL;
        for (const piece& each : pieces)
            best = std::min(best, each.distance_to(p));
        return best;
    }
};

struct chain_point {
    point at;
    double bulge;
};

inline curve chained(const std::vector<chain_point>& chain, bool closed)
{
    curve out;
    out.is_closed = closed;
    for (std::size_t i = 0; i + (closed ? 0 : 1) < chain.size(); ++i)
        out.pieces.push_back(bulged(chain[i].at, chain[(i + 1) % chain.size()].at, chain[i].bulge));
    return out;
}

// Those of this host's kinds that random drawings have; extrusions up or down.
inline curve curve_of(const database& db, object_id id)
{
    const group_list& groups = db.at(id).groups;
    const std::string_view type = db.type_of(id);
    curve out;
    piece one;
    if (type == "LINE") {
        one.a = point_of(groups, 10);
        one.b = point_of(groups, 11);
        out.pieces = {one};
    } else if (type == "ARC" || type == "CIRCLE") {
        const double r = real_of(groups, 40, 0);
        one.is_arc = true;
        one.centre = point_of(groups, 10);
        one.u = {r, 0, 0};
        one.v = {0, r, 0};
        out.is_closed = type == "CIRCLE";
        one.t0 = out.is_closed ? 0 : real_of(groups, 50, 0);
        one.t1 = out.is_closed ? 2 * std::numbers::pi : real_of(groups, 51, 0);
        while (one.t1 <= one.t0)
            one.t1 += 2 * std::numbers::pi;
        out.pieces = {one};
    } else if (type == "ELLIPSE") {
        one.is_arc = true;
        one.centre = point_of(groups, 10);
        one.u = point_of(groups, 11);
        const double ratio = real_of(groups, 40, 1);
        one.v = {-one.u.y * ratio, one.u.x * ratio, 0};
        one.t0 = real_of(groups, 41, 0);
        one.t1 = real_of(groups, 42, 0);
        while (one.t1 <= one.t0)
            one.t1 += 2 * std::numbers::pi;
        out.is_closed = one.t1 - one.t0 > 2 * std::numbers::pi - 1e-12;
        out.pieces = {one};
    } else {
        std::vector<chain_point> chain;
        if (type == "LWPOLYLINE") {
            for (const group& each : groups)
                if (each.code == 10)
                    chain.push_back({{each.point[0], each.point[1], real_of(groups, 38, 0)}, 0});
                else if (each.code == 42)
                    chain.back().bulge = each.real;
        } else {
            for (object_id child = first_child(db, id); child; child = next_child(db, child))
                chain.push_back({point_of(db.at(child).groups, 10), real_of(db.at(child).groups, 42, 0)});
        }
        out = chained(chain, int_of(groups, 70, 0) & 1);
    }
    if (point_of(groups, 210).z < 0 && type != "LINE" && type != "ELLIPSE")
        for (piece& each : out.pieces)
            for (point* p : {&each.a, &each.b, &each.centre, &each.u, &each.v})
                p->x = -p->x;
    return out;
}

inline double side(const point& a, const point& b, const point& p)
{
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

inline bool chords_cross(const point& a, const point& b, const point& c, const point& d)
{
    return (side(a, b, c) > 0) != (side(a, b, d) > 0) && (side(c, d, a) > 0) != (side(c, d, b) > 0);
}

} // namespace host::db::plain
