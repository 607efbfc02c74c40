// A cut within a segment makes a vertex with what the segment has there: its width, which grows evenly along
// it, and of an arc the part of its bulge. A cut at a vertex is one at that vertex.
#include "host/database/cut_polyline.h"

#include <algorithm>
#include <cmath>

#include "host/database/entities.h"

namespace host::db
{

namespace
{

constexpr int CLOSED = 1, CURVE_FIT = 2, SPLINE_FIT = 4;                        // of a POLYLINE
constexpr int MADE_BY_FIT = 1, HAS_TANGENT = 2, MADE_BY_SPLINE = 8, FRAME = 16; // of a VERTEX
constexpr int SPACE = 8;                                                        // of a POLYLINE

vec point_of(const group_list& groups, int code)
{
    const group* found = find(groups, code);
    return found ? vec{found->point[0], found->point[1], found->dimensions == 3 ? found->point[2] : 0} : vec{};
}

std::vector<object_id> drawn_children(const database& db, object_id id)
{
    std::vector<object_id> out;
    for (object_id child = first_child(db, id); child; child = next_child(db, child))
        if (!(int_of(db.at(child).groups, 70, 0) & FRAME))
            out.push_back(child);
    return out;
}

double blend(double a, double b, double part)
{
    return a + (b - a) * part;
}

vec on_segment(const cut_vertex& from, const cut_vertex& to, double part)
{
    if (part == 0 || part == 1)
        return part == 0 ? from.at : to.at;
    const vec chord = to.at - from.at;
    const double b = from.bulge;
    if (b == 0)
        return from.at + chord * part;
    // Seen from the start, an arc's point stands off the chord's direction by half of the angle still to come.
    const double half = 2 * std::atan(b), turn = half * (part - 1),
                 size = std::sin(half * part) / std::sin(half);
    const double c = std::cos(turn), s = std::sin(turn);
    return from.at +
           vec{(chord.x * c - chord.y * s) * size, (chord.x * s + chord.y * c) * size, chord.z * part};
}

double part_of_bulge(double bulge, double from, double to)
{
    return bulge == 0 || (from == 0 && to == 1) ? bulge : std::tan((to - from) * std::atan(bulge));
}

// Cuts that lie at the end of a piece go to the next one's start (or, of an end, the other way).
curve_stretch settled(const plan_curve& curve, curve_stretch s)
{
    const double tolerance = place_tolerance(curve);
    const std::size_t count = curve.pieces.size();
    if (s.from.part * curve.pieces[s.from.piece].size <= tolerance)
        s.from.part = 0;
    if ((1 - s.to.part) * curve.pieces[s.to.piece].size <= tolerance)
        s.to.part = 1;
    const bool from_next = (1 - s.from.part) * curve.pieces[s.from.piece].size <= tolerance;
    if (from_next && (curve.is_closed || s.from.piece + 1 < count))
        s.from = {(s.from.piece + 1) % count, 0};
    const bool to_last = s.to.part * curve.pieces[s.to.piece].size <= tolerance;
    if (to_last && (curve.is_closed || s.to.piece > 0))
        s.to = {(s.to.piece + count - 1) % count, 1};
    return s;
}

} // namespace

void set_group(group_list& groups, const group& value)
{
    if (group* there = find(groups, value.code)) {
        *there = value;
        return;
    }
    groups.insert(std::find_if(groups.begin(), groups.end(), [](const group& g) { return g.code >= 1000; }),
                  value);
}

std::vector<cut_vertex> vertices_of(const database& db, object_id id)
{
    std::vector<cut_vertex> out;
    const group_list& groups = db.at(id).groups;
    if (db.is(id, "LWPOLYLINE")) {
        const double width = real_of(groups, 43, 0);
        for (const group& each : groups) {
            if (each.code == 10 && each.kind == group_kind::point)
                out.push_back({{each.point[0], each.point[1], 0}, {width, width}, 0, out.size()});
            else if ((each.code == 40 || each.code == 41) && !out.empty())
                out.back().width[each.code - 40] = each.real;
            else if (each.code == 42 && !out.empty())
                out.back().bulge = each.real;
        }
        return out;
    }
    const bool is_flat = !(int_of(groups, 70, 0) & SPACE);
    const double widths[2] = {real_of(groups, 40, 0), real_of(groups, 41, 0)};
    for (const object_id child : drawn_children(db, id)) {
        const group_list& own = db.at(child).groups;
        out.push_back({point_of(own, 10),
                       {real_of(own, 40, widths[0]), real_of(own, 41, widths[1])},
                       is_flat ? real_of(own, 42, 0) : 0,
                       out.size()});
    }
    return out;
}

std::vector<cut_vertex> vertices_of_stretch(const plan_curve& curve, const std::vector<cut_vertex>& whole,
                                            const curve_stretch& kept)
{
    const curve_stretch s = settled(curve, kept);
    const std::size_t first = curve.pieces[s.from.piece].segment, last = curve.pieces[s.to.piece].segment;
    const bool over_seam = curve.is_closed && curve.along(s.to) <= curve.along(s.from);
    const std::size_t count = whole.size();
    const std::size_t steps = over_seam ? last + count - first : last - first;
    std::vector<cut_vertex> out;
    for (std::size_t i = 0; i <= steps; ++i) {
        const std::size_t segment = (first + i) % count;
        const cut_vertex &from = whole[segment], &to = whole[(segment + 1) % count];
        if (segment + 1 == count && i > 0 && i < steps && length(to.at - from.at) == 0)
            continue; // a closing segment without a length
        const double low = i == 0 ? s.from.part : 0, high = i == steps ? s.to.part : 1;
        cut_vertex made = from;
        made.at = on_segment(from, to, low);
        made.is_new = low > 0;
        made.width[0] = blend(from.width[0], from.width[1], low);
        made.width[1] = blend(from.width[0], from.width[1], high);
        made.bulge = part_of_bulge(from.bulge, low, high);
        out.push_back(made);
    }
    const cut_vertex &from = whole[last], &to = whole[(last + 1) % count];
    cut_vertex end = to;
    end.at = on_segment(from, to, s.to.part);
    end.is_new = s.to.part < 1;
    const bool is_own_end = !end.is_new && !curve.is_closed && last + 2 == count;
    if (!is_own_end) {
        end.bulge = 0;
        end.width[0] = end.width[1] = out.back().width[1];
    }
    out.push_back(end);
    return out;
}

cut_lists lightweight_lists(const database& db, object_id id, const std::vector<cut_vertex>& vertices)
{
    const group_list& old = db.at(id).groups;
    std::vector<const group*> identifiers; // of the old vertices
    cut_lists out;
    std::size_t place = 0;
    bool in_vertices = false;
    for (const group& each : old) {
        if (each.code == 10 && each.kind == group_kind::point) {
            place = in_vertices ? place : out.main.size();
            in_vertices = true;
            identifiers.push_back(nullptr);
        } else if (in_vertices && each.code == 91) {
            identifiers.back() = &each;
        } else if (each.code != 43 && !(in_vertices && each.code >= 40 && each.code <= 42)) {
            out.main.push_back(each);
        }
    }
    group_list rows;
    for (const cut_vertex& each : vertices) {
        rows.push_back(point_group(10, each.at.x, each.at.y));
        rows.push_back(real_group(40, each.width[0]));
        rows.push_back(real_group(41, each.width[1]));
        rows.push_back(real_group(42, each.bulge));
        if (!each.is_new && identifiers[each.source])
            rows.push_back(*identifiers[each.source]);
    }
    out.main.insert(out.main.begin() + static_cast<std::ptrdiff_t>(place), rows.begin(), rows.end());
    set_group(out.main, int_group(70, int_of(old, 70, 0) & ~CLOSED));
    return out;
}

cut_lists polyline_lists(const database& db, object_id id, const std::vector<cut_vertex>& vertices)
{
    cut_lists out{db.at(id).groups, {}};
    const std::int64_t flags = int_of(out.main, 70, 0);
    set_group(out.main, int_group(70, flags & ~(CLOSED | CURVE_FIT | SPLINE_FIT)));
    if (find(out.main, 75))
        set_group(out.main, int_group(75, 0));
    const std::vector<object_id> children = drawn_children(db, id);
    for (const cut_vertex& each : vertices) {
        group_list own = db.at(children[each.source]).groups;
        set_group(own, point_group(10, each.at.x, each.at.y, each.at.z));
        if (!(flags & SPACE)) {
            set_group(own, real_group(40, each.width[0]));
            set_group(own, real_group(41, each.width[1]));
            set_group(own, real_group(42, each.bulge));
        }
        const std::int64_t kind = int_of(own, 70, 0);
        set_group(own, int_group(70, kind & ~(MADE_BY_FIT | HAS_TANGENT | MADE_BY_SPLINE)));
        out.children.push_back(std::move(own));
    }
    return out;
}

} // namespace host::db
