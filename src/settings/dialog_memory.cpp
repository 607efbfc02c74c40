// dialog_memory.cpp: the memory is rewritten in a second file, NAME.new, which takes the place of NAME.ini when
// it is whole and safe on disk. At any time NAME.ini is the old or the new one.
//
// Lines are found by plain searches for a part of them. Those of another file or dialog whose names begin or
// end alike are found too; LISP programs that share these files search in the same way.
#include "settings/dialog_memory.h"

#include <cstring>
#include <string>
#include <string_view>

#include "common/directories.h"
#include "common/text.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

namespace
{

// At most 127 characters and a terminator, of DCL files too. A longer line is two lines.
constexpr int LINE_SIZE = 128;
constexpr int VALUE_SIZE = 128;
using line_buffer = char[LINE_SIZE];
using value_buffer = char[VALUE_SIZE];

bool read_directory(const char* variable, text_out out)
{
    resbuf* value = nullptr;
    const bool is_set =
        acedGetSym(variable, &value) == RTNORM && value && value->restype == RTSTR && value->resval.rstring;
    if (is_set)
        text_set(out, value->resval.rstring);
    if (value)
        acutRelRb(value);
    return is_set;
}

bool read_directories()
{
    return read_directory("usrdir$", data_dir) && read_directory("lspdir$", lsp_dir);
}

std::string memory_path(const char* dcl, bool is_shared, const char* extension)
{
    return std::string(data_dir) + (is_shared ? "dialogs" : dcl) + extension;
}

std::string joined(const char* dcl, const char* name)
{
    return std::string(dcl) + "," + name;
}

bool holds(const char* line, const std::string& text)
{
    return std::strstr(line, text.c_str()) != nullptr;
}

// ---- the dialog file ---------------------------------------------------------------------------------------

struct tile_walk {
    host_file* file = nullptr;
    line_buffer line = "";
    bool has_line = false;
};

bool is_header(const char* line)
{
    return std::strchr(line, ':') && std::strchr(line, '{') && std::strstr(line, "dialog");
}

bool is_header_of(const char* line, const char* name)
{
    if (!is_header(line))
        return false;
    std::string found(line, std::strcspn(line, ":"));
    str_trim(found.data());
    return std::strcmp(found.c_str(), name) == 0;
}

// The key of a line that is a tile.
bool tile_key(std::string_view line, line_buffer& key)
{
    if (line.find('=') == line.npos || line.find(';') == line.npos || line.find("key") == line.npos)
        return false;
    const std::size_t open = line.find('"');
    const std::size_t close = open == line.npos ? open : line.find('"', open + 1);
    if (close == line.npos)
        return false;
    text_set(key, line.substr(open + 1, close - open - 1));
    return true;
}

// At the line behind the dialog's header; false, with nothing open, when there is no such file or dialog.
bool begin_walk(const char* dcl, const char* name, tile_walk* walk)
{
    walk->file = file_open((std::string(lsp_dir) + dcl + ".dcl").c_str(), "r");
    if (!walk->file)
        return false;
    while (file_gets(walk->line, LINE_SIZE, walk->file))
        if (is_header_of(walk->line, name)) {
            walk->has_line = file_gets(walk->line, LINE_SIZE, walk->file) != nullptr;
            return true;
        }
    file_close(walk->file);
    return false;
}

// Up to the next header of any dialog. It is looked for in the line before, so that the line behind the
// dialog's own header is never a tile: in the product's files it holds the title.
bool next_tile(tile_walk* walk, line_buffer& key)
{
    while (walk->has_line && !is_header(walk->line)) {
        walk->has_line = file_gets(walk->line, LINE_SIZE, walk->file) != nullptr;
        if (walk->has_line && tile_key(walk->line, key))
            return true;
    }
    return false;
}

// ---- the memory --------------------------------------------------------------------------------------------

// The tile's value, the stored one when the dialog doesn't have the tile.
void current_value(ads_hdlg dialog, const char* dcl, const char* name, const char* key, value_buffer& value)
{
    if (ads_get_tile(dialog, key, value, VALUE_SIZE) != RTNORM)
        dlg_read_tile(dcl, name, DIALOG_MEMORY_BOTH, key, value, VALUE_SIZE);
}

void write_line(host_file* out, const char* dcl, const char* name, const char* key, const char* value)
{
    file_printf(out, "%s,%s,%s,'%s'\n", dcl, name, key, value);
}

// Ends the rewriting. The old memory is removed by the rename, not before it, and not at all when the new one
// couldn't be written or the old one (`was_read` false) couldn't be read.
void take_place(host_file* out, const std::string& scratch, const std::string& memory, bool was_read)
{
    const bool is_whole = file_close(out) == 0;
    if (is_whole && (was_read || !file_exists(memory.c_str())))
        file_rename(scratch.c_str(), memory.c_str());
}

// The stored value of a line of which `behind` is what follows the names.
std::string quoted_value(std::string_view behind)
{
    const std::size_t end = behind.size() < 2 ? 0 : behind.size() - 2;
    return std::string(end < 1 ? "" : behind.substr(1, end - 1));
}

bool find_value(const std::string& memory, const std::string& text, text_out out)
{
    host_file* in = file_open(memory.c_str(), "r");
    if (!in)
        return false;
    line_buffer line;
    bool is_found = false;
    while (!is_found && file_gets(line, LINE_SIZE, in)) {
        const char* at = std::strstr(line, text.c_str());
        if (!at)
            continue;
        is_found = true;
        // The closing quote and the line feed; of a last line without line feed one character of the value.
        text_set(out, quoted_value(at + text.size()));
    }
    file_close(in);
    return is_found;
}

bool apply_line(ads_hdlg dialog, std::string_view rest)
{
    const std::size_t comma = rest.find(',');
    if (comma == rest.npos)
        return false;
    std::string key(rest.substr(0, comma));
    rest.remove_prefix(comma + 1);
    std::string value(rest.substr(0, rest.find(',')));
    str_trim(key.data());
    str_trim(value.data());
    value.resize(std::strlen(value.c_str()));
    value = value.size() < 2 ? "" : value.substr(1, value.size() - 2);
    ads_set_tile(dialog, key.c_str(), value.c_str());
    return true;
}

bool apply_memory(ads_hdlg dialog, const std::string& memory, const std::string& text)
{
    host_file* in = file_open(memory.c_str(), "r");
    if (!in)
        return false;
    line_buffer line;
    bool is_applied = false;
    while (file_gets(line, LINE_SIZE, in)) {
        const char* at = std::strstr(line, text.c_str());
        if (at && at[text.size()] != '\0')
            is_applied = apply_line(dialog, at + text.size() + 1) || is_applied;
    }
    file_close(in);
    return is_applied;
}

} // namespace

