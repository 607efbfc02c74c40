// reader.cpp: text to forms.
#include "host/lisp/reader.h"

#include <charconv>
#include <limits>

#include "host/core/text.h"
#include "host/lisp/interpreter.h"

namespace host::lisp
{

namespace
{

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v' || c == 0 || c == 26;
}

bool ends_token(char c)
{
    return is_blank(c) || c == '(' || c == ')' || c == '"' || c == '\'' || c == ';';
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

// Whether a token has a number's form: [+-] digits [. digits] [e [+-] digits].
bool number_form(std::string_view t, bool* whole)
{
    std::size_t i = 0, digits = 0;
    if (i < t.size() && (t[i] == '+' || t[i] == '-'))
        ++i;
    for (; i < t.size() && is_digit(t[i]); ++i)
        ++digits;
    *whole = true;
    if (i < t.size() && t[i] == '.') {
        *whole = false;
        for (++i; i < t.size() && is_digit(t[i]); ++i)
            ++digits;
    }
    if (!digits)
        return false;
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
        *whole = false;
        ++i;
        if (i < t.size() && (t[i] == '+' || t[i] == '-'))
            ++i;
        if (i == t.size())
            return false;
        while (i < t.size() && is_digit(t[i]))
            ++i;
    }
    return i == t.size();
}

} // namespace

value number_of_text(std::string_view t)
{
    bool whole = false;
    if (!number_form(t, &whole))
        return {};
    if (t.front() == '+')
        t.remove_prefix(1);
    if (whole) {
        std::int32_t number = 0;
        const auto [end, error] = std::from_chars(t.data(), t.data() + t.size(), number);
        if (error == std::errc())
            return value::integer(number);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(t.data(), t.data() + t.size(), number);
    if (error == std::errc::result_out_of_range)
        number = t.find("e-") != t.npos || t.find("E-") != t.npos
                     ? 0.0
                     : std::numeric_limits<double>::max() * (t.front() == '-' ? -1 : 1);
    return value::real(number);
}

reader::reader(interpreter& l, std::string_view text, std::string name)
    : l_(l), text_(text), name_(std::move(name))
{
}

void reader::fault(const char* message, std::uint32_t line)
{
    throw lisp_error{failure::error, message, {}, name_.empty() ? "" : name_ + ":" + std::to_string(line)};
}

void reader::skip_block_comment()
{
    for (at_ += 2; !at_end(); ++at_) {
        if (text_[at_] == '\n')
            ++line_;
        if (text_[at_] == '|' && at_ + 1 < text_.size() && text_[at_ + 1] == ';') {
            at_ += 2;
            return;
        }
    }
}

void reader::skip_blanks()
{
    while (!at_end()) {
        const char c = text_[at_];
        if (c == ';') {
            if (at_ + 1 < text_.size() && text_[at_ + 1] == '|')
                skip_block_comment();
            else
                while (!at_end() && text_[at_] != '\n')
                    ++at_;
        } else if (is_blank(c)) {
            if (c == '\n')
                ++line_;
            ++at_;
        } else {
            return;
        }
    }
}

bool reader::next(value* result)
{
    skip_blanks();
    form_line_ = line_;
    if (at_end())
        return false;
    try {
        *result = form();
    } catch (lisp_error& e) {
        if (e.place.empty() && !name_.empty())
            e.place = name_ + ":" + std::to_string(line_);
        throw;
    }
    return true;
}

value reader::form()
{
    switch (text_[at_]) {
    case '(':
        return list();
    case ')':
        ++at_;
        fault("extra right paren on input", line_);
    case '\'':
        return quoted();
    case '"':
        return string();
    default:
        return token();
    }
}

value reader::quoted()
{
    check_stack();
    const std::uint32_t begin = line_;
    ++at_;
    skip_blanks();
    if (at_end() || text_[at_] == ')')
        fault("syntax error", begin);
    value inner = form();
    return cons(value::of(l_.intern("QUOTE")), cons(std::move(inner), value::nil()));
}

bool reader::alone_dot() const
{
    return text_[at_] == '.' && (at_ + 1 == text_.size() || ends_token(text_[at_ + 1]));
}

value reader::list()
{
    check_stack();
    const std::uint32_t begin = line_;
    list_maker items;
    for (++at_;;) {
        skip_blanks();
        if (at_end())
            fault("malformed list on input", form_line_);
        if (text_[at_] == ')') {
            ++at_;
            return items.take();
        }
        if (alone_dot()) {
            if (!items.last())
                fault("misplaced dot on input", line_);
            ++at_;
            skip_blanks();
            if (at_end())
                fault("malformed list on input", form_line_);
            if (text_[at_] == ')')
                fault("misplaced dot on input", line_);
            items.end_with(form());
            skip_blanks();
            if (at_end())
                fault("malformed list on input", form_line_);
            if (text_[at_] != ')')
                fault("extra cdrs in dotted pair on input", line_);
            ++at_;
            return items.take();
        }
        const std::uint32_t line = items.last() ? line_ : begin;
        value item = form();
        items.add(std::move(item));
        items.last()->line = line;
    }
}

// What stands behind a backslash; 0 when it was put into `out` already or stands for nothing.
char reader::escape(std::string* out)
{
    const char c = text_[at_++];
    switch (c) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'e':
        return '\033';
    case '\n':
        ++line_;
        return c;
    case 'U':
    case 'M': {
        // A character by its number. One that has no place here stays in its written form, which is the
        // drawing's own for it.
        const std::size_t digits = c == 'U' ? 4 : 5;
        if (at_ < text_.size() && text_[at_] == '+' && at_ + digits < text_.size()) {
            const std::string_view code = text_.substr(at_ + 1, digits);
            int point = 0;
            const auto [end, error] = std::from_chars(code.data(), code.data() + code.size(), point, 16);
            if (error == std::errc() && end == code.data() + code.size()) {
                at_ += digits + 1;
                const int byte = c == 'U' ? cp1252_byte(point) : -1;
                if (byte > 0)
                    return static_cast<char>(byte);
                out->append("\\").append(1, c).append("+").append(code);
                return 0;
            }
        }
        return c;
    }
    default:
        break;
    }
    if (c < '0' || c > '7')
        return c;
    int code = c - '0';
    for (int i = 0; i < 2 && !at_end() && text_[at_] >= '0' && text_[at_] <= '7'; ++i)
        code = code * 8 + (text_[at_++] - '0');
    return static_cast<char>(code);
}

value reader::string()
{
    const std::uint32_t begin = line_;
    std::string out;
    for (++at_;;) {
        if (at_end())
            fault("malformed string on input", begin);
        char c = text_[at_++];
        if (c == '"')
            return value::text(out);
        if (c == '\\') {
            if (at_end())
                fault("malformed string on input", begin);
            c = escape(&out);
            if (c == 0)
                continue;
        } else if (c == '\r' && !at_end() && text_[at_] == '\n') {
            continue; // a line end within a string is one line feed
        } else if (c == '\n') {
            ++line_;
        }
        out += c;
    }
}

value reader::token()
{
    const std::size_t begin = at_;
    while (!at_end() && !ends_token(text_[at_]))
        ++at_;
    const std::string_view t = text_.substr(begin, at_ - begin);
    if (t == ".")
        fault("misplaced dot on input", line_);
    value number = number_of_text(t);
    if (!number.is(kind::unset))
        return number;
    if (same_text(t, "nil"))
        return value::nil();
    return value::of(l_.intern(t));
}

} // namespace host::lisp
