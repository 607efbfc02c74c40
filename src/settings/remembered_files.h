// remembered_files.h: where files of a kind were picked last, out of the current drawing's settings file.
// A drawing that was never named remembers nothing.
#pragma once

#include "common/text_buffer.h"

// Directory, upper case with its backslash, of the first file in the settings whose name ends in
// "." + `extension`. Empty when none is known. A value without a backslash gives its first character.
void remembered_directory(const char* extension, text_out out);

// Puts a path at the head of the settings file, as a PROJECT= line in upper case, and takes out
// the older line of the same path. `path` becomes that line, cut to its size.
void remember_file(text_out path);
