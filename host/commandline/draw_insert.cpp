// draw_insert.cpp: INSERT and BLOCK.
#include <algorithm>
#include <cmath>

#include "host/commandline/draw_commands.h"
#include "host/commandline/drawing_parts.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/selection.h"
#include "host/commandline/transform.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr int ATTRIBUTE_CONSTANT = 2, ATTRIBUTE_PRESET = 8;

struct insertion {
    std::string name;
    point3 at;
    double scale[3] = {1, 1, 1};
    double rotation = 0.0;
    bool has_scale = false, has_rotation = false; // given before the point
};

// The block's name as it is in the drawing. "NAME=PATH" and names that the drawing lacks are read from a
// drawing file.
task<> ask_name(command_io& io, insertion& what)
{
    const std::string before = db::text_variable(io.doc(), "INSNAME");
    for (;;) {
        question q = ask_text(before.empty() ? "\nEnter block name or [?]: "
                                             : with_default("\nEnter block name or [?]", before));
        const answer name = co_await io.ask(std::move(q));
        std::string text = name.none() ? before : name.text;
        if (text == "?") {
            for (const std::string& each : record_names(io.data(), "BLOCK_RECORD"))
                if (!each.starts_with('*'))
                    io.say("  " + each);
            continue;
        }
        std::string error;
        if (const std::optional<std::string> block = find_or_load_block(io.doc(), text, &error)) {
            what.name = *block;
            db::set_text(io.doc(), "INSNAME", what.name);
            co_return;
        }
        io.refuse(error);
    }
}

task<double> ask_scale(command_io& io, std::string prompt, double otherwise, point3 from)
{
    question q(want::distance, prompt);
    q.with(RSG_NOZERO).from(from);
    const answer given = co_await io.ask(std::move(q));
    co_return given.ok() ? given.real : otherwise;
}

task<double> ask_rotation(command_io& io, point3 from)
{
    question q(want::orientation, with_default("\nSpecify rotation angle", angle_text(io.doc(), 0.0)));
    q.from(from);
    const answer given = co_await io.ask(std::move(q));
    co_return given.ok() ? given.real : 0.0;
}

task<> ask_place(command_io& io, insertion& what)
{
    for (;;) {
        question q = ask_point("\nSpecify insertion point or [Scale/X/Y/Z/Rotate]: ",
                               "Scale X Y Z Rotate PScale PX PY PZ PRotate");
        q.with(RSG_NONULL);
        const answer given = co_await io.ask(std::move(q));
        if (given.ok()) {
            what.at = given.point;
            co_return;
        }
        if (given.is("Rotate") || given.is("PRotate")) {
            what.rotation = co_await ask_rotation(io, {});
            what.has_rotation = what.has_rotation || given.is("Rotate");
            continue;
        }
        const double factor = co_await ask_scale(io, "\nSpecify scale factor <1>: ", 1.0, {});
        const char axis = given.text.back();
        for (int i = 0; i < 3; ++i)
            if (axis == 'e' || axis == 'X' + i)
                what.scale[i] = factor;
        what.has_scale = what.has_scale || given.text.front() != 'P';
    }
}

task<> ask_scales(command_io& io, insertion& what)
{
    question q(want::distance, "\nEnter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: ");
    q.keys("Corner XYZ").with(RSG_NOZERO);
    q.kind = want::point; // a corner gives both factors; a number is read below
    q.with(RSG_OTHER);
    const answer x = co_await io.ask(std::move(q));
    const bool all_three = x.is("XYZ");
    answer corner = x;
    if (x.is("Corner")) {
        question c = ask_point("\nSpecify opposite corner: ");
        c.with(RSG_NONULL).from(what.at);
        corner = co_await io.ask(std::move(c));
    }
    if (corner.ok()) {
        what.scale[0] = corner.point.x - what.at.x;
        what.scale[1] = corner.point.y - what.at.y;
        if (what.scale[0] == 0.0 || what.scale[1] == 0.0)
            throw command_failed{"Invalid scale factor: it must not be zero."};
        co_return;
    }
    if (all_three) {
        what.scale[0] = co_await ask_scale(io, "\nSpecify X scale factor or [Corner] <1>: ", 1.0, what.at);
    } else if (!x.none()) {
        const std::optional<double> factor = parse_length(x.text, reading_rules_of(io.doc()));
        if (!factor || *factor == 0.0)
            throw command_failed{"Invalid scale factor."};
        what.scale[0] = *factor;
    }
    what.scale[2] = what.scale[0];
    what.scale[1] =
        co_await ask_scale(io, "\nEnter Y scale factor <use X scale factor>: ", what.scale[0], what.at);
    if (all_three)
        what.scale[2] = co_await ask_scale(
            io, "\nSpecify Z scale factor or <use X scale factor>: ", what.scale[0], what.at);
}

std::vector<db::object_id> attribute_definitions(const db::database& db, std::string_view block)
{
    std::vector<db::object_id> found;
    const db::object_id record = db.record("BLOCK_RECORD", block);
    for (db::object_id id = record ? db::first_entity(db, record) : 0; id; id = db::next_entity(db, id))
        if (db.is(id, "ATTDEF") && !(db::int_of(db.at(id).groups, 70, 0) & ATTRIBUTE_CONSTANT))
            found.push_back(id);
    return found;
}

