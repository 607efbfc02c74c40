// Making and changing entities and records from lists.
#include <algorithm>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/kinds.h"
#include "host/database/text_metrics.h"

namespace host::db
{

namespace
{

bool tell(std::string* error, std::string text)
{
    if (error)
        *error = std::move(text);
    return false;
}

void ensure_record(database& db, std::string_view table, std::string_view name)
{
    if (!name.empty() && !db.record(table, name))
        add_record(db, table, name);
}

bool has_style(std::string_view type)
{
    return type == "TEXT" || type == "MTEXT" || type == "ATTRIB" || type == "ATTDEF";
}

bool has_dimension_style(std::string_view type)
{
    return type == "DIMENSION" || type == "LEADER" || type == "TOLERANCE";
}

} // namespace

void ensure_references(database& db, const group_list& groups)
{
    const std::string type(db.text_of(groups, 0));
    for (const group& each : groups) {
        if (each.code >= 1000)
            break;
        if (each.kind != group_kind::text)
            continue;
        const std::string name(db.text(each.text));
        if (each.code == 8)
            ensure_record(db, "LAYER", name);
        else if (each.code == 6)
            ensure_record(db, "LTYPE", name);
        else if (each.code == 7 && has_style(type))
            ensure_record(db, "STYLE", name);
        else if (each.code == 3 && has_dimension_style(type))
            ensure_record(db, "DIMSTYLE", name);
    }
}

namespace
{

// Handle, owner and braces of another object mean nothing in a new one.
void drop_identity(const database& db, group_list& groups)
{
    group_list kept;
    kept.reserve(groups.size());
    bool in_head = true, in_braces = false;
    for (const group& each : groups) {
        if (each.code == 102 && in_head) {
            in_braces = !db.text(each.text).starts_with('}');
            continue;
        }
        if (in_braces || each.code == 5 || (each.code == 330 && in_head))
            continue;
        in_head = in_head && each.code != 100;
        kept.push_back(each);
    }
    groups = std::move(kept);
}

// Extended data comes in parts that each begin with the name of a registered application.
bool check_extended(const database& db, const group_list& groups, std::string* error)
{
    bool begun = false;
    for (const group& each : groups) {
        if (each.code < 1000)
            continue;
        if (each.code == 1001) {
            begun = true;
            if (!db.record("APPID", db.text(each.text)))
                return tell(error, "application " + std::string(db.text(each.text)) + " is not registered");
        } else if (!begun) {
            return tell(error, "extended data without an application");
        }
    }
    return true;
}

// An application of which nothing but the name is given has no data.
void drop_empty_applications(group_list& groups)
{
    for (std::size_t i = groups.size(); i-- > 0;)
        if (groups[i].code == 1001 && (i + 1 == groups.size() || groups[i + 1].code == 1001))
            groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(i));
}

object_id named_space(const database& db, const group_list& groups)
{
    if (const group* layout = find(groups, 410)) {
        const object_id table = db.table("BLOCK_RECORD");
        for (object_id at = db.at(table).first; at; at = db.at(at).next)
            if (same_text(layout_name(db, at), db.text(layout->text)) && !db.at(at).erased)
                return at;
    }
    if (find(groups, 67))
        return int_of(groups, 67, 0) ? db.paper_space() : db.model_space();
    return db.current_space();
}

void drop_space(group_list& groups)
{
    std::erase_if(groups, [](const group& each) { return each.code == 67 || each.code == 410; });
}

bool check_references(const database& db, const group_list& groups, std::string* error)
{
    if (db.text_of(groups, 8).empty())
        return tell(error, "group 8 names no layer");
    if (db.text_of(groups, 0) == "INSERT" && !db.record("BLOCK_RECORD", db.text_of(groups, 2)))
        return tell(error, "there is no block " + std::string(db.text_of(groups, 2)));
    return true;
}

} // namespace

object_id append_entity(database& db, object_id owner, group_list groups, std::string* error)
{
    drop_identity(db, groups);
    drop_space(groups);
    if (!db.valid(owner) || !check_extended(db, groups, error) || !complete_entity(db, groups, error) ||
        !check_references(db, groups, error))
        return 0;
    drop_empty_applications(groups);
    ensure_references(db, groups);
    return db.append(owner, object_class::entity, std::move(groups));
}

object_id make_entity(database& db, group_list groups, std::string* error)
{
    const object_id space = named_space(db, groups);
    settle_text(db, groups);
    return append_entity(db, space, std::move(groups), error);
}

