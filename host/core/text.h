// text.h: conversions at the host's edges. Inside, text is Windows-1252, one byte a character.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host
{

std::string utf8_of(std::string_view cp1252);
// Nothing when a character has no place in Windows-1252, or when the text isn't UTF-8.
std::optional<std::string> cp1252_of(std::string_view utf8);
// As cp1252_of, but such characters become \U+XXXX, the drawing's own escape; never fails (bytes that are
// not UTF-8 are taken as they are).
std::string cp1252_with_escapes(std::string_view utf8);
// Code point of a Windows-1252 byte, and back (-1: none).
int code_point_of(unsigned char byte);
int cp1252_byte(int code_point);

std::string upper(std::string_view text); // ASCII letters only
std::string lower(std::string_view text);
bool same_text(std::string_view a, std::string_view b); // without regard to ASCII case
std::string_view trimmed(std::string_view text);        // blanks, tabs, line ends at both ends

// Values as LISP prints them (prin1): 5 -> "5", 5.0 -> "5.0", "a" -> "\"a\"" with its escapes.
std::string lisp_real(double value);
std::string lisp_string(std::string_view text);
std::string lisp_point(const double* point, int dimensions = 3);

// Number texts that must be whole: no rest behind the number, blanks around it allowed.
std::optional<double> parse_real(std::string_view text);
std::optional<int> parse_int(std::string_view text);

} // namespace host
