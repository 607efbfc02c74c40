// The entity operations of hostapi/ads.h on the current drawing.
#include <charconv>

#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/entity_maker.h"

namespace host::db
{

namespace
{

// The oldest and the newest entity of a space that isn't erased. Walking over erased ones each time would be
// slow for programs that draw and erase in turn, so the places of the last finds are kept with what was seen
// beyond them; they hold until something comes back.
struct space_ends : change_listener {
    database& db;
    struct seen {
        object_id found = 0;  // the answer then
        object_id newest = 0; // the last object there was then; all behind `found` up to it was erased
    };
    std::unordered_map<object_id, seen> spaces;
    std::unordered_map<object_id, object_id> firsts; // before these all are erased

    explicit space_ends(database& of) : db(of) { db.add_listener(this); }
    space_ends(const space_ends&) = delete;
    space_ends& operator=(const space_ends&) = delete;
    ~space_ends() override { db.remove_listener(this); }

    void object_changed(object_id id, change_kind kind) override
    {
        if (kind != change_kind::restored)
            return;
        spaces.erase(db.at(id).owner);
        firsts.erase(db.at(id).owner);
    }

    object_id first(object_id space)
    {
        object_id& known = firsts[space];
        const object_id from = known ? known : first_entity(db, space);
        const object_id found = from && db.at(from).erased ? next_entity(db, from) : from;
        if (found)
            known = found;
        return found;
    }

    object_id last(object_id space)
    {
        seen& known = spaces[space];
        object_id at = db.at(space).last;
        if (at && db.is(at, "ENDBLK"))
            at = db.at(at).previous;
        const object_id newest = at;
        while (at && !counts(at))
            at = at == known.newest && known.found != at ? known.found : db.at(at).previous;
        known = {at, newest};
        return at;
    }
    bool counts(object_id id) const { return !db.at(id).erased && !db.is(id, "BLOCK") && !db.is(id, "ENDBLK"); }
};

object_id live_object(const ads_name name)
{
    if (!has_document())
        return 0;
    database& db = current_database();
    const object_id id = id_of_name(db, name);
    return id && !is_erased(db, id) ? id : 0;
}

int make(const char* call, const resbuf* list, std::int32_t* out)
{
    trace_line line(call);
    line.list(list);
    if (!has_document())
        return line.status(RTERROR);
    database& db = current_database();
    group_list groups;
    if (!groups_of_list(db, list, groups, nullptr))
        groups.clear(); // what is pending is dropped by an empty list
    const entity_maker::made made = db.part<entity_maker>().take(std::move(groups));
    if (out)
        make_name(db, made.id, out);
    return line.status(made.done ? RTNORM : RTERROR);
}

int answer_name(object_id id, std::int32_t* out)
{
    if (!id || !out)
        return RTERROR;
    make_name(current_database(), id, out);
    return RTNORM;
}

// The first of what an entity owns, erased ones left out; SEQEND counts.
object_id sub_entity(const database& db, object_id from)
{
    while (from && db.at(from).erased)
        from = db.at(from).next;
    return from;
}

object_id behind(const database& db, object_id id)
{
    if (db.is(id, "BLOCK"))
        return first_entity(db, db.at(id).owner);
    if (const object_id child = sub_entity(db, db.at(id).first))
        return child;
    const object_id owner = db.at(id).owner;
    if (db.at(owner).family != object_class::entity)
        return next_entity(db, id);
    const object_id next = sub_entity(db, db.at(id).next);
    return next ? next : next_entity(db, owner);
}

// The record whose name a list for `id` may change; 0: none. The BLOCK that begins a definition names it.
object_id record_named_by(const database& db, object_id id)
{
    return db.at(id).family == object_class::record ? id : db.is(id, "BLOCK") ? db.at(id).owner : 0;
}

// Whether a BLOCK would get the name of another definition.
bool names_another(const database& db, object_id record, object_id id, const group_list& groups)
{
    const object_id named = record && record != id ? db.record("BLOCK_RECORD", db.text_of(groups, 2)) : 0;
    return named && named != record;
}

void name_as_block(database& db, object_id record, object_id block)
{
    const group* wanted = find(db.at(block).groups, 2);
    const group* held = find(db.at(record).groups, 2);
    if (!wanted || !held || wanted->text == held->text)
        return;
    const text_id name = wanted->text;
    for (group& each : db.modify(record))
        if (each.code == 2)
            each.text = name;
}

} // namespace

void settle_pending(database& db)
{
    db.part<entity_maker>().settle();
}

} // namespace host::db

