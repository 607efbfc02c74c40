// Paths are looked up component by component. Among names that differ in case only, the one spelled as
// asked goes first, then the others in alphabetical order; the first under which the whole rest exists is
// taken, and when there is none the one that leads furthest.
#include "host/files/paths.h"

#include <algorithm>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/core/document.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/files/names.h"
#include "hostapi/ads.h"

namespace host
{

std::string absolute_path(const std::string& path)
{
    if (!path.empty() && path[0] == '/')
        return path;
    char* here = getcwd(nullptr, 0);
    if (!here)
        return path;
    std::string out = here;
    free(here);
    if (out.back() != '/')
        out += '/';
    return out + path;
}

namespace
{

bool there(const std::string& path)
{
    struct stat state;
    return lstat(path.c_str(), &state) == 0;
}

bool is_letter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool is_separator(std::string_view path, std::size_t at)
{
    return path[at] == '/' || (path[at] == '\\' && !escape_at(path, at));
}

// A letter that stands for the root.
char root_letter()
{
    const auto& drives = run_settings().drives;
    for (char letter = 'Z'; letter > 'A'; letter--) {
        const auto found = drives.find(letter);
        if (found == drives.end() || found->second == "/")
            return letter;
    }
    return 'A';
}

struct split_path {
    std::string head; // "", "/", "//", or a drive's directory with a separator at its end
    std::vector<std::string> components;
    bool ends_in_separator = false;
};

std::string drive_directory(char letter)
{
    const auto& drives = run_settings().drives;
    const auto found = drives.find(upper(std::string_view(&letter, 1))[0]);
    std::string directory = found == drives.end() ? "/" : found->second;
    if (directory.empty() || directory.back() != '/')
        directory += '/';
    return directory;
}

split_path split(std::string_view path)
{
    split_path out;
    std::size_t at = 0;
    if (path.size() >= 2 && is_letter(path[0]) && path[1] == ':') {
        out.head = drive_directory(path[0]);
        at = 2;
    } else if (path.size() >= 2 && is_separator(path, 0) && is_separator(path, 1)) {
        out.head = "//";
    } else if (!path.empty() && is_separator(path, 0)) {
        out.head = "/";
    }
    std::string component;
    for (; at < path.size(); at++) {
        if (!is_separator(path, at)) {
            component += path[at];
            continue;
        }
        if (!component.empty())
            out.components.push_back(component);
        component.clear();
    }
    out.ends_in_separator = component.empty() && !out.components.empty();
    if (!component.empty())
        out.components.push_back(component);
    return out;
}

// Names in `directory` that are `component` in another case or coding, in alphabetical order.
std::vector<std::string> candidates(const std::string& directory, const std::string& component)
{
    std::vector<std::string> out;
    if (there(directory + component))
        out.push_back(component);
    DIR* listing = opendir(directory.empty() ? "." : directory.c_str());
    if (!listing)
        return out;
    const std::string wanted = folded_name(program_name(component));
    const std::size_t first = out.size();
    while (const dirent* entry = readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name != component && folded_name(program_name(name)) == wanted)
            out.emplace_back(name);
    }
    closedir(listing);
    std::sort(out.begin() + static_cast<std::ptrdiff_t>(first), out.end());
    return out;
}

struct search {
    const std::vector<std::string>& components;
    std::string furthest;
    std::size_t depth = 0; // components of `furthest` that exist
};

// True when the components from `index` on exist under `base`, which is empty or ends in a separator.
bool look_up(search& what, const std::string& base, std::size_t index)
{
    if (index > what.depth || what.furthest.empty()) {
        what.furthest = base;
        what.depth = index;
    }
    if (index == what.components.size())
        return true;
    const std::string& component = what.components[index];
    const bool last = index + 1 == what.components.size();
    // As spelled first: this spares the reading of the directory nearly always.
    if (there(base + component) && look_up(what, base + component + (last ? "" : "/"), index + 1))
        return true;
    if (component == "." || component == "..")
        return false;
    for (const std::string& name : candidates(base, component))
        if (name != component && look_up(what, base + name + (last ? "" : "/"), index + 1))
            return true;
    return false;
}

std::string resolve(std::string_view path, bool* exists)
{
    const std::string plain(path);
    *exists = !plain.empty() && there(plain);
    if (plain.empty() || *exists)
        return plain;
    const split_path parts = split(path);
    if (parts.components.empty()) {
        *exists = there(parts.head);
        return parts.head;
    }
    search what{parts.components, {}, 0};
    *exists = look_up(what, parts.head, 0);
    std::string out = what.furthest;
    for (std::size_t i = what.depth; i < parts.components.size(); i++) {
        out += disk_name(parts.components[i]);
        if (i + 1 < parts.components.size())
            out += '/';
    }
    if (parts.ends_in_separator && out.back() != '/')
        out += '/';
    return out;
}

bool is_file(const std::string& path)
{
    struct stat state;
    return stat(path.c_str(), &state) == 0 && !S_ISDIR(state.st_mode);
}

// Where the product keeps what programs ask for by a bare name.
constexpr const char* PRODUCT_DIRECTORIES[] = {"",        "dialogs/", "lisp/", "symbols/",
                                               "slides/", "samples/", "help/"};

// Names with a root or that begin at the current directory are looked up as they stand only.
bool names_its_place(std::string_view name)
{
    if (name.size() >= 2 && is_letter(name[0]) && name[1] == ':')
        return true;
    if (is_separator(name, 0))
        return true;
    const std::size_t points = name.find_first_not_of('.');
    return (points == 1 || points == 2) && is_separator(name, points);
}

// The file that `path` means, a drawing's by its own rule.
std::optional<std::string> existing_file(const std::string& path)
{
    const std::string found = file_path(path);
    if (is_file(found))
        return absolute_path(found);
    return std::nullopt;
}

} // namespace

