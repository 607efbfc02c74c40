// selection_sets.h: sets of drawing objects by name, in the order of picking. They belong to the drawing in
// which they were made.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

// A new set of these objects (one that stands twice counts once). Its second word is -1, as no entity's is.
void make_set(database& db, const std::vector<object_id>& ids, std::int32_t* name);
// What the set holds, in its order, objects that have been erased since left out.
std::vector<object_id> set_members(database& db, const std::int32_t* name);
bool is_set(database& db, const std::int32_t* name);
// Objects picked before a command is given, which selection mode I answers with.
void set_chosen(database& db, std::vector<object_id> ids);
std::vector<object_id> chosen(database& db);
// Sets made and not yet freed, in all open drawings.
std::size_t live_sets();

} // namespace host::db
