// edit_objects.cpp: ERASE, MOVE, COPY, ROTATE, SCALE, MIRROR, SELECT.
#include <algorithm>
#include <cmath>

#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/selection.h"
#include "host/commandline/transform.h"
#include "host/core/document.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

// Copies in the order in which the objects lie in the drawing, so that the newest stays the newest.
void copy_all(db::database& db, object_list objects, const mapping& map)
{
    std::sort(objects.begin(), objects.end());
    for (const db::object_id id : objects)
        if (const db::object_id made = copy_object(db, id))
            transform_object(db, made, map);
}

void change_all(db::database& db, const object_list& objects, const mapping& map)
{
    for (const db::object_id id : objects)
        transform_object(db, id, map);
}

task<point3> base_point(command_io& io)
{
    question q = ask_point("\nSpecify base point: ");
    q.with(RSG_NONULL);
    const answer given = co_await io.ask(std::move(q));
    co_return given.point;
}

// Two points, or a displacement: one point (or the word and a point) and Enter.
task<mapping> ask_displacement(command_io& io, bool* many)
{
    question q = ask_point(many ? "\nSpecify base point or [Displacement/Multiple]: "
                                : "\nSpecify base point or [Displacement] <Displacement>: ",
                           many ? "Displacement Multiple" : "Displacement");
    answer base = co_await io.ask(std::move(q));
    if (base.is("Multiple")) {
        *many = true;
        question again = ask_point("\nSpecify base point: ");
        again.with(RSG_NONULL);
        base = co_await io.ask(std::move(again));
    }
    if (!base.ok()) {
        question how_far = ask_point("\nSpecify displacement: ");
        how_far.with(RSG_NONULL);
        const answer by = co_await io.ask(std::move(how_far));
        co_return mapping::moved(by.point.x, by.point.y, by.point.z);
    }
    question second = ask_point("\nSpecify second point or <use first point as displacement>: ");
    second.from(base.point);
    const answer to = co_await io.ask(std::move(second));
    if (to.none())
        co_return mapping::moved(base.point.x, base.point.y, base.point.z);
    co_return mapping::moved(to.point.x - base.point.x, to.point.y - base.point.y, to.point.z - base.point.z);
}

// The second points that follow the first copy.
task<> further_copies(command_io& io, object_list objects, point3 base)
{
    for (;;) {
        question next = ask_point("\nSpecify second point or [Exit] <Exit>: ", "Exit");
        next.from(base);
        const answer to = co_await io.ask(std::move(next));
        if (!to.ok())
            co_return;
        copy_all(io.data(), objects,
                 mapping::moved(to.point.x - base.x, to.point.y - base.y, to.point.z - base.z));
    }
}

} // namespace

task<> erase_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    for (const db::object_id id : chosen)
        io.data().set_erased(id, true);
}

task<> select_command(command_io& io)
{
    const object_list chosen = co_await select_objects(io);
    set_previous_selection(io.doc(), chosen);
}

task<> move_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (chosen.empty())
        co_return;
    const mapping map = co_await ask_displacement(io, nullptr);
    change_all(io.data(), chosen, map);
}

task<> copy_command(command_io& io)
{
    const object_list chosen = co_await select_objects(io);
    if (chosen.empty())
        co_return;
    bool many = false;
    const mapping map = co_await ask_displacement(io, &many);
    copy_all(io.data(), chosen, map);
    if (many) {
        const list_ptr last = db::get_variable(io.doc(), "LASTPOINT");
        const point3 to = point3::of(last->resval.rpoint);
        co_await further_copies(io, chosen, {to.x - map.t[0], to.y - map.t[1], to.z - map.t[2]});
    }
}

task<> rotate_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (chosen.empty())
        co_return;
    const point3 base = co_await base_point(io);
    bool copies = false;
    answer given;
    do {
        question q(want::orientation, "\nSpecify rotation angle or [Copy/Reference] <0>: ");
        q.keys("Copy Reference").from(base);
        given = co_await io.ask(std::move(q));
        copies = copies || given.is("Copy");
    } while (given.is("Copy"));
    double turn = given.ok() ? given.real : 0.0;
    // A typed angle is a turn, whatever direction angles start from; a point shows it from east.
    if (given.ok() && !given.has_point)
        turn -= db::real_variable(io.doc(), "ANGBASE");
    if (given.is("Reference")) {
        question from(want::orientation, "\nSpecify the reference angle <0>: ");
        const answer reference = co_await io.ask(std::move(from));
        question to(want::orientation, "\nSpecify the new angle or [Points] <0>: ");
        to.from(base);
        const answer target = co_await io.ask(std::move(to));
        turn = (target.ok() ? target.real : 0.0) - (reference.ok() ? reference.real : 0.0);
    }
    const mapping map = mapping::turned(base, turn);
    if (copies)
        copy_all(io.data(), chosen, map);
    else
        change_all(io.data(), chosen, map);
}

task<> scale_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (chosen.empty())
        co_return;
    const point3 base = co_await base_point(io);
    bool copies = false;
    answer given;
    do {
        question q(want::distance, "\nSpecify scale factor or [Copy/Reference]: ");
        q.keys("Copy Reference").with(RSG_NONULL | RSG_NOZERO | RSG_NONEG).from(base);
        given = co_await io.ask(std::move(q));
        copies = copies || given.is("Copy");
    } while (given.is("Copy"));
    double factor = given.real;
    if (given.is("Reference")) {
        question from(want::distance, "\nSpecify reference length <1>: ");
        from.with(RSG_NOZERO | RSG_NONEG);
        const answer reference = co_await io.ask(std::move(from));
        question to(want::distance, "\nSpecify new length: ");
        to.with(RSG_NONULL | RSG_NOZERO | RSG_NONEG).from(base);
        const answer target = co_await io.ask(std::move(to));
        factor = target.real / (reference.ok() ? reference.real : 1.0);
    }
    const mapping map = mapping::scaled(base, factor);
    if (copies)
        copy_all(io.data(), chosen, map);
    else
        change_all(io.data(), chosen, map);
}

task<> mirror_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (chosen.empty())
        co_return;
    question first = ask_point("\nSpecify first point of mirror line: ");
    first.with(RSG_NONULL);
    const answer a = co_await io.ask(std::move(first));
    question second = ask_point("\nSpecify second point of mirror line: ");
    second.with(RSG_NONULL).from(a.point);
    const answer b = co_await io.ask(std::move(second));
    question erase(want::key_word, "\nErase source objects? [Yes/No] <N>: ");
    erase.keys("Yes No");
    const answer word = co_await io.ask(std::move(erase));
    const double along = std::atan2(b.point.y - a.point.y, b.point.x - a.point.x);
    const mapping there = mapping::turned(a.point, along), back = mapping::turned(a.point, -along);
    mapping flip;
    flip.m[1][1] = -1.0;
    flip.t[1] = 2.0 * a.point.y;
    const mapping map = there.after(flip.after(back));
    if (word.ok() && word.text == "Yes")
        change_all(io.data(), chosen, map);
    else
        copy_all(io.data(), chosen, map);
}

} // namespace host::commandline
