// layers.cpp: LAYER. Each option asks what it needs and works at once; an empty answer ends the command.
#include <algorithm>
#include <cmath>

#include "host/commandline/drawing_parts.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr int FROZEN = 1, LOCKED = 4;

std::string current_layer(command_io& io)
{
    return db::text_variable(io.doc(), "CLAYER");
}

bool is_current(command_io& io, db::object_id layer)
{
    return same_text(io.data().text_of(io.data().at(layer).groups, 2), current_layer(io));
}

std::string name_of(const db::database& db, db::object_id layer)
{
    return std::string(db.text_of(db.at(layer).groups, 2));
}

db::object_id new_layer(command_io& io, std::string_view name)
{
    constexpr int WHITE = 7;
    return db::add_layer(io.data(), name, WHITE);
}

void set_flag(db::database& db, db::object_id layer, int bit, bool on)
{
    db::group_list& groups = db.modify(layer);
    const std::int64_t flags = db::int_of(groups, 70, 0);
    if (db::group* g = db::find(groups, 70))
        g->integer = on ? flags | bit : flags & ~bit;
    else if (on)
        groups.push_back(db::int_group(70, bit));
}

// The sign of the colour says whether the layer is on.
void set_color(db::database& db, db::object_id layer, int color)
{
    db::group_list& groups = db.modify(layer);
    std::erase_if(groups, [](const db::group& g) { return g.code == 420; }); // a colour of its own mix
    if (db::group* g = db::find(groups, 62))
        g->integer = g->integer < 0 ? -color : color;
    else
        groups.push_back(db::int_group(62, color));
}

void set_on(db::database& db, db::object_id layer, bool on)
{
    db::group_list& groups = db.modify(layer);
    if (db::group* g = db::find(groups, 62))
        g->integer = on ? std::abs(g->integer) : -std::abs(g->integer);
}

// The layers that a list with commas and wild cards names; names that fit nothing are told.
std::vector<db::object_id> layers_of(command_io& io, std::string_view list)
{
    std::vector<db::object_id> found;
    const db::database& db = io.data();
    const db::object_id table = db.table("LAYER");
    for (const std::string_view part : split_commas(list)) {
        const std::string pattern = upper(trimmed(part));
        if (const db::object_id layer = db.record("LAYER", pattern)) {
            found.push_back(layer);
            continue;
        }
        const std::size_t before = found.size();
        for (db::object_id id = table ? db.at(table).first : 0; id; id = db.at(id).next)
            if (!db.at(id).erased && acutWcMatch(upper(name_of(db, id)).c_str(), pattern.c_str()) == RTNORM)
                found.push_back(id);
        if (found.size() == before)
            io.say("No matching layer names found for \"" + std::string(trimmed(part)) + "\".");
    }
    return found;
}

void refuse_name(command_io& io, std::string_view name)
{
    io.refuse("Invalid layer name \"" + std::string(name) + "\".");
}

task<std::vector<db::object_id>> ask_layers(command_io& io, std::string prompt, bool or_current)
{
    if (or_current)
        prompt = with_default(prompt, current_layer(io));
    else
        prompt += ": ";
    const answer list = co_await io.ask(ask_text(prompt));
    if (list.none() && !or_current)
        co_return {};
    co_return layers_of(io, list.none() ? current_layer(io) : list.text);
}

task<> list_layers(command_io& io)
{
    const answer list = co_await io.ask(ask_text("\nEnter layer name(s) to list <*>: "));
    io.say("Layer name            State       Color          Linetype");
    const db::database& db = io.data();
    for (const db::object_id id : layers_of(io, list.none() ? "*" : list.text)) {
        const db::group_list& groups = db.at(id).groups;
        const std::int64_t color = db::int_of(groups, 62, 7), flags = db::int_of(groups, 70, 0);
        std::string line = name_of(db, id);
        line.resize(std::max<std::size_t>(line.size() + 1, 22), ' ');
        line += flags & FROZEN ? "Frozen" : color < 0 ? "Off" : "On";
        line += flags & LOCKED ? " locked" : "";
        line.resize(std::max<std::size_t>(line.size() + 1, 34), ' ');
        line += color_text(static_cast<int>(std::abs(color)));
        line.resize(std::max<std::size_t>(line.size() + 1, 49), ' ');
        line += db.text_of(groups, 6);
        io.say(line);
    }
    io.say("Current layer: \"" + current_layer(io) + "\"");
}

