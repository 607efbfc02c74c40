// Number texts. Reals are mostly short decimal fractions: up to 15 digits and a power of ten up to 22
// a product or quotient of two exact doubles is the correctly rounded value, which spares from_chars.
//
// Angles go through sums of two doubles, so that degrees -> radians is rounded once. Not every double
// in radians has a double in degrees that leads to it; such angles are written with more digits than a
// double holds, and read with them.
#include "host/database/dxf_numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace host::db
{

namespace
{

constexpr double POWERS[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int EXACT_DIGITS = 15;

// pi / 180 and 180 / pi, each as the sum of two doubles.
constexpr double RADIAN_HIGH = 0.017453292519943295, RADIAN_LOW = 2.9486522708701687e-19;
constexpr double DEGREE_HIGH = 57.29577951308232, DEGREE_LOW = -1.9878495670576283e-15;

std::string_view without_blanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\0'))
        text.remove_suffix(1);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool slow_real(std::string_view text, double* value)
{
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, *value);
    if (stop != end || text.empty())
        return false;
    if (status == std::errc::result_out_of_range) {
        // Too large or too small: only the exponent tells.
        const std::size_t mark = text.find_first_of("eE");
        *value = 0.0;
        return mark != std::string_view::npos ? text.substr(mark + 1).starts_with('-')
                                              : text.find_first_of("123456789") > text.find('.');
    }
    return status == std::errc() && std::isfinite(*value);
}

// (high + low) * (factor_high + factor_low), rounded once.
double product(double high, double low, double factor_high, double factor_low)
{
    const double main = high * factor_high;
    if (!std::isfinite(main))
        return main;
    return main + (std::fma(high, factor_high, -main) + (high * factor_low + low * factor_high));
}

// What the double nearest to a decimal number leaves over of it.
double rest_of(std::string_view text, double nearest)
{
    const bool is_negative = text.starts_with('-');
    std::uint64_t digits = 0;
    int count = 0, fraction = 0;
    bool is_plain = true, has_point = false;
    for (const char c : text.substr(is_negative)) {
        if (is_digit(c)) {
            digits = digits * 10 + static_cast<unsigned>(c - '0');
            fraction += has_point;
            ++count;
        } else {
            has_point = has_point || c == '.';
            is_plain = is_plain && c == '.';
        }
    }
    constexpr int LONGEST = 18; // fits 64 bits
    if (!is_plain || count > LONGEST) {
        long double exact = nearest;
        std::from_chars(text.data(), text.data() + text.size(), exact);
        return static_cast<double>(exact - static_cast<long double>(nearest));
    }
    // digits / power - nearest, the product's own rounding error included.
    const double power = POWERS[fraction];
    const double size = is_negative ? -nearest : nearest;
    const double main = size * power;
    const auto whole = static_cast<std::int64_t>(digits);
    const auto upper = static_cast<double>(whole);
    const auto lower = static_cast<double>(whole - static_cast<std::int64_t>(upper));
    const double rest = (((upper - main) - std::fma(size, power, -main)) + lower) / power;
    return is_negative ? -rest : rest;
}

// Puts the decimal point in that the shortest form leaves out of whole numbers.
void append_with_point(std::string& out, std::string_view text)
{
    const std::size_t mark = text.find_first_of(".e");
    if (mark != std::string_view::npos && text[mark] == '.') {
        out += text;
        return;
    }
    out += text.substr(0, mark);
    out += ".0";
    if (mark != std::string_view::npos)
        out += text.substr(mark);
}

} // namespace

bool read_real(std::string_view text, double* value)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && *at == ' ')
        ++at;
    const bool is_negative = at != end && *at == '-';
    at += is_negative;
    std::uint64_t digits = 0;
    int count = 0, fraction = 0;
    for (; at != end && is_digit(*at); ++at, ++count)
        digits = digits * 10 + static_cast<unsigned>(*at - '0');
    if (at != end && *at == '.') {
        ++at;
        const char* const start = at;
        for (; at != end && is_digit(*at); ++at)
            digits = digits * 10 + static_cast<unsigned>(*at - '0');
        fraction = static_cast<int>(at - start);
        count += fraction;
    }
    if (at == end && count > 0 && count <= EXACT_DIGITS) {
        const double size = static_cast<double>(digits) / POWERS[fraction];
        *value = is_negative ? -size : size;
        return true;
    }
    return slow_real(without_blanks(text), value);
}

