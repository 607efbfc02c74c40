// map_objects.cpp: a table says which groups of a kind are places, directions, lengths and angles; most kinds
// are one walk over their groups. Coordinates of plane objects go through world coordinates into the plane of
// the new normal. Kinds whose groups depend on each other (ELLIPSE, INSERT, texts, HATCH) have a function.
//
// Mirrored plane objects keep the side to which their normal looks: arcs change their ends, bulges their sign.
#include "host/commandline/map_hatch.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "host/database/entities.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double RELATIVE = 1e-9; // lengths and right angles this close are equal

double dot(const point3& a, const point3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

point3 cross(const point3& a, const point3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double size(const point3& v)
{
    return std::sqrt(dot(v, v));
}

point3 times(const point3& v, double f)
{
    return {v.x * f + 0.0, v.y * f + 0.0, v.z * f + 0.0}; // no negative zeros
}

point3 sum(const point3& a, const point3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

point3 unit(const point3& v)
{
    const double length = size(v);
    return length > 0.0 ? times(v, 1.0 / length) : point3{0, 0, 1};
}

bool are_square(const point3& a, const point3& b)
{
    return std::abs(dot(a, b)) <= RELATIVE * size(a) * size(b);
}

// ---- the table

using codes = std::vector<int>;

struct shape_rule {
    std::string_view type;
    codes world_points, plane_points, directions, lengths, angles;
    bool normal_is_thickness = false;
};

const std::vector<shape_rule>& shape_rules()
{
    static const std::vector<shape_rule> rules = {
        {"LINE", {10, 11}, {}, {}, {}, {}, true},
        {"POINT", {10}, {}, {}, {}, {50}, true},
        {"3DFACE", {10, 11, 12, 13}, {}, {}, {}, {}},
        {"SPLINE", {10, 11}, {}, {12, 13}, {}, {}},
        {"ELLIPSE", {10}, {}, {11}, {}, {}},
        {"MTEXT", {10}, {}, {11}, {40, 41, 42, 43}, {50}},
        {"RAY", {10}, {}, {11}, {}, {}},
        {"XLINE", {10}, {}, {11}, {}, {}},
        {"LEADER", {10}, {}, {211, 212, 213}, {}, {}},
        {"IMAGE", {10}, {}, {11, 12}, {}, {}},
        {"WIPEOUT", {10}, {}, {11, 12}, {}, {}},
        {"VIEWPORT", {10}, {}, {}, {40, 41}, {}},
        {"DIMENSION", {10, 13, 14, 15, 16}, {11, 12}, {}, {}, {50, 53}},
        {"CIRCLE", {}, {10}, {}, {40}, {}},
        {"ARC", {}, {10}, {}, {40}, {50, 51}},
        {"TEXT", {}, {10, 11}, {}, {40}, {50}},
        {"ATTRIB", {}, {10, 11}, {}, {40}, {50}},
        {"ATTDEF", {}, {10, 11}, {}, {40}, {50}},
        {"SHAPE", {}, {10}, {}, {40}, {50}},
        {"INSERT", {}, {10}, {}, {}, {}},
        {"LWPOLYLINE", {}, {10}, {}, {40, 41, 43}, {}},
        {"VERTEX", {}, {10}, {}, {40, 41}, {50}},
        {"POLYLINE", {}, {}, {}, {40, 41}, {}},
        {"SOLID", {}, {10, 11, 12, 13}, {}, {}, {}},
        {"TRACE", {}, {10, 11, 12, 13}, {}, {}, {}},
        {"HATCH", {}, {}, {}, {}, {}},
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

// ---- groups

bool is_vertical(const point3& z)
{
    return std::abs(z.x) < 1e-12 && std::abs(z.y) < 1e-12 && z.z > 0.0;
}

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

point3 point_in(const db::group_list& groups, int code)
{
    const db::group* g = db::find(groups, code);
    return g ? point_of(*g) : point3{};
}

// In place of the group of that code, or behind the others of the object.
void put_real(db::group_list& groups, int code, double value)
{
    if (db::group* g = db::find(groups, code)) {
        g->real = value;
        return;
    }
    const auto end =
        std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code >= 1000; });
    groups.insert(end, db::real_group(code, value));
}

void put_normal(db::group_list& groups, const point3& normal)
{
    if (db::group* g = db::find(groups, 210)) {
        set_point(*g, normal);
        return;
    }
    if (is_vertical(normal))
        return;
    const auto end =
        std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code >= 1000; });
    groups.insert(end, db::point_group(210, normal.x, normal.y, normal.z));
}

void flip_bit(db::group_list& groups, int code, std::int64_t bit)
{
    if (db::group* g = db::find(groups, code))
        g->integer ^= bit;
    else
        groups.push_back(db::int_group(code, bit));
}

bool is_space_polyline(const db::group_list& groups)
{
    return (db::int_of(groups, 70, 0) & (8 | 16 | 64)) != 0;
}

// ---- kinds

struct subject {
    db::group_list& groups;
    const shape_rule& rule;
    const plane_change& plane;
    bool in_space; // a vertex with world coordinates
};

// A text at its left end has a second point that means nothing.
bool is_unaligned_text(const subject& of)
{
    const bool is_text = of.rule.type == "TEXT";
    if (!is_text && of.rule.type != "ATTRIB" && of.rule.type != "ATTDEF")
        return false;
    return db::int_of(of.groups, 72, 0) == 0 && db::int_of(of.groups, is_text ? 73 : 74, 0) == 0;
}

void walk_groups(const subject& of)
{
    const plane_change& plane = of.plane;
    const double elevation = db::real_of(of.groups, 38, 0.0);
    double new_elevation = elevation;
    const bool moves = plane.map.is_move();
    const bool is_lightweight = of.rule.type == "LWPOLYLINE";
    const bool leaves_second = is_unaligned_text(of);
    for (db::group& g : of.groups) {
        if (g.code >= 1000)
            break;
        if (leaves_second && g.code == 11)
            continue;
        if (has(of.rule.world_points, g.code) || (of.in_space && has(of.rule.plane_points, g.code))) {
            set_point(g, plane.map.apply(point_of(g)));
        } else if (has(of.rule.plane_points, g.code)) {
            point3 p = point_of(g);
            if (is_lightweight)
                p.z = elevation;
            p = plane.place(p);
            new_elevation = p.z;
            set_point(g, p);
        } else if (moves) {
            continue; // directions, lengths and angles keep every digit
        } else if (has(of.rule.directions, g.code)) {
            set_point(g, plane.map.direction(point_of(g)));
        } else if (has(of.rule.lengths, g.code)) {
            g.real *= plane.scale;
        } else if (g.code == 39) {
            g.real *= plane.rise;
        } else if (has(of.rule.angles, g.code)) {
            g.real = plane.turn(g.real);
        } else if (g.code == 42 && plane.flips && (is_lightweight || of.rule.type == "VERTEX")) {
            g.real = -g.real;
        }
    }
    if (is_lightweight && new_elevation != elevation) {
        if (db::group* g = db::find(of.groups, 38))
            g->real = new_elevation;
        else
            of.groups.insert(std::find_if(of.groups.begin(), of.groups.end(),
                                          [](const db::group& x) { return x.code == 10; }),
                             db::real_group(38, new_elevation));
    }
}

void map_arc(const subject& of)
{
    walk_groups(of);
    db::group* start = db::find(of.groups, 50);
    db::group* end = db::find(of.groups, 51);
    if (of.plane.flips && start && end)
        std::swap(start->real, end->real);
}

void map_polyline(const subject& of)
{
    walk_groups(of);
    if (!is_space_polyline(of.groups))
        if (db::group* g = db::find(of.groups, 10))
            g->point[2] = of.plane.place({0, 0, g->point[2]}).z;
}

void map_endless(const subject& of)
{
    walk_groups(of);
    if (db::group* along = db::find(of.groups, 11); along && !of.plane.map.is_move())
        set_point(*along, unit(point_of(*along)));
}

// The images of the half axes are the half axes no more, but still a pair from which the curve can be drawn:
// P(t) = c + a cos t + b sin t. It is longest where tan 2t = 2 a.b / (a.a - b.b); there the new half axes lie.
void map_ellipse(const subject& of)
{
    const plane_change& plane = of.plane;
    const point3 normal = unit(plane.from.z), major = point_in(of.groups, 11);
    const point3 minor = times(cross(normal, major), db::real_of(of.groups, 40, 1.0));
    walk_groups(of);
    if (plane.map.is_move() || (plane.is_similar() && !plane.flips))
        return;
    const point3 a = plane.map.direction(major), b = plane.map.direction(minor);
    point3 longest = a, shortest = b;
    double from = 0.0; // where on the old curve the new one begins
    if (are_square(a, b)) {
        if (size(b) > size(a)) {
            longest = b;
            shortest = times(a, -1.0);
            from = PI / 2;
        }
    } else {
        from = std::atan2(2 * dot(a, b), dot(a, a) - dot(b, b)) / 2;
        longest = sum(times(a, std::cos(from)), times(b, std::sin(from)));
        shortest = sum(times(a, -std::sin(from)), times(b, std::cos(from)));
    }
    const double start = db::real_of(of.groups, 41, 0.0), end = db::real_of(of.groups, 42, 2 * PI);
    const bool backwards = dot(cross(longest, shortest), plane.to.z) < 0.0;
    const double sweep = end > start ? end - start : end - start + 2 * PI;
    double begin = backwards ? from - start - sweep : start - from;
    if (std::abs(sweep - 2 * PI) < 1e-12)
        begin = 0.0;
    begin = normal_angle(begin);
    if (db::group* g = db::find(of.groups, 11))
        set_point(*g, longest);
    put_real(of.groups, 40, std::min(1.0, size(shortest) / size(longest)));
    put_real(of.groups, 41, begin);
    put_real(of.groups, 42, begin + sweep);
}

// Height, width factor, slant and the marks of mirrored letters follow from the images of the base line's
// direction and of a slanted stem.
void map_text(const subject& of)
{
    const plane_change& plane = of.plane;
    const double height = db::real_of(of.groups, 40, 1.0), width = db::real_of(of.groups, 41, 1.0);
    const double angle = db::real_of(of.groups, 50, 0.0), slant = db::real_of(of.groups, 51, 0.0);
    walk_groups(of);
    if (plane.map.is_move() || (plane.is_similar() && !plane.flips))
        return;
    const double c = std::cos(angle), s = std::sin(angle);
    const point3 base = sum(times(plane.u, c), times(plane.v, s));
    const point3 up = sum(times(plane.u, -s), times(plane.v, c));
    const point3 stem = sum(up, times(base, std::tan(slant)));
    const double along = size(base);
    const double rise = std::abs(base.x * stem.y - base.y * stem.x) / along;
    put_real(of.groups, 40, height * rise);
    put_real(of.groups, 41, width * along / rise);
    put_real(of.groups, 51, std::atan(dot(stem, base) / along / rise));
    double turned = std::atan2(base.y, base.x);
    if (plane.flips) {
        // Of the two ways to write a mirrored text, the one that is not upside down.
        const bool backwards = base.x < 0.0;
        flip_bit(of.groups, 71, backwards ? 2 : 4);
        turned += backwards ? PI : 0.0;
    }
    put_real(of.groups, 50, normal_angle(turned));
}

struct insert_axes {
    point3 x, y, z; // of length 1 in the block, without the scales of the reference
};
insert_axes axes_of_insert(const plane_change& plane, double angle)
{
    const double c = std::cos(angle), s = std::sin(angle);
    return {plane.map.direction(plane.from.to_world({c, s, 0})),
            plane.map.direction(plane.from.to_world({-s, c, 0})), plane.map.direction(plane.from.z)};
}

void map_insert(const subject& of)
{
    const plane_change& plane = of.plane;
    const double angle = db::real_of(of.groups, 50, 0.0);
    walk_groups(of);
    if (plane.map.is_move())
        return;
    const insert_axes axes = axes_of_insert(plane, angle);
    double factors[3] = {size(axes.x), size(axes.y), size(axes.z)};
    for (double& factor : factors)
        if (std::abs(factor - 1.0) < 1e-14)
            factor = 1.0; // turning alone leaves the scales what they were
    double turned = plane.turn(angle);
    bool x_mirrored = false;
    if (plane.flips) {
        x_mirrored = std::cos(turned) < 0.0;
        turned = normal_angle(turned + (x_mirrored ? PI : 0.0));
    }
    const double signs[3] = {x_mirrored ? -1.0 : 1.0, plane.flips && !x_mirrored ? -1.0 : 1.0, 1.0};
    for (int i = 0; i < 3; ++i)
        put_real(of.groups, 41 + i, db::real_of(of.groups, 41 + i, 1.0) * factors[i] * signs[i]);
    for (int i = 0; i < 2; ++i)
        if (db::group* spacing = db::find(of.groups, 44 + i))
            spacing->real *= factors[i] * signs[i];
    put_real(of.groups, 50, turned);
}

void map_hatch_groups(const subject& of)
{
    map_hatch(of.groups, of.plane);
}

struct special_kind {
    std::string_view type;
    void (*put)(const subject& of);
};
constexpr special_kind SPECIAL_KINDS[] = {
    {"ARC", map_arc},           {"ATTDEF", map_text},        {"ATTRIB", map_text},
    {"ELLIPSE", map_ellipse},   {"HATCH", map_hatch_groups}, {"INSERT", map_insert},
    {"POLYLINE", map_polyline}, {"RAY", map_endless},        {"TEXT", map_text},
    {"XLINE", map_endless},
};

// `owner`: the groups of a VERTEX's POLYLINE.
void map_groups(std::string_view type, db::group_list& groups, const db::group_list* owner, const mapping& map)
{
    const shape_rule* rule = rule_of(type);
    if (!rule)
        return;
    const bool is_vertex = type == "VERTEX" && owner;
    const plane_change plane(map, normal_of(is_vertex ? *owner : groups), rule->normal_is_thickness);
    const subject of{groups, *rule, plane, is_vertex && is_space_polyline(*owner)};
    const auto special = std::find_if(std::begin(SPECIAL_KINDS), std::end(SPECIAL_KINDS),
                                      [&](const special_kind& each) { return each.type == type; });
    if (special != std::end(SPECIAL_KINDS))
        special->put(of);
    else
        walk_groups(of);
    if (!is_vertex && !map.is_move())
        put_normal(groups, plane.to.z);
}

bool has_bulges(const db::group_list& groups)
{
    return std::any_of(groups.begin(), groups.end(),
                       [](const db::group& g) { return g.code == 42 && g.real != 0.0; });
}

bool keeps_insert(const db::group_list& groups, const plane_change& plane)
{
    const insert_axes axes = axes_of_insert(plane, db::real_of(groups, 50, 0.0));
    return are_square(axes.x, axes.y) && are_square(axes.x, axes.z) && are_square(axes.y, axes.z);
}

bool is_identity(const mapping& map)
{
    return map.is_move() && map.t[0] == 0.0 && map.t[1] == 0.0 && map.t[2] == 0.0;
}

} // namespace

