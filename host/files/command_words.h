// command_words.h: command lines parted into words by the platform's rules, which programs there apply to
// their own. Nothing is expanded: only blanks, tabs and double quotes mean something, and a backslash in
// front of a quote.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{

// The name of the program that a command line begins with, up to a blank or tab outside of quotes. In it a
// backslash is nothing but a separator. `rest` is what stands behind it.
struct program_word {
    std::string name;
    bool quoted = false;
    std::string_view rest;
};
program_word first_word(std::string_view line);

// The words behind the program's name. 2n backslashes in front of a quote are n, and the quote groups; one
// more is a quote itself. Two quotes inside of a group are a quote too.
std::vector<std::string> argument_words(std::string_view rest);

} // namespace host