bool read_integer(std::string_view text, std::int64_t* value)
{
    text = without_blanks(text);
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, *value);
    if (status == std::errc() && stop == end)
        return true;
    double real = 0.0;
    constexpr double LARGEST = 9007199254740992.0; // whole numbers beyond are not exact
    if (!read_real(text, &real) || std::trunc(real) != real || std::fabs(real) > LARGEST)
        return false;
    *value = static_cast<std::int64_t>(real);
    return true;
}

bool read_handle(std::string_view text, std::uint64_t* value)
{
    text = without_blanks(text);
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, *value, 16);
    return status == std::errc() && stop == end;
}

bool read_angle(std::string_view degrees, double* radians)
{
    double high = 0.0;
    if (!read_real(degrees, &high))
        return false;
    *radians = product(high, rest_of(without_blanks(degrees), high), RADIAN_HIGH, RADIAN_LOW);
    return true;
}

double radians_of(double degrees)
{
    return product(degrees, 0.0, RADIAN_HIGH, RADIAN_LOW);
}

double degrees_of(double radians)
{
    const double degrees = product(radians, 0.0, DEGREE_HIGH, DEGREE_LOW);
    // Of the doubles about the quotient take one that leads back, where there is one.
    constexpr double END = std::numeric_limits<double>::infinity();
    for (const double toward : {degrees, END, -END}) {
        const double near = std::nextafter(degrees, toward);
        if (radians_of(near) == radians)
            return near;
    }
    return degrees;
}

void append_real(std::string& out, double value)
{
    char text[40];
    if (!std::isfinite(value))
        value = 0.0;
    const auto done = std::to_chars(text, text + sizeof text, value);
    append_with_point(out, std::string_view(text, static_cast<std::size_t>(done.ptr - text)));
}

void append_integer(std::string& out, std::int64_t value)
{
    char text[24];
    const auto done = std::to_chars(text, text + sizeof text, value);
    out.append(text, done.ptr);
}

void append_handle(std::string& out, std::uint64_t value)
{
    char text[20];
    const auto done = std::to_chars(text, text + sizeof text, value, 16);
    for (char* c = text; c != done.ptr; ++c)
        if (*c >= 'a')
            *c = static_cast<char>(*c - 'a' + 'A');
    out.append(text, done.ptr);
}

void append_angle(std::string& out, double radians)
{
    if (radians == 0.0 || !std::isfinite(radians))
        return append_real(out, radians);
    const double degrees = product(radians, 0.0, DEGREE_HIGH, DEGREE_LOW);
    if (!std::isfinite(degrees))
        return append_real(out, 0.0);
    char text[64];
    double back = 0.0;
    const auto leads_back = [&](std::to_chars_result done) {
        const std::string_view form(text, static_cast<std::size_t>(done.ptr - text));
        if (!read_angle(form, &back) || back != radians)
            return false;
        append_with_point(out, form);
        return true;
    };
    for (const int digits : {12, 15, 16, 17})
        if (leads_back(std::to_chars(text, text + sizeof text, degrees, std::chars_format::general, digits)))
            return;
    const double main = radians * DEGREE_HIGH;
    const long double exact =
        static_cast<long double>(main) +
        static_cast<long double>(std::fma(radians, DEGREE_HIGH, -main) + radians * DEGREE_LOW);
    for (const int digits : {18, 19, 20})
        if (leads_back(std::to_chars(text, text + sizeof text, exact, std::chars_format::general, digits)))
            return;
    append_real(out, degrees);
}

bool read_hex(std::string_view text, std::string* bytes)
{
    if (text.size() % 2)
        return false;
    bytes->clear();
    for (std::size_t i = 0; i < text.size(); i += 2) {
        unsigned byte = 0;
        const auto [stop, status] = std::from_chars(text.data() + i, text.data() + i + 2, byte, 16);
        if (status != std::errc() || stop != text.data() + i + 2)
            return false;
        *bytes += static_cast<char>(byte);
    }
    return true;
}

void append_hex(std::string& out, std::string_view bytes)
{
    constexpr char DIGITS[] = "0123456789ABCDEF";
    for (const char c : bytes) {
        out += DIGITS[static_cast<unsigned char>(c) >> 4];
        out += DIGITS[static_cast<unsigned char>(c) & 15];
    }
}

} // namespace host::db
