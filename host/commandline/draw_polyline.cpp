// draw_polyline.cpp: PLINE. The vertices are collected with their bulges and widths; the object is made
// when the command ends, also by a cancel, which leaves what has been drawn.
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

struct vertex {
    point3 at;
    double bulge = 0.0; // of the segment that starts here
    double start_width = 0.0, end_width = 0.0;
};

class polyline_drawing
{
public:
    explicit polyline_drawing(command_io& io) : io_(io) {}
    task<> run();

private:
    task<> segments();
    task<bool> line_step();
    task<bool> arc_step();
    task<> ask_widths(bool halves);
    task<> arc_by_word(std::string word);
    task<point3> arc_end(std::string_view prompt);
    void line_to(const point3& to);
    void arc_to(const point3& to, double bulge);
    void undo();
    double direction() const;
    void make();

    command_io& io_;
    std::vector<vertex> chain_;
    double width_[2] = {0.0, 0.0};
    bool closed_ = false, arcs_ = false;
};

// Direction of travel at the end of the chain.
double polyline_drawing::direction() const
{
    if (chain_.size() < 2)
        return io_.doc().part<last_drawn>().direction;
    const vertex& from = chain_[chain_.size() - 2];
    const point3& to = chain_.back().at;
    return std::atan2(to.y - from.at.y, to.x - from.at.x) + 2.0 * std::atan(from.bulge);
}

void polyline_drawing::line_to(const point3& to)
{
    arc_to(to, 0.0);
}

void polyline_drawing::arc_to(const point3& to, double bulge)
{
    chain_.back().bulge = bulge;
    chain_.back().start_width = width_[0];
    chain_.back().end_width = width_[1];
    width_[0] = width_[1]; // a taper is for one segment
    chain_.push_back({{to.x, to.y, chain_.front().at.z}, 0.0, width_[0], width_[1]});
}

void polyline_drawing::undo()
{
    if (chain_.size() < 2) {
        io_.say("All segments already undone.");
        return;
    }
    chain_.pop_back();
    chain_.back().bulge = 0.0;
}

task<> polyline_drawing::ask_widths(bool halves)
{
    const double factor = halves ? 2.0 : 1.0;
    const char* what = halves ? "half-width" : "width";
    question first(want::distance, with_default(std::string("\nSpecify starting ") + what,
                                                length_text(io_.doc(), width_[0] / factor)));
    first.with(RSG_NONEG).from(chain_.back().at);
    const answer start = co_await io_.ask(std::move(first));
    if (start.ok())
        width_[0] = start.real * factor;
    question second(want::distance, with_default(std::string("\nSpecify ending ") + what,
                                                 length_text(io_.doc(), width_[0] / factor)));
    second.with(RSG_NONEG).from(chain_.back().at);
    const answer end = co_await io_.ask(std::move(second));
    width_[1] = end.ok() ? end.real * factor : width_[0];
}

task<bool> polyline_drawing::line_step()
{
    const bool can_close = chain_.size() >= 2;
    question next =
        ask_point(can_close ? "\nSpecify next point or [Arc/Close/Halfwidth/Length/Undo/Width]: "
                            : "\nSpecify next point or [Arc/Halfwidth/Length/Undo/Width]: ",
                  can_close ? "Arc Close Halfwidth Length Undo Width" : "Arc Halfwidth Length Undo Width");
    next.from(chain_.back().at);
    const answer given = co_await io_.ask(std::move(next));
    if (given.none())
        co_return false;
    if (given.ok()) {
        line_to(given.point);
    } else if (given.is("Arc")) {
        arcs_ = true;
    } else if (given.is("Close")) {
        chain_.back().start_width = width_[0];
        chain_.back().end_width = width_[1];
        closed_ = true;
        co_return false;
    } else if (given.is("Length")) {
        question how_far(want::distance, "\nSpecify length of line: ");
        how_far.with(RSG_NONULL).from(chain_.back().at);
        const answer length = co_await io_.ask(std::move(how_far));
        const double a = direction();
        const point3& from = chain_.back().at;
        line_to({from.x + length.real * std::cos(a), from.y + length.real * std::sin(a), from.z});
    } else if (given.is("Undo")) {
        undo();
    } else {
        co_await ask_widths(given.is("Halfwidth"));
    }
    co_return true;
}

task<point3> polyline_drawing::arc_end(std::string_view prompt)
{
    question q = ask_point(prompt);
    q.with(RSG_NONULL).from(chain_.back().at);
    const answer given = co_await io_.ask(std::move(q));
    co_return given.point;
}

