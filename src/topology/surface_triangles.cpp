// What triangles answer: their corners, whether they hold a point, heights, volumes.
//
// A point is looked for as if all triangles were tried from the first on. Tried are only those whose box holds
// it. The test for a point compares areas, so its reach beyond the edges is the greater the thinner the
// triangle is: away from the triangle the areas of its corners with a point at distance D grow by at least w D
// beyond its own, w being its least height. With the tolerance t and roundings of c (L + D)^2, where L is the
// longest side, the point is out when
//
//     w D / 2 >= t    and    w D / 2 >= c (L + D)^2,   so for L >= D when w D / 2 >= 4 c L^2,
//                                                      and for D >= L when w / 2 >= 4 c D
//
// The last one bounds D, by the extent of a domain around the surface. A triangle too thin for that has a box
// without bounds; points beyond the domain are looked for in all triangles.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "common/tolerances.h"
#include "hostapi/ads.h"
#include "polygon/points.h"
#include "topology/box_index.h"
#include "topology/surface_net.h"
#include "topology/walk.h"

triangle_id_cache triangle_cache{};

namespace
{

constexpr double AREA_TOL = 1e-6;
constexpr double EPSILON = std::numeric_limits<double>::epsilon();
constexpr double AREA_ROUNDING = 32 * EPSILON; // c; well over what four areas and their sum lose
constexpr double DOMAIN_SHARE = 100;           // of the surface's extent, to each side of it

enum corners_status { FOUND, NO_TRIANGLE, NO_EDGE, NOT_JOINED };

double area(const NodeObj& a, const NodeObj& b, const NodeObj& c)
{
    return pg_tri_area(a.x, a.y, b.x, b.y, c.x, c.y);
}

double area(const NodeObj& a, const NodeObj& b, const double* c)
{
    return pg_tri_area(a.x, a.y, b.x, b.y, c[0], c[1]);
}

bool holds(const NodeObj* const (&n)[3], const double* point)
{
    const double own = std::fabs(area(*n[0], *n[1], *n[2]));
    const double first = std::fabs(area(*n[0], *n[1], point));
    const double second = std::fabs(pg_tri_area(point[0], point[1], n[1]->x, n[1]->y, n[2]->x, n[2]->y));
    const double third = std::fabs(pg_tri_area(n[0]->x, n[0]->y, point[0], point[1], n[2]->x, n[2]->y));
    return std::fabs(own - first - second - third) < AREA_TOL;
}

pg_box box_of(const NodeObj* const (&n)[3])
{
    return {std::min({n[0]->x, n[1]->x, n[2]->x}), std::min({n[0]->y, n[1]->y, n[2]->y}),
            std::max({n[0]->x, n[1]->x, n[2]->x}), std::max({n[0]->y, n[1]->y, n[2]->y})};
}

// All points within `most_distance` that `holds` takes lie in it.
pg_box reach_of(const NodeObj* const (&n)[3], double most_distance)
{
    const pg_box box = box_of(n);
    double longest = 0.0;
    for (int i = 0; i < 3; ++i)
        longest = std::max(longest, std::hypot(n[(i + 1) % 3]->x - n[i]->x, n[(i + 1) % 3]->y - n[i]->y));
    const double height = 2 * std::fabs(area(*n[0], *n[1], *n[2])) / longest - AREA_ROUNDING * longest;
    // Also where something is no number.
    if (!(height >= 8 * AREA_ROUNDING * most_distance))
        return box_of_all();
    const double beyond = 2 * AREA_TOL / height + 8 * AREA_ROUNDING * longest / height * longest;
    const double largest =
        std::max({std::fabs(box.x0), std::fabs(box.y0), std::fabs(box.x1), std::fabs(box.y1), beyond});
    const double reach = beyond + 8 * EPSILON * largest;
    return std::isfinite(reach) ? widened_box(box, reach) : box_of_all();
}

void enter_cache(std::int32_t id)
{
    if (triangle_cache.count < TRIANGLE_CACHE_SIZE) {
        triangle_cache.ids[triangle_cache.count++] = id;
        return;
    }
    std::copy(triangle_cache.ids + 1, triangle_cache.ids + TRIANGLE_CACHE_SIZE, triangle_cache.ids);
    triangle_cache.ids[TRIANGLE_CACHE_SIZE - 1] = id;
}

} // namespace

