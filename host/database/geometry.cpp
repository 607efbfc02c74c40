// Extents, outlines and the tests that selection asks for, over the paths of shapes.h.
//
// Extents and crossings with windows are exact for arcs: along an axis an arc is a cosine, whose highest
// places and crossings with a line are known. Polygons and fences are tested against chords.
#include "host/database/geometry.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "host/database/entities.h"
#include "host/database/shapes.h"

namespace host::db
{

void box::add(double x, double y, double z)
{
    const double at[3] = {x, y, z};
    for (int i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], at[i]);
        high[i] = std::max(high[i], at[i]);
    }
}

box box::empty()
{
    constexpr double far = std::numeric_limits<double>::infinity();
    return {{far, far, far}, {-far, -far, -far}};
}

namespace
{

constexpr double TURN = 2 * std::numbers::pi;

void add_point(box& to, const vec& p)
{
    to.add(p.x, p.y, p.z);
}

// Whether `angle`, give or take turns, lies on the arc; `on` gets the one that does.
bool on_arc(const arc_piece& piece, double angle, double& on)
{
    const double low = std::min(piece.start, piece.end), high = std::max(piece.start, piece.end);
    on = angle + TURN * std::ceil((low - angle) / TURN - 1e-12);
    return on <= high + 1e-12;
}

void add_arc(box& to, const arc_piece& piece)
{
    add_point(to, piece.at(piece.start));
    add_point(to, piece.at(piece.end));
    const double across[3][2] = {{piece.u.x, piece.v.x}, {piece.u.y, piece.v.y}, {piece.u.z, piece.v.z}};
    for (const auto& axis : across)
        for (const double top : {std::atan2(axis[1], axis[0]), std::atan2(-axis[1], -axis[0])}) {
            double on = 0;
            if (on_arc(piece, top, on))
                add_point(to, piece.at(on));
        }
}

// ---- sinks

struct extents_sink : shape_sink {
    box all = box::empty();
    void move(const vec& to) override { add_point(all, to); }
    void line(const vec& to) override { add_point(all, to); }
    void arc(const arc_piece& piece) override { add_arc(all, piece); }
};

// Straight runs; arcs by chords, `relative` times their radius off when it isn't 0, else `tolerance`.
struct outline_sink : shape_sink {
    std::vector<run> runs;
    std::vector<bool> areas;
    double tolerance;
    double relative;
    bool is_area = false;

    outline_sink(double off, double off_relative) : tolerance(off), relative(off_relative) {}
    void filled(bool on) override { is_area = on; }
    void move(const vec& to) override
    {
        runs.push_back({{to.x, to.y}});
        areas.push_back(is_area);
    }
    void line(const vec& to) override { runs.back().emplace_back(to.x, to.y); }
    void arc(const arc_piece& piece) override
    {
        const double off = relative > 0 ? relative * std::max(length(piece.u), length(piece.v)) : tolerance;
        const int count = chord_count(piece, off);
        for (int i = 1; i <= count; ++i) {
            const vec p = piece.at(piece.start + (piece.end - piece.start) * i / count);
            runs.back().emplace_back(p.x, p.y);
        }
    }
};

using point2 = std::pair<double, double>;

double distance_to_segment(const point2& p, const point2& a, const point2& b)
{
    const double dx = b.first - a.first, dy = b.second - a.second, size = dx * dx + dy * dy;
    const double t =
        size > 0 ? std::clamp(((p.first - a.first) * dx + (p.second - a.second) * dy) / size, 0.0, 1.0) : 0.0;
    return std::hypot(p.first - a.first - t * dx, p.second - a.second - t * dy);
}

// By the crossings of a ray to the right.
bool inside(const run& outline, double x, double y)
{
    bool in = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const auto& [ax, ay] = outline[i];
        const auto& [bx, by] = outline[j];
        if ((ay > y) != (by > y) && x < (bx - ax) * (y - ay) / (by - ay) + ax)
            in = !in;
    }
    return in;
}

