// wizard_values.h: LISP and host variables of the start wizard as numbers.
#pragma once

// A LISP variable as C reads a number out of its text; 0 when it is unset.
int lisp_integer(const char* name);
double lisp_real(const char* name);

// What the host refuses stays as it was, without a message.
void lisp_set_short(const char* name, int value);
void lisp_set_real(const char* name, double value);
