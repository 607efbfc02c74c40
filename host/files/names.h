// names.h: file names between Windows-1252, in which programs write them, and UTF-8, in which this
// file system keeps them.
#pragma once

#include <string>
#include <string_view>

namespace host
{

// A component of a path as programs hold it: Windows-1252, other characters as \U+XXXX. Text that is
// UTF-8 already (a path of this file system) is converted; anything else is taken as it is.
std::string program_name(std::string_view name);
// The same component as a new file is named here.
std::string disk_name(std::string_view name);
// For comparing names without regard to case, accented letters too.
std::string folded_name(std::string_view program_name);
// DOS wild cards (* and ?) over folded names. "*.*" fits every name.
bool fits_pattern(std::string_view folded, std::string_view folded_pattern);

bool is_utf8(std::string_view text);
void append_utf8(std::string& out, unsigned code_point);

// Whether a \U+XXXX begins at `at`: its backslash is no separator.
bool escape_at(std::string_view text, std::size_t at);
// Where the last separator stands, npos when there is none; the colon of a drive letter counts.
std::size_t last_separator(std::string_view path);
// Extension with its point, empty when the name has none or is nothing else.
std::string_view extension_of(std::string_view path);

} // namespace host
