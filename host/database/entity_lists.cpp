// Stored groups as result buffer lists, and back; walking blocks and sequences.
#include <charconv>
#include <cstdio>
#include <cstring>

#include "host/core/heap.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/kinds.h"

namespace host::db
{

// ---- places

object_id block_of(const database& db, object_id id)
{
    while (id && db.at(id).family == object_class::entity)
        id = db.at(id).owner;
    return id && db.is(id, "BLOCK_RECORD") ? id : 0;
}

bool is_erased(const database& db, object_id id)
{
    for (; id; id = db.at(id).owner)
        if (db.at(id).erased)
            return true;
    return false;
}

bool is_space(const database& db, object_id block_record)
{
    const std::string name = upper(db.text_of(db.at(block_record).groups, 2));
    return name.starts_with("*MODEL_SPACE") || name.starts_with("*PAPER_SPACE");
}

std::string_view layout_name(const database& db, object_id block_record)
{
    if (!block_record || !is_space(db, block_record))
        return {};
    const group* layout = find(db.at(block_record).groups, 340);
    const object_id found = layout ? db.by_handle(layout->handle) : 0;
    // The layout's own name is the 1 behind its own marker; plot settings have another.
    bool own = false;
    if (found)
        for (const group& each : db.at(found).groups) {
            if (each.code == 100)
                own = db.text(each.text) == "AcDbLayout";
            else if (each.code == 1 && own)
                return db.text(each.text);
        }
    return block_record == db.model_space() ? "Model" : "Layout1";
}

namespace
{

object_id skip_hidden(const database& db, object_id id)
{
    while (id && (db.at(id).erased || db.is(id, "BLOCK") || db.is(id, "ENDBLK") || db.is(id, "SEQEND")))
        id = db.at(id).next;
    return id;
}

} // namespace

object_id first_entity(const database& db, object_id block_record)
{
    return db.valid(block_record) ? skip_hidden(db, db.at(block_record).first) : 0;
}

object_id next_entity(const database& db, object_id entity)
{
    return db.valid(entity) ? skip_hidden(db, db.at(entity).next) : 0;
}

object_id first_child(const database& db, object_id entity)
{
    return first_entity(db, entity);
}

object_id next_child(const database& db, object_id child)
{
    return next_entity(db, child);
}

// ---- groups as result buffers

namespace
{

std::string hexadecimal(std::uint64_t value)
{
    char text[20];
    const auto end = std::to_chars(text, text + sizeof text, value, 16).ptr;
    return upper(std::string_view(text, static_cast<std::size_t>(end - text)));
}

resbuf* name_node(const database& db, int code, object_id id)
{
    std::int32_t name[2];
    make_name(db, id, name);
    return rb_name(code, name);
}

resbuf* binary_node(int code, std::string_view bytes)
{
    resbuf* node = rb_new(code);
    const std::size_t size = std::min<std::size_t>(bytes.size(), INT16_MAX);
    auto* copy = node ? static_cast<char*>(heap_take(size + 1)) : nullptr;
    if (!copy)
        return node;
    std::memcpy(copy, bytes.data(), size);
    node->resval.rbinary.clen = static_cast<short>(size);
    node->resval.rbinary.buf = copy;
    return node;
}

resbuf* node_of(const database& db, const group& each)
{
    switch (type_of_code(each.code)) {
    case value_type::real:
        return rb_real(each.code,
                       each.kind == group_kind::integer ? static_cast<double>(each.integer) : each.real);
    case value_type::point:
        return rb_point(each.code, each.point);
    case value_type::int16:
    case value_type::int32:
        return rb_int(each.code, static_cast<int>(each.integer));
    case value_type::text:
        return rb_text(each.code, each.kind == group_kind::handle ? hexadecimal(each.handle)
                                                                  : std::string(db.text(each.text)));
    case value_type::name:
        return name_node(db, each.code, db.by_handle(each.handle));
    case value_type::binary:
        return binary_node(each.code, db.text(each.text));
    case value_type::none:
        break;
    }
    return nullptr;
}

bool wants_application(const resbuf* applications, std::string_view name)
{
    const std::string subject = upper(name);
    for (; applications; applications = applications->rbnext) {
        const bool is_text = type_of_code(applications->restype) == value_type::text;
        if (is_text && applications->resval.rstring &&
            acutWcMatch(subject.c_str(), upper(applications->resval.rstring).c_str()) == RTNORM)
            return true;
    }
    return false;
}

// -3 and the extended data of the applications that are asked for; nothing when there are none.
void add_extended(const database& db, const group_list& groups, const resbuf* applications, list_builder& out)
{
    list_builder extended;
    bool wanted = false;
    for (const group& each : groups) {
        if (each.code < 1000)
            continue;
        if (each.code == 1001)
            wanted = wants_application(applications, db.text(each.text));
        if (wanted)
            extended.add(node_of(db, each));
    }
    if (!extended.empty())
        out.add(rb_new(-3)).add(extended.take());
}

// 67 and 410 behind the entity's first marker, where the list has none of its own.
void add_space(const database& db, object_id id, const group_list& groups, list_builder& out)
{
    const object_id block = block_of(db, id);
    const std::string_view layout = layout_name(db, block);
    if (!find(groups, 67))
        out.add(rb_int(67, !layout.empty() && block != db.model_space() ? 1 : 0));
    if (!layout.empty() && !find(groups, 410))
        out.add(rb_text(410, layout));
}

} // namespace

resbuf* entity_list(const database& db, object_id id, const resbuf* applications)
{
    if (!db.valid(id))
        return nullptr;
    const object& subject = db.at(id);
    const group_list* groups = &subject.groups;
    group_list whole;
    const entity_kind* kind = subject.family == object_class::entity ? kind_of(db, *groups) : nullptr;
    if (kind && lacks_standard_groups(*groups, *kind)) {
        whole = *groups;
        if (complete_entity(db, whole, nullptr))
            groups = &whole;
    }
    list_builder out;
    out.add(name_node(db, -1, id));
    bool space_told = subject.family != object_class::entity;
    for (const group& each : *groups) {
        if (each.code >= 1000)
            continue;
        out.add(node_of(db, each));
        if (each.code == 100 && !space_told && db.text(each.text) == "AcDbEntity") {
            add_space(db, id, *groups, out);
            space_told = true;
        }
    }
    if (db.is(id, "BLOCK"))
        if (const object_id first = first_entity(db, subject.owner))
            out.add(name_node(db, -2, first));
    if (db.is(id, "SEQEND"))
        out.add(name_node(db, -2, subject.owner));
    if (applications)
        add_extended(db, subject.groups, applications, out);
    return out.take();
}

// ---- result buffers as groups

namespace
{

std::optional<std::uint64_t> handle_of_text(const char* text)
{
    std::uint64_t handle = 0;
    const std::string_view digits = text;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size())
        return std::nullopt;
    return handle;
}

bool refuse(std::string* error, int code, const char* why)
{
    if (error)
        *error = "group " + std::to_string(code) + ' ' + why;
    return false;
}

bool add_text(database& db, const resbuf& node, group_list& groups, std::string* error)
{
    if (!node.resval.rstring)
        return refuse(error, node.restype, "has no text");
    if (kind_of_code(node.restype) != group_kind::handle) {
        groups.push_back(db.text_group(node.restype, node.resval.rstring));
        return true;
    }
    const auto handle = handle_of_text(node.resval.rstring);
    if (!handle)
        return refuse(error, node.restype, "is no handle");
    groups.push_back(handle_group(node.restype, *handle));
    return true;
}

bool add_node(database& db, const resbuf& node, group_list& groups, std::string* error)
{
    switch (type_of_code(node.restype)) {
    case value_type::real:
        groups.push_back(real_group(node.restype, node.resval.rreal));
        return true;
    case value_type::point:
        groups.push_back(
            point_group(node.restype, node.resval.rpoint[0], node.resval.rpoint[1], node.resval.rpoint[2]));
        return true;
    case value_type::int16:
        groups.push_back(int_group(node.restype, node.resval.rint));
        return true;
    case value_type::int32:
        groups.push_back(int_group(node.restype, node.resval.rlong));
        return true;
    case value_type::text:
        return add_text(db, node, groups, error);
    case value_type::name: {
        const object_id id = id_of_name(db, node.resval.rlname);
        groups.push_back(handle_group(node.restype, id ? db.at(id).handle : 0));
        return true;
    }
    case value_type::binary: {
        const ads_binary& bytes = node.resval.rbinary;
        if (bytes.clen < 0 || (bytes.clen > 0 && !bytes.buf))
            return refuse(error, node.restype, "has no bytes");
        group made = db.text_group(node.restype, std::string_view(bytes.buf ? bytes.buf : "", bytes.clen));
        made.kind = group_kind::binary;
        groups.push_back(made);
        return true;
    }
    case value_type::none:
        break;
    }
    return refuse(error, node.restype, "is of no known type");
}

} // namespace

bool groups_of_list(database& db, const resbuf* list, group_list& groups, std::string* error)
{
    groups.clear();
    for (const resbuf* node = list; node; node = node->rbnext) {
        const int code = node->restype;
        if (code == -1 || code == -2 || code == -3 || code == 5 || code == 105)
            continue;
        // The type stands under its own code too.
        if (code == RTDXF0) {
            resbuf type = *node;
            type.restype = 0;
            if (!add_node(db, type, groups, error))
                return false;
            continue;
        }
        if (code >= 5000 || code < 0)
            return refuse(error, code, "is no group of an entity");
        if (!add_node(db, *node, groups, error))
            return false;
    }
    return true;
}

} // namespace host::db
