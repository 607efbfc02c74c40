// dim_commands.cpp: the dimensioning mode, DIM and DIM1, with its LEADER. A leader is drawn when the last
// prompt has been answered, as single objects: head, lines from the tip on, text. So a leader that is
// cancelled leaves nothing, and programs can take the objects apart from the end of the drawing. All of it
// lies at the height of the leader's start.
#include "host/commandline/dim_commands.h"

#include <algorithm>
#include <cmath>

#include "host/commandline/arrow_heads.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/leader_shape.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/text_styles.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

// What the commands of one stay in the mode have drawn, a list a command.
using drawn_objects = std::vector<std::vector<db::object_id>>;

// ---- properties

constexpr int BY_BLOCK = 0, BY_LAYER = 256;

// A part of a dimension: the current properties, and a colour of its own unless that is BYBLOCK. Parts of
// dimensions are flat, whatever the current thickness.
db::group_list begin_part(command_io& io, std::string_view type, const char* color_variable)
{
    db::group_list groups = begin_object(io.doc(), type, false);
    const int color = db::int_variable(io.doc(), color_variable);
    if (color == BY_BLOCK)
        return groups;
    std::erase_if(groups, [](const db::group& each) { return each.code == 62; });
    if (color > 0 && color < BY_LAYER)
        add_int(groups, 62, color);
    return groups;
}

// A size of the drawing at the scale of its dimensions; a scale of 0 counts as 1.
double scaled(command_io& io, double size)
{
    const double scale = db::real_variable(io.doc(), "DIMSCALE");
    return scale == 0.0 ? size : size * scale;
}

// ---- LEADER

struct leader_answers {
    std::vector<point3> points;
    std::string text; // nothing: none is wanted
};

bool same_place(const point3& a, const point3& b)
{
    return a.x == b.x && a.y == b.y;
}

task<> ask_leader_points(command_io& io, leader_answers& what)
{
    question first = ask_point("\nLeader start: ");
    first.with(RSG_NONULL);
    const answer start = co_await io.ask(std::move(first));
    std::vector<point3>& points = what.points;
    points.push_back(start.point);
    for (;;) {
        question next = ask_point("\nTo point: ", "Undo");
        next.from(points.back());
        const answer given = co_await io.ask(std::move(next));
        if (given.none())
            break;
        if (given.is("Undo")) {
            if (points.size() == 1)
                io.say("All segments already undone.");
            else
                points.pop_back();
            continue;
        }
        const point3 to{given.point.x, given.point.y, points[0].z};
        if (same_place(to, points.back()))
            io.say("The leader is at that point already.");
        else
            points.push_back(to);
    }
}

// "<>" in an answer stands for the measured text.
task<> ask_leader_text(command_io& io, leader_answers& what)
{
    // Nothing in this host measures, so the last measurement is that of a new session.
    const std::string measured = length_text(io.doc(), 0.0);
    const answer given = co_await io.ask(ask_text(with_default("\nDimension text", measured)));
    what.text = given.none() ? measured : given.text;
    if (const std::size_t at = what.text.find("<>"); at != std::string::npos)
        what.text.replace(at, 2, measured);
    if (trimmed(what.text).empty())
        what.text.clear();
}

db::group_list text_of_leader(command_io& io, const leader_shape& shape, const std::string& text, double height)
{
    const std::string name = db::text_variable(io.doc(), "TEXTSTYLE");
    const text_style style = text_style_of(io.data(), name);
    const point3& at = shape.text_middle;
    db::group_list groups = begin_part(io, "TEXT", "DIMCLRT");
    add_point(groups, 10, at); // its place follows from 11
    add_real(groups, 40, height);
    add_text(io.data(), groups, 1, text);
    add_real(groups, 41, style.width);
    add_real(groups, 51, style.oblique);
    add_text(io.data(), groups, 7, name);
    add_int(groups, 71, style.generation);
    add_int(groups, 72, shape.text_runs_left ? 2 : 0); // the edge next to the leader
    add_point(groups, 11, at);
    add_int(groups, 73, 2); // by its middle
    return groups;
}

db::group_list head_of_leader(command_io& io, const arrow_head& head, const leader_shape& shape,
                              const point3& tip, double size)
{
    if (head.how == arrow_head::form::block) {
        db::group_list groups = begin_part(io, "INSERT", "DIMCLRD");
        add_text(io.data(), groups, 2, head.block);
        add_point(groups, 10, tip);
        for (const int code : {41, 42, 43})
            add_real(groups, code, size);
        add_real(groups, 50, normal_angle(shape.head_direction));
        return groups;
    }
    const head_corners corners = corners_of_head(tip, shape.head_direction, size);
    db::group_list groups = begin_part(io, "SOLID", "DIMCLRD");
    add_point(groups, 10, corners.left);
    add_point(groups, 11, corners.right);
    add_point(groups, 12, corners.tip);
    add_point(groups, 13, corners.tip);
    return groups;
}