void make_current(command_io& io, db::object_id layer)
{
    db::set_text(io.doc(), "CLAYER", name_of(io.data(), layer));
}

task<> make_layer(command_io& io)
{
    const std::string prompt =
        with_default("\nEnter name for new layer (becomes the current layer)", current_layer(io));
    for (;;) {
        const answer given = co_await io.ask(ask_text(prompt));
        if (given.none())
            co_return;
        db::object_id layer = io.data().record("LAYER", trimmed(given.text));
        if (!layer && !is_symbol_name(trimmed(given.text))) {
            refuse_name(io, given.text);
            continue;
        }
        if (!layer)
            layer = new_layer(io, trimmed(given.text));
        set_flag(io.data(), layer, FROZEN, false);
        set_on(io.data(), layer, true);
        make_current(io, layer);
        co_return;
    }
}

task<> set_layer(command_io& io)
{
    const std::string prompt = with_default("\nEnter layer name to make current", current_layer(io));
    for (;;) {
        const answer given = co_await io.ask(ask_text(prompt));
        if (given.none())
            co_return;
        const db::object_id layer = io.data().record("LAYER", trimmed(given.text));
        if (!layer) {
            io.refuse("Cannot find layer \"" + given.text + "\".");
            continue;
        }
        if (db::int_of(io.data().at(layer).groups, 70, 0) & FROZEN) {
            io.refuse("Cannot set a frozen layer current.");
            continue;
        }
        make_current(io, layer);
        co_return;
    }
}

task<> new_layers(command_io& io)
{
    const answer given = co_await io.ask(ask_text("\nEnter name list for new layer(s): "));
    if (given.none())
        co_return;
    std::vector<std::string_view> wanted;
    for (const std::string_view part : split_commas(given.text)) {
        const std::string_view name = trimmed(part);
        if (io.data().record("LAYER", name))
            io.say("Layer \"" + std::string(name) + "\" already exists.");
        else if (!is_symbol_name(name))
            refuse_name(io, name);
        else
            wanted.push_back(name);
    }
    for (const std::string_view name : wanted)
        if (!io.data().record("LAYER", name)) // it may stand in the list twice
            new_layer(io, name);
}

task<> turn_off(command_io& io)
{
    const answer given = co_await io.ask(ask_text("\nEnter name list of layer(s) to turn off: "));
    if (given.none())
        co_return;
    for (const db::object_id layer : layers_of(io, given.text)) {
        if (is_current(io, layer)) {
            question q(want::key_word, "\nReally want layer \"" + name_of(io.data(), layer) +
                                           "\" (the CURRENT layer) off? [Yes/No] <N>: ");
            q.keys("Yes No");
            const answer sure = co_await io.ask(std::move(q));
            if (!sure.ok() || sure.text != "Yes")
                continue;
        }
        set_on(io.data(), layer, false);
    }
}

task<> color_layers(command_io& io)
{
    int color = -1;
    while (color < 1 || color > 255) {
        const answer given = co_await io.ask(ask_text("\nNew color: "));
        if (given.none())
            co_return;
        color = color_of_text(given.text);
        if (color < 1 || color > 255)
            io.refuse("A color number from 1 to 255 or a standard color name is required.");
    }
    const std::string prompt = "\nEnter name list of layer(s) for color " + color_text(color);
    for (const db::object_id layer : co_await ask_layers(io, prompt, true))
        set_color(io.data(), layer, color);
}

void put_text_group(db::database& db, db::object_id id, int code, std::string_view value)
{
    const db::group made = db.text_group(code, value);
    db::group_list& groups = db.modify(id);
    if (db::group* g = db::find(groups, code))
        *g = made;
    else
        groups.push_back(made);
}