// The ATTRIB of a definition, in the block's coordinates still.
db::group_list attribute_of(db::database& db, db::object_id definition, std::string_view value)
{
    db::group_list groups;
    for (const db::group& g : db.at(definition).groups) {
        if (g.code == 3 || g.code == 5 || g.code == 330 || g.code == 100 || g.code == 102)
            continue; // the prompt, and what belongs to the definition itself
        db::group copy = g;
        if (g.code == 0)
            copy = db.text_group(0, "ATTRIB");
        else if (g.code == 1)
            copy = db.text_group(1, value);
        groups.push_back(copy);
    }
    return groups;
}

task<std::vector<std::string>> ask_attributes(command_io& io, const std::vector<db::object_id>& definitions)
{
    std::vector<std::string> values;
    const bool asks = db::int_variable(io.doc(), "ATTREQ") != 0;
    bool told = false;
    for (const db::object_id id : definitions) {
        const db::database& db = io.data();
        const std::string tag(db.text_of(db.at(id).groups, 2));
        const std::string preset(db.text_of(db.at(id).groups, 1));
        std::string prompt(db.text_of(db.at(id).groups, 3));
        if (!asks || db::int_of(db.at(id).groups, 70, 0) & ATTRIBUTE_PRESET) {
            values.push_back(preset);
            continue;
        }
        if (!told)
            io.say("Enter attribute values");
        told = true;
        if (prompt.empty())
            prompt = tag;
        const std::string shown = preset.empty() ? "\n" + prompt + ": " : with_default("\n" + prompt, preset);
        question q = ask_text(shown);
        q.free_text();
        const answer given = co_await io.ask(std::move(q));
        values.push_back(given.none() ? preset : given.text);
    }
    co_return values;
}

db::group_list insert_groups(command_io& io, const insertion& what)
{
    db::group_list groups = begin_object(io.doc(), "INSERT", false);
    add_text(io.data(), groups, 2, what.name);
    add_point(groups, 10, what.at);
    for (int i = 0; i < 3; ++i)
        add_real(groups, 41 + i, what.scale[i]);
    add_real(groups, 50, what.rotation);
    return groups;
}

} // namespace

task<> insert_command(command_io& io)
{
    insertion what;
    co_await ask_name(io, what);
    const bool pieces = what.name.starts_with('*');
    if (pieces)
        throw command_failed{"INSERT: blocks are not inserted in pieces; use EXPLODE."};
    co_await ask_place(io, what);
    if (!what.has_scale)
        co_await ask_scales(io, what);
    if (!what.has_rotation) {
        const double turn = co_await ask_rotation(io, what.at);
        what.rotation = turn;
    }
    db::database& db = io.data();
    const std::vector<db::object_id> definitions = attribute_definitions(db, what.name);
    const std::vector<std::string> values = co_await ask_attributes(io, definitions);
    db::group_list groups = insert_groups(io, what);
    if (definitions.empty()) {
        make_object(io, std::move(groups));
        co_return;
    }
    add_int(groups, 66, 1);
    std::vector<db::group_list> attributes;
    for (std::size_t i = 0; i < definitions.size(); ++i)
        attributes.push_back(attribute_of(db, definitions[i], values[i]));
    const db::object_id made = make_object(io, std::move(groups), std::move(attributes));
    if (const std::optional<mapping> map = insert_mapping(db, made))
        for (db::object_id child = db::first_child(db, made); child; child = db::next_child(db, child))
            transform_alone(db, child, *map);
}

task<> block_command(command_io& io)
{
    const answer name = co_await io.ask(ask_text("\nEnter block name or [?]: "));
    if (name.none())
        co_return;
    db::database& db = io.data();
    db::object_id record = db.record("BLOCK_RECORD", name.text);
    if (record) {
        question q(want::key_word, "\nBlock \"" + name.text + "\" already exists. Redefine it? [Yes/No] <N>: ");
        q.keys("Yes No");
        const answer redefine = co_await io.ask(std::move(q));
        if (!redefine.ok() || redefine.text != "Yes")
            co_return;
    }
    question where = ask_point("\nSpecify insertion base point: ");
    const answer base = co_await io.ask(std::move(where));
    const object_list chosen = co_await select_to_change(io);
    if (record) {
        for (db::object_id id = db::first_entity(db, record); id;) {
            const db::object_id next = db::next_entity(db, id);
            db.set_erased(id, true);
            id = next;
        }
    } else {
        record = db::add_block(db, name.text);
    }
    if (const db::object_id begin = db.at(record).first; begin && db.is(begin, "BLOCK")) {
        db::group_list& groups = db.modify(begin);
        if (db::group* g = db::find(groups, 10))
            *g = db::point_group(10, base.point.x, base.point.y, base.point.z);
    }
    // Oldest first, as the objects lie in the drawing.
    object_list in_order = chosen;
    std::sort(in_order.begin(), in_order.end());
    for (const db::object_id id : in_order) {
        copy_object_to(db, id, record);
        db.set_erased(id, true);
    }
}

} // namespace host::commandline