// Circular arcs seen from above exactly, others by chords.
struct distance_sink : shape_sink {
    double x, y;
    double best = std::numeric_limits<double>::infinity();
    vec at{};
    bool is_area = false;
    run outline; // of the area at hand

    distance_sink(double px, double py) : x(px), y(py) {}
    void filled(bool on) override
    {
        end_area();
        is_area = on;
    }
    void end_area()
    {
        if (is_area && outline.size() > 2 && inside(outline, x, y))
            best = 0;
        outline.clear();
    }
    void move(const vec& to) override
    {
        end_area();
        at = to;
        best = std::min(best, std::hypot(x - to.x, y - to.y));
        outline.emplace_back(to.x, to.y);
    }
    void line(const vec& to) override
    {
        best = std::min(best, distance_to_segment({x, y}, {at.x, at.y}, {to.x, to.y}));
        at = to;
        outline.emplace_back(to.x, to.y);
    }
    void arc(const arc_piece& piece) override
    {
        const double ru = std::hypot(piece.u.x, piece.u.y), rv = std::hypot(piece.v.x, piece.v.y);
        const double skew = piece.u.x * piece.v.x + piece.u.y * piece.v.y;
        const bool round = std::fabs(ru - rv) <= 1e-9 * ru && std::fabs(skew) <= 1e-9 * ru * ru;
        if (round && ru > 0 && !is_area) {
            round_arc(piece, ru);
            at = piece.at(piece.end);
            return;
        }
        const int count = chord_count(piece, 1e-5 * std::max(length(piece.u), length(piece.v)));
        for (int i = 1; i <= count; ++i)
            line(piece.at(piece.start + (piece.end - piece.start) * i / count));
    }
    void round_arc(const arc_piece& piece, double radius)
    {
        const vec end = piece.at(piece.end);
        best = std::min({best, std::hypot(x - at.x, y - at.y), std::hypot(x - end.x, y - end.y)});
        const double dx = x - piece.centre.x, dy = y - piece.centre.y;
        // The parameter in whose direction the point lies, also when the arc is seen from below.
        const double t = std::atan2(dx * piece.v.x + dy * piece.v.y, dx * piece.u.x + dy * piece.u.y);
        double on = 0;
        if (on_arc(piece, t, on))
            best = std::min(best, std::fabs(std::hypot(dx, dy) - radius));
    }
};

// ---- windows

bool segment_meets_box(const point2& a, const point2& b, const box& window)
{
    double from = 0, to = 1;
    const double start[2] = {a.first, a.second}, step[2] = {b.first - a.first, b.second - a.second};
    for (int i = 0; i < 2; ++i) {
        if (step[i] == 0) {
            if (start[i] < window.low[i] || start[i] > window.high[i])
                return false;
            continue;
        }
        double enter = (window.low[i] - start[i]) / step[i], leave = (window.high[i] - start[i]) / step[i];
        if (enter > leave)
            std::swap(enter, leave);
        from = std::max(from, enter);
        to = std::min(to, leave);
        if (from > to)
            return false;
    }
    return true;
}

bool in_box(double x, double y, const box& window)
{
    return x >= window.low[0] && x <= window.high[0] && y >= window.low[1] && y <= window.high[1];
}

struct window_sink : shape_sink {
    const box& window;
    bool meets = false;
    vec at{};
    bool is_area = false;
    run outline;