void dlg_save_all(ads_hdlg dialog, const char* dcl, const char* name, int shared)
{
    tile_walk walk;
    if (!read_directories() || !begin_walk(dcl, name, &walk))
        return;
    const bool is_shared = shared == DIALOG_MEMORY_SHARED;
    const std::string memory = memory_path(dcl, is_shared, ".ini"),
                      scratch = memory_path(dcl, is_shared, ".new");
    host_file* out = file_open(scratch.c_str(), "w");
    if (!out) {
        file_close(walk.file);
        return;
    }
    for (line_buffer key; next_tile(&walk, key);) {
        value_buffer value = "";
        current_value(dialog, dcl, name, key, value);
        write_line(out, dcl, name, key, value);
    }
    file_close(walk.file);

    const std::string own = joined(dcl, name);
    host_file* in = file_open(memory.c_str(), "r");
    if (in) {
        for (line_buffer line; file_gets(line, LINE_SIZE, in);)
            if (!holds(line, own))
                file_puts(line, out);
        file_close(in);
    }
    take_place(out, scratch, memory, in != nullptr);
}

void dlg_save_tile(ads_hdlg dialog, const char* dcl, const char* name, const char* key, int shared)
{
    if (!read_directories())
        return;
    const bool is_shared = shared == DIALOG_MEMORY_SHARED;
    const std::string memory = memory_path(dcl, is_shared, ".ini"),
                      scratch = memory_path(dcl, is_shared, ".new");
    host_file* out = file_open(scratch.c_str(), "w");
    if (!out)
        return;
    value_buffer value = "";
    current_value(dialog, dcl, name, key, value);

    // Without a comma behind the key: one that begins alike is replaced too, as LISP programs know it. Reading
    // asks for the comma.
    const std::string own = joined(dcl, name) + "," + key;
    bool is_found = false;
    host_file* in = file_open(memory.c_str(), "r");
    if (in) {
        for (line_buffer line; file_gets(line, LINE_SIZE, in);)
            if (holds(line, own)) {
                is_found = true;
                write_line(out, dcl, name, key, value);
            } else {
                file_puts(line, out);
            }
        file_close(in);
    }
    if (!is_found)
        write_line(out, dcl, name, key, value);
    take_place(out, scratch, memory, in != nullptr);
}

int dlg_load_all(ads_hdlg dialog, const char* dcl, const char* name, int where)
{
    if (!read_directories())
        return 0;
    const std::string text = joined(dcl, name);
    bool is_applied = false;
    if (where == DIALOG_MEMORY_BOTH || where == DIALOG_MEMORY_ONLY_SHARED)
        is_applied = apply_memory(dialog, memory_path(dcl, true, ".ini"), text);
    if (where == DIALOG_MEMORY_BOTH || where == DIALOG_MEMORY_ONLY_OWN)
        is_applied = apply_memory(dialog, memory_path(dcl, false, ".ini"), text) || is_applied;
    return is_applied ? 1 : 0;
}

int dlg_read_tile(const char* dcl, const char* name, int where, const char* key, char* out, int size)
{
    const text_out value(out, size > 0 ? static_cast<std::size_t>(size) : 0);
    text_set(value, "");
    if (!read_directories())
        return 0;
    const std::string text = joined(dcl, name) + "," + key + ",";
    bool is_found = false;
    if (where == DIALOG_MEMORY_BOTH || where == DIALOG_MEMORY_ONLY_SHARED)
        is_found = find_value(memory_path(dcl, true, ".ini"), text, value);
    if (where == DIALOG_MEMORY_BOTH || where == DIALOG_MEMORY_ONLY_OWN)
        is_found = find_value(memory_path(dcl, false, ".ini"), text, value) || is_found;
    return is_found ? 1 : 0;
}

void dlg_enable_all(ads_hdlg dialog, const char* dcl, const char* name)
{
    tile_walk walk;
    if (!read_directories() || !begin_walk(dcl, name, &walk))
        return;
    for (line_buffer key; next_tile(&walk, key);)
        ads_mode_tile(dialog, key, MODE_ENABLE);
    file_close(walk.file);
}
