// help.h: the host's own help.
#pragma once

#include "host/commandline/command_io.h"

namespace host::commandline
{

task<> help_command(command_io& io);

} // namespace host::commandline
