// registry.cpp: the registry as a tree and as a text.
#include "host/files/registry.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <type_traits>

#include <sys/stat.h>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"

namespace host
{

namespace
{

constexpr std::string_view HEADING = "Windows Registry Editor Version 5.00";
constexpr std::string_view OLD_HEADING = "REGEDIT4"; // its hexadecimal texts have one byte a character

// As on the platform; the tree is walked by recursion.
constexpr int MOST_LEVELS = 512;

struct {
    const char *full, *brief;
} const ROOT_NAMES[] = {
    {"HKEY_LOCAL_MACHINE", "HKLM"}, {"HKEY_CURRENT_USER", "HKCU"},   {"HKEY_CLASSES_ROOT", "HKCR"},
    {"HKEY_USERS", "HKU"},          {"HKEY_CURRENT_CONFIG", "HKCC"},
};

std::string folded(std::string_view name)
{
    return folded_name(program_name(name));
}

bool is_text(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// UTF-16 to UTF-8; `big_endian` tells the order of the bytes.
std::string from_utf16(std::string_view bytes, bool big_endian)
{
    const auto unit = [&](std::size_t at) {
        const unsigned first = static_cast<unsigned char>(bytes[at]),
                       second = static_cast<unsigned char>(bytes[at + 1]);
        return big_endian ? first << 8 | second : second << 8 | first;
    };
    std::string out;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        unsigned code = unit(at);
        if (code >= 0xD800 && code < 0xDC00 && at + 3 < bytes.size() && (unit(at + 2) & 0xFC00) == 0xDC00) {
            code = 0x10000 + ((code - 0xD800) << 10) + (unit(at + 2) - 0xDC00);
            at += 2;
        }
        append_utf8(out, code);
    }
    return out;
}

std::string utf8_text(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE"))
        return from_utf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF"))
        return from_utf16(bytes.substr(2), true);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return is_utf8(bytes) ? std::string(bytes) : utf8_of(bytes);
}

// ---- reading ---------------------------------------------------------------------------------

class reader
{
public:
    reader(std::string text, const std::string& file) : text_(std::move(text)), file_(file) {}

    std::shared_ptr<registry_key> read()
    {
        bool headed = false;
        while (next_line()) {
            if (line_.empty() || line_[0] == ';')
                continue;
            if (!headed) {
                headed = true;
                if (line_ == HEADING)
                    continue;
                narrow_ = line_ == OLD_HEADING;
                if (narrow_)
                    continue;
                damaged("the file doesn't begin with '" + std::string(HEADING) + "'");
            }
            if (line_[0] == '[')
                read_key();
            else
                read_value();
        }
        return root_;
    }

private:
    // The next line without blanks at its ends; lines that end in a backslash go on in the next one.
    bool next_line()
    {
        line_.clear();
        if (at_ >= text_.size())
            return false;
        number_ = next_number_;
        for (;;) {
            std::size_t end = text_.find_first_of("\r\n", at_);
            if (end == std::string::npos)
                end = text_.size();
            line_ += trimmed(std::string_view(text_).substr(at_, end - at_));
            at_ = end + (text_.compare(end, 2, "\r\n") == 0 ? 2 : 1);
            next_number_++;
            // Only numbers go on: a text that ends in a backslash has lost its quote.
            const bool goes_on = line_.ends_with('\\') && lower(line_).find("=hex") != std::string::npos;
            if (!goes_on || at_ >= text_.size())
                return true;
            line_.pop_back();
        }
    }

    void damaged(const std::string& what)
    {
        complain(program_path(file_) + ":" + std::to_string(number_) + ": " + cp1252_with_escapes(what));
    }

    void read_key()
    {
        key_ = nullptr;
        skipping_ = true; // the values of a key that is damaged, unknown or removed
        if (line_.back() != ']') {
            damaged("a key has no ']'");
            return;
        }
        std::string_view path = std::string_view(line_).substr(1, line_.size() - 2);
        const bool removes = path.starts_with('-');
        if (removes)
            path.remove_prefix(1);
        const std::string_view root = path.substr(0, path.find('\\'));
        std::string full;
        for (const auto& name : ROOT_NAMES)
            if (same_text(root, name.full) || same_text(root, name.brief))
                full = name.full + std::string(path.substr(root.size()));
        if (full.empty())
            damaged("'" + std::string(root) + "' is no root of a registry");
        else if (std::count(full.begin(), full.end(), '\\') >= MOST_LEVELS)
            damaged("a key lies deeper than " + std::to_string(MOST_LEVELS) + " levels");
        else if (removes)
            root_->remove(full);
        else
            key_ = root_->make(full);
        skipping_ = key_ == nullptr;
    }

