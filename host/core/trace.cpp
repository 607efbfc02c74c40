// trace.cpp: the trace file and the printing of lists in it.
#include "host/core/trace.h"

#include <cstdio>

#include "host/core/console.h"
#include "host/core/resbuf.h"
#include "host/core/text.h"

namespace host
{

namespace
{

std::FILE* trace_file = nullptr;

struct status_text {
    int code;
    const char* name;
};
constexpr status_text statuses[] = {
    {RTNORM, "RTNORM"}, {RTNONE, "RTNONE"}, {RTERROR, "RTERROR"}, {RTCAN, "RTCAN"},
    {RTREJ, "RTREJ"},   {RTFAIL, "RTFAIL"}, {RTKWORD, "RTKWORD"},
};

bool opens(int code)
{
    return code == RTLB;
}
bool closes(int code)
{
    return code == RTLE;
}

// Group lists: extended data stands nested as (-3 ("APP" (1000 . "x"))), as LISP has it.
std::string printed_groups(const resbuf* node)
{
    std::string out = "(";
    bool in_data = false, in_application = false;
    const flat_points flat = flat_points_of(node);
    for (; node; node = node->rbnext) {
        if (out.size() > 1)
            out += ' ';
        if (node->restype == -3) {
            out += "(-3";
            in_data = true;
        } else if (in_data && node->restype == 1001) {
            if (in_application) {
                out.pop_back();
                out += ") ";
            }
            out += "(" + lisp_string(node->resval.rstring ? node->resval.rstring : "");
            in_application = true;
        } else {
            const bool is_point = type_of_code(node->restype) == value_type::point;
            const std::string value = is_point
                                          ? lisp_point(node->resval.rpoint, flat.has(node->restype) ? 2 : 3)
                                          : printed_value(*node);
            out +=
                "(" + std::to_string(node->restype) + (is_point ? " " + value.substr(1) : " . " + value + ")");
        }
    }
    if (in_application)
        out += ")";
    if (in_data)
        out += ")";
    return out + ")";
}

std::string printed_plain(const resbuf* node)
{
    std::string out;
    bool start = true;
    for (; node; node = node->rbnext) {
        if (!start && !closes(node->restype))
            out += ' ';
        if (opens(node->restype))
            out += "(";
        else if (closes(node->restype))
            out += ")";
        else if (node->restype == RTDOTE)
            out += ".";
        else
            out += printed_value(*node);
        start = opens(node->restype);
    }
    return out;
}

} // namespace

bool trace_to(const std::string& path)
{
    if (trace_file)
        std::fclose(trace_file);
    trace_file = path.empty() ? nullptr : std::fopen(path.c_str(), "w");
    return path.empty() || trace_file;
}

bool tracing()
{
    return trace_file != nullptr;
}

std::string status_name(int code)
{
    for (const status_text& s : statuses)
        if (s.code == code)
            return s.name;
    return std::to_string(code);
}

std::string printed_name(const std::int32_t* name)
{
    // A selection set's second word is -1; an entity's is the number of its drawing.
    char text[64];
    if (name[1] == -1)
        std::snprintf(text, sizeof text, "<Selection set: %x>", static_cast<unsigned>(name[0]));
    else
        std::snprintf(text, sizeof text, "<Entity name: %x>", static_cast<unsigned>(name[0]));
    return text;
}

std::string printed_value(const resbuf& node)
{
    switch (type_of_code(node.restype)) {
    case value_type::real:
        return lisp_real(node.resval.rreal);
    case value_type::point:
        return lisp_point(node.resval.rpoint, node.restype == RTPOINT ? 2 : 3);
    case value_type::int16:
        return std::to_string(node.resval.rint);
    case value_type::int32:
        return std::to_string(node.resval.rlong);
    case value_type::text:
        return node.resval.rstring ? lisp_string(node.resval.rstring) : "nil";
    case value_type::name:
        return printed_name(node.resval.rlname);
    case value_type::binary:
        return "<" + std::to_string(node.resval.rbinary.clen) + " bytes>";
    case value_type::none:
        break;
    }
    switch (node.restype) {
    case RTT:
        return "T";
    case RTVOID:
        return "";
    case RTNIL:
    case RTNONE:
        return "nil";
    default:
        return std::to_string(node.restype);
    }
}

std::string printed_list(const resbuf* values, bool groups)
{
    if (!values)
        return "nil";
    return groups ? printed_groups(values) : "(" + printed_plain(values) + ")";
}

trace_line::trace_line(const char* name) : on_(tracing())
{
    if (on_)
        line_ = name;
}

trace_line::~trace_line()
{
    if (!on_ || !trace_file)
        return;
    std::string line = utf8_of(line_);
    if (!result_.empty())
        line += " -> " + utf8_of(result_);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), trace_file);
    std::fflush(trace_file);
}

trace_line& trace_line::word(std::string_view value)
{
    if (on_)
        line_.append(" ").append(value);
    return *this;
}

trace_line& trace_line::text(const char* value)
{
    return on_ ? word(value ? lisp_string(value) : "nil") : *this;
}
trace_line& trace_line::text(std::string_view value)
{
    return on_ ? word(lisp_string(value)) : *this;
}
trace_line& trace_line::integer(long value)
{
    return on_ ? word(std::to_string(value)) : *this;
}
trace_line& trace_line::real(double value)
{
    return on_ ? word(lisp_real(value)) : *this;
}
trace_line& trace_line::point(const double* value)
{
    return on_ ? word(value ? lisp_point(value) : "nil") : *this;
}
trace_line& trace_line::name(const std::int32_t* value)
{
    return on_ ? word(value ? printed_name(value) : "nil") : *this;
}
trace_line& trace_line::list(const resbuf* values)
{
    return on_ ? word(printed_list(values, true)) : *this;
}
trace_line& trace_line::arguments(const resbuf* values)
{
    return on_ ? word(printed_list(values, false)) : *this;
}

trace_line& trace_line::result(std::string_view printed)
{
    if (on_)
        result_ = printed;
    return *this;
}

int trace_line::status(int code)
{
    if (on_)
        result_ = status_name(code);
    return code;
}

} // namespace host
