// draw_commands.h: the commands that stand in the table of command_table.cpp, by the file that has them.
#pragma once

#include "host/commandline/command_io.h"

namespace host::commandline
{

// draw_lines.cpp
task<> line_command(command_io& io);
task<> point_command(command_io& io);
task<> polyline_3d_command(command_io& io);
// draw_polyline.cpp
task<> polyline_command(command_io& io);
// draw_arcs.cpp
task<> circle_command(command_io& io);
task<> arc_command(command_io& io);
// draw_text.cpp
task<> text_command(command_io& io);
// draw_insert.cpp
task<> insert_command(command_io& io);
task<> block_command(command_io& io);

} // namespace host::commandline