std::string real_path(std::string_view path)
{
    bool exists = false;
    return resolve(path, &exists);
}

std::optional<std::string> existing_path(std::string_view path)
{
    bool exists = false;
    std::string found = resolve(path, &exists);
    struct stat state;
    if (!exists || stat(found.c_str(), &state) != 0)
        return std::nullopt;
    return found;
}

std::string drawing_path(std::string_view path)
{
    const std::string_view extension = extension_of(path);
    if (!extension.empty() && !same_text(extension, ".dwg"))
        return real_path(path);
    const std::string base(path.substr(0, path.size() - extension.size()));
    if (auto found = existing_path(base + (extension.empty() ? ".dwg" : std::string(extension))))
        return *found;
    return real_path(base + ".dxf");
}

std::string drawing_to_read(std::string_view path)
{
    const std::string drawing = drawing_path(path);
    struct stat state;
    if (stat(drawing.c_str(), &state) == 0)
        return drawing;
    return existing_path(path).value_or(drawing);
}

std::string with_escapes_put_back(std::string_view path)
{
    std::string put_back(path);
    for (std::size_t at = 0; at < put_back.size(); at++) {
        if (put_back[at] != '/')
            continue;
        put_back[at] = '\\';
        if (!escape_at(put_back, at))
            put_back[at] = '/';
    }
    if (put_back == path || is_file(drawing_to_read(path)) || !is_file(drawing_to_read(put_back)))
        return std::string(path);
    return put_back;
}

std::string file_path(std::string_view path)
{
    return same_text(extension_of(path), ".dwg") ? drawing_path(path) : real_path(path);
}

std::optional<std::string> find_file(std::string_view name)
{
    if (name.empty())
        return std::nullopt;
    const std::string plain(name);
    if (names_its_place(name))
        return existing_file(plain);
    if (has_document() && !current_document().file.empty())
        if (auto found = existing_file(directory_of(current_document().file) + plain))
            return found;
    if (auto found = existing_file(plain))
        return found;
    const std::string& share = run_settings().share;
    if (share.empty())
        return std::nullopt;
    for (const char* directory : PRODUCT_DIRECTORIES)
        if (auto found = existing_file(share + "/" + directory + plain))
            return found;
    return std::nullopt;
}

std::optional<std::string> find_module_file(std::string_view name)
{
    std::vector<std::string> names = {std::string(name)};
    const std::string_view extension = extension_of(name);
    if (same_text(extension, ".arx"))
        names.push_back(std::string(name.substr(0, name.size() - extension.size())) + ".so");
    else if (!same_text(extension, ".so"))
        names.push_back(std::string(name) + ".so");
    for (const std::string& one : names) {
        if (auto found = find_file(one))
            return found;
        if (!names_its_place(one))
            for (const std::string& directory : run_settings().modules)
                if (auto found = existing_file(directory + one))
                    return found;
    }
    return std::nullopt;
}

std::string directory_of(std::string_view path)
{
    const std::size_t at = last_separator(path);
    return at == std::string_view::npos ? std::string() : std::string(path.substr(0, at + 1));
}

std::string file_name_of(std::string_view path)
{
    const std::size_t at = last_separator(path);
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string drive_path(std::string_view path)
{
    std::string out;
    std::vector<std::string> components;
    const auto add = [&components](const split_path& parts) {
        for (const std::string& component : parts.components) {
            if (component == ".." && !components.empty())
                components.pop_back();
            else if (component != "." && component != "..")
                components.push_back(program_name(component));
        }
    };
    const split_path parts = split(path);
    if (path.size() >= 2 && is_letter(path[0]) && path[1] == ':') {
        out = path.substr(0, 2);
    } else if (parts.head == "//") {
        out = "\\";
    } else {
        if (parts.head.empty())
            add(split(absolute_path({})));
        out = std::string(1, root_letter()) + ":";
    }
    add(parts);
    for (const std::string& component : components)
        out += '\\' + component;
    return components.empty() ? out + '\\' : out;
}

std::string program_path(std::string_view real)
{
    std::string out;
    std::string component;
    for (const char c : real) {
        if (c != '/') {
            component += c;
            continue;
        }
        out += program_name(component) + '/';
        component.clear();
    }
    return out + program_name(component);
}

} // namespace host

extern "C" int acedFindFile(const char* name, char* out)
{
    if (!name || !out)
        return RTERROR;
    const auto found = host::find_file(name);
    if (!found)
        return RTERROR;
    std::string path = host::program_path(*found);
    // A drawing keeps the extension by which programs know it.
    const std::string_view asked = host::extension_of(name);
    const std::size_t known = path.size() - host::extension_of(path).size();
    if (host::same_text(asked, ".dwg") && host::same_text(path.substr(known), ".dxf"))
        path = path.substr(0, known) + std::string(asked);
    if (path.size() >= ADS_PATH_SIZE)
        return RTERROR;
    path.copy(out, path.size());
    out[path.size()] = '\0';
    return RTNORM;
}
