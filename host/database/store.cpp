// The store: objects by index, in sequences of their owners, found by handle; texts kept once; records
// found by table and name.
//
// Objects are never moved or removed: an index and a name stay good for as long as the drawing is open,
// and an erased object is one with a flag. The index of records follows changes with a delay, since
// `modify` hands out groups before they change: renamed_ holds what must be looked at again.
#include <algorithm>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/journal.h"

namespace host::db
{

database::database(document& owner) : owner_(owner), journal_(std::make_unique<journal>())
{
    objects_.emplace_back(); // index 0 is none
    texts_.emplace_back();
    text_ids_.emplace(texts_.front(), 0);
    endblk_ = intern("ENDBLK");
    seqend_ = intern("SEQEND");
}

database::~database() = default;

int database::number() const
{
    return owner_.number();
}

// ---- texts

text_id database::intern(std::string_view text) const
{
    const auto found = text_ids_.find(text);
    if (found != text_ids_.end())
        return found->second;
    const text_id id = static_cast<text_id>(texts_.size());
    texts_.emplace_back(text);
    text_ids_.emplace(texts_.back(), id);
    return id;
}

std::string_view database::text(text_id id) const
{
    return id < texts_.size() ? std::string_view(texts_[id]) : std::string_view();
}

std::string_view database::text_of(const group_list& groups, int code) const
{
    const group* found = find(groups, code);
    const bool has_text = found && (found->kind == group_kind::text || found->kind == group_kind::binary);
    return has_text ? text(found->text) : std::string_view();
}

// ---- objects

object_id database::by_handle(std::uint64_t handle) const
{
    const auto found = handles_.find(handle);
    return found == handles_.end() ? 0 : found->second;
}

void database::reserve_handle(std::uint64_t handle)
{
    if (handle >= next_handle_ && handle != UINT64_MAX)
        next_handle_ = handle + 1;
}

// Links a new object into its owner's sequence.
object_id database::take_place(object_id owner, object_id id)
{
    object& parent = objects_[owner];
    object& made = objects_[id];
    object_id before = parent.last, behind = 0;
    const text_id end = before ? objects_[before].type : 0;
    if ((end == endblk_ || end == seqend_) && end != made.type && end != 0) {
        behind = before;
        before = objects_[behind].previous;
    }
    made.previous = before;
    made.next = behind;
    (before ? objects_[before].next : parent.first) = id;
    (behind ? objects_[behind].previous : parent.last) = id;
    return id;
}

void database::fill_handles(object& made)
{
    bool has_handle = false, has_owner = false, in_braces = false;
    for (group& each : made.groups) {
        if (each.code == 102)
            in_braces = !text(each.text).starts_with('}');
        if (each.kind != group_kind::handle || in_braces)
            continue;
        if ((each.code == 5 || each.code == 105) && !has_handle) {
            has_handle = true;
            each.handle = each.handle ? each.handle : made.handle;
        } else if (each.code == 330 && !has_owner) {
            has_owner = true;
            each.handle = each.handle ? each.handle : objects_[made.owner].handle;
        }
    }
}

object_id database::append(object_id owner, object_class family, group_list groups, std::uint64_t handle)
{
    const object_id id = static_cast<object_id>(objects_.size());
    object& made = objects_.emplace_back();
    made.handle = handle ? handle : next_handle_;
    reserve_handle(made.handle);
    made.owner = valid(owner) && owner != id ? owner : 0;
    made.family = family;
    made.groups = std::move(groups);
    made.groups.shrink_to_fit();
    note_type(id);
    fill_handles(made);
    handles_.emplace(made.handle, id);
    if (made.owner)
        take_place(made.owner, id);

    if (family == object_class::table)
        tables_.emplace(upper(text_of(made.groups, 2)), id);
    else if (family == object_class::record)
        index_record(id);
    else if (family == object_class::object && !root_dictionary_ && is(id, "DICTIONARY"))
        root_dictionary_ = id;
    journal_->note_added(id);
    modified_ = true;
    tell(id, change_kind::added);
    return id;
}

group_list& database::modify(object_id id)
{
    object& changed = objects_[valid(id) ? id : 0];
    if (!valid(id))
        return changed.groups;
    journal_->note_modified(id, changed.groups);
    note_rename(id);
    modified_ = true;
    tell(id, change_kind::modified);
    return changed.groups;
}

void database::note_type(object_id id)
{
    const group* type = find(objects_[id].groups, 0);
    objects_[id].type = type && type->kind == group_kind::text ? type->text : 0;
}

void database::replace(object_id id, group_list groups)
{
    if (!valid(id))
        return;
    groups.shrink_to_fit();
    modify(id) = std::move(groups);
    note_type(id);
}

// Undo's way of changing: the groups change places with the kept ones.
void database::restore_groups(object_id id, group_list& groups)
{
    note_rename(id);
    std::swap(objects_[id].groups, groups);
    note_type(id);
    modified_ = true;
    tell(id, change_kind::modified);
}

void database::put_erased(object_id id, bool erased)
{
    object& changed = objects_[id];
    if (changed.erased == erased)
        return;
    settle_renamed();
    changed.erased = erased;
    if (changed.family == object_class::record) {
        if (erased)
            unindex_record(id, record_name(changed));
        else
            index_record(id);
    }
    modified_ = true;
    tell(id, erased ? change_kind::erased : change_kind::restored);
}

void database::set_erased(object_id id, bool erased)
{
    if (!valid(id) || at(id).erased == erased)
        return;
    journal_->note_erased(id, at(id).erased);
    put_erased(id, erased);
}

// ---- tables and records

text_id database::record_name(const object& record) const
{
    const group* name = find(record.groups, 2);
    return name && name->kind == group_kind::text ? name->text : 0;
}

std::string database::record_key(const object& record, text_id name) const
{
    return upper(text_of(objects_[record.owner].groups, 2)) + '\n' + upper(text(name));
}

// The first record of a name is the one that is found.
void database::index_record(object_id id) const
{
    const object& record = objects_[id];
    const auto [place, is_new] = records_.emplace(record_key(record, record_name(record)), id);
    if (!is_new && objects_[place->second].erased)
        place->second = id;
}

void database::unindex_record(object_id id, text_id name) const
{
    const auto found = records_.find(record_key(objects_[id], name));
    if (found != records_.end() && found->second == id)
        records_.erase(found);
}

void database::note_rename(object_id id)
{
    constexpr std::size_t LATELY = 8; // more are not held open for change at once
    const object& changed = objects_[id];
    if (changed.family != object_class::record || changed.erased)
        return;
    settle_renamed();
    std::erase_if(renamed_, [id](const auto& each) { return each.first == id; });
    if (renamed_.size() == LATELY)
        renamed_.erase(renamed_.begin());
    renamed_.emplace_back(id, record_name(changed));
}

void database::settle_renamed() const
{
    for (auto& [id, name] : renamed_) {
        const text_id now = record_name(objects_[id]);
        if (now == name || objects_[id].erased)
            continue;
        unindex_record(id, name);
        index_record(id);
        name = now;
    }
}

object_id database::table(std::string_view name) const
{
    const auto found = tables_.find(upper(name));
    return found == tables_.end() ? 0 : found->second;
}

object_id database::record(std::string_view table, std::string_view name) const
{
    settle_renamed();
    const auto found = records_.find(upper(table) + '\n' + upper(name));
    return found == records_.end() || objects_[found->second].erased ? 0 : found->second;
}

object_id database::layout_space() const
{
    const group_list* tilemode = header_value("$TILEMODE");
    return tilemode && int_of(*tilemode, 70, 1) == 0 ? paper_space() : model_space();
}

object_id database::current_space() const
{
    const object_id space = layout_space();
    return space == paper_space() && layout_viewport > 1 ? model_space() : space;
}

// ---- header variables

const group_list* database::header_value(std::string_view name) const
{
    const auto found =
        std::find_if(header.begin(), header.end(), [&](const auto& each) { return each.first == name; });
    return found == header.end() ? nullptr : &found->second;
}

void database::set_header(std::string_view name, group_list value)
{
    const group_list* before = header_value(name);
    journal_->note_header(name, before);
    modified_ = true;
    if (before)
        *const_cast<group_list*>(before) = std::move(value);
    else
        header.emplace_back(name, std::move(value));
}

// ---- listeners

void database::add_listener(change_listener* listener)
{
    listeners_.push_back(listener);
}

void database::remove_listener(change_listener* listener)
{
    std::erase(listeners_, listener);
}

void database::tell(object_id id, change_kind kind)
{
    for (std::size_t i = 0; i < listeners_.size(); ++i)
        listeners_[i]->object_changed(id, kind);
}

// ---- databases of documents

namespace
{

struct database_part {
    std::unique_ptr<database> held;
    explicit database_part(document& doc) : held(empty_database(doc))
    {
        complete_drawing(*held);
        held->undo_enable(true);
        held->set_modified(false);
    }
};

} // namespace

std::unique_ptr<database> empty_database(document& owner)
{
    return std::make_unique<database>(owner);
}

database& database_of(document& doc)
{
    return *doc.part<database_part>().held;
}

database& current_database()
{
    return database_of(current_document());
}

void replace_database(document& doc, std::unique_ptr<database> with)
{
    with->undo_enable(true);
    with->set_modified(false);
    doc.part<database_part>().held = std::move(with);
}

// ---- names

void make_name(const database& db, object_id id, std::int32_t* name)
{
    name[0] = static_cast<std::int32_t>(id);
    name[1] = id ? db.number() : 0;
}

object_id id_of_name(const database& db, const std::int32_t* name)
{
    if (!name || name[1] != db.number() || name[0] <= 0)
        return 0;
    const object_id id = static_cast<object_id>(name[0]);
    return db.valid(id) ? id : 0;
}

} // namespace host::db
