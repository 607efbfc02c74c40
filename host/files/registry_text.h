// registry_text.h: the pieces of the registry's text form, for its reader and for its editor.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/files/registry.h"

namespace host
{

constexpr std::string_view REGISTRY_HEADING = "Windows Registry Editor Version 5.00";
constexpr std::string_view OLD_REGISTRY_HEADING = "REGEDIT4"; // its hexadecimal texts have one byte a character

// A file's bytes, whichever their coding, as UTF-8.
std::string registry_utf8(std::string_view bytes);

// A line without blanks at its ends; numbers that go on in the next lines are one line.
struct registry_line {
    std::string text;
    std::size_t begin = 0, end = 0; // where it stands, its line end included
    int number = 0;                 // from 1
};

class registry_lines
{
public:
    explicit registry_lines(std::string text) : text_(std::move(text)) {}
    bool next(registry_line& out);

private:
    std::string text_;
    std::size_t at_ = 0;
    int next_number_ = 1;
};

// A line that begins with '['.
struct registry_heading {
    bool removes = false;
    std::string path;   // from HKEY_... on
    std::string damage; // what is wrong with it, if anything is
};
registry_heading registry_heading_of(std::string_view line);

// A text in quotes from `at` on; `at` moves behind it. Without one `at` is left at the end of the line where
// the closing quote is missing, or at a backslash that isn't written twice.
std::optional<std::string> registry_quoted(std::string_view line, std::size_t& at);

// A value's line, without its end. `narrow`: for a file with the old heading.
std::string registry_value_line(const registry_value& value, bool narrow);

} // namespace host