    explicit window_sink(const box& of) : window(of) {}
    void filled(bool on) override
    {
        end_area();
        is_area = on;
    }
    void end_area()
    {
        // A window that lies within an area crosses none of its edges.
        if (is_area && outline.size() > 2)
            meets = meets || inside(outline, window.low[0], window.low[1]);
        outline.clear();
    }
    void move(const vec& to) override
    {
        end_area();
        at = to;
        meets = meets || in_box(to.x, to.y, window);
        outline.emplace_back(to.x, to.y);
    }
    void line(const vec& to) override
    {
        meets = meets || segment_meets_box({at.x, at.y}, {to.x, to.y}, window);
        at = to;
        outline.emplace_back(to.x, to.y);
    }
    void arc(const arc_piece& piece) override
    {
        const vec end = piece.at(piece.end);
        meets = meets || in_box(end.x, end.y, window) || crosses_edge(piece);
        if (is_area) {
            const int count = chord_count(piece, 1e-4 * std::max(length(piece.u), length(piece.v)));
            for (int i = 1; i <= count; ++i) {
                const vec p = piece.at(piece.start + (piece.end - piece.start) * i / count);
                outline.emplace_back(p.x, p.y);
            }
        }
        at = end;
    }
    bool crosses_edge(const arc_piece& piece) const
    {
        const double across[2][3] = {{piece.centre.x, piece.u.x, piece.v.x},
                                     {piece.centre.y, piece.u.y, piece.v.y}};
        for (int i = 0; i < 2; ++i)
            for (const double edge : {window.low[i], window.high[i]}) {
                const double size = std::hypot(across[i][1], across[i][2]);
                if (!(size > 0) || std::fabs(edge - across[i][0]) > size)
                    continue;
                const double top = std::atan2(across[i][2], across[i][1]);
                const double off = std::acos(std::clamp((edge - across[i][0]) / size, -1.0, 1.0));
                for (const double t : {top + off, top - off}) {
                    double on = 0;
                    if (!on_arc(piece, t, on))
                        continue;
                    const vec p = piece.at(on);
                    const double other = i == 0 ? p.y : p.x;
                    if (other >= window.low[1 - i] && other <= window.high[1 - i])
                        return true;
                }
            }
        return false;
    }
};

// ---- polygons

double side(const point2& a, const point2& b, const point2& p)
{
    return (b.first - a.first) * (p.second - a.second) - (b.second - a.second) * (p.first - a.first);
}

bool within(const point2& a, const point2& b, const point2& p)
{
    return p.first >= std::min(a.first, b.first) && p.first <= std::max(a.first, b.first) &&
           p.second >= std::min(a.second, b.second) && p.second <= std::max(a.second, b.second);
}

// Whether two segments share a point; touching counts.
bool segments_meet(const point2& a, const point2& b, const point2& c, const point2& d)
{
    const double sc = side(a, b, c), sd = side(a, b, d), sa = side(c, d, a), sb = side(c, d, b);
    if (((sc > 0 && sd < 0) || (sc < 0 && sd > 0)) && ((sa > 0 && sb < 0) || (sa < 0 && sb > 0)))
        return true;
    return (sc == 0 && within(a, b, c)) || (sd == 0 && within(a, b, d)) || (sa == 0 && within(c, d, a)) ||
           (sb == 0 && within(c, d, b));
}

constexpr double FINE = 1e-4; // of the radius, for chords

outline_sink fine_outline(const database& db, object_id id)
{
    outline_sink sink(0, FINE);
    trace_shape(db, id, sink);
    return sink;
}

bool runs_meet(const run& a, const run& b)
{
    if (a.size() == 1)
        for (std::size_t j = 1; j < b.size(); ++j)
            if (side(b[j - 1], b[j], a[0]) == 0 && within(b[j - 1], b[j], a[0]))
                return true;
    for (std::size_t i = 1; i < a.size(); ++i)
        for (std::size_t j = 1; j < b.size(); ++j)
            if (segments_meet(a[i - 1], a[i], b[j - 1], b[j]))
                return true;
    return false;
}

run closed(const run& polygon)
{
    run made = polygon;
    if (!made.empty() && made.front() != made.back())
        made.push_back(made.front());
    return made;
}

} // namespace

// ---- the header's functions

box extents_of(const database& db, object_id id)
{
    extents_sink sink;
    if (db.valid(id) && is_endless(db, id)) {
        // A line without an end would make the drawing's extents useless: its base point stands for it.
        if (const group* base = find(db.at(id).groups, 10))
            sink.all.add(base->point[0], base->point[1], base->point[2]);
        return sink.all;
    }
    trace_shape(db, id, sink);
    return sink.all;
}

static bool is_finite(const double (&place)[3])
{
    return std::all_of(place, place + 3, [](double value) { return std::isfinite(value); });
}

