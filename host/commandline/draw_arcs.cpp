// draw_arcs.cpp: CIRCLE and ARC.
#include <cmath>
#include <numbers>

#include "host/commandline/arc_shapes.h"
#include "host/commandline/draw_commands.h"
#include "host/commandline/new_objects.h"
#include "host/core/document.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

double plane_distance(const point3& a, const point3& b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

double plane_direction(const point3& a, const point3& b)
{
    return std::atan2(b.y - a.y, b.x - a.x);
}

void make_circle(command_io& io, const point3& center, double radius)
{
    if (!(radius > 0.0))
        throw command_failed{"Circle has no radius."};
    db::group_list groups = begin_object(io.doc(), "CIRCLE");
    add_point(groups, 10, center);
    add_real(groups, 40, radius);
    make_object(io, std::move(groups));
    db::set_real(io.doc(), "CIRCLERAD", radius);
}

task<point3> must_point(command_io& io, std::string_view prompt, std::optional<point3> base = {})
{
    question q = ask_point(prompt);
    q.with(RSG_NONULL);
    q.base = base;
    const answer given = co_await io.ask(std::move(q));
    co_return given.point;
}

task<> circle_by_points(command_io& io, bool three)
{
    if (!three) {
        const point3 a = co_await must_point(io, "\nSpecify first end point of circle's diameter: ");
        const point3 b = co_await must_point(io, "\nSpecify second end point of circle's diameter: ", a);
        make_circle(io, {(a.x + b.x) / 2, (a.y + b.y) / 2, a.z}, plane_distance(a, b) / 2);
        co_return;
    }
    const point3 a = co_await must_point(io, "\nSpecify first point on circle: ");
    const point3 b = co_await must_point(io, "\nSpecify second point on circle: ");
    const point3 c = co_await must_point(io, "\nSpecify third point on circle: ");
    const std::optional<arc_shape> arc = arc_through(a, b, c);
    if (!arc)
        throw command_failed{"Circle does not exist."};
    make_circle(io, arc->center, arc->radius);
}

void make_arc(command_io& io, const arc_shape& arc, bool ends_at_end)
{
    if (!(arc.radius > 0.0))
        throw command_failed{"Invalid arc: it has no radius."};
    db::group_list groups = begin_object(io.doc(), "ARC");
    add_point(groups, 10, arc.center);
    add_real(groups, 40, arc.radius);
    add_real(groups, 50, normal_angle(arc.start));
    add_real(groups, 51, normal_angle(arc.end));
    make_object(io, std::move(groups));
    last_drawn& last = io.doc().part<last_drawn>();
    const double at = ends_at_end ? arc.end : arc.start;
    last.end = on_circle(arc.center, arc.radius, at);
    last.direction = at + (ends_at_end ? 1 : -1) * std::numbers::pi / 2;
    last.is_arc = true;
    last.any = true;
}

// From a centre and a start: an end, an included angle or a chord.
task<> arc_about(command_io& io, point3 center, point3 start)
{
    arc_shape arc{center, plane_distance(center, start), plane_direction(center, start), 0.0};
    question q = ask_point("\nSpecify end point of arc or [Angle/chord Length]: ", "Angle Length");
    q.with(RSG_NONULL).from(center);
    const answer end = co_await io.ask(std::move(q));
    if (end.is("Angle")) {
        question turn(want::angle, "\nSpecify included angle: ");
        turn.with(RSG_NONULL | RSG_NOZERO).from(center);
        const answer included = co_await io.ask(std::move(turn));
        arc.end = arc.start + included.turn;
        if (included.turn < 0.0) { // clockwise
            std::swap(arc.start, arc.end);
            make_arc(io, arc, false);
            co_return;
        }
    } else if (end.is("Length")) {
        question chord(want::distance, "\nSpecify length of chord: ");
        chord.with(RSG_NONULL | RSG_NOZERO).from(start);
        const answer length = co_await io.ask(std::move(chord));
        const double half = std::abs(length.real) / (2 * arc.radius);
        if (!(half <= 1.0))
            throw command_failed{"Invalid chord length."};
        const double turn = 2 * std::asin(half);
        arc.end = arc.start + (length.real < 0 ? 2 * std::numbers::pi - turn : turn);
    } else {
        arc.end = plane_direction(center, end.point);
    }
    make_arc(io, arc, true);
}

// From both ends: a centre, an included angle, a direction at the start or a radius.
task<> arc_between(command_io& io, point3 start, point3 end)
{
    question q = ask_point("\nSpecify center point of arc or [Angle/Direction/Radius]: ",
                           "Angle CEnter Direction Radius");
    q.with(RSG_NONULL);
    answer given = co_await io.ask(std::move(q));
    if (given.is("CEnter"))
        given.point = co_await must_point(io, "\nSpecify center point of arc: ");
    double bulge = 0.0;
    if (given.is("Angle")) {
        question turn(want::angle, "\nSpecify included angle: ");
        turn.with(RSG_NONULL | RSG_NOZERO).from(start);
        const answer included = co_await io.ask(std::move(turn));
        bulge = std::tan(included.turn / 4.0);
    } else if (given.is("Direction")) {
        question along(want::orientation, "\nSpecify tangent direction for the start point of arc: ");
        along.with(RSG_NONULL).from(start);
        const answer direction = co_await io.ask(std::move(along));
        bulge = bulge_of_tangent(start, end, direction.real);
    } else if (given.is("Radius")) {
        question radius(want::distance, "\nSpecify radius of arc: ");
        radius.with(RSG_NONULL | RSG_NOZERO).from(end);
        const answer length = co_await io.ask(std::move(radius));
        const double half = plane_distance(start, end) / 2 / std::abs(length.real);
        if (!(half <= 1.0))
            throw command_failed{"Invalid radius."};
        const double turn = 2 * std::asin(half);
        bulge = std::tan((length.real < 0 ? 2 * std::numbers::pi - turn : turn) / 4.0);
    } else {
        make_arc(io,
                 {given.point, plane_distance(given.point, start), plane_direction(given.point, start),
                  plane_direction(given.point, end)},
                 true);
        co_return;
    }
    const std::optional<arc_shape> arc = arc_of_bulge(start, end, bulge);
    if (!arc)
        throw command_failed{"Invalid arc: the points are in line."};
    make_arc(io, *arc, bulge > 0);
}

} // namespace

