// lists.cpp: lists, their elements and association lists.
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

const value& step(interpreter& l, const value& v, bool first)
{
    if (!v.is_list())
        l.wrong_type("consp", v);
    return first ? v.car() : v.cdr();
}

// car, cdr and their combinations: the letters between c and r, read from the right.
template <char... Letters>
value walk(interpreter& l, arguments a)
{
    constexpr char letters[] = {Letters...};
    const value* p = &a[0];
    for (std::size_t i = sizeof letters; i-- > 0;)
        p = &step(l, *p, letters[i] == 'a');
    return *p;
}

value make_list(interpreter&, arguments a)
{
    value list = value::nil();
    for (int i = a.count; i-- > 0;)
        list = cons(a[i], std::move(list));
    return list;
}

value construct(interpreter&, arguments a)
{
    return cons(a[0], a[1]);
}

value append(interpreter&, arguments a)
{
    list_maker out;
    for (int i = 0; i + 1 < a.count; ++i)
        for (const value* p = &a[i]; p->is_cell(); p = &p->cdr())
            out.add(p->car());
    if (a.count)
        out.end_with(a[a.count - 1]); // the last list is shared
    return out.take();
}

value reverse(interpreter&, arguments a)
{
    value out = value::nil();
    for (const value* p = &a[0]; p->is_cell(); p = &p->cdr())
        out = cons(p->car(), std::move(out));
    return out;
}

value length(interpreter& l, arguments a)
{
    std::int32_t count = 0;
    const value* p = &a[0];
    for (; p->is_cell(); p = &p->cdr())
        ++count;
    if (p->is_true())
        l.fail("bad list: " + short_text(a[0], 60));
    return value::integer(count);
}

value last(interpreter&, arguments a)
{
    const value* p = &a[0];
    while (p->cdr().is_cell())
        p = &p->cdr();
    return p->car();
}

value nth(interpreter& l, arguments a)
{
    if (a.integer(0) < 0)
        l.fail("bad argument value: non-negative " + prin1_text(a[0]));
    const value* p = &a[1];
    for (std::int32_t i = a.integer(0); i > 0 && p->is_cell(); --i)
        p = &p->cdr();
    return p->is_cell() ? p->car() : value::nil();
}

value member(interpreter&, arguments a)
{
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        if (equal(a[0], p->car()))
            return *p;
    return value::nil();
}

value assoc(interpreter& l, arguments a)
{
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr()) {
        const value& pair = p->car();
        if (pair.is_cell() && equal(a[0], pair.car()))
            return pair;
        if (!pair.is_list())
            l.fail("bad association list: " + short_text(a[1], 60));
    }
    return value::nil();
}

value substitute(interpreter&, arguments a)
{
    list_maker out;
    const value* p = &a[2];
    for (; p->is_cell(); p = &p->cdr())
        out.add(equal(a[1], p->car()) ? a[0] : p->car());
    out.end_with(*p);
    return out.take();
}

constexpr builtin TABLE[] = {
    {"car", walk<'a'>, 1, 1, "."},
    {"cdr", walk<'d'>, 1, 1, "."},
    {"caar", walk<'a', 'a'>, 1, 1, "."},
    {"cadr", walk<'a', 'd'>, 1, 1, "."},
    {"cdar", walk<'d', 'a'>, 1, 1, "."},
    {"cddr", walk<'d', 'd'>, 1, 1, "."},
    {"caaar", walk<'a', 'a', 'a'>, 1, 1, "."},
    {"caadr", walk<'a', 'a', 'd'>, 1, 1, "."},
    {"cadar", walk<'a', 'd', 'a'>, 1, 1, "."},
    {"caddr", walk<'a', 'd', 'd'>, 1, 1, "."},
    {"cdaar", walk<'d', 'a', 'a'>, 1, 1, "."},
    {"cdadr", walk<'d', 'a', 'd'>, 1, 1, "."},
    {"cddar", walk<'d', 'd', 'a'>, 1, 1, "."},
    {"cdddr", walk<'d', 'd', 'd'>, 1, 1, "."},
    {"caaaar", walk<'a', 'a', 'a', 'a'>, 1, 1, "."},
    {"caaadr", walk<'a', 'a', 'a', 'd'>, 1, 1, "."},
    {"caadar", walk<'a', 'a', 'd', 'a'>, 1, 1, "."},
    {"caaddr", walk<'a', 'a', 'd', 'd'>, 1, 1, "."},
    {"cadaar", walk<'a', 'd', 'a', 'a'>, 1, 1, "."},
    {"cadadr", walk<'a', 'd', 'a', 'd'>, 1, 1, "."},
    {"caddar", walk<'a', 'd', 'd', 'a'>, 1, 1, "."},
    {"cadddr", walk<'a', 'd', 'd', 'd'>, 1, 1, "."},
    {"cdaaar", walk<'d', 'a', 'a', 'a'>, 1, 1, "."},
    {"cdaadr", walk<'d', 'a', 'a', 'd'>, 1, 1, "."},
    {"cdadar", walk<'d', 'a', 'd', 'a'>, 1, 1, "."},
    {"cdaddr", walk<'d', 'a', 'd', 'd'>, 1, 1, "."},
    {"cddaar", walk<'d', 'd', 'a', 'a'>, 1, 1, "."},
    {"cddadr", walk<'d', 'd', 'a', 'd'>, 1, 1, "."},
    {"cdddar", walk<'d', 'd', 'd', 'a'>, 1, 1, "."},
    {"cddddr", walk<'d', 'd', 'd', 'd'>, 1, 1, "."},
    {"list", make_list, 0, -1, "."},
    {"cons", construct, 2, 2, "."},
    {"append", append, 0, -1, "l"},
    {"reverse", reverse, 1, 1, "l"},
    {"length", length, 1, 1, "l"},
    {"last", last, 1, 1, "l"},
    {"nth", nth, 2, 2, "il"},
    {"member", member, 2, 2, ".l"},
    {"assoc", assoc, 2, 2, ".l"},
    {"subst", substitute, 3, 3, "..l"},
};

} // namespace

std::span<const builtin> list_table()
{
    return TABLE;
}

} // namespace host::lisp
