// registry.cpp: the registry as a tree, and that of the run.
#include "host/files/registry.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <type_traits>

#include <sys/stat.h>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/files/installation.h"
#include "host/files/names.h"
#include "host/files/paths.h"

namespace host
{

namespace
{

std::string folded(std::string_view name)
{
    return folded_name(program_name(name));
}

template <class Named>
std::unordered_map<std::string, std::size_t> places_of(const std::vector<Named>& all)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < all.size(); i++) {
        if constexpr (std::is_same_v<Named, registry_value>)
            places[folded(all[i].name)] = i;
        else
            places[folded(all[i]->name)] = i;
    }
    return places;
}

} // namespace

const registry_value* registry_key::value(std::string_view value_name) const
{
    const auto place = value_places_.find(folded(value_name));
    return place == value_places_.end() ? nullptr : &values[place->second];
}

void registry_key::set(registry_value value)
{
    const auto [place, is_new] = value_places_.try_emplace(folded(value.name), values.size());
    if (is_new)
        values.push_back(std::move(value));
    else
        values[place->second] = std::move(value);
}

void registry_key::remove_value(std::string_view value_name)
{
    const auto place = value_places_.find(folded(value_name));
    if (place == value_places_.end())
        return;
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(place->second));
    value_places_ = places_of(values);
}

std::shared_ptr<registry_key> registry_key::find(std::string_view path) const
{
    const registry_key* at = this;
    std::shared_ptr<registry_key> found;
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('\\'));
        path.remove_prefix(std::min(path.size(), component.size() + 1));
        if (component.empty())
            continue;
        const auto place = at->key_places_.find(folded(component));
        if (place == at->key_places_.end())
            return nullptr;
        found = at->keys[place->second];
        at = found.get();
    }
    return found;
}

std::shared_ptr<registry_key> registry_key::make(std::string_view path)
{
    registry_key* at = this;
    std::shared_ptr<registry_key> made;
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('\\'));
        path.remove_prefix(std::min(path.size(), component.size() + 1));
        if (component.empty())
            continue;
        const auto [place, is_new] = at->key_places_.try_emplace(folded(component), at->keys.size());
        if (is_new) {
            at->keys.push_back(std::make_shared<registry_key>());
            at->keys.back()->name = std::string(component);
        }
        made = at->keys[place->second];
        at = made.get();
    }
    return made;
}

void registry_key::add_missing(const registry_key& other)
{
    for (const registry_value& one : other.values)
        if (!value(one.name))
            set(one);
    for (const auto& child : other.keys)
        if (!child->name.empty())
            make(child->name)->add_missing(*child);
}

void registry_key::remove(std::string_view path)
{
    const std::size_t parting = path.rfind('\\');
    if (parting == std::string_view::npos)
        return;
    const auto parent = find(path.substr(0, parting));
    if (!parent)
        return;
    const auto place = parent->key_places_.find(folded(path.substr(parting + 1)));
    if (place == parent->key_places_.end())
        return;
    parent->keys.erase(parent->keys.begin() + static_cast<std::ptrdiff_t>(place->second));
    parent->key_places_ = places_of(parent->keys);
}

// ---- the registry of the run -------------------------------------------------------------------

std::string registry_file()
{
    if (!run_settings().registry.empty())
        return real_path(run_settings().registry);
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration && configuration[0] == '/')
        return std::string(configuration) + "/zentrik/registry.reg";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config/zentrik/registry.reg";
}

namespace
{

// The file as it was when it was read.
struct loaded_registry {
    std::string file;
    timespec changed{};
    off_t size = -1;
    std::shared_ptr<registry_key> root;
};
loaded_registry loaded;

loaded_registry state_of(const std::string& file)
{
    loaded_registry out{file, {}, -1, nullptr};
    struct stat state;
    if (stat(file.c_str(), &state) == 0) {
        out.changed = state.st_mtim;
        out.size = state.st_size;
    }
    return out;
}

} // namespace

std::shared_ptr<registry_key> run_registry()
{
    loaded_registry now = state_of(registry_file());
    if (loaded.root && now.file == loaded.file && now.size == loaded.size &&
        now.changed.tv_sec == loaded.changed.tv_sec && now.changed.tv_nsec == loaded.changed.tv_nsec)
        return loaded.root;
    const auto bytes = read_whole(now.file);
    if (!bytes && errno != ENOENT && errno != ENOTDIR)
        complain(program_path(now.file) + ": the registry can't be read");
    now.root = registry_defaults();
    if (bytes)
        parse_registry(*bytes, now.file, now.root);
    // The classes are those of the user and of the machine, seen as one.
    const auto classes = now.root->make("HKEY_CLASSES_ROOT");
    for (const char* place : {"HKEY_CURRENT_USER\\Software\\Classes", "HKEY_LOCAL_MACHINE\\Software\\Classes"})
        if (const auto more = now.root->find(place))
            classes->add_missing(*more);
    loaded = std::move(now);
    return loaded.root;
}

void forget_registry()
{
    loaded = {};
}

} // namespace host
