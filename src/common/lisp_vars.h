// lisp_vars.h: variables of the AutoLISP programs.
#pragma once

#include "common/text_buffer.h"

// The variable's value as text: a string as it is, a 16-bit integer by "%d", a real by "%f". Empty
// when it is unset or of another type.
void lisp_get_text(text_out out, const char* name);
// Sets a variable to a string; tells when the host refuses.
void lisp_set_text(const char* name, const char* value);
// Whether the variable is set to a certain integer: how programs switch something on (1) or off (0).
bool lisp_is_integer(const char* name, int value);
