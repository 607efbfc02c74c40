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
// that the kind doesn't know stay. False, with the list as it was, when a group that the kind needs is
// missing, the kind is not known and the list has no markers, or check_numbers fails; `error` says which.
// Handle and owner are 0 when there were none; 67 and 410 stay if given.
bool complete_entity(const database& db, group_list& groups, std::string* error);
// False for a list with a number that is not finite: no file could hold it.
bool check_numbers(const group_list& groups, std::string* error);

// Group list as acdbEntGet gives it, -1 first. `applications`: names with wild cards for -3. What follows
// from an object's place is put in here and isn't stored: 67 and 410, and -2 of BLOCK and SEQEND. Groups of
// the kind that a file left out have their standard values.
resbuf* entity_list(const database& db, object_id id, const resbuf* applications);
// A program's list as groups (the -1, -2 and 5 groups left out). False on a value of a wrong type.
bool groups_of_list(database& db, const resbuf* list, group_list& groups, std::string* error);

// Appends to the space that 67 or 410 name, else to the current space, completing the list and making
// what it refers to; 0 and `error` when it can't be. Handle, owner and groups in braces of the list don't
// count.
object_id make_entity(database& db, group_list groups, std::string* error);
// The same with what it owns: the lists of its VERTEX or ATTRIB objects. SEQEND is added.
object_id make_sequence(database& db, group_list groups, std::vector<group_list> children, std::string* error);
// An INSERT from a program's list that still waits for the attributes that it announces is made without them.
void settle_pending(database& db);
// Appends a list to a given owner (block record, POLYLINE, INSERT).
object_id append_entity(database& db, object_id owner, group_list groups, std::string* error);
// Puts a program's list in place of an entity's or a record's groups, as acdbEntMod does. A text whose
// alignment, letters or size change is settled (text_metrics.h), as new ones are.
bool change_entity(database& db, object_id id, group_list groups, std::string* error);
// After a record of a symbol table got another name: all that named it by the old one name it by the new.
void carry_new_name(database& db, object_id record, const std::string& old_name);

// Erased, or part of something erased.
bool is_erased(const database& db, object_id id);
// Space in which an entity stands or whose block holds it: the block record. 0 for other objects.
object_id block_of(const database& db, object_id id);
bool is_space(const database& db, object_id block_record); // model space or a layout's
// Name of a space's layout; empty for other block records.
std::string_view layout_name(const database& db, object_id block_record);

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
// A filter that isn't well formed matches nothing.
bool matches(const database& db, object_id id, const resbuf* filter);
bool is_valid_filter(const resbuf* filter);

} // namespace host::db
