// draw_lines.cpp: LINE, POINT, 3DPOLY.
#include <cmath>

#include "host/commandline/draw_commands.h"
#include "host/commandline/new_objects.h"
#include "host/core/document.h"

namespace host::commandline
{

namespace
{

db::object_id make_line(command_io& io, const point3& a, const point3& b)
{
    db::group_list groups = begin_object(io.doc(), "LINE");
    add_point(groups, 10, a);
    add_point(groups, 11, b);
    return make_object(io, std::move(groups));
}

} // namespace

task<> line_command(command_io& io)
{
    last_drawn& last = io.doc().part<last_drawn>();
    question first = ask_point("\nSpecify first point: ");
    if (!last.any)
        first.with(RSG_NONULL);
    const answer start = co_await io.ask(std::move(first));
    std::vector<point3> points{start.ok() ? start.point : last.end};
    std::vector<db::object_id> made;
    for (;;) {
        const bool can_close = made.size() >= 2;
        question next =
            ask_point(can_close ? "\nSpecify next point or [Close/Undo]: " : "\nSpecify next point or [Undo]: ",
                      can_close ? "Close Undo" : "Undo");
        next.from(points.back());
        const answer given = co_await io.ask(std::move(next));
        if (given.none())
            break;
        if (given.is("Undo")) {
            if (made.empty()) {
                io.say("All segments already undone.");
                continue;
            }
            io.data().set_erased(made.back(), true);
            made.pop_back();
            points.pop_back();
            continue;
        }
        const bool close = given.is("Close");
        const point3 to = close ? points.front() : given.point;
        const point3 from = points.back();
        made.push_back(make_line(io, from, to));
        points.push_back(to);
        last.any = true;
        last.is_arc = false;
        last.end = to;
        last.direction = std::atan2(to.y - from.y, to.x - from.x);
        if (close)
            break;
    }
}

task<> point_command(command_io& io)
{
    question where = ask_point("\nSpecify a point: ");
    where.with(RSG_NONULL);
    const answer given = co_await io.ask(std::move(where));
    db::group_list groups = begin_object(io.doc(), "POINT");
    add_point(groups, 10, given.point);
    make_object(io, std::move(groups));
}

task<> polyline_3d_command(command_io& io)
{
    constexpr int CLOSED = 1, IN_SPACE = 8, SPACE_VERTEX = 32;
    question first = ask_point("\nSpecify start point of polyline: ");
    first.with(RSG_NONULL);
    const answer start = co_await io.ask(std::move(first));
    std::vector<point3> points{start.point};
    bool closed = false;
    while (!closed) {
        const bool can_close = points.size() >= 3;
        question next = ask_point(can_close ? "\nSpecify endpoint of line or [Close/Undo]: "
                                            : "\nSpecify endpoint of line or [Undo]: ",
                                  can_close ? "Close Undo" : "Undo");
        next.from(points.back());
        const answer given = co_await io.ask(std::move(next));
        if (given.none())
            break;
        closed = given.is("Close");
        if (given.ok())
            points.push_back(given.point);
        else if (given.is("Undo") && points.size() > 1)
            points.pop_back();
        else if (given.is("Undo"))
            io.say("All segments already undone.");
    }
    if (points.size() < 2)
        co_return;
    db::group_list main = begin_object(io.doc(), "POLYLINE", false);
    add_int(main, 66, 1);
    add_point(main, 10, {0, 0, 0});
    add_int(main, 70, IN_SPACE | (closed ? CLOSED : 0));
    std::vector<db::group_list> vertices;
    for (const point3& p : points) {
        db::group_list vertex = begin_object(io.doc(), "VERTEX", false);
        add_point(vertex, 10, p);
        add_int(vertex, 70, SPACE_VERTEX);
        vertices.push_back(std::move(vertex));
    }
    make_object(io, std::move(main), std::move(vertices));
}

} // namespace host::commandline
