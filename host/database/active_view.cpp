// active_view.cpp: the view that VPORT *ACTIVE holds, and the way between drawing and screen.
#include "host/database/active_view.h"

#include <algorithm>
#include <cmath>

#include "host/database/entities.h"
#include "host/database/transform.h"

namespace host::db
{

namespace
{

constexpr int CENTER = 12, DIRECTION = 16, TARGET = 17, HEIGHT = 40, ASPECT = 41, TWIST = 51, MODE = 71;

double finite_of(const group_list& groups, int code, double otherwise)
{
    const double value = real_of(groups, code, otherwise);
    return std::isfinite(value) ? value : otherwise;
}

double positive_of(const group_list& groups, int code, double otherwise)
{
    const double value = finite_of(groups, code, otherwise);
    return value > 0.0 ? value : otherwise;
}

void take_point(const group_list& groups, int code, double* into, int count)
{
    const group* found = find(groups, code);
    if (found && std::all_of(found->point, found->point + count, [](double v) { return std::isfinite(v); }))
        std::copy_n(found->point, count, into);
}

bool same_value(const group& a, const group& b)
{
    if (b.kind == group_kind::integer)
        return a.integer == b.integer;
    return b.kind == group_kind::point ? std::equal(b.point, b.point + b.dimensions, a.point)
                                       : a.real == b.real;
}

// The groups of a record that differ from what it should hold; what is missing and has its usual value is
// no difference.
std::vector<group> differences(const group_list& held, const active_view& view)
{
    const active_view usual;
    const double *d = view.direction, *t = view.target;
    const std::pair<group, group> wanted[] = {
        {point_group(CENTER, view.center.x, view.center.y),
         point_group(CENTER, usual.center.x, usual.center.y)},
        {point_group(DIRECTION, d[0], d[1], d[2]), point_group(DIRECTION, 0, 0, 1)},
        {point_group(TARGET, t[0], t[1], t[2]), point_group(TARGET, 0, 0, 0)},
        {real_group(HEIGHT, view.height), real_group(HEIGHT, usual.height)},
        {real_group(TWIST, view.twist), real_group(TWIST, 0.0)},
        {int_group(MODE, view.mode), int_group(MODE, 0)},
    };
    std::vector<group> out;
    for (const auto& [value, otherwise] : wanted) {
        const group* there = find(held, value.code);
        if (!same_value(there ? *there : otherwise, value))
            out.push_back(value);
    }
    return out;
}

} // namespace

plane_place active_view::on_screen(const double world[3]) const
{
    const transform plane = plane_of({direction[0], direction[1], direction[2]});
    const vec v = vec{world[0], world[1], world[2]} - vec{target[0], target[1], target[2]};
    const double x = v.x * plane.ex.x + v.y * plane.ex.y + v.z * plane.ex.z;
    const double y = v.x * plane.ey.x + v.y * plane.ey.y + v.z * plane.ey.z;
    const double c = std::cos(twist), s = std::sin(twist);
    return {c * x - s * y, s * x + c * y};
}

void active_view::in_world(const plane_place& at, double world[3]) const
{
    const transform plane = plane_of({direction[0], direction[1], direction[2]});
    const double c = std::cos(twist), s = std::sin(twist);
    const vec v = vec{target[0], target[1], target[2]} + plane.ex * (c * at.x + s * at.y) +
                  plane.ey * (c * at.y - s * at.x);
    world[0] = v.x;
    world[1] = v.y;
    world[2] = v.z;
}

void active_view::turn_to(double to)
{
    double middle[3];
    in_world(center, middle);
    twist = to;
    center = on_screen(middle);
}

active_view active_view_of(const database& db)
{
    active_view view;
    const object_id record = db.record("VPORT", "*ACTIVE");
    if (!record)
        return view;
    const group_list& groups = db.at(record).groups;
    double middle[2] = {view.center.x, view.center.y};
    take_point(groups, CENTER, middle, 2);
    view.center = {middle[0], middle[1]};
    take_point(groups, DIRECTION, view.direction, 3);
    if (!(std::hypot(view.direction[0], view.direction[1], view.direction[2]) > 0.0))
        view.direction[2] = 1.0;
    take_point(groups, TARGET, view.target, 3);
    view.height = positive_of(groups, HEIGHT, view.height);
    view.aspect = positive_of(groups, ASPECT, view.aspect);
    view.twist = finite_of(groups, TWIST, view.twist);
    view.mode = static_cast<int>(int_of(groups, MODE, view.mode));
    return view;
}

void put_active_view(database& db, const active_view& view)
{
    object_id record = db.record("VPORT", "*ACTIVE");
    if (!record)
        record = add_record(db, "VPORT", "*Active");
    if (!record)
        return;
    const std::vector<group> changes = differences(db.at(record).groups, view);
    if (changes.empty())
        return;
    group_list& groups = db.modify(record);
    for (const group& change : changes) {
        if (group* there = find(groups, change.code)) {
            *there = change;
            continue;
        }
        constexpr int FIRST_EXTENDED = 1000;
        const auto end =
            std::find_if(groups.begin(), groups.end(), [](const group& g) { return g.code >= FIRST_EXTENDED; });
        groups.insert(end, change);
    }
}

} // namespace host::db
