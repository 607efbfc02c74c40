// control.cpp: evaluation asked for by programs: eval, apply, mapcar, read, load; symbols.
#include <algorithm>
#include <map>
#include <vector>

#include "host/files/paths.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"

namespace host::lisp
{

namespace
{

value evaluate(interpreter& l, arguments a)
{
    return l.eval(a[0]);
}

value apply(interpreter& l, arguments a)
{
    argument_list list;
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        list.add(p->car());
    return l.apply(a[0], list.all());
}

value map_lists(interpreter& l, arguments a)
{
    const value function = l.callable(a[0]);
    std::vector<const value*> at;
    for (int i = 1; i < a.count; ++i)
        at.push_back(&a[i]);
    list_maker out;
    for (;;) {
        argument_list row;
        for (const value*& p : at) {
            if (!p->is_cell())
                return out.take();
            row.add(p->car());
            p = &p->cdr();
        }
        l.poll();
        out.add(l.apply(function, row.all()));
    }
}

value read(interpreter& l, arguments a)
{
    reader forms(l, a.text(0), "");
    value form;
    try {
        return forms.next(&form) ? form : value::nil();
    } catch (const lisp_error& e) {
        l.fail(e.message);
    }
}

std::optional<std::string> program_path(const std::string& name)
{
    char path[ADS_PATH_SIZE];
    for (const char* extension : {"", ".lsp", ".LSP"})
        if (acedFindFile((name + extension).c_str(), path) == RTNORM && !file_is_directory(path))
            return real_path(path);
    return std::nullopt;
}

// `onfailure` is the value, or a function to call, when there is no such file.
value load(interpreter& l, arguments a)
{
    const std::optional<std::string> path = program_path(a.text(0));
    const std::optional<std::string> text = path ? read_whole(*path) : std::nullopt;
    if (text)
        return l.evaluate_forms(*text, file_name_of(*path));
    if (a.count < 2)
        l.fail("LOAD failed: " + prin1_text(a[0]));
    return l.is_function(a[1]) && !a[1].is(kind::symbol) ? l.call(a[1], {}) : a[1];
}

// Each command becomes a function that loads the file, which defines it anew, and calls it.
value autoload(interpreter& l, arguments a)
{
    const value load_form = cons(value::of(l.intern("LOAD")), cons(a[0], value::nil()));
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr()) {
        if (!p->car().is_string())
            l.wrong_type("stringp", p->car());
        symbol* s = l.intern("C:" + p->car().as_string());
        const value call = cons(value::of(s), value::nil());
        l.set(s, l.make_function(s, value::nil(), cons(load_form, cons(call, value::nil()))));
    }
    return value::nil();
}

value assign(interpreter& l, arguments a)
{
    l.set(a[0].as_symbol(), a[1].is_nil() ? value::nil() : a[1]);
    return a[1];
}

value symbol_name(interpreter&, arguments a)
{
    return value::text(a[0].is_nil() ? "NIL" : a[0].as_symbol()->name);
}

value symbol_value(interpreter& l, arguments a)
{
    return l.eval(a[0]);
}

// All symbols with a value, as symbols (0) or texts (1); or of given names those that have one.
value atoms_family(interpreter& l, arguments a)
{
    const bool texts = a.integer(0) != 0;
    const auto shown = [&](symbol* s) { return texts ? value::text(s->name) : value::of(s); };
    list_maker out;
    if (a.given(1)) {
        for (const value* p = &a[1]; p->is_cell(); p = &p->cdr()) {
            if (!p->car().is_string())
                l.wrong_type("stringp", p->car());
            symbol* s = l.find(p->car().as_string());
            out.add(s && s->bound.is_true() ? shown(s) : value::nil());
        }
        return out.take();
    }
    std::vector<symbol*> all;
    for (const auto& [name, s] : l.symbols())
        if (s->bound.is_true())
            all.push_back(s);
    std::sort(all.begin(), all.end(), [](const symbol* x, const symbol* y) { return x->name < y->name; });
    for (symbol* s : all)
        out.add(shown(s));
    return out.take();
}

value list_of_function(interpreter&, arguments a)
{
    return a[0].as_symbol()->bound.is_cell() ? a[0].as_symbol()->bound : value::nil();
}

value set_list_of_function(interpreter& l, arguments a)
{
    l.set(a[0].as_symbol(), a[1]);
    return a[0];
}

// ---- the blackboard: values that all drawings share, as result lists

std::map<std::string, list_ptr>& blackboard()
{
    static std::map<std::string, list_ptr> values;
    return values;
}

value blackboard_get(interpreter& l, arguments a)
{
    const auto found = blackboard().find(a[0].as_symbol()->name);
    return found == blackboard().end() ? value::nil() : value_of_plain(l, found->second.get());
}

value blackboard_set(interpreter&, arguments a)
{
    blackboard()[a[0].as_symbol()->name].reset(plain_of(a[1]));
    return a[1];
}

value nothing(interpreter&, arguments)
{
    return value::nil();
}

value version(interpreter&, arguments)
{
    return value::text("AutoLISP Release 2000 (en)");
}

constexpr builtin TABLE[] = {
    {"eval", evaluate, 1, 1, "."},
    {"apply", apply, 2, 2, ".l"},
    {"mapcar", map_lists, 2, -1, ".l"},
    {"read", read, 1, 1, "s"},
    {"load", load, 1, 2, "s."},
    {"autoload", autoload, 2, 2, "sl"},
    {"set", assign, 2, 2, "y."},
    {"vl-symbol-name", symbol_name, 1, 1, "Y"},
    {"vl-symbol-value", symbol_value, 1, 1, "Y"},
    {"atoms-family", atoms_family, 1, 2, "il"},
    {"defun-q-list-ref", list_of_function, 1, 1, "y"},
    {"defun-q-list-set", set_list_of_function, 2, 2, "yl"},
    {"vl-bb-ref", blackboard_get, 1, 1, "y"},
    {"vl-bb-set", blackboard_set, 2, 2, "y."},
    {"vl-load-com", nothing, 0, 0, ""},
    {"gc", nothing, 0, 0, ""},
    {"ver", version, 0, 0, ""},
};

} // namespace

std::span<const builtin> control_table()
{
    return TABLE;
}

} // namespace host::lisp
