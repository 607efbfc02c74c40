// registry_text.cpp: the registry as a text, line by line.
#include "host/files/registry_text.h"

#include <algorithm>
#include <cstdio>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/files/names.h"
#include "host/files/paths.h"

namespace host
{

namespace
{

// As on the platform; the tree is walked by recursion.
constexpr int MOST_LEVELS = 512;

struct {
    const char *full, *brief;
} const ROOT_NAMES[] = {
    {"HKEY_LOCAL_MACHINE", "HKLM"}, {"HKEY_CURRENT_USER", "HKCU"},   {"HKEY_CLASSES_ROOT", "HKCR"},
    {"HKEY_USERS", "HKU"},          {"HKEY_CURRENT_CONFIG", "HKCC"},
};

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

} // namespace

std::string registry_utf8(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE"))
        return from_utf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF"))
        return from_utf16(bytes.substr(2), true);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return is_utf8(bytes) ? std::string(bytes) : utf8_of(bytes);
}

bool registry_lines::next(registry_line& out)
{
    out.text.clear();
    if (at_ >= text_.size())
        return false;
    out.begin = at_;
    out.number = next_number_;
    for (;;) {
        std::size_t end = text_.find_first_of("\r\n", at_);
        if (end == std::string::npos)
            end = text_.size();
        out.text += trimmed(std::string_view(text_).substr(at_, end - at_));
        at_ = end + (text_.compare(end, 2, "\r\n") == 0 ? 2 : 1);
        out.end = std::min(at_, text_.size());
        next_number_++;
        // Only numbers go on: a text that ends in a backslash has lost its quote.
        const bool goes_on = out.text.ends_with('\\') && lower(out.text).find("=hex") != std::string::npos;
        if (!goes_on || at_ >= text_.size())
            return true;
        out.text.pop_back();
    }
}

std::string full_registry_path(std::string_view path)
{
    const std::string_view root = path.substr(0, path.find('\\'));
    for (const auto& name : ROOT_NAMES)
        if (same_text(root, name.full) || same_text(root, name.brief))
            return name.full + std::string(path.substr(root.size()));
    return {};
}

registry_heading registry_heading_of(std::string_view line)
{
    registry_heading out;
    if (line.back() != ']') {
        out.damage = "a key has no ']'";
        return out;
    }
    std::string_view path = line.substr(1, line.size() - 2);
    out.removes = path.starts_with('-');
    if (out.removes)
        path.remove_prefix(1);
    out.path = full_registry_path(path);
    if (out.path.empty())
        out.damage = "'" + std::string(path.substr(0, path.find('\\'))) + "' is no root of a registry";
    else if (std::count(out.path.begin(), out.path.end(), '\\') >= MOST_LEVELS)
        out.damage = "a key lies deeper than " + std::to_string(MOST_LEVELS) + " levels";
    return out;
}

std::optional<std::string> registry_quoted(std::string_view line, std::size_t& at)
{
    std::string out;
    if (at >= line.size() || line[at] != '"')
        return std::nullopt;
    for (at++; at < line.size(); at++) {
        if (line[at] == '"') {
            at++;
            return out;
        }
        if (line[at] == '\\' && at + 1 < line.size()) {
            if (line[at + 1] != '\\' && line[at + 1] != '"')
                return std::nullopt;
            at++;
        }
        out += line[at];
    }
    return std::nullopt;
}

namespace
{

// ---- reading ---------------------------------------------------------------------------------

// Who writes a path by hand forgets it; read on, C:\new would quietly become C:new.
constexpr const char* SINGLE_BACKSLASH = "a backslash in a text is to be written twice";

class reader
{
public:
    reader(const std::string& text, const std::string& file, std::shared_ptr<registry_key> onto)
        : lines_(text), file_(file), root_(std::move(onto))
    {
    }

    std::shared_ptr<registry_key> read()
    {
        bool headed = false;
        while (lines_.next(at_)) {
            line_ = at_.text;
            if (line_.empty() || line_[0] == ';')
                continue;
            if (!headed) {
                headed = true;
                if (line_ == REGISTRY_HEADING)
                    continue;
                narrow_ = line_ == OLD_REGISTRY_HEADING;
                if (narrow_)
                    continue;
                damaged("the file doesn't begin with '" + std::string(REGISTRY_HEADING) + "'");
            }
            if (line_[0] == '[')
                read_key();
            else
                read_value();
        }
        return root_;
    }

private:
    void damaged(const std::string& what)
    {
        if (!file_.empty())
            complain(program_path(file_) + ":" + std::to_string(at_.number) + ": " + cp1252_with_escapes(what));
    }

    void read_key()
    {
        key_ = nullptr;
        skipping_ = true; // the values of a key that is damaged, unknown or removed
        const registry_heading heading = registry_heading_of(line_);
        if (!heading.damage.empty())
            damaged(heading.damage);
        else if (heading.removes)
            root_->remove(heading.path);
        else
            key_ = root_->make(heading.path);
        skipping_ = key_ == nullptr;
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
        } else if (auto name = registry_quoted(line_, at)) {
            value.name = *name;
        } else {
            damaged(at > 0 && at < line_.size() ? SINGLE_BACKSLASH : "a value's name isn't in quotes");
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
            auto text = registry_quoted(line_, at);
            if (!text) {
                damaged(at < line_.size() ? SINGLE_BACKSLASH : "a text has no quote at its end");
                return false;
            }
            if (at != line_.size()) {
                damaged("there is more behind the text");
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

    registry_lines lines_;
    registry_line at_;
    std::string line_;
    const std::string& file_;
    bool narrow_ = false, skipping_ = false;
    std::shared_ptr<registry_key> root_, key_;
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

std::string value_text(const registry_value& value, bool narrow)
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
    if (!is_text(value.type))
        return text + hex_bytes(value.data);
    const std::string whole = value.data + '\0';
    return text + hex_bytes(narrow ? cp1252_with_escapes(whole) : to_utf16(whole));
}

} // namespace

std::string registry_value_line(const registry_value& value, bool narrow)
{
    return (value.name.empty() ? "@" : quoted_text(value.name)) + "=" + value_text(value, narrow);
}

namespace
{

void append_key(std::string& out, const registry_key& key, const std::string& path)
{
    if (!path.empty()) {
        out += "\n[" + path + "]\n";
        for (const registry_value& value : key.values)
            out += registry_value_line(value, false) + "\n";
    }
    for (const auto& child : key.keys)
        append_key(out, *child, path.empty() ? child->name : path + "\\" + child->name);
}

} // namespace

std::shared_ptr<registry_key> parse_registry(std::string_view bytes, const std::string& file,
                                             std::shared_ptr<registry_key> onto)
{
    if (!onto)
        onto = std::make_shared<registry_key>();
    return reader(registry_utf8(bytes), file, std::move(onto)).read();
}

std::string registry_text(const registry_key& root)
{
    std::string out = std::string(REGISTRY_HEADING) + "\n";
    append_key(out, root, {});
    return out;
}

} // namespace host
