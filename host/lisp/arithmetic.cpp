// arithmetic.cpp: numbers. Integers have 32 bits and wrap; one real makes a result real.
#include <cmath>
#include <limits>

#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

std::int32_t wrapped(std::int64_t n)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(n));
}

bool all_integers(arguments a)
{
    for (int i = 0; i < a.count; ++i)
        if (!a[i].is(kind::integer))
            return false;
    return true;
}

// From left to right; integers stay integers up to the first real.
template <class Whole, class Real>
value fold(arguments a, Whole whole, Real real)
{
    if (a.count == 0)
        return value::integer(0);
    value sum = a[0];
    for (int i = 1; i < a.count; ++i) {
        if (sum.is(kind::integer) && a[i].is(kind::integer))
            sum = value::integer(whole(sum.as_integer(), a.integer(i)));
        else
            sum = value::real(real(sum.number(), a.number(i)));
    }
    return sum;
}

value add(interpreter&, arguments a)
{
    return fold(
        a, [](std::int64_t x, std::int64_t y) { return wrapped(x + y); },
        [](double x, double y) { return x + y; });
}

value subtract(interpreter&, arguments a)
{
    if (a.count == 1)
        return a[0].is(kind::integer) ? value::integer(wrapped(-std::int64_t{a.integer(0)}))
                                      : value::real(-a.number(0));
    return fold(
        a, [](std::int64_t x, std::int64_t y) { return wrapped(x - y); },
        [](double x, double y) { return x - y; });
}

value multiply(interpreter&, arguments a)
{
    return fold(
        a, [](std::int64_t x, std::int64_t y) { return wrapped(x * y); },
        [](double x, double y) { return x * y; });
}

value divide(interpreter& l, arguments a)
{
    for (int i = 1; i < a.count; ++i)
        if (a.number(i) == 0)
            l.fail("divide by zero");
    return fold(
        a, [](std::int64_t x, std::int64_t y) { return wrapped(x / y); },
        [](double x, double y) { return x / y; });
}

value remainder(interpreter& l, arguments a)
{
    for (int i = 1; i < a.count; ++i)
        if (a.number(i) == 0)
            l.fail("divide by zero");
    return fold(
        a, [](std::int64_t x, std::int64_t y) { return wrapped(x % y); },
        [](double x, double y) { return std::fmod(x, y); });
}

value increment(interpreter&, arguments a)
{
    return a[0].is(kind::integer) ? value::integer(wrapped(std::int64_t{a.integer(0)} + 1))
                                  : value::real(a.number(0) + 1);
}

value decrement(interpreter&, arguments a)
{
    return a[0].is(kind::integer) ? value::integer(wrapped(std::int64_t{a.integer(0)} - 1))
                                  : value::real(a.number(0) - 1);
}

value absolute(interpreter&, arguments a)
{
    return a[0].is(kind::integer) ? value::integer(wrapped(std::llabs(a.integer(0))))
                                  : value::real(std::fabs(a.number(0)));
}

value extreme(arguments a, bool greatest)
{
    if (a.count == 0)
        return value::integer(0);
    int best = 0;
    for (int i = 1; i < a.count; ++i)
        if (greatest ? a.number(i) > a.number(best) : a.number(i) < a.number(best))
            best = i;
    return all_integers(a) ? a[best] : value::real(a.number(best));
}
value maximum(interpreter&, arguments a)
{
    return extreme(a, true);
}
value minimum(interpreter&, arguments a)
{
    return extreme(a, false);
}

// Towards zero; what is too large for an integer stays a real.
value fix(interpreter&, arguments a)
{
    if (a[0].is(kind::integer))
        return a[0];
    const double whole = std::trunc(a.number(0));
    if (whole >= std::numeric_limits<std::int32_t>::min() && whole <= std::numeric_limits<std::int32_t>::max())
        return value::integer(static_cast<std::int32_t>(whole));
    return value::real(whole);
}

value to_real(interpreter&, arguments a)
{
    return value::real(a.number(0));
}

value square_root(interpreter& l, arguments a)
{
    if (a.number(0) < 0)
        l.fail("function undefined for argument: " + prin1_text(a[0]));
    return value::real(std::sqrt(a.number(0)));
}

value logarithm(interpreter& l, arguments a)
{
    if (a.number(0) <= 0)
        l.fail("function undefined for argument: " + prin1_text(a[0]));
    return value::real(std::log(a.number(0)));
}

