#include "host/files/command_words.h"

#include <algorithm>

namespace host
{

namespace
{

// Line ends are no blanks here: they belong to their word.
constexpr std::string_view BLANKS = " \t";

bool is_blank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

program_word first_word(std::string_view line)
{
    line.remove_prefix(std::min(line.size(), line.find_first_not_of(BLANKS)));
    program_word out;
    bool grouped = false;
    std::size_t at = 0;
    for (; at < line.size() && (grouped || !is_blank(line[at])); at++) {
        if (line[at] != '"') {
            out.name += line[at];
            continue;
        }
        grouped = !grouped;
        out.quoted = true;
    }
    out.rest = line.substr(at);
    return out;
}

std::vector<std::string> argument_words(std::string_view rest)
{
    std::vector<std::string> words;
    std::size_t at = 0;
    while ((at = rest.find_first_not_of(BLANKS, at)) != std::string_view::npos) {
        std::string word;
        bool grouped = false;
        while (at < rest.size() && (grouped || !is_blank(rest[at]))) {
            const std::size_t behind = std::min(rest.size(), rest.find_first_not_of('\\', at));
            const std::size_t backslashes = behind - at;
            at = behind;
            if (at >= rest.size() || rest[at] != '"') {
                word.append(backslashes, '\\');
                if (backslashes == 0)
                    word += rest[at++];
                continue;
            }
            word.append(backslashes / 2, '\\');
            at++;
            if (backslashes % 2 == 1) {
                word += '"';
            } else if (grouped && at < rest.size() && rest[at] == '"') {
                word += '"';
                at++;
            } else {
                grouped = !grouped;
            }
        }
        words.push_back(std::move(word));
    }
    return words;
}

} // namespace host
