#include "host/files/command_line.h"

#include <algorithm>

#include "host/core/text.h"
#include "host/files/associations.h"
#include "host/files/command_words.h"
#include "host/files/names.h"
#include "host/files/programs.h"

namespace host
{

namespace
{

std::optional<program_to_start> with_arguments(std::string_view name, std::string_view rest)
{
    auto file = find_program(name);
    if (!file)
        return std::nullopt;
    program_to_start out{std::move(*file), {utf8_of(name)}};
    for (const std::string& word : argument_words(rest))
        out.words.push_back(utf8_of(word));
    return out;
}

} // namespace

std::optional<program_to_start> program_for(std::string_view name, std::string_view line)
{
    const std::string_view rest = first_word(line).rest;
    if (batch_of(name))
        return program_for_batch({std::string(name), std::string(rest)});
    return with_arguments(name, rest);
}

std::optional<program_to_start> program_for_line(std::string_view line)
{
    if (auto document = program_for_opening(line))
        return document;
    if (const auto batch = batch_of(line))
        return program_for_batch(*batch);
    const program_word first = first_word(line);
    if (auto found = with_arguments(first.name, first.rest))
        return found;
    if (first.quoted || last_separator(first.name) == std::string_view::npos)
        return std::nullopt;
    const std::string_view whole = trimmed(line);
    for (std::size_t at = whole.find(' ', first.name.size()); at < whole.size();) {
        at = std::min(whole.size(), whole.find(' ', at + 1));
        if (auto found = with_arguments(whole.substr(0, at), whole.substr(at)))
            return found;
    }
    return std::nullopt;
}

} // namespace host
