// help.h: the product's help, by the LISP function that is running, else the host's.
#pragma once

#include "hostapi/windows.h"

// Opens the topic of the running function (help.xrf in symbol_dir), the whole help, or the host's help, as
// what is running decides; asks which when nothing is.
void help_show();
// Calls the HTML Help control; what it answers, 0 when it can't be reached.
HWND html_help(HWND caller, const char* file, unsigned command, std::uintptr_t data);
