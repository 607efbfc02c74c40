// wizard_preference.cpp: zentrik.ini is copied to temp.ini beside it and written anew from there. Both are
// replaced whole when they are closed, so that at any moment zentrik.ini is the old file or the new one.
#include "settings/wizard_preference.h"

#include <cstring>
#include <string>

#include "common/directories.h"
#include "hostapi/files.h"
#include "settings/settings_file.h"
#include "settings/wizard_values.h"

namespace
{

constexpr const char* PREFERENCE = "use_startwiz";
constexpr const char* SWITCHED_OFF = "use_startwiz=0\n";
constexpr int REWRITE_LINE_SIZE = 254; // 253 characters and a terminator

bool copy_lines(const std::string& from, const std::string& to)
{
    host_file* in = file_open(from.c_str(), "r");
    if (!in)
        return false;
    host_file* out = file_open(to.c_str(), "w");
    if (out) {
        char line[SETTINGS_LINE_SIZE];
        while (file_gets(line, sizeof line, in))
            file_puts(line, out);
    }
    file_close(in);
    return out && file_close(out) == 0;
}

// A name is what stands before the first "=", blanks counted.
bool is_preference(const char* line)
{
    const char* equals = std::strchr(line, '=');
    const std::size_t length = std::strlen(PREFERENCE);
    return equals && static_cast<std::size_t>(equals - line) == length &&
           std::strncmp(line, PREFERENCE, length) == 0;
}

void copy_switched_off(host_file* in, host_file* out)
{
    char line[REWRITE_LINE_SIZE];
    bool found = false, at_line_start = true;
    while (file_gets(line, sizeof line, in)) {
        const bool replaced = is_preference(line);
        found = found || replaced;
        const char* kept = replaced ? SWITCHED_OFF : line;
        file_puts(kept, out);
        at_line_start = std::strchr(kept, '\n') != nullptr;
    }
    if (found)
        return;
    if (!at_line_start) // the file's last line may lack its end
        file_puts("\n", out);
    file_puts(SWITCHED_OFF, out);
}

void rewrite(const std::string& preferences, const std::string& scratch)
{
    if (!copy_lines(preferences, scratch))
        return;
    host_file* in = file_open(scratch.c_str(), "r");
    if (!in)
        return;
    if (host_file* out = file_open(preferences.c_str(), "w")) {
        copy_switched_off(in, out);
        file_close(out);
    }
    file_close(in);
}

} // namespace

void wizard_switch_off()
{
    const std::string directory = data_dir;
    rewrite(directory + "zentrik.ini", directory + "temp.ini");
    lisp_set_short(PREFERENCE, 0);
}
