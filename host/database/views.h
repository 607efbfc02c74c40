// views.h: what stands behind a view of a drawing object. Inner header of the views_*.cpp files, but for
// database_view.
//
// A view has a state: either the identity of an object of the drawing, whose groups are then read and
// changed in the one store, or the groups of an object that isn't in a drawing yet. A vertex that was
// appended to a polyline outside the drawing shares its state with that polyline, so that either view
// may go first; when the polyline is stored its vertices become objects with it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

#include "host/database/database.h"
#include "hostapi/dbobjects.h"

namespace host::db
{

struct object_state {
    std::uint32_t database = 0; // number of the drawing whose pool holds the texts, 0 none
    object_id id = 0;           // 0: not in the drawing
    bool has_owner = false;     // waits with its polyline
    group_list groups;          // while it isn't in the drawing
    std::vector<std::shared_ptr<object_state>> vertices;
};

} // namespace host::db

struct AcDbObjectBody {
    std::shared_ptr<host::db::object_state> state;
    AcDb::OpenMode mode;
    // Where the vertices of a lightweight polyline begin in its groups, as far as that is known for a
    // list of that length.
    mutable std::vector<std::uint32_t> vertex_at;
    mutable std::size_t indexed_length = 0;

    AcDbObjectBody(std::shared_ptr<host::db::object_state> what, AcDb::OpenMode how);
    ~AcDbObjectBody();
    AcDbObjectBody(const AcDbObjectBody&) = delete;
    AcDbObjectBody& operator=(const AcDbObjectBody&) = delete;
};

namespace host::db
{

// The drawing's object model, for those who hand it to programs.
AcDbDatabase* database_view(document& doc);

// ---- states
// Of an object that begins with the groups of `text` (as in templates.h), with the texts of the current
// drawing.
AcDbObjectBody* new_body(std::string_view text);
AcDbObjectBody* resident_body(const database& db, object_id id, AcDb::OpenMode mode);
database* numbered_database(std::uint32_t number); // null: closed
database* database_behind(const AcDbObjectBody* body);
bool in_drawing(const AcDbObjectBody* body);
AcDbObjectId id_behind(const AcDbObjectBody* body);

// ---- groups. Getters of a view whose drawing is gone see an empty list.
const group_list& groups_behind(const AcDbObjectBody* body);
// To be changed; null with `status` when the view isn't open for that or the drawing is gone.
group_list* groups_to_change(AcDbObjectBody* body, Acad::ErrorStatus* status);

// The groups behind one subclass marker, and the order in which they stand. A group with the code `stop`
// is no longer of the section (none for 0).
struct section {
    const char* marker;
    std::initializer_list<int> order;
    int stop = 0;
};
extern const section ENTITY_SECTION;

const group* find_in(const database& db, const group_list& groups, const section& where, int code);
// In place of the group with that code, or where the order has it.
void put_in(const database& db, group_list& groups, const section& where, const group& made);
void remove_in(const database& db, group_list& groups, const section& where, int code);

double real_in(const AcDbObjectBody* body, const section& where, int code, double otherwise);
int int_in(const AcDbObjectBody* body, const section& where, int code, int otherwise);
Acad::ErrorStatus put_behind(AcDbObjectBody* body, const section& where, const group& made);
// The same, but without a group where the value is what holds without one.
Acad::ErrorStatus put_or_leave_out(AcDbObjectBody* body, const section& where, const group& made,
                                   bool is_usual);
// Sets or clears bits of an integer group.
Acad::ErrorStatus put_bits(AcDbObjectBody* body, const section& where, int code, int bits, bool on);

// A place of an object's plane in the world; null for no normal is the world's own plane.
AcGePoint3d in_world(const AcGePoint3d& at, const group* normal);

// A new string of the program's heap.
char* new_string(std::string_view text);

// Texts of a list that was begun in another drawing are looked up in this one's pool.
void move_texts(database& db, object_state& state);

// Puts a state into the drawing as a child of `owner`, completed, with all its vertices. Objects without
// a layer go on `layer`.
Acad::ErrorStatus store_entity(database& db, object_id owner, object_state& state, std::string_view layer);

} // namespace host::db
