// selection.cpp: selection sets.
#include "host/core/text.h"
#include "host/database/selection_sets.h"
#include "host/lisp/answers.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"

namespace host::lisp
{

namespace
{

bool is_point(const value& v)
{
    double ignored[3];
    return point_of(v, ignored) > 0;
}

resbuf* point_chain(const value& list)
{
    list_builder out;
    for (const value* p = &list; p->is_cell(); p = &p->cdr()) {
        double point[3];
        point_of(p->car(), point);
        out.add(rb_point(RT3DPOINT, point));
    }
    return out.take();
}

// The arguments of ssget: mode, points or a list of points as the mode needs, filter.
struct request {
    std::string mode;
    bool has_mode = false;
    double points[2][3] = {{0, 0, 0}, {0, 0, 0}};
    int point_count = 0;
    list_ptr outline, filter;

    const char* mode_text() const { return has_mode && !mode.empty() ? mode.c_str() : nullptr; }
    const void* first() const
    {
        return outline ? static_cast<const void*>(outline.get()) : point_count > 0 ? points[0] : nullptr;
    }
    const void* second() const { return point_count > 1 ? points[1] : nullptr; }
};

request request_of(interpreter& l, arguments a)
{
    request r;
    int i = 0;
    if (a.count > 0 && a[0].is_string()) {
        r.mode = upper(a.text(0));
        r.mode.erase(0, r.mode.find_first_not_of('_'));
        r.has_mode = true;
        i = 1;
    }
    for (; i < a.count; ++i) {
        if (a[i].is_nil())
            continue;
        if (!a[i].is_cell())
            l.wrong_type("listp", a[i]);
        if (is_point(a[i]) && r.point_count < 2)
            point_of(a[i], r.points[r.point_count++]);
        else if (is_point(a[i].car()))
            r.outline.reset(point_chain(a[i]));
        else
            r.filter.reset(groups_of(l, a[i]));
    }
    return r;
}

value get(interpreter& l, arguments a)
{
    const request r = request_of(l, a);
    ads_name set = {0, 0};
    const int status = acedSSGet(r.mode_text(), r.first(), r.second(), r.filter.get(), set);
    return answer(l, status, [&] { return l.pickset(set); });
}

value length(interpreter&, arguments a)
{
    std::int32_t count = 0;
    acedSSLength(a[0].as_pickset()->name, &count);
    return value::integer(count);
}

value name_at(interpreter&, arguments a)
{
    ads_name entity;
    const double index = a.number(1);
    if (index < 0 || index > 2147483647.0 ||
        acedSSName(a[0].as_pickset()->name, static_cast<std::int32_t>(index), entity) != RTNORM)
        return value::nil();
    return value::entity(entity);
}

value add(interpreter& l, arguments a)
{
    ads_name out = {0, 0};
    const bool to_set = a.given(1);
    const int status =
        acedSSAdd(a.given(0) ? a[0].name() : nullptr, to_set ? a[1].as_pickset()->name : nullptr, out);
    if (status != RTNORM)
        return value::nil();
    return to_set ? a[1] : l.pickset(out);
}

value remove(interpreter&, arguments a)
{
    return acedSSDel(a[0].name(), a[1].as_pickset()->name) == RTNORM ? a[1] : value::nil();
}

value contains(interpreter&, arguments a)
{
    return acedSSMemb(a[0].name(), a[1].as_pickset()->name) == RTNORM ? a[0] : value::nil();
}

// How each member came in isn't kept: each is told as (0 name 0), by no particular method.
value methods(interpreter&, arguments a)
{
    std::int32_t count = 0;
    acedSSLength(a[0].as_pickset()->name, &count);
    list_maker out;
    for (std::int32_t i = 0; i < count; ++i) {
        ads_name entity;
        if ((a.count > 1 && a.integer(1) != i) || acedSSName(a[0].as_pickset()->name, i, entity) != RTNORM)
            continue;
        const value zero = value::integer(0);
        out.add(cons(zero, cons(value::entity(entity), cons(zero, value::nil()))));
    }
    return out.take();
}

value set_chosen(interpreter& l, arguments a)
{
    l.gripped[0] = a[0];
    l.gripped[1] = a.count > 1 ? a[1] : value::nil();
    db::database& drawing = db::current_database();
    const bool any = l.gripped[1].is(kind::pickset);
    db::set_chosen(drawing, any ? db::set_members(drawing, l.gripped[1].as_pickset()->name)
                                : std::vector<db::object_id>());
    return cons(l.gripped[0], cons(l.gripped[1], value::nil()));
}

value get_chosen(interpreter& l, arguments)
{
    return cons(l.gripped[0], cons(l.gripped[1], value::nil()));
}

constexpr builtin TABLE[] = {
    {"ssget", get, 0, 4, "."},
    {"sslength", length, 1, 1, "p"},
    {"ssname", name_at, 2, 2, "pn"},
    {"ssadd", add, 0, 2, "EP"},
    {"ssdel", remove, 2, 2, "ep"},
    {"ssmemb", contains, 2, 2, "ep"},
    {"ssnamex", methods, 1, 2, "pi"},
    {"sssetfirst", set_chosen, 1, 2, "P"},
    {"ssgetfirst", get_chosen, 0, 0, ""},
};

} // namespace

std::span<const builtin> selection_table()
{
    return TABLE;
}

} // namespace host::lisp
