// renames.cpp: objects name their layer, linetype and so on by text, as DXF does, but hold on to the record
// itself as far as users can tell: when it gets another name, they go with it.
#include <algorithm>
#include <iterator>

#include "host/core/text.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

struct reference {
    std::string_view table;
    object_class family;
    std::string_view type; // empty: any
    int code;
};

constexpr object_class ENTITY = object_class::entity, RECORD = object_class::record;
constexpr reference REFERENCES[] = {
    {"LAYER", ENTITY, "", 8},
    {"LAYER", ENTITY, "", 1003},
    {"LTYPE", ENTITY, "", 6},
    {"LTYPE", RECORD, "LAYER", 6},
    {"STYLE", ENTITY, "TEXT", 7},
    {"STYLE", ENTITY, "ATTRIB", 7},
    {"STYLE", ENTITY, "ATTDEF", 7},
    {"STYLE", ENTITY, "MTEXT", 7},
    {"BLOCK_RECORD", ENTITY, "INSERT", 2},
    {"BLOCK_RECORD", ENTITY, "DIMENSION", 2},
    {"BLOCK_RECORD", ENTITY, "BLOCK", 2},
    {"BLOCK_RECORD", ENTITY, "BLOCK", 3},
    {"DIMSTYLE", ENTITY, "DIMENSION", 3},
    {"DIMSTYLE", ENTITY, "LEADER", 3},
    {"DIMSTYLE", ENTITY, "TOLERANCE", 3},
    {"APPID", ENTITY, "", 1001},
    {"APPID", RECORD, "", 1001},
};

struct current_name {
    std::string_view table, variable;
};
constexpr current_name CURRENT_NAMES[] = {
    {"LAYER", "$CLAYER"}, {"LTYPE", "$CELTYPE"}, {"STYLE", "$TEXTSTYLE"}, {"DIMSTYLE", "$DIMSTYLE"}};

struct renaming {
    database& db;
    std::string table, old_name, new_name;
    std::vector<reference> references;

    bool holds(const group& each, int code) const
    {
        return each.code == code && each.kind == group_kind::text && same_text(db.text(each.text), old_name);
    }
    void put(group_list& groups, int code) const
    {
        for (group& each : groups)
            if (holds(each, code))
                each.text = db.intern(new_name);
    }
    void in_object(object_id id) const
    {
        for (const reference& r : references) {
            if (db.at(id).family != r.family || !(r.type.empty() || db.is(id, r.type)))
                continue;
            const group_list& groups = db.at(id).groups;
            if (std::any_of(groups.begin(), groups.end(), [&](const group& g) { return holds(g, r.code); }))
                put(db.modify(id), r.code);
        }
    }
    void in_header() const
    {
        for (const current_name& each : CURRENT_NAMES) {
            const group_list* value = each.table == table ? db.header_value(each.variable) : nullptr;
            if (!value || value->empty() || !holds(value->front(), value->front().code))
                continue;
            group_list changed = *value;
            put(changed, changed.front().code);
            db.set_header(each.variable, std::move(changed));
        }
    }
};

} // namespace

void carry_new_name(database& db, object_id record, const std::string& old_name)
{
    const object& changed = db.at(record);
    renaming r{db, std::string(db.type_of(record)), old_name, std::string(db.text_of(changed.groups, 2)), {}};
    if (changed.family != object_class::record || r.new_name == old_name || old_name.empty())
        return;
    std::copy_if(std::begin(REFERENCES), std::end(REFERENCES), std::back_inserter(r.references),
                 [&](const reference& each) { return each.table == r.table; });
    if (r.references.empty())
        return;
    for (object_id id = 1; id < db.size(); ++id)
        r.in_object(id);
    r.in_header();
}

} // namespace host::db
