// invoke.h: calls of the module's own LISP functions by way of the host, for windows of the module
// that must run work in the context of a LISP call. They come back through the dispatcher.
#pragma once

// Appends a line to the report log.
void invoke_print_line(const char* text);
// Help for the function that is running.
void invoke_help();
