// sysvars_table.h: the variables of the host, one row each. Inner header.
#pragma once

#include <span>
#include <string_view>

#include "host/database/sysvars.h"

namespace host::db
{

enum class variable_form { integer, long_integer, real, text, point2, point3 };

// Where a value lives. `header`: the drawing's header, so that files keep it and undo reaches it.
// `drawing`: with the open drawing, gone with it. `session`: one for all drawings.
enum class variable_home { worked_out, header, drawing, session };

struct variable_row {
    std::string_view name;
    variable_form form;
    variable_home home;
    bool read_only;           // for programs; the host sets it all the same
    int group;                // of a header variable
    double low, high;         // least and greatest number; equal: any
    std::string_view initial; // as text; points "x,y,z"
    // Worked out, or in place of what the home does.
    list_ptr (*get)(document& doc) = nullptr;
    set_result (*set)(document& doc, const resbuf& value) = nullptr;
    bool dot_empties = false; // a text that "." takes away
};

std::span<const variable_row> variable_rows();

// ---- rules of single variables (sysvars_rules.cpp)
list_ptr get_drawing_name(document& doc);
list_ptr get_drawing_directory(document& doc);
list_ptr get_drawing_titled(document& doc);
list_ptr get_save_name(document& doc);
list_ptr get_modified(document& doc);
list_ptr get_cdate(document& doc);
list_ptr get_date(document& doc);
list_ptr get_milliseconds(document& doc);
list_ptr get_undo_control(document& doc);
list_ptr get_login_name(document& doc);
list_ptr get_temporary_directory(document& doc);
list_ptr get_settings_directory(document& doc);
list_ptr get_tab(document& doc);
set_result set_tab(document& doc, const resbuf& value);
list_ptr get_viewport(document& doc);
set_result set_viewport(document& doc, const resbuf& value);
list_ptr get_view_center(document& doc);
list_ptr get_view_size(document& doc);
list_ptr get_view_direction(document& doc);
list_ptr get_view_target(document& doc);
list_ptr get_view_twist(document& doc);
list_ptr get_view_mode(document& doc);
list_ptr get_view_low(document& doc);
list_ptr get_view_high(document& doc);
list_ptr get_extents_low(document& doc);
list_ptr get_extents_high(document& doc);
list_ptr get_world_ucs(document& doc);
list_ptr get_color(document& doc);
set_result set_color(document& doc, const resbuf& value);
set_result set_layer(document& doc, const resbuf& value);
set_result set_linetype(document& doc, const resbuf& value);
set_result set_text_style(document& doc, const resbuf& value);

} // namespace host::db
