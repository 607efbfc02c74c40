// text.cpp: Windows-1252 and UTF-8, number texts, values as LISP prints them.
#include "host/core/text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace host
{

namespace
{

// Bytes 80 to 9F; the rest of the code page is Latin-1. Unassigned bytes stand for themselves.
constexpr std::uint16_t high_page[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

void append_utf8(std::string& out, unsigned code)
{
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Code point at `pos`, which moves behind it; -1 when the bytes there are not UTF-8 (pos stays).
int take_code_point(std::string_view text, std::size_t& pos)
{
    const unsigned char lead = static_cast<unsigned char>(text[pos]);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    const int length = lead >= 0xF0 && lead < 0xF5 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || lead >= 0xF5 || pos + static_cast<std::size_t>(length) > text.size())
        return -1;
    int code = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const unsigned char next = static_cast<unsigned char>(text[pos + static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80)
            return -1;
        code = (code << 6) | (next & 0x3F);
    }
    const int least = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (code < least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
        return -1;
    pos += static_cast<std::size_t>(length);
    return code;
}

bool is_ascii(std::string_view text)
{
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

char upper_char(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
char lower_char(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

} // namespace

int code_point_of(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xA0 ? high_page[byte - 0x80] : byte;
}

int cp1252_byte(int code_point)
{
    if ((code_point >= 0 && code_point < 0x80) || (code_point >= 0xA0 && code_point < 0x100))
        return code_point;
    for (int i = 0; i < 32; ++i)
        if (high_page[i] == code_point)
            return 0x80 + i;
    return -1;
}

std::string utf8_of(std::string_view cp1252)
{
    if (is_ascii(cp1252))
        return std::string(cp1252);
    std::string out;
    out.reserve(cp1252.size() + 16);
    for (const char c : cp1252)
        append_utf8(out, static_cast<unsigned>(code_point_of(static_cast<unsigned char>(c))));
    return out;
}

std::optional<std::string> cp1252_of(std::string_view utf8)
{
    if (is_ascii(utf8))
        return std::string(utf8);
    std::string out;
    for (std::size_t pos = 0; pos < utf8.size();) {
        const int code = take_code_point(utf8, pos);
        const int byte = code < 0 ? -1 : cp1252_byte(code);
        if (byte < 0)
            return std::nullopt;
        out += static_cast<char>(byte);
    }
    return out;
}

std::string cp1252_with_escapes(std::string_view utf8)
{
    if (is_ascii(utf8))
        return std::string(utf8);
    std::string out;
    const auto escape = [&out](unsigned unit) {
        char text[16];
        std::snprintf(text, sizeof text, "\\U+%04X", unit);
        out += text;
    };
    for (std::size_t pos = 0; pos < utf8.size();) {
        const int code = take_code_point(utf8, pos);
        if (code < 0) {
            out += utf8[pos++];
            continue;
        }
        const int byte = cp1252_byte(code);
        if (byte >= 0) {
            out += static_cast<char>(byte);
        } else if (code < 0x10000) {
            escape(static_cast<unsigned>(code));
        } else { // the escape has four digits: a pair of surrogates
            escape(0xD800u + ((static_cast<unsigned>(code) - 0x10000u) >> 10));
            escape(0xDC00u + ((static_cast<unsigned>(code) - 0x10000u) & 0x3FFu));
        }
    }
    return out;
}

std::string upper(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = upper_char(c);
    return out;
}

std::string lower(std::string_view text)
{
    std::string out(text);
    for (char& c : out)
        c = lower_char(c);
    return out;
}

bool same_text(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (upper_char(a[i]) != upper_char(b[i]))
            return false;
    return true;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string lisp_real(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.6g", value);
    std::string out = text;
    if (out.find_first_of(".eni") == std::string::npos)
        return out + ".0";
    const std::size_t exponent = out.find('e');
    if (exponent != std::string::npos && out.find('.') == std::string::npos)
        out.insert(exponent, ".0");
    return out;
}

std::string lisp_string(std::string_view text)
{
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\033':
            out += "\\e";
            break;
        default:
            if (static_cast<unsigned char>(c) < 32) {
                char octal[8];
                std::snprintf(octal, sizeof octal, "\\%03o",
                              static_cast<unsigned>(static_cast<unsigned char>(c)));
                out += octal;
            } else {
                out += c;
            }
        }
    }
    return out + "\"";
}

std::string lisp_point(const double* point, int dimensions)
{
    std::string out = "(";
    for (int i = 0; i < dimensions; ++i)
        out += (i ? " " : "") + lisp_real(point[i]);
    return out + ")";
}

std::optional<double> parse_real(std::string_view text)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> parse_int(std::string_view text)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

} // namespace host
