// transform.cpp: what a shape-keeping map does to the groups of each kind of object. A table says which
// groups are places, directions, lengths and angles; the rest is one walk over the groups. Coordinates of
// plane objects go through world coordinates into the plane of the new extrusion direction.
#include "host/commandline/transform.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "host/database/entities.h"
#include "host/database/transform.h"

namespace host::commandline
{

namespace
{

double dot(const point3& a, const point3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

point3 unit(const point3& v)
{
    const double length = std::sqrt(dot(v, v));
    return length > 0.0 ? point3{v.x / length, v.y / length, v.z / length} : point3{0, 0, 1};
}

using codes = std::vector<int>;

struct shape_rule {
    std::string_view type;
    codes world_points, plane_points, directions, lengths, angles;
};

const std::vector<shape_rule>& shape_rules()
{
    static const std::vector<shape_rule> rules = {
        {"LINE", {10, 11}, {}, {}, {39}, {}},
        {"POINT", {10}, {}, {}, {39}, {50}},
        {"3DFACE", {10, 11, 12, 13}, {}, {}, {}, {}},
        {"SPLINE", {10, 11}, {}, {12, 13}, {}, {}},
        {"ELLIPSE", {10}, {}, {11}, {}, {}},
        {"MTEXT", {10}, {}, {11}, {40, 41, 42, 43}, {50}},
        {"RAY", {10}, {}, {11}, {}, {}},
        {"XLINE", {10}, {}, {11}, {}, {}},
        {"LEADER", {10}, {}, {211}, {}, {}},
        {"IMAGE", {10}, {}, {11, 12}, {}, {}},
        {"VIEWPORT", {10}, {}, {}, {40, 41}, {}},
        {"DIMENSION", {10, 13, 14, 15, 16}, {11, 12}, {}, {}, {50, 53}},
        {"CIRCLE", {}, {10}, {}, {39, 40}, {}},
        {"ARC", {}, {10}, {}, {39, 40}, {50, 51}},
        {"TEXT", {}, {10, 11}, {}, {39, 40}, {50}},
        {"ATTRIB", {}, {10, 11}, {}, {39, 40}, {50}},
        {"ATTDEF", {}, {10, 11}, {}, {39, 40}, {50}},
        {"SHAPE", {}, {10}, {}, {39, 40}, {50}},
        {"INSERT", {}, {10}, {}, {41, 42, 43, 44, 45}, {50}},
        {"LWPOLYLINE", {}, {10}, {}, {39, 40, 41, 43}, {}},
        {"VERTEX", {}, {10}, {}, {40, 41}, {50}},
        {"POLYLINE", {}, {}, {}, {39, 40, 41}, {}},
        {"SOLID", {}, {10, 11, 12, 13}, {}, {39}, {}},
        {"TRACE", {}, {10, 11, 12, 13}, {}, {39}, {}},
        {"HATCH", {}, {10, 11}, {}, {41}, {52}},
    };
    return rules;
}

const shape_rule* rule_of(std::string_view type)
{
    for (const shape_rule& rule : shape_rules())
        if (rule.type == type)
            return &rule;
    return nullptr;
}

bool has(const codes& list, int code)
{
    return std::find(list.begin(), list.end(), code) != list.end();
}

point3 extrusion_of(const db::group_list& groups)
{
    const db::group* g = db::find(groups, 210);
    return g ? point3{g->point[0], g->point[1], g->point[2]} : point3{0, 0, 1};
}

bool is_vertical(const point3& z)
{
    return std::abs(z.x) < 1e-12 && std::abs(z.y) < 1e-12 && z.z > 0.0;
}

// One object under a map: its old plane, its new plane, and the map between them.
struct plane_change {
    const mapping& map;
    plane_axes from, to;
    bool flips;

    plane_change(const mapping& m, const point3& extrusion)
        : map(m), from(axes_of(extrusion)), to(axes_of(unit(m.direction(from.z)))), flips(m.determinant() < 0.0)
    {
    }
    point3 place(const point3& p) const { return to.to_plane(map.apply(from.to_world(p))); }
    double turn(double angle) const
    {
        const point3 v = to.to_plane(map.direction(from.to_world({std::cos(angle), std::sin(angle), 0.0})));
        return normal_angle(std::atan2(v.y, v.x));
    }
};

void set_point(db::group& g, const point3& p)
{
    g.point[0] = p.x;
    g.point[1] = p.y;
    if (g.dimensions == 3)
        g.point[2] = p.z;
}

point3 point_of(const db::group& g)
{
    return {g.point[0], g.point[1], g.dimensions == 3 ? g.point[2] : 0.0};
}

bool is_space_polyline(const db::group_list& groups)
{
    return (db::int_of(groups, 70, 0) & (8 | 16 | 64)) != 0;
}

void transform_groups(db::group_list& groups, const shape_rule& rule, const plane_change& plane, bool in_space)
{
    const double elevation = db::real_of(groups, 38, 0.0);
    const double scale = plane.map.scale();
    double new_elevation = elevation;
    bool is_first_hatch_point = rule.type == "HATCH";
    for (db::group& g : groups) {
        if (g.code >= 1000)
            break;
        if (has(rule.world_points, g.code) || (in_space && has(rule.plane_points, g.code))) {
            set_point(g, plane.map.apply(point_of(g)));
        } else if (has(rule.plane_points, g.code)) {
            if (is_first_hatch_point) { // its elevation
                g.point[2] = plane.place({0, 0, g.point[2]}).z;
                is_first_hatch_point = false;
                continue;
            }
            point3 p = point_of(g);
            if (rule.type == "LWPOLYLINE")
                p.z = elevation;
            p = plane.place(p);
            new_elevation = p.z;
            set_point(g, p);
        } else if (has(rule.directions, g.code)) {
            set_point(g, plane.map.direction(point_of(g)));
        } else if (has(rule.lengths, g.code)) {
            g.real *= scale;
        } else if (has(rule.angles, g.code)) {
            g.real = plane.turn(g.real);
        } else if (g.code == 42 && plane.flips && (rule.type == "LWPOLYLINE" || rule.type == "VERTEX")) {
            g.real = -g.real;
        } else if (g.code == 210) {
            set_point(g, plane.to.z);
        }
    }
    if (rule.type == "LWPOLYLINE" && new_elevation != elevation) {
        if (db::group* g = db::find(groups, 38))
            g->real = new_elevation;
        else
            groups.insert(
                std::find_if(groups.begin(), groups.end(), [](const db::group& x) { return x.code == 10; }),
                db::real_group(38, new_elevation));
    }
}

// What a single walk over the groups cannot do.
void finish_groups(db::group_list& groups, const shape_rule& rule, const plane_change& plane)
{
    if (rule.type == "ARC" && plane.flips)
        if (db::group* start = db::find(groups, 50), *end = db::find(groups, 51); start && end)
            std::swap(start->real, end->real);
    if (rule.type == "POLYLINE" && !is_space_polyline(groups))
        if (db::group* g = db::find(groups, 10))
            g->point[2] = plane.place({0, 0, g->point[2]}).z;
    if (!is_vertical(plane.to.z) && !db::find(groups, 210)) {
        const auto end =
            std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code >= 1000; });
        groups.insert(end, db::point_group(210, plane.to.z.x, plane.to.z.y, plane.to.z.z));
    }
}

bool lies_in_space(const db::database& db, db::object_id id)
{
    if (db.is(id, "POLYLINE"))
        return is_space_polyline(db.at(id).groups);
    return db.is(id, "VERTEX") && db.at(id).owner && is_space_polyline(db.at(db.at(id).owner).groups);
}

} // namespace