    // A text in quotes from `at` on; `at` moves behind it.
    std::optional<std::string> quoted(std::size_t& at)
    {
        std::string out;
        if (at >= line_.size() || line_[at] != '"')
            return std::nullopt;
        for (at++; at < line_.size(); at++) {
            if (line_[at] == '"') {
                at++;
                return out;
            }
            if (line_[at] == '\\' && at + 1 < line_.size())
                at++;
            out += line_[at];
        }
        return std::nullopt;
    }

    void read_value()
    {
        if (!key_) {
            if (!skipping_)
                damaged("a value stands outside of any key");
            return;
        }
        registry_value value;
        std::size_t at = 0;
        if (line_[0] == '@') {
            at = 1;
        } else if (auto name = quoted(at)) {
            value.name = *name;
        } else {
            damaged("a value's name isn't in quotes");
            return;
        }
        while (at < line_.size() && (line_[at] == ' ' || line_[at] == '\t'))
            at++;
        if (at >= line_.size() || line_[at] != '=') {
            damaged("a value has no '='");
            return;
        }
        for (at++; at < line_.size() && (line_[at] == ' ' || line_[at] == '\t');)
            at++;
        if (std::string_view(line_).substr(at) == "-") {
            key_->remove_value(value.name);
            return;
        }
        if (!read_data(at, value))
            return;
        key_->set(std::move(value));
    }

    bool read_data(std::size_t at, registry_value& value)
    {
        if (at < line_.size() && line_[at] == '"') {
            auto text = quoted(at);
            if (!text || at != line_.size()) {
                damaged(text ? "there is more behind the text" : "a text has no quote at its end");
                return false;
            }
            value.data = *text;
            return true;
        }
        const std::size_t colon = line_.find(':', at);
        const std::string kind = lower(line_.substr(at, colon == std::string::npos ? colon : colon - at));
        const std::string_view digits =
            colon == std::string::npos ? std::string_view() : std::string_view(line_).substr(colon + 1);
        if (kind == "dword" && colon != std::string::npos)
            return read_dword(trimmed(digits), value);
        unsigned type = REG_BINARY;
        int length = 0;
        const bool is_hex = kind == "hex" || (std::sscanf(kind.c_str(), "hex(%8x)%n", &type, &length) == 1 &&
                                              static_cast<std::size_t>(length) == kind.size());
        if (!is_hex || colon == std::string::npos) {
            damaged("'" + kind + "' is no kind of value");
            return false;
        }
        value.type = type;
        return read_bytes(digits, value);
    }

    bool read_dword(std::string_view digits, registry_value& value)
    {
        if (digits.empty() || digits.size() > 8 ||
            digits.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos) {
            damaged("'" + std::string(digits) + "' is no hexadecimal number of up to eight digits");
            return false;
        }
        const unsigned long number = std::stoul(std::string(digits), nullptr, 16);
        value.type = REG_DWORD;
        for (int shift = 0; shift < 32; shift += 8)
            value.data += static_cast<char>(number >> shift & 0xFF);
        return true;
    }

    bool read_bytes(std::string_view digits, registry_value& value)
    {
        std::string bytes;
        while (!trimmed(digits).empty()) {
            const std::size_t comma = digits.find(',');
            const std::string byte(trimmed(digits.substr(0, comma)));
            digits = comma == std::string_view::npos ? std::string_view() : digits.substr(comma + 1);
            if (byte.empty() || byte.size() > 2 ||
                byte.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
                damaged("'" + byte + "' is no hexadecimal byte");
                return false;
            }
            bytes += static_cast<char>(std::stoul(byte, nullptr, 16));
        }
        if (is_text(value.type)) {
            bytes = narrow_ ? utf8_of(bytes) : from_utf16(bytes, false);
            // The terminator, of the text or of the list of texts, is no part of it.
            if (!bytes.empty() && bytes.back() == '\0')
                bytes.pop_back();
        }
        value.data = std::move(bytes);
        return true;
    }

