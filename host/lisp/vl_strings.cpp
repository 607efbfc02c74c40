// vl_strings.cpp: searching, trimming and taking texts apart. Positions count from 0.
#include <algorithm>

#include "host/lisp/builtins.h"
#include "host/lisp/letters.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

std::size_t position_argument(interpreter& l, arguments a, int i)
{
    if (i >= a.count || a[i].is_nil())
        return 0;
    if (a.integer(i) < 0)
        l.fail("bad argument value: non-negative " + prin1_text(a[i]));
    return static_cast<std::size_t>(a.integer(i));
}

value position_value(std::size_t at)
{
    return at == std::string::npos ? value::nil() : value::integer(static_cast<std::int32_t>(at));
}

value search(interpreter& l, arguments a)
{
    const std::size_t start = position_argument(l, a, 2);
    if (start > a.text(1).size())
        return value::nil();
    return position_value(a.text(1).find(a.text(0), start));
}

// The first occurrence at or behind a position.
value replace_first(interpreter& l, arguments a)
{
    const std::string& text = a.text(2);
    const std::size_t start = position_argument(l, a, 3);
    const std::size_t at = start > text.size() ? text.npos : text.find(a.text(1), start);
    if (at == text.npos)
        return a[2];
    return value::text(text.substr(0, at) + a.text(0) + text.substr(at + a.text(1).size()));
}

// Characters of the first set become those of the second; the second's last stands for missing ones.
value translate(interpreter&, arguments a)
{
    const std::string &from = a.text(0), &to = a.text(1);
    std::string out = a.text(2);
    if (to.empty())
        return a[2];
    for (char& c : out) {
        const std::size_t at = from.find(c);
        if (at != from.npos)
            c = to[std::min(at, to.size() - 1)];
    }
    return value::text(out);
}

value trimmed(const std::string& set, const std::string& text, bool left, bool right)
{
    std::size_t first = 0, end = text.size();
    if (left)
        first = std::min(text.find_first_not_of(set), text.size());
    if (right) {
        const std::size_t last = text.find_last_not_of(set);
        end = last == text.npos ? 0 : last + 1;
    }
    return value::text(first < end ? text.substr(first, end - first) : "");
}
value trim(interpreter&, arguments a)
{
    return trimmed(a.text(0), a.text(1), true, true);
}
value trim_left(interpreter&, arguments a)
{
    return trimmed(a.text(0), a.text(1), true, false);
}
value trim_right(interpreter&, arguments a)
{
    return trimmed(a.text(0), a.text(1), false, true);
}

value find_code(interpreter& l, arguments a)
{
    const std::string& text = a.text(1);
    const std::size_t start = position_argument(l, a, 2);
    const char wanted = static_cast<char>(a.integer(0));
    if (start > text.size() || a.integer(0) < 0 || a.integer(0) > 255)
        return value::nil();
    if (!a.given(3))
        return position_value(text.find(wanted, start));
    const std::size_t at = text.rfind(wanted);
    return position_value(at != text.npos && at >= start ? at : text.npos);
}

value code_at(interpreter& l, arguments a)
{
    const std::size_t at = position_argument(l, a, 1);
    if (at >= a.text(0).size())
        l.fail("bad argument value: string position " + prin1_text(a[1]));
    return value::integer(static_cast<unsigned char>(a.text(0)[at]));
}

// Length of what two texts have in common from given positions on.
value common_length(interpreter& l, arguments a)
{
    const std::string &x = a.text(0), &y = a.text(1);
    const std::size_t at_x = position_argument(l, a, 2), at_y = position_argument(l, a, 3);
    const bool any_case = a.given(4);
    std::size_t n = 0;
    while (at_x + n < x.size() && at_y + n < y.size()) {
        const char c = x[at_x + n], d = y[at_y + n];
        if (any_case ? upper_letter(c) != upper_letter(d) : c != d)
            break;
        ++n;
    }
    return value::integer(static_cast<std::int32_t>(n));
}

value to_codes(interpreter&, arguments a)
{
    list_maker out;
    for (const char c : a.text(0))
        out.add(value::integer(static_cast<unsigned char>(c)));
    return out.take();
}

value of_codes(interpreter& l, arguments a)
{
    std::string out;
    for (const value* p = &a[0]; p->is_cell(); p = &p->cdr()) {
        const value& code = p->car();
        if (!code.is(kind::integer))
            l.wrong_type("fixnump:", code);
        if (code.as_integer() < 1 || code.as_integer() > 255)
            l.fail("bad argument value: character code " + prin1_text(code));
        out += static_cast<char>(code.as_integer());
    }
    return value::text(out);
}

value prin1_string(interpreter&, arguments a)
{
    return value::text(prin1_text(a[0]));
}
value princ_string(interpreter&, arguments a)
{
    return value::text(princ_text(a[0]));
}

constexpr builtin TABLE[] = {
    {"vl-string-search", search, 2, 3, "ssI"},
    {"vl-string-subst", replace_first, 3, 4, "sssI"},
    {"vl-string-translate", translate, 3, 3, "s"},
    {"vl-string-trim", trim, 2, 2, "s"},
    {"vl-string-left-trim", trim_left, 2, 2, "s"},
    {"vl-string-right-trim", trim_right, 2, 2, "s"},
    {"vl-string-position", find_code, 2, 4, "isI."},
    {"vl-string-elt", code_at, 2, 2, "si"},
    {"vl-string-mismatch", common_length, 2, 5, "ssII."},
    {"vl-string->list", to_codes, 1, 1, "s"},
    {"vl-list->string", of_codes, 1, 1, "l"},
    {"vl-prin1-to-string", prin1_string, 1, 1, "."},
    {"vl-princ-to-string", princ_string, 1, 1, "."},
};

} // namespace

std::span<const builtin> vl_string_table()
{
    return TABLE;
}

} // namespace host::lisp
