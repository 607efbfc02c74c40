// The symbol table and dictionary operations of hostapi/ads.h on the current drawing.
#include <cstring>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

// Where acdbTblNext and acdbDictNext stand in each table and dictionary.
struct cursors {
    std::map<object_id, object_id> tables;         // the record given last, 0 none
    std::map<object_id, std::size_t> dictionaries; // entries given
    explicit cursors(database&) {}
};

// Programs know blocks as the table "BLOCK"; here their records stand in "BLOCK_RECORD".
object_id table_of(const database& db, const char* name)
{
    const std::string wanted = upper(name);
    if (wanted == "BLOCK_RECORD")
        return 0;
    return db.table(wanted == "BLOCK" ? "BLOCK_RECORD" : wanted);
}

bool holds_blocks(const database& db, object_id table)
{
    return same_text(db.text_of(db.at(table).groups, 2), "BLOCK_RECORD");
}

object_id record_of(const database& db, object_id table, const char* name)
{
    return db.record(db.text_of(db.at(table).groups, 2), name);
}

object_id block_begin(const database& db, object_id record)
{
    object_id at = db.at(record).first;
    while (at && !db.is(at, "BLOCK"))
        at = db.at(at).next;
    return at;
}

// A block as its table has it: name, flags, base point, path of a reference, the first entity.
resbuf* block_record_list(const database& db, object_id record)
{
    const object_id begin = block_begin(db, record);
    const group_list& groups = db.at(begin).groups;
    const group* base = find(groups, 10);
    const double origin[3] = {0, 0, 0};
    list_builder out;
    out.add(rb_text(0, "BLOCK"));
    out.add(rb_text(2, db.text_of(db.at(record).groups, 2)));
    out.add(rb_int(70, static_cast<int>(int_of(groups, 70, 0))));
    out.add(rb_point(10, base ? base->point : origin));
    if (!db.text_of(groups, 1).empty())
        out.add(rb_text(1, db.text_of(groups, 1)));
    if (const object_id first = first_entity(db, record)) {
        std::int32_t name[2];
        make_name(db, first, name);
        out.add(rb_name(-2, name));
    }
    return out.take();
}

// A record without what only ties it to other objects: names, handles, markers, braces.
resbuf* record_list(const database& db, object_id table, object_id record)
{
    if (holds_blocks(db, table))
        return block_record_list(db, record);
    resbuf* whole = entity_list(db, record, nullptr);
    list_builder out;
    bool in_braces = false;
    while (whole) {
        resbuf* node = whole;
        whole = whole->rbnext;
        node->rbnext = nullptr;
        const int code = node->restype;
        if (code == 102)
            in_braces = !in_braces;
        const bool ties = in_braces || code < 0 || code == 5 || code == 100 || code == 102 || code == 105 ||
                          type_of_code(code) == value_type::name;
        if (ties)
            acutRelRb(node);
        else
            out.add(node);
    }
    return out.take();
}

// Records that are listed: not erased, and of blocks not the spaces.
bool is_listed(const database& db, object_id table, object_id record)
{
    return !db.at(record).erased && !(holds_blocks(db, table) && is_space(db, record));
}

struct dictionary_entry {
    std::string_view key;
    object_id object;
};

std::vector<dictionary_entry> entries_of(const database& db, object_id dictionary)
{
    std::vector<dictionary_entry> entries;
    std::string_view key;
    for (const group& each : db.at(dictionary).groups) {
        if (each.code == 3)
            key = db.text(each.text);
        else if ((each.code == 350 || each.code == 360) && !key.empty()) {
            const object_id object = db.by_handle(each.handle);
            if (object && !db.at(object).erased)
                entries.push_back({key, object});
            key = {};
        }
    }
    return entries;
}

object_id dictionary_of_name(const ads_name name)
{
    if (!has_document())
        return 0;
    const database& db = current_database();
    const object_id id = id_of_name(db, name);
    const bool fits = id && !db.at(id).erased && (db.is(id, "DICTIONARY") || db.is(id, "ACDBDICTIONARYWDFLT"));
    return fits ? id : 0;
}

} // namespace

} // namespace host::db

using namespace host;
using namespace host::db;

extern "C" {

int acdbRegApp(const char* name)
{
    trace_line line("acdbRegApp");
    line.text(name);
    // No name of a table may hold these.
    if (!name || !*name || std::strpbrk(name, "<>/\\\":;?*|,=`") || !has_document())
        return line.status(RTERROR);
    database& db = current_database();
    if (db.record("APPID", name))
        return line.status(RTERROR);
    return line.status(add_record(db, "APPID", name) ? RTNORM : RTERROR);
}

resbuf* acdbTblSearch(const char* table, const char* name, int set_next)
{
    if (!table || !name || !has_document())
        return nullptr;
    database& db = current_database();
    const object_id owner = table_of(db, table);
    const object_id record = owner ? record_of(db, owner, name) : 0;
    if (!record)
        return nullptr;
    if (set_next)
        db.part<cursors>().tables[owner] = record;
    return record_list(db, owner, record);
}

resbuf* acdbTblNext(const char* table, int rewind)
{
    if (!table || !has_document())
        return nullptr;
    database& db = current_database();
    const object_id owner = table_of(db, table);
    if (!owner)
        return nullptr;
    object_id& last = db.part<cursors>().tables[owner];
    object_id at = rewind || !last ? db.at(owner).first : db.at(last).next;
    while (at && !is_listed(db, owner, at))
        at = db.at(at).next;
    if (!at)
        return nullptr;
    last = at;
    return record_list(db, owner, at);
}

int acdbTblObjName(const char* table, const char* name, ads_name out)
{
    if (!table || !name || !out || !has_document())
        return RTERROR;
    database& db = current_database();
    const object_id owner = table_of(db, table);
    object_id record = owner ? record_of(db, owner, name) : 0;
    if (record && holds_blocks(db, owner))
        record = block_begin(db, record);
    if (!record)
        return RTERROR;
    make_name(db, record, out);
    return RTNORM;
}

int acdbNamedObjDict(ads_name out)
{
    const object_id root = has_document() ? current_database().root_dictionary() : 0;
    if (!root || !out)
        return RTERROR;
    make_name(current_database(), root, out);
    return RTNORM;
}

resbuf* acdbDictSearch(const ads_name dictionary, const char* key, int set_next)
{
    const object_id id = key ? dictionary_of_name(dictionary) : 0;
    if (!id)
        return nullptr;
    database& db = current_database();
    const auto entries = entries_of(db, id);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!same_text(entries[i].key, key))
            continue;
        if (set_next)
            db.part<cursors>().dictionaries[id] = i + 1;
        return entity_list(db, entries[i].object, nullptr);
    }
    return nullptr;
}

resbuf* acdbDictNext(const ads_name dictionary, int rewind)
{
    const object_id id = dictionary_of_name(dictionary);
    if (!id)
        return nullptr;
    database& db = current_database();
    std::size_t& given = db.part<cursors>().dictionaries[id];
    if (rewind)
        given = 0;
    const auto entries = entries_of(db, id);
    if (given >= entries.size())
        return nullptr;
    return entity_list(db, entries[given++].object, nullptr);
}
}
