// styles.cpp: COLOR, LINETYPE, STYLE.
#include <cmath>

#include "host/commandline/drawing_parts.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/new_objects.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "host/database/text_metrics.h"

namespace host::commandline
{

namespace
{

task<> set_linetype(command_io& io)
{
    for (;;) {
        const std::string now = db::text_variable(io.doc(), "CELTYPE");
        const answer given = co_await io.ask(ask_text(with_default("\nSpecify linetype name or [?]", now)));
        if (given.none())
            co_return;
        const db::object_id record = io.data().record("LTYPE", given.text);
        if (record || same_text(given.text, "BYLAYER") || same_text(given.text, "BYBLOCK")) {
            const std::string name =
                record ? std::string(io.data().text_of(io.data().at(record).groups, 2)) : given.text;
            db::set_text(io.doc(), "CELTYPE", name);
            co_return;
        }
        io.refuse("Linetype \"" + given.text + "\" not found. Use LOAD to load it.");
    }
}

task<> load_linetype(command_io& io)
{
    const answer names = co_await io.ask(ask_text("\nEnter linetype(s) to load: "));
    if (names.none())
        co_return;
    const answer file = co_await io.ask(ask_text("\nEnter name of linetype file to search <standard>: "));
    for (const std::string_view name : split_commas(names.text)) {
        if (io.data().record("LTYPE", name)) {
            question q(want::key_word,
                       "\nLinetype \"" + std::string(name) + "\" is already loaded. Reload it? [Yes/No] <Y>: ");
            q.keys("Yes No");
            const answer again = co_await io.ask(std::move(q));
            if (again.ok() && again.text == "No")
                continue;
        }
        const std::vector<std::string> loaded = load_linetypes(io.data(), trimmed(name), file.text);
        for (const std::string& each : loaded)
            io.say("Linetype " + each + " loaded.");
        if (loaded.empty())
            io.say("Linetype \"" + std::string(name) + "\" not found.");
    }
}

// What a text style is made of.
struct style_answers {
    std::string font;
    double height = 0.0, width = 1.0, oblique = 0.0;
    int generation = 0; // 2 backwards, 4 upside down
    bool vertical = false;
};

constexpr int BACKWARDS = 2, UPSIDE_DOWN = 4, VERTICAL = 4;

style_answers style_now(const db::database& db, db::object_id record)
{
    style_answers out;
    out.font = "txt";
    if (!record)
        return out;
    const db::group_list& groups = db.at(record).groups;
    if (const std::string_view font = db.text_of(groups, 3); !font.empty())
        out.font = font;
    out.height = db::real_of(groups, 40, 0.0);
    out.width = db::real_of(groups, 41, 1.0);
    out.oblique = db::real_of(groups, 50, 0.0);
    out.generation = static_cast<int>(db::int_of(groups, 71, 0));
    out.vertical = db::int_of(groups, 70, 0) & VERTICAL;
    return out;
}

void put_style(command_io& io, std::string_view name, const style_answers& style)
{
    db::database& db = io.data();
    db::object_id record = db.record("STYLE", name);
    if (!record)
        record = db::add_record(db, "STYLE", name);
    const db::group font = db.text_group(3, style.font);
    db::group_list& groups = db.modify(record);
    const std::int64_t flags = db::int_of(groups, 70, 0);
    put_group(groups, db::int_group(70, style.vertical ? flags | VERTICAL : flags & ~VERTICAL));
    put_group(groups, db::real_group(40, style.height));
    put_group(groups, db::real_group(41, style.width));
    put_group(groups, db::real_group(50, style.oblique));
    put_group(groups, db::int_group(71, style.generation));
    put_group(groups, font);
    db::set_text(io.doc(), "TEXTSTYLE", db.text_of(db.at(record).groups, 2));
}

task<bool> yes_or_no(command_io& io, std::string_view prompt, bool now)
{
    question q(want::key_word, std::string(prompt) + (now ? " [Yes/No] <Y>: " : " [Yes/No] <N>: "));
    q.keys("Yes No");
    const answer given = co_await io.ask(std::move(q));
    co_return given.ok() ? given.text == "Yes" : now;
}

} // namespace

task<> color_command(command_io& io)
{
    for (;;) {
        const std::string now = db::text_variable(io.doc(), "CECOLOR");
        const answer given = co_await io.ask(ask_text(with_default("\nEnter default object color", now)));
        if (given.none())
            co_return;
        const int color = color_of_text(given.text);
        if (color >= 0) {
            const std::string value = color == 256 ? "BYLAYER" : color == 0 ? "BYBLOCK" : std::to_string(color);
            db::set_text(io.doc(), "CECOLOR", value);
            co_return;
        }
        io.refuse("A color number or standard color name is required.");
    }
}

task<> linetype_command(command_io& io)
{
    for (;;) {
        question q(want::key_word, "\nEnter an option [?/Load/Set]: ");
        q.keys("? Load Set");
        const answer given = co_await io.ask(std::move(q));
        if (given.none())
            co_return;
        if (given.text == "Load") {
            co_await load_linetype(io);
        } else if (given.text == "Set") {
            co_await set_linetype(io);
        } else {
            for (const std::string& name : record_names(io.data(), "LTYPE"))
                io.say("  " + name);
        }
    }
}

// The style is made as soon as all that a program may leave out has been answered: the question about
// vertical text comes only with shape fonts, and programs that stop before it want their style all the same.
task<> style_command(command_io& io)
{
    std::string name = db::text_variable(io.doc(), "TEXTSTYLE");
    const answer named = co_await io.ask(ask_text(with_default("\nEnter name of text style or [?]", name)));
    if (named.ok() && named.text == "?") {
        for (const std::string& each : record_names(io.data(), "STYLE"))
            io.say("  " + each);
        co_return;
    }
    if (!named.none())
        name = named.text;
    if (!is_symbol_name(name))
        throw command_failed{"STYLE: invalid style name \"" + name + "\"."};
    style_answers style = style_now(io.data(), io.data().record("STYLE", name));
    const answer font = co_await io.ask(
        ask_text(with_default("\nSpecify full font name or font filename (TTF or SHX)", style.font)));
    if (!font.none())
        style.font = font.text;
    question height(want::distance,
                    with_default("\nSpecify height of text", length_text(io.doc(), style.height)));
    height.with(RSG_NONEG);
    const answer high = co_await io.ask(std::move(height));
    if (high.ok())
        style.height = high.real;
    question width(want::real, with_default("\nSpecify width factor", length_text(io.doc(), style.width)));
    width.with(RSG_NOZERO | RSG_NONEG);
    const answer wide = co_await io.ask(std::move(width));
    if (wide.ok())
        style.width = wide.real;
    question oblique(want::angle,
                     with_default("\nSpecify obliquing angle", angle_text(io.doc(), style.oblique)));
    const answer slant = co_await io.ask(std::move(oblique));
    if (slant.ok())
        style.oblique = slant.turn;
    const bool back = co_await yes_or_no(io, "\nDisplay text backwards?", style.generation & BACKWARDS);
    const bool upside = co_await yes_or_no(io, "\nDisplay text upside-down?", style.generation & UPSIDE_DOWN);
    style.generation = (back ? BACKWARDS : 0) | (upside ? UPSIDE_DOWN : 0);
    put_style(io, name, style);
    if (!db::is_outline_font(style.font)) {
        style.vertical = co_await yes_or_no(io, "\nVertical?", style.vertical);
        put_style(io, name, style);
    }
    io.say("\"" + name + "\" is now the current text style.");
}

} // namespace host::commandline