value exponential(interpreter&, arguments a)
{
    return value::real(std::exp(a.number(0)));
}
value sine(interpreter&, arguments a)
{
    return value::real(std::sin(a.number(0)));
}
value cosine(interpreter&, arguments a)
{
    return value::real(std::cos(a.number(0)));
}

value arc_tangent(interpreter&, arguments a)
{
    return value::real(a.count == 2 ? std::atan2(a.number(0), a.number(1)) : std::atan(a.number(0)));
}

value power(interpreter& l, arguments a)
{
    if (!all_integers(a)) {
        const double result = std::pow(a.number(0), a.number(1));
        if (std::isnan(result))
            l.fail("function undefined for argument: " + prin1_text(a[0]));
        return value::real(result);
    }
    std::int32_t base = a.integer(0), exponent = a.integer(1);
    if (exponent < 0) {
        if (base == 0)
            l.fail("divide by zero");
        return value::integer(base == 1 ? 1 : base == -1 ? (exponent % 2 ? -1 : 1) : 0);
    }
    std::int32_t result = 1;
    for (; exponent; exponent >>= 1) {
        if (exponent & 1)
            result = wrapped(std::int64_t{result} * base);
        base = wrapped(std::int64_t{base} * base);
    }
    return value::integer(result);
}

value greatest_divisor(interpreter& l, arguments a)
{
    std::int64_t x = a.integer(0), y = a.integer(1);
    if (x <= 0 || y <= 0)
        l.fail("bad argument value: positive " + prin1_text(x <= 0 ? a[0] : a[1]));
    while (y) {
        const std::int64_t rest = x % y;
        x = y;
        y = rest;
    }
    return value::integer(static_cast<std::int32_t>(x));
}

// ---- bits

value bits_and(interpreter&, arguments a)
{
    return fold(
        a, [](std::int32_t x, std::int32_t y) { return x & y; }, [](double, double) { return 0.0; });
}
value bits_or(interpreter&, arguments a)
{
    return fold(
        a, [](std::int32_t x, std::int32_t y) { return x | y; }, [](double, double) { return 0.0; });
}
value bits_not(interpreter&, arguments a)
{
    return value::integer(~a.integer(0));
}

value shift(interpreter&, arguments a)
{
    const auto bits = static_cast<std::uint32_t>(a.integer(0));
    const std::int32_t by = a.integer(1);
    if (by <= -32 || by >= 32)
        return value::integer(0);
    return value::integer(static_cast<std::int32_t>(by >= 0 ? bits << by : bits >> -by));
}

// The operator's four bits say the result for (1 1), (1 0), (0 1) and (0 0).
value boolean(interpreter&, arguments a)
{
    const std::int32_t op = a.integer(0);
    std::int32_t x = a.count > 1 ? a.integer(1) : 0;
    for (int i = 2; i < a.count; ++i) {
        const std::int32_t y = a.integer(i);
        x = (op & 1 ? x & y : 0) | (op & 2 ? x & ~y : 0) | (op & 4 ? ~x & y : 0) | (op & 8 ? ~x & ~y : 0);
    }
    return value::integer(x);
}

constexpr builtin TABLE[] = {
    {"+", add, 0, -1, "n"},           {"-", subtract, 0, -1, "n"},
    {"*", multiply, 0, -1, "n"},      {"/", divide, 0, -1, "n"},
    {"rem", remainder, 0, -1, "n"},   {"1+", increment, 1, 1, "n"},
    {"1-", decrement, 1, 1, "n"},     {"abs", absolute, 1, 1, "n"},
    {"max", maximum, 0, -1, "n"},     {"min", minimum, 0, -1, "n"},
    {"fix", fix, 1, 1, "n"},          {"float", to_real, 1, 1, "n"},
    {"sqrt", square_root, 1, 1, "n"}, {"log", logarithm, 1, 1, "n"},
    {"exp", exponential, 1, 1, "n"},  {"expt", power, 2, 2, "n"},
    {"sin", sine, 1, 1, "n"},         {"cos", cosine, 1, 1, "n"},
    {"atan", arc_tangent, 1, 2, "n"}, {"gcd", greatest_divisor, 2, 2, "i"},
    {"logand", bits_and, 0, -1, "i"}, {"logior", bits_or, 0, -1, "i"},
    {"~", bits_not, 1, 1, "i"},       {"lsh", shift, 2, 2, "i"},
    {"boole", boolean, 2, -1, "i"},
};

} // namespace

std::span<const builtin> arithmetic_table()
{
    return TABLE;
}

} // namespace host::lisp