task<> circle_command(command_io& io)
{
    question q = ask_point("\nSpecify center point for circle or [3P/2P]: ", "3P 2P");
    q.with(RSG_NONULL);
    const answer first = co_await io.ask(std::move(q));
    if (!first.ok()) {
        co_await circle_by_points(io, first.is("3P"));
        co_return;
    }
    const double before = db::real_variable(io.doc(), "CIRCLERAD");
    const bool has_default = before > 0.0;
    const std::string prompt = "\nSpecify radius of circle or [Diameter]";
    question size(want::distance,
                  has_default ? with_default(prompt, length_text(io.doc(), before)) : prompt + ": ");
    size.keys("Diameter").with(RSG_NOZERO | RSG_NONEG | (has_default ? 0 : RSG_NONULL)).from(first.point);
    const answer radius = co_await io.ask(std::move(size));
    double value = radius.ok() ? radius.real : before;
    if (radius.is("Diameter")) {
        const std::string across = "\nSpecify diameter of circle";
        question whole(want::distance,
                       has_default ? with_default(across, length_text(io.doc(), before * 2)) : across + ": ");
        whole.with(RSG_NOZERO | RSG_NONEG | (has_default ? 0 : RSG_NONULL)).from(first.point);
        const answer diameter = co_await io.ask(std::move(whole));
        value = diameter.ok() ? diameter.real / 2 : before;
    }
    make_circle(io, first.point, value);
}

task<> arc_command(command_io& io)
{
    const last_drawn last = io.doc().part<last_drawn>();
    question q = ask_point("\nSpecify start point of arc or [Center]: ", "Center CEnter");
    if (!last.any)
        q.with(RSG_NONULL);
    const answer first = co_await io.ask(std::move(q));
    if (first.none()) { // goes on smoothly from what was drawn last
        const point3 end = co_await must_point(io, "\nSpecify end point of arc: ", last.end);
        const double bulge = bulge_of_tangent(last.end, end, last.direction);
        const std::optional<arc_shape> arc = arc_of_bulge(last.end, end, bulge);
        if (!arc)
            throw command_failed{"Invalid arc: the points are in line."};
        make_arc(io, *arc, bulge > 0);
        co_return;
    }
    if (!first.ok()) {
        const point3 center = co_await must_point(io, "\nSpecify center point of arc: ");
        const point3 start = co_await must_point(io, "\nSpecify start point of arc: ", center);
        co_await arc_about(io, center, start);
        co_return;
    }
    question next = ask_point("\nSpecify second point of arc or [Center/End]: ", "Center CEnter End");
    next.with(RSG_NONULL).from(first.point);
    const answer second = co_await io.ask(std::move(next));
    if (second.is("End")) {
        const point3 end = co_await must_point(io, "\nSpecify end point of arc: ", first.point);
        co_await arc_between(io, first.point, end);
    } else if (!second.ok()) {
        const point3 center = co_await must_point(io, "\nSpecify center point of arc: ", first.point);
        co_await arc_about(io, center, first.point);
    } else {
        const point3 end = co_await must_point(io, "\nSpecify end point of arc: ", second.point);
        const std::optional<arc_shape> arc = arc_through(first.point, second.point, end);
        if (!arc)
            throw command_failed{"Invalid arc: the points are in line."};
        make_arc(io, *arc, bulge_through(first.point, second.point, end) > 0);
    }
}

} // namespace host::commandline
