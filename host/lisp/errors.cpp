// errors.cpp: raising and catching errors.
#include "host/core/console.h"
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

// An error becomes a value. The end of the run isn't one: it goes on through.
value catch_all(interpreter& l, arguments a)
{
    const std::size_t mark = l.binding_mark();
    argument_list list;
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        list.add(p->car());
    try {
        return l.apply(a[0], list.all());
    } catch (const lisp_error& e) {
        if (e.how == failure::stopped)
            throw;
        l.unbind_to(mark);
        return value::of(static_cast<counted*>(new caught_object(e.message)));
    }
}

value is_caught(interpreter& l, arguments a)
{
    return l.truth(a[0].is(kind::caught));
}

value caught_message(interpreter& l, arguments a)
{
    if (!a[0].is(kind::caught))
        l.wrong_type("vl-catch-all-error-p", a[0]);
    return value::text(a[0].as_caught()->message);
}

value quit(interpreter& l, arguments)
{
    l.fail("quit / exit abort", failure::quit);
}

value raise(interpreter& l, arguments a)
{
    l.fail(a.text(0));
}

value show_calls(interpreter& l, arguments)
{
    history_line("Backtrace:");
    history(l.backtrace());
    return value::nil();
}

// How *error* functions may call commands makes no difference here.
value error_mode(interpreter&, arguments)
{
    return value::nil();
}

constexpr builtin TABLE[] = {
    {"vl-catch-all-apply", catch_all, 1, 2, ".l"},
    {"vl-catch-all-error-p", is_caught, 1, 1, "."},
    {"vl-catch-all-error-message", caught_message, 1, 1, "."},
    {"exit", quit, 0, 0, ""},
    {"quit", quit, 0, 0, ""},
    {"vl-exit-with-error", raise, 1, 1, "s"},
    {"vl-bt", show_calls, 0, 0, ""},
    {"*push-error-using-command*", error_mode, 0, 0, ""},
    {"*push-error-using-stack*", error_mode, 0, 0, ""},
    {"*pop-error-mode*", error_mode, 0, 0, ""},
};

} // namespace

std::span<const builtin> error_table()
{
    return TABLE;
}

} // namespace host::lisp
