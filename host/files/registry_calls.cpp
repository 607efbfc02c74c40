// hostapi/windows.h: the registry's calls. Open keys hold their part of the tree, so that a registry file
// that changes meanwhile leaves them as they were.
#include <algorithm>
#include <cstring>
#include <map>

#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/names.h"
#include "host/files/registry.h"

namespace
{

constexpr long ERROR_INVALID_HANDLE = 6;
constexpr long ERROR_INVALID_PARAMETER = 87;

struct {
    HKEY handle;
    const char* name;
} const ROOTS[] = {
    {HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT"},   {HKEY_CURRENT_USER, "HKEY_CURRENT_USER"},
    {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE"}, {0x80000003u, "HKEY_USERS"},
    {0x80000005u, "HKEY_CURRENT_CONFIG"},
};

struct {
    long code;
    const char* name;
} const RESULTS[] = {
    {ERROR_SUCCESS, "ERROR_SUCCESS"},
    {ERROR_FILE_NOT_FOUND, "ERROR_FILE_NOT_FOUND"},
    {ERROR_INVALID_HANDLE, "ERROR_INVALID_HANDLE"},
    {ERROR_INVALID_PARAMETER, "ERROR_INVALID_PARAMETER"},
    {ERROR_MORE_DATA, "ERROR_MORE_DATA"},
    {ERROR_NO_MORE_ITEMS, "ERROR_NO_MORE_ITEMS"},
};

using key_ptr = std::shared_ptr<host::registry_key>;

std::map<HKEY, key_ptr>& open_keys()
{
    static std::map<HKEY, key_ptr> keys;
    return keys;
}

const char* root_name(HKEY key)
{
    for (const auto& root : ROOTS)
        if (root.handle == key)
            return root.name;
    return nullptr;
}

// Null for a handle that isn't open; a root that the file doesn't have is an empty key.
key_ptr key_of(HKEY handle)
{
    if (const char* name = root_name(handle)) {
        const key_ptr root = host::run_registry()->find(name);
        return root ? root : std::make_shared<host::registry_key>();
    }
    const auto found = open_keys().find(handle);
    return found == open_keys().end() ? nullptr : found->second;
}

void trace_key(host::trace_line& line, HKEY key)
{
    if (const char* name = root_name(key))
        line.word(name);
    else
        line.integer(key);
}

long told(host::trace_line& line, long code)
{
    for (const auto& result : RESULTS)
        if (result.code == code)
            line.result(result.name);
    return code;
}

std::string inside(const std::string& utf8)
{
    return host::cp1252_with_escapes(utf8);
}

// A value's bytes as programs get them: texts in Windows-1252 with their terminators.
std::string bytes_of(const host::registry_value& value)
{
    switch (value.type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
    case host::REG_MULTI_SZ:
        return inside(value.data) + '\0';
    default:
        return value.data;
    }
}

std::string printed(const host::registry_value& value)
{
    const std::string bytes = bytes_of(value);
    if (value.type == REG_SZ || value.type == REG_EXPAND_SZ)
        return host::lisp_string(bytes.c_str());
    if (value.type == REG_DWORD && bytes.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(bytes[i]);
        return std::to_string(number);
    }
    return "<" + std::to_string(bytes.size()) + " bytes>";
}

// Data out by the rules that all calls share: without room the size alone is told.
long hand_out(const std::string& bytes, unsigned char* data, DWORD* size)
{
    if (!size)
        return data ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    const DWORD room = *size;
    *size = static_cast<DWORD>(bytes.size());
    if (!data)
        return ERROR_SUCCESS;
    if (room < bytes.size())
        return ERROR_MORE_DATA;
    std::copy(bytes.begin(), bytes.end(), data);
    return ERROR_SUCCESS;
}

// A name out: the room counts the terminator, the length handed back doesn't.
long hand_out_name(const std::string& text, char* name, DWORD* size)
{
    if (*size < text.size() + 1)
        return ERROR_MORE_DATA;
    text.copy(name, text.size());
    name[text.size()] = '\0';
    *size = static_cast<DWORD>(text.size());
    return ERROR_SUCCESS;
}

} // namespace

extern "C" {

long RegOpenKeyExA(HKEY parent, const char* path, DWORD options, DWORD access, HKEY* key)
{
    static HKEY last = 0;
    host::trace_line line("RegOpenKeyExA");
    trace_key(line, parent);
    line.text(path).integer(options).integer(access);
    if (!key)
        return told(line, ERROR_INVALID_PARAMETER);
    *key = 0;
    const key_ptr from = key_of(parent);
    if (!from)
        return told(line, ERROR_INVALID_HANDLE);
    const std::string wanted = path ? path : "";
    const key_ptr found = wanted.find_first_not_of('\\') == std::string::npos ? from : from->find(wanted);
    if (!found)
        return told(line, ERROR_FILE_NOT_FOUND);
    *key = ++last;
    open_keys()[*key] = found;
    return told(line, ERROR_SUCCESS);
}

long RegCloseKey(HKEY key)
{
    if (root_name(key))
        return ERROR_SUCCESS;
    return open_keys().erase(key) == 1 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

long RegQueryValueExA(HKEY key, const char* name, DWORD*, DWORD* type, unsigned char* data, DWORD* size)
{
    host::trace_line line("RegQueryValueExA");
    trace_key(line, key);
    line.text(name);
    const key_ptr from = key_of(key);
    if (!from)
        return told(line, ERROR_INVALID_HANDLE);
    const host::registry_value* value = from->value(name ? name : "");
    if (!value)
        return told(line, ERROR_FILE_NOT_FOUND);
    if (type)
        *type = value->type;
    const long code = hand_out(bytes_of(*value), data, size);
    if (code != ERROR_SUCCESS)
        return told(line, code);
    line.result(printed(*value));
    return code;
}

long RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* name_size)
{
    host::trace_line line("RegEnumKeyExA");
    trace_key(line, key);
    line.integer(index);
    const key_ptr from = key_of(key);
    if (!from)
        return told(line, ERROR_INVALID_HANDLE);
    if (!name || !name_size)
        return told(line, ERROR_INVALID_PARAMETER);
    if (index >= from->keys.size())
        return told(line, ERROR_NO_MORE_ITEMS);
    const long code = hand_out_name(inside(from->keys[index]->name), name, name_size);
    if (code != ERROR_SUCCESS)
        return told(line, code);
    line.result(host::lisp_string(name));
    return code;
}

long RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* name_size, DWORD* type, unsigned char* data,
                   DWORD* size)
{
    host::trace_line line("RegEnumValueA");
    trace_key(line, key);
    line.integer(index);
    const key_ptr from = key_of(key);
    if (!from)
        return told(line, ERROR_INVALID_HANDLE);
    if (!name || !name_size)
        return told(line, ERROR_INVALID_PARAMETER);
    if (index >= from->values.size())
        return told(line, ERROR_NO_MORE_ITEMS);
    const host::registry_value& value = from->values[index];
    if (type)
        *type = value.type;
    const long named = hand_out_name(inside(value.name), name, name_size);
    const long code = hand_out(bytes_of(value), data, size);
    if (named != ERROR_SUCCESS || code != ERROR_SUCCESS)
        return told(line, named != ERROR_SUCCESS ? named : code);
    line.result(host::lisp_string(name) + " " + printed(value));
    return code;
}
}
