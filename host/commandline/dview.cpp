// dview.cpp: DVIEW. Views look straight down on the drawing, so twist, pan and zoom are what it can do. What
// would tilt the view, cut it or show it in perspective asks for its values all the same, so that a program's
// next value meets the prompt it was sent for, and says that it can't be had.
//
// Options work on a view of the command's own, which becomes the drawing's at the end: a cancel leaves the
// drawing as it was, and ZOOM Previous goes back over the whole command.
#include <algorithm>
#include <cmath>

#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/selection.h"
#include "host/commandline/views.h"
#include "host/core/console.h"
#include "host/core/text.h"

namespace host::commandline
{

namespace
{

constexpr int PERSPECTIVE = 1;

point3 middle_of(const view& now)
{
    double world[3];
    now.in_world(now.center, world);
    return point3::of(world);
}

task<> ask_twist(command_io& io, view& now)
{
    // From east as all directions on a drawing: a program may give it as acdbAngToS writes it.
    question q(want::orientation, with_default("\nNew view twist", angle_text(io.doc(), now.twist)));
    q.from(middle_of(now));
    const answer given = co_await io.ask(std::move(q));
    if (given.ok())
        now.turn_to(given.real);
}

task<> ask_zoom(command_io& io, view& now)
{
    question q(want::real, "\nSpecify zoom scale factor <1>: ");
    q.with(RSG_NOZERO | RSG_NONEG);
    const answer factor = co_await io.ask(std::move(q));
    if (factor.ok())
        now.height /= factor.real;
}

task<> ask_pan(command_io& io, view& now)
{
    question q = ask_point("\nSpecify displacement base point: ");
    q.with(RSG_NONULL);
    const answer from = co_await io.ask(std::move(q));
    question second = ask_point("\nSpecify second point: ");
    second.with(RSG_NONULL).from(from.point);
    const answer to = co_await io.ask(std::move(second));
    now = panned(now, from.point, to.point);
}

// A camera right above the target shows the plan, with the target in the middle.
task<> ask_points(command_io& io, view& now)
{
    const point3 middle = middle_of(now);
    question q = ask_point("\nSpecify target point: ");
    q.from(middle);
    const answer first = co_await io.ask(std::move(q));
    const point3 target = first.ok() ? first.point : middle;
    question second = ask_point("\nSpecify camera point: ");
    second.from(target);
    const answer camera = co_await io.ask(std::move(second));
    const bool is_above =
        !camera.ok() || (camera.point.x == target.x && camera.point.y == target.y && camera.point.z > target.z);
    if (!is_above || !now.is_plan()) {
        history_line("Only plan views are available: the camera must stand above its target.");
        co_return;
    }
    std::copy_n(target.data(), 3, now.target);
    now.center = now.on_screen(target.data());
}

// A camera's or target's place: a point, or two angles, one after the other, in either order.
task<> pass_over_angles(command_io& io, std::string_view what)
{
    const std::string place = "\nSpecify " + std::string(what) + " location, or enter angle ";
    bool is_second = false;
    for (;;) {
        const std::string prompt = place + (is_second ? "in XY plane from X axis,\nor [Toggle (angle from)]: "
                                                      : "from XY plane,\nor [Toggle (angle in)]: ");
        const answer given = co_await io.ask(ask_word(prompt));
        if (match_key_word("Toggle", given.text))
            continue;
        if (is_second || given.has_point || parse_point(given.text, reading_rules_of(io.doc())))
            break;
        is_second = true;
    }
    history_line("Only plan views are available.");
}

task<> ask_camera(command_io& io, view&)
{
    co_await pass_over_angles(io, "camera");
}

task<> ask_target(command_io& io, view&)
{
    co_await pass_over_angles(io, "target");
}

task<> ask_distance(command_io& io, view&)
{
    co_await io.ask(ask_word("\nSpecify new camera-target distance: "));
    history_line("Perspective is not available.");
}

task<> ask_clip(command_io& io, view&)
{
    question q(want::key_word, "\nEnter clipping option [Back/Front/Off] <Off>: ");
    q.keys("Back Front Off");
    const answer side = co_await io.ask(std::move(q));
    if (side.none() || side.text == "Off")
        co_return; // nothing is ever cut off
    co_await io.ask(ask_word("\nSpecify distance from target or [ON/OFF]: "));
    history_line("Clipping is not available.");
}

task<> hide(command_io&, view&)
{
    history_line("Hiding is not available.");
    co_return;
}

task<> end_perspective(command_io&, view& now)
{
    now.mode &= ~PERSPECTIVE;
    co_return;
}

struct option {
    std::string_view word;
    task<> (*run)(command_io& io, view& now);
};

constexpr option OPTIONS[] = {
    {"CAmera", ask_camera}, {"TArget", ask_target},   {"Distance", ask_distance}, {"POints", ask_points},
    {"PAn", ask_pan},       {"Zoom", ask_zoom},       {"TWist", ask_twist},       {"CLip", ask_clip},
    {"Hide", hide},         {"Off", end_perspective},
};

bool is_same(const view& a, const view& b)
{
    return a.center.x == b.center.x && a.center.y == b.center.y && a.height == b.height && a.twist == b.twist &&
           a.mode == b.mode && std::equal(a.target, a.target + 3, b.target);
}

} // namespace

task<> dview_command(command_io& io)
{
    // The objects would be shown while the view is being found; it is found by its numbers here.
    selection_rules rules;
    rules.unused = true;
    co_await select_objects(io, rules, "\nSelect objects or <use DVIEWBLOCK>: ");
    view now = view_of(io.doc());
    std::vector<view> before; // of each option, for Undo
    for (;;) {
        question q(want::key_word,
                   "\nEnter option\n[CAmera/TArget/Distance/POints/PAn/Zoom/TWist/CLip/Hide/Off/Undo]: ");
        q.keys("CAmera TArget Distance POints PAn Zoom TWist CLip Hide Off Undo eXit");
        const answer given = co_await io.ask(std::move(q));
        if (given.none() || given.text == "eXit")
            break;
        if (given.text == "Undo") {
            if (before.empty())
                history_line("Everything has been undone.");
            else
                now = before.back(), before.pop_back();
            continue;
        }
        const auto chosen = std::find_if(std::begin(OPTIONS), std::end(OPTIONS),
                                         [&](const option& each) { return each.word == given.text; });
        const view old = now;
        co_await chosen->run(io, now);
        if (!is_view(now)) {
            history_line("The view would be too large or too small.");
            now = old;
        }
        if (!is_same(now, old))
            before.push_back(old);
    }
    if (!is_same(now, view_of(io.doc())))
        set_view(io.doc(), now);
}

} // namespace host::commandline
