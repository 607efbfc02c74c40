// tracking.h: what is running in the host just now. One set for all drawings, main thread only.
#pragma once

// 1 from the start of a host command until it ends or is cancelled.
extern int cmd_active;
// 1 from the start of a (C:...) LISP function until it ends or is cancelled.
extern int lisp_active;
// Upper-case name of the running LISP function or wizard; empty when neither flag is set.
extern char current_function[255];
// 0 idle, 4 help asked for and waiting, -1 help running.
extern int help_pending;
