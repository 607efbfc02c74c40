// command_line.h: what a command line of a program means on this machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{

struct program_to_start {
    std::string file;
    std::vector<std::string> words; // UTF-8, the program's name first
};

// The program that `line` begins with, and its words. A name with blanks that isn't in quotes is tried word by
// word, as on the platform. Open commands with a document and batch files go by associations.h. Nothing when
// there is no such program.
std::optional<program_to_start> program_for_line(std::string_view line);
// The program `name`, with the words of `line` behind the first.
std::optional<program_to_start> program_for(std::string_view name, std::string_view line);

} // namespace host
