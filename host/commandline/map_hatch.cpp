// map_hatch.cpp: the same group code means one thing in an edge of a hatch's boundary, another in the next
// edge, and a third behind the boundary, where its pattern stands: the list is read in its order. A path begins
// with 92; an edge of it with 72, unless the path is a polyline; the boundary ends with 75.
#include "host/commandline/map_hatch.h"

namespace host::commandline
{

namespace
{

struct hatch_walk {
    const plane_change& plane;
    double height; // of the hatch's plane
    bool in_paths = false, in_polyline = false, behind_paths = false;
    std::int64_t edge = 0;
    std::vector<db::group*> arc{}; // its angles wait for its direction

    void place(db::group& g) const
    {
        const point3 p = plane.place({g.point[0], g.point[1], height});
        g.point[0] = p.x;
        g.point[1] = p.y;
    }
    void turn_vector(double& x, double& y) const
    {
        const double along = plane.u.x * x + plane.v.x * y, across = plane.u.y * x + plane.v.y * y;
        x = along + 0.0; // no negative zero
        y = across + 0.0;
    }
    // Angles of an edge that runs clockwise are those of its mirror image.
    void end_arc(db::group& direction)
    {
        const bool was_left = direction.integer != 0, is_left = was_left != plane.flips;
        if (edge == 2 && arc.size() == 2 && !plane.map.is_move()) {
            const double sweep = arc[1]->real - arc[0]->real;
            const double start = plane.turn(was_left ? arc[0]->real : -arc[0]->real);
            arc[0]->real = is_left ? start : normal_angle(-start);
            arc[1]->real = arc[0]->real + sweep;
        }
        direction.integer = is_left ? 1 : 0;
        arc.clear();
    }
    void take_edge(db::group& g)
    {
        if (g.code == 10 || (g.code == 11 && edge != 3))
            place(g);
        else if (g.code == 11 || g.code == 12 || g.code == 13)
            turn_vector(g.point[0], g.point[1]);
        else if (g.code == 40 && edge == 2)
            g.real *= plane.scale;
        else if ((g.code == 50 || g.code == 51) && edge == 2)
            arc.push_back(&g);
        else if (g.code == 73 && (edge == 2 || edge == 3))
            end_arc(g);
    }
    void take_pattern(db::group& g, db::group* next) const
    {
        if (g.code == 52 || g.code == 53)
            g.real = plane.turn(g.real);
        else if (g.code == 41 || g.code == 49)
            g.real *= plane.scale;
        else if ((g.code == 43 || g.code == 45) && next && next->code == g.code + 1)
            turn_vector(g.real, next->real);
        else if (g.code == 10)
            place(g);
    }
    void take(db::group& g, db::group* next)
    {
        if (g.code == 92) {
            in_paths = true;
            in_polyline = g.integer & 2;
            edge = 0;
        } else if (g.code == 75) {
            behind_paths = true;
        } else if (behind_paths) {
            take_pattern(g, next);
        } else if (in_polyline) {
            if (g.code == 10)
                place(g);
            else if (g.code == 42 && plane.flips)
                g.real = -g.real;
        } else if (in_paths && g.code == 72) {
            edge = g.integer;
        } else if (in_paths) {
            take_edge(g);
        } else if (g.code == 10) {
            g.point[2] = plane.place({0, 0, height}).z;
        }
    }
};

} // namespace

void map_hatch(db::group_list& groups, const plane_change& plane)
{
    const db::group* place = db::find(groups, 10);
    hatch_walk walk{plane, place ? place->point[2] : 0.0};
    for (std::size_t i = 0; i < groups.size() && groups[i].code < 1000; ++i)
        walk.take(groups[i], i + 1 < groups.size() ? &groups[i + 1] : nullptr);
}

} // namespace host::commandline
