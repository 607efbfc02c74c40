// osnap.cpp: acedOsnap: the place on an object near a point that a mode names. Each object near the point is
// taken as a list of straight pieces and arcs; the nearest place of any mode asked for is the answer.
#include <cmath>
#include <cstring>
#include <numbers>

#include "host/commandline/arc_shapes.h"
#include "host/commandline/picks.h"
#include "host/commandline/screen_window.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

struct piece {
    point3 a, b;
    std::optional<arc_shape> arc; // a circle has a and b in one place
    bool full = false;
};

struct shape {
    db::object_id id = 0;
    std::vector<piece> pieces;
};

point3 point_of(const db::group_list& groups, int code)
{
    const db::group* g = db::find(groups, code);
    return g ? point3{g->point[0], g->point[1], g->dimensions == 3 ? g->point[2] : 0.0} : point3{};
}

void add_chain(std::vector<piece>& out, const std::vector<std::pair<point3, double>>& chain, bool closed)
{
    for (std::size_t i = 0; i + (closed ? 0 : 1) < chain.size(); ++i) {
        const auto& [from, bulge] = chain[i];
        const point3& to = chain[(i + 1) % chain.size()].first;
        out.push_back({from, to, arc_of_bulge(from, to, bulge), false});
    }
}

shape shape_of(const db::database& db, db::object_id id)
{
    shape out{id, {}};
    const db::group_list& groups = db.at(id).groups;
    const std::string_view type = db.type_of(id);
    std::vector<std::pair<point3, double>> chain;
    const bool closed = db::int_of(groups, 70, 0) & 1;
    if (type == "LINE") {
        out.pieces.push_back({point_of(groups, 10), point_of(groups, 11), {}, false});
    } else if (type == "ARC" || type == "CIRCLE") {
        arc_shape arc{point_of(groups, 10), db::real_of(groups, 40, 0.0), db::real_of(groups, 50, 0.0),
                      db::real_of(groups, 51, 2 * PI)};
        out.pieces.push_back({on_circle(arc.center, arc.radius, arc.start),
                              on_circle(arc.center, arc.radius, arc.end), arc, type == "CIRCLE"});
    } else if (type == "LWPOLYLINE") {
        const double z = db::real_of(groups, 38, 0.0);
        for (const db::group& g : groups) {
            if (g.code == 10)
                chain.emplace_back(point3{g.point[0], g.point[1], z}, 0.0);
            else if (g.code == 42 && !chain.empty())
                chain.back().second = g.real;
        }
        add_chain(out.pieces, chain, closed);
    } else if (type == "POLYLINE") {
        for (db::object_id v = db::first_child(db, id); v; v = db::next_child(db, v))
            chain.emplace_back(point_of(db.at(v).groups, 10), db::real_of(db.at(v).groups, 42, 0.0));
        add_chain(out.pieces, chain, closed);
    } else if (type != "POINT" && type != "TEXT" && type != "MTEXT" && type != "INSERT") {
        for (const db::run& run : db::outline_of(db, id, 0.01))
            for (std::size_t i = 1; i < run.size(); ++i)
                out.pieces.push_back({{run[i - 1].first, run[i - 1].second, 0.0},
                                      {run[i].first, run[i].second, 0.0},
                                      {},
                                      false});
    }
    return out;
}

bool on_arc(const piece& p, double angle)
{
    return p.full || normal_angle(angle - p.arc->start) <= normal_angle(p.arc->end - p.arc->start);
}

point3 nearest_on(const piece& p, const point3& at)
{
    if (p.arc) {
        const double angle = std::atan2(at.y - p.arc->center.y, at.x - p.arc->center.x);
        if (on_arc(p, angle))
            return on_circle(p.arc->center, p.arc->radius, angle);
        const double da = std::hypot(p.a.x - at.x, p.a.y - at.y), db = std::hypot(p.b.x - at.x, p.b.y - at.y);
        return da <= db ? p.a : p.b;
    }
    const double dx = p.b.x - p.a.x, dy = p.b.y - p.a.y, square = dx * dx + dy * dy;
    double t = square > 0.0 ? ((at.x - p.a.x) * dx + (at.y - p.a.y) * dy) / square : 0.0;
    t = std::fmin(1.0, std::fmax(0.0, t));
    return {p.a.x + t * dx, p.a.y + t * dy, p.a.z + t * (p.b.z - p.a.z)};
}

struct snap {
    point3 at, best;
    double distance = HUGE_VAL;
    void offer(const point3& p)
    {
        const double d = std::hypot(p.x - at.x, p.y - at.y);
        if (d < distance) {
            distance = d;
            best = p;
        }
    }
};

void snap_end(const shape& s, snap& out)
{
    for (const piece& p : s.pieces)
        if (!p.full) {
            out.offer(p.a);
            out.offer(p.b);
        }
}

void snap_mid(const shape& s, snap& out)
{
    for (const piece& p : s.pieces) {
        if (p.full)
            continue;
        if (p.arc)
            out.offer(on_circle(p.arc->center, p.arc->radius,
                                p.arc->start + normal_angle(p.arc->end - p.arc->start) / 2));
        else
            out.offer({(p.a.x + p.b.x) / 2, (p.a.y + p.b.y) / 2, (p.a.z + p.b.z) / 2});
    }
}

void snap_cen(const shape& s, snap& out)
{
    for (const piece& p : s.pieces)
        if (p.arc)
            out.offer(p.arc->center);
}

