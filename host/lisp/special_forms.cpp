// special_forms.cpp: forms that get their arguments unevaluated.
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

int count_of(const value& list)
{
    int count = 0;
    for (const value* p = &list; p->is_cell(); p = &p->cdr())
        ++count;
    return count;
}

void expect(interpreter& l, const value& forms, int minimum, int maximum)
{
    const int count = count_of(forms);
    if (count < minimum)
        l.fail("too few arguments");
    if (maximum >= 0 && count > maximum)
        l.fail("too many arguments");
}

symbol* symbol_in(interpreter& l, const value& v)
{
    if (!v.is(kind::symbol))
        l.wrong_type("symbolp", v);
    return v.as_symbol();
}

value quote(interpreter& l, const value& forms)
{
    expect(l, forms, 1, 1);
    return forms.car();
}

value setq(interpreter& l, const value& forms)
{
    value last = value::nil();
    for (const value* p = &forms; p->is_cell(); p = &p->cdr().cdr()) {
        symbol* s = symbol_in(l, p->car());
        if (!p->cdr().is_cell())
            l.fail("too few arguments");
        last = l.eval(p->cdr().car());
        l.set(s, last.is_nil() ? value::nil() : last);
    }
    return last;
}

value if_form(interpreter& l, const value& forms)
{
    expect(l, forms, 2, 3);
    if (l.eval(forms.car()).is_true())
        return l.eval(forms.cdr().car());
    return l.eval(forms.cdr().cdr().car());
}

value progn(interpreter& l, const value& forms)
{
    return l.eval_body(forms);
}

value cond(interpreter& l, const value& forms)
{
    for (const value* p = &forms; p->is_cell(); p = &p->cdr()) {
        const value& clause = p->car();
        if (!clause.is_cell())
            l.wrong_type("consp", clause);
        value test = l.eval(clause.car());
        if (test.is_true())
            return clause.cdr().is_cell() ? l.eval_body(clause.cdr()) : test;
    }
    return value::nil();
}

// and, or answer T or nil, not the value that decided.
value and_form(interpreter& l, const value& forms)
{
    for (const value* p = &forms; p->is_cell(); p = &p->cdr())
        if (l.eval(p->car()).is_nil())
            return value::nil();
    return l.t();
}

value or_form(interpreter& l, const value& forms)
{
    for (const value* p = &forms; p->is_cell(); p = &p->cdr())
        if (l.eval(p->car()).is_true())
            return l.t();
    return value::nil();
}

value while_form(interpreter& l, const value& forms)
{
    expect(l, forms, 1, -1);
    value last = value::nil();
    while (l.eval(forms.car()).is_true()) {
        l.poll();
        last = l.eval_body(forms.cdr());
    }
    return last;
}

value repeat(interpreter& l, const value& forms)
{
    expect(l, forms, 1, -1);
    const value times = l.eval(forms.car());
    if (!times.is(kind::integer))
        l.wrong_type("fixnump:", times);
    value last = value::nil();
    for (std::int32_t i = 0; i < times.as_integer(); ++i) {
        l.poll();
        last = l.eval_body(forms.cdr());
    }
    return last;
}

value foreach (interpreter& l, const value& forms)
{
    expect(l, forms, 2, -1);
    symbol* s = symbol_in(l, forms.car());
    const value list = l.eval(forms.cdr().car());
    if (!list.is_list())
        l.wrong_type("listp", list);
    const std::size_t mark = l.binding_mark();
    l.bind(s, value::nil());
    value last = value::nil();
    for (const value* p = &list; p->is_cell(); p = &p->cdr()) {
        l.poll();
        l.set(s, p->car());
        last = l.eval_body(forms.cdr().cdr());
    }
    l.unbind_to(mark);
    return last;
}

value defun(interpreter& l, const value& forms)
{
    expect(l, forms, 2, -1);
    symbol* s = symbol_in(l, forms.car());
    l.set(s, l.make_function(s, forms.cdr().car(), forms.cdr().cdr()));
    return value::of(s);
}

// The function stays a list, which programs take apart and put together.
value defun_q(interpreter& l, const value& forms)
{
    expect(l, forms, 2, -1);
    symbol* s = symbol_in(l, forms.car());
    l.set(s, forms.cdr());
    return value::of(s);
}

value lambda(interpreter& l, const value& forms)
{
    expect(l, forms, 1, -1);
    return l.make_function(nullptr, forms.car(), forms.cdr());
}

value function(interpreter& l, const value& forms)
{
    expect(l, forms, 1, 1);
    return l.callable(forms.car());
}

constexpr special_form FORMS[] = {
    {"quote", quote, 'r'},   {"setq", setq, 's'},         {"if", if_form, 'q'},  {"progn", progn, 'q'},
    {"cond", cond, 'r'},     {"and", and_form, 'q'},      {"or", or_form, 'q'},  {"while", while_form, 'q'},
    {"repeat", repeat, 'q'}, {"foreach", foreach, 's'},   {"defun", defun, 'r'}, {"defun-q", defun_q, 'r'},
    {"lambda", lambda, 'r'}, {"function", function, 'r'},
};

} // namespace

std::span<const special_form> special_forms()
{
    return FORMS;
}

} // namespace host::lisp
