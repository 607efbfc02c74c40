// new_objects.h: objects that commands make, with the current layer, colour, linetype and thickness.
#pragma once

#include <string_view>
#include <vector>

#include "host/commandline/command_io.h"

namespace host::commandline
{

// Group 0 and the current properties; `thick`: the kind has a thickness.
db::group_list begin_object(document& doc, std::string_view type, bool thick = true);
void add_point(db::group_list& groups, int code, const point3& p);
void add_point_2d(db::group_list& groups, int code, const point3& p);
void add_real(db::group_list& groups, int code, double value);
void add_int(db::group_list& groups, int code, int value);
void add_text(db::database& db, db::group_list& groups, int code, std::string_view text);
// Appends to the current space. Ends the command with the reason when it can't be.
db::object_id make_object(command_io& io, db::group_list groups);
db::object_id make_object(command_io& io, db::group_list groups, std::vector<db::group_list> children);

// Colour words and numbers: "red", "5", "BYLAYER". -1: no colour.
int color_of_text(std::string_view text);
std::string color_text(int color); // "1 (red)", "BYLAYER"
// Lengths and angles as prompts show them, in the drawing's units.
std::string length_text(document& doc, double value);
std::string angle_text(document& doc, double radians);

// Where a LINE or ARC of this session ended, for commands that go on from there.
struct last_drawn {
    explicit last_drawn(document&) {}
    point3 end;
    double direction = 0.0; // radians, of travel at the end
    bool is_arc = false;
    bool any = false;
};

} // namespace host::commandline
