// strings.cpp: texts, and texts of numbers.
#include <charconv>

#include "host/lisp/builtins.h"
#include "host/lisp/letters.h"
#include "host/lisp/printer.h"
#include "hostapi/ads.h"

namespace host::lisp
{

namespace
{

value concatenate(interpreter&, arguments a)
{
    std::string out;
    for (int i = 0; i < a.count; ++i)
        out += a.text(i);
    return value::text(out);
}

value length(interpreter&, arguments a)
{
    std::size_t sum = 0;
    for (int i = 0; i < a.count; ++i)
        sum += a.text(i).size();
    return value::integer(static_cast<std::int32_t>(sum));
}

value change_case(interpreter&, arguments a)
{
    std::string out = a.text(0);
    const bool down = a.given(1);
    for (char& c : out)
        c = down ? lower_letter(c) : upper_letter(c);
    return value::text(out);
}

// Counted from 1; what lies outside the text is left out.
value part(interpreter& l, arguments a)
{
    if (a.integer(1) < 1)
        l.fail("bad argument value: positive " + prin1_text(a[1]));
    if (a.count > 2 && a.integer(2) < 0)
        l.fail("bad argument value: non-negative " + prin1_text(a[2]));
    const std::string& text = a.text(0);
    const auto start = static_cast<std::size_t>(a.integer(1)) - 1;
    if (start >= text.size())
        return value::text("");
    return value::text(text.substr(start, a.count > 2 ? static_cast<std::size_t>(a.integer(2)) : text.npos));
}

value code_of(interpreter&, arguments a)
{
    return value::integer(a.text(0).empty() ? 0 : static_cast<unsigned char>(a.text(0)[0]));
}

value character(interpreter& l, arguments a)
{
    const std::int32_t code = a.integer(0);
    if (code < 0 || code > 255)
        l.fail("bad argument value: character code " + prin1_text(a[0]));
    const char c = static_cast<char>(code);
    return value::text(code ? std::string_view(&c, 1) : std::string_view());
}

// Where a number's text begins: behind blanks and a plus sign.
std::string_view number_part(const std::string& text)
{
    std::string_view t = text;
    const std::size_t first = t.find_first_not_of(" \t\r\n");
    t.remove_prefix(first == t.npos ? t.size() : first);
    if (t.size() > 1 && t[0] == '+' && t[1] != '-')
        t.remove_prefix(1);
    return t;
}

// The number that a text begins with; 0 when it begins with none.
value to_real(interpreter&, arguments a)
{
    const std::string_view t = number_part(a.text(0));
    double number = 0;
    if (!t.empty() && t.find_first_of("0123456789.") <= 1)
        std::from_chars(t.data(), t.data() + t.size(), number);
    return value::real(number);
}

value to_integer(interpreter&, arguments a)
{
    std::string_view t = number_part(a.text(0));
    const bool negative = !t.empty() && t[0] == '-';
    if (negative)
        t.remove_prefix(1);
    std::uint32_t number = 0;
    for (const char c : t) {
        if (c < '0' || c > '9')
            break;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return value::integer(static_cast<std::int32_t>(negative ? 0u - number : number));
}

value integer_text(interpreter&, arguments a)
{
    return value::text(std::to_string(a.integer(0)));
}

int unit_of(arguments a, int i)
{
    return i < a.count ? a.integer(i) : -1;
}

value length_text(interpreter&, arguments a)
{
    char out[ADS_TEXT_SIZE];
    if (acdbRToS(a.number(0), unit_of(a, 1), unit_of(a, 2), out) != RTNORM)
        return value::nil();
    return value::text(out);
}

value angle_text(interpreter&, arguments a)
{
    char out[ADS_TEXT_SIZE];
    if (acdbAngToS(a.number(0), unit_of(a, 1), unit_of(a, 2), out) != RTNORM)
        return value::nil();
    return value::text(out);
}

value length_of_text(interpreter&, arguments a)
{
    double out = 0;
    return acdbDisToF(a.text(0).c_str(), unit_of(a, 1), &out) == RTNORM ? value::real(out) : value::nil();
}

value angle_of_text(interpreter&, arguments a)
{
    double out = 0;
    return acdbAngToF(a.text(0).c_str(), unit_of(a, 1), &out) == RTNORM ? value::real(out) : value::nil();
}

value matches(interpreter& l, arguments a)
{
    return l.truth(acutWcMatch(a.text(0).c_str(), a.text(1).c_str()) == RTNORM);
}

constexpr builtin TABLE[] = {
    {"strcat", concatenate, 0, -1, "s"},   {"strlen", length, 0, -1, "s"},
    {"strcase", change_case, 1, 2, "s."},  {"substr", part, 2, 3, "si"},
    {"ascii", code_of, 1, 1, "s"},         {"chr", character, 1, 1, "i"},
    {"atof", to_real, 1, 1, "s"},          {"atoi", to_integer, 1, 1, "s"},
    {"itoa", integer_text, 1, 1, "i"},     {"rtos", length_text, 1, 3, "ni"},
    {"angtos", angle_text, 1, 3, "ni"},    {"distof", length_of_text, 1, 2, "si"},
    {"angtof", angle_of_text, 1, 2, "si"}, {"wcmatch", matches, 2, 2, "s"},
};

} // namespace

std::span<const builtin> string_table()
{
    return TABLE;
}

} // namespace host::lisp
