#include "host/files/names.h"

#include "host/core/text.h"

namespace host
{

namespace
{

bool is_hex(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool is_ascii(std::string_view text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

// Length of the UTF-8 sequence at `at`, 0 when there is none.
std::size_t sequence_length(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    if (length == 0 || at + length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; i++)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80)
            return 0;
    return length;
}

// Lower case of the letters of Windows-1252.
char fold(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    unsigned low = byte;
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7))
        low = byte + 0x20u;
    else if (byte == 0x8A || byte == 0x8C || byte == 0x8E)
        low = byte + 0x10u;
    else if (byte == 0x9F)
        low = 0xFF;
    return static_cast<char>(low);
}

} // namespace

bool is_utf8(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = sequence_length(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

void append_utf8(std::string& out, unsigned code)
{
    const auto byte = [&out](unsigned value) { out += static_cast<char>(value); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | code >> 6);
        byte(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte(0xE0 | code >> 12);
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xF0 | code >> 18);
        byte(0x80 | (code >> 12 & 0x3F));
        byte(0x80 | (code >> 6 & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
}

bool escape_at(std::string_view text, std::size_t at)
{
    if (at + 7 > text.size() || text.substr(at, 3) != "\\U+")
        return false;
    for (std::size_t i = at + 3; i < at + 7; i++)
        if (!is_hex(text[i]))
            return false;
    return true;
}

// The 16 bits of the escape at `at`.
static unsigned escaped_unit(const std::string& text, std::size_t at)
{
    return static_cast<unsigned>(std::stoul(text.substr(at + 3, 4), nullptr, 16));
}

std::string program_name(std::string_view name)
{
    if (is_ascii(name) || !is_utf8(name))
        return std::string(name);
    return cp1252_with_escapes(name);
}

std::string disk_name(std::string_view name)
{
    std::string out;
    const std::string held = program_name(name);
    for (std::size_t at = 0; at < held.size();) {
        if (escape_at(held, at)) {
            unsigned code = escaped_unit(held, at);
            at += 7;
            // Four digits hold no more than half of a character beyond the first plane.
            const unsigned low =
                code >= 0xD800 && code < 0xDC00 && escape_at(held, at) ? escaped_unit(held, at) : 0;
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                at += 7;
            }
            append_utf8(out, code);
        } else {
            out += utf8_of(std::string_view(held).substr(at, 1));
            at++;
        }
    }
    return out;
}

std::string folded_name(std::string_view name)
{
    std::string out(name);
    for (char& c : out)
        c = fold(c);
    return out;
}

bool fits_pattern(std::string_view text, std::string_view pattern)
{
    if (pattern == "*.*")
        return true;
    std::size_t t = 0, p = 0, star = std::string_view::npos, star_text = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            star_text = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            p++;
            t++;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++star_text;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        p++;
    return p == pattern.size();
}

std::size_t last_separator(std::string_view path)
{
    for (std::size_t at = path.size(); at-- > 0;)
        if (path[at] == '/' || (path[at] == '\\' && !escape_at(path, at)) || (path[at] == ':' && at == 1))
            return at;
    return std::string_view::npos;
}

std::string_view extension_of(std::string_view path)
{
    const std::size_t separator = last_separator(path);
    const std::string_view name = separator == std::string_view::npos ? path : path.substr(separator + 1);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos || point == 0 ? std::string_view() : name.substr(point);
}

} // namespace host
