// system.cpp: modules, other programs, the registry.
#include "host/core/module.h"
#include "host/core/text.h"
#include "host/files/associations.h"
#include "host/files/paths.h"
#include "host/files/registry.h"
#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "hostapi/processes.h"
#include "hostapi/windows.h"

namespace host::lisp
{

namespace
{

// Of a module that can't be loaded or unloaded: `otherwise` if there is one, else an error.
value refused(interpreter& l, arguments a, const char* what, const std::string& why)
{
    if (a.count > 1)
        return a[1];
    l.fail(std::string(what) + " failed: " + prin1_text(a[0]) + (why.empty() ? "" : ": " + why));
}

value load_one(interpreter& l, arguments a)
{
    const std::optional<std::string> path = find_module_file(a.text(0));
    std::string why = "there is no such file";
    return path && load_module(*path, &why) ? a[0] : refused(l, a, "ARXLOAD", why);
}

value unload_one(interpreter& l, arguments a)
{
    std::string why;
    return unload_module(a.text(0), &why) ? a[0] : refused(l, a, "ARXUNLOAD", why);
}

value loaded(interpreter&, arguments)
{
    list_maker out;
    for (const std::string& name : loaded_modules())
        out.add(value::text(name));
    return out.take();
}

std::string quoted(const std::string& text)
{
    std::string out = "'";
    for (const char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

// Starts a program and doesn't wait; 33 as programs know it, nil when it can't be started.
value start(interpreter&, arguments a)
{
    std::string line = a.text(0);
    if (batch_of(line)) {
        if (a.given(1))
            line += " \"" + a.text(1) + "\"";
        PROCESS_INFORMATION process;
        const STARTUPINFO startup{};
        if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, 0, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                            &startup, &process))
            return value::nil();
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return value::integer(33);
    }
    if (a.given(1))
        line += " " + quoted(file_exists(a.text(1).c_str()) ? real_path(a.text(1)) : a.text(1));
    return host_system((line + " &").c_str()) == 0 ? value::integer(33) : value::nil();
}

// ---- the registry, by keys that begin with HKEY_... or the short name of a root

std::shared_ptr<registry_key> registry_key_of(const arguments& a)
{
    return run_registry()->find(full_registry_path(utf8_of(a.text(0))));
}

value registry_read(interpreter&, arguments a)
{
    const auto key = registry_key_of(a);
    const registry_value* found = key ? key->value(a.given(1) ? utf8_of(a.text(1)) : "") : nullptr;
    if (!found)
        return value::nil();
    if (found->type == REG_DWORD && found->data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 4; i-- > 0;)
            number = number * 256 + static_cast<unsigned char>(found->data[i]);
        return value::integer(static_cast<std::int32_t>(number));
    }
    const bool is_text = found->type == REG_SZ || found->type == REG_EXPAND_SZ;
    return is_text ? value::text(cp1252_with_escapes(found->data)) : value::nil();
}

// (vl-registry-write key [name [value]]): a text or an integer.
value registry_write(interpreter& l, arguments a)
{
    registry_value held;
    held.name = a.given(1) ? utf8_of(a.text(1)) : "";
    value written = value::text("");
    if (a.given(2)) {
        written = a[2];
        if (a[2].is(kind::integer)) {
            held.type = REG_DWORD;
            const auto number = static_cast<std::uint32_t>(a.integer(2));
            for (int i = 0; i < 4; ++i)
                held.data += static_cast<char>(number >> (8 * i) & 0xFF);
        } else if (a[2].is_string()) {
            held.data = utf8_of(a.text(2));
        } else {
            l.wrong_type("stringp", a[2]);
        }
    }
    std::string error;
    return set_registry_value(utf8_of(a.text(0)), held, &error) ? written : value::nil();
}

// Names of the keys below one, or with a second argument those of its values.
value registry_names(interpreter&, arguments a)
{
    const auto key = registry_key_of(a);
    list_maker out;
    if (!key)
        return value::nil();
    if (a.given(1))
        for (const registry_value& v : key->values)
            out.add(value::text(cp1252_with_escapes(v.name)));
    else
        for (const auto& k : key->keys)
            out.add(value::text(cp1252_with_escapes(k->name)));
    return out.take();
}

constexpr builtin TABLE[] = {
    {"arxload", load_one, 1, 2, "s."},
    {"arxunload", unload_one, 1, 2, "s."},
    {"arx", loaded, 0, 0, ""},
    {"startapp", start, 1, 2, "sS"},
    {"vl-registry-read", registry_read, 1, 2, "sS"},
    {"vl-registry-write", registry_write, 1, 3, "sS."},
    {"vl-registry-descendents", registry_names, 1, 2, "s."},
};

} // namespace

std::span<const builtin> system_table()
{
    return TABLE;
}

} // namespace host::lisp