mapping mapping::moved(double dx, double dy, double dz)
{
    mapping out;
    out.t[0] = dx;
    out.t[1] = dy;
    out.t[2] = dz;
    return out;
}

mapping mapping::turned(const point3& about, double angle)
{
    mapping out;
    const double c = std::cos(angle), s = std::sin(angle);
    out.m[0][0] = c;
    out.m[0][1] = -s;
    out.m[1][0] = s;
    out.m[1][1] = c;
    out.t[0] = about.x - c * about.x + s * about.y;
    out.t[1] = about.y - s * about.x - c * about.y;
    return out;
}

mapping mapping::scaled(const point3& about, double factor)
{
    mapping out;
    const double center[3] = {about.x, about.y, about.z};
    for (int i = 0; i < 3; ++i) {
        out.m[i][i] = factor;
        out.t[i] = center[i] * (1.0 - factor);
    }
    return out;
}

point3 mapping::direction(const point3& v) const
{
    return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z, m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z,
            m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z};
}

point3 mapping::apply(const point3& p) const
{
    const point3 v = direction(p);
    return {v.x + t[0], v.y + t[1], v.z + t[2]};
}

mapping mapping::after(const mapping& first) const
{
    mapping out;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out.m[i][j] = m[i][0] * first.m[0][j] + m[i][1] * first.m[1][j] + m[i][2] * first.m[2][j];
    const point3 moved_to = apply({first.t[0], first.t[1], first.t[2]});
    out.t[0] = moved_to.x;
    out.t[1] = moved_to.y;
    out.t[2] = moved_to.z;
    return out;
}

