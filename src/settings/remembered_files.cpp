#include "settings/remembered_files.h"

#include <cstring>
#include <string>

#include "common/paths.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "settings/settings_file.h"

namespace
{

constexpr int MEMORY_LINE_SIZE = 122; // 121 characters and a terminator

// Value of a "name=path" line, up to its last backslash.
void directory_of_line(const char* line, text_out out)
{
    std::string value = std::strchr(line, '=') + 1;
    path_to_backslash(value.data());
    const std::size_t last = value.rfind('\\');
    // A bare name gives its first character; old settings files are read with that in mind.
    value.resize(last == std::string::npos ? std::min<std::size_t>(value.size(), 1) : last + 1);
    text_set(out, value);
}

// Copies the settings to the scratch file without the lines that are `line` once trimmed. False when they
// didn't fit on the disk.
bool copy_other_lines(const char* settings, const char* scratch, const char* line)
{
    host_file* in = file_open(settings, "r");
    host_file* out = file_open(scratch, "w");
    if (in && out) {
        char old[SETTINGS_LINE_SIZE];
        while (file_gets(old, sizeof old, in)) {
            old[std::strcspn(old, "\n")] = '\0';
            str_trim(old);
            if (std::strcmp(old, line) != 0)
                file_printf(out, "%s\n", old);
        }
    }
    if (in)
        file_close(in);
    return !out || file_close(out) == 0;
}

} // namespace

void remembered_directory(const char* extension, text_out out)
{
    text_set(out, "");
    char settings[ADS_PATH_SIZE];
    if (!current_settings_path(settings))
        return;
    char wanted[SETTINGS_LINE_SIZE];
    text_format(wanted, ".%s\n", extension);
    str_upper(wanted);

    host_file* in = file_open(settings, "r");
    if (!in)
        return;
    char line[MEMORY_LINE_SIZE];
    while (file_gets(line, sizeof line, in)) {
        str_upper(line);
        if (std::strstr(line, wanted) && std::strchr(line, '=')) {
            directory_of_line(line, out);
            break;
        }
    }
    file_close(in);
}

void remember_file(text_out path)
{
    std::string line = std::string("PROJECT=") + path.text;
    str_upper(line.data());
    text_set(path, line);
    char settings[ADS_PATH_SIZE], scratch[ADS_PATH_SIZE];
    if (!current_settings_path(settings))
        return;
    str_trim(path.text);

    scratch_path(scratch);
    if (!copy_other_lines(settings, scratch, path.text))
        return;
    host_file* out = file_open(settings, "w");
    if (!out)
        return;
    file_printf(out, "%s\n", path.text);
    append_lines(scratch, out);
    file_close(out);
}
