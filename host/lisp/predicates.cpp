// predicates.cpp: comparisons and tests of values.
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

// Numbers by value, texts by their bytes, all else by identity.
bool equal_values(const value& a, const value& b)
{
    return a.is_number() && b.is_number() ? a.number() == b.number() : same(a, b);
}

// -1, 0 or 1; an error for values without an order.
int order(interpreter& l, const value& a, const value& b)
{
    if (a.is_number() && b.is_number())
        return a.number() < b.number() ? -1 : a.number() > b.number();
    if (a.is_string() && b.is_string())
        return a.as_string().compare(b.as_string());
    l.fail("bad argument type for compare: " + short_text(a, 40) + " " + short_text(b, 40));
}

template <class Holds>
value each_pair(interpreter& l, arguments a, Holds holds)
{
    for (int i = 0; i + 1 < a.count; ++i)
        if (!holds(a[i], a[i + 1]))
            return value::nil();
    return l.t();
}

value number_equal(interpreter& l, arguments a)
{
    return each_pair(l, a, equal_values);
}
value number_unequal(interpreter& l, arguments a)
{
    return each_pair(l, a, [](const value& x, const value& y) { return !equal_values(x, y); });
}
value less(interpreter& l, arguments a)
{
    return each_pair(l, a, [&](const value& x, const value& y) { return order(l, x, y) < 0; });
}
value greater(interpreter& l, arguments a)
{
    return each_pair(l, a, [&](const value& x, const value& y) { return order(l, x, y) > 0; });
}
value at_most(interpreter& l, arguments a)
{
    return each_pair(l, a, [&](const value& x, const value& y) { return order(l, x, y) <= 0; });
}
value at_least(interpreter& l, arguments a)
{
    return each_pair(l, a, [&](const value& x, const value& y) { return order(l, x, y) >= 0; });
}

value eq(interpreter& l, arguments a)
{
    return l.truth(same(a[0], a[1]));
}
value equal_fuzz(interpreter& l, arguments a)
{
    return l.truth(equal(a[0], a[1], a.count > 2 ? a.number(2) : 0));
}
value is_null(interpreter& l, arguments a)
{
    return l.truth(a[0].is_nil());
}
value is_atom(interpreter& l, arguments a)
{
    return l.truth(!a[0].is_cell());
}
value is_list(interpreter& l, arguments a)
{
    return l.truth(a[0].is_list());
}
value is_cell(interpreter& l, arguments a)
{
    return l.truth(a[0].is_cell());
}
value is_number(interpreter& l, arguments a)
{
    return l.truth(a[0].is_number());
}
value is_symbol(interpreter& l, arguments a)
{
    return l.truth(a[0].is(kind::symbol) || a[0].is_nil());
}
value is_negative(interpreter& l, arguments a)
{
    return l.truth(a.number(0) < 0);
}
value is_zero(interpreter& l, arguments a)
{
    return l.truth(a.number(0) == 0);
}
value is_bound(interpreter& l, arguments a)
{
    return l.truth(a[0].is(kind::symbol) && l.eval(a[0]).is_true());
}
value type_of(interpreter& l, arguments a)
{
    const char* name = type_name(a[0]);
    return name ? value::of(l.intern(name)) : value::nil();
}

constexpr builtin TABLE[] = {
    {"=", number_equal, 1, -1, "."},
    {"/=", number_unequal, 1, -1, "."},
    {"<", less, 1, -1, "."},
    {">", greater, 1, -1, "."},
    {"<=", at_most, 1, -1, "."},
    {">=", at_least, 1, -1, "."},
    {"eq", eq, 2, 2, "."},
    {"equal", equal_fuzz, 2, 3, "..n"},
    {"not", is_null, 1, 1, "."},
    {"null", is_null, 1, 1, "."},
    {"atom", is_atom, 1, 1, "."},
    {"listp", is_list, 1, 1, "."},
    {"vl-consp", is_cell, 1, 1, "."},
    {"numberp", is_number, 1, 1, "."},
    {"vl-symbolp", is_symbol, 1, 1, "."},
    {"minusp", is_negative, 1, 1, "n"},
    {"zerop", is_zero, 1, 1, "n"},
    {"boundp", is_bound, 1, 1, "."},
    {"type", type_of, 1, 1, "."},
};

} // namespace

std::span<const builtin> predicate_table()
{
    return TABLE;
}

} // namespace host::lisp
