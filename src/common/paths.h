// paths.h: path texts, with '\' or '/' between their pieces.
#pragma once

#include "common/text_buffer.h"

// What stands behind the last separator; the whole path when it has none.
void path_file_name(const char* path, text_out out);
// The path up to and including its last separator; the whole path when it has none.
void path_directory(const char* path, text_out out);

// In place; the text's length.
int path_to_backslash(char* text);
int path_to_slash(char* text);

// The path with each piece in lower case with a capital in front, and single backslashes between
// the pieces; two backslashes at the head stay. A text that isn't shorter than `width` is shortened
// to "..." and its end, width - 2 characters in all.
void compact_path(const char* path, text_out out, int width);

// Copies the bytes of a file. 1 when both files could be opened, else 0.
int copy_file(const char* from, const char* to);