object_id make_sequence(database& db, group_list groups, std::vector<group_list> children, std::string* error)
{
    // All are tried before the first is made, so that a bad one leaves nothing behind.
    for (group_list& child : children) {
        settle_text(db, child);
        drop_identity(db, child);
        drop_space(child);
        if (!check_extended(db, child, error) || !complete_entity(db, child, error) ||
            !check_references(db, child, error))
            return 0;
    }
    group_list end{db.text_group(0, "SEQEND")};
    if (const group* layer = find(groups, 8))
        end.push_back(*layer);
    const object_id made = make_entity(db, std::move(groups), error);
    if (!made)
        return 0;
    for (group_list& child : children)
        append_entity(db, made, std::move(child), error);
    append_entity(db, made, std::move(end), error);
    return made;
}

// ---- changing

namespace
{

// What comes before the first marker belongs to the object, whatever a program's list says.
group_list with_own_head(const group_list& old, const group_list& changed)
{
    group_list out;
    std::size_t i = 0;
    while (i < old.size() && old[i].code != 100 && old[i].code < 1000)
        out.push_back(old[i++]);
    i = 0;
    while (i < changed.size() && changed[i].code != 100 && changed[i].code < 1000)
        ++i;
    out.insert(out.end(), changed.begin() + static_cast<std::ptrdiff_t>(i), changed.end());
    return out;
}

// Extended data: each application that the list names is replaced, the others stay.
void merge_extended(const database& db, const group_list& old, group_list& changed)
{
    std::vector<std::string> named;
    for (const group& each : changed)
        if (each.code == 1001)
            named.push_back(upper(db.text(each.text)));
    bool stays = false;
    for (const group& each : old) {
        if (each.code < 1000)
            continue;
        if (each.code == 1001)
            stays = std::find(named.begin(), named.end(), upper(db.text(each.text))) == named.end();
        if (stays)
            changed.push_back(each);
    }
    drop_empty_applications(changed);
}

// Lists have three coordinates for every point; those that the object had with two keep two.
void keep_dimensions(const group_list& old, group_list& changed)
{
    for (group& each : changed) {
        const group* before = each.kind == group_kind::point ? find(old, each.code) : nullptr;
        if (before && before->kind == group_kind::point)
            each.dimensions = before->dimensions;
    }
}

// References to objects that this drawing lacks have no name, so a list brings them back empty.
void keep_dangling(const group_list& old, group_list& changed)
{
    for (group& each : changed) {
        if (each.kind != group_kind::handle || each.handle)
            continue;
        const group* before = find(old, each.code);
        each.handle = before && before->kind == group_kind::handle ? before->handle : 0;
    }
}

bool change_record(database& db, object_id id, group_list groups, std::string* error)
{
    const object& record = db.at(id);
    const std::string_view table = db.text_of(db.at(record.owner).groups, 2);
    const std::string name(db.text_of(groups, 2));
    if (name.empty())
        return tell(error, "group 2 has no name");
    if (const object_id other = db.record(table, name); other && other != id)
        return tell(error, "there is a " + std::string(table) + " of that name already: " + name);
    if (const group* linetype = find(groups, 6); linetype && table == "LAYER")
        ensure_record(db, "LTYPE", std::string(db.text(linetype->text)));
    db.modify(id) = std::move(groups);
    return true;
}

} // namespace

bool change_entity(database& db, object_id id, group_list groups, std::string* error)
{
    const object& subject = db.at(id);
    const group_list& old = subject.groups;
    if (const group* type = find(groups, 0); !type || !same_text(db.text(type->text), db.type_of(id)))
        return tell(error, "the type of an object cannot be changed");
    if (!check_extended(db, groups, error))
        return false;
    const bool is_entity = subject.family == object_class::entity;
    if (is_entity) {
        drop_space(groups);
        if (!complete_entity(db, groups, error) || !check_references(db, groups, error))
            return false;
        if (const entity_kind* kind = kind_of(db, groups); kind && kind != kind_of(db, old))
            return tell(error, "the kind of an object cannot be changed");
    }
    groups = with_own_head(old, groups);
    merge_extended(db, old, groups);
    keep_dangling(old, groups);
    if (is_entity && differs_in_place(old, groups))
        settle_text(db, groups);
    if (!is_entity)
        keep_dimensions(old, groups);
    groups.shrink_to_fit();
    if (subject.family == object_class::record)
        return change_record(db, id, std::move(groups), error);
    if (is_entity)
        ensure_references(db, groups);
    db.modify(id) = std::move(groups);
    return true;
}

} // namespace host::db
