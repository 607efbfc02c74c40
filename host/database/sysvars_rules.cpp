// sysvars_rules.cpp: variables with a rule of their own: worked out from the drawing and the run, or
// naming a record that the drawing must have.
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>

#include "host/core/document.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/database/active_view.h"
#include "host/database/database.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/sysvars_table.h"
#include "host/files/paths.h"

namespace host::db
{

namespace
{

list_ptr whole(int value)
{
    return list_ptr(rb_int(RTSHORT, value));
}
list_ptr real(double value)
{
    return list_ptr(rb_real(RTREAL, value));
}
list_ptr words(std::string_view value)
{
    return list_ptr(rb_text(RTSTR, value));
}
list_ptr place(double x, double y, double z)
{
    const double at[3] = {x, y, z};
    return list_ptr(rb_point(RT3DPOINT, at));
}

std::string with_separator(std::string directory)
{
    if (directory.empty() || (directory.back() != '/' && directory.back() != '\\'))
        directory += '/';
    return directory;
}

// Programs know drawings as .dwg, whatever this host keeps them as.
std::string name_for_programs(std::string name)
{
    constexpr std::string_view KEPT_AS = ".dxf";
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos)
        return name + ".dwg";
    if (same_text(name.substr(dot), KEPT_AS))
        name.replace(dot, std::string::npos, ".dwg");
    return name;
}

const std::string& name_of(const document& doc)
{
    return doc.named.empty() ? doc.file : doc.named;
}

bool is_absolute(std::string_view path)
{
    return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

std::string file_name_for_programs(std::string_view path)
{
    return name_for_programs(program_path(file_name_of(path)));
}

// With the separator, in the form that the path has.
std::string directory_for_programs(std::string_view path)
{
    const std::string directory = directory_of(path);
    if (is_absolute(directory))
        return program_path(directory);
    std::error_code failed;
    return program_path(with_separator(std::filesystem::current_path(failed).string()) + directory);
}

std::string drawing_name(document& doc)
{
    if (doc.file.empty())
        return "Drawing" + std::to_string(doc.number()) + ".dwg";
    return file_name_for_programs(name_of(doc));
}

std::string drawing_directory(document& doc)
{
    return directory_for_programs(doc.file.empty() ? "" : name_of(doc));
}

} // namespace

std::string drawing_path_for_programs(std::string_view path)
{
    return directory_for_programs(path) + file_name_for_programs(path);
}

list_ptr get_drawing_name(document& doc)
{
    return words(drawing_name(doc));
}
list_ptr get_drawing_directory(document& doc)
{
    return words(drawing_directory(doc));
}
list_ptr get_drawing_titled(document& doc)
{
    return whole(doc.file.empty() ? 0 : 1);
}
list_ptr get_save_name(document& doc)
{
    return words(doc.file.empty() ? "" : drawing_directory(doc) + drawing_name(doc));
}
list_ptr get_modified(document& doc)
{
    return whole(database_of(doc).modified() ? 1 : 0);
}
list_ptr get_cdate(document&)
{
    return real(clock_cdate());
}
list_ptr get_date(document&)
{
    return real(clock_julian());
}
list_ptr get_milliseconds(document&)
{
    return list_ptr(rb_int(RTLONG, static_cast<int>(clock_milliseconds() & 0x7fffffff)));
}
list_ptr get_undo_control(document& doc)
{
    constexpr int ENABLED = 1, AUTO_GROUPS = 4;
    return whole(database_of(doc).undo_enabled() ? ENABLED + AUTO_GROUPS : 0);
}
list_ptr get_login_name(document&)
{
    const passwd* user = getpwuid(getuid());
    return words(user && user->pw_name ? user->pw_name : "");
}
list_ptr get_temporary_directory(document&)
{
    std::error_code failed;
    const std::string directory = std::filesystem::temp_directory_path(failed).string();
    return words(with_separator(failed ? "/tmp" : directory));
}
list_ptr get_settings_directory(document&)
{
    const char* settings = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    if (settings && *settings)
        return words(with_separator(settings) + "zentrik/");
    return words(with_separator(home ? home : "") + ".config/zentrik/");
}

// ---- layouts and viewports

namespace
{

std::string_view paper_layout(document& doc)
{
    const database& db = database_of(doc);
    return layout_name(db, db.paper_space());
}

bool is_tiled(document& doc)
{
    return int_variable(doc, "TILEMODE") != 0;
}

} // namespace

list_ptr get_tab(document& doc)
{
    return words(is_tiled(doc) ? "Model" : paper_layout(doc));
}

set_result set_tab(document& doc, const resbuf& value)
{
    const bool is_model = same_text(value.resval.rstring, "Model");
    if (!is_model && !same_text(value.resval.rstring, paper_layout(doc)))
        return set_result::out_of_range;
    set_int(doc, "TILEMODE", is_model ? 1 : 0);
    return set_result::done;
}

list_ptr get_viewport(document& doc)
{
    // The one viewport of model space has the number 2: 1 is paper space itself.
    return whole(is_tiled(doc) ? 2 : database_of(doc).layout_viewport);
}

set_result set_viewport(document& doc, const resbuf& value)
{
    const int number = value.restype == RTLONG ? value.resval.rlong : value.resval.rint;
    if (is_tiled(doc) ? number != 2 : number < 1)
        return set_result::out_of_range;
    if (!is_tiled(doc))
        database_of(doc).layout_viewport = number;
    return set_result::done;
}

// ---- the view

namespace
{

list_ptr place_of(const double at[3])
{
    return place(at[0], at[1], at[2]);
}

// A place of the screen, by its distance from the middle in halves of the screen.
list_ptr screen_place(document& doc, double right, double up)
{
    const active_view view = active_view_of(database_of(doc));
    double world[3];
    view.in_world({view.center.x + right * view.height * view.aspect / 2, view.center.y + up * view.height / 2},
                  world);
    return place_of(world);
}

} // namespace

list_ptr get_view_center(document& doc)
{
    return screen_place(doc, 0, 0);
}
list_ptr get_view_size(document& doc)
{
    return real(active_view_of(database_of(doc)).height);
}
list_ptr get_view_direction(document& doc)
{
    return place_of(active_view_of(database_of(doc)).direction);
}
list_ptr get_view_target(document& doc)
{
    return place_of(active_view_of(database_of(doc)).target);
}
list_ptr get_view_twist(document& doc)
{
    return real(active_view_of(database_of(doc)).twist);
}
list_ptr get_view_mode(document& doc)
{
    return whole(active_view_of(database_of(doc)).mode);
}
list_ptr get_view_low(document& doc)
{
    return screen_place(doc, -1, -1);
}
list_ptr get_view_high(document& doc)
{
    return screen_place(doc, 1, 1);
}

// ---- extents

namespace
{

box drawing_extents(document& doc)
{
    database& db = database_of(doc);
    const object_id space = db.current_space();
    return space ? known_space_extents(db, space) : box::empty();
}

constexpr double NOTHING_DRAWN = 1e20; // low corner; the high one has it negative

} // namespace

list_ptr get_extents_low(document& doc)
{
    const box all = drawing_extents(doc);
    if (all.is_empty())
        return place(NOTHING_DRAWN, NOTHING_DRAWN, NOTHING_DRAWN);
    return place(all.low[0], all.low[1], all.low[2]);
}

list_ptr get_extents_high(document& doc)
{
    const box all = drawing_extents(doc);
    if (all.is_empty())
        return place(-NOTHING_DRAWN, -NOTHING_DRAWN, -NOTHING_DRAWN);
    return place(all.high[0], all.high[1], all.high[2]);
}

list_ptr get_world_ucs(document& doc)
{
    constexpr double WORLD[3][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    constexpr std::array<const char*, 3> NAMES = {"UCSORG", "UCSXDIR", "UCSYDIR"};
    for (std::size_t i = 0; i < 3; ++i) {
        const list_ptr value = get_variable(doc, NAMES[i]);
        for (std::size_t k = 0; k < 3; ++k)
            if (value->resval.rpoint[k] != WORLD[i][k])
                return whole(0);
    }
    return whole(1);
}

// ---- properties of new objects

namespace
{

struct color_word {
    std::string_view name;
    int index;
};
constexpr color_word COLOR_WORDS[] = {{"BYBLOCK", 0}, {"BYLAYER", 256}, {"RED", 1},
                                      {"YELLOW", 2},  {"GREEN", 3},     {"CYAN", 4},
                                      {"BLUE", 5},    {"MAGENTA", 6},   {"WHITE", 7}};

set_result put_name(document& doc, const char* variable, int code, std::string_view name)
{
    database& db = database_of(doc);
    db.set_header(variable, {db.text_group(code, name)});
    return set_result::done;
}

// The record of that name, which is then written as the record has it.
set_result put_record(document& doc, const char* variable, int code, const char* table, std::string_view name)
{
    const database& db = database_of(doc);
    const object_id record = db.record(table, name);
    if (!record)
        return set_result::out_of_range;
    return put_name(doc, variable, code, db.text_of(db.at(record).groups, 2));
}

} // namespace

list_ptr get_color(document& doc)
{
    const group_list* held = database_of(doc).header_value("$CECOLOR");
    const std::int64_t index = held ? int_of(*held, 62, 256) : 256;
    return words(index == 256 ? "BYLAYER" : index == 0 ? "BYBLOCK" : std::to_string(index));
}

set_result set_color(document& doc, const resbuf& value)
{
    int index = -1;
    for (const color_word& word : COLOR_WORDS)
        if (same_text(word.name, value.resval.rstring))
            index = word.index;
    if (index < 0)
        index = parse_int(value.resval.rstring).value_or(-1);
    if (index < 0 || index > 256)
        return set_result::out_of_range;
    database_of(doc).set_header("$CECOLOR", {int_group(62, index)});
    return set_result::done;
}

set_result set_layer(document& doc, const resbuf& value)
{
    constexpr int FROZEN = 1;
    const database& db = database_of(doc);
    const object_id layer = db.record("LAYER", value.resval.rstring);
    if (layer && (int_of(db.at(layer).groups, 70, 0) & FROZEN))
        return set_result::out_of_range;
    return put_record(doc, "$CLAYER", 8, "LAYER", value.resval.rstring);
}

set_result set_linetype(document& doc, const resbuf& value)
{
    return put_record(doc, "$CELTYPE", 6, "LTYPE", value.resval.rstring);
}

set_result set_text_style(document& doc, const resbuf& value)
{
    return put_record(doc, "$TEXTSTYLE", 7, "STYLE", value.resval.rstring);
}

} // namespace host::db
