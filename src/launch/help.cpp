#include "launch/help.h"

void help_show() {}
HWND html_help(HWND, const char*, unsigned, std::uintptr_t)
{
    return 0;
}