    std::string text_, line_;
    const std::string& file_;
    std::size_t at_ = 0;
    int number_ = 0, next_number_ = 1;
    bool narrow_ = false, skipping_ = false;
    std::shared_ptr<registry_key> root_ = std::make_shared<registry_key>(), key_;
};

// ---- writing ---------------------------------------------------------------------------------

std::string quoted_text(std::string_view text)
{
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + "\"";
}

void append_unit(std::string& out, unsigned unit)
{
    out += static_cast<char>(unit & 0xFF);
    out += static_cast<char>(unit >> 8 & 0xFF);
}

// UTF-8 that has been checked to UTF-16, lowest byte first.
std::string to_utf16(std::string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned code = more == 0 ? lead : lead & (0x3Fu >> more);
        for (int i = 1; i <= more && at + static_cast<std::size_t>(i) < text.size(); i++)
            code = code << 6 | (static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]) & 0x3Fu);
        at += static_cast<std::size_t>(more) + 1;
        if (code >= 0x10000) {
            append_unit(out, 0xD800 + ((code - 0x10000) >> 10));
            code = 0xDC00 + (code & 0x3FF);
        }
        append_unit(out, code);
    }
    return out;
}

std::string hex_bytes(std::string_view bytes)
{
    std::string out;
    char text[4];
    for (const char c : bytes) {
        std::snprintf(text, sizeof text, out.empty() ? "%02x" : ",%02x", static_cast<unsigned char>(c));
        out += text;
    }
    return out;
}

std::string value_text(const registry_value& value)
{
    if (value.type == REG_SZ && value.data.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos)
        return quoted_text(value.data);
    char text[24];
    if (value.type == REG_DWORD && value.data.size() == 4) {
        unsigned number = 0;
        for (int i = 3; i >= 0; i--)
            number = number << 8 | static_cast<unsigned char>(value.data[static_cast<std::size_t>(i)]);
        std::snprintf(text, sizeof text, "dword:%08x", number);
        return text;
    }
    if (value.type == REG_BINARY)
        return "hex:" + hex_bytes(value.data);
    std::snprintf(text, sizeof text, "hex(%x):", value.type);
    return text + hex_bytes(is_text(value.type) ? to_utf16(value.data + '\0') : value.data);
}

void append_key(std::string& out, const registry_key& key, const std::string& path)
{
    if (!path.empty()) {
        out += "\n[" + path + "]\n";
        for (const registry_value& value : key.values)
            out += (value.name.empty() ? "@" : quoted_text(value.name)) + "=" + value_text(value) + "\n";
    }
    for (const auto& child : key.keys)
        append_key(out, *child, path.empty() ? child->name : path + "\\" + child->name);
}

} // namespace

// ---- the tree --------------------------------------------------------------------------------

namespace
{

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

std::shared_ptr<registry_key> parse_registry(std::string_view bytes, const std::string& file)
{
    return reader(utf8_text(bytes), file).read();
}

std::string registry_text(const registry_key& root)
{
    std::string out = std::string(HEADING) + "\n";
    append_key(out, root, {});
    return out;
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
    now.root = parse_registry(bytes ? *bytes : std::string(HEADING), now.file);
    loaded = std::move(now);
    return loaded.root;
}

bool set_registry_value(std::string_view path, registry_value value, std::string* error)
{
    const auto root = run_registry();
    const auto key = root->make(path);
    if (!key) {
        *error = "a registry value needs a key";
        return false;
    }
    key->set(std::move(value));
    const std::string file = registry_file();
    std::error_code ignored; // the writing tells what is wrong
    std::filesystem::create_directories(directory_of(file), ignored);
    if (!replace_file(file, registry_text(*root), {}, error)) {
        if (error)
            error->insert(0, program_path(file) + ": ");
        loaded = {}; // what could not be written is not to be seen either
        return false;
    }
    loaded = state_of(file);
    loaded.root = root;
    return true;
}

} // namespace host
