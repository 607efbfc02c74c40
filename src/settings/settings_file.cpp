#include "settings/settings_file.h"

#include <cstring>
#include <string>

#include "common/directories.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

namespace
{

constexpr const char* UNNAMED[] = {"DRAWING.DWG", "DRAWING1.DWG", "DRAWING2.DWG"};

} // namespace

std::string host_text(const char* name)
{
    resbuf value{};
    if (acedGetVar(name, &value) != RTNORM || value.restype != RTSTR || !value.resval.rstring)
        return {};
    std::string text = value.resval.rstring;
    acad_free(value.resval.rstring);
    return text;
}

void settings_path(const char* drawing_path, text_out out)
{
    std::string path = drawing_path;
    const std::size_t dot = path.rfind('.');
    if (dot != std::string::npos && dot > 0)
        path.resize(dot);
    text_set(out, path + ".ini");
}

bool current_settings_path(text_out out)
{
    const std::string drawing = host_text("DWGPREFIX") + host_text("DWGNAME");
    text_set(out, "");
    if (drawing.empty() || is_unnamed_drawing(drawing.c_str()))
        return false;
    settings_path(drawing.c_str(), out);
    return true;
}

bool is_unnamed_drawing(const char* drawing_path)
{
    std::string upper = drawing_path;
    str_upper(upper.data());
    for (const char* name : UNNAMED)
        if (upper.find(name) != std::string::npos)
            return true;
    return false;
}

void scratch_path(text_out out)
{
    text_set(out, data_dir);
    text_add(out, "temp.txt");
}

void append_lines(const char* path, host_file* out)
{
    host_file* in = file_open(path, "r");
    if (!in)
        return;
    char line[SETTINGS_LINE_SIZE];
    while (file_gets(line, sizeof line, in))
        file_puts(line, out);
    file_close(in);
}
