// hooks.h: the module's two hooks in the message loops of the host: one sees messages on their way to
// windows, the other those of dialogs before they are handed on.
#pragma once

#include "hostapi/messages.h"

// On the calling thread.
void hooks_install();
void hooks_remove();

// What the hooks do, by the platform's rules for them: WH_CALLWNDPROC and WH_MSGFILTER.
LRESULT window_hook(int code, WPARAM wparam, LPARAM lparam);
LRESULT filter_hook(int code, WPARAM wparam, LPARAM lparam);
