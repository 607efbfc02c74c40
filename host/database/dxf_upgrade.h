// dxf_upgrade.h: objects of old files in the stored, modern form. Inner header.
#pragma once

#include "host/database/dxf_parts.h"

namespace host::db
{

// Puts handle and owner's handle at the head of an object's groups; what stood there is replaced.
// Entities and records have 330 and 5 (`handle_code`; 105 for dimension styles), then the 102 lists;
// objects of section OBJECTS 5, the 102 lists, 330, as files have it too.
enum class head_order { owner_first, handle_first };
void set_head(database& db, group_list& groups, head_order order, int handle_code, std::uint64_t handle,
              std::uint64_t owner);
// A table's: the name, the handle, the 102 lists, no owner.
void set_table_head(database& db, group_list& groups, std::uint64_t handle);

// A symbol table, a record of one, a BLOCK or ENDBLK, its head set, without subclass markers gets them.
void upgrade_table_head(database& db, dxf_table& table);
void upgrade_record(database& db, std::string_view table, group_list& groups);
void upgrade_block_end(database& db, group_list& groups);

// An entity without subclass markers: old names, the elevation of the oldest files (38), third
// coordinates, markers and the groups that the kind always has. False, with the reason, when the kind is
// unknown or a group that it needs is missing: then the object is as it was.
bool upgrade_entity(database& db, group_list& groups, std::string* why);

// "$MODEL_SPACE", as R12 files call it, is "*Model_Space"; the like for paper space. Others as they are.
std::string modern_block_name(std::string_view name);
std::string old_block_name(std::string_view name); // the other way

} // namespace host::db
