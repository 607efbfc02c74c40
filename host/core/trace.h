// trace.h: one line for each host operation that asks, changes or answers something.
#pragma once

#include <string>
#include <string_view>

#include "hostapi/adsdef.h"

namespace host
{

// Starts writing to `path` (an empty path stops). False when it can't be opened.
bool trace_to(const std::string& path);
bool tracing();

// A line that is being put together: the name, the arguments in the order of the call, and the
// result. It is written when the object goes, so nested operations come first. Costs one test
// when there is no trace.
//
//     trace_line t("acedGetKword");
//     t.text(prompt);
//     ...
//     return t.status(result);      // " -> RTNONE"
class trace_line
{
public:
    explicit trace_line(const char* name);
    ~trace_line();
    trace_line(const trace_line&) = delete;
    trace_line& operator=(const trace_line&) = delete;

    trace_line& text(const char* value); // quoted; null is nil
    trace_line& text(std::string_view value);
    trace_line& integer(long value);
    trace_line& real(double value);
    trace_line& point(const double* value);       // three coordinates; null is nil
    trace_line& name(const std::int32_t* value);  // <Entity name: ...> or <Selection set: ...>
    trace_line& list(const resbuf* values);       // group lists as LISP prints them
    trace_line& arguments(const resbuf* values);  // bare values in one pair of parentheses
    trace_line& word(std::string_view value);     // as it stands
    trace_line& result(std::string_view printed); // " -> printed"
    int status(int code);                         // " -> RTNORM"; hands the code on

private:
    bool on_;
    std::string line_, result_;
};

// "RTNORM" and so on; the number for a code without a name.
std::string status_name(int code);
// A list as LISP prints it. `groups`: (code . value) pairs, as an entity list.
std::string printed_list(const resbuf* values, bool groups);
std::string printed_value(const resbuf& value);
std::string printed_name(const std::int32_t* name);

} // namespace host
