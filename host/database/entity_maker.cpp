// Lists that make one object together; see entity_maker.h.
#include "host/database/entity_maker.h"

#include <algorithm>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/templates.h"
#include "host/database/text_metrics.h"

namespace host::db
{

namespace
{

constexpr std::string_view TABLES[] = {"LAYER", "LTYPE", "STYLE", "VIEW", "UCS", "VPORT", "APPID", "DIMSTYLE"};

bool begins_sequence(const group_list& groups, std::string_view type)
{
    return type == "POLYLINE" || (type == "INSERT" && int_of(groups, 66, 0) != 0);
}

void set_flag(group_list& groups, int code, std::int64_t bits)
{
    if (group* flags = find(groups, code); flags && flags->kind == group_kind::integer)
        flags->integer |= bits;
    else
        groups.push_back(int_group(code, bits));
}

} // namespace

entity_maker::made entity_maker::fail(std::string error)
{
    sequence_.reset();
    block_.reset();
    contents_.clear();
    return {false, 0, std::move(error)};
}

// Whether a list can be made an entity, so that a bad one is told where it comes.
bool entity_maker::check(group_list groups, std::string* error)
{
    return complete_entity(db_, groups, error);
}

// Programs leave the layer out of their lists where they mean the current one.
void entity_maker::put_on_current_layer(group_list& groups) const
{
    const group_list* current = find(groups, 8) ? nullptr : db_.header_value("$CLAYER");
    if (const group* layer = current ? find(*current, 8) : nullptr)
        groups.insert(groups.begin() + 1, *layer);
}

void entity_maker::settle()
{
    if (!sequence_ || !sequence_->children.empty() || upper(db_.text_of(sequence_->main, 0)) != "INSERT")
        return;
    sequence waiting = std::move(*sequence_);
    sequence_.reset();
    std::erase_if(waiting.main, [](const group& each) { return each.code == 66; });
    finish(std::move(waiting));
}

entity_maker::made entity_maker::take(group_list groups)
{
    const std::string type = upper(db_.text_of(groups, 0));
    if (type.empty())
        return fail("the list has no group 0");
    if (type != "ATTRIB" && type != "VERTEX" && type != "SEQEND")
        settle();
    if (sequence_)
        return type == "SEQEND" ? end_sequence() : take_child(std::move(groups), type);
    if (type == "BLOCK")
        return begin_block(std::move(groups));
    if (type == "ENDBLK")
        return end_block();
    if (type == "VERTEX" || type == "ATTRIB" || type == "SEQEND")
        return fail(type + " without what it belongs to");
    if (!block_) {
        for (const std::string_view table : TABLES)
            if (type == table)
                return take_record(std::move(groups), table);
        if (type == "DICTIONARY" || type == "XRECORD")
            return take_object(std::move(groups));
    }
    put_on_current_layer(groups);
    std::string error;
    if (begins_sequence(groups, type)) {
        if (!check(groups, &error))
            return fail(error);
        sequence_ = sequence{std::move(groups), {}};
        return {true, 0, {}};
    }
    if (!block_ || check(groups, &error))
        return finish({std::move(groups), {}});
    return fail(error);
}

entity_maker::made entity_maker::take_child(group_list groups, std::string_view type)
{
    const bool in_polyline = upper(db_.text_of(sequence_->main, 0)) == "POLYLINE";
    if (type != (in_polyline ? "VERTEX" : "ATTRIB"))
        return fail(std::string(type) + " inside of " + std::string(db_.text_of(sequence_->main, 0)));
    const std::int64_t flags = in_polyline ? int_of(sequence_->main, 70, 0) : 0;
    if (flags & 8)
        set_flag(groups, 70, 32);
    else if (flags & 16)
        set_flag(groups, 70, 64);
    else if (flags & 64)
        set_flag(groups, 70, 128);
    if (const group* layer = find(sequence_->main, 8); layer && !find(groups, 8))
        groups.insert(groups.begin() + 1, *layer);
    std::string error;
    if (!check(groups, &error))
        return fail(error);
    sequence_->children.push_back(std::move(groups));
    return {true, 0, {}};
}

entity_maker::made entity_maker::end_sequence()
{
    sequence whole = std::move(*sequence_);
    sequence_.reset();
    if (upper(db_.text_of(whole.main, 0)) == "POLYLINE" && whole.children.empty())
        return fail("POLYLINE without a VERTEX");
    return finish(std::move(whole));
}

// Into the drawing, or into the block definition at hand.
entity_maker::made entity_maker::finish(sequence whole)
{
    if (block_) {
        contents_.push_back(std::move(whole));
        return {true, 0, {}};
    }
    std::string error;
    const std::string type = upper(db_.text_of(whole.main, 0));
    const object_id id = begins_sequence(whole.main, type)
                             ? make_sequence(db_, std::move(whole.main), std::move(whole.children), &error)
                             : make_entity(db_, std::move(whole.main), &error);
    return id ? made{true, id, {}} : fail(error);
}

// ---- block definitions

entity_maker::made entity_maker::begin_block(group_list groups)
{
    std::string error;
    if (block_)
        return fail("BLOCK inside of a block");
    if (!check(groups, &error))
        return fail(error);
    const std::string name(db_.text_of(groups, 2));
    const object_id record = db_.record("BLOCK_RECORD", name);
    if (name.empty() || (record && is_space(db_, record)))
        return fail("no block can have the name \"" + name + '"');
    block_ = std::move(groups);
    contents_.clear();
    return {true, 0, {}};
}

// "*U" and its like ask for a name that isn't taken: *U1, *U2 ...
std::string entity_maker::anonymous_name(std::string_view asked) const
{
    std::string name(asked);
    if (!name.starts_with('*'))
        return name;
    const std::string stem = name.substr(0, 2);
    for (int number = 1;; ++number) {
        name = stem + std::to_string(number);
        if (!db_.record("BLOCK_RECORD", name))
            return name;
    }
}

// The record, with its old entities erased when there was one.
object_id entity_maker::block_record_for(const std::string& name)
{
    const object_id record = db_.record("BLOCK_RECORD", name);
    if (!record)
        return add_block(db_, name);
    for (object_id at = first_entity(db_, record); at; at = next_entity(db_, at))
        db_.set_erased(at, true);
    return record;
}

entity_maker::made entity_maker::end_block()
{
    if (!block_)
        return fail("ENDBLK without BLOCK");
    group_list begin = std::move(*block_);
    std::vector<sequence> contents = std::move(contents_);
    block_.reset();
    contents_.clear();
    const std::string name = anonymous_name(db_.text_of(begin, 2));
    for (const sequence& each : contents)
        if (upper(db_.text_of(each.main, 0)) == "INSERT" &&
            (same_text(db_.text_of(each.main, 2), name) ||
             !db_.record("BLOCK_RECORD", db_.text_of(each.main, 2))))
            return fail("block " + name + " refers to a block that there is not, or to itself");

    const bool has_attributes = std::any_of(contents.begin(), contents.end(), [&](const sequence& each) {
        return upper(db_.text_of(each.main, 0)) == "ATTDEF";
    });
    if (has_attributes)
        set_flag(begin, 70, 2);
    const object_id record = block_record_for(name);
    std::string error;
    complete_entity(db_, begin, &error);
    if (group* base_name = find(begin, 2))
        base_name->text = db_.intern(name);
    ensure_references(db_, begin);
    const object_id head = db_.at(record).first;
    change_entity(db_, head, std::move(begin), &error);
    for (sequence& each : contents) {
        group_list end{db_.text_group(0, "SEQEND")};
        const bool is_sequence = begins_sequence(each.main, upper(db_.text_of(each.main, 0)));
        if (const group* layer = find(each.main, 8))
            end.push_back(*layer);
        settle_text(db_, each.main);
        const object_id owner = append_entity(db_, record, std::move(each.main), &error);
        for (group_list& child : each.children) {
            settle_text(db_, child);
            append_entity(db_, owner, std::move(child), &error);
        }
        if (is_sequence)
            append_entity(db_, owner, std::move(end), &error);
    }
    return {true, head, {}};
}

// ---- records and objects

entity_maker::made entity_maker::take_record(group_list groups, std::string_view table)
{
    const std::string name(db_.text_of(groups, 2));
    if (name.empty())
        return fail(std::string(table) + " needs group 2");
    if (db_.record(table, name))
        return fail("there is a " + std::string(table) + " of that name already: " + name);
    const object_id id = add_record(db_, table, name);
    // The standard groups take the list's values; dashes and other groups that repeat come as they are.
    group_list whole = db_.at(id).groups;
    std::vector<int> replaced;
    bool in_head = true;
    for (const group& each : groups) {
        in_head = in_head && each.code != 100;
        if (each.code == 0 || each.code == 100 || each.code == 102 || (each.code == 330 && in_head))
            continue;
        const bool first = std::find(replaced.begin(), replaced.end(), each.code) == replaced.end();
        replaced.push_back(each.code);
        group* standard = first ? find(whole, each.code) : nullptr;
        if (standard && standard->kind == each.kind) {
            const std::uint8_t dimensions = standard->dimensions;
            *standard = each;
            standard->dimensions = dimensions;
        } else {
            whole.push_back(each);
        }
    }
    std::string error;
    if (!change_entity(db_, id, std::move(whole), &error)) {
        db_.set_erased(id, true);
        return fail(error);
    }
    return {true, id, {}};
}

entity_maker::made entity_maker::take_object(group_list groups)
{
    group_list whole;
    add_groups(db_, whole, "0 @;5 0;330 0", upper(db_.text_of(groups, 0)));
    bool in_head = true;
    for (const group& each : groups) {
        if (each.code == 100)
            in_head = false;
        if (!in_head)
            whole.push_back(each);
    }
    if (in_head)
        return fail("an object needs its marker, group 100");
    return {true, db_.append(0, object_class::object, std::move(whole)), {}};
}

} // namespace host::db
