// transform.h: points and affine maps in space, and the planes that objects are drawn in. Inner header.
#pragma once

#include <cmath>

namespace host::db
{

struct vec {
    double x = 0, y = 0, z = 0;
};

inline vec operator+(const vec& a, const vec& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline vec operator-(const vec& a, const vec& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline vec operator*(const vec& a, double f)
{
    return {a.x * f, a.y * f, a.z * f};
}
inline vec cross(const vec& a, const vec& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const vec& a)
{
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}

// Columns: where the unit vectors and the origin go.
struct transform {
    vec ex{1, 0, 0}, ey{0, 1, 0}, ez{0, 0, 1}, origin{};

    vec direction(const vec& v) const { return ex * v.x + ey * v.y + ez * v.z; }
    vec point(const vec& p) const { return direction(p) + origin; }
};

// First `inner`, then `outer`.
inline transform operator*(const transform& outer, const transform& inner)
{
    return {outer.direction(inner.ex), outer.direction(inner.ey), outer.direction(inner.ez),
            outer.point(inner.origin)};
}

// The plane with a given normal: its x axis lies in the world's horizontal plane, unless the normal is
// within a 64th of the world's z, then along the world's y crossed with it.
inline transform plane_of(const vec& normal)
{
    const double size = length(normal);
    if (!(size > 0) || (normal.x == 0 && normal.y == 0 && normal.z > 0))
        return {};
    const vec n = normal * (1 / size);
    constexpr double NEAR_Z = 1.0 / 64.0;
    const bool near_z = std::fabs(n.x) < NEAR_Z && std::fabs(n.y) < NEAR_Z;
    vec x = near_z ? cross({0, 1, 0}, n) : cross({0, 0, 1}, n);
    x = x * (1 / length(x));
    return {x, cross(n, x), n, {}};
}

} // namespace host::db
