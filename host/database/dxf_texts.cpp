// In a file a control character is a caret and the letter 64 places on (^J is a line feed), and a caret
// is followed by a blank. A caret before anything else is itself, since other programs leave it bare.
// NUL is ^@ in the store too: no text of a program may hold one.
#include "host/database/dxf_texts.h"

#include <charconv>
#include <optional>

#include "host/core/text.h"

namespace host::db
{

namespace
{

bool has_high_byte(std::string_view text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return true;
    return false;
}

void remove_carets(std::string_view text, std::string& out)
{
    out.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '^' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == ' ') {
            out += '^';
            ++i;
        } else if (next > '@' && next <= '_') {
            out += static_cast<char>(next - '@');
            ++i;
        } else if (text[i] == '\0') {
            out += "^@";
        } else {
            out += text[i];
        }
    }
}

void append_carets(std::string& out, std::string_view text)
{
    for (const char c : text) {
        if (c == '^') {
            out += "^ ";
        } else if (static_cast<unsigned char>(c) < ' ') {
            out += '^';
            out += static_cast<char>(c + '@');
        } else {
            out += c;
        }
    }
}

bool needs_carets(std::string_view text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '^')
            return true;
    return false;
}

// The unit of an escape \U+XXXX at `at`; nothing when there is none.
std::optional<int> escaped_unit(std::string_view text, std::size_t at)
{
    constexpr std::string_view MARK = "\\U+";
    if (text.substr(at, MARK.size()) != MARK || text.size() < at + MARK.size() + 4)
        return std::nullopt;
    const char* const digits = text.data() + at + MARK.size();
    int unit = 0;
    const auto [stop, status] = std::from_chars(digits, digits + 4, unit, 16);
    if (status != std::errc() || stop != digits + 4)
        return std::nullopt;
    return unit;
}

void append_code_point(std::string& out, int code)
{
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        tail(6);
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        tail(12);
        tail(6);
    }
    tail(0);
}

// Escapes become characters again, as far as reading makes the same escapes of them.
std::string without_escapes(std::string_view utf8)
{
    constexpr std::size_t ESCAPE = 7;
    std::string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const std::optional<int> unit = escaped_unit(utf8, i);
        const bool is_high = unit && *unit >= 0xD800 && *unit < 0xDC00;
        const std::optional<int> second = is_high ? escaped_unit(utf8, i + ESCAPE) : std::nullopt;
        if (second && *second >= 0xDC00 && *second < 0xE000) {
            append_code_point(out, 0x10000 + ((*unit - 0xD800) << 10) + (*second - 0xDC00));
            i += 2 * ESCAPE;
        } else if (unit && *unit >= 0x80 && (*unit < 0xD800 || *unit >= 0xE000) && cp1252_byte(*unit) < 0) {
            append_code_point(out, *unit);
            i += ESCAPE;
        } else {
            out += utf8[i++];
        }
    }
    return out;
}

std::string as_utf8_text(std::string_view stored)
{
    std::string utf8 = utf8_of(stored);
    if (stored.find("\\U+") == std::string_view::npos)
        return utf8;
    // An escape that is written otherwise than ours (small letters) stays as it is.
    std::string characters = without_escapes(utf8);
    return cp1252_with_escapes(characters) == stored ? characters : utf8;
}

} // namespace

std::string_view stored_text(std::string_view in_file, bool is_utf8, std::string& into)
{
    if (is_utf8 && has_high_byte(in_file)) {
        into = cp1252_with_escapes(in_file);
        in_file = into;
    }
    if (in_file.find_first_of(std::string_view("^\0", 2)) == std::string_view::npos)
        return in_file;
    std::string plain;
    remove_carets(in_file, plain);
    into = std::move(plain);
    return into;
}

void append_text(std::string& out, std::string_view stored, bool as_utf8)
{
    if (as_utf8 && (has_high_byte(stored) || stored.find("\\U+") != std::string_view::npos)) {
        append_carets(out, as_utf8_text(stored));
        return;
    }
    if (needs_carets(stored))
        append_carets(out, stored);
    else
        out += stored;
}

} // namespace host::db
