// evaluator.cpp: evaluation and calls.
#include <pthread.h>

#include <optional>

#include "host/core/console.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/lisp/convert.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

// The address below which nothing more is begun. What is left lets the deepest built-in, a prompt or a
// window still run; a stack without a limit is used as one of 64 MB.
std::uintptr_t stack_floor()
{
    constexpr std::uintptr_t most = std::uintptr_t{64} << 20, reserve = std::uintptr_t{1} << 20;
    pthread_attr_t attributes;
    void* low = nullptr;
    std::size_t size = 0;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &low, &size);
        pthread_attr_destroy(&attributes);
    }
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    std::uintptr_t floor = reinterpret_cast<std::uintptr_t>(low);
    if (size == 0 || here - floor > most)
        floor = here - most;
    return floor + std::min<std::uintptr_t>(reserve, (here - floor) / 4);
}

// What a type letter of a table accepts, and its name in messages.
struct argument_kind {
    char letter;
    const char* wanted;
    bool (*fits)(const value& v);
};

bool is_point(const value& v)
{
    double ignored[3];
    return point_of(v, ignored) > 0;
}

constexpr argument_kind argument_kinds[] = {
    {'n', "numberp:", [](const value& v) { return v.is_number(); }},
    {'i', "fixnump:", [](const value& v) { return v.is(kind::integer); }},
    {'s', "stringp", [](const value& v) { return v.is_string(); }},
    {'l', "listp", [](const value& v) { return v.is_list(); }},
    {'c', "consp", [](const value& v) { return v.is_cell(); }},
    {'y', "symbolp", [](const value& v) { return v.is(kind::symbol); }},
    {'e', "lentityp", [](const value& v) { return v.is(kind::entity); }},
    {'p', "lselsetp", [](const value& v) { return v.is(kind::pickset); }},
    {'d', "2D/3D point:", is_point},
    {'f', "streamp", [](const value& v) { return v.is(kind::file); }},
};

void check_types(interpreter& l, const char* types, arguments a)
{
    const char* letter = types;
    for (int i = 0; i < a.count && *letter; ++i) {
        const value& v = a[i];
        const bool capital = *letter >= 'A' && *letter <= 'Z';
        const char small = static_cast<char>(capital ? *letter + ('a' - 'A') : *letter);
        if (small != '.' && !(capital && v.is_nil()))
            for (const argument_kind& k : argument_kinds)
                if (k.letter == small && !k.fits(v))
                    l.wrong_type(k.wanted, v);
        if (letter[1])
            ++letter;
    }
}

// Apart from the functions that evaluate, whose frames are to be small because they nest. `form` becomes a
// call of its own in the chain; null: what fails is the call at hand.
[[noreturn]] void fail_about(interpreter& l, const value* form, const char* what, const value& about)
{
    std::optional<interpreter::call_frame> frame;
    if (form)
        frame.emplace(l, form);
    l.fail(what + (about.is(kind::symbol) ? about.as_symbol()->name : short_text(about, 60)));
}

void check_count(interpreter& l, int count, int minimum, int maximum)
{
    if (count < minimum)
        l.fail("too few arguments");
    if (maximum >= 0 && count > maximum)
        l.fail("too many arguments");
}

} // namespace

void argument_list::add_to_many(value v)
{
    if (count_ == few)
        for (value& moved : small_)
            many_.push_back(std::move(moved));
    many_.push_back(std::move(v));
}

void check_stack()
{
    static thread_local const std::uintptr_t floor = stack_floor();
    static thread_local bool telling = false; // the message itself is made below the floor
    if (telling || reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) >= floor)
        return;
    telling = true;
    std::string chain = interpreter_of(current_document()).backtrace();
    telling = false;
    throw lisp_error{failure::error, "internal stack limit reached", std::move(chain), {}};
}

const char* type_name(const value& v)
{
    switch (v.type()) {
    case kind::unset:
    case kind::nil:
        return nullptr;
    case kind::integer:
        return "INT";
    case kind::real:
        return "REAL";
    case kind::entity:
        return "ENAME";
    case kind::symbol:
        return "SYM";
    case kind::builtin:
    case kind::special:
        return "SUBR";
    case kind::external:
        return "EXRXSUBR";
    case kind::string:
        return "STR";
    case kind::cell:
        return "LIST";
    case kind::function:
        return "USUBR";
    case kind::file:
        return "FILE";
    case kind::pickset:
        return "PICKSET";
    case kind::caught:
        return "VL-CATCH-ALL-APPLY-ERROR";
    }
    return nullptr;
}

value interpreter::eval(const value& form)
{
    if (form.is_cell())
        return eval_call(form);
    if (!form.is(kind::symbol))
        return form;
    symbol* s = form.as_symbol();
    if (!s->bound.is(kind::unset))
        return s->bound;
    return is_external(s->name) ? value::external(s) : value::nil();
}

value interpreter::eval_body(const value& forms)
{
    value last = value::nil();
    for (const value* p = &forms; p->is_cell(); p = &p->cdr())
        last = eval(p->car());
    return last;
}

void interpreter::evaluate_arguments(const value& forms, argument_list* into)
{
    const value* p = &forms;
    for (; p->is_cell(); p = &p->cdr())
        into->add(eval(p->car()));
    if (p->is_true())
        fail_about(*this, nullptr, "bad argument list: ", forms);
}

value interpreter::called_by(const value& form)
{
    const value& head = form.car();
    if (head.is(kind::symbol)) {
        if (!head.as_symbol()->bound.is_nil())
            return head.as_symbol()->bound;
        if (!is_external(head.as_symbol()->name))
            fail_about(*this, &form, "no function definition: ", head);
        return value::external(head.as_symbol());
    }
    if (!head.is_cell())
        fail_about(*this, &form, "bad function: ", head);
    return head.car().is(kind::symbol) && head.car().as_symbol() == lambda_ ? callable(head) : eval(head);
}

