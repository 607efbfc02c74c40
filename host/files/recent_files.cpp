#include "host/files/recent_files.h"

#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/files/installation.h"
#include "host/files/names.h"
#include "host/files/paths.h"
#include "host/files/registry.h"

namespace host
{

namespace
{

constexpr int MOST_RECENT = 9;

std::string value_name(int number)
{
    return "File" + std::to_string(number);
}

// A drawing goes by the name that programs know it by, if that means this very file.
std::string listed_name(std::string_view path)
{
    std::string name = drive_path(path);
    const std::string_view extension = extension_of(name);
    if (!same_text(extension, ".dxf"))
        return name;
    const std::string drawing =
        name.substr(0, name.size() - extension.size()) + (extension == ".DXF" ? ".DWG" : ".dwg");
    return absolute_path(drawing_path(drawing)) == absolute_path(real_path(path)) ? drawing : name;
}

void put_first(registry_key& list, const std::string& drawing)
{
    std::vector<std::string> names{drawing};
    // Another program may have written more of them.
    for (int i = 1; i <= MOST_RECENT || list.value(value_name(i)); i++) {
        const registry_value* held = list.value(value_name(i));
        if (held && held->type == REG_SZ &&
            folded_name(cp1252_with_escapes(held->data)) != folded_name(cp1252_with_escapes(drawing)))
            names.push_back(held->data);
        list.remove_value(value_name(i));
    }
    for (int i = 1; i <= MOST_RECENT && i <= static_cast<int>(names.size()); i++)
        list.set({value_name(i), REG_SZ, names[static_cast<std::size_t>(i) - 1]});
}

} // namespace

void note_recent_drawing(std::string_view path)
{
    static bool is_told = false;
    if (path.empty())
        return;
    const std::string drawing = utf8_of(listed_name(path));
    std::string error;
    if (change_registry(
            recent_drawings_key(), [&drawing](registry_key& list) { put_first(list, drawing); }, &error) ||
        is_told)
        return;
    complain("the list of recent drawings can't be written: " + error);
    is_told = true;
}

} // namespace host
