// settings_file.h: the settings file of a drawing, NAME.ini beside NAME.dwg, text with three kinds of line:
// "variable=value", "PROJECT=PATH" for a file that the user picked, and others, which the next save drops.
#pragma once

#include <string>

#include "common/text_buffer.h"

struct host_file;

// Room for a line as the readers of these files take it: at most 122 characters and a terminator.
// A longer line is read in pieces.
constexpr int SETTINGS_LINE_SIZE = 123;

// A host variable that holds a text; empty when it holds another value or isn't there.
std::string host_text(const char* name);

// The settings file's path: what stands behind the last "." of the whole path, directories counted,
// becomes "ini"; ".ini" is appended when there is no "." but at the first character.
void settings_path(const char* drawing_path, text_out out);
// The settings file of the current drawing (DWGPREFIX and DWGNAME). False, with `out` empty, for a
// drawing that was never named.
bool current_settings_path(text_out out);
// Whether a path is one that the host gives to drawings that were never named. The test is for a part
// of the whole path, in any case, so MYDRAWING.DWG counts too.
bool is_unnamed_drawing(const char* drawing_path);

// The module's scratch file for rewriting settings: temp.txt in data_dir. It stays there.
void scratch_path(text_out out);
// Appends the lines of the file at `path` to `out`, nothing when it can't be read.
void append_lines(const char* path, host_file* out);