int SurfaceNet::corners_of(std::int32_t id, std::int32_t (&corners)[3]) const
{
    const TriangleObj* of = triangle(id);
    if (!of)
        return NO_TRIANGLE;
    const EdgeObj* first = edge(std::abs(of->edge[0]));
    const EdgeObj* second = edge(std::abs(of->edge[1]));
    if (!first || !second)
        return NO_EDGE;
    const bool at_end = first->node2 == second->node1 || first->node2 == second->node2;
    corners[0] = at_end ? first->node1 : first->node2;
    corners[1] = at_end ? first->node2 : first->node1;
    if (corners[1] == second->node1)
        corners[2] = second->node2;
    else if (corners[1] == second->node2)
        corners[2] = second->node1;
    else
        return NOT_JOINED;
    return FOUND;
}

int SurfaceNet::triangle_corners(std::int32_t id, std::int32_t* a, std::int32_t* b, std::int32_t* c) const
{
    std::int32_t corners[3];
    const int status = corners_of(id, corners);
    if (status == NO_TRIANGLE)
        acutPrintf("Null shape!!!\n");
    if (status == NO_EDGE)
        acutPrintf("Null edges!!!\n");
    if (status != FOUND)
        return 0;
    *a = corners[0];
    *b = corners[1];
    *c = corners[2];
    return 1;
}

// With a message where they are missing.
bool SurfaceNet::corner_nodes(std::int32_t id, const NodeObj* (&corners)[3]) const
{
    std::int32_t ids[3] = {};
    triangle_corners(id, &ids[0], &ids[1], &ids[2]);
    for (int i = 0; i < 3; ++i)
        corners[i] = node(ids[i]);
    if (corners[0] && corners[1] && corners[2])
        return true;
    acutPrintf("Null nodes!!!\n");
    return false;
}

int SurfaceNet::point_in_triangle(std::int32_t id, const double* point) const
{
    const NodeObj* n[3];
    return corner_nodes(id, n) && holds(n, point);
}

double SurfaceNet::triangle_elevation(std::int32_t id, const double* point) const
{
    const NodeObj* n[3];
    if (!corner_nodes(id, n))
        return NO_ELEVATION;
    const double d1[3] = {n[1]->x - n[0]->x, n[1]->y - n[0]->y, n[1]->z - n[0]->z};
    const double d2[3] = {n[2]->x - n[0]->x, n[2]->y - n[0]->y, n[2]->z - n[0]->z};
    const double twice_area = d1[0] * d2[1] - d2[0] * d1[1];
    if (twice_area == 0.0)
        return NO_ELEVATION;
    return ((point[1] - n[0]->y) * (d1[0] * d2[2] - d2[0] * d1[2]) +
            (point[0] - n[0]->x) * (d2[1] * d1[2] - d1[1] * d2[2])) /
               twice_area +
           n[0]->z;
}

pg_box SurfaceNet::reach_of(std::int32_t id) const
{
    std::int32_t ids[3];
    if (corners_of(id, ids) != FOUND)
        return box_of_all(); // tried every time, with its message
    const NodeObj* n[3] = {node(ids[0]), node(ids[1]), node(ids[2])};
    if (!n[0] || !n[1] || !n[2])
        return box_of_all();
    const double width = index_domain_.x1 - index_domain_.x0, height = index_domain_.y1 - index_domain_.y0;
    const pg_box box = box_of(n);
    const bool is_within = box.x0 >= index_domain_.x0 && box.x1 <= index_domain_.x1 &&
                           box.y0 >= index_domain_.y0 && box.y1 <= index_domain_.y1;
    return is_within ? ::reach_of(n, width + height) : box_of_all();
}

// The surface with room around it for points that lie off it.
pg_box SurfaceNet::domain_of_triangles() const
{
    pg_box all{};
    bool any = false;
    for (std::int32_t id = first_of(triangles); id != 0; id = triangles.next(id)) {
        std::int32_t corners[3];
        if (corners_of(id, corners) != FOUND)
            continue;
        for (const std::int32_t corner : corners) {
            const NodeObj* n = node(corner);
            if (!n || !std::isfinite(n->x) || !std::isfinite(n->y))
                continue;
            all = any ? pg_box{std::min(all.x0, n->x), std::min(all.y0, n->y), std::max(all.x1, n->x),
                               std::max(all.y1, n->y)}
                      : pg_box{n->x, n->y, n->x, n->y};
            any = true;
        }
    }
    return widened_box(all, DOMAIN_SHARE * std::max(all.x1 - all.x0, all.y1 - all.y0));
}

