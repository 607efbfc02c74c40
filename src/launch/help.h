// help.h: the product's help, by the LISP function that is running, else the host's.
#pragma once

#include "hostapi/windows.h"

// Opens the topic of the running function (help.xrf in symbol_dir), the whole help, or the host's help, as
// what is running decides; asks which when nothing is.
void help_show();
// Calls the HTML Help control; what it answers, 0 when it can't be reached. The control is looked for once
// in a session: after a failure nothing is loaded any more.
HWND html_help(HWND caller, const char* file, unsigned command, std::uintptr_t data);

// The control as this session holds it.
struct html_help_control {
    std::uint32_t library; // 0: none
    HWND (*call)(HWND caller, const char* file, unsigned command, std::uintptr_t data);
    bool failed;
};
extern html_help_control held_help_control;

// Default name of a cross-reference help file. Nothing of this module uses it; programs that share its
// state find it here.
extern char cross_reference_help[256];
