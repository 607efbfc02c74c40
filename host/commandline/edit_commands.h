// edit_commands.h: commands that change what is there, and settings, by the file that has them.
#pragma once

#include "host/commandline/command_io.h"

namespace host::commandline
{

// edit_objects.cpp
task<> erase_command(command_io& io);
task<> move_command(command_io& io);
task<> copy_command(command_io& io);
task<> rotate_command(command_io& io);
task<> scale_command(command_io& io);
task<> mirror_command(command_io& io);
task<> select_command(command_io& io);
// explode.cpp
task<> explode_command(command_io& io);
// trim.cpp
task<> trim_command(command_io& io);
// edit_properties.cpp
task<> chprop_command(command_io& io);
task<> change_command(command_io& io);
// layers.cpp
task<> layer_command(command_io& io);
// styles.cpp
task<> color_command(command_io& io);
task<> linetype_command(command_io& io);
task<> style_command(command_io& io);
// views.cpp
task<> zoom_command(command_io& io);
task<> pan_command(command_io& io);
task<> regen_command(command_io& io);
task<> redraw_command(command_io& io);
task<> ucs_command(command_io& io);
// dview.cpp
task<> dview_command(command_io& io);
// steps.cpp
task<> u_command(command_io& io);
task<> undo_command(command_io& io);
task<> redo_command(command_io& io);
// session_commands.cpp
task<> arx_command(command_io& io);
task<> help_command(command_io& io);
// drawing_files.cpp
task<> open_command(command_io& io);
task<> new_command(command_io& io);
task<> qsave_command(command_io& io);
task<> save_command(command_io& io);
task<> saveas_command(command_io& io);
task<> close_command(command_io& io);
task<> quit_command(command_io& io);
task<> end_command(command_io& io);

} // namespace host::commandline