double mapping::determinant() const
{
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

double mapping::scale() const
{
    return std::cbrt(std::abs(determinant()));
}

mapping mapping::inverse() const
{
    const double d = determinant();
    mapping out;
    if (d == 0.0)
        return out;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const int a = (j + 1) % 3, b = (j + 2) % 3, c = (i + 1) % 3, e = (i + 2) % 3;
            out.m[i][j] = (m[a][c] * m[b][e] - m[a][e] * m[b][c]) / d;
        }
    const point3 back = out.direction({t[0], t[1], t[2]});
    out.t[0] = -back.x;
    out.t[1] = -back.y;
    out.t[2] = -back.z;
    return out;
}

void mapping::to_matrix(double out[4][4]) const
{
    for (int i = 0; i < 3; ++i) {
        std::memcpy(out[i], m[i], sizeof m[i]);
        out[i][3] = t[i];
        out[3][i] = 0.0;
    }
    out[3][3] = 1.0;
}

plane_axes axes_of(const point3& extrusion)
{
    const db::transform plane = db::plane_of({extrusion.x, extrusion.y, extrusion.z});
    const auto axis = [](const db::vec& v) { return point3{v.x, v.y, v.z}; };
    return {axis(plane.ex), axis(plane.ey), axis(plane.ez)};
}

point3 plane_axes::to_world(const point3& p) const
{
    return {x.x * p.x + y.x * p.y + z.x * p.z, x.y * p.x + y.y * p.y + z.y * p.z,
            x.z * p.x + y.z * p.y + z.z * p.z};
}

point3 plane_axes::to_plane(const point3& p) const
{
    return {dot(x, p), dot(y, p), dot(z, p)};
}

void transform_alone(db::database& db, db::object_id id, const mapping& map)
{
    const shape_rule* rule = rule_of(db.type_of(id));
    if (!rule)
        return;
    const bool in_space = lies_in_space(db, id);
    const bool of_owner = db.is(id, "VERTEX") && db.at(id).owner;
    const plane_change plane(map, extrusion_of(db.at(of_owner ? db.at(id).owner : id).groups));
    db::group_list& groups = db.modify(id);
    transform_groups(groups, *rule, plane, in_space);
    if (rule->type != "VERTEX")
        finish_groups(groups, *rule, plane);
}

void transform_object(db::database& db, db::object_id id, const mapping& map)
{
    // The children first: a vertex lies in the plane that its polyline still has.
    for (db::object_id child = db::first_child(db, id); child; child = db::next_child(db, child))
        transform_alone(db, child, map);
    transform_alone(db, id, map);
}

db::object_id copy_object(db::database& db, db::object_id id)
{
    return copy_object_to(db, id, db.at(id).owner);
}

db::object_id copy_object_to(db::database& db, db::object_id id, db::object_id owner)
{
    const db::object_id made = db::append_entity(db, owner, db.at(id).groups, nullptr);
    for (db::object_id child = db.at(id).first; made && child; child = db.at(child).next)
        if (!db.at(child).erased)
            db::append_entity(db, made, db.at(child).groups, nullptr);
    return made;
}

std::optional<mapping> insert_mapping(const db::database& db, db::object_id insert)
{
    const db::group_list& groups = db.at(insert).groups;
    const db::object_id block = db.record("BLOCK_RECORD", db.text_of(groups, 2));
    if (!block)
        return std::nullopt;
    point3 base;
    if (const db::object_id begin = db.at(block).first; begin && db.is(begin, "BLOCK"))
        if (const db::group* g = db::find(db.at(begin).groups, 10))
            base = point_of(*g);
    mapping local;
    const int scale_codes[] = {41, 42, 43};
    for (int i = 0; i < 3; ++i)
        local.m[i][i] = db::real_of(groups, scale_codes[i], 1.0);
    local = local.after(mapping::moved(-base.x, -base.y, -base.z));
    local = mapping::turned({0, 0, 0}, db::real_of(groups, 50, 0.0)).after(local);
    if (const db::group* at = db::find(groups, 10))
        local = mapping::moved(at->point[0], at->point[1], at->point[2]).after(local);
    const plane_axes axes = axes_of(extrusion_of(groups));
    mapping plane;
    const point3 columns[3] = {axes.x, axes.y, axes.z};
    for (int i = 0; i < 3; ++i) {
        plane.m[0][i] = columns[i].x;
        plane.m[1][i] = columns[i].y;
        plane.m[2][i] = columns[i].z;
    }
    return plane.after(local);
}

} // namespace host::commandline
