// command_table.cpp: the host's commands by name.
#include <unordered_map>

#include "host/commandline/command_io.h"
#include "host/commandline/dim_commands.h"
#include "host/commandline/draw_commands.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/settings.h"
#include "host/core/text.h"

namespace host::commandline
{

const std::vector<command_entry>& all_commands()
{
    static const std::vector<command_entry> commands = {
        {"3DPOLY 3P", polyline_3d_command},
        {"ARC A", arc_command},
        {"ARX", arx_command},
        {"BLOCK B", block_command},
        {"CHANGE", change_command},
        {"CHPROP", chprop_command},
        {"CIRCLE C", circle_command},
        {"CLOSE", close_command, COMMAND_APPLICATION},
        {"COLOR COL COLOUR", color_command},
        {"COPY CO CP", copy_command},
        {"DIM", dim_command},
        {"DIM1", dim1_command},
        {"DVIEW DV", dview_command},
        {"END", end_command},
        {"ERASE E", erase_command},
        {"EXPLODE X", explode_command},
        {"HELP ?", help_command, COMMAND_NO_STEP | COMMAND_INSIDE},
        {"INSERT I", insert_command},
        {"LAYER LA", layer_command},
        {"LINE L", line_command},
        {"LINETYPE LT LTYPE", linetype_command},
        {"MIRROR MI", mirror_command},
        {"MOVE M", move_command},
        {"NEW", new_command, COMMAND_APPLICATION},
        {"OPEN", open_command, COMMAND_APPLICATION},
        {"PAN P", pan_command},
        {"PLINE PL", polyline_command},
        {"POINT PO", point_command},
        {"QSAVE", qsave_command},
        {"QUIT EXIT", quit_command},
        {"REDO", redo_command, COMMAND_NO_STEP},
        {"REDRAW R", redraw_command},
        {"REDRAWALL RA", redraw_command},
        {"REGEN RE", regen_command},
        {"REGENALL REA", regen_command},
        {"ROTATE RO", rotate_command},
        {"SAVE", save_command},
        {"SAVEAS", saveas_command},
        {"SCALE SC", scale_command},
        {"SELECT", select_command},
        {"SETVAR SET", setvar_command},
        {"STYLE ST", style_command},
        {"TEXT DTEXT DT", text_command},
        {"TRIM TR", trim_command},
        {"U", u_command, COMMAND_NO_STEP},
        {"UCS", ucs_command},
        {"UNDO", undo_command, COMMAND_NO_STEP},
        {"ZOOM Z", zoom_command},
    };
    return commands;
}

const command_entry* find_command(std::string_view name)
{
    static const std::unordered_map<std::string, const command_entry*> by_name = [] {
        std::unordered_map<std::string, const command_entry*> map;
        for (const command_entry& entry : all_commands())
            for (const std::string_view word : split_blanks(entry.words))
                map.emplace(word, &entry);
        return map;
    }();
    const auto there = by_name.find(upper(name));
    return there == by_name.end() ? nullptr : there->second;
}

} // namespace host::commandline