point3 normal_of(const db::group_list& groups)
{
    const db::group* g = db::find(groups, 210);
    return g ? point3{g->point[0], g->point[1], g->point[2]} : point3{0, 0, 1};
}

plane_change::plane_change(const mapping& m, const point3& extrusion, bool by_normal)
    : map(m), from(axes_of(extrusion)), to(from), u{1, 0, 0}, v{0, 1, 0}, scale(1.0), rise(1.0), flips(false)
{
    if (m.is_move())
        return;
    const point3 x = m.direction(from.x), y = m.direction(from.y), z = m.direction(from.z);
    point3 normal = cross(x, y);
    if (by_normal || !(size(normal) > 0.0))
        normal = z;
    else if (dot(normal, z) < 0.0)
        normal = times(normal, -1.0);
    to = axes_of(unit(normal));
    u = to.to_plane(x);
    v = to.to_plane(y);
    scale = is_similar() ? std::hypot(u.x, u.y) : std::sqrt(std::abs(u.x * v.y - u.y * v.x));
    if (std::abs(scale - 1.0) < 1e-14)
        scale = 1.0;
    rise = std::abs(dot(z, to.z));
    if (std::abs(rise - 1.0) < 1e-14)
        rise = 1.0;
    flips = u.x * v.y - u.y * v.x < 0.0;
}

