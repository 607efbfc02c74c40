// Changes of the registry's file. People write this file too: what a change doesn't concern stays as it stands,
// comments and damaged lines among it.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "host/files/registry.h"
#include "host/files/registry_text.h"

namespace host
{

namespace
{

constexpr auto LONGEST_WAIT = std::chrono::seconds(2); // for another host that writes the same file

// Of hosts that change files of one directory, one at a time does. Where that can't be had (a file system
// without locks), the last one to write wins, with a file that is whole all the same.
class directory_lock
{
public:
    explicit directory_lock(const std::string& directory)
        : descriptor_(open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        const auto end = std::chrono::steady_clock::now() + LONGEST_WAIT;
        while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
               std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ~directory_lock()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    directory_lock(const directory_lock&) = delete;
    directory_lock& operator=(const directory_lock&) = delete;

private:
    int descriptor_;
};

std::string folded(std::string_view name)
{
    return folded_name(program_name(name));
}

bool equal(const registry_value& a, const registry_value& b)
{
    return a.name == b.name && a.type == b.type && a.data == b.data;
}

bool holds(const registry_key& key, const registry_value& value)
{
    const registry_value* held = key.value(value.name);
    return held && equal(*held, value);
}

bool same_values(const registry_key& a, const registry_key& b)
{
    return a.values.size() == b.values.size() &&
           std::all_of(a.values.begin(), a.values.end(),
                       [&b](const registry_value& value) { return holds(b, value); });
}

// The name of a value's line, "" for a key's default. Nothing for any other line.
std::optional<std::string> name_of_line(const std::string& line)
{
    std::size_t at = 0;
    if (line.starts_with('@'))
        return "";
    return registry_quoted(line, at);
}

struct section {
    std::size_t end = 0;                      // behind its last line that isn't empty
    std::optional<std::size_t> first_changed; // where a value stood that changes
    bool found = false;
};

// Takes the lines of the values that differ out of every section of the key; tells where the last section is.
std::string without_changed(const std::string& text, const std::string& path, const registry_key& before,
                            const registry_key& after, section* last)
{
    std::string out;
    bool inside = false;
    registry_lines lines(text);
    for (registry_line line; lines.next(line);) {
        const std::string raw = text.substr(line.begin, line.end - line.begin);
        if (line.text.starts_with('[')) {
            const registry_heading heading = registry_heading_of(line.text);
            inside = heading.damage.empty() && !heading.removes && folded(heading.path) == folded(path);
            if (inside)
                *last = {out.size() + raw.size(), std::nullopt, true};
        } else if (const auto name = inside ? name_of_line(line.text) : std::nullopt) {
            const registry_value* held = before.value(*name);
            if (!held || !holds(after, *held)) {
                if (!last->first_changed)
                    last->first_changed = out.size();
                continue;
            }
        }
        out += raw;
        if (inside && !line.text.empty())
            last->end = out.size();
    }
    return out;
}

bool is_narrow(const std::string& text)
{
    registry_lines lines(text);
    for (registry_line line; lines.next(line);)
        if (!line.text.empty() && line.text[0] != ';')
            return line.text == OLD_REGISTRY_HEADING;
    return false;
}

// The key's values by what the text says.
registry_key values_in(const std::string& text, std::string_view path)
{
    const auto key = parse_registry(text, {})->find(path);
    registry_key out;
    if (key)
        for (const registry_value& value : key->values)
            out.set(value);
    return out;
}

std::string edited(const std::string& text, const std::string& path, const registry_key& before,
                   const registry_key& after)
{
    const std::string line_end = text.find("\r\n") == std::string::npos ? "\n" : "\r\n";
    const bool narrow = is_narrow(text);
    const auto lines_of = [&](const registry_key& key, const registry_key& known) {
        std::string lines;
        for (const registry_value& value : key.values)
            if (!holds(known, value))
                lines += registry_value_line(value, narrow) + line_end;
        return lines;
    };
    const auto at_the_end = [&](std::string out, const std::string& lines) {
        if (!out.empty() && out.back() != '\n')
            out += line_end;
        return out + line_end + "[" + path + "]" + line_end + lines;
    };
    section last;
    std::string out = without_changed(text, path, before, after, &last);
    if (last.found) {
        std::string lines = lines_of(after, before);
        std::size_t place = last.first_changed.value_or(last.end);
        if (place > 0 && out[place - 1] != '\n' && out[place - 1] != '\r')
            lines.insert(0, line_end);
        out.insert(place, lines);
        if (same_values(values_in(out, path), after))
            return out;
        // A later line takes the key away: what follows holds.
        return at_the_end(out, lines_of(after, {}));
    }
    return at_the_end(out, lines_of(after, {}));
}

} // namespace

bool change_registry(const std::string& key_path, const std::function<void(registry_key&)>& change,
                     std::string* error)
{
    const std::string file = registry_file();
    const auto failed = [&](const std::string& why) {
        *error = program_path(file) + ": " + why;
        return false;
    };
    const registry_heading heading = registry_heading_of("[" + key_path + "]");
    const std::string& path = heading.path;
    if (!heading.damage.empty() || heading.removes || path.find_first_of("\r\n") != std::string::npos)
        return failed(cp1252_with_escapes(heading.damage.empty() ? "this is no name of a key: " + key_path
                                                                 : heading.damage));
    std::error_code ignored; // the writing tells what is wrong
    std::filesystem::create_directories(directory_of(file), ignored);
    const directory_lock lock(directory_of(file));
    const auto bytes = read_whole(file);
    if (!bytes && errno != ENOENT)
        return failed(std::strerror(errno)); // what can't be read must not be replaced
    const std::string text = registry_utf8(bytes ? *bytes : std::string(REGISTRY_HEADING) + "\n");
    const registry_key before = values_in(text, path);
    registry_key after = before;
    change(after);
    if (same_values(before, after))
        return true;
    for (const registry_value& value : after.values)
        if (value.name.find_first_of("\r\n") != std::string::npos)
            return failed("a value's name has a line end");
    std::string why;
    const bool written = replace_file(file, edited(text, path, before, after), {}, &why);
    forget_registry();
    return written ? true : failed(why);
}

bool set_registry_value(const std::string& path, const registry_value& value, std::string* error)
{
    if (path.find('\\') == std::string::npos) {
        *error = "a registry value needs a key";
        return false;
    }
    return change_registry(
        path, [&value](registry_key& key) { key.set(value); }, error);
}

} // namespace host
