// registry.h: the registry of the platform that the module was laid out for, kept as a text file in the
// form that registry editors export.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hostapi/windows.h"

namespace host
{

constexpr DWORD REG_NONE = 0;
constexpr DWORD REG_MULTI_SZ = 7;

struct registry_value {
    std::string name; // UTF-8; empty: the key's default value
    DWORD type = REG_SZ;
    // Texts (REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ) in UTF-8, the lines of a REG_MULTI_SZ each with a
    // terminator; other types their bytes, REG_DWORD four with the lowest first.
    std::string data;
};

struct registry_key {
    std::string name; // UTF-8; of the root: empty
    // Both in the order of the file.
    std::vector<registry_value> values;
    std::vector<std::shared_ptr<registry_key>> keys;

    // Names are compared without regard to case. Null when there is none.
    const registry_value* value(std::string_view value_name) const;
    void set(registry_value value);
    void remove_value(std::string_view value_name);
    // `path`: components parted by '\'.
    std::shared_ptr<registry_key> find(std::string_view path) const;
    std::shared_ptr<registry_key> make(std::string_view path);
    void remove(std::string_view path);
    // The values and keys of `other` that this one lacks.
    void add_missing(const registry_key& other);

private:
    std::unordered_map<std::string, std::size_t> value_places_, key_places_; // by folded name
};

// Reads the text form: UTF-8, UTF-16 with its mark, or Windows-1252, onto the tree `onto` (a new one when
// null), and hands that back. `file` stands in the complaints about damaged lines, which are passed over; there
// are none when it is empty.
std::shared_ptr<registry_key> parse_registry(std::string_view bytes, const std::string& file,
                                             std::shared_ptr<registry_key> onto = nullptr);
std::string registry_text(const registry_key& root);

// The registry of this run: what the host has without a file (installation.h), and onto that the file,
// run_settings().registry, else zentrik/registry.reg in the user's configuration directory. Read when it is
// first asked for and again when the file has changed. The root's keys are HKEY_LOCAL_MACHINE and so on;
// HKEY_CLASSES_ROOT shows the classes of user and machine too. Not to be changed.
std::shared_ptr<registry_key> run_registry();
// A key's path with the long name of its root for HKLM and the like; empty: no root is named so.
std::string full_registry_path(std::string_view path);
std::string registry_file();
void forget_registry(); // it is read again when it is next asked for

// Changes the values of the key `key_path` (from HKEY_... on) in the file: `change` gets them as the file has
// them now, which other hosts may have written. The rest of the file stays as it stands, and it is replaced
// whole. False with `error` when that fails: the file is as it was.
bool change_registry(const std::string& key_path, const std::function<void(registry_key&)>& change,
                     std::string* error);
bool set_registry_value(const std::string& path, const registry_value& value, std::string* error);

} // namespace host
