#include "common/invoke.h"

#include "common/directories.h"
#include "hostapi/ads.h"

namespace
{

constexpr int HELP_OPERATION = 38;

void invoke_and_release(resbuf* call)
{
    if (!call)
        return;
    resbuf* result = nullptr;
    acedInvoke(call, &result);
    acutRelRb(call);
    if (result)
        acutRelRb(result);
}

} // namespace

void invoke_print_line(const char* text)
{
    invoke_and_release(acutBuildList(RTSTR, "cf:print_line", RTSTR, data_dir, RTSTR, text, 0));
}

void invoke_help()
{
    invoke_and_release(acutBuildList(RTSTR, "cf:zentutil", RTSTR, data_dir, RTSHORT, HELP_OPERATION, 0));
}