box space_extents(const database& db, object_id block_record)
{
    box all = box::empty();
    for (object_id at = first_entity(db, block_record); at; at = next_entity(db, at)) {
        const box one = extents_of(db, at);
        // What reaches farther than numbers go would leave the drawing without extents.
        const bool has_extent = !one.is_empty() && is_finite(one.low) && is_finite(one.high);
        if (!has_extent)
            continue;
        all.add(one.low[0], one.low[1], one.low[2]);
        all.add(one.high[0], one.high[1], one.high[2]);
    }
    return all;
}

namespace
{

class known_extents : public change_listener
{
public:
    explicit known_extents(database& db) : db_(db) { db_.add_listener(this); }
    known_extents(const known_extents&) = delete;
    known_extents& operator=(const known_extents&) = delete;
    ~known_extents() override { db_.remove_listener(this); }

    void object_changed(object_id, change_kind) override { space_ = 0; }
    box of(object_id space)
    {
        if (space_ != space || !space_) {
            extents_ = space_extents(db_, space);
            space_ = space;
        }
        return extents_;
    }

private:
    database& db_;
    object_id space_ = 0; // 0: to be worked out anew
    box extents_ = box::empty();
};

} // namespace

box known_space_extents(database& db, object_id block_record)
{
    return db.part<known_extents>().of(block_record);
}

std::vector<run> outline_of(const database& db, object_id id, double tolerance)
{
    outline_sink sink(tolerance, tolerance > 0 ? 0 : FINE);
    trace_shape(db, id, sink);
    return std::move(sink.runs);
}

double distance_to(const database& db, object_id id, double x, double y)
{
    distance_sink sink(x, y);
    trace_shape(db, id, sink);
    sink.end_area();
    return sink.best;
}

bool inside_window(const database& db, object_id id, const box& window)
{
    if (db.valid(id) && is_endless(db, id))
        return false;
    // A window drawn from end to end of an object holds it, whatever the last digit of a sine is.
    constexpr double SLACK = 1e-12;
    const box own = extents_of(db, id);
    for (int i = 0; i < 2; ++i) {
        const double slack = SLACK * (1 + std::max(std::fabs(window.low[i]), std::fabs(window.high[i])));
        if (own.low[i] < window.low[i] - slack || own.high[i] > window.high[i] + slack)
            return false;
    }
    return !own.is_empty();
}

bool crosses_window(const database& db, object_id id, const box& window)
{
    window_sink sink(window);
    trace_shape(db, id, sink);
    sink.end_area();
    return sink.meets;
}

bool inside_polygon(const database& db, object_id id, const run& polygon)
{
    const run edge = closed(polygon);
    const outline_sink outline = fine_outline(db, id);
    if (outline.runs.empty() || edge.size() < 4)
        return false;
    for (const run& each : outline.runs) {
        for (const auto& [x, y] : each)
            if (!inside(edge, x, y))
                return false;
        if (runs_meet(each, edge))
            return false;
    }
    return true;
}

bool crosses_polygon(const database& db, object_id id, const run& polygon)
{
    const run edge = closed(polygon);
    if (edge.size() < 4)
        return false;
    const outline_sink outline = fine_outline(db, id);
    for (std::size_t i = 0; i < outline.runs.size(); ++i) {
        const run& each = outline.runs[i];
        if (inside(edge, each[0].first, each[0].second) || runs_meet(each, edge))
            return true;
        if (outline.areas[i] && each.size() > 2 && inside(each, edge[0].first, edge[0].second))
            return true;
    }
    return false;
}

bool crosses_fence(const database& db, object_id id, const run& fence)
{
    const outline_sink outline = fine_outline(db, id);
    for (std::size_t i = 0; i < outline.runs.size(); ++i) {
        const run& each = outline.runs[i];
        if (runs_meet(each, fence))
            return true;
        if (outline.areas[i] && each.size() > 2 && !fence.empty() &&
            inside(each, fence[0].first, fence[0].second))
            return true;
    }
    return false;
}

} // namespace host::db