point3 plane_change::place(const point3& p) const
{
    return to.to_plane(map.apply(from.to_world(p)));
}

double plane_change::turn(double angle) const
{
    if (map.is_move())
        return angle;
    const double c = std::cos(angle), s = std::sin(angle);
    return normal_angle(std::atan2(u.y * c + v.y * s, u.x * c + v.x * s));
}

bool plane_change::is_similar() const
{
    const double a = std::hypot(u.x, u.y), b = std::hypot(v.x, v.y);
    return std::abs(a - b) <= RELATIVE * std::max(a, b) && std::abs(u.x * v.x + u.y * v.y) <= RELATIVE * a * b;
}

whole_object whole_object_of(const db::database& db, db::object_id id)
{
    whole_object out;
    out.groups = db.at(id).groups;
    for (db::object_id child = db.at(id).first; child; child = db.at(child).next) {
        if (db.is(child, "SEQEND"))
            out.is_sequence = true;
        else if (!db.at(child).erased)
            out.children.push_back(db.at(child).groups);
    }
    out.is_sequence = out.is_sequence || !out.children.empty();
    return out;
}

bool keeps_kind(const db::database& db, const whole_object& object, const mapping& map)
{
    if (is_identity(map))
        return true;
    const std::string_view type = db.text_of(object.groups, 0);
    if (!rule_of(type) || type == "VIEWPORT")
        return false;
    if (map.is_move())
        return true;
    const plane_change plane(map, normal_of(object.groups));
    if (type == "INSERT")
        return keeps_insert(object.groups, plane);
    if (type == "SHAPE")
        return plane.is_similar() && !plane.flips;
    if (plane.is_similar())
        return true;
    if (type == "LWPOLYLINE")
        return !has_bulges(object.groups);
    if (type == "POLYLINE")
        return is_space_polyline(object.groups) ||
               std::none_of(object.children.begin(), object.children.end(), has_bulges);
    return type != "ARC" && type != "CIRCLE" && type != "HATCH";
}

void map_object(const db::database& db, whole_object& object, const mapping& map)
{
    if (is_identity(map))
        return;
    for (db::group_list& child : object.children)
        map_groups(db.text_of(child, 0), child, &object.groups, map);
    map_groups(db.text_of(object.groups, 0), object.groups, nullptr, map);
}

void transform_alone(db::database& db, db::object_id id, const mapping& map)
{
    const std::string_view type = db.type_of(id);
    if (!rule_of(type))
        return;
    const db::object_id owner = db.at(id).owner;
    db::group_list& groups = db.modify(id);
    map_groups(type, groups, owner ? &db.at(owner).groups : nullptr, map);
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

} // namespace host::commandline
