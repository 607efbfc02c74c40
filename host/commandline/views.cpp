// views.cpp: ZOOM, PAN, REGEN, REDRAW, UCS. The view lives in the record *Active of the table VPORT.
#include "host/commandline/views.h"

#include <algorithm>
#include <cmath>

#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/screen.h"
#include "host/commandline/selection.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr std::size_t KEPT_VIEWS = 10;
constexpr double ROOM_AROUND = 1.02;

struct view_history {
    explicit view_history(document&) {}
    std::vector<view> before;
};

db::object_id active_record(const db::database& db)
{
    return db.record("VPORT", "*Active");
}

double aspect_of(document& doc)
{
    const list_ptr screen = db::get_variable(doc, "SCREENSIZE");
    if (!screen || !(screen->resval.rpoint[0] > 0.0) || !(screen->resval.rpoint[1] > 0.0))
        return 4.0 / 3.0;
    return screen->resval.rpoint[0] / screen->resval.rpoint[1];
}

void put_view(document& doc, const view& to)
{
    db::database& db = db::database_of(doc);
    const db::object_id record = active_record(db);
    if (!record || !(to.height > 0.0) || !std::isfinite(to.height) || !std::isfinite(to.x) ||
        !std::isfinite(to.y))
        return;
    db::group_list& groups = db.modify(record);
    if (db::group* g = db::find(groups, 12))
        *g = db::point_group(12, to.x, to.y);
    else
        groups.push_back(db::point_group(12, to.x, to.y));
    if (db::group* g = db::find(groups, 40))
        g->real = to.height;
    else
        groups.push_back(db::real_group(40, to.height));
}

view view_of_box(document& doc, const db::box& box)
{
    const double width = box.high[0] - box.low[0], height = box.high[1] - box.low[1];
    view out{(box.low[0] + box.high[0]) / 2, (box.low[1] + box.high[1]) / 2,
             std::max(height, width / aspect_of(doc)) * ROOM_AROUND};
    if (!(out.height > 0.0)) // a single point: the scale stays
        out.height = view_of(doc).height;
    return out;
}

// "2" against the whole drawing, "2X" against the view, "2XP" as a share of paper units.
bool scale_by_text(document& doc, std::string_view text)
{
    const std::string word = upper(trimmed(text));
    const bool of_paper = word.ends_with("XP"), of_view = !of_paper && word.ends_with("X");
    const std::optional<double> factor = parse_real(word.substr(0, word.size() - (of_paper  ? 2
                                                                                  : of_view ? 1
                                                                                            : 0)));
    if (!factor || !(*factor > 0.0))
        return false;
    view now = view_of(doc);
    double whole = now.height;
    if (!of_view && !of_paper) {
        const list_ptr low = db::get_variable(doc, "LIMMIN"), high = db::get_variable(doc, "LIMMAX");
        if (low && high && high->resval.rpoint[1] > low->resval.rpoint[1])
            whole = high->resval.rpoint[1] - low->resval.rpoint[1];
    }
    now.height = whole / *factor;
    set_view(doc, now);
    return true;
}

task<> zoom_window(command_io& io, point3 first)
{
    question q = ask_point("\nSpecify opposite corner: ");
    q.with(RSG_NONULL).from(first);
    const answer other = co_await io.ask(std::move(q));
    db::box box = db::box::empty();
    box.add(first.x, first.y, 0);
    box.add(other.point.x, other.point.y, 0);
    view to = view_of_box(io.doc(), box);
    to.height /= ROOM_AROUND;
    set_view(io.doc(), to);
}

task<> zoom_center(command_io& io)
{
    view to = view_of(io.doc());
    question q = ask_point("\nSpecify center point: ");
    const answer middle = co_await io.ask(std::move(q));
    if (middle.ok()) {
        to.x = middle.point.x;
        to.y = middle.point.y;
    }
    question size(want::distance,
                  with_default("\nEnter magnification or height", length_text(io.doc(), to.height)));
    size.with(RSG_NOZERO | RSG_NONEG | RSG_OTHER);
    const answer height = co_await io.ask(std::move(size));
    if (height.ok())
        to.height = height.real;
    set_view(io.doc(), to);
    if (height.status == RTKWORD && !scale_by_text(io.doc(), height.text))
        throw command_failed{"Requires a distance, numberX, or numberXP."};
}

