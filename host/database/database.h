// database.h: the one store of a drawing's objects.
//
// An object is a list of groups (code, value), as acdbEntGet gives it without its -1 group, with a
// handle, an owner, and a place in its owner's sequence. A POLYLINE owns its VERTEX objects and
// SEQEND, an INSERT its ATTRIB objects and SEQEND, a block record its BLOCK, entities and ENDBLK, a
// table its records. Lists are kept in the modern form (with 5, 330 and 100 groups) whatever
// the file's version was.
//
// Every change goes through database::modify, append and set_erased, which feed undo, the modified
// flag and the listeners.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hostapi/adsdef.h"

namespace host
{
class document;
}

namespace host::db
{

// Index of an object in its database; 0 is none.
using object_id = std::uint32_t;
// A text of the database's pool; equal texts have equal ids. 0 is the empty text.
using text_id = std::uint32_t;

enum class group_kind : std::uint8_t {
    real,
    point,   // 2 or 3 coordinates
    integer, // 16, 32 or 64 bits, flags too
    text,
    handle, // reference to an object by handle (330, 340, 350, 360, 5, 105, 1005 ...)
    binary, // bytes, kept in the pool
};

// A trivially copyable group. Which kind a code has: kind_of_code.
struct group {
    std::int16_t code = 0;
    group_kind kind = group_kind::integer;
    std::uint8_t dimensions = 0; // points: 2 or 3
    text_id text = 0;
    union {
        double point[3];
        double real;
        std::int64_t integer;
        std::uint64_t handle;
    };
    group() : point{0, 0, 0} {}
};
static_assert(sizeof(group) == 32);

using group_list = std::vector<group>;

group_kind kind_of_code(int code);
group real_group(int code, double value);
group int_group(int code, std::int64_t value);
group point_group(int code, double x, double y);
group point_group(int code, double x, double y, double z);
group handle_group(int code, std::uint64_t handle);
group text_group(int code, text_id text);

const group* find(const group_list& groups, int code);
group* find(group_list& groups, int code);
double real_of(const group_list& groups, int code, double otherwise);
std::int64_t int_of(const group_list& groups, int code, std::int64_t otherwise);

enum class object_class : std::uint8_t {
    entity, // in a block, and VERTEX, ATTRIB, SEQEND, BLOCK, ENDBLK
    table,  // LAYER, LTYPE, ... (group 0 TABLE, group 2 the name)
    record, // of a table
    object, // of the OBJECTS section
};

struct object {
    std::uint64_t handle = 0;
    object_id owner = 0;
    object_id previous = 0, next = 0; // in the owner's sequence
    object_id first = 0, last = 0;    // of what it owns in sequence
    text_id type = 0;                 // the text of group 0
    object_class family = object_class::entity;
    bool erased = false;
    group_list groups; // group 0 first; extended data (1000 ...) at the end
};

// What happened to an object. `modified` is told when somebody asks to change it, before the groups are
// other: a listener notes the object and looks at it when it is next asked itself. Undo and redo tell the
// same kinds.
enum class change_kind { added, modified, erased, restored };
struct change_listener {
    virtual ~change_listener() = default;
    virtual void object_changed(object_id id, change_kind kind) = 0;
};

// A section of a DXF file that means nothing here, kept as it came.
struct raw_section {
    std::string name;
    group_list groups;
};

class database
{
public:
    explicit database(document& owner);
    ~database();
    database(const database&) = delete;
    database& operator=(const database&) = delete;

    // ---- texts (the pool grows by what is asked for; that is no change of the drawing)
    text_id intern(std::string_view text) const;
    std::string_view text(text_id id) const;
    std::string_view text_of(const group_list& groups, int code) const; // empty when missing
    group text_group(int code, std::string_view value) const { return db::text_group(code, intern(value)); }

    // ---- looking
    bool valid(object_id id) const { return id > 0 && id < objects_.size(); }
    const object& at(object_id id) const { return objects_[id]; }
    std::size_t size() const { return objects_.size(); }
    object_id by_handle(std::uint64_t handle) const; // 0: none
    std::string_view type_of(object_id id) const { return text(at(id).type); }
    bool is(object_id id, std::string_view type) const { return type_of(id) == type; }
    std::uint64_t next_handle() const { return next_handle_; }

    // ---- changing. `append` puts the object behind the owner's last child, but before the ENDBLK or
    // SEQEND that ends the sequence (owner 0: nowhere), and gives it a handle when it has none. Group 5
    // (or 105) and the owner's 330 are put in by the caller's completion; where their value is 0 the
    // handles of the object and its owner are filled in.
    object_id append(object_id owner, object_class family, group_list groups, std::uint64_t handle = 0);
    // The object's groups, to be changed in place. The reference holds until the next append.
    group_list& modify(object_id id);
    // Other groups for an entity, perhaps of another kind: what is cut out of a circle is an arc.
    void replace(object_id id, group_list groups);
    void set_erased(object_id id, bool erased);
    void reserve_handle(std::uint64_t handle); // no handle up to it is given out again