using namespace host;
using namespace host::db;

extern "C" {

resbuf* acdbEntGet(const ads_name entity)
{
    return acdbEntGetX(entity, nullptr);
}

resbuf* acdbEntGetX(const ads_name entity, const resbuf* applications)
{
    const object_id id = live_object(entity);
    return id ? entity_list(current_database(), id, applications) : nullptr;
}

int acdbEntMake(const resbuf* list)
{
    return make("acdbEntMake", list, nullptr);
}

int acdbEntMakeX(const resbuf* list, ads_name out)
{
    return make("acdbEntMakeX", list, out);
}

int acdbEntMod(const resbuf* list)
{
    trace_line line("acdbEntMod");
    line.list(list);
    const resbuf* name = rb_find_code(list, -1);
    const object_id id = name ? live_object(name->resval.rlname) : 0;
    if (!id)
        return line.status(RTERROR);
    database& db = current_database();
    group_list groups;
    const object_id record = record_named_by(db, id);
    const std::string old_name(record ? db.text_of(db.at(record).groups, 2) : std::string_view());
    const bool done = groups_of_list(db, list, groups, nullptr) && !names_another(db, record, id, groups) &&
                      change_entity(db, id, std::move(groups), nullptr);
    if (done && record) {
        if (record != id)
            name_as_block(db, record, id);
        carry_new_name(db, record, old_name);
    }
    return line.status(done ? RTNORM : RTERROR);
}

int acdbEntDel(const ads_name entity)
{
    trace_line line("acdbEntDel");
    line.name(entity);
    if (!has_document())
        return line.status(RTERROR);
    database& db = current_database();
    const object_id id = id_of_name(db, entity);
    const object_id owner = id ? db.at(id).owner : 0;
    const bool is_main =
        id && db.at(id).family == object_class::entity && owner && db.is(owner, "BLOCK_RECORD");
    const bool is_object = id && db.at(id).family == object_class::object && id != db.root_dictionary();
    if ((!is_main && !is_object) || db.is(id, "BLOCK") || db.is(id, "ENDBLK"))
        return line.status(RTERROR);
    db.set_erased(id, !db.at(id).erased);
    return line.status(RTNORM);
}

int acdbEntUpd(const ads_name entity)
{
    trace_line line("acdbEntUpd");
    line.name(entity);
    return line.status(live_object(entity) ? RTNORM : RTERROR);
}

int acdbEntNext(const ads_name entity, ads_name out)
{
    if (!has_document())
        return RTERROR;
    database& db = current_database();
    if (!entity)
        return answer_name(db.part<space_ends>().first(db.current_space()), out);
    const object_id id = id_of_name(db, entity);
    return id ? answer_name(behind(db, id), out) : RTERROR;
}

int acdbEntLast(ads_name out)
{
    if (!has_document())
        return RTERROR;
    database& db = current_database();
    return answer_name(db.part<space_ends>().last(db.current_space()), out);
}

int acdbHandEnt(const char* handle, ads_name out)
{
    if (!handle || !has_document())
        return RTERROR;
    std::uint64_t value = 0;
    const std::string_view text = handle;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (text.empty() || read.ec != std::errc() || read.ptr != text.data() + text.size())
        return RTERROR;
    return answer_name(current_database().by_handle(value), out);
}
}
