// framework.h: the module as a part of the host's window framework.
#pragma once

#include "hostapi/framework.h"

extern HINSTANCE module_instance; // as the system's loader told it
// Wrappers of the host's main window and of its drawing window, as they were at the latest set-up or
// tear-down. Null for none.
extern CWnd* main_window;
extern CWnd* doc_window;

// The number of a wrapped window, 0 for none.
HWND window_of(const CWnd* wrapper);

void framework_set_up();
void framework_tear_down();
