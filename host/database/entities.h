// entities.h: group lists of drawing objects: what each kind holds, and lists to and from programs.
#pragma once

#include <string>
#include <vector>

#include "host/core/resbuf.h"
#include "host/database/database.h"

namespace host::db
{

// Brings a list that a program or an old file gives into the stored form: subclass markers in their
// places, defaults for groups that every object of the kind has, layer 0 when none is named. Groups
// that the kind doesn't know stay. False when a group that the kind needs is missing; `error` says which.
bool complete_entity(database& db, group_list& groups, std::string* error);

// Group list as acdbEntGet gives it, -1 first. `applications`: names with wild cards for -3.
resbuf* entity_list(const database& db, object_id id, const resbuf* applications);
// A program's list as groups (the -1, -2 and 5 groups left out). False on a value of a wrong type.
bool groups_of_list(database& db, const resbuf* list, group_list& groups, std::string* error);

// Appends to the current space, completing the list; 0 and `error` when it can't be.
object_id make_entity(database& db, group_list groups, std::string* error);

// Layer, linetype and other records that an entity names and the drawing lacks are made.
void ensure_references(database& db, const group_list& groups);

// Symbol table records made with the groups that a new one has.
object_id add_layer(database& db, std::string_view name, int color);
object_id add_record(database& db, std::string_view table, std::string_view name);
// A block record with its BLOCK and ENDBLK.
object_id add_block(database& db, std::string_view name);

// First and next entity of a block record's sequence that is not erased, BLOCK and ENDBLK left out.
object_id first_entity(const database& db, object_id block_record);
object_id next_entity(const database& db, object_id entity);
// Of a POLYLINE or INSERT: VERTEX, ATTRIB; SEQEND left out.
object_id first_child(const database& db, object_id entity);
object_id next_child(const database& db, object_id child);

// Whether an object fits a selection filter (as acedSSGet takes it): -4 operators, relational tests,
// wild cards, -3 with application names.
bool matches(const database& db, object_id id, const resbuf* filter);

} // namespace host::db