    // ---- symbol tables: "LAYER", "LTYPE", "STYLE", "BLOCK_RECORD", "VIEW", "UCS", "VPORT", "APPID",
    // "DIMSTYLE"
    object_id table(std::string_view name) const;                          // 0: none
    object_id record(std::string_view table, std::string_view name) const; // any case; 0: none
    object_id model_space() const { return record("BLOCK_RECORD", "*Model_Space"); }
    object_id paper_space() const { return record("BLOCK_RECORD", "*Paper_Space"); }
    object_id current_space() const; // by TILEMODE and CVPORT
    object_id layout_space() const;  // paper space in a layout, else model space

    object_id root_dictionary() const { return root_dictionary_; } // of named objects; 0: none
    // CVPORT in a layout (TILEMODE 0): 1 is paper space itself, more a viewport onto the model.
    int layout_viewport = 1;

    // ---- header variables, "$ACADVER" and its like with their groups, in the file's order
    std::vector<std::pair<std::string, group_list>> header;
    const group_list* header_value(std::string_view name) const;
    void set_header(std::string_view name, group_list value); // undone with the rest

    std::vector<group_list> classes;       // the CLASSES section, a list each
    std::vector<raw_section> raw_sections; // THUMBNAILIMAGE and sections unknown here
    std::vector<std::string> comments;     // 999 lines before the first section

    // ---- undo. A step is what changed since a boundary; steps without a change don't count. What
    // changes in an empty database (before the first boundary, mark or undo_enable) is not kept.
    void undo_mark(bool group_start); // a mark; or the start of a group that goes as one
    void undo_group_end();
    bool undo_back(); // one step or group; false: nothing to undo
    bool undo_to_mark();
    void undo_enable(bool on);
    bool undo_enabled() const;
    bool redo();                                  // only straight after an undo
    void command_boundary(std::string_view name); // a step of undo starts here

    // ---- the rest
    bool modified() const { return modified_; }
    void set_modified(bool on) { modified_ = on; }
    void add_listener(change_listener* listener);
    void remove_listener(change_listener* listener);
    document& owner() { return owner_; }
    int number() const; // of the document

    // What other files of this folder keep for a database, made from it when first asked for.
    template <class T>
    T& part()
    {
        static const char key = 0;
        std::shared_ptr<void>& slot = parts_[&key];
        if (!slot)
            slot = std::make_shared<T>(*this);
        return *static_cast<T*>(slot.get());
    }

private:
    struct journal;
    friend struct journal;
    object_id take_place(object_id owner, object_id id);
    void fill_handles(object& made);
    void index_record(object_id id) const;
    void unindex_record(object_id id, text_id name) const;
    std::string record_key(const object& record, text_id name) const;
    text_id record_name(const object& record) const;
    void settle_renamed() const;
    void note_rename(object_id id);
    void restore_groups(object_id id, group_list& groups);
    void note_type(object_id id);
    void put_erased(object_id id, bool erased);
    void tell(object_id id, change_kind kind);

    document& owner_;
    std::deque<object> objects_;
    std::unordered_map<std::uint64_t, object_id> handles_;
    mutable std::deque<std::string> texts_;
    mutable std::unordered_map<std::string_view, text_id> text_ids_;
    std::unordered_map<std::string, object_id> tables_;
    mutable std::unordered_map<std::string, object_id> records_; // TABLE\nNAME, upper case
    // Records that were given out for change lately, with the names under which records_ has them.
    mutable std::vector<std::pair<object_id, text_id>> renamed_;
    object_id root_dictionary_ = 0;
    text_id endblk_ = 0, seqend_ = 0;
    std::vector<change_listener*> listeners_;
    std::unique_ptr<journal> journal_;
    std::uint64_t next_handle_ = 1;
    bool modified_ = false;
    std::map<const void*, std::shared_ptr<void>> parts_; // the last member: parts may look at the rest
};

// The database of a document, made with the tables and records of a new drawing.
database& database_of(document& doc);
database& current_database();
// One with nothing in it, not even tables (a file is read into it). It keeps no undo until the first
// command boundary, mark or undo_enable.
std::unique_ptr<database> empty_database(document& owner);
// Makes the tables, records, dictionaries and header variables of a new drawing, as far as they are missing.
void complete_drawing(database& db);
// Puts a database that was read into its document in place of the one there, whose listeners and parts go.
void replace_database(document& doc, std::unique_ptr<database> with);

// ---- entity names: the object's index and the number of the drawing
void make_name(const database& db, object_id id, std::int32_t* name);
object_id id_of_name(const database& db, const std::int32_t* name); // 0: not one of this drawing

} // namespace host::db
