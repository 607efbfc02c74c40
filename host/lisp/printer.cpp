// printer.cpp: values as text.
#include "host/lisp/printer.h"

#include <cstdio>

#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/lisp/interpreter.h"

namespace host::lisp
{

namespace
{

class printer
{
public:
    printer(bool quoted, std::size_t limit) : quoted_(quoted), limit_(limit) {}
    void print(const value& v);
    std::string out;
    bool full() const { return out.size() > limit_; }

private:
    void list(const value& v);
    void object(const char* what, int number, std::string_view name);
    bool quoted_;
    std::size_t limit_;
};

// A number in place of an address: two runs of a program print the same.
int number_of(std::string_view name)
{
    std::uint32_t sum = 2166136261u;
    for (const char c : name)
        sum = (sum ^ static_cast<unsigned char>(c)) * 16777619u;
    return static_cast<int>(sum & 0xffffff);
}

void printer::object(const char* what, int number, std::string_view name)
{
    char text[64];
    std::snprintf(text, sizeof text, "#<%s @%08x ", what, static_cast<unsigned>(number));
    out.append(text).append(name).append(">");
}

void printer::list(const value& v)
{
    check_stack();
    out += '(';
    const value* p = &v;
    for (bool first = true; p->is_cell() && !full(); p = &p->cdr(), first = false) {
        if (!first)
            out += ' ';
        print(p->car());
    }
    if (full())
        return;
    if (p->is_true()) {
        out += " . ";
        print(*p);
    }
    out += ')';
}

void printer::print(const value& v)
{
    switch (v.type()) {
    case kind::unset:
    case kind::nil:
        out += "nil";
        break;
    case kind::integer:
        out += std::to_string(v.as_integer());
        break;
    case kind::real:
        out += lisp_real(v.as_real());
        break;
    case kind::entity:
        out += printed_name(v.name());
        break;
    case kind::symbol:
        out += v.as_symbol()->name;
        break;
    case kind::builtin:
        object("SUBR", number_of(v.as_builtin()->name), upper(v.as_builtin()->name));
        break;
    case kind::special:
        object("SUBR", number_of(v.as_special()->name), upper(v.as_special()->name));
        break;
    case kind::external:
        object("EXRXSUBR", number_of(v.as_symbol()->name), v.as_symbol()->name);
        break;
    case kind::string:
        out += quoted_ ? lisp_string(v.as_string()) : v.as_string();
        break;
    case kind::cell:
        list(v);
        break;
    case kind::function:
        object("USUBR", v.as_function()->number,
               v.as_function()->name ? v.as_function()->name->name : "-lambda-");
        break;
    case kind::file:
        out += "#<file " + lisp_string(v.as_file()->path) + ">";
        break;
    case kind::pickset:
        out += printed_name(v.as_pickset()->name);
        break;
    case kind::caught:
        out += "#<%catch-all-apply-error%>";
        break;
    }
}

} // namespace

std::string prin1_text(const value& v)
{
    printer p(true, std::string::npos);
    p.print(v);
    return std::move(p.out);
}

std::string princ_text(const value& v)
{
    printer p(false, std::string::npos);
    p.print(v);
    return std::move(p.out);
}

std::string short_text(const value& v, std::size_t limit)
{
    printer p(true, limit);
    p.print(v);
    if (p.full())
        p.out = p.out.substr(0, limit) + "...";
    return std::move(p.out);
}

} // namespace host::lisp
