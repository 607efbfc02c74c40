// interpreter.h: one drawing's AutoLISP: its symbols, the evaluator and how errors travel.
//
// Scope is dynamic with shallow binding: a symbol holds its present value, and what a call covers
// waits on the binding stack. An error leaves that stack alone, so that an *error* function still
// sees the variables of the functions that were running; whoever catches the error unwinds it.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/core/document.h"
#include "host/lisp/api.h"
#include "host/lisp/objects.h"
#include "host/lisp/value.h"

namespace host::lisp
{

enum class failure {
    error,     // a fault of the program
    cancelled, // ^C at a prompt
    quit,      // (exit), (quit)
    stopped,   // the break key, or no more answers: nothing catches it on its way up
};

struct lisp_error {
    failure how = failure::error;
    std::string message; // without "; error: "
    std::string chain;   // the calls behind it, a line each
    std::string place;   // FILE:LINE of an error of the reader
};

// The arguments of a call to a built-in function; the function may change them.
struct arguments {
    value* at;
    int count;
    const value& operator[](int i) const { return at[i]; }
    bool given(int i) const { return i < count && at[i].is_true(); }
    // Typed access; the table's letters have been checked.
    std::int32_t integer(int i) const { return at[i].as_integer(); }
    double number(int i) const { return at[i].number(); }
    const std::string& text(int i) const { return at[i].as_string(); }
};

// An entry of a table of built-in functions. `types` checks the arguments by letters, the last of
// which also holds for all further arguments:
//   .  anything        n  number       i  integer      s  string     l  list or nil
//   c  list, not nil   y  symbol       e  entity name  p  selection set
//   d  point of 2 or 3 numbers         f  open file
// A capital takes nil as well.
struct builtin {
    const char* name;
    value (*run)(interpreter& l, arguments a);
    int minimum;
    int maximum; // -1: any number
    const char* types;
};

// A form that gets its arguments unevaluated. `applied` says how values are handed to it by apply
// and mapcar: 'q' each quoted, 's' every second quoted (setq), 'r' as they are.
struct special_form {
    const char* name;
    value (*run)(interpreter& l, const value& forms);
    char applied;
};

// Throws an error when the stack of this thread is nearly used up.
void check_stack();
// Name of a value's kind as (type ...) gives it; null for nil.
const char* type_name(const value& v);

// A place for a call's arguments, without the heap for the usual number.
class argument_list
{
public:
    void add(value v)
    {
        if (count_ < few)
            small_[count_] = std::move(v);
        else
            add_to_many(std::move(v));
        ++count_;
    }
    arguments all() { return {count_ > few ? many_.data() : small_, count_}; }

private:
    void add_to_many(value v);
    static constexpr int few = 6;
    value small_[few];
    std::vector<value> many_;
    int count_ = 0;
};

struct dialog_record; // dialogs.cpp

class interpreter
{
public:
    explicit interpreter(document& owner);
    ~interpreter();
    interpreter(const interpreter&) = delete;
    interpreter& operator=(const interpreter&) = delete;

    document& owner() { return owner_; }

    // ---- symbols
    symbol* intern(std::string_view name); // any case
    symbol* find(std::string_view name);   // null: never seen
    value truth(bool yes) const { return yes ? value::of(t_) : value::nil(); }
    value t() const { return value::of(t_); }
    // The value that prints as nothing, which (princ) gives.
    value silence() const { return value::of(silent_); }
    const std::unordered_map<std::string_view, symbol*>& symbols() const { return names_; }

    // ---- evaluation
    value eval(const value& form);
    value eval_body(const value& forms); // each in turn; the last one's value
    value apply(const value& function, arguments a);
    value call(const value& function, std::initializer_list<value> values);
    // A function for what may be called as one: a lambda list becomes a function once.
    value callable(const value& function);
    bool is_function(const value& v) const;
    value make_function(symbol* name, const value& parameters, const value& body);
    void set(symbol* s, value v) { s->bound = std::move(v); }

    // ---- bindings
    std::size_t binding_mark() const { return bindings_.size(); }
    void bind(symbol* s, value v);
    void unbind_to(std::size_t mark);

    // ---- errors
    [[noreturn]] void fail(std::string message, failure how = failure::error);
    [[noreturn]] void wrong_type(const char* wanted, const value& got);
    // "Function cancelled": of the program, or of the whole run when the answers have ended.
    [[noreturn]] void cancel();
    // To be called in every loop: ends the run on the break key or when the answers have run out.
    void poll();
    // The calls at hand, innermost first, a line each: ";   FILE:LINE: (FORM)".
    std::string backtrace() const;

    // Runs something as a whole of its own: an error calls *error* or is printed, bindings are
    // put back.
    outcome run(const std::function<value()>& work);
    // The forms of a text; the last one's value. A syntax error comes after the forms before it have
    // been evaluated.
    value evaluate_forms(std::string_view text, const std::string& name);

    // What ran out while a host function that can't be thrown through was running.
    void keep_stop(const lisp_error& e);
    void throw_kept_stop();

    // The selection set value for a name, the same object for the same name.
    value pickset(const std::int32_t* name);
    void forget_pickset(const std::int32_t* name);

    // ---- what families of built-ins keep
    std::vector<std::unique_ptr<dialog_record>> dialogs; // the innermost last
    value gripped[2] = {value::nil(), value::nil()};     // sssetfirst
    std::string typed_ahead;                             // rest of a line for read-char
    value last_answer = value::nil();                    // keeps a selection set that answers a prompt
    int runs = 0;                                        // calls of run that have not come back
    bool catching = false;                               // in the body of an *error* function

    // The call at hand and those around it, on the stack of this thread.
    struct call_frame {
        interpreter& l;
        call_frame* up;
        const value* form;
        const std::string* source;
        bool whole; // a form of a text, which is a call of its own too
        call_frame(interpreter& in, const value* f, bool is_whole = false)
            : l(in), up(in.frame_), form(f), source(in.source_), whole(is_whole)
        {
            in.frame_ = this;
        }
        ~call_frame()
        {
            l.frame_ = up;
            l.source_ = source;
        }
        call_frame(const call_frame&) = delete;
        call_frame& operator=(const call_frame&) = delete;
    };

private:
    struct binding {
        symbol* of;
        value covered;
    };

    void define_all();
    value eval_call(const value& form);
    value called_by(const value& form); // what stands at the head of a call
    value call_builtin(const builtin& b, arguments a);
    value call_function(function_object* f, arguments a);
    value call_external(symbol* name, arguments a);
    value apply_special(const special_form& s, arguments a);
    void evaluate_arguments(const value& forms, argument_list* into);
    outcome conclude(lisp_error& e);

    document& owner_;
    std::deque<symbol> all_symbols_;
    std::unordered_map<std::string_view, symbol*> names_;
    std::vector<binding> bindings_;
    std::set<std::string> sources_;
    std::unordered_map<std::int32_t, pickset_object*> picksets_;
    std::unique_ptr<lisp_error> kept_stop_;
    call_frame* frame_ = nullptr;
    const std::string* source_ = nullptr;
    int functions_made_ = 0;
    symbol *t_ = nullptr, *silent_ = nullptr, *error_ = nullptr, *lambda_ = nullptr;

    friend struct call_frame;
};

interpreter& interpreter_of(document& doc);

} // namespace host::lisp