task<> zoom_objects(command_io& io)
{
    const object_list chosen = co_await select_objects(io);
    db::box box = db::box::empty();
    for (const db::object_id id : chosen) {
        const db::box one = db::extents_of(io.data(), id);
        if (one.is_empty())
            continue;
        box.add(one.low[0], one.low[1], 0);
        box.add(one.high[0], one.high[1], 0);
    }
    if (!box.is_empty())
        set_view(io.doc(), view_of_box(io.doc(), box));
}

} // namespace

view view_of(document& doc)
{
    const db::database& db = db::database_of(doc);
    view out;
    if (const db::object_id record = active_record(db)) {
        const db::group_list& groups = db.at(record).groups;
        if (const db::group* g = db::find(groups, 12)) {
            out.x = g->point[0];
            out.y = g->point[1];
        }
        out.height = db::real_of(groups, 40, 1.0);
    }
    return out;
}

void set_view(document& doc, const view& to)
{
    std::vector<view>& before = doc.part<view_history>().before;
    before.push_back(view_of(doc));
    if (before.size() > KEPT_VIEWS)
        before.erase(before.begin());
    put_view(doc, to);
}

bool previous_view(document& doc)
{
    std::vector<view>& before = doc.part<view_history>().before;
    if (before.empty())
        return false;
    put_view(doc, before.back());
    before.pop_back();
    return true;
}

void view_all(document& doc)
{
    db::database& db = db::database_of(doc);
    const db::box box = db::space_extents(db, db.current_space());
    if (!box.is_empty()) {
        set_view(doc, view_of_box(doc, box));
        return;
    }
    const list_ptr low = db::get_variable(doc, "LIMMIN"), high = db::get_variable(doc, "LIMMAX");
    if (!low || !high)
        return;
    db::box limits = db::box::empty();
    limits.add(low->resval.rpoint[0], low->resval.rpoint[1], 0);
    limits.add(high->resval.rpoint[0], high->resval.rpoint[1], 0);
    set_view(doc, view_of_box(doc, limits));
}

task<> zoom_command(command_io& io)
{
    question q = ask_point("\nSpecify corner of window, enter a scale factor (nX or nXP), or\n"
                           "[All/Center/Extents/Previous/Scale/Window/Object]: ",
                           "All Center Extents Previous Scale Vmax Window Object");
    q.with(RSG_OTHER);
    const answer given = co_await io.ask(std::move(q));
    if (given.ok()) {
        co_await zoom_window(io, given.point);
    } else if (given.is("Window")) {
        question corner = ask_point("\nSpecify first corner: ");
        corner.with(RSG_NONULL);
        const answer first = co_await io.ask(std::move(corner));
        co_await zoom_window(io, first.point);
    } else if (given.is("Center")) {
        co_await zoom_center(io);
    } else if (given.is("All") || given.is("Extents") || given.is("Vmax")) {
        view_all(io.doc());
    } else if (given.is("Previous")) {
        if (!previous_view(io.doc()))
            io.say("No previous view saved.");
    } else if (given.is("Object")) {
        co_await zoom_objects(io);
    } else if (!given.none()) {
        std::string text = given.text;
        if (given.is("Scale")) {
            const answer factor = co_await io.ask(ask_word("\nEnter a scale factor (nX or nXP): "));
            text = factor.text;
        }
        if (!scale_by_text(io.doc(), text))
            throw command_failed{"Requires a distance, numberX, or option keyword."};
    }
}

task<> pan_command(command_io& io)
{
    question q = ask_point("\nSpecify base point or displacement: ");
    q.with(RSG_NONULL);
    const answer from = co_await io.ask(std::move(q));
    question second = ask_point("\nSpecify second point: ");
    second.from(from.point);
    const answer to = co_await io.ask(std::move(second));
    view now = view_of(io.doc());
    now.x -= to.none() ? from.point.x : to.point.x - from.point.x;
    now.y -= to.none() ? from.point.y : to.point.y - from.point.y;
    set_view(io.doc(), now);
}

task<> regen_command(command_io& io)
{
    clear_screen_vectors(io.doc());
    io.say("Regenerating model.");
    co_return;
}

task<> redraw_command(command_io& io)
{
    clear_screen_vectors(io.doc());
    co_return;
}

// Coordinates are those of the world: the world system is all that can be chosen.
task<> ucs_command(command_io& io)
{
    question q(want::key_word, "\nEnter an option [World/Previous] <World>: ");
    q.keys("World Previous View").with(RSG_OTHER);
    const answer given = co_await io.ask(std::move(q));
    if (given.ok() && given.text != "World" && given.text != "Previous")
        throw command_failed{"UCS: only the world coordinate system is available."};
}

} // namespace host::commandline