task<> linetype_layers(command_io& io)
{
    for (;;) {
        const answer given = co_await io.ask(ask_text("\nEnter loaded linetype name or [?] <Continuous>: "));
        const std::string name = given.none() ? "Continuous" : given.text;
        const db::object_id linetype = io.data().record("LTYPE", trimmed(name));
        if (!linetype) {
            io.refuse("Linetype \"" + name + "\" not found. Use the LINETYPE command to load it.");
            continue;
        }
        const std::string found(io.data().text_of(io.data().at(linetype).groups, 2));
        const std::string prompt = "\nEnter name list of layer(s) for linetype \"" + found + "\"";
        for (const db::object_id layer : co_await ask_layers(io, prompt, true))
            put_text_group(io.data(), layer, 6, found);
        co_return;
    }
}

void put_int_group(db::database& db, db::object_id id, int code, int value)
{
    db::group_list& groups = db.modify(id);
    if (db::group* g = db::find(groups, code))
        g->integer = value;
    else
        groups.push_back(db::int_group(code, value));
}

task<> lineweight_layers(command_io& io)
{
    question q(want::real, "\nEnter lineweight (0.0mm - 2.11mm): ");
    q.keys("Default").with(RSG_NONEG);
    const answer given = co_await io.ask(std::move(q));
    constexpr int DEFAULT = -3;
    const int weight = given.ok() ? static_cast<int>(std::lround(std::min(given.real, 2.11) * 100.0)) : DEFAULT;
    for (const db::object_id layer :
         co_await ask_layers(io, "\nEnter name list of layer(s) for this lineweight", true))
        put_int_group(io.data(), layer, 370, weight);
}

task<> plot_layers(command_io& io)
{
    question q(want::key_word, "\nEnter a plotting preference [Plot/No plot] <Plot>: ");
    q.keys("Plot No");
    const answer given = co_await io.ask(std::move(q));
    const int plots = given.ok() && given.text == "No" ? 0 : 1;
    for (const db::object_id layer :
         co_await ask_layers(io, "\nEnter layer name(s) for this plot preference", true))
        put_int_group(io.data(), layer, 290, plots);
}

task<> flag_layers(command_io& io, std::string what, int bit, bool on)
{
    for (const db::object_id layer : co_await ask_layers(io, "\nEnter name list of layer(s) to " + what, false))
        if (bit == FROZEN && on && is_current(io, layer))
            io.say("Cannot freeze layer \"" + name_of(io.data(), layer) +
                   "\". This layer is the CURRENT layer.");
        else
            set_flag(io.data(), layer, bit, on);
}

task<> turn_on(command_io& io)
{
    for (const db::object_id layer : co_await ask_layers(io, "\nEnter name list of layer(s) to turn on", false))
        set_on(io.data(), layer, true);
}
task<> freeze(command_io& io)
{
    return flag_layers(io, "freeze", FROZEN, true);
}
task<> thaw(command_io& io)
{
    return flag_layers(io, "thaw", FROZEN, false);
}
task<> lock(command_io& io)
{
    return flag_layers(io, "lock", LOCKED, true);
}
task<> unlock(command_io& io)
{
    return flag_layers(io, "unlock", LOCKED, false);
}

struct layer_option {
    std::string_view word;
    task<> (*run)(command_io& io);
};

constexpr layer_option OPTIONS[] = {
    {"?", list_layers},      {"Make", make_layer},
    {"Set", set_layer},      {"New", new_layers},
    {"ON", turn_on},         {"OFF", turn_off},
    {"Color", color_layers}, {"Ltype", linetype_layers},
    {"Freeze", freeze},      {"LWeight", lineweight_layers},
    {"Plot", plot_layers},   {"Thaw", thaw},
    {"LOck", lock},          {"Unlock", unlock},
};

} // namespace

task<> layer_command(command_io& io)
{
    io.say("Current layer: \"" + current_layer(io) + "\"");
    for (;;) {
        question q(want::key_word,
                   "\nEnter an option [?/Make/Set/New/ON/OFF/Color/Ltype/LWeight/Plot/Freeze/Thaw/"
                   "LOck/Unlock]: ");
        q.keys("? Make Set New ON OFF Color LWeight LOck Ltype Plot Freeze Thaw Unlock");
        const answer given = co_await io.ask(std::move(q));
        if (given.none())
            co_return;
        for (const layer_option& option : OPTIONS)
            if (given.text == option.word)
                co_await option.run(io);
    }
}

} // namespace host::commandline
