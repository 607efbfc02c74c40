// geometry.cpp: points: distances, directions, crossings, coordinate systems, units.
#include <algorithm>
#include <array>
#include <cmath>

#include "host/core/text.h"
#include "host/database/transform.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "host/lisp/variables.h"
#include "hostapi/ads.h"

namespace host::lisp
{

namespace
{

// In the plane when one of the points has no z.
value distance(interpreter&, arguments a)
{
    double p[3], q[3];
    const int first = point_of(a[0], p), second = point_of(a[1], q);
    if (first == 2 || second == 2)
        p[2] = q[2] = 0;
    return value::real(acutDistance(p, q));
}

value direction(interpreter&, arguments a)
{
    double p[3], q[3];
    point_of(a[0], p);
    point_of(a[1], q);
    return value::real(acutAngle(p, q));
}

value polar(interpreter&, arguments a)
{
    double p[3], out[3];
    const int dimensions = point_of(a[0], p);
    acutPolar(p, a.number(1), a.number(2), out);
    return point_value(out, dimensions);
}

// A fifth argument of nil asks for the crossing of the endless lines.
value crossing(interpreter&, arguments a)
{
    double p[4][3], out[3];
    int dimensions = 3;
    for (int i = 0; i < 4; ++i)
        dimensions = std::min(dimensions, point_of(a[i], p[i]));
    if (dimensions == 2)
        for (auto& point : p)
            point[2] = 0;
    const bool on_segments = a.count < 5 || a[4].is_true();
    if (acdbInters(p[0], p[1], p[2], p[3], on_segments, out) != RTNORM)
        return value::nil();
    return point_value(out, dimensions);
}

// ---- coordinate systems

using vector = std::array<double, 3>;

struct axes {
    vector origin{0, 0, 0}, x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
};

vector cross(const vector& a, const vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const vector& a, const vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

vector unit(const vector& v)
{
    const double length = std::sqrt(dot(v, v));
    return length > 0 ? vector{v[0] / length, v[1] / length, v[2] / length} : vector{0, 0, 1};
}

axes axes_of_normal(const vector& normal)
{
    const db::transform plane = db::plane_of({normal[0], normal[1], normal[2]});
    const auto axis = [](const db::vec& v) { return vector{v.x, v.y, v.z}; };
    return {{0, 0, 0}, axis(plane.ex), axis(plane.ey), axis(plane.ez)};
}

axes user_axes()
{
    axes out;
    point_variable("UCSORG", out.origin.data());
    point_variable("UCSXDIR", out.x.data());
    point_variable("UCSYDIR", out.y.data());
    out.x = unit(out.x);
    out.y = unit(out.y);
    out.z = cross(out.x, out.y);
    return out;
}

// The display's: along the view's direction from its target, turned by the view's twist.
axes view_axes()
{
    vector to_viewer{0, 0, 1};
    const axes user = user_axes();
    const auto to_world = [&](const vector& v) {
        vector w;
        for (std::size_t i = 0; i < 3; ++i)
            w[i] = user.x[i] * v[0] + user.y[i] * v[1] + user.z[i] * v[2];
        return w;
    };
    point_variable("VIEWDIR", to_viewer.data());
    axes out = axes_of_normal(to_world(to_viewer));
    vector target{0, 0, 0};
    point_variable("TARGET", target.data());
    target = to_world(target);
    for (std::size_t i = 0; i < 3; ++i)
        out.origin[i] = target[i] + user.origin[i];
    const double twist = -real_variable("VIEWTWIST");
    const vector x = out.x, y = out.y;
    for (std::size_t i = 0; i < 3; ++i) {
        out.x[i] = x[i] * std::cos(twist) + y[i] * std::sin(twist);
        out.y[i] = y[i] * std::cos(twist) - x[i] * std::sin(twist);
    }
    return out;
}

// Kinds whose coordinates are world coordinates, whatever their normal.
bool in_world_coordinates(const resbuf* groups)
{
    static constexpr const char* kinds[] = {"LINE",  "POINT", "3DFACE", "ELLIPSE", "SPLINE",
                                            "XLINE", "RAY",   "MTEXT",  "LEADER",  "MLINE"};
    const resbuf* type = rb_find_code(groups, 0);
    if (!type || !type->resval.rstring)
        return true;
    for (const char* kind_name : kinds)
        if (same_text(kind_name, type->resval.rstring))
            return true;
    const resbuf* flags = rb_find_code(groups, 70);
    return same_text("POLYLINE", type->resval.rstring) && flags && (flags->resval.rint & 8);
}

axes entity_axes(interpreter& l, const value& entity)
{
    const list_ptr groups(acdbEntGet(entity.name()));
    if (!groups)
        l.wrong_type("lentityp", entity);
    const resbuf* normal = rb_find_code(groups.get(), 210);
    if (in_world_coordinates(groups.get()) || !normal)
        return {};
    const double* n = normal->resval.rpoint;
    return axes_of_normal({n[0], n[1], n[2]});
}

axes axes_of(interpreter& l, const value& system)
{
    double normal[3];
    if (system.is(kind::entity))
        return entity_axes(l, system);
    if (point_of(system, normal) == 3)
        return axes_of_normal({normal[0], normal[1], normal[2]});
    if (!system.is(kind::integer))
        l.wrong_type("fixnump:", system);
    switch (system.as_integer()) {
    case 0:
        return {};
    case 1:
        return user_axes();
    case 2:
    case 3:
        return view_axes();
    default:
        l.fail("bad argument value: coordinate system " + std::to_string(system.as_integer()));
    }
}

value transform(interpreter& l, arguments a)
{
    vector p, world{}, out{};
    point_of(a[0], p.data());
    const axes from = axes_of(l, a[1]), to = axes_of(l, a[2]);
    const double origin = a.given(3) ? 0 : 1; // a displacement has no place
    for (std::size_t i = 0; i < 3; ++i)
        world[i] =
            origin * (from.origin[i] - to.origin[i]) + from.x[i] * p[0] + from.y[i] * p[1] + from.z[i] * p[2];
    out = {dot(world, to.x), dot(world, to.y), dot(world, to.z)};
    return point_value(out.data());
}

// ---- units

struct unit_entry {
    const char* name;
    char measure; // length, area, volume, angle, mass, time, temperature
    double size;  // in the measure's base unit
};

constexpr double degree = 3.14159265358979323846 / 180;
constexpr unit_entry UNITS[] = {
    {"millimeter", 'l', 0.001},
    {"mm", 'l', 0.001},
    {"centimeter", 'l', 0.01},
    {"cm", 'l', 0.01},
    {"decimeter", 'l', 0.1},
    {"dm", 'l', 0.1},
    {"meter", 'l', 1},
    {"m", 'l', 1},
    {"metre", 'l', 1},
    {"kilometer", 'l', 1000},
    {"km", 'l', 1000},
    {"inch", 'l', 0.0254},
    {"in", 'l', 0.0254},
    {"inches", 'l', 0.0254},
    {"foot", 'l', 0.3048},
    {"ft", 'l', 0.3048},
    {"feet", 'l', 0.3048},
    {"yard", 'l', 0.9144},
    {"yd", 'l', 0.9144},
    {"mile", 'l', 1609.344},
    {"mi", 'l', 1609.344},
    {"chain", 'l', 20.1168},
    {"link", 'l', 0.201168},
    {"rod", 'l', 5.0292},
    {"acre", 'a', 4046.8564224},
    {"hectare", 'a', 10000},
    {"sq m", 'a', 1},
    {"sq ft", 'a', 0.09290304},
    {"sq in", 'a', 0.00064516},
    {"liter", 'v', 0.001},
    {"litre", 'v', 0.001},
    {"gallon", 'v', 0.003785411784},
    {"cu m", 'v', 1},
    {"cu ft", 'v', 0.028316846592},
    {"degree", 'w', degree},
    {"degrees", 'w', degree},
    {"deg", 'w', degree},
    {"radian", 'w', 1},
    {"radians", 'w', 1},
    {"rad", 'w', 1},
    {"grad", 'w', 0.9 * degree},
    {"grads", 'w', 0.9 * degree},
    {"gon", 'w', 0.9 * degree},
    {"minute", 't', 60},
    {"min", 't', 60},
    {"second", 't', 1},
    {"sec", 't', 1},
    {"hour", 't', 3600},
    {"hr", 't', 3600},
    {"day", 't', 86400},
    {"gram", 'g', 0.001},
    {"kilogram", 'g', 1},
    {"kg", 'g', 1},
    {"pound", 'g', 0.45359237},
    {"lb", 'g', 0.45359237},
};

const unit_entry* find_unit(const std::string& name)
{
    for (const unit_entry& u : UNITS)
        if (same_text(u.name, name))
            return &u;
    const bool plural = name.size() > 4 && (name.back() == 's' || name.back() == 'S');
    return plural ? find_unit(name.substr(0, name.size() - 1)) : nullptr;
}

value converted(interpreter& l, arguments a)
{
    const unit_entry *from = find_unit(a.text(1)), *to = find_unit(a.text(2));
    if (!from || !to || from->measure != to->measure)
        return value::nil();
    const double factor = from->size / to->size;
    if (a[0].is_number())
        return value::real(a.number(0) * factor);
    double p[3];
    const int dimensions = point_of(a[0], p);
    if (!dimensions)
        l.wrong_type("numberp:", a[0]);
    for (double& c : p)
        c *= factor;
    return point_value(p, dimensions);
}

constexpr builtin TABLE[] = {
    {"distance", distance, 2, 2, "d"},   {"angle", direction, 2, 2, "d"},    {"polar", polar, 3, 3, "dnn"},
    {"inters", crossing, 4, 5, "dddd."}, {"trans", transform, 3, 4, "d..."}, {"cvunit", converted, 3, 3, ".ss"},
};

} // namespace

std::span<const builtin> geometry_table()
{
    return TABLE;
}

} // namespace host::lisp
