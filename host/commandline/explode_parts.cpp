// explode_parts.cpp: block references, polylines, meshes and dimensions in their parts.
//
// What can't be its kind any more under a reference's map becomes another: circles and arcs become ellipses,
// polylines with arcs fall into their segments, references that would stand aslant into their contents. Where
// there is no such way (a hatch under unequal scales) the reference stays whole: half of it would be a loss.
#include "host/commandline/explode_parts.h"

#include <algorithm>
#include <numbers>

#include "host/commandline/arc_shapes.h"
#include "host/database/entities.h"
#include "host/database/kinds.h"

namespace host::commandline
{

namespace
{

constexpr int DEEPEST = 32; // references in references

db::group point_group(int code, const point3& p)
{
    return db::point_group(code, p.x, p.y, p.z);
}

point3 point_in(const db::group_list& groups, int code)
{
    const db::group* g = db::find(groups, code);
    return g ? point3{g->point[0], g->point[1], g->dimensions == 3 ? g->point[2] : 0.0} : point3{};
}

bool is_level(const point3& normal)
{
    return normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0;
}

// A part with the layer, colour and other common groups of the whole.
db::group_list begin_part(const db::database& db, std::string_view type, const db::group_list& whole)
{
    db::group_list out{db.text_group(0, type)};
    for (const db::group& g : whole)
        if (g.code < 1000 && db::is_common_code(g.code))
            out.push_back(g);
    return out;
}

// What is being taken apart, and what came of it so far.
struct work {
    const db::database& db;
    std::size_t left; // objects that may still be looked at or made
    explosion out{};
    int depth = 0;

