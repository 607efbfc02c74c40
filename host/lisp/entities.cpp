// entities.cpp: drawing objects as group lists, extended data, dictionaries.
#include <algorithm>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "host/database/text_metrics.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "host/lisp/printer.h"
#include "hostapi/ads.h"

namespace host::lisp
{

namespace
{

value entity_or_nil(int status, const ads_name name)
{
    return status == RTNORM ? value::entity(name) : value::nil();
}

value get(interpreter& l, arguments a)
{
    list_builder applications;
    if (a.count > 1)
        for (const value* p = &a[1]; p->is_cell(); p = &p->cdr()) {
            if (!p->car().is_string())
                l.wrong_type("stringp", p->car());
            applications.add(rb_text(RTSTR, p->car().as_string()));
        }
    const list_ptr names(applications.take());
    const list_ptr groups(names ? acdbEntGetX(a[0].name(), names.get()) : acdbEntGet(a[0].name()));
    return groups ? value_of_groups(l, groups.get()) : value::nil();
}

bool ends_block(const resbuf* groups)
{
    return groups && groups->restype == 0 && groups->resval.rstring &&
           same_text(groups->resval.rstring, "ENDBLK");
}

// Answers the name of the block: of one that was begun without a name of its own ("*U") programs learn it so.
value end_block(interpreter& l, const resbuf* groups)
{
    ads_name begin = {0, 0};
    const int status = acdbEntMakeX(groups, begin);
    l.throw_kept_stop();
    if (status != RTNORM)
        return value::nil();
    const db::database& db = db::current_database();
    return value::text(db.text_of(db.at(db::id_of_name(db, begin)).groups, 2));
}

value make(interpreter& l, arguments a)
{
    if (a.count == 0)
        return value::nil();
    const list_ptr groups(groups_of(l, a[0]));
    if (ends_block(groups.get()))
        return end_block(l, groups.get());
    const int status = acdbEntMake(groups.get());
    l.throw_kept_stop();
    return status == RTNORM ? a[0] : value::nil();
}

value make_named(interpreter& l, arguments a)
{
    if (a.count == 0)
        return value::nil();
    const list_ptr groups(groups_of(l, a[0]));
    ads_name name = {0, 0};
    const int status = acdbEntMakeX(groups.get(), name);
    l.throw_kept_stop();
    return entity_or_nil(status, name);
}

value modify(interpreter& l, arguments a)
{
    const list_ptr groups(groups_of(l, a[0]));
    const int status = acdbEntMod(groups.get());
    l.throw_kept_stop();
    return status == RTNORM ? a[0] : value::nil();
}

value erase(interpreter& l, arguments a)
{
    const int status = acdbEntDel(a[0].name());
    l.throw_kept_stop();
    return status == RTNORM ? a[0] : value::nil();
}

value update(interpreter&, arguments a)
{
    return acdbEntUpd(a[0].name()) == RTNORM ? a[0] : value::nil();
}

value next(interpreter&, arguments a)
{
    ads_name name = {0, 0};
    return entity_or_nil(acdbEntNext(a.given(0) ? a[0].name() : nullptr, name), name);
}

value last(interpreter&, arguments)
{
    ads_name name = {0, 0};
    return entity_or_nil(acdbEntLast(name), name);
}

value by_handle(interpreter&, arguments a)
{
    ads_name name = {0, 0};
    return entity_or_nil(acdbHandEnt(a.text(0).c_str(), name), name);
}

value register_application(interpreter&, arguments a)
{
    return acdbRegApp(a.text(0).c_str()) == RTNORM ? a[0] : value::nil();
}

// ---- room for extended data

constexpr int most_extended_bytes = 16383;

int stored_size(const resbuf& node)
{
    switch (type_of_code(node.restype)) {
    case value_type::text:
        return 2 + (node.resval.rstring ? static_cast<int>(std::string_view(node.resval.rstring).size()) : 0);
    case value_type::binary:
        return 2 + node.resval.rbinary.clen;
    case value_type::point:
        return 25;
    case value_type::real:
        return 9;
    case value_type::int32:
        return 5;
    default:
        return 3;
    }
}

int extended_size(const resbuf* list)
{
    bool inside = false;
    int sum = 0;
    for (; list; list = list->rbnext) {
        if (inside)
            sum += stored_size(*list);
        inside = inside || list->restype == -3;
    }
    return sum;
}

value extended_bytes(interpreter& l, arguments a)
{
    // Taken with and without the -3 in front.
    const bool whole = a[0].car().is(kind::integer);
    const value group = whole ? a[0] : cons(value::integer(-3), a[0]);
    const list_ptr groups(groups_of(l, cons(group, value::nil())));
    return value::integer(extended_size(groups.get()));
}

value extended_room(interpreter&, arguments a)
{
    const list_ptr everything(rb_text(RTSTR, "*"));
    const list_ptr groups(acdbEntGetX(a[0].name(), everything.get()));
    return groups ? value::integer(most_extended_bytes - extended_size(groups.get())) : value::nil();
}

// ---- dictionaries

constexpr int KEY = 3;

value named_objects(interpreter&, arguments)
{
    ads_name name = {0, 0};
    return entity_or_nil(acdbNamedObjDict(name), name);
}

value dictionary_search(interpreter& l, arguments a)
{
    const list_ptr groups(acdbDictSearch(a[0].name(), a.text(1).c_str(), a.given(2)));
    return groups ? value_of_groups(l, groups.get()) : value::nil();
}

value dictionary_next(interpreter& l, arguments a)
{
    const list_ptr groups(acdbDictNext(a[0].name(), a.given(1)));
    return groups ? value_of_groups(l, groups.get()) : value::nil();
}

bool is_key(const value& group, const std::string& key)
{
    return group.car().is(kind::integer) && group.car().as_integer() == KEY && group.cdr().is_string() &&
           same_text(group.cdr().as_string(), key);
}

// The dictionary's groups with one entry changed by `change`, written back. False: no such entry.
template <class Change>
bool change_entry(interpreter& l, const value& dictionary, const std::string& key, Change change)
{
    const list_ptr groups(acdbEntGet(dictionary.name()));
    const value list = groups ? value_of_groups(l, groups.get()) : value::nil();
    list_maker out;
    bool found = false;
    for (const value* p = &list; p->is_cell(); p = &p->cdr()) {
        if (is_key(p->car(), key) && p->cdr().is_cell()) {
            found = true;
            change(out, p->cdr().car());
            p = &p->cdr();
        } else {
            out.add(p->car());
        }
    }
    if (!found)
        return false;
    const list_ptr changed(groups_of(l, out.take()));
    return acdbEntMod(changed.get()) == RTNORM;
}

value dictionary_remove(interpreter& l, arguments a)
{
    value removed;
    const bool done =
        change_entry(l, a[0], a.text(1), [&](list_maker&, const value& entry) { removed = entry.cdr(); });
    return done ? removed : value::nil();
}

value dictionary_rename(interpreter& l, arguments a)
{
    const bool done = change_entry(l, a[0], a.text(1), [&](list_maker& out, const value& entry) {
        out.add(cons(value::integer(KEY), a[2]));
        out.add(entry);
    });
    return done ? a[2] : value::nil();
}

value dictionary_add(interpreter&, arguments a)
{
    const list_ptr there(acdbDictSearch(a[0].name(), a.text(1).c_str(), 0));
    const list_ptr groups(acdbEntGet(a[0].name()));
    if (there || !groups)
        return value::nil();
    list_builder out;
    out.add(rb_copy(groups.get())).add(rb_text(KEY, a.text(1))).add(rb_name(350, a[2].name()));
    const list_ptr changed(out.take());
    return acdbEntMod(changed.get()) == RTNORM ? a[2] : value::nil();
}

// Names of the layouts, the model's left out.
value layouts(interpreter&, arguments)
{
    list_maker out;
    ads_name root = {0, 0};
    if (acdbNamedObjDict(root) != RTNORM)
        return value::nil();
    const list_ptr dictionary(acdbDictSearch(root, "ACAD_LAYOUT", 0));
    for (const resbuf* node = dictionary.get(); node; node = node->rbnext)
        if (node->restype == KEY && node->resval.rstring && !same_text(node->resval.rstring, "Model"))
            out.add(value::text(node->resval.rstring));
    return out.take();
}

// What a list leaves out is as the next new text would have it.
void complete_text(document& doc, db::group_list& groups)
{
    const db::database& data = db::database_of(doc);
    if (data.text_of(groups, 7).empty())
        groups.push_back(data.text_group(7, db::text_variable(doc, "TEXTSTYLE")));
    const db::object_id style = data.record("STYLE", data.text_of(groups, 7));
    const auto of_style = [&](int code, double otherwise) {
        return style ? db::real_of(data.at(style).groups, code, otherwise) : otherwise;
    };
    const auto put = [&](int code, double value) {
        if (!db::find(groups, code))
            groups.push_back(db::real_group(code, value));
    };
    const double fixed = of_style(40, 0.0);
    put(40, fixed > 0 ? fixed : db::real_variable(doc, "TEXTSIZE"));
    put(41, of_style(41, 1.0));
    put(51, of_style(50, 0.0));
}

// The box about a text's letters, as if it began at 0,0 and wasn't turned: its lower left and upper right
// corners.
value text_box(interpreter& l, arguments a)
{
    const list_ptr list(groups_of(l, a[0]));
    document& doc = current_document();
    db::group_list groups;
    if (!list || !db::groups_of_list(db::database_of(doc), list.get(), groups, nullptr) || !db::find(groups, 1))
        return value::nil();
    complete_text(doc, groups);
    db::text_line line = db::line_of(db::database_of(doc), groups);
    line.across = line.up = line.generation = 0;
    line.start = {};
    double low[3] = {0, 0, 0}, high[3] = {0, 0, 0};
    bool first = true;
    for (const db::vec& corner : db::corners_of(line).at) {
        const double at[2] = {corner.x, corner.y};
        for (std::size_t i = 0; i < 2; ++i) {
            low[i] = first ? at[i] : std::min(low[i], at[i]);
            high[i] = first ? at[i] : std::max(high[i], at[i]);
        }
        first = false;
    }
    list_maker out;
    out.add(point_value(low));
    out.add(point_value(high));
    return out.take();
}

constexpr builtin TABLE[] = {
    {"entget", get, 1, 2, "el"},
    {"entmake", make, 0, 1, "l"},
    {"entmakex", make_named, 0, 1, "l"},
    {"entmod", modify, 1, 1, "l"},
    {"entdel", erase, 1, 1, "e"},
    {"entupd", update, 1, 1, "e"},
    {"entnext", next, 0, 1, "E"},
    {"entlast", last, 0, 0, ""},
    {"handent", by_handle, 1, 1, "s"},
    {"regapp", register_application, 1, 1, "s"},
    {"xdsize", extended_bytes, 1, 1, "c"},
    {"xdroom", extended_room, 1, 1, "e"},
    {"namedobjdict", named_objects, 0, 0, ""},
    {"dictsearch", dictionary_search, 2, 3, "es."},
    {"dictnext", dictionary_next, 1, 2, "e."},
    {"dictadd", dictionary_add, 3, 3, "ese"},
    {"dictremove", dictionary_remove, 2, 2, "es"},
    {"dictrename", dictionary_rename, 3, 3, "ess"},
    {"layoutlist", layouts, 0, 0, ""},
    {"textbox", text_box, 1, 1, "l"},
};

} // namespace

std::span<const builtin> entity_table()
{
    return TABLE;
}

} // namespace host::lisp
