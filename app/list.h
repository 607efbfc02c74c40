// list.h: "zentrik list": a drawing's objects as group lists.
#pragma once

#include <string>

namespace app
{

// Entities in the drawing's order with what they own, or with `type` the objects of that type, table
// records too. One list a line, as LISP prints them. An exit status.
int list_objects(const std::string& file, const std::string& type);

} // namespace app