bool is_finite(const db::group& each)
{
    if (each.kind == db::group_kind::real)
        return std::isfinite(each.real);
    return each.kind != db::group_kind::point ||
           std::all_of(each.point, each.point + each.dimensions, [](double v) { return std::isfinite(v); });
}

// Everything is put together before the first object is made, so that a leader that can't be leaves nothing.
std::vector<db::object_id> draw_leader(command_io& io, const leader_answers& what)
{
    const std::string style = db::text_variable(io.doc(), "TEXTSTYLE");
    const double fixed = text_style_of(io.data(), style).height;
    leader_sizes sizes;
    sizes.arrow = scaled(io, db::real_variable(io.doc(), "DIMASZ"));
    sizes.text_gap = scaled(io, std::abs(db::real_variable(io.doc(), "DIMGAP")));
    sizes.text_height = fixed > 0.0 ? fixed : scaled(io, db::real_variable(io.doc(), "DIMTXT"));
    const bool has_text = !what.text.empty();
    if (has_text && !(sizes.text_height > 0.0))
        throw command_failed{"LEADER: the height of dimension text, DIMTXT, must be positive."};
    const arrow_head head = leader_head(io);
    sizes.line_to_tip = head.line_to_tip;
    const leader_shape shape = shape_of_leader(what.points, sizes, has_text);

    std::vector<db::group_list> parts;
    if (shape.has_head && head.how != arrow_head::form::none)
        parts.push_back(head_of_leader(io, head, shape, what.points[0], sizes.arrow));
    for (const auto& [from, to] : shape.lines) {
        parts.push_back(begin_part(io, "LINE", "DIMCLRD"));
        add_point(parts.back(), 10, from);
        add_point(parts.back(), 11, to);
    }
    if (has_text)
        parts.push_back(text_of_leader(io, shape, what.text, sizes.text_height));
    for (const db::group_list& each : parts)
        if (!std::all_of(each.begin(), each.end(), is_finite))
            throw command_failed{"LEADER: it would reach beyond the numbers that a drawing can hold."};

    std::vector<db::object_id> made;
    for (db::group_list& each : parts)
        made.push_back(make_object(io, std::move(each)));
    return made;
}

task<> leader(command_io& io, drawn_objects& drawn)
{
    leader_answers answers;
    co_await ask_leader_points(io, answers);
    if (answers.points.size() < 2) {
        // What a program has sent for the text must not be taken for something else.
        if (!io.is_typed())
            throw command_failed{"LEADER: a leader needs a point to go to."};
        co_return;
    }
    co_await ask_leader_text(io, answers);
    drawn.push_back(draw_leader(io, answers));
}

// ---- the other commands of the mode

task<> dim_style(command_io& io, drawn_objects&)
{
    const std::string now = db::text_variable(io.doc(), "TEXTSTYLE");
    const answer name = co_await io.ask(ask_text(with_default("\nNew text style", now)));
    if (name.none())
        co_return;
    if (!io.data().record("STYLE", name.text)) {
        io.refuse("Cannot find text style \"" + name.text + "\".");
        co_return;
    }
    db::set_text(io.doc(), "TEXTSTYLE", name.text);
    io.say(name.text + " is now the current text style.");
}

task<> dim_redraw(command_io& io, drawn_objects&)
{
    return redraw_command(io);
}

// The last command of this stay in the mode.
task<> dim_undo(command_io& io, drawn_objects& drawn)
{
    if (drawn.empty()) {
        io.say("Everything has been undone.");
        co_return;
    }
    for (const db::object_id id : drawn.back())
        io.data().set_erased(id, true);
    drawn.pop_back();
}

struct dim_entry {
    std::string_view name;
    task<> (*run)(command_io& io, drawn_objects& drawn); // null: leaves the mode
};

constexpr dim_entry ENTRIES[] = {
    {"Exit", nullptr}, {"Leader", leader}, {"REDraw", dim_redraw}, {"STYle", dim_style}, {"Undo", dim_undo},
};
constexpr std::string_view ENTRY_WORDS = "Exit Leader REDraw STYle Undo";

task<> dimension(command_io& io, bool once)
{
    drawn_objects drawn;
    for (;;) {
        question q(want::word, "\nDim: ");
        q.keys(ENTRY_WORDS);
        const answer given = co_await io.ask(std::move(q));
        if (given.none())
            co_return;
        const auto entry = std::find_if(std::begin(ENTRIES), std::end(ENTRIES),
                                        [&](const dim_entry& each) { return given.is(each.name); });
        if (entry == std::end(ENTRIES)) {
            io.refuse("Unknown dimensioning command \"" + upper(given.text) + "\".");
            continue;
        }
        if (!entry->run)
            co_return;
        co_await entry->run(io, drawn);
        if (once)
            co_return;
    }
}

} // namespace

task<> dim1_command(command_io& io)
{
    return dimension(io, true);
}

task<> dim_command(command_io& io)
{
    return dimension(io, false);
}

} // namespace host::commandline
