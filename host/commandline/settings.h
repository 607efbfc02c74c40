// settings.h: variables at the command line.
#pragma once

#include "host/commandline/command_io.h"

namespace host::commandline
{

task<> setvar_command(command_io& io);
// A variable's name typed as a command: the command's name is the variable.
task<> set_variable_command(command_io& io);

} // namespace host::commandline
