// api.cpp: AutoLISP as the rest of the host uses it, and the module's calls that reach into it.
#include "host/lisp/api.h"

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/paths.h"
#include "host/lisp/convert.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

outcome evaluate_text(document& doc, std::string_view text, const std::string& name)
{
    interpreter& l = interpreter_of(doc);
    return l.run([&] { return l.evaluate_forms(text, name); });
}

outcome load_program(document& doc, const std::string& path)
{
    interpreter& l = interpreter_of(doc);
    const std::optional<std::string> text = read_whole(path);
    return l.run([&] {
        if (!text)
            l.fail("LOAD failed: " + lisp_string(program_path(path)));
        return l.evaluate_forms(*text, program_path(file_name_of(path)));
    });
}

outcome evaluate_typed(document& doc, std::string_view text)
{
    const std::string_view trimmed_text = trimmed(text);
    tell_lisp(lisp_event::will_start, trimmed_text.substr(0, trimmed_text.find('\n')));
    outcome result = evaluate_text(doc, text, "");
    tell_lisp(result.how == ending::done ? lisp_event::ended : lisp_event::cancelled);
    return result;
}

bool answer_value(document& doc, std::string_view text, list_ptr* result)
{
    interpreter& l = interpreter_of(doc);
    text = trimmed(text);
    if (text.starts_with('!'))
        text.remove_prefix(1);
    const outcome o = l.run([&] {
        const value v = l.evaluate_forms(text, "");
        result->reset(v.is_nil() ? nullptr : plain_of(v));
        l.last_answer = v;
        return v;
    });
    return o.how == ending::done;
}

bool has_command(document& doc, std::string_view name)
{
    interpreter& l = interpreter_of(doc);
    const std::string full = "C:" + std::string(name);
    const symbol* s = l.find(full);
    return s && !s->bound.is_nil() ? l.is_function(s->bound) : is_external(full);
}

outcome run_command(document& doc, std::string_view name)
{
    interpreter& l = interpreter_of(doc);
    tell_lisp(lisp_event::will_start, "(C:" + upper(name) + ")");
    const outcome result = l.run([&] {
        const value form = cons(value::of(l.intern("C:" + std::string(name))), value::nil());
        return l.eval(form);
    });
    tell_lisp(result.how == ending::done ? lisp_event::ended : lisp_event::cancelled);
    return result;
}

bool is_running(document& doc)
{
    return interpreter_of(doc).runs > 0;
}

resbuf* variable(document& doc, std::string_view name)
{
    interpreter& l = interpreter_of(doc);
    const symbol* s = l.find(name);
    if (!s || s->bound.is_nil())
        return nullptr;
    try {
        return plain_of(s->bound);
    } catch (const lisp_error&) {
        return nullptr; // nested too deeply to be a result list
    }
}

void set_variable(document& doc, std::string_view name, const resbuf* list)
{
    interpreter& l = interpreter_of(doc);
    try {
        l.set(l.intern(name), value_of_plain(l, list));
    } catch (const lisp_error&) {
        l.set(l.intern(name), value::nil());
    }
}

namespace
{

// acedInvoke of a function that AutoLISP defines. Its errors are reported here; the module is told of
// the failure. What ends the whole run goes on when the module has returned.
int invoke(const resbuf* call, resbuf** result)
{
    interpreter& l = interpreter_of(current_document());
    *result = nullptr;
    symbol* s = l.find(call->resval.rstring);
    if (!s || !l.is_function(value::of(s)))
        return RTERROR;
    const outcome o = l.run([&] {
        const value list = list_of_plain(l, call->rbnext);
        argument_list arguments_of_call;
        for (const value* p = &list; p->is_cell(); p = &p->cdr())
            arguments_of_call.add(p->car());
        const value v = l.apply(value::of(s), arguments_of_call.all());
        *result = plain_of(v);
        return v;
    });
    return o.how == ending::done ? RTNORM : RTERROR;
}

[[maybe_unused]] const bool invoker_is_set = (set_lisp_invoker(invoke), true);

} // namespace

} // namespace host::lisp

using namespace host;

int acedGetSym(const char* name, resbuf** value)
{
    if (!name || !value || !has_document())
        return RTERROR;
    *value = lisp::variable(current_document(), name); // nil and unset alike are no error: null
    return RTNORM;
}

int acedPutSym(const char* name, const resbuf* value)
{
    trace_line line("acedPutSym");
    line.text(name);
    if (!value)
        line.word("nil");
    else if (value->rbnext)
        line.arguments(value);
    else
        line.word(printed_value(*value));
    if (!name || !*name || !has_document())
        return line.status(RTERROR);
    lisp::set_variable(current_document(), name, value);
    return line.status(RTNORM);
}
