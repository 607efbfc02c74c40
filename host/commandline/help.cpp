#include "host/commandline/help.h"

#include "hostapi/ads.h"

namespace host::commandline
{

task<> help_command(command_io&)
{
    acedHelp(nullptr, "", 0);
    co_return;
}

} // namespace host::commandline
