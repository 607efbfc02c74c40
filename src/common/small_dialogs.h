// small_dialogs.h: one-question dialogs out of zentfile.dcl, which lies in the directory that the
// LISP variable lspdir$ names.
#pragma once

// Tells something. Text of more than a line, or without its dialog, goes to the host's alert.
void zent_alert_box(const char* text);
// Asks for a text of at most size - 1 characters. RTNORM on OK; RTCAN otherwise, with `out` as it was;
// RTERROR with a message when the dialog can't be made.
int zent_input_box(const char* prompt, const char* title, char* out, int size);
// 1 yes, 2 yes to all, 3 no, 4 no to all. Closing the dialog is no to all: nothing may be done to things
// that the user hasn't agreed to. 1 with a message when the dialog can't be made.
int zent_yes_no_all(const char* prompt);
