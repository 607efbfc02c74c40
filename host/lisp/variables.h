// variables.h: the host's variables, for built-ins that depend on them.
#pragma once

namespace host::lisp
{

// Leaves `point` as it is when the variable isn't a point.
void point_variable(const char* name, double* point);
double real_variable(const char* name); // 0 for an unknown one

} // namespace host::lisp
