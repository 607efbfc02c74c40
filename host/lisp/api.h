// api.h: AutoLISP for the rest of the host. Each drawing has an interpreter of its own.
#pragma once

#include <string>
#include <string_view>

#include "host/core/resbuf.h"

namespace host
{
class document;
}

namespace host::lisp
{

enum class ending {
    done,
    error,
    quit,    // (exit), (quit)
    stopped, // answers ran out, the break key
};

struct outcome {
    ending how = ending::done;
    std::string printed;   // the last value as prin1 prints it
    std::string message;   // of an error, without "; error: "
    bool reported = false; // an *error* function of the program has dealt with it
};

// Evaluates each form of a text in turn; `name` stands in messages with the line. Errors that nothing
// caught have been printed as "; error: ..." with the chain of calls behind them.
outcome evaluate_text(document& doc, std::string_view text, const std::string& name);
// A file of forms (a path of this file system).
outcome load_program(document& doc, const std::string& path);
// As evaluate_text, announced to the editor reactors: for -e and for forms typed at the prompt.
outcome evaluate_typed(document& doc, std::string_view text);

// The value of an expression or !variable given as an answer, as a new list (null list: nil).
// False when it failed; the error has been printed.
bool answer_value(document& doc, std::string_view text, list_ptr* value);

// Whether a LISP function C:NAME is defined; and calls it with no arguments, announced to the editor
// reactors as "(C:NAME)".
bool has_command(document& doc, std::string_view name);
outcome run_command(document& doc, std::string_view name);

// Whether an expression of the drawing is being evaluated.
bool is_running(document& doc);

// New list of the value of a variable, null for nil or unset.
resbuf* variable(document& doc, std::string_view name);
void set_variable(document& doc, std::string_view name, const resbuf* value);

} // namespace host::lisp
