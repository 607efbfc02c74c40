// dim_commands.h: the dimensioning mode.
#pragma once

#include "host/commandline/command_io.h"

namespace host::commandline
{

task<> dim1_command(command_io& io); // one command of the mode
task<> dim_command(command_io& io);  // until it is left

} // namespace host::commandline