value interpreter::eval_call(const value& form)
{
    check_stack();
    const value held = form; // a program may redefine the function that it stands in
    const value function = called_by(held);
    if (function.is(kind::special))
        return function.as_special()->run(*this, held.cdr());
    argument_list list;
    evaluate_arguments(held.cdr(), &list);
    call_frame frame(*this, &held);
    return apply(function, list.all());
}

value interpreter::apply(const value& function, arguments a)
{
    switch (function.type()) {
    case kind::builtin:
        return call_builtin(*function.as_builtin(), a);
    case kind::function: {
        const value held = function;
        return call_function(held.as_function(), a);
    }
    case kind::special:
        return apply_special(*function.as_special(), a);
    case kind::external:
        return call_external(function.as_symbol(), a);
    case kind::cell: {
        const value made = callable(function);
        if (made.is(kind::function))
            return call_function(made.as_function(), a);
        break;
    }
    case kind::symbol: {
        const value held = function.as_symbol()->bound;
        if (held.is_nil()) {
            if (is_external(function.as_symbol()->name))
                return call_external(function.as_symbol(), a);
            fail_about(*this, nullptr, "no function definition: ", function);
        }
        if (!held.is(kind::symbol))
            return apply(held, a);
        break;
    }
    default:
        break;
    }
    fail_about(*this, nullptr, "bad function: ", function);
}

value interpreter::call(const value& function, std::initializer_list<value> values)
{
    argument_list list;
    for (const value& v : values)
        list.add(v);
    return apply(function, list.all());
}

value interpreter::callable(const value& function)
{
    if (!function.is_cell())
        return function;
    const value& head = function.car();
    if (head.is(kind::symbol) && head.as_symbol() == lambda_)
        return make_function(nullptr, function.cdr().car(), function.cdr().cdr());
    if (head.is_list()) // the list that defun-q makes: parameters, then the body
        return make_function(nullptr, head, function.cdr());
    return function;
}

bool interpreter::is_function(const value& v) const
{
    switch (v.type()) {
    case kind::builtin:
    case kind::special:
    case kind::external:
    case kind::function:
        return true;
    case kind::cell:
        return v.car().is_list() || (v.car().is(kind::symbol) && v.car().as_symbol() == lambda_);
    case kind::symbol: {
        const value& bound = v.as_symbol()->bound;
        if (bound.is_nil())
            return is_external(v.as_symbol()->name);
        return !bound.is(kind::symbol) && is_function(bound);
    }
    default:
        return false;
    }
}

value interpreter::make_function(symbol* name, const value& parameters, const value& body)
{
    auto* made = new function_object;
    const value result = value::of(static_cast<counted*>(made));
    made->name = name;
    made->body = body;
    made->source = source_;
    made->number = ++functions_made_;
    bool local = false;
    if (!parameters.is_list())
        wrong_type("listp", parameters);
    for (const value* p = &parameters; p->is_cell(); p = &p->cdr()) {
        if (!p->car().is(kind::symbol))
            wrong_type("symbolp", p->car());
        symbol* s = p->car().as_symbol();
        if (s->name == "/" && !local)
            local = true;
        else
            (local ? made->locals : made->parameters).push_back(s);
    }
    return result;
}

value interpreter::call_builtin(const builtin& b, arguments a)
{
    check_count(*this, a.count, b.minimum, b.maximum);
    check_types(*this, b.types, a);
    return b.run(*this, a);
}

value interpreter::call_function(function_object* f, arguments a)
{
    const int wanted = static_cast<int>(f->parameters.size());
    check_count(*this, a.count, wanted, wanted);
    poll();
    check_stack();
    struct source_guard {
        const std::string*& slot;
        const std::string* before;
        ~source_guard() { slot = before; }
    } guard{source_, source_};
    source_ = f->source;
    const std::size_t mark = bindings_.size();
    for (int i = 0; i < a.count; ++i)
        bind(f->parameters[static_cast<std::size_t>(i)], a[i]);
    for (symbol* s : f->locals)
        bind(s, value::nil());
    value result = eval_body(f->body);
    unbind_to(mark);
    return result;
}

value interpreter::call_external(symbol* name, arguments a)
{
    const list_ptr list(plain_arguments(a));
    const list_ptr result = host::call_external(name->name, list.get());
    throw_kept_stop();
    poll();
    if (!result)
        fail("ADS request error");
    return value_of_plain(*this, result.get());
}

value interpreter::apply_special(const special_form& s, arguments a)
{
    const value quote = value::of(intern("QUOTE"));
    list_maker forms;
    for (int i = 0; i < a.count; ++i) {
        const bool as_it_is = s.applied == 'r' || (s.applied == 's' && i % 2 == 0);
        forms.add(as_it_is ? a[i] : cons(quote, cons(a[i], value::nil())));
    }
    const value list = forms.take();
    return s.run(*this, list);
}

void interpreter::bind(symbol* s, value v)
{
    bindings_.push_back({s, std::move(s->bound)});
    s->bound = std::move(v);
}

void interpreter::unbind_to(std::size_t mark)
{
    while (bindings_.size() > mark) {
        bindings_.back().of->bound = std::move(bindings_.back().covered);
        bindings_.pop_back();
    }
}

void interpreter::poll()
{
    throw_kept_stop();
    if (break_requested()) {
        clear_break();
        fail("Function cancelled", failure::stopped);
    }
    if (answers_ended() && !catching)
        fail("Function cancelled", failure::stopped);
}

} // namespace host::lisp