    bool refuse(std::string why)
    {
        out.parts.clear();
        out.refusal = std::move(why);
        return false;
    }
    bool count()
    {
        if (left == 0)
            return refuse("it has too many parts");
        --left;
        return true;
    }
    bool add(part made)
    {
        if (!count())
            return false;
        out.parts.push_back(std::move(made));
        return true;
    }
    bool add(db::group_list groups)
    {
        part made;
        made.groups = std::move(groups);
        return add(std::move(made));
    }
};

std::string named(std::string_view type)
{
    const bool vowel = !type.empty() && std::string_view("AEIO").find(type.front()) != std::string_view::npos;
    return (vowel ? "an " : "a ") + std::string(type);
}

// ---- polylines

struct corner {
    point3 at; // of the polyline's plane; of the world for one in space
    double bulge = 0.0;
};

struct segments {
    const db::group_list& groups; // of the polyline
    std::vector<corner> corners;
    bool closed = false, in_space = false;
};

db::group_list line_of(const work& to, const segments& of, const plane_axes& plane, const point3& a,
                       const point3& b)
{
    db::group_list line = begin_part(to.db, "LINE", of.groups);
    if (const db::group* thickness = db::find(of.groups, 39); thickness && !of.in_space)
        line.push_back(*thickness);
    line.push_back(point_group(10, of.in_space ? a : plane.to_world(a)));
    line.push_back(point_group(11, of.in_space ? b : plane.to_world(b)));
    if (!of.in_space && !is_level(plane.z))
        line.push_back(point_group(210, plane.z));
    return line;
}

db::group_list arc_of(const work& to, const segments& of, const plane_axes& plane, const arc_shape& shape,
                      double height)
{
    db::group_list arc = begin_part(to.db, "ARC", of.groups);
    if (const db::group* thickness = db::find(of.groups, 39))
        arc.push_back(*thickness);
    arc.push_back(point_group(10, {shape.center.x, shape.center.y, height}));
    arc.push_back(db::real_group(40, shape.radius));
    arc.push_back(db::real_group(50, shape.start));
    arc.push_back(db::real_group(51, shape.end));
    if (!is_level(plane.z))
        arc.push_back(point_group(210, plane.z));
    return arc;
}

bool add_segments(work& to, const segments& of)
{
    const std::size_t count = of.corners.size();
    if (count < 2)
        return to.refuse("a polyline of one vertex has no parts");
    const plane_axes plane = axes_of(normal_of(of.groups));
    for (std::size_t i = 0; i < (of.closed ? count : count - 1); ++i) {
        const corner& a = of.corners[i];
        const point3& b = of.corners[(i + 1) % count].at;
        const auto shape = of.in_space ? std::nullopt : arc_of_bulge(a.at, b, a.bulge);
        if (!to.add(shape ? arc_of(to, of, plane, *shape, a.at.z) : line_of(to, of, plane, a.at, b)))
            return false;
    }
    return true;
}

bool has_width(const db::group_list& groups)
{
    return std::any_of(groups.begin(), groups.end(), [](const db::group& g) {
        return (g.code == 40 || g.code == 41 || g.code == 43) && g.real != 0.0;
    });
}

bool explode_lightweight(work& to, const whole_object& of)
{
    segments parts{of.groups, {}};
    parts.closed = db::int_of(of.groups, 70, 0) & 1;
    const double height = db::real_of(of.groups, 38, 0.0);
    for (const db::group& g : of.groups) {
        if (g.code == 10)
            parts.corners.push_back({{g.point[0], g.point[1], height}, 0.0});
        else if (g.code == 42 && !parts.corners.empty())
            parts.corners.back().bulge = g.real;
    }
    to.out.loses_width = to.out.loses_width || has_width(of.groups);
    return add_segments(to, parts);
}

// ---- meshes

bool add_face(work& to, const whole_object& of, const point3 (&corners)[4], std::int64_t hidden)
{
    db::group_list face = begin_part(to.db, "3DFACE", of.groups);
    for (int i = 0; i < 4; ++i)
        face.push_back(point_group(10 + i, corners[i]));
    face.push_back(db::int_group(70, hidden));
    return to.add(std::move(face));
}

bool explode_mesh(work& to, const whole_object& of)
{
    // A smoothed mesh shows the vertices that were put between those of its frame.
    const std::int64_t flags = db::int_of(of.groups, 70, 0);
    const bool smooth = db::int_of(of.groups, 75, 0) != 0;
    const auto rows =
        static_cast<std::size_t>(std::max<std::int64_t>(db::int_of(of.groups, smooth ? 73 : 71, 0), 0));
    const auto columns =
        static_cast<std::size_t>(std::max<std::int64_t>(db::int_of(of.groups, smooth ? 74 : 72, 0), 0));
    std::vector<point3> at;
    for (const db::group_list& vertex : of.children)
        if (!smooth || !(db::int_of(vertex, 70, 0) & 16))
            at.push_back(point_in(vertex, 10));
    if (rows < 2 || columns < 2 || at.size() / columns < rows)
        return to.refuse("a mesh without faces has no parts");
    const std::size_t last_row = flags & 1 ? rows : rows - 1, last_column = flags & 32 ? columns : columns - 1;
    for (std::size_t i = 0; i < last_row; ++i)
        for (std::size_t j = 0; j < last_column; ++j) {
            const std::size_t row = i * columns, next = (i + 1) % rows * columns, k = (j + 1) % columns;
            const point3 corners[4] = {at[row + j], at[row + k], at[next + k], at[next + j]};
            if (!add_face(to, of, corners, 0))
                return false;
        }
    return true;
}

// Faces name their corners by number, 1 the first; a negative one begins an edge that isn't seen. With two
// corners they are lines, with one points.
bool explode_face_mesh(work& to, const whole_object& of)
{
    std::vector<point3> at;
    for (const db::group_list& vertex : of.children)
        if (db::int_of(vertex, 70, 0) & 64)
            at.push_back(point_in(vertex, 10));
    for (const db::group_list& face : of.children) {
        if (db::int_of(face, 70, 0) & 64)
            continue;
        std::vector<point3> corners;
        std::int64_t hidden = 0;
        for (int code = 71; code <= 74; ++code) {
            const std::int64_t index = db::int_of(face, code, 0);
            const auto number = static_cast<std::size_t>(std::abs(index));
            if (number == 0 || number > at.size())
                continue;
            if (index < 0)
                hidden |= std::int64_t{1} << corners.size();
            corners.push_back(at[number - 1]);
        }
        db::group_list made = begin_part(to.db, corners.size() == 1 ? "POINT" : "LINE", face);
        bool added = true;
        if (corners.size() >= 3) {
            const point3 four[4] = {corners[0], corners[1], corners[2], corners.back()};
            whole_object one;
            one.groups = face;
            added = add_face(to, one, four, hidden);
        } else if (!corners.empty()) {
            for (std::size_t i = 0; i < corners.size(); ++i)
                made.push_back(point_group(10 + static_cast<int>(i), corners[i]));
            added = to.add(std::move(made));
        }
        if (!added)
            return false;
    }
    return !to.out.parts.empty() || to.refuse("a mesh without faces has no parts");
}

bool explode_polyline(work& to, const whole_object& of)
{
    const std::int64_t flags = db::int_of(of.groups, 70, 0);
    if (flags & 64)
        return explode_face_mesh(to, of);
    if (flags & 16)
        return explode_mesh(to, of);
    segments parts{of.groups, {}};
    parts.closed = flags & 1;
    parts.in_space = flags & 8;
    const double height = point_in(of.groups, 10).z;
    for (const db::group_list& vertex : of.children) {
        if (db::int_of(vertex, 70, 0) & 16)
            continue; // of a curve's frame
        point3 at = point_in(vertex, 10);
        at.z = parts.in_space ? at.z : height;
        parts.corners.push_back({at, db::real_of(vertex, 42, 0.0)});
        to.out.loses_width = to.out.loses_width || (!parts.in_space && has_width(vertex));
    }
    return add_segments(to, parts);
}

// ---- contents of blocks

bool add_contents(work& to, db::object_id block, const mapping& map);

// A circle or an arc written as an ellipse, which it then may become.
db::group_list as_ellipse(const work& to, const db::group_list& groups)
{
    const plane_axes plane = axes_of(normal_of(groups));
    const double radius = db::real_of(groups, 40, 0.0);
    const bool is_arc = to.db.text_of(groups, 0) == "ARC";
    const double start = is_arc ? normal_angle(db::real_of(groups, 50, 0.0)) : 0.0;
    double end = is_arc ? normal_angle(db::real_of(groups, 51, 0.0)) : 2 * std::numbers::pi;
    if (end <= start)
        end += 2 * std::numbers::pi;
    db::group_list out = begin_part(to.db, "ELLIPSE", groups);
    out.push_back(point_group(10, plane.to_world(point_in(groups, 10))));
    out.push_back(point_group(11, {plane.x.x * radius, plane.x.y * radius, plane.x.z * radius}));
    out.push_back(point_group(210, plane.z));
    out.push_back(db::real_group(40, 1.0));
    out.push_back(db::real_group(41, start));
    out.push_back(db::real_group(42, end));
    return out;
}

bool add_mapped(work& to, part source, const mapping& map);

// What can't be mapped as it is, in another form.
bool add_replaced(work& to, const part& source, const mapping& map)
{
    const std::string_view type = to.db.text_of(source.groups, 0);
    if (type == "CIRCLE" || type == "ARC") {
        part ellipse;
        ellipse.groups = as_ellipse(to, source.groups);
        return add_mapped(to, std::move(ellipse), map);
    }
    if (type == "LWPOLYLINE" || type == "POLYLINE") {
        work inner{to.db, to.left, {}, to.depth};
        if (!(type == "POLYLINE" ? explode_polyline(inner, source) : explode_lightweight(inner, source)))
            return to.refuse(inner.out.refusal);
        to.left = inner.left;
        to.out.loses_width = to.out.loses_width || inner.out.loses_width;
        for (part& each : inner.out.parts)
            if (!add_mapped(to, std::move(each), map))
                return false;
        return true;
    }
    const std::optional<mapping> inner = type == "INSERT" ? insert_mapping(to.db, source.groups) : std::nullopt;
    const bool is_array = db::int_of(source.groups, 70, 1) > 1 || db::int_of(source.groups, 71, 1) > 1;
    if (!inner || is_array)
        return to.refuse("its block holds " + named(type) + " that can't be drawn at its scales");
    const mapping both = map.after(*inner);
    if (both.determinant() == 0.0)
        return to.refuse("a scale of a reference in its block is zero");
    return add_contents(to, to.db.record("BLOCK_RECORD", to.db.text_of(source.groups, 2)), both);
}

// The picture of a dimension lies in the block of its name, in the dimension's own coordinates, and is moved by
// 12. The mapped one gets a block of its own, with that move in it.
bool map_picture(work& to, part& dimension, const mapping& map)
{
    const db::object_id block = to.db.record("BLOCK_RECORD", to.db.text_of(dimension.groups, 2));
    if (!block)
        return true;
    const point3 by = axes_of(normal_of(dimension.groups)).to_world(point_in(dimension.groups, 12));
    work picture{to.db, to.left, {}, to.depth};
    if (!add_contents(picture, block, map.after(mapping::moved(by.x, by.y, by.z))))
        return to.refuse(picture.out.refusal);
    to.left = picture.left;
    dimension.picture = std::move(picture.out.parts);
    std::erase_if(dimension.groups, [](const db::group& g) { return g.code == 12; });
    return true;
}

bool add_mapped(work& to, part source, const mapping& map)
{
    if (!keeps_kind(to.db, source, map))
        return add_replaced(to, source, map);
    if (to.db.text_of(source.groups, 0) == "DIMENSION" && !map_picture(to, source, map))
        return false;
    map_object(to.db, source, map);
    return to.add(std::move(source));
}

bool add_contents(work& to, db::object_id block, const mapping& map)
{
    if (to.depth >= DEEPEST)
        return to.refuse("its block holds itself");
    ++to.depth;
    for (db::object_id id = db::first_entity(to.db, block); id; id = db::next_entity(to.db, id)) {
        if (!to.count()) // empty blocks in blocks make no parts, but take their time
            return false;
        part copy;
        static_cast<whole_object&>(copy) = whole_object_of(to.db, id);
        copy.from = id;
        if (!add_mapped(to, std::move(copy), map))
            return false;
    }
    --to.depth;
    return true;
}

bool have_one_size(const db::group_list& groups)
{
    const double x = std::abs(db::real_of(groups, 41, 1.0)), y = std::abs(db::real_of(groups, 42, 1.0)),
                 z = std::abs(db::real_of(groups, 43, 1.0));
    return x == y && y == z;
}

bool explode_insert(work& to, const whole_object& of, bool unequal)
{
    constexpr std::int64_t EXTERNAL = 4;
    const std::string name(to.db.text_of(of.groups, 2));
    const db::object_id block = to.db.record("BLOCK_RECORD", name);
    if (!block)
        return to.refuse("there is no block " + name);
    if (db::int_of(of.groups, 70, 1) > 1 || db::int_of(of.groups, 71, 1) > 1)
        return to.refuse("it was minserted");
    const db::object_id begin = to.db.at(block).first;
    if (begin && db::int_of(to.db.at(begin).groups, 70, 0) & EXTERNAL)
        return to.refuse("block " + name + " is an external reference");
    if (!unequal && !have_one_size(of.groups))
        return to.refuse("its scales differ, and EXPLMODE is 0");
    const mapping map = *insert_mapping(to.db, of.groups);
    if (map.determinant() == 0.0)
        return to.refuse("a scale of it is zero");
    if (!std::isfinite(map.determinant()))
        return to.refuse("its scales are too large");
    return add_contents(to, block, map);
}

// What is seen of a dimension. Its block is drawn on layer 0, which means the dimension's own.
bool explode_dimension(work& to, const whole_object& of)
{
    const db::object_id block = to.db.record("BLOCK_RECORD", to.db.text_of(of.groups, 2));
    if (!block)
        return to.refuse("a DIMENSION without a picture has no parts");
    const point3 by = axes_of(normal_of(of.groups)).to_world(point_in(of.groups, 12));
    if (!add_contents(to, block, mapping::moved(by.x, by.y, by.z)))
        return false;
    const db::group* layer = db::find(of.groups, 8);
    for (part& each : to.out.parts)
        if (db::group* own = db::find(each.groups, 8); layer && own && to.db.text(own->text) == "0")
            *own = *layer;
    return true;
}

} // namespace

explosion explode_object(const db::database& db, db::object_id id, bool unequal, std::size_t most)
{
    work to{db, most};
    const whole_object of = whole_object_of(db, id);
    const std::string_view type = db.type_of(id);
    if (type == "INSERT")
        explode_insert(to, of, unequal);
    else if (type == "LWPOLYLINE")
        explode_lightweight(to, of);
    else if (type == "POLYLINE")
        explode_polyline(to, of);
    else if (type == "DIMENSION")
        explode_dimension(to, of);
    else
        to.refuse(named(type) + " is not taken apart");
    return std::move(to.out);
}

} // namespace host::commandline
