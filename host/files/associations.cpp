#include "host/files/associations.h"

#include <algorithm>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/files/command_words.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "host/files/programs.h"
#include "host/files/registry.h"
#include "host/files/registry_text.h"
#include "hostapi/processes.h"

namespace host
{

namespace
{

constexpr std::string_view DOCUMENT = "%1";
constexpr std::string_view REST = "%*"; // a batch file's arguments
constexpr const char* CLASSES = "HKEY_CLASSES_ROOT\\";
constexpr const char* BATCH_TYPE = ".bat";

std::string text_of(const registry_key* key)
{
    const registry_value* value = key ? key->value("") : nullptr;
    if (!value || (value->type != REG_SZ && value->type != REG_EXPAND_SZ))
        return {};
    const std::string text = cp1252_with_escapes(value->data);
    std::string out(ExpandEnvironmentStringsA(text.c_str(), nullptr, 0), '\0');
    ExpandEnvironmentStringsA(text.c_str(), out.data(), static_cast<DWORD>(out.size()));
    out.resize(out.size() - 1);
    return out;
}

std::string command_of_class(const std::string& name)
{
    return text_of(run_registry()->find(CLASSES + utf8_of(name) + OPEN_COMMAND_KEY).get());
}

bool is_batch_name(std::string_view name)
{
    return same_text(extension_of(name), BATCH_TYPE);
}

// A drawing may be kept under another name.
std::optional<std::string> existing_document(std::string_view path)
{
    if (path.empty())
        return std::nullopt;
    const auto found = existing_path(file_path(path));
    if (!found)
        return std::nullopt;
    return absolute_path(*found);
}

// The words of an open command are parted before the document's name comes in: nothing in it parts them anew.
std::optional<program_to_start> filled(std::string_view command, const std::string& document,
                                       std::string_view arguments)
{
    const program_word first = first_word(command);
    auto file = find_program(first.name);
    if (!file)
        return std::nullopt;
    program_to_start out{std::move(*file), {utf8_of(first.name)}};
    bool is_named = false;
    for (const std::string& word : argument_words(first.rest)) {
        const std::size_t at = is_named ? std::string::npos : word.find(DOCUMENT);
        if (at != std::string::npos) {
            is_named = true;
            out.words.push_back(utf8_of(word.substr(0, at)) + document +
                                utf8_of(word.substr(at + DOCUMENT.size())));
        } else if (word != REST) {
            out.words.push_back(utf8_of(word));
        } else {
            for (const std::string& argument : argument_words(arguments))
                out.words.push_back(utf8_of(argument));
        }
    }
    if (!is_named)
        out.words.push_back(document);
    if (command.find(REST) == std::string_view::npos)
        for (const std::string& argument : argument_words(arguments))
            out.words.push_back(utf8_of(argument));
    return out;
}

bool has_root(std::string_view path)
{
    return !path.empty() && (path[0] == '/' || path[0] == '\\' || (path.size() >= 2 && path[1] == ':'));
}

bool is_batch_file(std::string_view name)
{
    return is_batch_name(name) && existing_path(name);
}

std::string how_to_set()
{
    const std::string file = registry_file();
    const std::string heading = existing_path(file) ? "" : std::string(REGISTRY_HEADING) + "\n\n";
    return "no program is set for .bat files. Set one in the registry, " + program_path(absolute_path(file)) +
           ", with these lines:\n" + heading + "[" + CLASSES + BATCH_TYPE + "]\n@=\"batfile\"\n[" + CLASSES +
           "batfile" + OPEN_COMMAND_KEY + "]\n@=\"PROGRAM \\\"%1\\\"\"";
}

} // namespace

std::string open_command(std::string_view type)
{
    const std::string name = text_of(run_registry()->find(CLASSES + utf8_of(type)).get());
    return name.empty() ? std::string() : command_of_class(name);
}

std::optional<program_to_start> program_for_document(const std::string& document)
{
    const std::string command = open_command(extension_of(document));
    const auto file = existing_document(document);
    if (command.empty() || !file)
        return std::nullopt;
    return filled(command, *file, {});
}

std::optional<program_to_start> program_for_opening(std::string_view line)
{
    const auto classes = run_registry()->find("HKEY_CLASSES_ROOT");
    for (const auto& key : classes ? classes->keys : std::vector<std::shared_ptr<registry_key>>()) {
        const std::string command = text_of(key->find(OPEN_COMMAND_KEY).get());
        if (command.empty())
            continue;
        // As programs do it: without a place for the document it stands behind a blank.
        const std::size_t at = command.find(DOCUMENT);
        const bool has_place = at != std::string::npos;
        const std::string before = has_place ? command.substr(0, at) : command + " ";
        const std::string behind = has_place ? command.substr(at + DOCUMENT.size()) : "";
        if (trimmed(before) == "\"" || trimmed(before).empty()) // the document is the program
            continue;
        if (line.size() < before.size() + behind.size() || !line.starts_with(before) || !line.ends_with(behind))
            continue;
        const auto file =
            existing_document(line.substr(before.size(), line.size() - before.size() - behind.size()));
        if (!file)
            continue;
        if (auto found = filled(command, *file, {}))
            return found;
    }
    return std::nullopt;
}

bool show_document(const std::string& document)
{
    if (!may_start_programs(document))
        return false;
    const auto program = program_for_document(document);
    const pid_t started = program ? start_program(program->file, program->words) : 0;
    if (started != 0)
        leave_program(started);
    return started != 0;
}

std::optional<batch_call> batch_of(std::string_view line)
{
    const std::string whole(trimmed(line));
    if (is_batch_file(whole))
        return batch_call{whole, {}};
    const program_word first = first_word(whole);
    if (is_batch_name(first.name))
        return batch_call{first.name, std::string(first.rest)};
    if (first.quoted || whole.empty())
        return std::nullopt;
    for (std::size_t at = whole.find(' '); at != std::string::npos; at = whole.find(' ', at + 1))
        if (is_batch_file(whole.substr(0, at)))
            return batch_call{whole.substr(0, at), whole.substr(at)};
    if (has_root(whole) && is_batch_name(whole) && !existing_path(first.name))
        return batch_call{whole, {}};
    return std::nullopt;
}

std::optional<program_to_start> program_for_batch(const batch_call& batch)
{
    const auto file = existing_path(batch.file);
    if (!file) {
        complain(batch.file + ": there is no such batch file");
        return std::nullopt;
    }
    const std::string command = open_command(BATCH_TYPE);
    if (command.empty()) {
        complain(batch.file + ": " + how_to_set());
        return std::nullopt;
    }
    auto program = filled(command, absolute_path(*file), batch.arguments);
    if (!program)
        complain(batch.file + ": there is no program " + first_word(command).name +
                 ", which the registry names for .bat files");
    return program;
}

} // namespace host
