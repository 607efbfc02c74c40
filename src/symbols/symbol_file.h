// symbol_file.h: where a symbol's drawing lies.
#pragma once

#include "common/text_buffer.h"

// Full upper-case path of a symbol's drawing, ".DWG" put behind a name that doesn't hold it. A name with a
// backslash is a path already; any other lies in symbol_dir, which is read anew from psname.
void symbol_full_path(text_out out, const char* file);

// That path up to its ".DWG", or an empty text when there is no such file, which is told unless `quiet` is
// non-zero.
void symbol_find_file(text_out out, const char* file, int quiet);
