// transform.cpp: affine maps, and planes of objects.
#include "host/commandline/transform.h"

#include <cmath>
#include <cstring>

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

point3 point_in(const db::group_list& groups, int code, const point3& otherwise)
{
    const db::group* g = db::find(groups, code);
    return g ? point3{g->point[0], g->point[1], g->dimensions == 3 ? g->point[2] : 0.0} : otherwise;
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

bool mapping::is_move() const
{
    constexpr double UNIT[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            if (m[i][j] != UNIT[i][j])
                return false;
    return true;
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

std::optional<mapping> insert_mapping(const db::database& db, db::object_id insert)
{
    return insert_mapping(db, db.at(insert).groups);
}

std::optional<mapping> insert_mapping(const db::database& db, const db::group_list& groups)
{
    const db::object_id block = db.record("BLOCK_RECORD", db.text_of(groups, 2));
    if (!block)
        return std::nullopt;
    point3 base;
    if (const db::object_id begin = db.at(block).first; begin && db.is(begin, "BLOCK"))
        base = point_in(db.at(begin).groups, 10, {});
    mapping local;
    const int scale_codes[] = {41, 42, 43};
    for (int i = 0; i < 3; ++i)
        local.m[i][i] = db::real_of(groups, scale_codes[i], 1.0);
    local = local.after(mapping::moved(-base.x, -base.y, -base.z));
    local = mapping::turned({0, 0, 0}, db::real_of(groups, 50, 0.0)).after(local);
    if (const db::group* at = db::find(groups, 10))
        local = mapping::moved(at->point[0], at->point[1], at->point[2]).after(local);
    const plane_axes axes = axes_of(point_in(groups, 210, {0, 0, 1}));
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