// False when the heap is exhausted.
bool SurfaceNet::bring_index_up_to_date()
{
    // The domain was that of far fewer triangles.
    if (index_ && triangles.count / 2 - 100 > index_start_)
        drop_index();
    if (!index_) {
        index_ = new BoxIndex;
        if (!index_)
            return false;
        index_domain_ = domain_of_triangles();
        index_start_ = triangles.count;
    }
    while (index_->count() < triangles.count)
        if (!index_->add(reach_of(index_->count() + 1)))
            return false;
    return true;
}

// The triangle with the least id that holds the point, or 0.
std::int32_t SurfaceNet::first_holding(const double* point)
{
    const bool indexed = bring_index_up_to_date();
    const pg_box place{point[0], point[1], point[0], point[1]};
    const bool is_within = place.x0 >= index_domain_.x0 && place.x0 <= index_domain_.x1 &&
                           place.y0 >= index_domain_.y0 && place.y0 <= index_domain_.y1;
    if (!indexed || !is_within || !index_->look(place, 0)) {
        for (std::int32_t id = first_of(triangles); id != 0; id = triangles.next(id))
            if (point_in_triangle(id, point))
                return id;
        return 0;
    }
    for (const std::int32_t i : index_->found())
        if (triangle(i + 1) && point_in_triangle(i + 1, point))
            return i + 1;
    return 0;
}

std::int32_t SurfaceNet::find_triangle(const double* point)
{
    // Ids come from any surface: one that this surface doesn't have is no hit, and nothing to be told.
    for (std::int32_t i = 0; i < triangle_cache.count; ++i)
        if (const std::int32_t id = triangle_cache.ids[i]; triangle(id) && point_in_triangle(id, point))
            return id;
    const std::int32_t id = first_holding(point);
    if (id == 0)
        return -1;
    enter_cache(id);
    return id;
}

void SurfaceNet::triangle_volume(std::int32_t id, double level, double* volume_above, double* area_above,
                                 double* volume_below, double* area_below) const
{
    *volume_above = *area_above = *volume_below = *area_below = 0.0;
    const TriangleObj* of = triangle(id);
    if (!of)
        return;
    const NodeObj* n[3];
    for (int i = 0; i < 3; ++i) {
        const EdgeObj* side = edge(std::abs(of->edge[i]));
        // The node from which the side is walked.
        n[i] = side ? node(of->edge[i] > 0 ? std::min(side->node1, side->node2)
                                           : std::max(side->node1, side->node2))
                    : nullptr;
        if (!n[i])
            return;
    }
    const double whole = area(*n[0], *n[1], *n[2]);
    double z[3] = {n[0]->z, n[1]->z, n[2]->z};
    std::sort(z, z + 3);
    const double lo = z[0], mid = z[1], hi = z[2];
    if (!(level < hi)) {
        *volume_below = (level - (hi + mid + lo) / 3) * whole;
        *area_below = whole;
        return;
    }
    if (!(level > lo)) {
        *volume_above = ((hi + mid + lo) / 3 - level) * whole;
        *area_above = whole;
        return;
    }
    // The parts above and below the level of the middle corner, with the moments of their prisms down to 0.
    const double upper = (hi - mid) * whole / (hi - lo), lower = (mid - lo) * whole / (hi - lo);
    const double moment = (2 * mid + hi) * upper / 3 + (2 * mid + lo) * lower / 3;
    double moment_above, moment_below;
    if (!(level > mid)) {
        const double share = (level - lo) / (mid - lo);
        *area_below = share * share * lower;
        moment_below = (2 * level + lo) * *area_below / 3;
        *area_above = whole - *area_below;
        moment_above = moment - moment_below;
    } else {
        const double share = (hi - level) / (hi - mid);
        *area_above = share * share * upper;
        moment_above = (2 * level + hi) * *area_above / 3;
        *area_below = whole - *area_above;
        moment_below = moment - moment_above;
    }
    // Rounding alone would make them negative, and so would a triangle that runs clockwise.
    *volume_above = std::max(0.0, moment_above - level * *area_above);
    *volume_below = std::max(0.0, level * *area_below - moment_below);
}