// Angle, CEnter, Direction, Radius, Second pt: the ways to a bulge and an end.
task<> polyline_drawing::arc_by_word(std::string word)
{
    const point3 from = chain_.back().at;
    if (word == "Second") {
        const point3 second = co_await arc_end("\nSpecify second point on arc: ");
        const point3 end = co_await arc_end("\nSpecify end point of arc: ");
        arc_to(end, bulge_through(from, second, end));
    } else if (word == "Direction") {
        question q(want::orientation, "\nSpecify the tangent direction for the start point of arc: ");
        q.with(RSG_NONULL).from(from);
        const answer along = co_await io_.ask(std::move(q));
        const point3 end = co_await arc_end("\nSpecify endpoint of the arc: ");
        arc_to(end, bulge_of_tangent(from, end, along.real));
    } else if (word == "Angle") {
        question q(want::angle, "\nSpecify included angle: ");
        q.with(RSG_NONULL | RSG_NOZERO);
        const answer included = co_await io_.ask(std::move(q));
        const point3 end = co_await arc_end("\nSpecify endpoint of arc: ");
        arc_to(end, std::tan(included.turn / 4.0));
    } else if (word == "CEnter") {
        const point3 center = co_await arc_end("\nSpecify center point of arc: ");
        const point3 toward = co_await arc_end("\nSpecify endpoint of arc: ");
        const double radius = std::hypot(from.x - center.x, from.y - center.y);
        const double a = std::atan2(from.y - center.y, from.x - center.x);
        const double b = std::atan2(toward.y - center.y, toward.x - center.x);
        arc_to({center.x + radius * std::cos(b), center.y + radius * std::sin(b), from.z},
               std::tan(normal_angle(b - a) / 4.0));
    } else { // Radius
        question q(want::distance, "\nSpecify radius of arc: ");
        q.with(RSG_NONULL | RSG_NOZERO | RSG_NONEG).from(from);
        const answer radius = co_await io_.ask(std::move(q));
        const point3 end = co_await arc_end("\nSpecify endpoint of arc: ");
        const double half = std::hypot(end.x - from.x, end.y - from.y) / 2.0;
        if (half > radius.real)
            io_.say("Invalid radius.");
        else
            arc_to(end, std::tan(std::asin(half / radius.real) / 2.0));
    }
}

task<bool> polyline_drawing::arc_step()
{
    question next = ask_point("\nSpecify endpoint of arc or "
                              "[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: ",
                              "Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width");
    next.from(chain_.back().at);
    const answer given = co_await io_.ask(std::move(next));
    if (given.none())
        co_return false;
    if (given.ok()) {
        arc_to(given.point, bulge_of_tangent(chain_.back().at, given.point, direction()));
    } else if (given.is("Line")) {
        arcs_ = false;
    } else if (given.is("CLose")) {
        if (chain_.size() >= 2) {
            chain_.back().bulge = bulge_of_tangent(chain_.back().at, chain_.front().at, direction());
            chain_.back().start_width = width_[0];
            chain_.back().end_width = width_[1];
            closed_ = true;
            co_return false;
        }
        io_.say("Invalid option keyword.");
    } else if (given.is("Undo")) {
        undo();
    } else if (given.is("Halfwidth") || given.is("Width")) {
        co_await ask_widths(given.is("Halfwidth"));
    } else {
        co_await arc_by_word(given.text);
    }
    co_return true;
}

task<> polyline_drawing::segments()
{
    for (bool more = true; more;) {
        if (arcs_)
            more = co_await arc_step();
        else
            more = co_await line_step();
    }
}

void polyline_drawing::make()
{
    if (chain_.size() < 2)
        return;
    constexpr int CLOSED = 1, LINETYPE_ALL_ALONG = 128;
    document& doc = io_.doc();
    const int flags = (closed_ ? CLOSED : 0) | (db::int_variable(doc, "PLINEGEN") ? LINETYPE_ALL_ALONG : 0);
    const double elevation = chain_.front().at.z;
    bool one_width = true;
    for (std::size_t i = 0; i + (closed_ ? 0 : 1) < chain_.size(); ++i)
        one_width = one_width && chain_[i].start_width == chain_[0].start_width &&
                    chain_[i].end_width == chain_[0].start_width;
    db::group_list groups = begin_object(doc, "LWPOLYLINE");
    add_int(groups, 90, static_cast<int>(chain_.size()));
    add_int(groups, 70, flags);
    if (one_width)
        add_real(groups, 43, chain_[0].start_width);
    if (elevation != 0.0)
        add_real(groups, 38, elevation);
    for (const vertex& v : chain_) {
        add_point_2d(groups, 10, v.at);
        add_real(groups, 40, v.start_width);
        add_real(groups, 41, v.end_width);
        add_real(groups, 42, v.bulge);
    }
    make_object(io_, std::move(groups));
    db::set_real(doc, "PLINEWID", width_[1]);
    last_drawn& last = doc.part<last_drawn>();
    last.direction = direction();
    last.end = closed_ ? chain_.front().at : chain_.back().at;
    last.any = true;
    last.is_arc = false;
}

task<> polyline_drawing::run()
{
    question first = ask_point("\nSpecify start point: ");
    first.with(RSG_NONULL);
    const answer start = co_await io_.ask(std::move(first));
    width_[0] = width_[1] = db::real_variable(io_.doc(), "PLINEWID");
    chain_.push_back({start.point, 0.0, width_[0], width_[1]});
    io_.say("Current line-width is " + length_text(io_.doc(), width_[0]));
    bool cancelled = false;
    try {
        co_await segments();
    } catch (const cancelled_by_user&) {
        cancelled = true;
    }
    make();
    if (cancelled)
        throw cancelled_by_user();
}

} // namespace

task<> polyline_command(command_io& io)
{
    polyline_drawing drawing(io);
    co_await drawing.run();
}

} // namespace host::commandline