void snap_qua(const shape& s, snap& out)
{
    for (const piece& p : s.pieces)
        for (int quarter = 0; p.arc && quarter < 4; ++quarter)
            if (on_arc(p, quarter * PI / 2))
                out.offer(on_circle(p.arc->center, p.arc->radius, quarter * PI / 2));
}

void snap_nea(const shape& s, snap& out)
{
    for (const piece& p : s.pieces)
        out.offer(nearest_on(p, out.at));
}

// Crossings of a line, as the points a + t (b - a), with a circle.
void cross_line_arc(const piece& line, const piece& round, snap& out)
{
    const point3& c = round.arc->center;
    const double dx = line.b.x - line.a.x, dy = line.b.y - line.a.y, fx = line.a.x - c.x, fy = line.a.y - c.y;
    const double a = dx * dx + dy * dy, b = 2 * (fx * dx + fy * dy);
    const double rest = b * b - 4 * a * (fx * fx + fy * fy - round.arc->radius * round.arc->radius);
    if (a == 0.0 || rest < 0.0)
        return;
    for (const double sign : {-1.0, 1.0}) {
        const double t = (-b + sign * std::sqrt(rest)) / (2 * a);
        const point3 p{line.a.x + t * dx, line.a.y + t * dy, line.a.z};
        if (t >= 0.0 && t <= 1.0 && on_arc(round, std::atan2(p.y - c.y, p.x - c.x)))
            out.offer(p);
    }
}

void cross_arcs(const piece& p, const piece& q, snap& out)
{
    const double dx = q.arc->center.x - p.arc->center.x, dy = q.arc->center.y - p.arc->center.y;
    const double d = std::hypot(dx, dy), r = p.arc->radius, s = q.arc->radius;
    if (d == 0.0 || d > r + s || d < std::abs(r - s))
        return;
    const double along = (d * d + r * r - s * s) / (2 * d),
                 off = std::sqrt(std::fmax(0.0, r * r - along * along));
    for (const double sign : {-1.0, 1.0}) {
        const point3 x{p.arc->center.x + (along * dx - sign * off * dy) / d,
                       p.arc->center.y + (along * dy + sign * off * dx) / d, p.arc->center.z};
        if (on_arc(p, std::atan2(x.y - p.arc->center.y, x.x - p.arc->center.x)) &&
            on_arc(q, std::atan2(x.y - q.arc->center.y, x.x - q.arc->center.x)))
            out.offer(x);
    }
}

void cross(const piece& p, const piece& q, snap& out)
{
    if (p.arc && q.arc)
        return cross_arcs(p, q, out);
    if (p.arc)
        return cross_line_arc(q, p, out);
    if (q.arc)
        return cross_line_arc(p, q, out);
    ads_point x;
    if (acdbInters(p.a.data(), p.b.data(), q.a.data(), q.b.data(), 1, x) == RTNORM)
        out.offer(point3::of(x));
}

struct snap_mode {
    std::string_view word; // the letters that must be there
    void (*find)(const shape&, snap&);
};

constexpr snap_mode MODES[] = {
    {"END", snap_end}, {"MID", snap_mid}, {"CEN", snap_cen}, {"QUA", snap_qua}, {"NEA", snap_nea},
};

void snap_places(const db::database& db, const std::vector<shape>& shapes, std::string_view type, int code,
                 snap& out)
{
    for (const shape& s : shapes)
        if (type.empty() ? db.is(s.id, "TEXT") || db.is(s.id, "MTEXT") || db.is(s.id, "INSERT")
                         : db.is(s.id, type))
            out.offer(point_of(db.at(s.id).groups, code));
}

bool snap_by_word(const db::database& db, const std::vector<shape>& shapes, std::string_view word, snap& out)
{
    if (word == "INT") {
        for (std::size_t i = 0; i < shapes.size(); ++i)
            for (std::size_t j = i; j < shapes.size(); ++j)
                for (const piece& p : shapes[i].pieces)
                    for (const piece& q : shapes[j].pieces)
                        if (&p != &q)
                            cross(p, q, out);
        return true;
    }
    if (word == "NOD" || word == "INS") {
        snap_places(db, shapes, word == "NOD" ? "POINT" : "", 10, out);
        return true;
    }
    for (const snap_mode& mode : MODES)
        if (mode.word == word) {
            for (const shape& s : shapes)
                mode.find(s, out);
            return true;
        }
    return word == "QUI" || word == "NON";
}

} // namespace

} // namespace host::commandline

using namespace host::commandline;
namespace db = host::db;

extern "C" int acedOsnap(const ads_point point, const char* modes, ads_point out)
{
    host::document& doc = host::current_document();
    db::database& data = db::database_of(doc);
    const double pixel = pick_reach(doc) / std::max(1, db::int_variable(doc, "PICKBOX"));
    const double reach = pixel * std::max(1, db::int_variable(doc, "APERTURE"));
    const screen_window window = screen_window::around(doc, point3::of(point), reach);
    std::vector<shape> shapes;
    for (const db::object_id id : db::near_window(data, data.current_space(), window.bounds()))
        if (is_visible(data, id) && window.crosses(data, id))
            shapes.push_back(shape_of(data, id));
    snap found{point3::of(point), {}};
    for (std::string_view word : split_commas(modes ? modes : "")) {
        word = host::trimmed(word);
        if (word.starts_with('_'))
            word.remove_prefix(1);
        if (!snap_by_word(data, shapes, host::upper(word.substr(0, 3)), found))
            return RTERROR;
    }
    if (found.distance == HUGE_VAL)
        return RTERROR;
    std::memcpy(out, found.best.data(), sizeof(ads_point));
    return RTNORM;
}
