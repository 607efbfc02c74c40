// sysvars.h: the host's variables by name: read-only ones that are worked out, ones kept in the
// drawing's header, ones of the session.
#pragma once

#include <string>
#include <string_view>

#include "host/core/resbuf.h"

namespace host
{
class document;
}

namespace host::db
{

enum class set_result { done, unknown, read_only, wrong_type, out_of_range };

// New node with the value (RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT, RT3DPOINT), null for an unknown name.
list_ptr get_variable(document& doc, std::string_view name);
set_result set_variable(document& doc, std::string_view name, const resbuf& value);

// Short cuts; 0 or empty for an unknown name.
int int_variable(document& doc, std::string_view name);
double real_variable(document& doc, std::string_view name);
std::string text_variable(document& doc, std::string_view name);
void set_int(document& doc, std::string_view name, int value);
void set_real(document& doc, std::string_view name, double value);
void set_text(document& doc, std::string_view name, std::string_view value);
void set_point(document& doc, std::string_view name, const double* point);
// A drawing's file as programs see it: the directory in the form that `path` has, the name with .dwg.
std::string drawing_path_for_programs(std::string_view path);
// ERRNO, which programs read after a failed call.
void set_errno(int value);

} // namespace host::db
