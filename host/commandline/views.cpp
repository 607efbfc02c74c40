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
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars.h"
#include "host/dialogs/windows.h"

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

double aspect_of(document& doc)
{
    const list_ptr screen = db::get_variable(doc, "SCREENSIZE");
    if (!screen || !(screen->resval.rpoint[0] > 0.0) || !(screen->resval.rpoint[1] > 0.0))
        return 4.0 / 3.0;
    return screen->resval.rpoint[0] / screen->resval.rpoint[1];
}

// A rectangle of the screen's plane that grows with what is put in.
struct screen_box {
    double low[2] = {HUGE_VAL, HUGE_VAL}, high[2] = {-HUGE_VAL, -HUGE_VAL};

    void add(const db::plane_place& p)
    {
        low[0] = std::min(low[0], p.x), high[0] = std::max(high[0], p.x);
        low[1] = std::min(low[1], p.y), high[1] = std::max(high[1], p.y);
    }
    bool has(const db::plane_place& p) const
    {
        return p.x >= low[0] && p.x <= high[0] && p.y >= low[1] && p.y <= high[1];
    }
    bool is_empty() const { return low[0] > high[0]; }
};

void show_box(document& doc, const screen_box& box, double room)
{
    view to = view_of(doc);
    const double width = box.high[0] - box.low[0], height = box.high[1] - box.low[1];
    to.center = {(box.low[0] + box.high[0]) / 2, (box.low[1] + box.high[1]) / 2};
    const double fitting = std::max(height, width / aspect_of(doc)) * room;
    if (fitting > 0.0) // a single point: the scale stays
        to.height = fitting;
    set_view(doc, to);
}

template <class Take>
void each_corner(const db::box& box, Take take)
{
    for (const double x : {box.low[0], box.high[0]})
        for (const double y : {box.low[1], box.high[1]})
            for (const double z : {box.low[2], box.high[2]}) {
                const double corner[3] = {x, y, z};
                take(corner);
            }
}

// Grows the box by an object. In a turned view the object's own box reaches further than the object, so
// that where its corners would make a difference the object itself is looked at.
void add_object(screen_box& box, const view& seen, const db::database& db, db::object_id id)
{
    const db::box own = db::extents_of(db, id);
    // What reaches farther than numbers go would leave nothing to be seen.
    const bool has_extent =
        !own.is_empty() && is_finite(point3::of(own.low)) && is_finite(point3::of(own.high));
    if (!has_extent)
        return;
    bool is_inside = true;
    each_corner(own, [&](const double* corner) { is_inside = is_inside && box.has(seen.on_screen(corner)); });
    if (is_inside)
        return;
    const std::vector<db::run> outline =
        seen.is_plan() ? db::outline_of(db, id, seen.height / 1000.0) : std::vector<db::run>();
    if (outline.empty())
        each_corner(own, [&](const double* corner) { box.add(seen.on_screen(corner)); });
    for (const db::run& run : outline)
        for (const auto& [x, y] : run) {
            const double at[3] = {x, y, 0.0};
            box.add(seen.on_screen(at));
        }
}

screen_box space_on_screen(document& doc)
{
    db::database& db = db::database_of(doc);
    const view seen = view_of(doc);
    const db::object_id space = db.current_space();
    screen_box box;
    if (seen.is_plan() && seen.twist == 0.0) {
        const db::box all = db::known_space_extents(db, space);
        if (!all.is_empty())
            each_corner(all, [&](const double* corner) { box.add(seen.on_screen(corner)); });
        return box;
    }
    for (db::object_id id = db::first_entity(db, space); id; id = db::next_entity(db, id))
        add_object(box, seen, db, id);
    return box;
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
    const view now = view_of(io.doc());
    screen_box box;
    box.add(now.on_screen(first.data()));
    box.add(now.on_screen(other.point.data()));
    show_box(io.doc(), box, 1.0);
}

task<> zoom_center(command_io& io)
{
    view to = view_of(io.doc());
    question q = ask_point("\nSpecify center point: ");
    const answer middle = co_await io.ask(std::move(q));
    if (middle.ok())
        to.center = to.on_screen(middle.point.data());
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
    screen_box box;
    for (const db::object_id id : chosen)
        add_object(box, view_of(io.doc()), io.data(), id);
    if (!box.is_empty())
        show_box(io.doc(), box, ROOM_AROUND);
}

} // namespace

view view_of(document& doc)
{
    return db::active_view_of(db::database_of(doc));
}

bool is_view(const view& v)
{
    return v.height > 0.0 && std::isfinite(v.height) && std::isfinite(v.center.x) &&
           std::isfinite(v.center.y) && std::isfinite(v.twist);
}

void set_view(document& doc, const view& to)
{
    if (!is_view(to))
        return;
    std::vector<view>& before = doc.part<view_history>().before;
    before.push_back(view_of(doc));
    if (before.size() > KEPT_VIEWS)
        before.erase(before.begin());
    db::put_active_view(db::database_of(doc), to);
    dialogs::invalidate(dialogs::DRAWING_WINDOW, nullptr, true);
}

bool previous_view(document& doc)
{
    std::vector<view>& before = doc.part<view_history>().before;
    if (before.empty())
        return false;
    db::put_active_view(db::database_of(doc), before.back());
    dialogs::invalidate(dialogs::DRAWING_WINDOW, nullptr, true);
    before.pop_back();
    return true;
}

void view_all(document& doc)
{
    screen_box box = space_on_screen(doc);
    if (box.is_empty()) {
        const list_ptr low = db::get_variable(doc, "LIMMIN"), high = db::get_variable(doc, "LIMMAX");
        if (!low || !high)
            return;
        const view now = view_of(doc);
        const double limits[2][2] = {{low->resval.rpoint[0], low->resval.rpoint[1]},
                                     {high->resval.rpoint[0], high->resval.rpoint[1]}};
        for (const int i : {0, 1})
            for (const int k : {0, 1}) {
                const double corner[3] = {limits[i][0], limits[k][1], 0.0};
                box.add(now.on_screen(corner));
            }
    }
    show_box(doc, box, ROOM_AROUND);
}

view panned(view now, const point3& from, const point3& to)
{
    const db::plane_place p = now.on_screen(from.data()), q = now.on_screen(to.data());
    now.center.x -= q.x - p.x;
    now.center.y -= q.y - p.y;
    return now;
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
    const bool by_displacement = to.none();
    set_view(io.doc(), panned(view_of(io.doc()), by_displacement ? point3{} : from.point,
                              by_displacement ? from.point : to.point));
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
