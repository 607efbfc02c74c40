// edit_properties.cpp: CHPROP, and CHANGE with its properties.
#include <algorithm>
#include <cmath>

#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/selection.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"

namespace host::commandline
{

namespace
{

// Puts a group in place of the object's own of that code, or where the common properties stand: behind the
// layer. `otherwise`: the value that goes without a group.
void put(db::group_list& groups, db::group value, bool is_default)
{
    if (db::group* there = db::find(groups, value.code)) {
        if (!is_default) {
            *there = value;
            return;
        }
        groups.erase(groups.begin() + (there - groups.data()));
        return;
    }
    if (is_default)
        return;
    auto at = groups.begin();
    while (at != groups.end() && at->code != 8)
        ++at;
    groups.insert(at == groups.end() ? at : at + 1, value);
}

// Of the objects and of the vertices and attributes that follow them.
template <class Change>
void change_each(command_io& io, const object_list& objects, bool children, Change change)
{
    db::database& db = io.data();
    for (const db::object_id id : objects) {
        change(db.modify(id));
        for (db::object_id child = children ? db.at(id).first : 0; child; child = db.at(child).next)
            change(db.modify(child));
    }
}

// What the objects have in common, for the prompt; "varies" else.
template <class Value>
std::string common(const db::database& db, const object_list& objects, Value value)
{
    std::string all;
    for (const db::object_id id : objects) {
        const std::string one = value(db.at(id).groups);
        if (all.empty())
            all = one;
        else if (all != one)
            return "varies";
    }
    return all;
}

task<> change_color(command_io& io, object_list objects)
{
    const std::string now = common(io.data(), objects, [](const db::group_list& g) {
        return color_text(static_cast<int>(db::int_of(g, 62, 256)));
    });
    for (;;) {
        const answer given = co_await io.ask(ask_text(with_default("\nNew color", now)));
        if (given.none())
            co_return;
        const int color = color_of_text(given.text);
        if (color >= 0) {
            change_each(io, objects, false,
                        [&](db::group_list& g) { put(g, db::int_group(62, color), color == 256); });
            co_return;
        }
        io.refuse("A color number or standard color name is required.");
    }
}

task<> change_layer(command_io& io, object_list objects)
{
    db::database& db = io.data();
    const std::string now =
        common(db, objects, [&](const db::group_list& g) { return std::string(db.text_of(g, 8)); });
    for (;;) {
        const answer given = co_await io.ask(ask_text(with_default("\nEnter new layer name", now)));
        if (given.none())
            co_return;
        if (const db::object_id layer = db.record("LAYER", given.text)) {
            const db::group name = db.text_group(8, db.text_of(db.at(layer).groups, 2));
            change_each(io, objects, true, [&](db::group_list& g) { put(g, name, false); });
            co_return;
        }
        io.refuse("Cannot find layer \"" + given.text + "\".");
    }
}

task<> change_linetype(command_io& io, object_list objects)
{
    db::database& db = io.data();
    const std::string now = common(db, objects, [&](const db::group_list& g) {
        const std::string_view name = db.text_of(g, 6);
        return name.empty() ? std::string("BYLAYER") : std::string(name);
    });
    for (;;) {
        const answer given = co_await io.ask(ask_text(with_default("\nEnter new linetype name", now)));
        if (given.none())
            co_return;
        const bool by_layer = same_text(given.text, "BYLAYER");
        const db::object_id linetype = db.record("LTYPE", given.text);
        if (by_layer || linetype) {
            const std::string name(by_layer ? "BYLAYER" : db.text_of(db.at(linetype).groups, 2));
            const db::group group = db.text_group(6, name);
            change_each(io, objects, false, [&](db::group_list& g) { put(g, group, by_layer); });
            co_return;
        }
        io.refuse("Linetype \"" + given.text + "\" not found. Use the LINETYPE command to load it.");
    }
}

task<> change_number(command_io& io, object_list objects, std::string prompt, int code, double otherwise,
                     int rules)
{
    const std::string now = common(io.data(), objects, [&](const db::group_list& g) {
        return length_text(io.doc(), db::real_of(g, code, otherwise));
    });
    question q(want::distance, with_default(prompt, now));
    q.with(rules);
    const answer given = co_await io.ask(std::move(q));
    if (given.ok())
        change_each(io, objects, false, [&](db::group_list& g) {
            if (code != 39 || !db::find(g, 39)) {
                put(g, db::real_group(static_cast<int>(code), given.real), given.real == otherwise);
                db::complete_entity(io.data(), g, nullptr); // each group to its place
                return;
            }
            db::find(g, 39)->real = given.real;
        });
}

task<> change_lineweight(command_io& io, object_list objects)
{
    question q(want::real, "\nEnter new lineweight <ByLayer>: ");
    q.keys("BYLAYER BYBLOCK DEFAULT").with(RSG_NONEG);
    const answer given = co_await io.ask(std::move(q));
    if (given.none())
        co_return;
    constexpr int WEIGHT_BY_LAYER = -1, WEIGHT_BY_BLOCK = -2, DEFAULT_WEIGHT = -3;
    constexpr double HEAVIEST = 2.11; // millimetres; group 370 has hundredths
    const int weight = given.is("BYLAYER")   ? WEIGHT_BY_LAYER
                       : given.is("BYBLOCK") ? WEIGHT_BY_BLOCK
                       : given.is("DEFAULT")
                           ? DEFAULT_WEIGHT
                           : static_cast<int>(std::lround(std::min(given.real, HEAVIEST) * 100.0));
    change_each(io, objects, false,
                [&](db::group_list& g) { put(g, db::int_group(370, weight), weight == WEIGHT_BY_LAYER); });
}

// Kinds that have a thickness keep it in group 39.
object_list with_thickness(const db::database& db, object_list objects)
{
    static constexpr std::string_view kinds[] = {"LINE",   "POINT", "CIRCLE", "ARC",   "TEXT",      "ATTDEF",
                                                 "ATTRIB", "TRACE", "SOLID",  "SHAPE", "LWPOLYLINE"};
    std::erase_if(objects, [&](db::object_id id) {
        const bool flat_polyline = db.is(id, "POLYLINE") && !(db::int_of(db.at(id).groups, 70, 0) & 8);
        return !flat_polyline &&
               std::find(std::begin(kinds), std::end(kinds), db.type_of(id)) == std::end(kinds);
    });
    return objects;
}

task<> change_properties(command_io& io, object_list objects)
{
    for (;;) {
        question q(want::key_word,
                   "\nEnter property to change [Color/LAyer/LType/ltScale/LWeight/Thickness]: ");
        // LS is no word of the prompt; programs and fingers use it all the same.
        q.keys("Color LAyer LType ltScale LWeight Thickness LTSCALE,LS");
        const answer what = co_await io.ask(std::move(q));
        if (what.none())
            co_return;
        if (what.text == "Color")
            co_await change_color(io, objects);
        else if (what.text == "LAyer")
            co_await change_layer(io, objects);
        else if (what.text == "LType")
            co_await change_linetype(io, objects);
        else if (what.text == "ltScale" || what.text == "LTSCALE")
            co_await change_number(io, objects, "\nEnter new linetype scale", 48, 1.0, RSG_NOZERO | RSG_NONEG);
        else if (what.text == "LWeight")
            co_await change_lineweight(io, objects);
        else
            co_await change_number(io, with_thickness(io.data(), objects), "\nSpecify new thickness", 39, 0.0,
                                   0);
    }
}

} // namespace

task<> chprop_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (!chosen.empty())
        co_await change_properties(io, chosen);
}

task<> change_command(command_io& io)
{
    const object_list chosen = co_await select_to_change(io);
    if (chosen.empty())
        co_return;
    question q(want::key_word, "\nSpecify change point or [Properties]: ");
    q.keys("Properties").with(RSG_NONULL);
    const answer how = co_await io.ask(std::move(q));
    if (how.ok())
        co_await change_properties(io, chosen);
}

} // namespace host::commandline
