// programs.h: other programs, by their command line or by the kind of a document.
#pragma once

#include "common/text_buffer.h"

// Starts a program; with `wait` it returns when the program has ended. The drawing stands still meanwhile.
void run_and_wait(const char* command_line, int wait);
// The command that opens documents of a file's kind, environment variables filled in; empty when none is
// known. `name` ends in an extension of at most three letters.
void find_open_command(const char* name, text_out out);
void open_pdf(const char* path);
// What CreateProcessA answers.
int open_web_page(const char* address);
