// interpreter.cpp: symbols, and what happens to errors.
#include "host/lisp/interpreter.h"

#include <new>
#include <stdexcept>

#include "host/core/console.h"
#include "host/core/context.h"
#include "host/core/text.h"
#include "host/lisp/builtins.h"
#include "host/lisp/dialogs.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"

namespace host::lisp
{

interpreter::interpreter(document& owner) : owner_(owner)
{
    t_ = intern("T");
    t_->bound = value::of(t_);
    silent_ = intern("");
    error_ = intern("*ERROR*");
    error_->bound = value::nil();
    lambda_ = intern("LAMBDA");
    intern("PI")->bound = value::real(3.14159265358979323846);
    intern("PAUSE")->bound = value::text("\\");
    for (const std::span<const builtin> table : builtin_tables())
        for (const builtin& b : table)
            intern(b.name)->bound = value::of(&b);
    for (const special_form& s : special_forms())
        intern(s.name)->bound = value::of(&s);
}

interpreter::~interpreter()
{
    for (auto& [number, set] : picksets_)
        set->owner = nullptr; // the sets go with the drawing
    unbind_to(0);
    gripped[0] = gripped[1] = last_answer = value::nil();
    for (symbol& s : all_symbols_)
        s.bound = value();
}

interpreter& interpreter_of(document& doc)
{
    return doc.part<interpreter>();
}

symbol* interpreter::find(std::string_view name)
{
    const auto found = names_.find(upper(name));
    return found == names_.end() ? nullptr : found->second;
}

symbol* interpreter::intern(std::string_view name)
{
    std::string printed = upper(name);
    const auto found = names_.find(printed);
    if (found != names_.end())
        return found->second;
    all_symbols_.push_back({std::move(printed), {}});
    symbol* made = &all_symbols_.back();
    names_.emplace(made->name, made);
    return made;
}

// ---- selection sets

pickset_object::pickset_object(interpreter& l, const std::int32_t* set)
    : counted(kind::pickset), name{set[0], set[1]}, owner(&l)
{
}

pickset_object::~pickset_object()
{
    if (!owner)
        return;
    owner->forget_pickset(name);
    acedSSFree(name);
}

value interpreter::pickset(const std::int32_t* name)
{
    const auto found = picksets_.find(name[0]);
    if (found != picksets_.end())
        return value::of(static_cast<counted*>(found->second));
    auto* made = new pickset_object(*this, name);
    picksets_[name[0]] = made;
    return value::of(static_cast<counted*>(made));
}

void interpreter::forget_pickset(const std::int32_t* name)
{
    picksets_.erase(name[0]);
}

// ---- errors

void interpreter::fail(std::string message, failure how)
{
    throw lisp_error{how, std::move(message), how == failure::error ? backtrace() : std::string(), {}};
}

void interpreter::wrong_type(const char* wanted, const value& got)
{
    fail(std::string("bad argument type: ") + wanted + " " + short_text(got, 60));
}

void interpreter::cancel()
{
    fail("Function cancelled", answers_ended() ? failure::stopped : failure::cancelled);
}

// A recursion is one line with its count; the middle of a long chain is left out.
std::string interpreter::backtrace() const
{
    constexpr std::size_t innermost = 10, outermost = 3;
    struct entry {
        const call_frame* frame;
        int count;
    };
    std::vector<entry> calls;
    for (const call_frame* f = frame_; f; f = f->up) {
        const bool again = !calls.empty() && f->form->is_cell() && calls.back().frame->form->is_cell() &&
                           f->form->as_cell() == calls.back().frame->form->as_cell();
        if (!again)
            calls.push_back({f, 1});
        else if (!f->whole)
            ++calls.back().count;
    }
    std::string out;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (i == innermost && calls.size() > innermost + outermost + 1) {
            const std::size_t left_out = calls.size() - innermost - outermost;
            out += ";   ... " + std::to_string(left_out) + " more calls\n";
            i += left_out;
        }
        const call_frame* f = calls[i].frame;
        out += ";   ";
        if (f->source && f->form->is_cell() && f->form->as_cell()->line)
            out += *f->source + ":" + std::to_string(f->form->as_cell()->line) + ": ";
        out += short_text(*f->form, 70);
        if (calls[i].count > 1)
            out += "  [" + std::to_string(calls[i].count) + " calls]";
        out += "\n";
    }
    return out;
}

void interpreter::keep_stop(const lisp_error& e)
{
    if (!kept_stop_)
        kept_stop_ = std::make_unique<lisp_error>(e);
}

void interpreter::throw_kept_stop()
{
    if (!kept_stop_)
        return;
    const lisp_error e = *kept_stop_;
    kept_stop_.reset();
    throw lisp_error(e);
}

namespace
{

void print_error(const lisp_error& e)
{
    history_line("; error: " + e.message);
    if (!e.place.empty())
        history_line(";   " + e.place + ": " + e.message);
    if (e.how == failure::error && !e.chain.empty())
        history(e.chain);
}

} // namespace

// Calls the program's *error* function, with the bindings still as they were where it failed, or prints.
static ending ending_of(failure how)
{
    return how == failure::quit ? ending::quit : how == failure::stopped ? ending::stopped : ending::error;
}

outcome interpreter::conclude(lisp_error& e)
{
    outcome result;
    result.how = ending_of(e.how);
    result.message = e.place.empty() ? e.message : e.place + ": " + e.message;
    const value handler = error_->bound;
    if (catching || !is_function(handler)) {
        print_error(e);
        return result;
    }
    catching = true;
    try {
        call(handler, {value::text(e.message)});
        result.reported = true;
    } catch (const lisp_error& second) {
        if (second.how == failure::error || second.how == failure::cancelled)
            print_error(second);
        else
            result.how = ending_of(second.how);
    }
    catching = false;
    return result;
}

outcome interpreter::run(const std::function<value()>& work)
{
    const std::size_t mark = bindings_.size();
    const std::string* const source = source_;
    if (!frame_)
        kept_stop_.reset();
    outcome result;
    const context_scope here(run_context::document);
    ++runs;
    const auto put_back = [&] {
        --runs;
        unbind_to(mark);
        source_ = source;
    };
    try {
        result.printed = prin1_text(work());
    } catch (lisp_error& e) {
        result = conclude(e);
    } catch (const std::bad_alloc&) {
        lisp_error e{failure::error, "insufficient memory", {}, {}};
        result = conclude(e);
    } catch (const std::length_error&) {
        lisp_error e{failure::error, "string too long", {}, {}};
        result = conclude(e);
    }
    put_back();
    if ((result.how == ending::stopped || result.how == ending::quit) && frame_ && !catching)
        keep_stop({failure::stopped, "Function cancelled", {}, {}});
    return result;
}

value interpreter::evaluate_forms(std::string_view text, const std::string& name)
{
    struct source_guard {
        const std::string*& slot;
        const std::string* before;
        ~source_guard() { slot = before; }
    } guard{source_, source_};
    source_ = name.empty() ? nullptr : &*sources_.insert(name).first;
    if (text.starts_with("\xEF\xBB\xBF")) // editors mark files so; within a program it is a symbol's
        text.remove_prefix(3);
    reader forms(*this, text, name);
    value form, last = value::nil();
    for (;;) {
        try {
            if (!forms.next(&form))
                return last;
        } catch (lisp_error& e) {
            e.chain = backtrace();
            throw;
        }
        call_frame frame(*this, &form, true);
        last = eval(form);
    }
}

} // namespace host::lisp
