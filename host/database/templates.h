// templates.h: groups written as text, for what new objects hold. Inner header.
#pragma once

#include <string_view>

#include "host/database/database.h"

namespace host::db
{

// Appends groups given as "code value;code value": texts as they stand, points as "x,y" or "x,y,z", handles
// in hexadecimal. "@" as a whole value is `name`. For the project's own tables only: nothing is checked.
void add_groups(const database& db, group_list& groups, std::string_view text, std::string_view name = {});

} // namespace host::db
