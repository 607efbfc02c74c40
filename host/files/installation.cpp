#include "host/files/installation.h"

#include <filesystem>

#include "host/core/text.h"
#include "host/files/associations.h"
#include "host/files/paths.h"
#include "hostapi/processes.h"

namespace host
{

namespace
{

constexpr const char* PRODUCT_KEY = "Software\\Autodesk\\AutoCAD\\R15.0";
constexpr const char* SUBKEY = "ACAD-1:409";
constexpr const char* LOCATION = "AcadLocation";
constexpr const char* PROGRAM = "\\acad.exe"; // as programs look for it behind the location

constexpr const char* CLASSES = "HKEY_LOCAL_MACHINE\\Software\\Classes\\";

// What opens documents on a desktop of this system knows the user's own choice of a program for each kind.
constexpr const char* OPEN = "xdg-open \"%1\"";

struct {
    const char *type, *class_name;
} const DOCUMENTS[] = {
    {".pdf", "zentrik.pdf"},  {".htm", "zentrik.html"}, {".html", "zentrik.html"},
    {".txt", "zentrik.text"}, {".chm", "zentrik.help"},
};

std::string product_key(const char* root)
{
    return std::string(root) + "\\" + PRODUCT_KEY;
}

std::string own_location()
{
    std::error_code failure;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return utf8_of(drive_path(failure ? "/" : program.parent_path().string()));
}

} // namespace

std::shared_ptr<registry_key> registry_defaults()
{
    auto root = std::make_shared<registry_key>();
    root->make(product_key("HKEY_LOCAL_MACHINE") + "\\" + SUBKEY)->set({LOCATION, REG_SZ, own_location()});
    for (const auto& one : DOCUMENTS) {
        root->make(std::string(CLASSES) + one.type)->set({"", REG_SZ, one.class_name});
        root->make(std::string(CLASSES) + one.class_name + OPEN_COMMAND_KEY)->set({"", REG_SZ, OPEN});
    }
    return root;
}

installation presented_installation()
{
    installation own{SUBKEY, own_location()};
    const auto product = run_registry()->find(product_key("HKEY_LOCAL_MACHINE"));
    for (const auto& key : product ? product->keys : std::vector<std::shared_ptr<registry_key>>()) {
        const registry_value* location = key->value(LOCATION);
        if (!location || location->type != REG_SZ || location->data.empty())
            continue;
        if (!same_text(key->name, SUBKEY) || location->data != own.location)
            return {key->name, location->data};
    }
    return own;
}

std::string recent_drawings_key()
{
    return product_key("HKEY_CURRENT_USER") + "\\" + presented_installation().subkey + "\\Recent File List";
}

} // namespace host

// Programs find the installation that they run in by looking for its program here.
extern "C" const char* GetCommandLineA()
{
    static std::string line;
    line = "\"" + host::cp1252_with_escapes(host::presented_installation().location) + host::PROGRAM + "\"";
    return line.c_str();
}
